#include "tools/linesim/line/tcp_line.h"

#include "tools/linesim/console/command_table.h"
#include "tools/linesim/console/event_log.h"

static_assert(LinkEnd::TickMs == FarLine::TickMs, "the link is moved by the line's tick");

TcpLine::TcpLine(const TcpEnd::Settings &tcp, const LinkEnd::Settings &link, EventLog &log)
    : m_log(log), m_answerMs(link.answerMs), m_tcp(tcp, log), m_link(link, log)
{
    connect(&m_tcp, &TcpEnd::connected, this, [this] {
        m_link.open();
        emit connected();
    });
    connect(&m_tcp, &TcpEnd::disconnected, this, [this] {
        m_link.close();
        emit disconnected();
    });
    connect(&m_tcp, &TcpEnd::received, this, [this](const QByteArray &received) {
        emit bytes(received);
        m_link.take(received);
    });
    connect(&m_link, &LinkEnd::write, &m_tcp, &TcpEnd::write);
    connect(&m_link, &LinkEnd::text, this, &TcpLine::text);
}

bool TcpLine::run(const QString &name, const QString &argument)
{
    static const NamedCommand<TcpLine> commands[] = {
        {"grant", &TcpLine::doGrant},     // a window of so many characters
        {"windows", &TcpLine::doWindows}, // "on" or "off": give them by itself
        {"flow", &TcpLine::doFlow},       // "@nn*"
        {"keep-alive", &TcpLine::doKeepAlive},
        {"silence", &TcpLine::doSilence}, // neither answer nor send by itself
        {"speak", &TcpLine::doSpeak},     // end the silence
        {"close", &TcpLine::doClose},     // once all has gone
        {"drop", &TcpLine::doDrop},       // at once
    };
    return runFrom(commands, *this, name, argument);
}

void TcpLine::doGrant(const QString &characters)
{
    m_link.grant(characters.toInt());
}

void TcpLine::doWindows(const QString &onOff)
{
    m_link.setGrants(onOff != QLatin1String("off"));
}

void TcpLine::doFlow(const QString &characters)
{
    m_link.sendFlowReport(characters.toInt());
}

void TcpLine::doKeepAlive(const QString &)
{
    m_link.sendKeepAlive();
}

void TcpLine::doSilence(const QString &)
{
    m_link.setSilent(true);
    m_log.event(QStringLiteral("silent"));
}

void TcpLine::doSpeak(const QString &)
{
    m_link.setSilent(false);
    m_log.event(QStringLiteral("speaking"));
}

void TcpLine::doClose(const QString &)
{
    close();
}

void TcpLine::doDrop(const QString &)
{
    drop();
}
