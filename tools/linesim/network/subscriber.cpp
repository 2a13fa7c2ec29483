#include "tools/linesim/network/subscriber.h"

#include "tools/linesim/network/network_forms.h"

#include <QStringList>

namespace
{
template <class Value> struct Named {
    const char *name;
    Value value;
};

const Named<Deed::What> whats[] = {
    {"ask", Deed::Ask},     {"hang", Deed::HangUp}, {"ao", Deed::OwnAnswerback}, {"telegram", Deed::Telegram},
    {"check", Deed::Check}, {"crypt", Deed::Crypt}, {"say", Deed::Say}};
const Named<Deed::When> whens[] = {{"connect", Deed::Connected},
                                   {"question", Deed::Question},
                                   {"answerback", Deed::Answerback},
                                   {"text", Deed::Text},
                                   {"end", Deed::End},
                                   {"last-question", Deed::LastQuestion},
                                   {"last-answerback", Deed::LastAnswerback}};
const Named<Habits::Answer> answers[] = {{"right", Habits::Right}, {"wrong", Habits::Wrong},
                                         {"cut", Habits::Cut},     {"half", Habits::Half},
                                         {"none", Habits::None},   {"telegram", Habits::Telegram}};
const char *const signs[] = {"stamp", "df", "ask", "silence"};
/// Results that are no text of the network: nothing at all, the line let go, a call from outside first.
const char *const otherResults[] = {"nothing", "drop", "collide"};

template <class Table, class Value> bool find(const Table &table, const QString &name, Value &value)
{
    for (const auto &row : table)
        if (name == QLatin1String(row.name)) {
            value = row.value;
            return true;
        }
    return false;
}

template <class Table> bool holds(const Table &table, const QString &name)
{
    for (const char *row : table)
        if (name == QLatin1String(row))
            return true;
    return false;
}

bool readDeed(const QString &word, Habits &habits)
{
    Deed deed;
    bool ok = true;
    const QString when = word.section(QLatin1Char('@'), 1);
    if (when.contains(QLatin1Char('+')))
        deed.seconds = when.section(QLatin1Char('+'), 1).toInt(&ok);
    ok = ok && find(whats, word.section(QLatin1Char('@'), 0, 0), deed.what) &&
         find(whens, when.section(QLatin1Char('+'), 0, 0), deed.when);
    habits.deeds.append(deed);
    return ok;
}

bool readSetting(const QString &word, Habits &habits)
{
    const QString name = word.section(QLatin1Char('='), 0, 0);
    const QString value = word.section(QLatin1Char('='), 1);
    bool ok = false;
    if (name == QLatin1String("first"))
        return find(answers, value, habits.first);
    if (name == QLatin1String("last"))
        return find(answers, value, habits.last);
    if (name == QLatin1String("sign")) {
        habits.sign = value;
        return holds(signs, value);
    }
    if (name == QLatin1String("seconds"))
        habits.seconds = value.toInt(&ok);
    return ok && habits.seconds >= 0;
}

bool readWord(const QString &word, Habits &habits)
{
    if (word.contains(QLatin1Char('@')))
        return readDeed(word, habits);
    if (word.contains(QLatin1Char('=')))
        return readSetting(word, habits);
    habits.result = word;
    return holds(otherResults, word) || !NetworkForms::result(word).isEmpty() ||
           !NetworkForms::refusalSignal(word).isEmpty();
}

bool readSubscriber(const QString &line, Subscriber &party, QString &wrong)
{
    party.number = line.section(QLatin1Char(':'), 0, 0).trimmed();
    party.answerback = line.section(QLatin1Char(':'), 1, 1).trimmed();
    const QString habits = line.section(QLatin1Char(':'), 2);
    wrong = line;
    if (party.number.isEmpty() || party.answerback.isEmpty())
        return false;
    for (const QString &words : habits.split(QLatin1Char('/'))) {
        const std::optional<Habits> one = parseHabits(words, wrong);
        if (!one)
            return false;
        party.habits.append(*one);
    }
    return true;
}
} // namespace

Habits Subscriber::nextHabits()
{
    const int turn = qMin(calls++, habits.size() - 1);
    return turn < 0 ? Habits() : habits.at(turn);
}

std::optional<Habits> parseHabits(const QString &words, QString &wrong)
{
    Habits habits;
    for (const QString &word : words.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        if (!readWord(word, habits)) {
            wrong = word;
            return std::nullopt;
        }
    return habits;
}

std::optional<QVector<Subscriber>> parseSubscribers(const QString &text, QString &wrong)
{
    QVector<Subscriber> parties;
    for (const QString &row : text.split(QLatin1Char('\n'))) {
        const QString line = row.trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char(';')))
            continue;
        Subscriber party;
        if (!readSubscriber(line, party, wrong))
            return std::nullopt;
        parties.append(party);
    }
    return parties;
}
