#pragma once

#include <QDialog>
#include <QRect>

class COptions;

/// What the dialogs of the program have in common. None is narrower than its title with the buttons of the
/// frame beside it. One that has a place takes it where Options.saveWindowPos allows that, and keeps it
/// however it is closed. Main thread.
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

private:
    void fitTitle();

    QRect COptions::*const m_place;
};
