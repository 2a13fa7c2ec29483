#include "tools/linesim/peer.h"

#include <QRandomGenerator>

const Peer::Command Peer::commands[] = {
    {"send", &Peer::doSend},       // a file, like those of --send
    {"text", &Peer::doText},       // with \r and \n for line ends
    {"raw", &Peer::doRaw},         // bytes in hexadecimal
    {"grant", &Peer::doGrant},     // a window of so many characters
    {"windows", &Peer::doWindows}, // "on" or "off": give them by itself
    {"flow", &Peer::doFlow},       // "@nn*"
    {"keep-alive", &Peer::doKeepAlive},
    {"silence", &Peer::doSilence}, // neither answer nor send by itself
    {"speak", &Peer::doSpeak},     // end the silence
    {"confirm", &Peer::doConfirm},
    {"close", &Peer::doClose}, // once all has gone
    {"drop", &Peer::doDrop},   // at once
    {"flood", &Peer::doFlood}, // so many letters in one piece
    {"noise", &Peer::doNoise}, // so many random bytes; a seed repeats them
    {"half-command", &Peer::doHalfCommand},
    {"quit", &Peer::doQuit},
};

void Peer::run(const QString &command)
{
    const QString name = command.section(QLatin1Char(' '), 0, 0);
    if (name.isEmpty())
        return;
    for (const Command &known : commands) {
        if (name == QLatin1String(known.name))
            return (this->*known.action)(command.section(QLatin1Char(' '), 1));
    }
    m_log.event(QStringLiteral("error"), QStringLiteral("no command ") + command);
}

void Peer::doSend(const QString &path)
{
    m_feed.addFile(path);
}

void Peer::doText(const QString &text)
{
    m_link.sendText(unescaped(text));
}

void Peer::doRaw(const QString &hex)
{
    m_link.sendRaw(QByteArray::fromHex(hex.toLatin1()));
}

void Peer::doGrant(const QString &characters)
{
    m_link.grant(characters.toInt());
}

void Peer::doWindows(const QString &onOff)
{
    m_link.setGrants(onOff == QLatin1String("on"));
}

void Peer::doFlow(const QString &characters)
{
    m_link.sendFlowReport(characters.toInt());
}

void Peer::doKeepAlive(const QString &)
{
    m_link.sendKeepAlive();
}

void Peer::doSilence(const QString &)
{
    m_link.setSilent(true);
    m_log.event(QStringLiteral("silent"));
}

void Peer::doSpeak(const QString &)
{
    m_link.setSilent(false);
    m_log.event(QStringLiteral("speaking"));
}

void Peer::doConfirm(const QString &)
{
    confirm();
}

void Peer::doClose(const QString &)
{
    m_tcp.close();
}

void Peer::doDrop(const QString &)
{
    m_tcp.drop();
}

void Peer::doFlood(const QString &characters)
{
    m_link.sendText(QString(characters.toInt(), QChar(0x0410)));
    m_log.event(QStringLiteral("flooded"), characters);
}

void Peer::doNoise(const QString &countAndSeed)
{
    const int count = countAndSeed.section(QLatin1Char(' '), 0, 0).toInt();
    QRandomGenerator random(countAndSeed.section(QLatin1Char(' '), 1).toUInt());
    QByteArray bytes(count, Qt::Uninitialized);
    for (char &byte : bytes)
        byte = char(random.bounded(256));
    m_link.sendRaw(bytes);
    m_log.event(QStringLiteral("noise"), QString::number(count));
}

void Peer::doHalfCommand(const QString &)
{
    m_link.sendText(QStringLiteral("@N12"));
}

void Peer::doQuit(const QString &)
{
    emit quit();
}
