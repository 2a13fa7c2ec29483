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
    static const Command<TcpLine> commands[] = {
        // A window of so many characters; "on" or "off": give them by itself
        {"grant", [](TcpLine &l, const QString &count) { l.m_link.grant(count.toInt()); }},
        {"windows",
         [](TcpLine &l, const QString &onOff) { l.m_link.setGrants(onOff != QLatin1String("off")); }},
        {"flow", [](TcpLine &l, const QString &count) { l.m_link.sendFlowReport(count.toInt()); }}, // "@nn*"
        {"keep-alive", [](TcpLine &l, const QString &) { l.m_link.sendKeepAlive(); }},
        // Neither answer nor send by itself, and the end of it
        {"silence", [](TcpLine &l, const QString &) { l.setSilent(true); }},
        {"speak", [](TcpLine &l, const QString &) { l.setSilent(false); }},
        {"close", [](TcpLine &l, const QString &) { l.close(); }}, // once all has gone
        {"drop", [](TcpLine &l, const QString &) { l.drop(); }},   // at once
    };
    return runFrom(commands, *this, name, argument);
}

void TcpLine::setSilent(bool silent)
{
    m_link.setSilent(silent);
    m_log.event(silent ? QStringLiteral("silent") : QStringLiteral("speaking"));
}
