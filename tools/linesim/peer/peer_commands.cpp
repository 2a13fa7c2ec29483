#include "tools/linesim/console/noise.h"
#include "tools/linesim/peer/peer.h"

bool Peer::runHere(const QString &name, const QString &argument)
{
    static const Command<Peer> commands[] = {
        {"send", [](Peer &p, const QString &path) { p.m_feed.addFile(path); }}, // like those of --send
        // Text, with \r and \n for line ends; bytes in hexadecimal
        {"text", [](Peer &p, const QString &text) { p.m_line->sendText(unescaped(text)); }},
        {"raw", [](Peer &p, const QString &hex) { p.m_line->sendRaw(QByteArray::fromHex(hex.toLatin1())); }},
        {"confirm", [](Peer &p, const QString &) { p.confirm(p.m_store.count); }},
        {"flood", [](Peer &p, const QString &letters) { p.flood(letters); }}, // so many in one piece
        // So many random bytes; a seed repeats them
        {"noise", [](Peer &p, const QString &countAndSeed) { p.makeNoise(countAndSeed); }},
        {"half-command", [](Peer &p, const QString &) { p.m_line->sendText(QStringLiteral("@N12")); }},
    };
    return runFrom(commands, *this, name, argument);
}

void Peer::flood(const QString &letters)
{
    m_line->sendText(QString(letters.toInt(), QChar(0x0410)));
    m_log.event(QStringLiteral("flooded"), letters);
}

void Peer::makeNoise(const QString &countAndSeed)
{
    const QByteArray bytes = noiseOf(countAndSeed);
    m_line->sendRaw(bytes);
    m_log.event(QStringLiteral("noise"), QString::number(bytes.size()));
}
