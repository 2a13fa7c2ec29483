// Outgoing calls, their watch and the end of a connection.

#include "procedures/process_skk.h"

#include "app/clock.h"
#include "app/journal_words.h"
#include "app/state.h"
#include "app/whole_file.h"
#include "procedures/telegram_files.h"
#include "text/utils.h"

#include <QDir>

namespace
{
constexpr int ScanAfterConnection = 1; ///< ticks
constexpr int ShortestMessage = 20;    ///< characters; a shorter incoming transcript is stored silently
const QString Answerback = QStringLiteral("#<>");
} // namespace

void CProcessSKK::sendCommand(const QString &command, char letter)
{
    SendTlgText(command);
    lastCmdOut = static_cast<unsigned char>(letter);
    secondsSinceCmdOut = 0;
}

void CProcessSKK::callNumber(QString number)
{
    Log.addCacheServiceString(QStringLiteral("Набор номера ") + number, ProtocolInfo, false);
    State.dialledNumber = number;
    switch (Options.tlgSig) {
    case SignalCode: // the door to the line makes a capital of the small letter: the adapter gets "@N"
        sendCommand(QStringLiteral("@C@n") + number + QLatin1Char('@'), 'N');
        State.callState = Dialled;
        break;
    case SignalPulses:
        sendCommand(QStringLiteral("@C@N") + number + QLatin1Char('@'), 'N');
        State.callState = Dialled;
        break;
    case SignalCodeByProgram: // the number follows when the go-ahead arrives
        sendCommand(QStringLiteral("@E"), 'E');
        State.callState = Seized;
        break;
    default: break;
    }
    State.waitTimeAfterCallEstablished = timing->timeCallEstablish;
}

void CProcessSKK::sendAO()
{
    SendTlgText(Answerback + Options.AO);
}

void CProcessSKK::setIgnoreAO(bool on)
{
    State.ignoreAO = on;
    SendTlgText(on ? QStringLiteral("<>|АО ВЫКЛ") : QStringLiteral("<>|АО ВКЛ"));
}

void CProcessSKK::setCallDirection(int direction)
{
    State.connectionActive = true;
    State.setCallDirection(direction);
}

void CProcessSKK::timeCheck1sec()
{
    ++secondsSinceCmdOut;
    ++secondsSinceCmdIn;
    if (State.waitTimeAfterCallEstablished == 0) {
        if (State.sendAOCountdown != 0 && --State.sendAOCountdown == 0 && State.stopCountdown == 0)
            sendAO();
        return;
    }
    if (--State.waitTimeAfterCallEstablished == 0) {
        State.callResult = CallTimeOut;
        State.callState = NoCall;
        return clearSKKConnection();
    }
    if (State.callState == GoAhead) {
        State.callState = WaitResult;
        return SendTlgText(QLatin1Char('#') + State.dialledNumber);
    }
    if (State.callState == Connected)
        return proccessCallSuccess();
    // Without a station that gives the time, silence from the network means success.
    if (!Options.stationTimeAfterConnect && State.callState == WaitResult &&
        secondsSinceCmdIn > Options.waitErrorReactionAfterConnect)
        proccessCallSuccess();
}

void CProcessSKK::proccessCallSuccess()
{
    setCallDirection(Outgoing);
    State.waitTimeAfterCallEstablished = 0;
    State.callResult = Success;
    State.callState = NoCall;
    if (State.AutoModeState == AutoCalling)
        autoSet(AutoConnected, OnNextTick);
    emit updateTlgModeInterface();
}

void CProcessSKK::clearSKKConnection()
{
    State.hangUpPause = PauseAfterHangUp;
    sendCommand(QStringLiteral("@H"), 'H');
    State.connectionActive = false;
    State.callState = NoCall;
    State.waitTimeAfterCallEstablished = 0;
    State.AutoModeState = AutoIdle;
    State.fileInProgress = false;
    State.currentFile.clear();
    if (State.callDirection != NoDirection) {
        storeTranscript();
        countConnection();
        State.connectionText.clear();
        State.setCallDirection(NoDirection);
    }
    emit updateTlgModeInterface();
}

void CProcessSKK::storeTranscript()
{
    const bool incoming = State.callDirection == Incoming;
    const QString directory = incoming ? State.pathInp_forDate(Time.date) : State.pathOut_forDate(Time.date);
    QDir().mkdir(directory);
    const QString name = directory + QDir::separator() + QLatin1Char('s') + Time.hhmmss;
    if (!replaceWholeFile(name, storedForm(State.connectionText).toUtf8()))
        return noteEvent(JournalWords::CallNotSaved + name);
    noteEvent(JournalWords::CallSaved + name);
    if (incoming && State.connectionText.size() > ShortestMessage)
        announce(Options.soundSKKInConnectMessageSaveFile, Options.soundSKKInConnectMessageSaveType);
}

/// SKK_out rises here at the end of an outgoing connection and in CState::setCallDirection() at its start:
/// it counts both.
void CProcessSKK::countConnection()
{
    State.scanCountdown = ScanAfterConnection;
    const bool incoming = State.callDirection == Incoming;
    ++(incoming ? State.SKK_in : State.SKK_out);
    if (incoming ? printsReceived(Options.autoPrintModeSKK) : printsSent(Options.autoPrintModeSKK))
        CUtils::printClearText(State.connectionText);
}

void CProcessSKK::immediateHangUp()
{
    forgetUnsent();
    SendTlgText(QStringLiteral("@H"));
}

void CProcessSKK::debugInfoToLog()
{
    const auto tell = [](const char *name, const QString &value) {
        Log.addCacheServiceString(QLatin1String(name) + value, ProtocolInfo, false);
    };
    tell("Receive=", receiveBuffer);
    tell("AutoModeWaitTimer=", QString::number(State.AutoModeWaitTimer));
    tell("AutoModeState=", QString::number(State.AutoModeState));
    tell("AutoModeWaitAA=", QString::number(State.AutoModeWaitAA));
    tell("callNumberResult=", QString::number(State.callNumberResult));
    tell("waitTimeAfterCallEstablished=", QString::number(State.waitTimeAfterCallEstablished));
}
