#include "tests/e2e/screen.h"

#include <QtTest>

namespace
{
constexpr int SettleMs = 1500; // from the manager's sign of life to its care for new windows

QString xdotool(const QString &display, const QStringList &arguments)
{
    QProcess tool;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), display);
    tool.setProcessEnvironment(environment);
    tool.start(QStringLiteral("xdotool"), arguments);
    tool.waitForFinished();
    return QString::fromUtf8(tool.readAllStandardOutput()).trimmed();
}

/// The program's visible window of that title, the newest if there are several. A search by title would
/// miss a box without one, which the window manager names after the program.
QString windowOf(const QString &display, const QString &title)
{
    const QStringList windows = xdotool(display, {QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                                  QStringLiteral("--class"), QStringLiteral("velda")})
                                    .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QString found;
    for (const QString &window : windows)
        if (xdotool(display, {QStringLiteral("getwindowname"), window}) == title)
            found = window;
    return found;
}

/// Whether a window manager is at work. A window that shows itself while the manager is starting may never
/// appear.
bool isManaged(const QString &display)
{
    QProcess tool;
    tool.start(QStringLiteral("xprop"), {QStringLiteral("-display"), display, QStringLiteral("-root"),
                                         QStringLiteral("_NET_SUPPORTING_WM_CHECK")});
    tool.waitForFinished();
    return tool.readAllStandardOutput().contains("window id");
}
} // namespace

Screen::Screen()
{
    m_server.start(QStringLiteral("Xvfb"),
                   {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                    QStringLiteral("0"), QStringLiteral("1280x900x24"), QStringLiteral("-nolisten"),
                    QStringLiteral("tcp")});
    QByteArray number;
    while (!number.endsWith('\n')) {
        if (!m_server.waitForReadyRead(20000))
            qFatal("Xvfb does not start: %s", m_server.readAllStandardError().constData());
        number += m_server.readAllStandardOutput();
    }
    display = QLatin1Char(':') + QString::fromLatin1(number.trimmed());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), display);
    m_windowManager.setProcessEnvironment(environment);
    m_windowManager.setProgram(QStringLiteral("openbox"));
    if (!QTest::qWaitFor([this] { return beginManaging(); }, 60000))
        qFatal("openbox does not start: %s", m_windowManager.readAllStandardError().constData());
    QTest::qWait(SettleMs);
}

/// Whether a window manager is at work. One that came before the screen was ready has ended, and is started
/// again.
bool Screen::beginManaging()
{
    if (m_windowManager.state() == QProcess::NotRunning)
        m_windowManager.start();
    return isManaged(display);
}

Screen::~Screen()
{
    m_windowManager.kill();
    m_windowManager.waitForFinished();
    m_server.terminate();
    m_server.waitForFinished();
}

bool Screen::hasWindow(const QString &title) const
{
    return !windowOf(display, title).isEmpty();
}

bool Screen::waitForWindow(const QString &title, int seconds) const
{
    return QTest::qWaitFor([&] { return hasWindow(title); }, seconds * 1000);
}

void Screen::press(const QString &title, const QString &key) const
{
    const QString window = windowOf(display, title);
    xdotool(display, {QStringLiteral("windowactivate"), QStringLiteral("--sync"), window});
    xdotool(display, {QStringLiteral("key"), key});
}

void Screen::type(const QString &title, const QString &text) const
{
    const QString window = windowOf(display, title);
    xdotool(display, {QStringLiteral("windowactivate"), QStringLiteral("--sync"), window});
    xdotool(display, {QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("30"), text});
}

// The keyboard library copies strings out of the server's replies, which end without a zero byte; a strict
// check of strings takes that for an overflow. The graphics driver, which the windows do not need, leaves
// memory behind.
void useDisplay(QProcessEnvironment &environment, const QString &display)
{
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    environment.insert(QStringLiteral("DISPLAY"), display);
    environment.insert(QStringLiteral("QT_XCB_GL_INTEGRATION"), QStringLiteral("none"));
    environment.insert(QStringLiteral("ASAN_OPTIONS"), environment.value(QStringLiteral("ASAN_OPTIONS")) +
                                                           QStringLiteral(":strict_string_checks=0"));
}
