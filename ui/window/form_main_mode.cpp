// Chapter of FormMain: what the modes of channel and workstation show and allow.

#include "app/journal_words.h"
#include "app/options.h"
#include "app/startup.h"
#include "app/state.h"
#include "records/protocol.h"
#include "ui/form_main.h"
#include "ui/pages/protocol_page.h"
#include "ui/roll/protocol_widget.h"
#include "ui/widgets/label_clickable.h"
#include "ui/window/status_strip.h"

#include <QAction>
#include <QApplication>
#include <QFrame>
#include <QPushButton>

namespace
{
constexpr int ScanAfterModeChange = 2; ///< ticks

struct CentreMode {
    const char *label;
    bool on[5]; ///< КГ0, КГ1, КГ2, КГ4, КГ5
};
// clang-format off
const CentreMode centreModes[] = { // by TlgMode
    {"--", {true,  false, false, false, false}},
    {"БД", {true,  false, false, false, false}},
    {"БА", {true,  true,  false, false, true }},
    {"РБ", {true,  false, true,  false, false}},
    {"БВ", {true,  false, false, false, false}},
    {"БР", {false, false, true,  true,  false}},
};
// clang-format on
const CentreMode unknownCentreMode = {"?", {false, false, false, false, false}};

const CentreMode &centreMode(int tlgMode)
{
    return tlgMode >= 0 && size_t(tlgMode) < std::size(centreModes) ? centreModes[tlgMode]
                                                                    : unknownCentreMode;
}

QString switchedModeLabel(int tlgMode)
{
    return tlgMode == ModeClosed  ? QStringLiteral("БД")
           : tlgMode == ModeAsked ? QStringLiteral("БА")
           : tlgMode == ModeOpen  ? QStringLiteral("РБ")
                                  : QStringLiteral("--");
}

QString endpoint()
{
    return Options.TcpMode ? Options.Host + QLatin1Char(':') + QString::number(Options.Port)
                           : Options.TRELO_SN;
}

void setModeButtons(const CProtocolPage &page, const QList<bool> &on)
{
    for (int i = 0; i < on.size(); ++i)
        page.modeButtons[i]->setEnabled(on[i] || Options.noLockButtonInProtocol);
}

void setTlgModeLabel(const CStatusStrip &strip, const QString &text)
{
    if (strip.labelTlgMode->text() == text)
        return;
    strip.labelTlgMode->setText(text);
    Log.addCacheServiceString(JournalWords::ChannelMode + text, ProtocolInfo, true);
}
} // namespace

void FormMain::slotSetTlgModeInterface()
{
    if (Options.processMode == CKS) {
        const CentreMode &mode = centreMode(State.tlgMode);
        setModeButtons(*protocolPage, QList<bool>(mode.on, mode.on + std::size(mode.on)));
        setTlgModeLabel(*strip, QString::fromUtf8(mode.label));
    } else if (Options.processMode == SKK) {
        const bool talking = State.connectionActive;
        //             Вызов  Набор    КТО      АО       файл     строка   Звонок  Отбой
        setModeButtons(*protocolPage, {true, !talking, talking, talking, talking, talking, talking, true});
        setTlgModeLabel(*strip, switchedModeLabel(State.tlgMode));
    } else {
        setModeButtons(*protocolPage, {true, true, true});
        setTlgModeLabel(*strip, QStringLiteral("--"));
    }
    State.scanCountdown = ScanAfterModeChange;
}

void FormMain::setAutomaticInterface()
{
    const bool manual = State.manualMode;
    actionOptions->setEnabled(manual);
    strip->labelAutomatic->setText(manual ? QStringLiteral(" РУЧНОЙ ") : QStringLiteral(" АВТОМАТ "));
    CStatusStrip::setColor(strip->labelAutomatic, manual ? CStatusStrip::Yellow : CStatusStrip::Green);
    protocolPage->modeFrame->setVisible(manual);
    protocolWidget->setCursorEnable(manual);
}

void FormMain::toggleAutomaticMode()
{
    State.setAutomatic(State.manualMode);
    protocolWidget->reset();
}

void FormMain::updateTitles()
{
    const QString application = QCoreApplication::applicationName();
    const QString word = QStringLiteral(" - ") + processModeWord(Options.processMode);
    const QString version = QStringLiteral(" / V:") + QCoreApplication::applicationVersion();
    const QString &channel = State.channelName;
    if (!Options.mainTitle.isEmpty()) {
        setWindowTitle(Options.mainTitle + QStringLiteral(" / ") + application + word + version);
        trayIcon.setToolTip(Options.mainTitle);
    } else {
        setWindowTitle((channel.isEmpty() ? application : channel) + word + version);
        const QString name =
            channel.isEmpty() ? application + QStringLiteral(" (") + buildDate() + QLatin1Char(')') : channel;
        trayIcon.setToolTip(name + word + QLatin1Char('\n') + endpoint());
    }
    if (Options.fontSizeCorrect != 0) {
        QFont font = QApplication::font();
        font.setPointSize(State.basePointSize + Options.fontSizeCorrect);
        QApplication::setFont(font);
    }
}
