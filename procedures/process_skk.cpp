#include "procedures/process_skk.h"

#include "link/tlg_thread.h"

#include <QMutexLocker>

void CProcessSKK::timeCheck1sec() {}

void CProcessSKK::processReceive(QString text)
{
    receiveBuffer += text;
}

void CProcessSKK::processReceiveCmd(QString) {}
void CProcessSKK::callNumber(QString) {}
void CProcessSKK::clearSKKConnection() {}

// The answer of the adapter ends the connection.
void CProcessSKK::immediateHangUp()
{
    {
        const QMutexLocker lock(&TlgThread.sendBuffer.mutex);
        TlgThread.sendBuffer.text.clear();
    }
    SendTlgText(QStringLiteral("@H"));
}

void CProcessSKK::debugInfoToLog() {}
void CProcessSKK::checkForSendNewTlg(CTableViewModelItem_Send &) {}
void CProcessSKK::processAutoMode() {}
void CProcessSKK::clearAutoMode() {}
