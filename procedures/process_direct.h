#pragma once

#include "procedures/process.h"

/// A direct link: telegrams between start and end mark, no receipts, no numbers, no dialling.
class CProcessDirect : public CProcess
{
    Q_OBJECT

public:
    void timeCheck1sec() override {}
    void processReceive(QString text) override;

    /// Stores a telegram under the day's date and the time. True if it reached its file.
    bool saveText(QString text);
    /// Puts the queue file on the line and marks it as in progress; nothing if one is.
    void checkForSendNewTlg(CTableViewModelItem_Send &item);
    /// The last character of the file has gone: moves it to the day's directory. Always true.
    bool fileSended();
    /// The base's door to the line without the turning of "<" and ">".
    void SendTlgText(QString text);
};

extern CProcessDirect ProcessDirect;
