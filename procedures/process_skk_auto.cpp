// The automatic sending of a queue file over a call, as a machine of steps that the tick moves.

#include "procedures/process_skk.h"

#include "app/clock.h"
#include "app/journal_words.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "procedures/telegram_files.h"
#include "records/send_model.h"
#include "text/utils.h"

#include <QDir>

namespace
{
constexpr int ScanAfterSending = 10; ///< ticks: the row stays in the list until the connection has ended

// Seconds from a call that failed to the next one
constexpr int RetrySeconds = 300;
constexpr int RetryAfterSubscriberFault = 3600;
constexpr int RetryAfterNetworkFault = 900;
constexpr int RetryAfterWrongNumber = 30;

const QString Question = QStringLiteral("#*");

void tell(const QString &text)
{
    Log.addCacheServiceString(text, ProtocolInfo, false);
}
} // namespace

int CProcessSKK::firstKind() const
{
    return State.sendInfo.toCKS ? ShortCentreAA : SubscriberAA;
}

int CProcessSKK::lastKind() const
{
    return State.sendInfo.toCKS ? LongCentreAA : SubscriberAA;
}

void CProcessSKK::autoSet(AutoState state, int timer)
{
    State.AutoModeState = state;
    State.AutoModeWaitTimer = timer;
}

void CProcessSKK::checkForSendNewTlg(CTableViewModelItem_Send &item)
{
    if (item.bad || item.trys == 0 || !(item.sendTime < Time.dateTime))
        return;
    State.fileInProgress = true;
    State.currentFile = item.fileName;
    State.sendInfo = item;
    timing = &Options.SKKTiming[State.sendInfo.toCKS ? CentreTiming : SubscriberTiming];
    // A try is spent even if the program stops now.
    --State.sendInfo.trys;
    State.sendInfo.Save(queuePath(State.currentFile));
    tell(JournalWords::Calling + shownName(State.currentFile));
    callNumber(State.sendInfo.number);
    autoSet(AutoCalling, timing->timeCallWait);
}

void CProcessSKK::processAutoMode()
{
    fixSilentCentre();
    if (--State.AutoModeWaitTimer <= 0) {
        State.AutoModeWaitTimer = TimerOff;
        autoStep();
    }
}

/// What happens when the timer of a step runs out. A step that sets no timer stops the machine.
void CProcessSKK::autoStep()
{
    switch (AutoState(State.AutoModeState)) {
    case AutoIdle: return;
    case AutoCalling: return clearAutoMode();
    case AutoConnected:
        if (Options.afterConnectAskAO)
            return autoSet(AutoBeforeQuestion, timing->Pause_Before_Ask_Who);
        State.AutoModeWaitAA = firstKind();
        return autoSet(AutoWaitAA, timing->Wait_AA);
    case AutoBeforeQuestion: autoAsk(true); return autoSet(AutoAsked, timing->Pause_Before_Ask_Who2);
    case AutoAsked: autoAsk(false); return autoSet(AutoWaitAA, timing->Wait_AA);
    case AutoWaitAA: tell(QStringLiteral("Автоответ не распознан")); return clearAutoMode();
    case AutoGotAA: sendAO(); return autoSet(AutoBeforeFile, timing->Pause_Before_Send_File);
    case AutoBeforeFile: return autoSendFile();
    case AutoSendingFile: return autoFileGone();
    case AutoBeforeLastQuestion:
        receiveBuffer.clear();
        SendTlgText(Question);
        State.AutoModeWaitAA = lastKind();
        return autoSet(AutoWaitLastAA, timing->Wait_AA);
    case AutoWaitLastAA: return clearAutoMode();
    case AutoDelivered: return autoAnswer();
    case AutoAnswered: return autoSet(AutoLastPause, timing->timeAfterOwnAO);
    case AutoLastPause: sendCommand(QStringLiteral("@H"), 'H'); return clearAutoMode();
    }
}

void CProcessSKK::autoAsk(bool setKind)
{
    (void)TlgThread.recvBuffer.mTake();
    receiveBuffer.clear();
    SendTlgText(Question);
    if (setKind)
        State.AutoModeWaitAA = firstKind();
}

void CProcessSKK::autoSendFile()
{
    const int pause = timing->Pause_Before_Send_File;
    if (State.secondsSinceRx < pause - 1) {
        State.AutoModeWaitTimer = pause - State.secondsSinceRx; // the far end still talks
        return;
    }
    const std::optional<QString> text = readTelegram(queuePath(State.currentFile));
    if (!text) {
        // The timer stays at 0: the machine stands, and the idle hang-up will end the connection.
        State.sendInfo.trys = 0;
        return noteEvent(JournalWords::UnreadableInCall + shownName(State.currentFile), ProtocolError);
    }
    SendTlgText(QStringLiteral("\r\n"));
    SendTlgText(*text);
    autoSet(AutoSendingFile, OnNextTick);
}

void CProcessSKK::autoFileGone()
{
    if (!TlgThread.sendBuffer.mIsEmpty() || !TlgThread.allSent)
        return autoSet(AutoSendingFile, OnNextTick);
    if (!State.sendInfo.toCKS || Options.sendAskAOAfterTlgText)
        return autoSet(AutoBeforeLastQuestion, timing->Pause_Before_Ask_Who);
    State.AutoModeWaitAA = LongCentreAA; // it comes without a question
    autoSet(AutoWaitLastAA, timing->Wait_AA);
}

void CProcessSKK::autoAnswer()
{
    const int pause = timing->Pause_Before_Send_Answer_AA;
    if (State.secondsSinceRx < pause - 1) {
        State.AutoModeWaitTimer = pause - State.secondsSinceRx;
        return;
    }
    sendAO();
    autoSet(AutoAnswered, OnNextTick);
}

void CProcessSKK::compliteSKKFileSendedInAutoMode()
{
    noteEvent(JournalWords::Delivered + shownName(State.currentFile) + JournalWords::DeliveredRest);
    const QString path = queuePath(State.currentFile);
    const bool moved = CUtils::renameFile(
        path, State.pathOut_currentDate(),
        State.currentFile + QLatin1Char('.') + CUtils::StringNNN(State.PK_out), Options.markNewFilesInOut);
    // What stays in the queue would go out again; the operator decides.
    if (!moved && QFileInfo::exists(path))
        State.setAutomatic(false);
    CFileInfo::Remove(path); // whether or not the file has moved, and meant so
    // The name has the value before. The counter wraps in names alone and reaches the disk with the next
    // Save.
    ++State.PK_out;
    State.currentFile.clear();
    State.scanCountdown = ScanAfterSending;
}

void CProcessSKK::clearAutoMode()
{
    if (State.AutoModeState == AutoIdle)
        return;
    State.hangUpPause = PauseAfterHangUp;
    bookOutcome();
    // Once the file is booked as sent its name is empty. Its record then has no name but the ending either,
    // and no mask of the queue takes it for a telegram.
    if (State.fileInProgress)
        State.sendInfo.Save(queuePath(State.currentFile));
    State.AutoModeWaitAA = NoAA;
    autoSet(AutoIdle, TimerOff);
    State.fileInProgress = false;
    clearSKKConnection();
}

void CProcessSKK::bookOutcome()
{
    switch (AutoState(State.AutoModeState)) {
    case AutoCalling: return bookCallResult();
    case AutoBeforeQuestion:
        State.sendInfo.sendTime = Time.dateTime.addSecs(RetrySeconds);
        return tell(QStringLiteral("АО не распознан"));
    case AutoAsked:
    case AutoWaitAA:
        State.sendInfo.resultText = QStringLiteral("Нет ответа");
        return tell(QStringLiteral("АО не распознан"));
    case AutoGotAA:
    case AutoBeforeFile:
    case AutoSendingFile:
    case AutoBeforeLastQuestion: State.sendInfo.resultText = QStringLiteral("Файл не отправлен"); return;
    case AutoWaitLastAA:
        State.sendInfo.resultText = QStringLiteral("Нет ответа после отправки файла");
        return;
    case AutoIdle:
    case AutoConnected:
    case AutoDelivered:
    case AutoAnswered:
    case AutoLastPause: return;
    }
}

/// When, and how often, a call that failed is tried again.
void CProcessSKK::bookCallResult()
{
    State.sendInfo.resultText = resultDescription(State.callResult);
    int seconds = RetrySeconds;
    switch (State.callResult) {
    case SubscriberFault: seconds = RetryAfterSubscriberFault; break;
    case WrongNumber:
        seconds = RetryAfterWrongNumber;
        State.sendInfo.trys = qMin(State.sendInfo.trys, 1);
        break;
    case NetworkFault: seconds = RetryAfterNetworkFault; break;
    case Barred: State.sendInfo.trys = 0; return;
    default: break;
    }
    State.sendInfo.sendTime = Time.dateTime.addSecs(seconds);
}
