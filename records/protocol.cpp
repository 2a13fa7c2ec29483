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
    lines << QString(QChar(type));
    lines.last().append(c);
}

void CProtocol::endLine()
{
    if (cachedType != ProtocolNone) {
        addServiceString(cachedText, cachedType);
        cachedType = ProtocolNone;
    } else {
        lines << QString();
        ++newLineCount;
    }
}

void CProtocol::addServiceString(const QString &text, ProtocolTypes type)
{
    const QString line = QChar(type) + text;
    if (!lines.isEmpty() && lines.constLast().isEmpty())
        lines.last() = line;
    else
        lines << line;
    lines << QString(); // what comes next begins a line of its own
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
    } else if (!cached || (!lines.isEmpty() && lines.constLast().isEmpty())) {
        addServiceString(line, type);
    } else {
        cachedText = line;
        cachedType = type;
    }
}

void CProtocol::appendToLast(QChar c, ProtocolTypes type)
{
    const bool needsMark = tail().type != QChar(type);
    QString &line = lines.last();
    if (needsMark) {
        line.append(QChar(type));
        m_tail.take(QChar(type));
    }
    line.append(c);
    m_tail.take(c);
    m_tail.data = line.constData();
}

void CProtocol::Tail::take(QChar c)
{
    if (size == 0)
        first = c;
    last = c;
    if (c.unicode() < MarkLimit) {
        type = c;
        typeAt = size;
    }
    ++size;
    if (isText(c))
        ++textCount;
}

bool CProtocol::Tail::fits(const QStringList &list) const
{
    const QString &line = list.constLast();
    return lineCount == list.size() && size == line.size() && data == line.constData() &&
           (size == 0 || (first == line.front() && last == line.back())) &&
           (typeAt < 0 || type == line.at(typeAt));
}

const CProtocol::Tail &CProtocol::tail()
{
    if (!m_tail.fits(lines)) {
        m_tail = Tail();
        for (const QChar c : lines.constLast())
            m_tail.take(c);
        m_tail.lineCount = lines.size();
        m_tail.data = lines.constLast().constData();
    }
    return m_tail;
}
