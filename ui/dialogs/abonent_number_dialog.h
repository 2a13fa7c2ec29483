#pragma once

#include "ui/dialogs/dialog.h"

#include <QString>

class CNumberCombo;
class QPushButton;

/// Asks for the number of one subscriber, with the numbers dialled by hand before and those of
/// Options.abonents on offer.
class CAbonentNumberDialog : public CDialog
{
    Q_OBJECT

public:
    explicit CAbonentNumberDialog(QWidget *parent = nullptr);

    /// Runs the dialog on \a startNumber; 1 if the operator dials, the number then stands in number.
    int exec(const QString &startNumber, const QString &title);

    /// Whether "Набрать" may work, with a number there; at first it may.
    void setDialAllowed(bool allowed);

    QString number; ///< the number applied last

public slots:
    void slotNumberChanged(const QString &text);
    /// Keeps the number, here and among Options.lastManualCallNumbers.
    void slotApply();
    /// Takes the number of a subscriber whom the operator chooses from the list.
    void slotAbonentSelect();

private:
    CNumberCombo *m_numbers;
    QPushButton *m_dial;
    bool m_dialAllowed = true;
};
