#include "tests/kill/day.h"

#include "app/journal_words.h"
#include "tests/kill/centre_day.h"
#include "tests/kill/direct_day.h"
#include "tests/kill/switched_day.h"

#include <QDir>
#include <QRegularExpression>
#include <QSettings>

namespace
{
const QString Temporary = QStringLiteral(".velda-");

bool isRecord(const QString &name)
{
    return name.endsWith(QStringLiteral(".dat"));
}

/// Of a connection, with or without a telegram in it.
bool isTranscript(const QString &path)
{
    return QFileInfo(path).fileName().startsWith(QLatin1Char('s'));
}

QString atHead(const QByteArray &bytes)
{
    return QString::fromUtf8(bytes.left(120)).simplified();
}
} // namespace

std::unique_ptr<Day> Day::of(const QString &procedure)
{
    if (procedure == QLatin1String("direct"))
        return std::make_unique<DirectDay>();
    if (procedure == QLatin1String("switched"))
        return std::make_unique<SwitchedDay>();
    return std::make_unique<CentreDay>(procedure == QLatin1String("midnight"));
}

QStringList Day::procedures()
{
    return {QStringLiteral("direct"), QStringLiteral("switched"), QStringLiteral("centre"),
            QStringLiteral("midnight")};
}

Day::Day(const QString &moment, int speed)
    : m_begin(QDateTime::fromString(moment, QStringLiteral("yyyy-MM-dd hh:mm:ss"))), m_speed(speed)
{
    m_since.start();
    station.set(QStringLiteral("Direct/SendConfirmation"), QStringLiteral("true"));
    station.set(QStringLiteral("CONNECT/TimeOut"), QStringLiteral("600"));
    for (const char *name : {"inp", "out", "prt"})
        QDir().mkpath(station.path(QLatin1String(name)));
}

QString Day::clock() const
{
    const QDateTime now = m_begin.addMSecs(m_since.elapsed() * m_speed + 999);
    return QStringLiteral("@%1 x%2").arg(now.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"))).arg(m_speed);
}

void Day::start()
{
    station.fakeTime(clock());
    station.start();
}

void Day::queue(const Outgoing &telegram, const QByteArray &record)
{
    outgoing << telegram;
    const QString path = QStringLiteral("out/") + telegram.name;
    if (!record.isEmpty())
        station.write(path + QStringLiteral(".dat"), record);
    station.write(QStringLiteral("coming/") + telegram.name, telegram.text.toUtf8());
    if (!QFile::rename(station.path(QStringLiteral("coming/") + telegram.name), station.path(path)))
        qFatal("cannot queue %s", qPrintable(telegram.name));
}

bool Day::isOver() const
{
    for (const Outgoing &telegram : outgoing)
        if (arrived(telegram) == 0)
            return false;
    return queueFiles().isEmpty();
}

/// Drafts aside, which the next start sweeps away, and records that the journal tells as not removed.
QStringList Day::queueFiles() const
{
    QStringList names;
    for (const QString &name : QDir(station.path(QStringLiteral("out"))).entryList(QDir::Files))
        if (!name.contains(Temporary) && !station.logged(QStringLiteral("Ошибка удаления out/") + name))
            names << name;
    return names;
}

QString Day::progress() const
{
    return station.tree(QStringLiteral(".")).join(QLatin1Char(' ')) + QLatin1Char('\n') +
           station.journal().mid(qMax(0, station.journal().size() - 30)).join(QLatin1Char('\n'));
}

QStringList Day::storedWith(const QString &mark) const
{
    QStringList result;
    for (const QString &name : station.tree(QStringLiteral("inp")))
        if (!name.contains(Temporary) &&
            QString::fromUtf8(station.read(QStringLiteral("inp/") + name)).contains(mark))
            result << name;
    return result;
}

int Day::toldUnstored() const
{
    return station.count(JournalWords::NotSaved) + station.count(JournalWords::NotSavedInCall);
}

/// How often the file \a name was sent once more for a cause: the workstation had started anew since, or had
/// given up automatic mode, and an operator had brought it back.
int Day::causesToRepeat(const QString &name) const
{
    int causes = 0;
    bool sent = false, cause = false;
    for (const QString &line : station.journal()) {
        if (line.contains(JournalWords::Started) || line.contains(JournalWords::Manual))
            cause = true;
        if (!line.contains(sendingWords() + name))
            continue;
        causes += sent && cause ? 1 : 0;
        sent = true;
        cause = false;
    }
    return causes;
}

QStringList Day::wrongSendings(const Mishaps &mishaps) const
{
    QStringList wrong;
    const QStringList sent = station.tree(QStringLiteral("out"));
    for (const Outgoing &telegram : outgoing) {
        const int times = arrived(telegram);
        const int told = station.count(sendingWords() + telegram.name);
        if (times < 1)
            wrong << QStringLiteral("lost: ") + telegram.name;
        // With the power go lines of the journal, which then does not tell of a sending or its cause.
        const int causes = mishaps.powerLost ? mishaps.count : causesToRepeat(telegram.name);
        if ((times > told && !mishaps.powerLost) || times > 1 + causes)
            wrong << QStringLiteral("%1 arrived %2 times, told %3 times, with cause %4 times")
                         .arg(telegram.name)
                         .arg(times)
                         .arg(told)
                         .arg(causes + 1);
        const QStringList places = sent.filter(
            QRegularExpression(QStringLiteral("(^|/)%1(?!.*\\.(velda-|dat))").arg(telegram.name)));
        const QRegularExpression right(
            QRegularExpression::anchoredPattern(QStringLiteral("\\d{8}/") + sentName(telegram)));
        const bool removed = station.logged(JournalWords::Removed + QStringLiteral("out/") + telegram.name);
        if (removed ? !places.isEmpty() : places.size() != 1 || !right.match(places.value(0)).hasMatch())
            wrong << QStringLiteral("%1 stands as %2").arg(telegram.name, places.join(QLatin1Char(' ')));
    }
    return wrong;
}

QStringList Day::tornFiles()
{
    QStringList wrong = wrongJournals() + wrongSettings();
    for (const QString &name : station.tree(QStringLiteral("inp"))) {
        const QByteArray text = station.read(QStringLiteral("inp/") + name);
        if (!name.contains(Temporary) && !isTranscript(name) &&
            !QString::fromUtf8(text).contains(QStringLiteral("НННН")))
            wrong << QStringLiteral("torn: inp/%1: %2").arg(name, atHead(text));
    }
    for (const QString &name : station.tree(QStringLiteral("out"))) {
        const QByteArray content = station.read(QStringLiteral("out/") + name);
        bool whole =
            name.contains(Temporary) || isTranscript(name) || (isRecord(name) && content.count('|') == 6);
        for (const Outgoing &telegram : outgoing)
            whole = whole || content == telegram.text.toUtf8();
        if (!whole)
            wrong << QStringLiteral("torn: out/%1: %2").arg(name, atHead(content));
    }
    return wrong;
}

/// The journals only grow.
QStringList Day::wrongJournals()
{
    QStringList wrong;
    for (const QString &name : station.names(QStringLiteral("prt"))) {
        if (name.contains(Temporary))
            continue;
        const QByteArray now = station.read(QStringLiteral("prt/") + name);
        const QByteArray before = m_journals.value(name);
        if (!now.startsWith(before.left(before.lastIndexOf('\n') + 1)))
            wrong << QStringLiteral("journal %1 is not what it was").arg(name);
        m_journals[name] = now;
    }
    for (auto former = m_journals.begin(); former != m_journals.end(); ++former)
        if (!QFile::exists(station.path(QStringLiteral("prt/") + former.key())))
            wrong << QStringLiteral("journal %1 is gone").arg(former.key());
    return wrong;
}

QStringList Day::wrongSettings() const
{
    QStringList wrong;
    const QSettings settings(station.path(QStringLiteral("velda.ini")), QSettings::IniFormat);
    if (settings.value(QStringLiteral("CONNECT/TcpMode")).toString() != QLatin1String("true") ||
        !settings.contains(QStringLiteral("SOUND/soundRTlgType")))
        wrong << QStringLiteral("velda.ini is not whole");
    const QString state = station.path(QStringLiteral("velda_state.ini"));
    if (QFile::exists(state) && QSettings(state, QSettings::IniFormat).allKeys().size() != 9)
        wrong << QStringLiteral("velda_state.ini is not whole: ") +
                     atHead(station.read(QStringLiteral("velda_state.ini")));
    return wrong;
}

/// A death in the middle of a line tears that one alone.
QStringList Day::tornLines(int most) const
{
    QStringList torn;
    for (const QString &line : station.journal())
        if (line.contains(QChar::ReplacementCharacter) || line.contains(QChar::Null))
            torn << QStringLiteral("torn in the journal: ") + line;
    return torn.size() > most ? torn : QStringList();
}

/// What the operator should have been told of a disk that failed for a while.
QStringList Day::untold(const Mishaps &mishaps) const
{
    if (!mishaps.lasting || mishaps.atEnd || mishaps.early)
        return {};
    static const QRegularExpression journal(QStringLiteral("^prt/")),
        message(QStringLiteral("^inp/\\d{8}/\\d")), call(QStringLiteral("^(inp|out)/\\d{8}/s")),
        sent(QStringLiteral("^out/\\d{8}/\\d")), record(QStringLiteral("^out/.*\\.dat$"));
    const QString of = mishaps.call;
    const bool writes = of == QLatin1String("open") || of == QLatin1String("write"),
               stores = writes || of == QLatin1String("rename") || of == QLatin1String("sync");
    QStringList due;
    // Of a journal that cannot be opened nothing is reported.
    if (of == QLatin1String("write") && journal.match(mishaps.path).hasMatch())
        due << QStringLiteral("Протокол не записывается на диск: ");
    if (stores && message.match(mishaps.path).hasMatch() && toldUnstored() == 0)
        due << JournalWords::NotSaved;
    if (stores && call.match(mishaps.path).hasMatch())
        due << JournalWords::CallNotSaved;
    if (of == QLatin1String("rename") && sent.match(mishaps.path).hasMatch()) {
        due << JournalWords::RenamingFailed << JournalWords::Manual;
    }
    if (of == QLatin1String("unlink") && record.match(mishaps.path).hasMatch())
        due << QStringLiteral("Ошибка удаления out/");
    QStringList wrong;
    for (const QString &words : due)
        if (!station.logged(words))
            wrong << QStringLiteral("the journal does not say: ") + words;
    return wrong;
}

/// What nobody will ever take again. A disk that refused the removal of a draft leaves it to the next start.
QStringList Day::leftovers(bool diskFailed) const
{
    QStringList wrong;
    for (const QString &name : station.tree(QStringLiteral(".")))
        if ((name.contains(Temporary) && !diskFailed) || name == QLatin1String("velda_draft.json"))
            wrong << QStringLiteral("left behind: ") + name;
    for (const QString &name : queueFiles())
        wrong << QStringLiteral("left in the queue: ") + name;
    return wrong;
}

QStringList Day::wrongBooks(const Mishaps &mishaps)
{
    QStringList wrong = tornFiles() + wrongSendings(mishaps) + wrongReceipts() + untold(mishaps) +
                        leftovers(mishaps.diskFailed) + tornLines(mishaps.count);
    const int starts = station.count(QStringLiteral(" Запуск "));
    // The list of the journal begins anew with its day: a disk that is bad from the start on loses what stood
    // there.
    if (starts < (mishaps.lasting ? 0 : 1) || starts > 1 + mishaps.count)
        wrong << QStringLiteral("%1 starts in the journal").arg(starts);
    if (!station.logged(QStringLiteral(" Выход")) && !mishaps.atEnd)
        wrong << QStringLiteral("no end in the journal");
    return wrong;
}
