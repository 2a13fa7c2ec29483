#pragma once

#include <QFont>
#include <QWidget>

class CFileTable;
class CTableViewModel_Send;
class CTableViewModel_SendBad;
class CTelegramView;
class QAction;
class QCheckBox;
class QMenu;
class QPushButton;

/// The tab "Передача": what waits to go out, below it what could not go, the text of the selected file, and
/// what can be done with it. Enter on a list goes to the text.
class CSendPage : public QWidget
{
    Q_OBJECT

public:
    /// The models are the caller's and outlive the page.
    CSendPage(CTableViewModel_Send &waiting, CTableViewModel_SendBad &failed, QWidget *parent = nullptr);

    CFileTable *tableSend;
    CFileTable *tableSendBad; ///< hidden until it is shown
    QCheckBox *registers;     ///< "Показать регистры"
    CTelegramView *text;
    QPushButton *toEditor, *remove, *reSend;

    // The context menu of the lists, and of the text below the entries for selecting and copying
    QAction *changeNumber, *resetTime, *reSendAction, *pause;

signals:
    /// A context menu comes up, or has gone. No other row may come under it in the meantime.
    void menuOpened();
    void menuClosed();

protected:
    void changeEvent(QEvent *event) override;

private:
    QAction *newAction(const QString &words, const char *name);
    void placeRows();
    void prepareTable(CFileTable *table);
    void popUpForRow(const CFileTable *table, const QPoint &point);
    void popUpForText(const QPoint &point);
    void popUp(QMenu *menu, const QPoint &globalPoint);
    void sizeTables();

    QMenu *m_menu = nullptr; ///< the last one
    QFont m_tableFont;       ///< that the columns have their widths for
};
