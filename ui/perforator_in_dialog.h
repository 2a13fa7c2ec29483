#pragma once

#include <QDialog>
#include <QString>

class QLabel;
class QPushButton;
class QTextEdit;

/// Reads paper tape into a text; exec() gives 1 if the operator takes it. The perforator's port is held from
/// the construction to the closing.
class CPerforatorInDialog : public QDialog
{
    Q_OBJECT

public:
    explicit CPerforatorInDialog(QWidget *parent = nullptr);

    [[nodiscard]] QString getData() const { return data; }
    void done(int result) override;

    QString data; ///< what was read, with its register marks; several readings follow one another

public slots:
    void slotStart();
    void slotStop();
    void slotClear();
    void slotApply();
    void slotOnReceived();
    void slotOnState();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void placeRows();
    void updateButtons();
    void leave();

    QLabel *m_state;
    QTextEdit *m_text;
    QPushButton *m_start, *m_stop, *m_clear, *m_apply, *m_close;
    bool m_reading = false;
};
