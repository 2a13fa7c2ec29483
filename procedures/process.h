#pragma once

#include "text/growing_text.h"

#include <QObject>
#include <QString>

class CTableViewModelItem_Send;

/// A line procedure: it gives meaning to the character stream of the line. Exactly one is in force, chosen
/// by Options.processMode. A procedure never waits; its waits are countdowns in State. Main thread.
class CProcess : public QObject
{
    Q_OBJECT

public:
    virtual void timeCheck1sec() = 0;
    /// Takes an adapter command ("@C", "@H", ...).
    virtual void processReceiveCmd(QString command);
    /// Takes the next piece of received text, cut anywhere.
    virtual void processReceive(QString text) = 0;

    /// The procedures' door to the line: masks national letters, turns "<" and ">" into CR and LF,
    /// upper-cases, appends to the send buffer. An empty text is ignored. Everything passes the upper
    /// case, so a command with a small letter does not survive it.
    void SendTlgText(QString text);

    CGrowingText receiveBuffer; ///< received text not yet understood
};
