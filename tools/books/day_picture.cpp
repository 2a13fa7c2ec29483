#include "day_picture.h"

#include "report_rows.h"

#include <QXmlStreamWriter>

namespace
{
// Places in the picture's own units
constexpr int Width = 720;
constexpr int Height = 220;
constexpr int Left = 36;
constexpr int Right = 708;
constexpr int Top = 30;
constexpr int Bottom = 160; ///< the foot of the columns
constexpr int LinkTop = 184;
constexpr int LinkHeight = 12;
constexpr int Hours = 24;
constexpr int HourWidth = (Right - Left) / Hours;
constexpr int ColumnWidth = 11;

const QString ReceivedColour = QStringLiteral("#2f6db3");
const QString SentColour = QStringLiteral("#d98a29");
const QString LinkColour = QStringLiteral("#7fb38a");
const QString OutageColour = QStringLiteral("#c0392b");
const QString RestColour = QStringLiteral("#dddddd");
const QString LineColour = QStringLiteral("#bbbbbb");

void rectangle(QXmlStreamWriter &page, double x, double y, double width, double height, const QString &colour,
               const QString &title)
{
    page.writeStartElement(QStringLiteral("rect"));
    page.writeAttribute(QStringLiteral("x"), QString::number(x, 'f', 1));
    page.writeAttribute(QStringLiteral("y"), QString::number(y, 'f', 1));
    page.writeAttribute(QStringLiteral("width"), QString::number(width, 'f', 1));
    page.writeAttribute(QStringLiteral("height"), QString::number(height, 'f', 1));
    page.writeAttribute(QStringLiteral("fill"), colour);
    page.writeTextElement(QStringLiteral("title"), title);
    page.writeEndElement();
}

void line(QXmlStreamWriter &page, int y)
{
    page.writeEmptyElement(QStringLiteral("line"));
    page.writeAttribute(QStringLiteral("x1"), QString::number(Left));
    page.writeAttribute(QStringLiteral("x2"), QString::number(Right));
    page.writeAttribute(QStringLiteral("y1"), QString::number(y));
    page.writeAttribute(QStringLiteral("y2"), QString::number(y));
    page.writeAttribute(QStringLiteral("stroke"), LineColour);
}

void words(QXmlStreamWriter &page, int x, int y, const QString &text, const QString &anchor)
{
    page.writeStartElement(QStringLiteral("text"));
    page.writeAttribute(QStringLiteral("x"), QString::number(x));
    page.writeAttribute(QStringLiteral("y"), QString::number(y));
    page.writeAttribute(QStringLiteral("text-anchor"), anchor);
    page.writeCharacters(text);
    page.writeEndElement();
}

int mostOf(const CDayReport &report)
{
    int most = 1;
    for (int hour = 0; hour < Hours; ++hour)
        most = qMax(most, qMax(report.received.byHour[hour], report.sent.byHour[hour]));
    return most;
}

void column(QXmlStreamWriter &page, int hour, int shift, int count, int most, const QString &colour,
            const QString &what)
{
    if (count == 0)
        return;
    const double height = double(Bottom - Top) * count / most;
    rectangle(page, Left + hour * HourWidth + shift, Bottom - height, ColumnWidth, height, colour,
              QStringLiteral("%1:00 %2 %3").arg(hour).arg(what).arg(count));
}

void traffic(QXmlStreamWriter &page, const CDayReport &report)
{
    const int most = mostOf(report);
    line(page, Top);
    words(page, Left - 4, Top + 4, QString::number(most), QStringLiteral("end"));
    words(page, Left - 4, Bottom + 4, QStringLiteral("0"), QStringLiteral("end"));
    for (int hour = 0; hour < Hours; ++hour) {
        column(page, hour, 2, report.received.byHour[hour], most, ReceivedColour, QStringLiteral("принято"));
        column(page, hour, 2 + ColumnWidth, report.sent.byHour[hour], most, SentColour,
               QStringLiteral("передано"));
        words(page, Left + hour * HourWidth, Bottom + 14, QString::number(hour), QStringLiteral("middle"));
    }
    words(page, Right, Bottom + 14, QString::number(Hours), QStringLiteral("middle"));
    line(page, Bottom);
}

void legend(QXmlStreamWriter &page)
{
    struct Entry {
        int x;
        const QString &colour;
        const char *text;
    };
    const Entry entries[] = {
        {Left, ReceivedColour, "принято"},
        {Left + 90, SentColour, "передано"},
        {Left + 190, LinkColour, "связь есть"},
        {Left + 300, OutageColour, "перерыв связи"},
        {Left + 420, RestColour, "рабочее место не работало"},
    };
    for (const Entry &entry : entries) {
        const QString text = QString::fromUtf8(entry.text);
        rectangle(page, entry.x, 6, 10, 10, entry.colour, text);
        words(page, entry.x + 15, 15, text, QStringLiteral("start"));
    }
}

double placeOf(int second)
{
    constexpr double SecondsPerDay = 86400;
    return Left + (Right - Left) * second / SecondsPerDay;
}

void times(QXmlStreamWriter &page, const QVector<COutage> &list, const QString &colour)
{
    constexpr double Narrowest = 1; // so that a short time shows
    for (const COutage &one : list) {
        const int from = QTime(0, 0).secsTo(one.from);
        const double width = placeOf(from + one.seconds()) - placeOf(from);
        rectangle(page, placeOf(from), LinkTop, qMax(Narrowest, width), LinkHeight, colour, shownOutage(one));
    }
}

void link(QXmlStreamWriter &page, const CDayReport &report)
{
    rectangle(page, Left, LinkTop, Right - Left, LinkHeight, LinkColour, QStringLiteral("связь есть"));
    times(page, report.rests, RestColour);
    times(page, report.outages, OutageColour);
    words(page, Left - 4, LinkTop + 10, QStringLiteral("связь"), QStringLiteral("end"));
}
} // namespace

void drawDay(QXmlStreamWriter &page, const CDayReport &report)
{
    page.writeStartElement(QStringLiteral("svg"));
    page.writeDefaultNamespace(QStringLiteral("http://www.w3.org/2000/svg"));
    page.writeAttribute(QStringLiteral("viewBox"), QStringLiteral("0 0 %1 %2").arg(Width).arg(Height));
    page.writeAttribute(QStringLiteral("font-family"), QStringLiteral("sans-serif"));
    page.writeAttribute(QStringLiteral("font-size"), QStringLiteral("10"));
    page.writeAttribute(QStringLiteral("role"), QStringLiteral("img"));
    page.writeTextElement(QStringLiteral("title"), QStringLiteral("Обмен по часам и перерывы связи"));
    legend(page);
    traffic(page, report);
    link(page, report);
    page.writeEndElement();
}
