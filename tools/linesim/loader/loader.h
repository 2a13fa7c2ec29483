#pragma once

#include "tools/linesim/console/noise.h"
#include "tools/linesim/loader/loader_options.h"
#include "tools/linesim/serial/serial_device.h"

/// An adapter in its boot loader, which speaks STK500 version 1 on a serial port of its own. It keeps nothing
/// of what is loaded: it writes down every command and answers well, or fails where it is told to. The
/// events: "port" as serial number and name, "opened", "closed", "command" with its bytes in hexadecimal,
/// "unplugged". A command against the rules is a violation.
class Loader : public SerialDevice
{
    Q_OBJECT

public:
    Loader(const LoaderOptions &options, EventLog &log);

private:
    [[nodiscard]] bool runOwn(const QString &name, const QString &argument) override;
    void takeOpening() override;
    void takeBytes(const QByteArray &bytes) override;
    void addFault(const QString &text);
    [[nodiscard]] QByteArray takeCommand();
    void examine(const QByteArray &command, LoaderFault::Step step);
    void answer(LoaderFault::Step step);
    [[nodiscard]] QByteArray anyBytes();
    [[nodiscard]] QByteArray rubbish();

    LoaderOptions m_options;
    QByteArray m_buffer;    // a command that has not come whole yet
    int m_counts[5] = {};   // commands of each step since the port was opened
    bool m_entered = false; // programming mode
    bool m_address = false; // has come for the next page
    Noise m_noise;
};

/// The subcommand "loader"; see runSubcommand().
[[nodiscard]] int runLoader(const QStringList &arguments);
