#include "tools/linesim/peer/peer.h"

#include <QRandomGenerator>

bool Peer::runOwn(const QString &name, const QString &argument)
{
    static const NamedCommand<Peer> commands[] = {
        {"send", &Peer::doSend}, // a file, like those of --send
        {"text", &Peer::doText}, // with \r and \n for line ends
        {"raw", &Peer::doRaw},   // bytes in hexadecimal
        {"confirm", &Peer::doConfirm},
        {"flood", &Peer::doFlood}, // so many letters in one piece
        {"noise", &Peer::doNoise}, // so many random bytes; a seed repeats them
        {"half-command", &Peer::doHalfCommand},
    };
    return runFrom(commands, *this, name, argument);
}

void Peer::doSend(const QString &path)
{
    m_feed.addFile(path);
}

void Peer::doText(const QString &text)
{
    m_line->sendText(unescaped(text));
}

void Peer::doRaw(const QString &hex)
{
    m_line->sendRaw(QByteArray::fromHex(hex.toLatin1()));
}

void Peer::doConfirm(const QString &)
{
    confirm(m_store.count);
}

void Peer::doFlood(const QString &characters)
{
    m_line->sendText(QString(characters.toInt(), QChar(0x0410)));
    m_log.event(QStringLiteral("flooded"), characters);
}

void Peer::doNoise(const QString &countAndSeed)
{
    const int count = countAndSeed.section(QLatin1Char(' '), 0, 0).toInt();
    QRandomGenerator random(countAndSeed.section(QLatin1Char(' '), 1).toUInt());
    QByteArray bytes(count, Qt::Uninitialized);
    for (char &byte : bytes)
        byte = char(random.bounded(256));
    m_line->sendRaw(bytes);
    m_log.event(QStringLiteral("noise"), QString::number(count));
}

void Peer::doHalfCommand(const QString &)
{
    m_line->sendText(QStringLiteral("@N12"));
}
