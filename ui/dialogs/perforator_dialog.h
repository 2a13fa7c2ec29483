#pragma once

#include "ui/dialogs/dialog.h"

#include <QList>
#include <QString>

class QLabel;
class QPushButton;
class QTextEdit;

/// What the two dialogs of the perforator have in common: the adapter's state, the text of a tape, and the
/// port, which is held from the construction to the closing.
class CPerforatorDialog : public CDialog
{
    Q_OBJECT

public:
    void done(int result) override;

protected:
    /// \a geometry is the option that keeps the dialog's place.
    CPerforatorDialog(const QString &title, QRect COptions::*geometry, QWidget *parent);
    void closeEvent(QCloseEvent *event) override;
    /// Gives the port up; may come twice.
    virtual void leave();

    /// Places \a rows one below the other over a line of buttons, \a right ones at its end; then takes the
    /// place that was kept.
    void placeRows(const QList<QWidget *> &rows, const QList<QPushButton *> &left,
                   const QList<QPushButton *> &right);

    QLabel *m_state;
    QTextEdit *m_text; ///< cannot be edited
    QPushButton *m_close;

private:
    void takeRoomySize();
};
