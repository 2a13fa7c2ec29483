// The search reads files in pieces and finds hits across their borders. Beside it stands a naive one, which
// reads each file whole, and random archives that compare them.

#include "app/state.h"
#include "records/telegram_search.h"
#include "tests/support/sessions.h"

#include <QtTest>

class TestSearchSessions : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Sessions::workInMemory(); }
    void equalsANaiveSearch();
};

namespace
{
constexpr int ReadAtATime = 262144;
const QDate FirstDay(2026, 7, 29);

/// Few letters, so that the begin of a hit often stands where none is.
QString letters(QRandomGenerator &random, int count)
{
    QString text;
    for (int i = 0; i < count; ++i)
        text += QStringLiteral("АБA").at(random.bounded(3));
    return text;
}

/// A step is a file: its name with its directory, the bytes before its text, and what stands behind it.
Session makeSession(quint32 seed)
{
    QRandomGenerator random(seed);
    Session session;
    session.seed = seed;
    const int count = 1 + random.bounded(6);
    for (int file = 0; file < count; ++file) {
        Session::Step step;
        step.text = letters(random, random.bounded(12));
        step.act = random.bounded(1 << 16);
        const int borders = random.bounded(8) == 0 ? 1 + random.bounded(2) : 0;
        step.size = borders * ReadAtATime + random.bounded(40) - (borders > 0 ? 30 : 0);
        session.steps << step;
    }
    return session;
}

QByteArray contentOf(const Session::Step &step)
{
    const QByteArray filler = step.act % 2 == 0 ? QByteArray("A") : QByteArray("\xD0\x90");
    return filler.repeated(step.size / filler.size()) + QByteArray(step.size % filler.size(), '\0') +
           step.text.toUtf8() + (step.act % 3 == 0 ? QByteArray() : QByteArray("\r\nA"));
}

QString directoryOf(const Session::Step &step)
{
    const QDate day = FirstDay.addDays(step.act / 8 % 3);
    return (step.act / 4 % 2 == 0 ? QStringLiteral("inp/") : QStringLiteral("out/")) +
           day.toString(QStringLiteral("yyyyMMdd"));
}

CTelegramSearch::Request requestOf(quint32 seed)
{
    QRandomGenerator random(seed + 1000000);
    CTelegramSearch::Request request;
    request.from = FirstDay.addDays(random.bounded(3) - 1);
    request.to = FirstDay.addDays(random.bounded(4));
    request.incoming = random.bounded(4) != 0;
    request.outgoing = random.bounded(4) != 0;
    request.text = letters(random, random.bounded(5));
    return request;
}

QString shownRow(const QDate &day, const QString &directory, const QString &name, bool first)
{
    return QStringLiteral("%1 %2 %3%4")
        .arg(day.toString(QStringLiteral("dd.MM")), QDir::current().relativeFilePath(directory), name,
             first ? QStringLiteral(" first") : QString());
}

QStringList searched(const CTelegramSearch::Request &request)
{
    CTelegramSearch search(request);
    CTableViewModel_SearchResult found;
    while (search.next(0, found)) {
    }
    QStringList rows;
    for (int row = 0; row < found.rowCount(); ++row) {
        const CTableViewModelItem_SearchResult &item = found.at(row);
        rows << shownRow(item.date, item.dirPath, item.fileName, item.firstInDirectory);
    }
    return rows;
}

QStringList searchedNaively(const CTelegramSearch::Request &request)
{
    QStringList rows;
    for (QDate day = request.from; day <= request.to; day = day.addDays(1)) {
        for (const bool incoming : {true, false}) {
            const QDir directory(incoming ? State.pathInp_forDate(day) : State.pathOut_forDate(day));
            const QStringList names = directory.entryList({"*"}, QDir::Files, QDir::Name);
            for (const QString &name : names) {
                QFile file(directory.filePath(name));
                if (!(incoming ? request.incoming : request.outgoing) || !file.open(QIODevice::ReadOnly))
                    continue;
                if (request.text.isEmpty() || file.readAll().contains(request.text.toUtf8()))
                    rows << shownRow(day, directory.path(), name, name == names.first());
            }
        }
    }
    return rows;
}

QStringList run(const Session &session, bool naive)
{
    const Desk desk;
    int number = 0;
    for (const Session::Step &step : session.steps)
        desk.write(QStringLiteral("%1/%2").arg(directoryOf(step)).arg(++number), contentOf(step));
    const CTelegramSearch::Request request = requestOf(session.seed);
    return {(naive ? searchedNaively(request) : searched(request)).join('/')};
}
} // namespace

void TestSearchSessions::equalsANaiveSearch()
{
    const QByteArray difference = Sessions::compare(Sessions::count(1000), makeSession, run);
    QVERIFY2(difference.isEmpty(), difference.constData());
}

QTEST_GUILESS_MAIN(TestSearchSessions)
#include "test_search_sessions.moc"
