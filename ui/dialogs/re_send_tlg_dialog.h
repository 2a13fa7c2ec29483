#pragma once

#include "ui/dialogs/dialog.h"

#include <QDateTime>
#include <QString>

class CNumberCombo;
class CTelegramView;
class QComboBox;
class QDateTimeEdit;
class QLabel;
class QPushButton;

/// The last look at a received telegram before it is forwarded. Through a centre and on a direct link it is
/// given a category and an index, on switched channels a number and a time. exec() gives 1 if it is to go;
/// the fields then hold what the operator chose, and the number stands among the former ones of Options.
class CReSendTlgDialog : public CDialog
{
    Q_OBJECT

public:
    explicit CReSendTlgDialog(const QString &telegram, QWidget *parent = nullptr);

    const QString text; ///< the telegram, as it was given; no matter how much of it is shown
    QString category;   ///< one of Options.CategoryList; empty in SKK
    QString index;  ///< carried by the code, of 7 characters at most; empty in SKK, may be empty in direct
    QString number; ///< digits and "+", at least one; empty if not in SKK
    QDateTime sendTime; ///< earliest time of sending; invalid if not in SKK

public slots:
    /// Keeps what the fields hold, here and in the lists of numbers.
    void slotApply();

private:
    [[nodiscard]] QLayout *newIndexForm();
    [[nodiscard]] QLayout *newNumberForm();
    [[nodiscard]] QString fault() const;
    void updateForward();

    CTelegramView *m_text;
    QComboBox *m_category = nullptr;     ///< null in SKK
    CNumberCombo *m_number;              ///< the index if not in SKK
    QDateTimeEdit *m_sendTime = nullptr; ///< null if not in SKK
    QLabel *m_fault;                     ///< why the telegram cannot go as it stands
    QPushButton *m_forward;
};
