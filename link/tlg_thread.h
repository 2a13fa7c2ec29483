#pragma once

#include "app/relaxed.h"
#include "link/shared_strings.h"
#include "link/state_text.h"

#include <QByteArray>
#include <QMutex>
#include <QPair>
#include <QString>
#include <QThread>

class QTcpSocket;

/// The thread that moves telegram text between the line and the program. It owns the socket or the serial
/// port; the main thread meets it only through the texts below (each under its own mutex, sendBuffer's
/// taken before any other), through plain flags, and through signals that arrive as queued calls.
///
/// Text is internal telegram text with CR and LF; "@" begins a control command in both directions.
///
/// The settings that a connection works with (address, port, adapter and what it reads of Options) are
/// copies under settingsMutex: calls of the main thread write them, the link thread reads them. Two are read
/// where they stand: Options.processMode, as it never changes in a run, and Options.nationalLanguageUse, a
/// plain word of both threads as is the code table that goes with it.
class CTlgThread : public QThread
{
    Q_OBJECT

public:
    enum LinkType { AdapterPort = 0, TcpClient = 1, TcpServer = 2 };
    /// What the adapter says of the line; a TCP line is always good.
    enum LineError { LineGood = 0, BreakSeen = 1, SignalLost = 2 };

    static constexpr int MaxDialDigits = 1024; ///< a longer number is no command but noise
    static constexpr int LongestCommand = 2 + MaxDialDigits + 2;

    CTlgThread();
    ~CTlgThread() override;

    // Calls of the main thread

    /// The next connection is TCP: to the numeric \a address, or with \a server from it alone. Always true.
    bool setTcp(const QString &address, int port, bool server);
    /// The next connection is the adapter with the USB serial number \a serial; \a baud is 50, 100, 200, or
    /// else 0. False if no such port is there now. \a arg is stored and read nowhere.
    bool setTrelo(const QString &serial, int baud, bool arg);
    void pauseThread();
    /// Copies what a running link reads of Options; the other calls of the main thread do it too.
    void refreshOptions();
    /// Leaves the present link or waiting time and connects anew.
    void restartThread();
    void stopThread();
    /// Tells the loop that a second has passed.
    void slotOnSec();
    /// Turns guaranteed transfer on; false if it was on.
    bool startProtectedMode();
    void stopProtectedMode();
    /// The link is usable: connected, and the line without an error.
    [[nodiscard]] bool linkUp() const { return connected && lineError == LineGood; }

    /// Characters that the command at the head of \a s takes; 0 if it is incomplete or none. A number of
    /// more than MaxDialDigits makes no command: its "@" stands alone, so that noise is not kept for ever.
    [[nodiscard]] static int testCmdLength(const QString &s);
    /// The same for those that take commands out of text, the send loops and the main thread's reader: they
    /// do not know "@L" and "@V" and take their "@" alone.
    [[nodiscard]] static int loopCmdLength(const QString &s);

    // Calls of the link thread. Each link function runs one connection, from the attempt to the end, and
    // leaves reconnectDelay set.

    /// The second between two links is over: true if a connection is to be attempted now. Requests that came
    /// before are used up.
    [[nodiscard]] bool takeTurn();
    void TcpIPThread();
    void TcpIPSrvThread();
    void PortThread();
    void setState(const QString &text);
    /// Sends the signals that texts taken and sent have earned since the last call.
    void reportEvents();
    /// Notes a chunk that has gone to the line, and drops it where the send buffer still holds it.
    void chunkSent(const QString &chunk);
    [[nodiscard]] QPair<QString, int> tcpPeer() const;
    [[nodiscard]] int silenceLimit() const;   ///< seconds, option TimeOut
    [[nodiscard]] QString channelKey() const; ///< option key

    // Guaranteed transfer: text in numbered frames with a 3-bit CRC, see link/guaranteed_transfer.cpp

    /// Builds a frame of \a text (25 codes at most, unchecked) into frameOut. Always true.
    bool makeProtectedData(const QString &text);
    /// Examines a buffer that begins with "&#": the characters to remove (payload, if any, in
    /// framePayload), 0 if more is needed, -1 if it is no frame.
    [[nodiscard]] int checkProtectedData(const QString &buffer);
    /// Acknowledgements are reserved: both do nothing and return 0.
    int makeProtectedAck(const QString &text);
    int checkProtectedAck(const QString &text);
    [[nodiscard]] static unsigned char makeProtectedDataCRC3(const QByteArray &codes);
    [[nodiscard]] static unsigned char makeProtectedDataCRC5(const QByteArray &codes);
    /// What has gone to the line.
    enum Sent {
        SentText,   ///< a telegram's: with guaranteed transfer on it is counted but not logged
        SentCommand ///< for the adapter: it goes beside the frames and is always logged
    };
    /// Reports what has gone to the line. Nothing else writes to sentLog.
    void dataSendedToLine(const QString &text, Sent kind = SentText);
    /// Entry of all received text, on the link thread.
    void addToReceive(const QString &text);

signals:
    void signalOnReceived();
    void signalOnSended();
    void signalOnState();

protected:
    void run() override;

private:
    void runLink();
    /// Puts a link into its own clean state, whatever the one before has left: each link function's first
    /// act.
    void beginLink();
    void sleepSecond() const; ///< cut short by a stop
    void runClient(QTcpSocket &socket, const QString &prefix);
    void runServer(QTcpSocket &socket, const QString &prefix);
    void backOff();
    void serverFailed(const QString &text);
    void portFailed(const QString &text);
    void closeAndWait(QTcpSocket &socket) const;
    /// Takes the frame at the head of \a rest, its payload to \a plain: the characters that go with it, 0 if
    /// it must wait for more, -1 if it is plain text after all.
    [[nodiscard]] int takeFrame(const QString &rest, QString &plain);
    /// Goes through frameIn, of which the first \a waited characters have waited for a chunk before.
    [[nodiscard]] QString scanFrames(int waited);

    /// Guards tcpAddress, tcpPort, portName, adapterSN and these copies; a request of the main thread sets
    /// its flags under it in one step.
    mutable QMutex settingsMutex;
    int timeOut = 30;
    QString key;
    int autoClass = 0; ///< class of adapters that automatic detection takes; 0 is none

public:
    QString tcpAddress;
    int tcpPort = 0;
    int synCountdown = 0; ///< seconds until the silence time-out; 0 is not running
    int peerWindow = 0;   ///< characters granted by the peer, used up by one write
    QString portName;
    QString adapterSN;
    bool adapterArg = false;
    Relaxed<int> tlgBaud = 0;
    bool statusPending = false; ///< adapter: the mode byte is owed
    Relaxed<int> txCredit = 32; ///< TCP: chunk ceiling; adapter: characters it can take
    Relaxed<int> linkType = AdapterPort;
    Relaxed<bool> stopRequested = false;
    Relaxed<bool> restartRequested = false;
    Relaxed<bool> paused = true;
    Relaxed<bool> connected = false;
    Relaxed<bool> secondTick = false;
    Relaxed<int> protectedSeconds = 0;  ///< seconds spent in guaranteed transfer
    Relaxed<bool> reportFailure = true; ///< show the next connect failure
    Relaxed<int> lineError = LineGood;  ///< bits of LineError
    Relaxed<bool> needVersion = false;
    Relaxed<int> reconnectDelay = 0; ///< seconds until the next attempt
    int backoffMinutes = 1;          ///< TCP client: 1..10
    CStateText stateText;
    CMutexString pendingEcho; ///< adapter: written, not yet reported sent
    CMutexString sentLog;     ///< gone out, waiting for the journal
    CTlgString sendBuffer;
    Relaxed<int> shownWindow = -1; ///< figure of the status strip; -1 without a link
    Relaxed<int> sentEvents = 0;
    Relaxed<int> receivedEvents = 0;
    CTlgString recvBuffer;
    Relaxed<bool> allSent = true; ///< the far end reports everything sent

    const QString frameStartData = QStringLiteral("&#");
    const QString frameStartAck = QStringLiteral("&|");
    Relaxed<bool> protectedMode = false;
    int protectedTimer = 0;
    int protectedRegister = 0;
    unsigned char txSequence = 0;
    unsigned char rxSequence = 0;
    unsigned char lastCRC = 0;
    bool protectedFlag = false;
    QString frameOut;
    QString frameIn;
    QString ackOut;
    QString framePayload;
};

extern CTlgThread TlgThread;
