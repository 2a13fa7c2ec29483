#include "tools/linesim/console/event_log.h"

#include <cstdio>

namespace
{
void print(const QString &line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
    std::fflush(stdout);
}

QString escapedCharacter(QChar c)
{
    switch (c.unicode()) {
    case '\r': return QStringLiteral("\\r");
    case '\n': return QStringLiteral("\\n");
    case '\\': return QStringLiteral("\\\\");
    default: break;
    }
    if (c.unicode() < 0x20 || c.unicode() == 0x7F)
        return QStringLiteral("\\x%1").arg(c.unicode(), 2, 16, QLatin1Char('0'));
    return c;
}
} // namespace

EventLog::EventLog(Sink sink) : m_sink(sink ? std::move(sink) : Sink(print)) {}

void EventLog::event(const QString &name, const QString &detail)
{
    m_sink(detail.isEmpty() ? name + QLatin1Char(':') : name + QStringLiteral(": ") + detail);
}

void EventLog::violation(const QString &detail)
{
    ++violations;
    event(QStringLiteral("violation"), detail);
}

QString escaped(const QString &text)
{
    QString result;
    for (const QChar c : text)
        result += escapedCharacter(c);
    return result;
}

QString unescaped(const QString &text)
{
    QString result;
    for (int i = 0; i < text.size(); ++i) {
        const QChar next = i + 1 < text.size() ? text[i + 1] : QChar();
        bool isHex = false;
        const int code = text.mid(i + 2, 2).toInt(&isHex, 16);
        if (text[i] != QLatin1Char('\\')) {
            result += text[i];
        } else if (next == QLatin1Char('r') || next == QLatin1Char('n') || next == QLatin1Char('\\')) {
            result += next == QLatin1Char('r') ? QChar('\r') : next == QLatin1Char('n') ? QChar('\n') : next;
            ++i;
        } else if (next == QLatin1Char('x') && isHex && text.size() >= i + 4) {
            result += QChar(code);
            i += 3;
        } else {
            result += text[i];
        }
    }
    return result;
}
