#include "procedures/process_skk.h"

void CProcessSKK::timeCheck1sec() {}

void CProcessSKK::processReceive(QString text)
{
    receiveBuffer += text;
}

void CProcessSKK::processReceiveCmd(QString) {}
void CProcessSKK::callNumber(QString) {}
void CProcessSKK::clearSKKConnection() {}
void CProcessSKK::immediateHangUp() {}
void CProcessSKK::debugInfoToLog() {}
void CProcessSKK::checkForSendNewTlg(CTableViewModelItem_Send &) {}
void CProcessSKK::processAutoMode() {}
void CProcessSKK::clearAutoMode() {}
