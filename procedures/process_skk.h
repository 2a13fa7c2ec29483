#pragma once

#include "app/options.h"
#include "app/state.h"
#include "procedures/process.h"
#include "text/scan_position.h"

class CTableViewModelItem_Send;

/// Dialled connections of a switched-channel network with answerbacks ("АО", in the automatic procedure also
/// "АА"): a call, the exchange of answerbacks, text, the hang-up, and the transcript of it all. Main thread;
/// all waits are countdowns in State.
///
/// The chapters: process_skk.cpp calls and their end, _scan reading of the line, _setup reading while a call
/// is set up, _telegram telegrams inside a connection, _auto automatic sending, _answerback its answerbacks.
class CProcessSKK : public CProcess
{
    Q_OBJECT

public:
    void timeCheck1sec() override;
    /// A command is scanned like text but is no part of the transcript.
    void processReceiveCmd(QString command) override;
    /// Appends \a text to the buffer and scans it.
    void processReceive(QString text) override;

    /// Dials \a number in the way of Options.tlgSig; an unknown way sends nothing.
    void callNumber(QString number);
    /// Sends the own answerback.
    void sendAO();
    /// Turns the automatic answer to "#*" off and on, and tells the far end.
    void setIgnoreAO(bool on);
    /// A call exists now, in direction \a direction, a CallDirection.
    void setCallDirection(int direction);
    /// The call has been answered.
    void proccessCallSuccess();
    /// Ends the connection and stores its transcript; without one only resets.
    void clearSKKConnection();
    /// Empties the send buffer and hangs up; the adapter's answer then ends the connection.
    void immediateHangUp();
    void debugInfoToLog();

    /// Starts the automatic send of a queue row, if its time has come.
    void checkForSendNewTlg(CTableViewModelItem_Send &item);
    /// One tick of the automatic send.
    void processAutoMode();
    /// Looks for the awaited answerback at \a position of the receive buffer: -1 ends the scan, 1 repeats it
    /// there, 0 lets it go on.
    int processAutoModeWaitAA(int position);
    /// Books the file as sent: it leaves the queue under its number.
    void compliteSKKFileSendedInAutoMode();
    /// Ends the automatic send in any state, with the outcome that belongs to the state.
    void clearAutoMode();

    /// What the network's result \a index means; empty for an index without a text.
    [[nodiscard]] static QString resultDescription(int index);

signals:
    void updateTlgModeInterface();

public:
    SKKTimingRow *timing = &Options.SKKTiming[SubscriberTiming]; ///< the row in force
    unsigned char lastCmdIn = 0, lastCmdOut = 0;                 ///< letters of the last adapter commands
    int secondsSinceCmdIn = 0, secondsSinceCmdOut = 0;

private:
    static constexpr int PauseAfterHangUp = 5; // ticks without new work
    // For the timer of a step. It stands still at 0; the tick counts it down before it looks at it.
    static constexpr int TimerOff = 0, OnNextTick = 1;

    /// How the scan goes on after a test.
    enum Step {
        NextTest, ///< nothing found: the next test, behind the last one the next position
        Again,    ///< from the start of the buffer
        Repeat,   ///< at the same position of what the buffer holds now
        End       ///< not before more text has come
    };

    /// Where a scan may take up again when text has been appended and nothing else has changed.
    struct Memory {
        CScanPosition end; ///< of the buffer when the scan ended; the rest counts only while this holds
        int from = 0;      ///< nothing in front of it can match any more by itself
        int start = -1;    ///< first start mark that waits for its end mark
        int crypt = -1;    ///< first announcement of encrypted text that waits for its signs
        bool ignoreAO = false;
        int callDirection = -1;
        int autoModeState = AutoIdle;
        int waitAA = NoAA;
        bool tcpMode = false;
    };

    // Calls
    void sendCommand(const QString &command, char letter);
    void storeTranscript();
    void countConnection();

    // Scan
    void scan();
    void beginScan();
    [[nodiscard]] int scanStart() const;
    void remember(int from);
    [[nodiscard]] int indexBehind(int i, const QString &form, CScanPosition &none) const;
    Step testAt(int i);
    [[nodiscard]] bool isAt(int i, const QString &form) const;
    Step testQuestion(int i);
    Step testHangUp(int i);
    Step testSwitchSignals(int i);
    template <class Take> Step takeLine(int i, Take take);
    Step testSetup(int i);
    Step testAdapterEvents(int i);
    Step testResult(int i);
    Step testSuccess(int i);
    Step testConnection(int i);
    void takeCentreAnswerbackAtQuestion(int i);
    void takeIncomingCall();
    void takeChannelName(int i);
    void takeSwitchRefusal(const QString &line);
    void takeRefusal(int index);

    // Telegrams
    void takeTelegram(int i, int end);
    void saveTelegram(const QString &telegram);

    // Automatic send
    void autoStep();
    void autoAsk(bool setKind);
    void autoSendFile();
    void autoFileGone();
    void autoAnswer();
    void autoSet(AutoState state, int timer);
    void fixSilentCentre();
    void bookOutcome();
    void bookCallResult();
    [[nodiscard]] int firstKind() const;
    [[nodiscard]] int lastKind() const;

    // Answerbacks
    void answerIn(AutoState state);
    void acceptSubscriber(int p);
    void fileAccepted(AutoState unanswered, int timer);
    [[nodiscard]] bool isOpening(int p) const;
    [[nodiscard]] int loneOpening() const;
    void extendWait();
    void takeAnyText(int p);
    int takeShortCentre(int p);
    int takeLongCentre(int p);
    int takeBadLongCentre(int p);
    int takeSubscriber(int p);
    [[nodiscard]] bool isShortCentre(int p) const;
    [[nodiscard]] bool isLongCentre(int p) const;
    [[nodiscard]] bool holdsCalledNumber(int p) const;

    Memory m_memory;
    // In receiveBuffer, for the running scan: no form of the kind begins there or behind
    CScanPosition m_noEndMark, m_noEncryptedSigns;
};

extern CProcessSKK ProcessSKK;
