#pragma once

#include "tools/linesim/console/commanded.h"
#include "tools/linesim/record/record_writer.h"
#include "tools/linesim/record/tapped_port.h"
#include "tools/linesim/record/tapped_tcp.h"

#include <QStringList>

#include <memory>
#include <optional>

/// How "linesim tap" is to behave.
struct TapOptions {
    QString record; ///< path of the file
    TappedTcp::Settings tcp;
    std::optional<TappedPort::Settings> port; ///< instead of TCP
};

/// Stands between the workstation and its far end, and records every byte of both directions with its time.
class Tap : public Commanded
{
    Q_OBJECT

public:
    Tap(const TapOptions &options, EventLog &log);

    [[nodiscard]] bool start() { return m_writer.start() && m_line->start(); }

private:
    [[nodiscard]] bool runOwn(const QString &name, const QString &argument) override;

    RecordWriter m_writer;
    std::unique_ptr<TappedLine> m_line;
};

/// Reads \a arguments, the first being the subcommand's name. Empty, with the reason on standard error, if
/// they are not understood; "--help" prints the options and ends the process.
[[nodiscard]] std::optional<TapOptions> readTapOptions(const QStringList &arguments);
/// The subcommand "tap"; see runSubcommand().
[[nodiscard]] int runTap(const QStringList &arguments);
