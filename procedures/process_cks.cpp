#include "procedures/process_cks.h"

void CProcessCKS::timeCheck1sec() {}

void CProcessCKS::processReceive(QString text)
{
    receiveBuffer += text;
}

void CProcessCKS::SendKG(int) {}
void CProcessCKS::clearOut() {}
void CProcessCKS::checkForSendNewTlg(CTableViewModelItem_Send &) {}
void CProcessCKS::checkQuietTime() {}
