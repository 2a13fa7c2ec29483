#include "records/protocol.h"

#include "app/clock.h"
#include "text/utils.h"

namespace
{
constexpr ushort MarkLimit = 10; // a character below it is a type mark

const QChar ReturnMark = QLatin1Char('<');
const QChar LineFeedMark = QLatin1Char('>');

QChar stored(QChar c)
{
    if (c == QLatin1Char('\r'))
        return ReturnMark;
    return c == QLatin1Char('\n') ? LineFeedMark : c;
}

/// Counts for the width of a line, by the rule of CUtils::removeNonTextChars.
bool isText(QChar c)
{
    return c != QChar(ProtocolReceived) && c != QChar(ProtocolSent) && !CUtils::isRegister(c);
}
} // namespace

CProtocol::CProtocol() = default;

void CProtocol::add(const QString &text, ProtocolTypes type)
{
    for (const QChar c : text)
        add(c, type);
    if (newLineCount == 0) {
        emit Changed();
    } else {
        newLineCount = 0;
        emit NewLine();
    }
    Save();
}

void CProtocol::add(QChar c, ProtocolTypes type)
{
    c = stored(c);
    if (lines.isEmpty()) {
        beginLine(c, type);
    } else if (lineWidthLimit != 0 && tail().textCount > lineWidthLimit) {
        beginLine(c, type);
        ++newLineCount;
        return; // also a line feed: on a fresh line it does not end it
    } else {
        appendToLast(c, type);
    }
    if (c == LineFeedMark)
        endLine();
}

void CProtocol::beginLine(QChar c, ProtocolTypes type)
{
    lines.append(QString(QChar(type)) + c);
}

void CProtocol::endLine()
{
    if (cachedType != ProtocolNone) {
        addServiceString(cachedText, cachedType);
        cachedType = ProtocolNone;
    } else {
        lines.append(QString());
        ++newLineCount;
    }
}

void CProtocol::addServiceString(const QString &text, ProtocolTypes type)
{
    const QString line = QChar(type) + text;
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.extendLast(line);
    else
        lines.append(line);
    lines.append(QString()); // what comes next begins a line of its own
    newLineCount = 0;
    emit NewLine();
    Save();
}

void CProtocol::addCacheServiceString(const QString &text, ProtocolTypes type, bool cached)
{
    const QString line = Time.hh_mm_ss + QLatin1Char(' ') + text;
    if (cachedType != ProtocolNone) {
        addServiceString(cachedText, cachedType);
        addServiceString(line, type);
        cachedType = ProtocolNone;
    } else if (!cached || (!lines.isEmpty() && lines.last().isEmpty())) {
        addServiceString(line, type);
    } else {
        cachedText = line;
        cachedType = type;
    }
}

void CProtocol::appendToLast(QChar c, ProtocolTypes type)
{
    if (tail().type != QChar(type))
        lines.extendLast(QChar(type));
    lines.extendLast(c);
}

const CProtocol::Tail &CProtocol::tail()
{
    const int last = lines.size() - 1;
    if (m_tail.line != last || !m_tail.chars.holds(lines)) {
        m_tail = Tail();
        m_tail.line = last;
    }
    const QString &line = lines.last();
    for (int i = m_tail.chars.in(lines); i < line.size(); ++i) {
        const QChar c = line.at(i);
        if (c.unicode() < MarkLimit)
            m_tail.type = c;
        if (isText(c))
            ++m_tail.textCount;
    }
    m_tail.chars.reach(lines, line.size());
    return m_tail;
}

QString shownName(QString name)
{
    constexpr ushort FirstShown = 32;
    for (QChar &c : name)
        if (c.unicode() < FirstShown)
            c = QLatin1Char('?');
    return name;
}
