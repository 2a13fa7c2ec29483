#pragma once

#include "app/relaxed.h"

#include <QByteArray>
#include <QMutex>
#include <QString>
#include <QThread>

/// The thread of the paper-tape adapter on its own serial port. It runs while the option usePrf is on and
/// holds the port only between Activate() and Deactivate().
class CPrfThread : public QThread
{
    Q_OBJECT

public:
    CPrfThread();
    ~CPrfThread() override;

    /// Names the adapter by its USB serial number; false if no such port is there.
    bool setSorel(const QString &serial, int baud, bool autodetect);
    void pauseThread();
    void Deactivate();
    void restartThread();
    void Activate();
    void stopThread();
    void slotOnSec();
    [[nodiscard]] QString state() const; ///< a copy of stateText

signals:
    void signalOnReceived();
    void signalOnSended();
    void signalOnState();

protected:
    void run() override;

private:
    [[nodiscard]] bool waitUntilWanted();
    void connectAdapter();
    void setState(const QString &text);

public:
    mutable QMutex settingsMutex; ///< guards the four settings that follow and stateText
    QString portName;
    QString adapterSN;
    bool autodetect = false;
    int baudIndex = 0;
    QString stateText;
    Relaxed<bool> stopRequested = false;
    Relaxed<bool> restartRequested = false;
    Relaxed<bool> paused = true;
    Relaxed<bool> connected = false;
    Relaxed<bool> adapterFound = false; ///< a port with the adapter's serial number is there
    Relaxed<bool> secondTick = false;
    Relaxed<bool> reportFailure = true;
    Relaxed<int> reconnectDelay = 0;
};

extern CPrfThread PrfThread;
