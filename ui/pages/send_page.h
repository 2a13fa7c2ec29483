#pragma once

#include <QFont>
#include <QWidget>

class CTableViewModel_Send;
class CTableViewModel_SendBad;
class QTableView;

/// The tab "Передача": what waits to go out, and below it what could not go.
class CSendPage : public QWidget
{
    Q_OBJECT

public:
    /// The models are the caller's and outlive the page.
    CSendPage(CTableViewModel_Send &waiting, CTableViewModel_SendBad &failed, QWidget *parent = nullptr);

    QTableView *tableSend;
    QTableView *tableSendBad; ///< hidden until it is shown

protected:
    void changeEvent(QEvent *event) override;

private:
    void sizeTables();

    QFont m_tableFont; ///< that the columns have their widths for
};
