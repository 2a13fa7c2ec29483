#pragma once

#include <QByteArray>
#include <QString>

class CTlgThread;
class QSerialPort;

/// The waits at the beginning of an adapter's connection.
struct PortWaits {
    int firstByteMs = 5000; ///< for the adapter to talk, which it does unasked
    int settleMs = 2000;    ///< what it says in this time is thrown away
    /// Waited, and slept, in each pass without a reply to the question for its firmware.
    int versionStepMs = 100;
    int versionMs = 30000; ///< the longest that the question may take in all
};

/// One connection of the adapter link over an open port, from the adapter's first byte to the close. The
/// link thread owns it.
class CPortLoop
{
public:
    CPortLoop(CTlgThread &thread, QSerialPort &port, const QString &prefix, const QString &portName);

    /// Blocks until the connection has ended; the port is closed then.
    void run();

    /// The same for every connection; changed only by tests, and only while none is up.
    static PortWaits waits;

private:
    [[nodiscard]] bool greet();
    [[nodiscard]] bool waitForFirstByte();
    void drainFor(int milliseconds);
    [[nodiscard]] int askVersion();
    void loop(int version);
    [[nodiscard]] bool running() const;
    [[nodiscard]] bool read(class CAdapterStream &stream);
    [[nodiscard]] bool heldBack() const;
    void secondPassed();
    bool write(const QByteArray &bytes);
    void lost(const QString &text, int delay);
    void leave();

    CTlgThread &m_thread;
    QSerialPort &m_port;
    QString m_prefix;
    QString m_portName;
    char m_modeByte = 0;
    int m_silentSeconds = 0; // without a byte from the adapter
};
