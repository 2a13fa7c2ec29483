// The journal remembers what it knows of its last line and how much of the list the file holds. Beside it
// stands a naive one, which looks at the whole last line with each character and writes the whole list with
// each save, and random sessions that compare them.

#include "app/clock.h"
#include "app/options.h"
#include "tests/records/journal_file.h"
#include "tests/support/sessions.h"

#include <QtTest>

class TestProtocolSessions : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Sessions::workInMemory(); }
    void equalsANaiveJournal();
};

namespace
{
enum Act {
    Received = 0,
    Sent,
    Character,
    Service,
    Event,
    WaitingEvent,
    Flush,
    KeepOpen,
    RewriteAll,
    Width,
    Exchange,
    ExchangeLine,
    NewDay,
    Outside,
    ActCount
};

/// The rules of the journal in their plain order.
class NaiveJournal
{
public:
    QStringList lines;
    QString signalled; ///< "c" for each Changed, "n" for each NewLine
    int width = 0;

    void add(const QString &text, int type)
    {
        for (const QChar c : text)
            addCharacter(c, type);
        signalled += m_newLines == 0 ? 'c' : 'n';
        m_newLines = 0;
    }

    void addCharacter(QChar c, int type)
    {
        c = c == '\r' ? '<' : c == '\n' ? '>' : c;
        if (lines.isEmpty()) {
            lines << QString(QChar(type)) + c;
        } else if (width != 0 && widthOf(lines.last()) > width) {
            lines << QString(QChar(type)) + c;
            ++m_newLines;
            return;
        } else {
            if (typeOf(lines.last()) != type)
                lines.last() += QChar(type);
            lines.last() += c;
        }
        if (c != '>')
            return;
        if (m_waitingType != 0) {
            service(m_waiting, m_waitingType);
            m_waitingType = 0;
        } else {
            lines << QString();
            ++m_newLines;
        }
    }

    void service(const QString &text, int type)
    {
        if (!lines.isEmpty() && lines.last().isEmpty())
            lines.removeLast();
        lines << QChar(type) + text << QString();
        m_newLines = 0;
        signalled += 'n';
    }

    void event(const QString &text, int type, bool cached)
    {
        const QString line = Time.dateTime.toString("hh:mm:ss ") + text;
        if (m_waitingType != 0) {
            service(m_waiting, m_waitingType);
            service(line, type);
            m_waitingType = 0;
        } else if (!cached || (!lines.isEmpty() && lines.last().isEmpty())) {
            service(line, type);
        } else {
            m_waiting = line;
            m_waitingType = type;
        }
    }

private:
    static int typeOf(const QString &line)
    {
        int type = 0;
        for (const QChar c : line)
            if (c.unicode() < 10)
                type = c.unicode();
        return type;
    }
    static int widthOf(QString line)
    {
        for (const char c : QByteArray("\1\2\"#&<>|"))
            line.remove(QLatin1Char(c));
        return line.size();
    }

    QString m_waiting;
    int m_waitingType = 0;
    int m_newLines = 0;
};

const QStringList Forms = {"А", "\r\n", "ТЕКСТ", "\n", "|#&", "\r", "\U0001F4E0", "ЕЩЕ СЛОВО", "<", ">"};
const QStringList Lists[] = {{}, {"\1A"}, {"\1A", "\2Б"}, {"\2Б", "\1A"}, {""}, {"\1ТЕКСТ<>", ""}};
constexpr int ListCount = int(sizeof Lists / sizeof *Lists);

Session make(quint32 seed)
{
    QRandomGenerator random(seed);
    Session session;
    session.seed = seed;
    for (int i = random.bounded(20); i >= 0; --i) {
        if (random.bounded(3) != 0) {
            QString line;
            for (int k = random.bounded(8); k >= 0; --k)
                line += Sessions::anyOf(Forms, random);
            const int act = random.bounded(3);
            for (const QString &piece : Sessions::pieces(line, random))
                session.steps.append({piece, act, 1 + random.bounded(2)});
        } else {
            session.steps.append(
                {"Событие", Service + random.bounded(ActCount - Service), random.bounded(60)});
        }
    }
    session.steps.append({{}, Flush, 0});
    return session;
}

void actOnNaive(NaiveJournal &journal, const Session::Step &step)
{
    switch (Act(step.act)) {
    case Received: return journal.add(step.text, 1);
    case Sent: return journal.add(step.text, 2);
    case Character: return journal.addCharacter(step.text.isEmpty() ? 'B' : step.text.at(0), step.size);
    case Service: return journal.service(step.text, 3);
    case Event: return journal.event(step.text, 4, false);
    case WaitingEvent: return journal.event(step.text, 3, true);
    case Width: journal.width = step.size % 3 * 5; return;
    case Exchange: journal.lines = Lists[step.size % ListCount]; return;
    case ExchangeLine:
        if (!journal.lines.isEmpty())
            journal.lines.last() = "\2Б";
        return;
    case NewDay:
        journal.lines.clear();
        journal.signalled += 'c';
        return;
    case Flush:
    case KeepOpen:
    case RewriteAll:
    case Outside:
    case ActCount: return; // of no matter to the list
    }
}

void actOnJournal(const Desk &desk, const Session::Step &step)
{
    switch (Act(step.act)) {
    case Received: return Log.add(step.text, ProtocolReceived);
    case Sent: return Log.add(step.text, ProtocolSent);
    case Character: return Log.add(step.text.isEmpty() ? 'B' : step.text.at(0), ProtocolTypes(step.size));
    case Service: return Log.addServiceString(step.text, ProtocolInfo);
    case Event: return Log.addCacheServiceString(step.text, ProtocolError, false);
    case WaitingEvent: return Log.addCacheServiceString(step.text, ProtocolInfo, true);
    case Flush: return saveAndFlush();
    case KeepOpen: Options.protocolFileNoClose = step.size % 2 == 0; return;
    case RewriteAll: Log.rewriteAll = true; return;
    case Width: Log.lineWidthLimit = step.size % 3 * 5; return;
    case Exchange: Log.lines = Lists[step.size % ListCount]; return;
    case ExchangeLine:
        if (!Log.lines.isEmpty())
            Log.lines.replace(Log.lines.size() - 1, "\2Б");
        return;
    case NewDay: return Log.Load();
    case ActCount: return;
    case Outside:
        desk.write("prt/" + Time.yyyyMMdd + ".prt", QByteArray(step.size, 'X'));
        QFile file(Log.fileName);
        (void)file.open(QIODevice::ReadWrite);
        file.setFileTime(QDateTime(QDate(2026, 7, 1), QTime(11, 0)), QFileDevice::FileModificationTime);
        return;
    }
}

QStringList run(const Session &session, bool naive)
{
    const Desk desk;
    NaiveJournal journal;
    QString signalled;
    QObject::connect(&Log, &CProtocol::Changed, [&] { signalled += 'c'; });
    QObject::connect(&Log, &CProtocol::NewLine, [&] { signalled += 'n'; });
    QStringList all;
    for (const Session::Step &step : session.steps) {
        if (step.act == NewDay)
            Time.setTo(Time.dateTime.addDays(1));
        naive ? actOnNaive(journal, step) : actOnJournal(desk, step);
        const QString list = QStringList(naive ? journal.lines : Log.lines.list()).join('\n');
        const QByteArray file = naive ? list.toUtf8() : desk.read("prt/" + Time.yyyyMMdd + ".prt");
        all << QString::number((naive ? journal.lines : Log.lines.list()).size()) + '/' + list + '/' +
                   (naive ? journal.signalled : signalled) + '/' +
                   (step.act == Flush ? QString::fromUtf8(file) : QString());
    }
    return all;
}
} // namespace

void TestProtocolSessions::equalsANaiveJournal()
{
    const QByteArray difference = Sessions::compare(Sessions::count(3000), make, run);
    QVERIFY2(difference.isEmpty(), difference.constData());
}

QTEST_GUILESS_MAIN(TestProtocolSessions)
#include "test_protocol_sessions.moc"
