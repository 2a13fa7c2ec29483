// Chapter of FormMain: the main loop. All waits of the program are counters that it moves.

#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "link/prf_thread.h"
#include "link/tlg_thread.h"
#include "procedures/process_cks.h"
#include "procedures/process_skk.h"
#include "records/protocol.h"
#include "text/utils.h"
#include "ui/form_main.h"
#include "ui/roll/protocol_widget.h"
#include "ui/widgets/label_clickable.h"
#include "ui/window/status_strip.h"

#include <QFile>

namespace
{
constexpr int FirstReceiptRequest = 5; ///< ticks from the start to the first receipt request
constexpr int StopFilePhases = 5;      ///< ticks from one test for a stop request to the next

void showCounters(const CStatusStrip &strip, int netIn, int netOut)
{
    strip.labelNetIn->setText(CUtils::StringNNN(netIn));
    strip.labelNetOut->setText(CUtils::StringNNN(netOut));
    strip.labelPKin->setText(CUtils::StringNNN(State.PK_in));
    strip.labelPKout->setText(CUtils::StringNNN(State.PK_out));
}

void takeLeaveOfLine()
{
    if (Options.processMode == CKS) {
        State.setAutomatic(false);
        ProcessCKS.clearOut();
        ProcessCKS.SendKG(CProcessCKS::Stop);
    } else if (Options.processMode == SKK) {
        ProcessSKK.clearSKKConnection();
    }
    State.setTlgMode(ModeUnknown);
}

void hangUpIdle(FormMain &form)
{
    Log.addCacheServiceString(
        QStringLiteral("Исходящий отбой (отсутствие приема/передачи %1 сек)").arg(State.idleSeconds),
        ProtocolInfo, false);
    if (Options.debugInfoToProtocol && State.callDirection == Outgoing)
        ProcessSKK.debugInfoToLog();
    form.TlgSend(QStringLiteral("@H"));
    ProcessSKK.clearSKKConnection();
}
} // namespace

void FormMain::slot_on_1sec()
{
    if (firstStart)
        startOnFirstTick();
    checkStopFile();
    TlgThread.slotOnSec();
    protocolWidget->setInputStopped(!TlgThread.linkUp());
    requestFlush();
    tellJournalFailure();
    keepDraft();
    trayIcon.showState();
    ++State.secondsSinceTx;
    ++State.secondsSinceRx;
    showStripOnTick();
    countDownToStop();
    checkDayChange();
    runProcedureTimers();
    countDownToScan();
    countIdle();
    countModeAge();
    dispatch();
}

void FormMain::startOnFirstTick()
{
    firstStart = false;
    protocolWidget->reset();
    TlgThread.start(QThread::InheritPriority);
    if (Options.usePrf) {
        PrfThread.start(QThread::InheritPriority);
        PrfThread.Activate();
        PrfThread.Deactivate();
    }
    State.setAutomatic(!Options.startInManualMode);
    if (Options.processMode == CKS)
        State.askReceiptCountdown = FirstReceiptRequest;
}

void FormMain::checkStopFile()
{
    if (!Options.checkStopFile || State.stopCountdown != 0)
        return;
    stopFilePhase = (stopFilePhase + 1) % StopFilePhases;
    // The name is empty: a line in use is not given up at another start's request. Who starts is asked again
    // and again until this program is closed by hand.
    if (stopFilePhase == 0 && QFile::exists(QString())) {
        State.stopCountdown = CState::TicksToCloseOpen; // whatever the mode
        Log.addCacheServiceString(QStringLiteral("Запрос на остановку приложения"), ProtocolInfo, true);
    }
}

void FormMain::requestFlush()
{
    if (!Options.protocolFileNoClose)
        return;
    if (Options.protocolFileCacheTime >= 2) {
        flushPhase = (flushPhase + 1) % Options.protocolFileCacheTime;
        if (flushPhase != 0)
            return;
    }
    Log.flushRequested = true;
    Log.flush(); // the next line may be hours away
}

/// The book lives on in memory, and a program that ended now would lose it. The operator can make room.
void FormMain::tellJournalFailure()
{
    if (Log.behind || !Log.writeError.isEmpty())
        Log.Save(); // the disk may be back by now, and the next line hours away
    const bool failing = !Log.writeError.isEmpty();
    if (failing && !journalFailureTold) {
        const QString text = QStringLiteral("Протокол не записывается на диск: ") + Log.writeError;
        Log.addCacheServiceString(text, ProtocolError, true);
    }
    journalFailureTold = failing;
}

void FormMain::showStripOnTick()
{
    strip->labelWindow->setText(QString::number(TlgThread.shownWindow.load()));
    strip->labelClock->setText(Time.hh_mm_ss);
    CStatusStrip::setColor(strip->lampSent, CStatusStrip::Black);
    CStatusStrip::setColor(strip->lampReceived, CStatusStrip::Black);
}

void FormMain::countDownToStop()
{
    if (State.stopCountdown <= 0)
        return;
    if (State.tlgMode == ModeOpen)
        takeLeaveOfLine();
    if (--State.stopCountdown == 0) {
        State.closeAllowed = true;
        close();
    }
}

void FormMain::runProcedureTimers()
{
    if (Options.processMode == CKS) {
        ProcessCKS.timeCheck1sec();
        showCounters(*strip, State.CKS_in, State.CKS_out);
    } else if (Options.processMode == SKK) {
        ProcessSKK.timeCheck1sec();
        showCounters(*strip, State.SKK_in, State.SKK_out);
    }
}

void FormMain::countDownToScan()
{
    if (State.scanCountdown <= 0) {
        scanDir();
        strip->labelScanResult->setText(CUtils::StringNNN(State.scanFoundCount));
        State.scanCountdown = qMax(0, Options.scanDirsTimeout); // a file may hold any number
    } else {
        --State.scanCountdown;
    }
    strip->labelScanCountdown->setText(CUtils::StringNNN(State.scanCountdown));
}

void FormMain::countIdle()
{
    ++State.idleSeconds;
    if (Options.processMode != SKK ||
        State.idleSeconds != Options.SKKTiming[SubscriberTiming].Idle_Time_Before_HangUp)
        return;
    if (State.callDirection != NoDirection)
        hangUpIdle(*this);
    State.idleSeconds = 0;
}

void FormMain::countModeAge()
{
    if (State.tlgModeSeconds < CState::MostModeSeconds) {
        ++State.tlgModeSeconds;
        modeOvertime = 0;
    } else {
        modeOvertime = (modeOvertime + 1) % CState::MostModeSeconds;
    }
}
