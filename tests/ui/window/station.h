#pragma once

#include "app/options.h"
#include "tests/support/desk.h"

#include <QColor>
#include <QPushButton>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class FormMain;

/// A workstation with its window, past the first tick's start of the threads, which do not run. The link is
/// down and the mode is automatic, as in a fresh state.
class Station
{
public:
    /// \a prepare sets the options that the window is built from.
    explicit Station(int processMode, const std::function<void()> &prepare = {});
    ~Station();

    void tick(int count = 1); ///< the window's seconds; the clock goes with them
    void setLinkUp(bool up);
    /// Text comes from the line, and the link thread tells of it.
    void receive(const QString &text);
    /// The link thread reports \a text as gone out.
    void reportSent(const QString &text);
    /// A queue file of the direct procedure with the time stamp \a stamp.
    void queueDirect(const QString &stamp, const QByteArray &text);

    template <class T> [[nodiscard]] T *find(const char *name) const
    {
        return formWidget()->findChild<T *>(QString::fromLatin1(name));
    }
    [[nodiscard]] QString shown(const char *label) const;
    [[nodiscard]] QColor colour(const char *label) const;
    [[nodiscard]] QPushButton *button(const char *name) const;
    /// Journal lines written since the last call, without the empty one that waits for text.
    [[nodiscard]] QStringList news();

    Desk desk;
    std::unique_ptr<FormMain> form;

private:
    [[nodiscard]] QWidget *formWidget() const;

    int m_read = 0;
};

/// Answers every question of the program with \a answer while it lives, and keeps what was asked.
class Answer
{
public:
    explicit Answer(int answer, const std::function<void()> &whileOpen = {});
    ~Answer();

    QStringList asked; ///< title, then text, of each question

private:
    std::function<int(QWidget *, const QString &, const QString &)> m_former;
};
