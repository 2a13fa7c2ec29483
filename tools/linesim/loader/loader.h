#pragma once

#include "tools/linesim/console/event_log.h"
#include "tools/linesim/loader/loader_options.h"
#include "tools/linesim/serial/pseudo_terminal.h"

#include <QObject>

#include <random>

/// An adapter in its boot loader, which speaks STK500 version 1 on a serial port of its own. It keeps nothing
/// of what is loaded: it writes down every command and answers well, or fails where it is told to. The
/// events: "port" as serial number and name, "opened", "closed", "command" with its bytes in hexadecimal,
/// "unplugged". A command against the rules is a violation.
class Loader : public QObject
{
    Q_OBJECT

public:
    Loader(const LoaderOptions &options, EventLog &log);

    [[nodiscard]] bool start(); ///< false if there is no port
    /// Runs one command: "plug", "unplug", "fault KIND:STEP[:N]", "quit"; another one is the event "error".
    void run(const QString &command);
    [[nodiscard]] QString portName() const { return m_terminal.portName(); }

signals:
    void quit();

private:
    void takeOpening();
    void takeBytes(const QByteArray &bytes);
    [[nodiscard]] QByteArray takeCommand();
    void examine(const QByteArray &command, LoaderFault::Step step);
    void answer(LoaderFault::Step step);
    void unplug();
    [[nodiscard]] QByteArray anyBytes();
    [[nodiscard]] QByteArray rubbish();

    LoaderOptions m_options;
    EventLog &m_log;
    PseudoTerminal m_terminal;
    QByteArray m_buffer;    // a command that has not come whole yet
    int m_counts[5] = {};   // commands of each step since the port was opened
    bool m_entered = false; // programming mode
    bool m_address = false; // has come for the next page
    std::mt19937 m_random;
};

/// The subcommand "loader"; see runSubcommand().
[[nodiscard]] int runLoader(const QStringList &arguments);
