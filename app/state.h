#pragma once

#include "records/file_info.h"

#include <QDate>
#include <QObject>
#include <QString>

/// Mode of the channel to the centre, State.tlgMode, with the words of the window. On a switched channel it
/// tells the direction of a call: ModeOpen is an outgoing one, any other call or none ModeAsked.
enum TlgMode {
    ModeUnknown = 0,         ///< "--"
    ModeClosed = 1,          ///< "БД"
    ModeAsked = 2,           ///< "БА": the centre asks to open, our receipt is due
    ModeOpen = 3,            ///< "РБ": telegrams go
    ModeNoticeOfClosing = 4, ///< "БВ"
    ModeConfirming = 5       ///< "БР": a telegram of category Р waits for the operator
};

/// Progress of an outgoing call, State.callState.
enum CallState { NoCall = 0, Dialled = 1, Seized = 2, GoAhead = 4, WaitResult = 5, Connected = 6 };

/// State.callDirection.
enum CallDirection { NoDirection = 0, Incoming = 1, Outgoing = 2 };

/// Steps of the automatic send over a call, State.AutoModeState.
enum AutoState {
    AutoIdle = 0,
    AutoCalling = 1,
    AutoConnected = 2,
    AutoBeforeQuestion = 3,
    AutoAsked = 4,
    AutoWaitAA = 5,
    AutoGotAA = 6,
    AutoBeforeFile = 10,
    AutoSendingFile = 11,
    AutoBeforeLastQuestion = 13,
    AutoWaitLastAA = 14,
    AutoDelivered = 15,
    AutoAnswered = 16,
    AutoLastPause = 17
};

/// The answerback awaited, State.AutoModeWaitAA.
enum AAKind { NoAA = 0, SubscriberAA = 7, ShortCentreAA = 8, LongCentreAA = 9 };

/// What the network answers to a call, State.callResult and State.callNumberResult.
enum CallResult {
    NoResult = 0,
    Success = 1,
    Busy = 2,
    FirstRefusal = Busy,
    SubscriberFault = 3,
    NoCircuit = 4,
    WrongNumber = 5,
    NetworkFault = 7,
    Barred = 8,
    LastRefusal = 11,
    CallTimeOut = 12
};

/// What changes while the program runs: day counters, mode of the channel, the countdowns of the tick, the
/// item being sent and the connection in progress. One object, State, used by the main thread alone. Only
/// the date, the automatic flag and the counters survive a restart (velda_state.ini).
class CState : public QObject
{
    Q_OBJECT

public:
    static constexpr int MostModeSeconds = 86400; ///< a day
    /// Ticks from the request to close to the close. An open channel gets time for the procedure's stop.
    static constexpr int TicksToClose = 2, TicksToCloseOpen = 5;
    static constexpr int ScanOnNextTick = 0; ///< for scanCountdown

    CState();

    /// Sets the mode by a word of the centre ("РБ", "ОТКРЫТА", ...); an unknown word gives ModeUnknown.
    void setTlgMode(const QString &word);
    /// Sets the mode, a TlgMode, and restarts tlgModeSeconds.
    void setTlgMode(int mode);
    /// Switches between automatic and manual mode; journals a real change, always asks for a scan in 3 s.
    void setAutomatic(bool on);
    void setChannelName(const QString &name);
    /// Sets the direction, a CallDirection. A change also sets tlgMode, without telling the window.
    void setCallDirection(int direction);
    /// Begins the count-down to the close of the program.
    void closeSoon();

    [[nodiscard]] QString pathInp() const;
    [[nodiscard]] QString pathOut() const;
    [[nodiscard]] QString pathPrt() const;
    [[nodiscard]] QString pathShablons() const;
    [[nodiscard]] QString pathInp_forDate(const QDate &date) const;
    [[nodiscard]] QString pathOut_forDate(const QDate &date) const;
    [[nodiscard]] QString pathOut_currentDate() const;

    /// Raises the day counter modulo 1000, saves, and returns the new value.
    int incInp();
    int incOut();

    /// Reads or writes Options.stateFileName. A missing file gives the date "00000000" and zeros; a failed
    /// write is not reported. The file is replaced whole, so that a kill leaves the old one or the new one.
    void Load();
    void Save();

signals:
    void tlgModeChanged();   ///< mode or its age was set anew
    void automaticChanged(); ///< setAutomatic has run, whether or not the mode differs
    void titlesChanged();    ///< the channel has another name

public slots:
    /// Turns to the clock's date: saves the old day, zeroes the counters, makes the day's directories.
    void newDay();

public:
    int basePointSize = 8; ///< points of the application font before fontSizeCorrect
    bool restartAfterExit = false;
    bool manualMode = false;
    int tlgMode = ModeUnknown;
    int tlgModeSeconds = 0;    ///< seconds since the last setTlgMode, stops at MostModeSeconds
    QString YYYYMMDD;          ///< the date that the counters belong to
    int PK_in = 0, PK_out = 0; ///< telegrams received and sent today, 0..999
    int prevPK_in = 0, prevPK_out = 0;
    int CKS_in = 0, CKS_out = 0; ///< figures last reported by the centre
    int prevCKS_in = 0, prevCKS_out = 0;
    int SKK_in = 0, SKK_out = 0; ///< connections today
    int EditorN = 0;             ///< number of the last file made in the editor today
    int scanCountdown = 0;       ///< ticks until the queue is scanned
    int scanFoundCount = 0;      ///< files found by the last scan
    bool renumberAnnounced = false;
    bool askSent = false;
    int stopCountdown = 0; ///< ticks until the close; 0 is not closing
    int askReceiptCountdown = 0;
    int sendReceiptCountdown = 0;
    QString channelName;
    bool ignoreAO = false;
    int sendAOCountdown = 0;
    QString currentFile; ///< name of the item being sent
    bool fileInProgress = false;
    CFileInfo sendInfo; ///< copy of that item's side-car record
    bool dayChangeQuiet = false;
    int idleSeconds = 0; ///< seconds with neither received nor sent text
    int callState = NoCall;
    int AutoModeWaitTimer = 0; ///< seconds until the step's work is done; 0 stands still
    int AutoModeState = AutoIdle, AutoModeWaitAA = NoAA;
    int hangUpPause = 0; ///< ticks during which no new work starts
    bool connectionActive = false;
    int callDirection = NoDirection;
    QString connectionText; ///< transcript of the current connection
    int callNumberResult = NoResult, waitTimeAfterCallEstablished = 0, callResult = NoResult;
    bool closeAllowed = false; ///< the next close of the main window is real
    QString dialledNumber;
    int secondsSinceTx = 0, secondsSinceRx = 0;

private:
    void makeDayDirectories();
};

extern CState State;
