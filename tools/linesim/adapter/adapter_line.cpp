#include "tools/linesim/adapter/adapter_line.h"

#include "tools/linesim/console/event_log.h"

#include <utility>

namespace
{
constexpr int ReplugMs = 500;
constexpr int ReadMs = 500;
} // namespace

AdapterLine::AdapterLine(const Settings &settings, EventLog &log)
    : m_log(log), m_adapter(settings.adapter, log), m_port(settings.serial, settings.port, log),
      m_settings(settings)
{
    m_clock.start();
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &AdapterLine::work);
    connect(&m_port, &PseudoTerminal::opened, this, [this] {
        m_log.event(QStringLiteral("connected"), m_port.portName());
        takeOpening();
    });
    connect(&m_port, &PseudoTerminal::closed, this, [this] {
        takeClosing();
        m_log.event(QStringLiteral("closed"), QStringLiteral("by the program"));
        if (std::exchange(m_connected, false))
            emit disconnected();
    });
    connect(&m_port, &PseudoTerminal::received, this,
            [this](const QByteArray &received) { takeBytes(received); });
    connect(&m_adapter, &LineAdapter::toProgram, &m_port, &PseudoTerminal::write);
    connect(&m_adapter, &LineAdapter::ready, this, [this] {
        m_connected = true;
        emit connected();
    });
    connect(&m_adapter, &LineAdapter::heard, this, [this](const QString &heard, const QByteArray &codes) {
        if (!codes.isEmpty())
            emit bytes(codes);
        if (!heard.isEmpty())
            emit text(heard);
    });
}

void AdapterLine::takeOpening()
{
    m_adapter.opened(nowUs());
    work();
}

void AdapterLine::takeClosing()
{
    m_adapter.closed(nowUs());
}

void AdapterLine::takeBytes(const QByteArray &bytes)
{
    m_adapter.takeFromProgram(bytes, nowUs());
    schedule();
}

bool AdapterLine::start()
{
    return m_port.plugIn();
}

void AdapterLine::tick()
{
    work(); // for what has no moment of its own
    if (!m_closing || !m_adapter.isLineFree())
        return;
    m_closing = false;
    QTimer::singleShot(ReadMs, this, &AdapterLine::drop); // what the program has not read goes with the port
}

void AdapterLine::work()
{
    m_adapter.advance(nowUs());
    schedule();
}

void AdapterLine::schedule()
{
    const qint64 next = m_adapter.nextUs(nowUs());
    if (next >= 0)
        m_timer.start(int(qMax(qint64(0), (next - nowUs() + 999) / 1000)));
    else
        m_timer.stop();
}

void AdapterLine::finish()
{
    m_adapter.tellTotals();
}

QString AdapterLine::asHeard(const QString &text) const
{
    CodeWriter writer;
    CodeReader reader;
    QString heard;
    for (const char code : writer.write(text))
        heard += reader.take(quint8(code));
    return heard + reader.flush();
}

void AdapterLine::sendText(const QString &text)
{
    if (!isReady())
        return m_log.event(QStringLiteral("not sent"), escaped(text));
    m_adapter.sendText(text, nowUs());
    schedule();
}

void AdapterLine::sendRaw(const QByteArray &bytes)
{
    m_adapter.sendRaw(bytes, nowUs());
}

void AdapterLine::unplug()
{
    if (!m_port.isPlugged())
        return;
    m_closing = false;
    m_port.unplug();
    takeUnplugging();
    m_adapter.unplugged();
    m_timer.stop();
    m_log.event(QStringLiteral("closed"), QStringLiteral("unplugged"));
    if (std::exchange(m_connected, false))
        emit disconnected();
}

void AdapterLine::close()
{
    m_closing = true;
}

/// A line that is gone comes again by itself, as one over TCP does.
void AdapterLine::drop()
{
    unplug();
    QTimer::singleShot(ReplugMs, this, [this] { (void)m_port.plugIn(); });
}
