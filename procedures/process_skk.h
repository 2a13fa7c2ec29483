#pragma once

#include "app/options.h"
#include "procedures/process.h"

class CTableViewModelItem_Send;

/// Dialled connections of a switched-channel network with answerbacks.
class CProcessSKK : public CProcess
{
    Q_OBJECT

public:
    void timeCheck1sec() override;
    void processReceiveCmd(QString command) override;
    void processReceive(QString text) override;

    /// Dials \a number.
    void callNumber(QString number);
    /// Ends and stores the connection.
    void clearSKKConnection();
    /// Empties the send buffer and hangs up.
    void immediateHangUp();
    void debugInfoToLog();
    /// Starts the automatic send of a queue row.
    void checkForSendNewTlg(CTableViewModelItem_Send &item);
    /// One tick of the automatic send.
    void processAutoMode();
    /// Ends the automatic send in any state.
    void clearAutoMode();

signals:
    void updateTlgModeInterface();

public:
    SKKTimingRow *timing = &Options.SKKTiming[0]; ///< the row in force
    unsigned char lastCmdIn = 0, lastCmdOut = 0;
    int secondsSinceCmdIn = 0, secondsSinceCmdOut = 0;
};

extern CProcessSKK ProcessSKK;
