#include "tools/linesim/record/line_record.h"

#include <QRegularExpression>

namespace
{
constexpr qint64 UsOfSecond = 1000000;

bool readBytes(const QString &text, QByteArray &bytes)
{
    static const QRegularExpression shape(QStringLiteral("^[0-9A-Fa-f]{2}( [0-9A-Fa-f]{2})*$"));
    bytes = QByteArray::fromHex(text.toLatin1());
    return shape.match(text).hasMatch();
}

bool readKind(const QString &text, LineRecord::Event &event)
{
    if (text == QLatin1String("open"))
        event.kind = LineRecord::Open;
    else if (text == QLatin1String("close"))
        event.kind = LineRecord::Close;
    else
        return readBytes(text, event.bytes);
    return true;
}

bool readEvent(const QString &line, LineRecord::Event &event)
{
    static const QRegularExpression shape(QStringLiteral(R"(^(\d{1,12})\.(\d{6}) (\d{1,9}) ([WF]) (.+)$)"));
    const QRegularExpressionMatch match = shape.match(line);
    if (!match.hasMatch())
        return false;
    event.us = match.captured(1).toLongLong() * UsOfSecond + match.captured(2).toLongLong();
    event.connection = match.captured(3).toInt();
    event.side = match.captured(4) == QLatin1String("W") ? LineRecord::Workstation : LineRecord::FarEnd;
    return readKind(match.captured(5), event);
}

/// Whether an event may follow what has been read so far.
class Order
{
public:
    QString wrongWith(const LineRecord::Event &event)
    {
        if (event.us < m_us)
            return QStringLiteral("time falls");
        m_us = event.us;
        if (event.kind == LineRecord::Open)
            return opening(event.connection);
        if (!m_open || event.connection != m_connection)
            return QStringLiteral("connection %1 is not open").arg(event.connection);
        m_open = event.kind != LineRecord::Close;
        return QString();
    }

private:
    QString opening(int connection)
    {
        if (m_open)
            return QStringLiteral("connection %1 is still open").arg(m_connection);
        if (connection != ++m_connection)
            return QStringLiteral("connection %1 is not the next").arg(connection);
        m_open = true;
        return QString();
    }

    qint64 m_us = 0;
    int m_connection = 0; // the last opened
    bool m_open = false;
};
} // namespace

std::optional<LineRecord> LineRecord::parse(const QByteArray &text, QString &error)
{
    LineRecord record;
    Order order;
    int number = 0;
    for (const QByteArray &raw : text.split('\n')) {
        ++number;
        const QString line = QString::fromUtf8(raw).trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        Event event;
        error = readEvent(line, event) ? order.wrongWith(event) : QStringLiteral("not an event");
        if (!error.isEmpty()) {
            error = QStringLiteral("line %1: %2").arg(number).arg(error);
            return std::nullopt;
        }
        record.events.append(event);
    }
    return record;
}

QByteArray recordLine(const LineRecord::Event &event)
{
    const QString begin = QStringLiteral("%1 %2 %3 ")
                              .arg(secondsOf(event.us))
                              .arg(event.connection)
                              .arg(QLatin1Char(event.side == LineRecord::Workstation ? 'W' : 'F'));
    switch (event.kind) {
    case LineRecord::Open: return begin.toLatin1() + "open";
    case LineRecord::Close: return begin.toLatin1() + "close";
    case LineRecord::Bytes: break;
    }
    return begin.toLatin1() + event.bytes.toHex(' ').toUpper();
}

QString secondsOf(qint64 us)
{
    return QStringLiteral("%1.%2").arg(us / UsOfSecond).arg(us % UsOfSecond, 6, 10, QLatin1Char('0'));
}
