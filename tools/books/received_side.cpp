#include "received_side.h"

#include "procedures/centre_words.h"
#include "text/utils.h"

namespace
{
constexpr int NoNumber = -1;

/// The number that ends the name of a stored telegram: behind the point with a centre, behind "_" on a
/// switched network.
int numberOf(const QString &name, Procedure procedure)
{
    if (procedure == Direct)
        return NoNumber;
    const QString digits = name.section(QLatin1Char(procedure == CKS ? '.' : '_'), 1, 1);
    bool isNumber = false;
    const int number = digits.toInt(&isNumber);
    return isNumber && digits.size() == 3 ? number : NoNumber;
}

/// The first number of a day. On a switched network the name has the counter before it rises.
int firstOf(Procedure procedure)
{
    return procedure == SKK ? 0 : 1;
}
} // namespace

CReceivedSide::CReceivedSide(const CDayRecord &record, CDayReport &report)
    : m_record(record), m_report(report), m_line(record.receivedLine), m_row(firstOf(record.procedure))
{
}

void CReceivedSide::check()
{
    collectSaved();
    for (const QString &name : m_record.receivedFiles)
        if (!isTranscript(name))
            checkFile(name);
    checkSavedGone();
    noteResets();
    m_row.check(m_report);
    m_report.received.firstNumber = m_row.first();
    m_report.received.lastNumber = m_row.last();
    switch (m_record.procedure) {
    case CKS: checkNumbered(); break;
    case SKK: checkFound(); break;
    case Direct: checkMarked(); break;
    }
    checkCounter();
}

void CReceivedSide::collectSaved()
{
    for (const CJournalEvent &event : m_record.events) {
        if (event.kind != CJournalEvent::Saved || !m_record.isOfDay(event.name))
            continue;
        ++m_report.received.inJournal;
        ++m_report.received.byHour[event.time.hour()];
        const auto former = m_saved.constFind(event.fileName());
        if (former != m_saved.constEnd())
            m_report.disagree(
                event.place.shown(),
                QStringLiteral("файл %1 записан поверх прежнего, телеграммы строки %2 больше нет")
                    .arg(event.fileName())
                    .arg(former->place.line));
        m_saved.insert(event.fileName(), event);
        const int number = numberOf(event.fileName(), m_record.procedure);
        if (number != NoNumber)
            m_row.give(event.place, number, event.fileName());
    }
}

void CReceivedSide::checkFile(const QString &name)
{
    const QString shown = m_record.shownReceived(name);
    const auto letters =
        m_record.letters(m_record.directory.received(m_record.date) + QLatin1Char('/') + name);
    ++m_report.received.files;
    m_letters.insert(letters.value_or(QString()), name);
    const bool wasOnLine = letters && !letters->isEmpty() && m_line.holds(*letters);
    const auto saved = m_saved.constFind(withoutNewMark(name));
    if (saved != m_saved.constEnd()) {
        if (letters && !wasOnLine)
            m_report.disagree(saved->place.shown(),
                              QStringLiteral("текст файла %1 не тот, что пришел с линии").arg(shown));
        return;
    }
    // The line that calls it stored may have been lost with a killed program; the telegram itself was not.
    const int number = numberOf(withoutNewMark(name), m_record.procedure);
    const CPlace place = wasOnLine ? placeOfNumber(number, *letters) : CPlace();
    if (number != NoNumber && !place.isNowhere())
        m_row.give(place, number, name);
    else if (number != NoNumber)
        m_row.excuse(number);
    if (wasOnLine)
        m_report.notes << QStringLiteral("%1: принят с линии, но строки о записи в протоколе нет").arg(shown);
    else
        m_report.disagree(shown, QStringLiteral("файл есть, а в протоколе такой телеграммы нет"));
}

CPlace CReceivedSide::placeOfNumber(int number, const QString &letters) const
{
    for (const CLineMessage &message : m_record.received)
        if (message.number == number && !message.end.isNowhere() && letters.contains(lettersOf(message.text)))
            return message.end;
    return CPlace();
}

void CReceivedSide::checkSavedGone()
{
    if (m_report.filesExpired)
        return;
    for (auto saved = m_saved.constBegin(); saved != m_saved.constEnd(); ++saved)
        if (!m_record.receivedFiles.contains(saved.key()) &&
            !m_record.receivedFiles.contains(saved.key() + QLatin1Char('_')))
            m_report.disagree(
                saved->place.shown(),
                QStringLiteral("записан %1, а файла нет").arg(m_record.shownReceived(saved.key())));
}

/// What moves the counter beside the telegrams. The range of a correction stands in the centre's message.
void CReceivedSide::noteResets()
{
    for (const CJournalEvent &event : m_record.events) {
        if (event.place.date != m_record.date)
            continue;
        if (event.kind == CJournalEvent::CountersReset)
            m_row.set(event.place, 1);
        else if (event.kind == CJournalEvent::OperatorSetReceived)
            m_row.set(event.place, event.figure + 1);
        else if (event.kind == CJournalEvent::ReceivedCorrected)
            for (const CLineMessage &message : m_record.received) {
                QString word;
                int first = 0;
                int last = 0;
                if (!message.end.isNowhere() && message.end < event.place &&
                    CUtils::testTemplate(CentreWords::Correction, CUtils::removeRegisters(message.text),
                                         &word, &first, &last) == 3)
                    m_row.set(event.place, last + 1); // the last such message before is the one
            }
    }
}

/// The workstation may still be at work on the telegram that ended at \a place.
bool CReceivedSide::waits(const CPlace &place) const
{
    if (!m_record.isLive())
        return false;
    for (const CJournalEvent &event : m_record.events)
        if (place < event.place &&
            (event.kind == CJournalEvent::Saved || event.kind == CJournalEvent::Ended ||
             event.kind == CJournalEvent::Started))
            return false;
    return true;
}

void CReceivedSide::reportLost(const CPlace &place, const QString &what)
{
    if (waits(place))
        m_report.notes << QStringLiteral("%1: %2 еще принимается").arg(place.shown(), what);
    else
        m_report.disagree(place.shown(), QStringLiteral("%1 пришла с линии, но не записана").arg(what) +
                                             refusalBehind(place));
}

/// Why the telegram that ended at \a place was not stored, as the journal says next.
QString CReceivedSide::refusalBehind(const CPlace &place) const
{
    for (const CJournalEvent &event : m_record.events) {
        if (!(place < event.place))
            continue;
        if (event.kind == CJournalEvent::CountersDiffer)
            return QStringLiteral(": расхождение счетчиков");
        if (event.kind == CJournalEvent::NotSaved)
            return QStringLiteral(": ошибка записи файла");
        if (event.kind == CJournalEvent::Saved || event.kind == CJournalEvent::Started)
            break;
    }
    return QString();
}

void CReceivedSide::checkNumbered()
{
    QVector<int> seen;
    for (const CLineMessage &message : m_record.received) {
        if (message.number < 0 || message.end.date != m_record.date || seen.contains(message.number))
            continue;
        bool isStored = false;
        for (const QString &name : m_record.receivedFiles)
            isStored = isStored || numberOf(withoutNewMark(name), CKS) == message.number;
        for (auto saved = m_saved.constBegin(); saved != m_saved.constEnd(); ++saved)
            isStored = isStored || numberOf(saved.key(), CKS) == message.number;
        if (isStored)
            continue;
        seen.append(message.number);
        reportLost(message.begin, QStringLiteral("телеграмма %1").arg(shownNumber(message.number)));
    }
}

void CReceivedSide::checkMarked()
{
    QMultiMap<QString, QString> left = m_letters;
    for (const CLineMessage &message : m_record.received) {
        const bool oneLine =
            !message.text.contains(QLatin1Char('\r')) && !message.text.contains(QLatin1Char('\n'));
        if (message.end.isNowhere() || message.end.date != m_record.date || oneLine)
            continue;
        const QString letters = lettersOf(message.text);
        bool isStored = false;
        for (auto file = left.begin(); file != left.end() && !isStored; ++file)
            if (file.key().contains(letters)) {
                left.erase(file);
                isStored = true;
                break;
            }
        if (!isStored && !m_report.filesExpired)
            reportLost(message.begin, QStringLiteral("телеграмма"));
    }
}

void CReceivedSide::checkFound()
{
    CPlace open;
    for (const CJournalEvent &event : m_record.events) {
        if (event.place.date != m_record.date)
            continue;
        if (event.kind == CJournalEvent::Found) {
            if (!open.isNowhere())
                reportLost(open, QStringLiteral("телеграмма"));
            open = event.place;
        } else if (event.kind == CJournalEvent::NotSaved) {
            m_report.disagree(event.place.shown(),
                              QStringLiteral("телеграмма не записана: %1").arg(event.name));
            open = CPlace();
        } else if (event.kind == CJournalEvent::Saved) {
            open = CPlace();
        }
    }
    if (!open.isNowhere())
        reportLost(open, QStringLiteral("телеграмма"));
}

void CReceivedSide::checkCounter()
{
    if (!m_record.counters)
        return;
    const int counter = m_record.counters->figures.value(QStringLiteral("PK_in"));
    m_report.received.counter = counter;
    // On a switched network the counter reaches the disk only at an orderly end.
    const bool atRest = m_record.procedure != SKK ||
                        (!m_record.events.isEmpty() && m_record.events.last().kind == CJournalEvent::Ended);
    if (!atRest)
        return;
    const int count = m_record.procedure == CKS ? m_row.counterAt({m_record.date.addDays(1), 0})
                                                : m_report.received.inJournal;
    if (counter != count % (m_record.procedure == SKK ? 1000000 : 1000))
        m_report.disagree(QStringLiteral("velda_state.ini"),
                          QStringLiteral("счетчик принятых %1, а по книгам %2").arg(counter).arg(count));
}
