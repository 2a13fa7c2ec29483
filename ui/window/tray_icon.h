#pragma once

#include <QIcon>
#include <QSystemTrayIcon>

#include <array>

/// The icon in the tray: traffic as an animation, otherwise the mode of the channel. Main thread.
class CTrayIcon : public QSystemTrayIcon
{
    Q_OBJECT

public:
    enum Picture {
        TrayNoMode = 0,
        TrayBA = 3,
        TrayBD = 4,
        TrayRB = 5,
        TrayBV = 6,
        TrayNoLink = 7,
        TrayTraffic = 8, ///< the first of the animation's five
        TrayStart = 13,
        TrayIconCount = 14
    };

    /// Loads the pictures and takes the one of the start; does not show itself yet.
    explicit CTrayIcon(QObject *parent = nullptr);

    /// Once a second: the next picture of the animation if there was traffic within the last second, else
    /// the one of State.tlgMode, or that of no link.
    void showState();

    std::array<QIcon, TrayIconCount> icons; ///< by Picture, and two that are never shown
    int prevIconN = -1;                     ///< set last by showState(); -1 matches none

private:
    [[nodiscard]] int nextPicture();

    int m_phase = 0; ///< of the animation, 0..4
};
