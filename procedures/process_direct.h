#pragma once

#include "procedures/process.h"
#include "text/scan_position.h"

class CTableViewModelItem_Send;

/// A direct link: telegrams between start and end mark, no receipts, no numbers, no dialling. The far end
/// acknowledges nothing, so a file counts as sent once its last character has been handed to the line.
class CProcessDirect : public CProcess
{
    Q_OBJECT

public:
    void timeCheck1sec() override {}
    /// One call handles one telegram: a second one in the buffer waits for the next piece of text.
    void processReceive(QString text) override;

    /// Stores a telegram under the day's date and the time, and counts it. True if it reached its file;
    /// otherwise the journal tells the path, a file already there keeps its content, and nothing is
    /// counted. A second telegram of the same second replaces the first.
    bool saveText(QString text);
    /// Puts the queue file on the line and marks it as in progress; nothing if one is. A file without
    /// text is done at once, because no text will ever be reported as gone out.
    void checkForSendNewTlg(CTableViewModelItem_Send &item);
    /// The last character of the file has gone: moves it to the day's directory. Always true.
    bool fileSended();
    /// The base's door to the line without the turning of "<" and ">".
    void SendTlgText(QString text);

    /// Characters that a telegram without end mark may reach before it is given up; the line text itself
    /// is in the journal. Each telegram of up to half of that is received whole.
    static constexpr int ReceiveLimit = 16 * 1024 * 1024;

private:
    bool findStart();
    [[nodiscard]] int findEnd();
    void giveUpEndless();
    void takeTelegram(const QString &telegram);

    CScanPosition m_sought; ///< in receiveBuffer, which then begins with a start mark: no end mark in front
};

extern CProcessDirect ProcessDirect;
