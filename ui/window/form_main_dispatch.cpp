// Chapter of FormMain: the end of the tick, which offers the first row of the queue to the procedure.

#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "procedures/process_cks.h"
#include "procedures/process_direct.h"
#include "procedures/process_skk.h"
#include "procedures/telegram_files.h"
#include "ui/form_main.h"

#include <QFileInfo>
#include <QScopedValueRollback>

namespace
{
constexpr int QuietBeforeSending = 3; ///< seconds without received text before a telegram for the centre
constexpr int ReceiptPeriod = 30;     ///< seconds
constexpr int RequestPeriod = 60;     ///< seconds
constexpr int StampPosition = 13;     ///< of the time stamp in a queue name of the direct procedure

bool everythingSent()
{
    return TlgThread.sendBuffer.mIsEmpty() && TlgThread.allSent;
}

/// Brings a row to the state of its file, as a scan would; false if the file has gone.
bool bringUpToDate(CTableViewModelItem_Send &row)
{
    if (!QFileInfo::exists(queuePath(row.fileName)))
        return false;
    if (Options.processMode != Direct)
        row.loadFromFile();
    return true;
}

/// Hands the first row of \a model over as a copy: a scan under a question box of the procedure may move or
/// remove the row itself. A row that a menu has held, \a isHeld, is not the state of things: what has just
/// been sent, or has spent a try, would go once more.
template <class Process> void offerFirstRow(Process &process, CTableViewModel_Send &model, bool isHeld)
{
    CTableViewModelItem_Send row = model.at(0);
    if (!isHeld || bringUpToDate(row))
        process.checkForSendNewTlg(row);
}
} // namespace

void FormMain::dispatch()
{
    if (!TlgThread.linkUp()) {
        State.hangUpPause = 0;
        return;
    }
    if (State.manualMode) {
        if (Options.processMode == SKK && State.AutoModeState != AutoIdle)
            ProcessSKK.clearAutoMode();
        return;
    }
    if (State.hangUpPause > 0) {
        --State.hangUpPause;
        return;
    }
    if (dispatching)
        return;
    const QScopedValueRollback<bool> guard(dispatching, true);
    dispatchAutomatic();
}

void FormMain::dispatchAutomatic()
{
    if (Options.processMode == CKS)
        dispatchCKS();
    else if (Options.processMode == SKK)
        dispatchSKK();
    else if (Options.processMode == Direct)
        dispatchDirect();
}

/// The age of the mode is a multiple of \a period. Where State has stopped counting it, the window goes on.
bool FormMain::isDueEach(int period) const
{
    const int past = State.tlgModeSeconds < CState::MostModeSeconds ? 0 : modeOvertime;
    return (State.tlgModeSeconds + past) % period == 0;
}

void FormMain::dispatchCKS()
{
    if (State.dayChangeQuiet)
        return ProcessCKS.checkQuietTime();
    if (State.tlgMode == ModeAsked && isDueEach(ReceiptPeriod))
        State.sendReceiptCountdown = CProcessCKS::OnNextTick;
    if (State.tlgMode == ModeUnknown && isDueEach(RequestPeriod))
        State.askReceiptCountdown = CProcessCKS::OnNextTick;
    if (State.tlgMode == ModeOpen && State.secondsSinceRx > QuietBeforeSending && modelSend.rowCount() > 0 &&
        !State.fileInProgress && modelSend.at(0).number.isEmpty())
        offerFirstRow(ProcessCKS, modelSend, sendMenuOpen);
}

void FormMain::dispatchSKK()
{
    // The send does not move on while text that has come already is still to be read.
    if (State.AutoModeWaitTimer != 0 && everythingSent() && !receiver.moreToReceive) {
        ProcessSKK.processAutoMode();
        // A send that has just ended leaves its row in the list until the next scan, and the line a pause.
        if (State.manualMode || State.hangUpPause > 0)
            return;
    }
    if (!State.connectionActive && !State.fileInProgress && modelSend.rowCount() > 0 &&
        State.AutoModeState == AutoIdle && State.callDirection == NoDirection &&
        !modelSend.at(0).number.isEmpty())
        offerFirstRow(ProcessSKK, modelSend, sendMenuOpen);
}

void FormMain::dispatchDirect()
{
    if (State.fileInProgress || modelSend.rowCount() == 0 || !everythingSent())
        return;
    const QString now = Time.dateTime.toString(QStringLiteral("yyMMdd_hhmmss"));
    if (modelSend.at(0).fileName.mid(StampPosition) < now)
        offerFirstRow(ProcessDirect, modelSend, sendMenuOpen);
}
