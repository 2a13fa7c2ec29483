// Chapter of FormMain: where the threads of line and perforator meet the main thread.

#include "app/options.h"
#include "app/state.h"
#include "link/prf_thread.h"
#include "link/tlg_thread.h"
#include "procedures/process_cks.h"
#include "procedures/process_direct.h"
#include "procedures/process_skk.h"
#include "records/protocol.h"
#include "text/mtk2.h"
#include "ui/form_main.h"
#include "ui/pages/protocol_page.h"
#include "ui/roll/protocol_widget.h"
#include "ui/widgets/label_clickable.h"
#include "ui/window/status_strip.h"

#include <QFrame>
#include <QMutexLocker>

void FormMain::TlgSend(QString text)
{
    if (!protocolWidget->isLastString())
        protocolWidget->reset();
    if (text.isEmpty())
        return;
    text.replace(QLatin1Char('\r'), QLatin1Char('<')).replace(QLatin1Char('\n'), QLatin1Char('>'));
    TlgThread.sendBuffer.mAppendOperators(upperMTK2(text));
    protocolWidget->slotProtocolDataChanged();
}

void FormMain::setThreadsParams()
{
    if (Options.TcpMode)
        TlgThread.setTcp(Options.Host, Options.Port, Options.AsTspSrv);
    else
        TlgThread.setTrelo(Options.TRELO_SN, Options.tlgBaud, false);
    if (Options.usePrf)
        PrfThread.setSorel(Options.SOREL_SN, Options.prfBaudIndex, Options.autodetectPortSorel);
}

void FormMain::slotOnTlgReceived()
{
    noteReception();
    receiver.takeNews();
}

void FormMain::noteReception()
{
    State.secondsSinceRx = 0;
    State.idleSeconds = 0;
    CStatusStrip::setColor(strip->lampReceived, CStatusStrip::White);
}

void FormMain::slotOnTlgSended()
{
    State.secondsSinceTx = 0;
    const QString text = TlgThread.sentLog.mTake();
    if (!text.isEmpty())
        Log.add(text, ProtocolSent);
    if (Options.processMode == SKK)
        State.connectionText += text;
    State.idleSeconds = 0;
    if (State.fileInProgress && TlgThread.sendBuffer.mIsEmpty()) {
        if (Options.processMode == CKS) {
            State.askReceiptCountdown = CProcessCKS::RequestSoon;
        } else if (Options.processMode == Direct) {
            ProcessDirect.fileSended();
            State.scanCountdown = CState::ScanOnNextTick;
        }
    }
    CStatusStrip::setColor(strip->lampSent, CStatusStrip::White);
}

void FormMain::slotOnTlgState()
{
    for (const QString &text : TlgThread.stateText.mTakeNews())
        Log.addCacheServiceString(text, ProtocolInfo, false);
    strip->showState(strip->labelLinkState, TlgThread.stateText.mGet());
    const bool up = TlgThread.linkUp();
    CStatusStrip::setColor(strip->labelLinkState, up ? CStatusStrip::Green : CStatusStrip::Red);
    protocolPage->modeFrame->setEnabled(up);
    if (Options.processMode == SKK && !up && State.connectionActive)
        ProcessSKK.clearSKKConnection();
}

void FormMain::slotOnPrfState()
{
    strip->showState(strip->labelPrfState, PrfThread.state());
    CStatusStrip::setColor(strip->labelPrfState, PrfThread.connected      ? CStatusStrip::Green
                                                 : PrfThread.adapterFound ? CStatusStrip::White
                                                                          : CStatusStrip::Red);
}
