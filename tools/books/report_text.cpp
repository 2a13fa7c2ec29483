#include "report_text.h"

#include "report_rows.h"

namespace
{
constexpr int TitleWidth = 28;
constexpr int FigureWidth = 12;
const QString LineEnd = QStringLiteral("\n");

QString row(const QString &title, const QString &received, const QString &sent)
{
    return title.leftJustified(TitleWidth) + received.rightJustified(FigureWidth) +
           sent.rightJustified(FigureWidth) + LineEnd;
}

QString listed(const QString &title, const QStringList &lines)
{
    if (lines.isEmpty())
        return QString();
    QString text = title + QStringLiteral(": %1").arg(lines.size()) + LineEnd;
    for (const QString &line : lines)
        text += QStringLiteral("  ") + line + LineEnd;
    return text;
}

QStringList outagesOf(const CDayReport &report)
{
    QStringList lines;
    for (const COutage &outage : report.outages)
        lines << shownOutage(outage) + QStringLiteral(", ") + outage.why;
    return lines;
}

QStringList disagreementsOf(const CDayReport &report)
{
    QStringList lines;
    for (const CDisagreement &one : report.disagreements)
        lines << one.where + QStringLiteral(": ") + one.what;
    return lines;
}

QString modesOf(const CDayReport &report)
{
    QString text;
    const QString modes = shownMinutes(report.modeSeconds);
    if (!modes.isEmpty())
        text += QStringLiteral("Режим: ") + modes + LineEnd;
    const QString channel = shownMinutes(report.channelSeconds);
    if (!channel.isEmpty())
        text += QStringLiteral("Канал: ") + channel + LineEnd;
    return text;
}

/// A field that a spreadsheet takes as one, whatever it holds.
QString quoted(QString field)
{
    if (!field.contains(QLatin1Char(';')) && !field.contains(QLatin1Char('"')) &&
        !field.contains(QLatin1Char('\n')))
        return field;
    return QLatin1Char('"') + field.replace(QLatin1Char('"'), QStringLiteral("\"\"")) + QLatin1Char('"');
}

QString number(int figure)
{
    return figure < 0 ? QString() : QString::number(figure);
}

QStringList fieldsOf(const CSideReport &side)
{
    return {number(side.files),      number(side.inJournal), number(side.firstNumber),
            number(side.lastNumber), number(side.receipts),  number(side.counter)};
}

QStringList fieldsOf(const CDayReport &report)
{
    QStringList fields = {report.date.toString(Qt::ISODate), procedureWord(report.procedure),
                          report.agrees() ? QStringLiteral("да") : QStringLiteral("нет")};
    fields += fieldsOf(report.received);
    fields += fieldsOf(report.sent);
    fields << number(report.centreSent) << number(report.centreHolds) << number(report.dayGiven)
           << number(report.dayTaken);
    fields << number(report.waiting.size()) << number(report.failed.size());
    fields << number(report.outages.size()) << number(report.outageSeconds());
    fields << shownMinutes(report.modeSeconds) << shownMinutes(report.channelSeconds);
    fields << disagreementsOf(report).join(QStringLiteral(" | "));
    return fields;
}

const QStringList &headings()
{
    static const QStringList names = {
        QStringLiteral("Дата"),
        QStringLiteral("Процедура"),
        QStringLiteral("Сходятся"),
        QStringLiteral("Принято файлов"),
        QStringLiteral("Принято по протоколу"),
        QStringLiteral("Первый номер приема"),
        QStringLiteral("Последний номер приема"),
        QStringLiteral("Квитанций приема"),
        QStringLiteral("Счетчик приема"),
        QStringLiteral("Передано файлов"),
        QStringLiteral("Передано по протоколу"),
        QStringLiteral("Первый номер передачи"),
        QStringLiteral("Последний номер передачи"),
        QStringLiteral("Квитанций передачи"),
        QStringLiteral("Счетчик передачи"),
        QStringLiteral("Центр: НАШ"),
        QStringLiteral("Центр: ВАШ"),
        QStringLiteral("Центр: ПЕР"),
        QStringLiteral("Центр: ПРИН"),
        QStringLiteral("Ждут отправки"),
        QStringLiteral("Не отправлены"),
        QStringLiteral("Перерывов связи"),
        QStringLiteral("Перерывы, с"),
        QStringLiteral("Режим"),
        QStringLiteral("Канал"),
        QStringLiteral("Расхождения"),
    };
    return names;
}

QString line(const QStringList &fields)
{
    QStringList safe;
    for (const QString &field : fields)
        safe << quoted(field);
    return safe.join(QLatin1Char(';')) + LineEnd;
}
} // namespace

QString textOf(const CDayReport &report)
{
    QString text = shownHeading(report) + LineEnd;
    text += row(QString(), QStringLiteral("принято"), QStringLiteral("передано"));
    for (const CReportRow &one : rowsOf(report))
        text += row(one.title, one.received, one.sent);
    if (report.filesExpired)
        text += QStringLiteral("Телеграммы этого дня удалены по сроку хранения") + LineEnd;
    text += modesOf(report);
    text += listed(QStringLiteral("Перерывы связи"), outagesOf(report));
    text += listed(QStringLiteral("Ждут отправки"), report.waiting);
    text += listed(QStringLiteral("Не отправлены"), report.failed);
    text += listed(QStringLiteral("Замечания"), report.notes);
    text += listed(QStringLiteral("Расхождения"), disagreementsOf(report));
    return text + LineEnd;
}

QString csvOf(const QVector<CDayReport> &reports)
{
    QString text = line(headings());
    for (const CDayReport &report : reports)
        text += line(fieldsOf(report));
    return text;
}
