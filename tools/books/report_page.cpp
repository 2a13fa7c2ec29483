#include "report_page.h"

#include "day_picture.h"
#include "report_rows.h"

#include <QXmlStreamWriter>

namespace
{
const QString Style =
    QStringLiteral("@page { size: A4; margin: 15mm; }\n"
                   "body { font-family: sans-serif; font-size: 10pt; max-width: 180mm; margin: auto; }\n"
                   "section { break-after: page; page-break-after: always; }\n"
                   "section:last-child { break-after: auto; page-break-after: auto; }\n"
                   "h1 { font-size: 14pt; } h2 { font-size: 11pt; margin-bottom: 2pt; }\n"
                   "table { border-collapse: collapse; }\n"
                   "td, th { border-bottom: 1px solid #bbb; padding: 2pt 8pt; text-align: right; }\n"
                   "td:first-child { text-align: left; }\n"
                   "svg { width: 100%; height: auto; margin: 8pt 0; }\n"
                   "rect { print-color-adjust: exact; -webkit-print-color-adjust: exact; }\n"
                   "li { overflow-wrap: anywhere; } ul { margin: 0; }\n"
                   ".bad { color: #a00; } .good { color: #060; }\n");

void cells(QXmlStreamWriter &page, const QString &element, const QStringList &texts)
{
    page.writeStartElement(QStringLiteral("tr"));
    for (const QString &text : texts)
        page.writeTextElement(element, text);
    page.writeEndElement();
}

void table(QXmlStreamWriter &page, const CDayReport &report)
{
    page.writeStartElement(QStringLiteral("table"));
    cells(page, QStringLiteral("th"), {QString(), QStringLiteral("принято"), QStringLiteral("передано")});
    for (const CReportRow &row : rowsOf(report))
        cells(page, QStringLiteral("td"), {row.title, row.received, row.sent});
    page.writeEndElement();
}

void list(QXmlStreamWriter &page, const QString &title, const QStringList &lines)
{
    if (lines.isEmpty())
        return;
    page.writeTextElement(QStringLiteral("h2"), title);
    page.writeStartElement(QStringLiteral("ul"));
    for (const QString &line : lines)
        page.writeTextElement(QStringLiteral("li"), line);
    page.writeEndElement();
}

void paragraph(QXmlStreamWriter &page, const QString &title, const QString &text)
{
    if (!text.isEmpty())
        page.writeTextElement(QStringLiteral("p"), title + text);
}

void day(QXmlStreamWriter &page, const CDayReport &report)
{
    page.writeStartElement(QStringLiteral("section"));
    page.writeStartElement(QStringLiteral("h1"));
    page.writeAttribute(QStringLiteral("class"),
                        report.agrees() ? QStringLiteral("good") : QStringLiteral("bad"));
    page.writeCharacters(shownHeading(report));
    page.writeEndElement();
    table(page, report);
    drawDay(page, report);
    if (report.filesExpired)
        paragraph(page, QString(), QStringLiteral("Телеграммы этого дня удалены по сроку хранения"));
    paragraph(page, QStringLiteral("Режим: "), shownMinutes(report.modeSeconds));
    paragraph(page, QStringLiteral("Канал: "), shownMinutes(report.channelSeconds));
    QStringList outages;
    for (const COutage &outage : report.outages)
        outages << shownOutage(outage) + QStringLiteral(", ") + outage.why;
    QStringList disagreements;
    for (const CDisagreement &one : report.disagreements)
        disagreements << one.where + QStringLiteral(": ") + one.what;
    list(page, QStringLiteral("Расхождения"), disagreements);
    list(page, QStringLiteral("Перерывы связи"), outages);
    list(page, QStringLiteral("Ждут отправки"), report.waiting);
    list(page, QStringLiteral("Не отправлены"), report.failed);
    list(page, QStringLiteral("Замечания"), report.notes);
    page.writeEndElement();
}

void head(QXmlStreamWriter &page)
{
    page.writeStartElement(QStringLiteral("head"));
    page.writeEmptyElement(QStringLiteral("meta"));
    page.writeAttribute(QStringLiteral("charset"), QStringLiteral("utf-8"));
    page.writeTextElement(QStringLiteral("title"), QStringLiteral("Книги рабочего места"));
    page.writeTextElement(QStringLiteral("style"), Style);
    page.writeEndElement();
}
} // namespace

QByteArray pageOf(const QVector<CDayReport> &reports)
{
    QByteArray bytes;
    QXmlStreamWriter page(&bytes);
    page.setCodec("UTF-8");
    page.writeDTD(QStringLiteral("<!DOCTYPE html>\n"));
    page.writeStartElement(QStringLiteral("html"));
    page.writeAttribute(QStringLiteral("lang"), QStringLiteral("ru"));
    head(page);
    page.writeStartElement(QStringLiteral("body"));
    for (const CDayReport &report : reports)
        day(page, report);
    page.writeEndElement();
    page.writeEndElement();
    page.writeEndDocument();
    return bytes;
}
