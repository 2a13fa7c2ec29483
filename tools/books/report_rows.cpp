#include "report_rows.h"

#include "number_row.h"

namespace
{
const QString None = QStringLiteral("–");

QString figure(int number)
{
    return number < 0 ? None : QString::number(number);
}

QString numbers(const CSideReport &side)
{
    if (side.firstNumber < 0)
        return None;
    return shownNumber(side.firstNumber) + QStringLiteral("–") + shownNumber(side.lastNumber);
}

QString shownDuration(int seconds)
{
    return QStringLiteral("%1 мин %2 с").arg(seconds / 60).arg(seconds % 60);
}
} // namespace

QVector<CReportRow> rowsOf(const CDayReport &report)
{
    const CSideReport &in = report.received;
    const CSideReport &out = report.sent;
    QVector<CReportRow> rows = {
        {QStringLiteral("Файлов телеграмм"), figure(in.files), figure(out.files)},
        {QStringLiteral("По протоколу"), figure(in.inJournal), figure(out.inJournal)},
    };
    if (report.procedure != Direct)
        rows.append({QStringLiteral("Номера"), numbers(in), numbers(out)});
    if (report.procedure == CKS)
        rows.append({QStringLiteral("С квитанцией"), None, figure(out.receipts)});
    if (report.procedure == SKK) {
        rows.append({QStringLiteral("С автоответом"), None, figure(out.receipts)});
        rows.append({QStringLiteral("Соединений"), figure(in.calls), figure(out.calls)});
    }
    rows.append({QStringLiteral("Счетчик рабочего места"), figure(in.counter), figure(out.counter)});
    if (report.procedure == CKS) {
        rows.append({QStringLiteral("Последняя квитанция центра"), figure(report.centreSent),
                     figure(report.centreHolds)});
        rows.append(
            {QStringLiteral("Цифры центра за сутки"), figure(report.dayGiven), figure(report.dayTaken)});
    }
    return rows;
}

QString shownMinutes(const QMap<QString, int> &seconds)
{
    QStringList parts;
    for (auto mode = seconds.constBegin(); mode != seconds.constEnd(); ++mode)
        if (mode.value() >= 30)
            parts << QStringLiteral("%1 %2 мин").arg(mode.key()).arg((mode.value() + 30) / 60);
    return parts.join(QStringLiteral(", "));
}

QString shownOutage(const COutage &outage)
{
    const QString form = QStringLiteral("hh:mm:ss");
    const QString to = outage.to.isValid() ? outage.to.toString(form) : QStringLiteral("24:00:00");
    return outage.from.toString(form) + QStringLiteral("–") + to + QStringLiteral(", ") +
           shownDuration(outage.seconds());
}

QString shownHeading(const CDayReport &report)
{
    return QStringLiteral("Книги за %1 (%2): %3")
        .arg(report.date.toString(QStringLiteral("dd.MM.yyyy")), procedureWord(report.procedure),
             report.agrees()
                 ? QStringLiteral("сходятся")
                 : QStringLiteral("НЕ СХОДЯТСЯ, расхождений %1").arg(report.disagreements.size()));
}
