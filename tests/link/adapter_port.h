#pragma once

#include "link/port_loop.h"
#include "tests/link/line.h"
#include "tests/support/desk.h"
#include "tools/linesim/serial/pseudo_terminal.h"

#include <QTemporaryDir>

/// A line adapter that the test plays by hand: a serial port that the program finds by its serial number
/// while it is plugged, under the same name each time. Bytes are hexadecimal, as "3f5b".
class AdapterPort
{
public:
    explicit AdapterPort(const char *serial = "10000001");
    ~AdapterPort();
    AdapterPort(const AdapterPort &) = delete;
    AdapterPort &operator=(const AdapterPort &) = delete;

    void plug();
    void unplug();
    [[nodiscard]] QString name() const { return m_directory.filePath(QStringLiteral("port")); }
    [[nodiscard]] bool isOpen() const { return terminal.isOpen(); } ///< by the program
    /// Sends to the program, once it has the port open.
    void send(const QByteArray &hex);
    /// What the program has written and the test has not yet taken.
    [[nodiscard]] QByteArray got() const { return m_got.toHex(); }
    QByteArray take();

private:
    QTemporaryDir m_directory;
    QString m_entry; ///< of VELDA_PORTS

public:
    PseudoTerminal terminal{name()};

private:
    QByteArray m_got;
};

/// A workstation whose link runs one connection over an adapter in the test's hand. What the adapter says at
/// first is thrown away for a tenth of a second only; realWaits() has the program's own waits.
class AdapterLink
{
public:
    explicit AdapterLink(int processMode = 2, int baud = 100, const char *serial = "10000001");

    /// Before the first connection.
    static void realWaits() { CPortLoop::waits = PortWaits(); }
    /// Begins a connection. With \a needVersion the program is to ask the adapter for its firmware.
    void begin(bool needVersion = false);
    /// Brings the connection to where text flows. Without \a version, as after a loss, the program does not
    /// ask; else it gets this reply: "170b0b" is the first that echoes. What it has written is taken.
    [[nodiscard]] bool open(const char *version = nullptr);
    /// Waits for the link to show its state \a count times in all.
    [[nodiscard]] bool shows(int count) const;
    /// What the link has shown, without the prefix.
    [[nodiscard]] QStringList states() const;
    void stop() { line.thread.stopThread(); }
    [[nodiscard]] bool ended() const;
    [[nodiscard]] QString received() { return thread.recvBuffer.mTake(); }

    Desk desk;
    AdapterPort adapter;
    Line line;
    CTlgThread &thread = line.thread;
    QString prefix;
};
