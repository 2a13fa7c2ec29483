#include "procedures/process_direct.h"

void CProcessDirect::processReceive(QString text)
{
    receiveBuffer += text;
}
