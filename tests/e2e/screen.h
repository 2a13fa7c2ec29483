#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>

/// A virtual display with a window manager, for what only a person at the screen can do. It is gone with
/// the object.
class Screen
{
public:
    Screen();
    ~Screen();
    Screen(const Screen &) = delete;
    Screen &operator=(const Screen &) = delete;

    /// Whether a window of that title is shown within some seconds.
    [[nodiscard]] bool waitForWindow(const QString &title, int seconds = 60) const;
    [[nodiscard]] bool hasWindow(const QString &title) const;
    /// Presses a key, as "Return" or "alt+x", in the window of that title.
    void press(const QString &title, const QString &key) const;
    /// Types Latin letters and figures where the keyboard is in that window.
    void type(const QString &title, const QString &text) const;

    QString display; ///< as ":99"

private:
    [[nodiscard]] bool beginManaging();

    QProcess m_server;
    QProcess m_windowManager;
};

/// Lets a program with that environment open its windows on \a display.
void useDisplay(QProcessEnvironment &environment, const QString &display);
