#include "tools/linesim/record/tap.h"

#include "tools/linesim/console/command_table.h"
#include "tools/linesim/console/run_until_quit.h"

namespace
{
std::unique_ptr<TappedLine> makeLine(const TapOptions &options, EventLog &log)
{
    if (options.port)
        return std::make_unique<TappedPort>(*options.port, log);
    return std::make_unique<TappedTcp>(options.tcp, log);
}
} // namespace

Tap::Tap(const TapOptions &options, EventLog &log)
    : Commanded(log), m_writer(options.record, log), m_line(makeLine(options, log))
{
    connect(m_line.get(), &TappedLine::opened, this, [this](int connection, LineRecord::Side by) {
        m_writer.write(connection, by, LineRecord::Open);
    });
    connect(m_line.get(), &TappedLine::closed, this, [this](int connection, LineRecord::Side by) {
        m_writer.write(connection, by, LineRecord::Close);
    });
    connect(m_line.get(), &TappedLine::cutting, this, [this] { m_log.event(QStringLiteral("cut")); });
    connect(m_line.get(), &TappedLine::passed, this,
            [this](int connection, LineRecord::Side from, const QByteArray &bytes) {
                m_writer.write(connection, from, LineRecord::Bytes, bytes);
            });
}

bool Tap::runOwn(const QString &name, const QString &argument)
{
    static const Command<Tap> commands[] = {
        // At once, or when so many bytes more have passed, either way
        {"cut",
         [](Tap &tap, const QString &bytes) {
             bytes.isEmpty() ? tap.m_line->cut() : tap.m_line->cutAfter(bytes.toInt());
         }},
    };
    return runFrom(commands, *this, name, argument);
}

int runTap(const QStringList &arguments)
{
    return runEnd<Tap>(readTapOptions(arguments));
}
