#pragma once

#include <QDialog>
#include <QString>

class QLabel;
class QProgressBar;
class QPushButton;
class QTextEdit;

/// Punches a text on paper tape. The perforator's port is held from the construction to the closing, and then
/// until what waits is punched.
class CPerforatorOutDialog : public QDialog
{
    Q_OBJECT

public:
    explicit CPerforatorOutDialog(QWidget *parent = nullptr);

    /// Runs the dialog for \a toPunch.
    void Print(const QString &toPunch);
    void done(int result) override;

    QString text; ///< what is punched, whole, each time

public slots:
    void slotStart();
    void slotStop();   ///< drops what is not punched yet
    void slotSkip();   ///< one row of blank tape
    void slotSkip10(); ///< ten rows
    void slotOnSended();
    void slotOnState();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void placeRows();
    void updateStart();
    void leave();

    QLabel *m_state;
    QTextEdit *m_text;
    QProgressBar *m_progress;
    QPushButton *m_start, *m_stop, *m_skip, *m_skip10, *m_close;
};
