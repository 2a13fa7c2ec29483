#include "tools/linesim/nerva/nerva_line.h"

#include "tools/linesim/adapter/adapter_bytes.h"
#include "tools/linesim/console/command_table.h"
#include "tools/linesim/console/event_log.h"

#include <utility>

namespace
{
constexpr int EndMs = 300;       // in which a text follows the byte that announces it
constexpr int PieceBytes = 1000; // a port holds only so much
constexpr int PieceMs = 5;
constexpr int UnplugMs = 50; // what is on its way is read meanwhile
} // namespace

NervaLine::NervaLine(const Settings &settings, EventLog &log)
    : AdapterLine(settings, log), m_nerva(settings.nerva.value_or(NervaSettings())),
      m_config(settings.serial, settings.adapter.baud, log), m_mode(m_config, log)
{
    m_mode.fault = m_nerva.fault;
    m_talk.setInterval(settings.adapter.statusMs);
    m_end.setSingleShot(true);
    m_sending.setInterval(PieceMs);
    connect(&m_talk, &QTimer::timeout, this, &NervaLine::talk);
    connect(&m_end, &QTimer::timeout, &m_mode, &NervaMode::endIsOver);
    connect(&m_sending, &QTimer::timeout, this, &NervaLine::sendMore);
    connect(&m_mode, &NervaMode::toProgram, this, &NervaLine::send);
    connect(&m_mode, &NervaMode::restarting, this, &NervaLine::beginStart);
    connect(&m_mode, &NervaMode::halfToProgram, this, [this](const QByteArray &bytes) {
        send(bytes);
        QTimer::singleShot(UnplugMs, this, &NervaLine::unplug);
    });
}

bool NervaLine::start()
{
    for (const NervaSettings::Value &value : qAsConst(m_nerva.values)) {
        if (m_config.set(value.key, value.value))
            continue;
        m_log.event(QStringLiteral("error"), QStringLiteral("no key ") + value.key);
        return false;
    }
    return AdapterLine::start();
}

/// As long as it does not know the program it talks as to one that works the line, and asks for no answer.
void NervaLine::takeOpening()
{
    m_mode.opened();
    m_lineIsOpen = false;
    beginStart();
    m_talk.start();
}

void NervaLine::beginStart()
{
    m_started.start();
}

void NervaLine::talk()
{
    if (!m_lineIsOpen && m_mode.phase() == NervaMode::OnLine && m_started.hasExpired(m_nerva.startMs))
        m_port.write(
            QByteArray(1, char(AdapterBytes::Status | AdapterBytes::Drained | AdapterBytes::RoomMask)));
}

void NervaLine::takeClosing()
{
    stopTimers();
    m_mode.closed(!m_adapter.rules().mayBeKilled());
    if (std::exchange(m_lineIsOpen, false))
        AdapterLine::takeClosing();
}

/// It has no power any more.
void NervaLine::takeUnplugging()
{
    stopTimers();
    m_mode.opened();
    m_lineIsOpen = false;
    m_config.restart();
}

void NervaLine::stopTimers()
{
    m_talk.stop();
    m_end.stop();
    m_sending.stop();
    m_unsent.clear();
}

void NervaLine::takeBytes(const QByteArray &bytes)
{
    for (const char byte : bytes) {
        const bool configures = m_mode.take(quint8(byte), m_started.hasExpired(m_nerva.startMs));
        if (configures && std::exchange(m_lineIsOpen, false))
            m_adapter.unplugged(); // its statuses wait for no answer any more
        if (!configures)
            takeLineByte(byte);
    }
    if (m_mode.phase() == NervaMode::Ended)
        m_end.start(EndMs);
    schedule();
}

void NervaLine::takeLineByte(char byte)
{
    if (!std::exchange(m_lineIsOpen, true))
        AdapterLine::takeOpening();
    AdapterLine::takeBytes(QByteArray(1, byte));
}

void NervaLine::send(const QByteArray &bytes)
{
    m_unsent = bytes;
    m_sending.start();
    sendMore();
}

void NervaLine::sendMore()
{
    m_port.write(m_unsent.left(PieceBytes));
    m_unsent.remove(0, PieceBytes);
    if (m_unsent.isEmpty())
        m_sending.stop();
}

bool NervaLine::run(const QString &name, const QString &argument)
{
    static const Command<NervaLine> commands[] = {
        {"fault", [](NervaLine &l, const QString &fault) { l.setFault(fault); }},
        {"set", [](NervaLine &l, const QString &keyAndValue) { l.set(keyAndValue); }},
        {"restart",
         [](NervaLine &l, const QString &) {
             l.m_config.restart();
             l.beginStart();
         }},
        {"show", [](NervaLine &l, const QString &) { l.m_config.show(); }},
    };
    return runFrom(commands, *this, name, argument) || AdapterLine::run(name, argument);
}

void NervaLine::set(const QString &keyAndValue)
{
    const QString key = keyAndValue.section(QLatin1Char(' '), 0, 0);
    if (!m_config.set(key, keyAndValue.section(QLatin1Char(' '), 1)))
        m_log.event(QStringLiteral("error"), QStringLiteral("no key ") + key);
}

void NervaLine::setFault(const QString &name)
{
    if (!readFault(name, m_mode.fault))
        m_log.event(QStringLiteral("error"), QStringLiteral("no fault ") + name);
}

bool NervaLine::readFault(const QString &name, NervaFault &fault)
{
    struct Row {
        const char *name;
        NervaFault fault;
    };
    static const Row rows[] = {
        {"none", NervaFault::None},
        {"silent", NervaFault::Silent},
        {"torn", NervaFault::Torn},
        {"no-end", NervaFault::NoEnd},
        {"mac16", NervaFault::Mac16},
        {"eth7", NervaFault::Eth7},
        {"wrong-kind", NervaFault::WrongKind},
        {"megabyte", NervaFault::Megabyte},
        {"unplug", NervaFault::Unplug},
    };
    for (const Row &row : rows) {
        if (name != QLatin1String(row.name))
            continue;
        fault = row.fault;
        return true;
    }
    return false;
}
