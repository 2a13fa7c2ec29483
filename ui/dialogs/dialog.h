#pragma once

#include <QDialog>
#include <QList>
#include <QRect>

class COptions;
class QHBoxLayout;
class QLabel;
class QPushButton;

/// What the dialogs of the program have in common. None is narrower than its title with the buttons of the
/// frame beside it. One that has a place takes it where Options.saveWindowPos allows that, and keeps it
/// however it is closed. Esc and the cross of the frame leave it, as does the button made for that; Enter is
/// the default button's, unless another one has the focus. Main thread.
class CDialog : public QDialog
{
    Q_OBJECT

public:
    /// \a place is the option that keeps the dialog's place; null if it has none.
    explicit CDialog(QWidget *parent = nullptr, QRect COptions::*place = nullptr);

    void done(int result) override;

    /// Pixels that the frame needs to show \a title whole, at most the screen's.
    [[nodiscard]] static int widthOfTitle(const QString &title);

protected:
    bool event(QEvent *event) override;
    /// Goes to the place that was kept. For the end of a constructor, or before each run.
    void takePlace();
    /// Runs the dialog under \a title in the place that was kept, with the keyboard at \a field.
    int run(const QString &title, QWidget *field);

    /// A button by the name \a name. Like the others it belongs to nobody until it is placed: what Tab and
    /// the focus meet first is decided by the order of the places.
    [[nodiscard]] static QPushButton *newButton(const char *name, const QString &label,
                                                const QString &toolTip = QString());
    /// The one that Enter means.
    [[nodiscard]] static QPushButton *newDefaultButton(const char *name, const QString &label,
                                                       const QString &toolTip = QString());
    /// The one that leaves the dialog as Esc does.
    [[nodiscard]] QPushButton *newLeaveButton(const char *name = "cancel",
                                              const QString &label = QStringLiteral("Отменить"));
    /// The row of buttons. It is full of \a left, or parts them from \a right, which stand at its end.
    [[nodiscard]] static QHBoxLayout *newButtonRow(const QList<QPushButton *> &left);
    [[nodiscard]] static QHBoxLayout *newButtonRow(const QList<QPushButton *> &left,
                                                   const QList<QPushButton *> &right);
    /// What is red in a dialog: a place for the reason why something cannot be as the operator has it.
    [[nodiscard]] static QLabel *newTroubleLabel(const char *name);

private:
    void fitTitle();

    QRect COptions::*const m_place;
};
