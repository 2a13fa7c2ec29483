#pragma once

#include <QPalette>
#include <QWidget>

#include <array>

class CLabelClickable;
class CStripLayout;
class QGroupBox;
class QLabel;

/// The status strip between menu and tabs: builds its boxes and labels, names them and fits them into the
/// window's width. What they show, and what a click does, is the window's affair. Main thread.
class CStatusStrip : public QWidget
{
    Q_OBJECT

public:
    /// Text colours of the labels; the palettes differ in nothing else.
    enum Color { White, Red, Yellow, Green, Black, ColorCount };

    explicit CStatusStrip(QWidget *parent = nullptr);

    /// The application's palette but for the colour of texts.
    [[nodiscard]] static QPalette paletteOf(Color color);
    /// Replaces the label's whole palette.
    static void setColor(QLabel *label, Color color);
    /// Shows \a text in one of the lines of the third box, and whole in its tool tip. A line without text
    /// takes no room, but for the link's.
    void showState(QLabel *label, const QString &text);
    /// Sizes the boxes for the font and for a window of \a width, with \a stateLines lines in the third box.
    /// The strip's height is fixed by it, so it is due after each change of these or of the font.
    void fit(int width, int stateLines);

    // Box by box; named by what they show. A clickable one tells of its click alone.
    std::array<QGroupBox *, 3> boxes{};
    QLabel *labelWindow = nullptr;                                                 ///< adapter window figure
    QLabel *labelNetIn = nullptr, *labelNetName = nullptr, *labelNetOut = nullptr; ///< centre or SKK counters
    CLabelClickable *labelScanCountdown = nullptr;
    QLabel *lampSent = nullptr, *labelClock = nullptr, *lampReceived = nullptr;
    QLabel *labelScanResult = nullptr;
    CLabelClickable *labelPKout = nullptr, *labelPKin = nullptr;
    QLabel *labelPKName = nullptr;
    QLabel *labelAutomaticName = nullptr, *labelTlgModeName = nullptr;
    CLabelClickable *labelAutomatic = nullptr;
    QLabel *labelTlgMode = nullptr;
    CLabelClickable *labelLinkState = nullptr;
    QLabel *labelPrfState = nullptr, *labelReserved = nullptr;

private:
    void buildBox(QGroupBox *box, int index);
    void shapeLabels(); ///< what differs from a plain label

    CStripLayout *m_layout;
};
