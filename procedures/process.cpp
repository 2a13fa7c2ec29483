#include "procedures/process.h"

void CProcess::processReceiveCmd(QString) {}
