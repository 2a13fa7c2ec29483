#include "sent_side.h"

#include "procedures/centre_words.h"
#include "text/utils.h"

#include <QDir>
#include <QRegularExpression>

namespace
{
const QString SetAside = QStringLiteral(".b");
constexpr int KindAt = 8; // in a name: "g" goes under guaranteed transfer, as frames

/// The number behind the last point of a sent file's name; -1 if there is none.
int numberBehind(const QString &name)
{
    const QString digits = name.section(QLatin1Char('.'), -1);
    bool isNumber = false;
    const int number = digits.toInt(&isNumber);
    return isNumber && digits.size() == 3 ? number : -1;
}

/// Whether \a letters are Russian capitals, without the two that the code lacks, and figures.
bool isCarriedAsItIs(const QString &letters)
{
    static const QRegularExpression plain(QStringLiteral("^[А-ЩЫ-Я0-9]*$"));
    return plain.match(letters).hasMatch();
}

bool isBegin(const CJournalEvent &event)
{
    return event.kind == CJournalEvent::Sending || event.kind == CJournalEvent::Calling;
}
} // namespace

CSentSide::CSentSide(const CDayRecord &record, CDayReport &report)
    : m_record(record), m_report(report), m_line(record.sentLine), m_row(record.procedure == SKK ? 0 : 1)
{
}

void CSentSide::check()
{
    collect();
    findNumbers();
    numberRow();
    for (const Sending &sending : qAsConst(m_sendings)) {
        if (sending.isAccepted && sending.directory == nameOfDate(m_record.date))
            checkAccepted(sending);
        else if (sending.place.date == m_record.date && !sending.isSettled)
            checkUnsettled(sending);
    }
    checkFiles();
    checkTwice();
    m_row.check(m_report);
    m_report.sent.firstNumber = m_row.first();
    m_report.sent.lastNumber = m_row.last();
    checkCounter();
}

void CSentSide::collect()
{
    for (int i = 0; i < m_record.events.size(); ++i)
        takeEvent(i);
}

void CSentSide::takeEvent(int at)
{
    const CJournalEvent &event = m_record.events.at(at);
    const CJournalEvent next = m_record.events.value(at + 1);
    if (isBegin(event)) {
        if (next.kind == CJournalEvent::Unreadable && event.kind == CJournalEvent::Sending)
            return; // nothing was sent
        Sending sending;
        sending.name = event.name;
        sending.place = event.place;
        sending.time = event.time;
        m_sendings.append(sending);
    } else if (event.kind == CJournalEvent::Renamed) {
        const bool isAside = event.targetName().startsWith(event.fileName() + SetAside);
        const bool isSent = dateOfName(CJournalEvent::directoryOf(event.target)).isValid();
        const bool failed = next.kind == CJournalEvent::RenamingFailed;
        if (failed && isSent && event.place.date == m_record.date)
            m_report.disagree(event.place.shown(),
                              QStringLiteral("отправленный %1 не убран из очереди").arg(event.fileName()));
        else if (isAside || isSent)
            settle(event, isSent);
    } else if (event.kind == CJournalEvent::Removed) {
        settle(event, false);
    }
}

/// What \a event says of the last sending of its file. A file may be sent from the queue more than once.
void CSentSide::settle(const CJournalEvent &event, bool isAccepted)
{
    for (auto each = m_sendings.rbegin(); each != m_sendings.rend(); ++each) {
        Sending &sending = *each;
        if (sending.name != event.fileName() || sending.isSettled)
            continue;
        sending.isSettled = true;
        sending.isAccepted = isAccepted;
        sending.settled = event.place;
        sending.target = event.targetName();
        sending.directory = CJournalEvent::directoryOf(event.target);
        if (isAccepted && m_record.procedure != Direct)
            sending.number = numberBehind(sending.target);
        return;
    }
    if (!isAccepted)
        return;
    Sending sending; // without the line of its beginning
    sending.name = event.fileName();
    sending.place = sending.settled = event.place;
    sending.time = event.time;
    sending.isSettled = sending.isAccepted = true;
    sending.target = event.targetName();
    sending.directory = CJournalEvent::directoryOf(event.target);
    sending.number = m_record.procedure == Direct ? -1 : numberBehind(sending.target);
    m_sendings.append(sending);
}

/// The numbers of those sendings that no receipt has named: the one on the line before the next sending.
void CSentSide::findNumbers()
{
    if (m_record.procedure != CKS)
        return;
    for (int i = 0; i < m_sendings.size(); ++i) {
        Sending &sending = m_sendings[i];
        if (sending.number >= 0)
            continue;
        const CPlace from = i > 0 ? m_sendings.at(i - 1).place : CPlace();
        for (const CLineMessage &message : m_record.sentText) {
            const bool isBefore = i + 1 == m_sendings.size() || message.begin < m_sendings.at(i + 1).place;
            const bool isOther = i > 0 && message.number == m_sendings.at(i - 1).number;
            if (message.number >= 0 && from < message.begin && isBefore && !isOther)
                sending.number = message.number;
        }
    }
}

void CSentSide::numberRow()
{
    for (const CJournalEvent &event : m_record.events) {
        if (event.place.date != m_record.date)
            continue;
        if (event.kind == CJournalEvent::CountersReset)
            m_row.set(event.place, 1);
        else if (event.kind == CJournalEvent::OperatorSetSent)
            m_row.set(event.place, event.figure + 1);
    }
    for (const Sending &sending : qAsConst(m_sendings)) {
        // On a switched network only what is delivered has a number, and gets it then.
        const bool atEnd = m_record.procedure == SKK;
        const CPlace place = atEnd ? sending.settled : sending.place;
        if (m_record.procedure == Direct || place.date != m_record.date || (atEnd && !sending.isAccepted))
            continue;
        if (sending.number >= 0)
            m_row.give(place, sending.number, sending.name);
        else
            m_row.giveUnknown(place);
    }
}

void CSentSide::checkAccepted(const Sending &sending)
{
    ++m_report.sent.inJournal;
    ++m_report.sent.byHour[sending.time.hour()];
    checkReceipt(sending);
    const bool isThere = m_record.sentFiles.contains(sending.target) ||
                         m_record.sentFiles.contains(sending.target + QLatin1Char('_'));
    if (!isThere && !m_report.filesExpired)
        m_report.disagree(
            sending.settled.shown(),
            QStringLiteral("отправлен %1, а файла нет").arg(m_record.shownSent(sending.target)));
    checkText(sending);
}

/// Only a text of letters that the line carries as they are can be known again.
void CSentSide::checkText(const Sending &sending)
{
    const auto letters =
        m_record.letters(m_record.directory.sent(m_record.date) + QLatin1Char('/') + sending.target);
    const bool isProtected = sending.name.size() > KindAt && sending.name.at(KindAt) == QLatin1Char('g');
    if (!letters || letters->isEmpty() || isProtected || !isCarriedAsItIs(*letters))
        return;
    if (!m_line.holds(*letters))
        m_report.disagree(sending.settled.shown(), QStringLiteral("текст файла %1 не тот, что ушел на линию")
                                                       .arg(m_record.shownSent(sending.target)));
}

void CSentSide::checkReceipt(const Sending &sending)
{
    if (m_record.procedure == Direct)
        return; // the far end has none
    if (hasReceipt(sending))
        ++m_report.sent.receipts;
    else if (m_record.procedure == CKS)
        m_report.disagree(
            sending.settled.shown(),
            QStringLiteral("%1 принят за отправленный без квитанции центра").arg(sending.target));
    else
        m_report.disagree(sending.settled.shown(),
                          QStringLiteral("%1 принят за отправленный без автоответа").arg(sending.target));
}

bool CSentSide::hasReceipt(const Sending &sending) const
{
    if (m_record.procedure == SKK)
        return isDelivered(sending);
    for (const CLineMessage &message : m_record.received) {
        if (message.end.isNowhere() || message.begin < sending.place || sending.settled < message.end)
            continue;
        const QString plain = CUtils::removeRegisters(message.text);
        int your = -1;
        int our = -1;
        QString w1;
        QString w2;
        QString w3;
        if (CUtils::testTemplate(CentreWords::Receipt, plain, &your, &our, &w1, &w2, &w3) >= 2 &&
            your == sending.number)
            return true;
        if (CUtils::testTemplate(CentreWords::Acceptance, plain, &our) == 1)
            return true; // of the telegram in progress, whatever its number says
    }
    return false;
}

/// The journal says that the far end's answerback came behind the text.
bool CSentSide::isDelivered(const Sending &sending) const
{
    for (const CJournalEvent &event : m_record.events)
        if (event.kind == CJournalEvent::Delivered && event.name == sending.name &&
            !(event.place < sending.place) && event.place < sending.settled)
            return true;
    return false;
}

/// Whether a file that was being sent is found in another place: in the queue, or sent on a later day.
bool CSentSide::isElsewhere(const QString &name) const
{
    for (const QString &waiting : m_record.queueFiles)
        if (waiting == name || waiting.startsWith(name + SetAside))
            return true;
    const QDir queue(m_record.directory.queue());
    const QString day = nameOfDate(m_record.date);
    for (const QString &directory : queue.entryList({QStringLiteral("????????")}, QDir::Dirs))
        if (directory >= day && !QDir(queue.filePath(directory))
                                     .entryList({name, name + QStringLiteral(".*")}, QDir::Files)
                                     .isEmpty())
            return true;
    return false;
}

void CSentSide::checkUnsettled(const Sending &sending)
{
    if (isElsewhere(sending.name) || m_report.filesExpired)
        return;
    m_report.disagree(
        sending.place.shown(),
        QStringLiteral("%1 отправлялся, но его нет ни среди отправленных, ни в очереди").arg(sending.name));
}

void CSentSide::checkFiles()
{
    for (const QString &name : m_record.sentFiles) {
        if (isTranscript(name))
            continue;
        ++m_report.sent.files;
        bool isKnown = false;
        for (const Sending &sending : qAsConst(m_sendings))
            isKnown = isKnown || (sending.isAccepted && sending.directory == nameOfDate(m_record.date) &&
                                  sending.target == withoutNewMark(name));
        if (isKnown)
            continue;
        m_report.disagree(m_record.shownSent(name),
                          QStringLiteral("файл есть, а в протоколе такой отправки нет"));
        if (m_record.procedure != Direct && numberBehind(name) >= 0)
            m_row.excuse(numberBehind(name));
    }
}

/// The same telegram twice among the sent ones, under the same name of the queue.
void CSentSide::checkTwice()
{
    QMap<QString, QString> first; // the name in the queue with the letters, and the sent file's name
    for (const QString &name : m_record.sentFiles) {
        if (isTranscript(name) || m_record.procedure == Direct)
            continue;
        const auto letters =
            m_record.letters(m_record.directory.sent(m_record.date) + QLatin1Char('/') + name);
        if (!letters || letters->isEmpty())
            continue;
        const QString key = name.section(QLatin1Char('.'), 0, -2) + QLatin1Char('.') + *letters;
        if (first.contains(key))
            m_report.disagree(
                m_record.shownSent(name),
                QStringLiteral("телеграмма отправлена второй раз, прежде как %1").arg(first[key]));
        else
            first[key] = name;
    }
}

void CSentSide::checkCounter()
{
    if (!m_record.counters)
        return;
    const int counter = m_record.counters->figures.value(QStringLiteral("PK_out"));
    m_report.sent.counter = counter;
    const bool atRest = m_record.procedure != SKK ||
                        (!m_record.events.isEmpty() && m_record.events.last().kind == CJournalEvent::Ended);
    if (!atRest)
        return;
    int count = 0;
    for (const Sending &sending : qAsConst(m_sendings))
        count += sending.place.date == m_record.date ? 1 : 0;
    if (m_record.procedure == SKK)
        count = m_report.sent.inJournal;
    else if (m_record.procedure == CKS)
        count = m_row.counterAt({m_record.date.addDays(1), 0});
    else
        count %= 1000;
    // A program that is killed between the line of a sending and its number has not spent the number.
    const int slack = m_record.procedure == CKS ? m_row.slack() : 0;
    if (counter < count || counter > count + slack)
        m_report.disagree(QStringLiteral("velda_state.ini"),
                          QStringLiteral("счетчик переданных %1, а по книгам %2").arg(counter).arg(count));
}
