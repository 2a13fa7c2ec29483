#include "journal_event.h"

#include "app/journal_words.h"

#include <optional>

namespace
{
using Event = CJournalEvent;

/// A path as the books compare it, whatever system wrote it.
QString path(QString words)
{
    return words.replace(QLatin1Char('\\'), QLatin1Char('/'));
}

void takeNothing(Event &, const QString &) {}

void takePath(Event &event, const QString &rest)
{
    event.name = path(rest);
}

void takeWords(Event &event, const QString &rest)
{
    event.name = rest;
}

void takeSaved(Event &event, const QString &rest)
{
    event.name = path(rest.section(JournalWords::SavedForwarded, 0, 0));
}

void takeRenamed(Event &event, const QString &rest)
{
    event.name = path(rest.section(JournalWords::RenamingTo, 0, 0));
    event.target = path(rest.section(JournalWords::RenamingTo, 1));
}

void takeFigure(Event &event, const QString &rest)
{
    event.figure = rest.section(JournalWords::OperatorSetTo, 1).toInt();
}

void takeProcedure(Event &event, const QString &rest)
{
    event.name = rest.section(JournalWords::StartedRest, 0, 0);
}

struct Row {
    const QString &begins;
    Event::Kind kind;
    void (*take)(Event &, const QString &);
};

const QVector<Row> &rows()
{
    using namespace JournalWords;
    static const QVector<Row> table = {
        // the first hit decides
        {Started, Event::Started, takeProcedure},
        {Manual, Event::Manual, takeNothing},
        {Automatic, Event::Automatic, takeNothing},
        {ChannelMode, Event::ChannelMode, takeWords},
        {Saved, Event::Saved, takeSaved},
        {SavedInCall, Event::Saved, takePath},
        {NotSaved, Event::NotSaved, takePath},
        {NotSavedInCall, Event::NotSaved, takePath},
        {Found, Event::Found, takeNothing},
        {Endless, Event::Endless, takeNothing},
        {Sending, Event::Sending, takePath},
        {Calling, Event::Calling, takePath},
        {UnreadableInCall, Event::Unreadable, takePath},
        {Unreadable, Event::Unreadable, takeNothing},
        {Renaming, Event::Renamed, takeRenamed},
        {RenamingFailed, Event::RenamingFailed, takeNothing},
        {RemovedDirectory, Event::Removed, takePath},
        {Removed, Event::Removed, takePath},
        {CallSaved, Event::CallSaved, takePath},
        {CallNotSaved, Event::CallNotSaved, takePath},
        {CentreAnswered, Event::CentreAnswered, takeNothing},
        {CentreAsked, Event::CentreAnswered, takeNothing},
        {CentreSilent, Event::CentreAnswered, takeNothing},
        {CountersReset, Event::CountersReset, takeNothing},
        {CountersDiffer, Event::CountersDiffer, takeNothing},
        {ReceivedCorrected, Event::ReceivedCorrected, takeNothing},
        {OperatorSetReceived, Event::OperatorSetReceived, takeFigure},
        {OperatorSetSent, Event::OperatorSetSent, takeFigure},
    };
    return table;
}

/// The link's state: up, down, or on the way up, which is no change.
bool takeLink(Event &event, const QString &words)
{
    using namespace JournalWords;
    bool isLink = false;
    for (const QString &road : {TcpRoad, TcpServerRoad, TreloRoad, NervaRoad})
        isLink = isLink || words.startsWith(road);
    if (!isLink)
        return false;
    for (const QString &coming : {LinkComing, LinkAwaited, LinkStranger, LinkVersion})
        if (words.contains(coming))
            return false;
    const bool up = words.contains(LinkUp.trimmed()) || words.contains(SignalBack);
    event.kind = up ? Event::LinkUp : Event::LinkDown;
    event.name = words.section(QStringLiteral("):"), 1).trimmed();
    return true;
}

bool takeDelivered(Event &event, const QString &words)
{
    using namespace JournalWords;
    if (!words.startsWith(Delivered) || !words.endsWith(DeliveredRest))
        return false;
    event.kind = Event::Delivered;
    event.name = words.mid(Delivered.size(), words.size() - Delivered.size() - DeliveredRest.size());
    return true;
}

bool takeWordsOf(Event &event, const QString &words)
{
    for (const Row &row : rows())
        if (words.startsWith(row.begins)) {
            event.kind = row.kind;
            row.take(event, words.mid(row.begins.size()));
            return true;
        }
    if (words == JournalWords::Ended) {
        event.kind = Event::Ended;
        return true;
    }
    return takeDelivered(event, words) || takeLink(event, words);
}
} // namespace

QVector<CJournalEvent> eventsOf(const CJournalFile &journal)
{
    QVector<CJournalEvent> events;
    for (const CJournalLine &line : journal.lines) {
        if (!line.isService())
            continue;
        CJournalEvent event;
        event.place = {journal.date, line.number};
        event.time = line.time();
        if (takeWordsOf(event, line.words()))
            events.append(event);
    }
    return events;
}
