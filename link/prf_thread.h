#pragma once

#include "app/relaxed.h"

#include <QByteArray>
#include <QMutex>
#include <QString>
#include <QThread>

/// The thread of the paper-tape adapter on its own serial port: it punches text and reads tape into text. It
/// runs while the option usePrf is on and holds the port only between Activate() and Deactivate(). All calls
/// are for the main thread; the signals come from this one.
class CPrfThread : public QThread
{
    Q_OBJECT

public:
    CPrfThread();
    ~CPrfThread() override;

    /// Starts the thread, even if it has been stopped before.
    void start(Priority priority = InheritPriority);
    /// Names the adapter by its USB serial number; false if no such port is there.
    bool setSorel(const QString &serial, int baud, bool autodetect);
    void pauseThread();
    /// Gives the port up once all text is punched.
    void Deactivate();
    void restartThread();
    /// Takes the port.
    void Activate();
    void stopThread();
    void slotOnSec();

    void Send(const QString &text); ///< for punching, behind what waits
    void clearSend();               ///< drops what is not punched yet
    void clearSent();
    [[nodiscard]] int waitingLength() const; ///< characters that wait to be punched
    [[nodiscard]] int sentLength() const;    ///< characters punched since clearSent()
    /// The text read from tape since the last call.
    QString getAndClearReceive();
    void startRead();
    void stopRead();
    [[nodiscard]] QString state() const; ///< a copy of stateText

    /// The thread's own: no wait is due any more, so requests that came before are used up. False if a pause
    /// has come since.
    [[nodiscard]] bool takeTurn();

signals:
    void signalOnReceived();
    void signalOnSended();
    void signalOnState();

protected:
    void run() override;

private:
    [[nodiscard]] bool isIdle() const;
    [[nodiscard]] bool waitUntilWanted();
    [[nodiscard]] bool sleepSecond() const;
    void connectAdapter();
    void failed(const QString &text);
    void setState(const QString &text);
    void addCommand(char byte);

public:
    /// Guards the four settings that follow and stateText; a request of the main thread sets its flags under
    /// it in one step.
    mutable QMutex settingsMutex;
    QString portName;
    QString adapterSN;
    bool autodetect = false;
    int baudIndex = 0; ///< punching speed, from 0
    QString stateText;
    Relaxed<bool> stopRequested = false;
    Relaxed<bool> restartRequested = false; ///< drop the connection once nothing waits to be punched
    Relaxed<bool> paused = true;            ///< no connection is wanted
    Relaxed<bool> connected = false;        ///< the port is open
    /// A port with the adapter's serial number is there, and opened when it was wanted last.
    Relaxed<bool> adapterFound = false;
    Relaxed<bool> secondTick = false;
    Relaxed<bool> reportFailure = true; ///< the next failure is to be shown
    Relaxed<int> reconnectDelay = 0;    ///< seconds until the next attempt

    mutable QMutex commandMutex;
    QByteArray commandBytes;  ///< go to the adapter ahead of all text
    mutable QMutex sendMutex; ///< guards the next two
    QString sendText;         ///< waits to be punched
    QString sentText;         ///< punched so far
    mutable QMutex receiveMutex;
    QString receivedText; ///< read from tape, not yet fetched
};

extern CPrfThread PrfThread;
