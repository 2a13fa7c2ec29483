#pragma once

#include "records/new_telegram.h"
#include "ui/dialogs/dialog.h"

#include <QString>

class CNumberCombo;
class CPickListDialog;
class CTelegramView;
class QBoxLayout;
class QCheckBox;
class QDateTimeEdit;
class QLabel;
class QPushButton;
class QRadioButton;

/// The last look at a telegram of the editor before it is sent; what else it asks for depends on the line
/// procedure and on the line at the moment it is made. Title, text and what is known already are set before
/// exec(), which gives 1 if the telegram is to go. Main thread.
class CSendTlgDialog : public CDialog
{
    Q_OBJECT

public:
    explicit CSendTlgDialog(QWidget *parent = nullptr);

    /// Shows \a text, of a very long one the beginning.
    void setText(const QString &text);
    /// Proposes \a number, or several with "," between them. Outside SKK nothing happens.
    void setNumber(const QString &number);
    /// Whether the box "ЦКС" is on offer, and checked. Outside SKK there is none.
    void setCKS(bool offered, bool checked);

    // What the operator chose, once exec() has given 1

    bool sendNow = false; ///< on the line at once; the link was up when he said so
    SendOrder order; ///< otherwise; all but the category. The numbers are those of the field, in any case

public slots:
    /// Judges the numbers, which hold only what the field may hold.
    void slotNumberChanged(const QString &text);
    void slotRadioButtonClicked();
    /// Puts the number of a subscriber, whom the operator chooses, in the field.
    void slotAbonentSelect();
    /// The same with the numbers of a list of subscribers.
    void slotAbonentListsSelect();
    /// Keeps what the fields hold, here and among the former numbers. If the line has gone meanwhile and the
    /// telegram was to go at once, the dialog stays instead.
    void slotApply();

private:
    void addSwitchedControls(QBoxLayout *rows);
    [[nodiscard]] QLayout *newNumberChoices();
    void addDirectControls(QBoxLayout *rows);
    void addGuarantee(QBoxLayout *rows);
    void pickFrom(CPickListDialog &list);
    void makeRoom(int characters);
    void showNumbers(const QString &numbers);
    void takeNumbers(const QString &chosen);
    [[nodiscard]] bool sendsAtOnce() const;
    void followLine();
    void checkOkEnable();

    CTelegramView *m_text;
    QRadioButton *m_toLine = nullptr; ///< null if the telegram cannot go at once
    QRadioButton *m_toQueue = nullptr;
    CNumberCombo *m_number = nullptr; ///< this and the next two: null if not in SKK
    QLabel *m_note = nullptr;         ///< which numbers the field could not take
    QCheckBox *m_cks = nullptr;
    QDateTimeEdit *m_sendTime = nullptr; ///< null in CKS
    QCheckBox *m_guaranteed = nullptr;   ///< null if guaranteed transfer is not on offer
    QPushButton *m_send;
    bool m_numberValid = false;
};
