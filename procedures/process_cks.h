#pragma once

#include "procedures/process.h"

class CTableViewModelItem_Send;

/// Numbered exchange with a message switching centre.
class CProcessCKS : public CProcess
{
    Q_OBJECT

public:
    void timeCheck1sec() override;
    void processReceive(QString text) override;

    /// Sends a short form of the terminal: 0 receipt request, 1 receipt, 2 stop, 5 text; others nothing.
    void SendKG(int code);
    /// Empties the send buffer.
    void clearOut();
    /// Puts a queue file on the line, if the counters agree.
    void checkForSendNewTlg(CTableViewModelItem_Send &item);
    /// The tick's work while dayChangeQuiet is set: ends the quiet time once midnight is past.
    void checkQuietTime();

    int receiveChunks = 0;
};

extern CProcessCKS ProcessCKS;
