#pragma once

#include "tools/linesim/far_end/far_line.h"
#include "tools/linesim/line/link_end.h"
#include "tools/linesim/line/tcp_end.h"

/// A line over TCP: what TcpEnd carries and LinkEnd understands.
class TcpLine : public FarLine
{
    Q_OBJECT

public:
    TcpLine(const TcpEnd::Settings &tcp, const LinkEnd::Settings &link, EventLog &log);

    [[nodiscard]] bool start() override { return m_tcp.start(); }
    void tick() override { m_link.tick(); }
    [[nodiscard]] QString place() const override { return QString::number(m_tcp.listeningPort()); }
    [[nodiscard]] bool isReady() const override { return m_link.isReady(); }
    void sendText(const QString &text) override { m_link.sendText(text); }
    void sendRaw(const QByteArray &bytes) override { m_link.sendRaw(bytes); }
    void close() override { m_tcp.close(); }
    void drop() override { m_tcp.drop(); }
    [[nodiscard]] int longestPauseMs() const override { return m_answerMs; }
    [[nodiscard]] bool run(const QString &name, const QString &argument) override;

private:
    void setSilent(bool silent);

    EventLog &m_log;
    int m_answerMs;
    TcpEnd m_tcp;
    LinkEnd m_link;
};
