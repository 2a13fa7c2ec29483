#include "ui/window/tray_icon.h"

#include "app/state.h"
#include "link/tlg_thread.h"

#include <QApplication>
#include <QStyle>

// The icons lie in the library of the program's own code, whose resources nobody else registers. The macro
// must stand outside of every namespace.
static void registerIcons()
{
    Q_INIT_RESOURCE(icons);
}

namespace
{
constexpr int TrafficPhases = 5; ///< pictures of the traffic animation
}

CTrayIcon::CTrayIcon(QObject *parent) : QSystemTrayIcon(parent)
{
    registerIcons();
    // None for the mode БВ: with a picture a channel about to close would pass for an open or a closed one.
    static const char *const files[TrayIconCount] = {
        "x.ico",      nullptr,    nullptr,    "tlg_ba.ico", "tlg_bd.ico", "tlg_rb.ico", nullptr,
        "tlg_nc.ico", "tlg1.ico", "tlg2.ico", "tlg3.ico",   "tlg4.ico",   "tlg5.ico",   "tlge.ico",
    };
    for (size_t i = 0; i < icons.size(); ++i)
        if (files[i])
            icons[i] = QIcon(QStringLiteral(":icons/") + QLatin1String(files[i]));
    const QStyle *style = QApplication::style();
    icons[1] = QIcon(style->standardPixmap(QStyle::SP_MessageBoxCritical));
    icons[2] = QIcon(style->standardPixmap(QStyle::SP_ComputerIcon));
    setIcon(icons[TrayStart]);
}

void CTrayIcon::showState()
{
    const int picture = nextPicture();
    if (picture == prevIconN)
        return;
    prevIconN = picture;
    setIcon(icons[size_t(picture)]);
}

int CTrayIcon::nextPicture()
{
    if (State.secondsSinceTx == 0 || State.secondsSinceRx == 0) {
        m_phase = (m_phase + 1) % TrafficPhases;
        return TrayTraffic + m_phase;
    }
    if (!TlgThread.linkUp())
        return TrayNoLink;
    switch (State.tlgMode) {
    case ModeClosed: return TrayBD;
    case ModeAsked: return TrayBA;
    case ModeOpen: return TrayRB;
    case ModeNoticeOfClosing: return TrayBV;
    default: return TrayNoMode;
    }
}
