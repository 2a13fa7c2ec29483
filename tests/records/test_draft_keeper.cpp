#include "app/options.h"
#include "records/draft_keeper.h"
#include "tests/support/desk.h"
#include "tests/support/full_disk.h"
#include "tests/support/no_ordinary_file.h"
#include "tests/support/patience.h"
#include "tests/support/read_only.h"

/// The file that keeps what is being written.
class TestDraftKeeper : public QObject
{
    Q_OBJECT

private slots:
    void offeredDraftIsInTheFile();
    void whatIsSettledIsNotWritten();
    void draftUnderWayIsFollowedByTheNext();
    void discardedDraftIsGone();
    void discardFollowsWhatIsUnderWay();
    void lastDraftIsWrittenAtTheEnd();
    void fileStaysInItsDirectory();
    void failureIsToldAndOverWithTheNextSuccess_data();
    void failureIsToldAndOverWithTheNextSuccess();
    void eachOutageIsCountedOnceThoughNobodyLookedBetween();
    void fullDiskLeavesTheFormerDraft();
    void discardedDraftDoesNotComeBackWhereNothingCanBeRemoved();
    void draftThatCannotBeRemovedIsRemovedLater();
    void noOrdinaryFileIsLeftAlone_data();
    void noOrdinaryFileIsLeftAlone();
};

namespace
{
const QString Name = QStringLiteral("velda_draft.json");

Draft withText(const QString &text)
{
    Draft draft;
    draft.fields.text = text;
    return draft;
}

bool offerAndWait(CDraftKeeper &keeper, const Draft &draft)
{
    return QTest::qWaitFor([&] { return keeper.offer(draft); }, PatienceMs) &&
           QTest::qWaitFor([&] { return !keeper.isBusy(); }, PatienceMs);
}

QString kept(const Desk &desk)
{
    const auto draft = draftOf(desk.read(Name));
    return draft ? draft->fields.text : QStringLiteral("no draft");
}
} // namespace

void TestDraftKeeper::offeredDraftIsInTheFile()
{
    const Desk desk;
    CDraftKeeper keeper;
    QVERIFY(!keeper.load());
    QVERIFY(offerAndWait(keeper, withText("А")));
    QCOMPARE(kept(desk), QString("А"));
    QVERIFY(offerAndWait(keeper, withText("АБ")));
    QCOMPARE(kept(desk), QString("АБ"));
    QVERIFY(!keeper.isFailing());
    QVERIFY(*CDraftKeeper().load() == withText("АБ"));
    QCOMPARE(desk.names(".", "velda_draft*"), QStringList(Name));
}

void TestDraftKeeper::whatIsSettledIsNotWritten()
{
    const Desk desk;
    CDraftKeeper keeper;
    keeper.settle(withText("А"));
    QVERIFY(keeper.offer(withText("А")));
    QVERIFY(!keeper.isBusy());
    QVERIFY(!QFile::exists(desk.path(Name)));
    QVERIFY(offerAndWait(keeper, withText("Б")));
    QVERIFY(QFile::remove(desk.path(Name)));
    QVERIFY(keeper.offer(withText("Б")));
    QVERIFY(!keeper.isBusy());
    QVERIFY(offerAndWait(keeper, withText("А"))); // what was settled once is a change again
    QCOMPARE(kept(desk), QString("А"));
}

void TestDraftKeeper::draftUnderWayIsFollowedByTheNext()
{
    const Desk desk;
    CDraftKeeper keeper;
    const Draft large = withText(QString(3000000, 'A'));
    QVERIFY(keeper.offer(large));
    QVERIFY(offerAndWait(keeper, withText("Б")));
    QCOMPARE(kept(desk), QString("Б"));
}

void TestDraftKeeper::discardedDraftIsGone()
{
    const Desk desk;
    CDraftKeeper keeper;
    QVERIFY(offerAndWait(keeper, withText("А")));
    keeper.discard(withText("А"));
    QVERIFY(!QFile::exists(desk.path(Name)));
    QVERIFY(keeper.offer(withText("А")));
    QVERIFY(!keeper.isBusy());
    keeper.discard(withText("А")); // without a file
    QVERIFY(offerAndWait(keeper, withText("Б")));
    QCOMPARE(kept(desk), QString("Б"));
}

void TestDraftKeeper::discardFollowsWhatIsUnderWay()
{
    const Desk desk;
    CDraftKeeper keeper;
    for (int i = 0; i < 20; ++i) {
        QVERIFY(keeper.offer(withText(QString(100000, 'A') + QString::number(i))));
        keeper.discard(Draft());
        QVERIFY(!QFile::exists(desk.path(Name)));
    }
}

void TestDraftKeeper::lastDraftIsWrittenAtTheEnd()
{
    const Desk desk;
    CDraftKeeper keeper;
    QVERIFY(keeper.offer(withText(QString(1000000, 'A'))));
    keeper.finish(withText("Б"));
    QCOMPARE(kept(desk), QString("Б"));
}

void TestDraftKeeper::fileStaysInItsDirectory()
{
    const Desk desk;
    CDraftKeeper keeper;
    QVERIFY(QDir().mkdir(desk.path("elsewhere")));
    QVERIFY(QDir::setCurrent(desk.path("elsewhere")));
    QVERIFY(offerAndWait(keeper, withText("А")));
    QCOMPARE(kept(desk), QString("А"));
    keeper.discard(Draft());
    QVERIFY(!QFile::exists(desk.path(Name)));
}

void TestDraftKeeper::failureIsToldAndOverWithTheNextSuccess_data()
{
    QTest::addColumn<bool>("thereBefore");
    row("a file that cannot be written", true);
    row("a directory that takes none", false);
}

void TestDraftKeeper::failureIsToldAndOverWithTheNextSuccess()
{
    QFETCH(bool, thereBefore);
    const Desk desk;
    QVERIFY(QDir().mkdir(desk.path("data")));
    QVERIFY(QDir::setCurrent(desk.path("data")));
    CDraftKeeper keeper;
    if (thereBefore)
        QVERIFY(offerAndWait(keeper, withText("А")));
    {
        const ReadOnly locked(desk, "data");
        QVERIFY(offerAndWait(keeper, withText("Б")));
        QVERIFY(keeper.isFailing());
        QVERIFY(offerAndWait(keeper, withText("Б")));
        QVERIFY(keeper.isFailing());
    }
    if (thereBefore)
        QCOMPARE(draftOf(desk.read("data/" + Name))->fields.text, QString("А"));
    QVERIFY(offerAndWait(keeper, withText("Б"))); // the same once more
    QVERIFY(!keeper.isFailing());
    QCOMPARE(draftOf(desk.read("data/" + Name))->fields.text, QString("Б"));
}

// A success that nobody saw lies between two outages: whoever looked at isFailing() only took them for one.
void TestDraftKeeper::eachOutageIsCountedOnceThoughNobodyLookedBetween()
{
    const Desk desk;
    CDraftKeeper keeper;
    QVERIFY(offerAndWait(keeper, withText("А")));
    QCOMPARE(keeper.outages(), 0);
    for (int outage = 1; outage <= 3; ++outage) {
        QVERIFY(QFile::remove(desk.path(Name)));
        QVERIFY(QDir().mkdir(desk.path(Name)));
        QVERIFY(offerAndWait(keeper, withText(QString::number(outage))));
        QVERIFY(offerAndWait(keeper, withText(QString::number(outage)))); // fails once more
        QCOMPARE(keeper.outages(), outage);
        QVERIFY(keeper.isFailing());
        QVERIFY(QDir().rmdir(desk.path(Name)));
        QVERIFY(offerAndWait(keeper, withText(QString::number(outage))));
        QVERIFY(!keeper.isFailing());
        QCOMPARE(keeper.outages(), outage);
    }
}

void TestDraftKeeper::fullDiskLeavesTheFormerDraft()
{
    const Desk desk;
    CDraftKeeper keeper;
    QVERIFY(offerAndWait(keeper, withText("А")));
    {
        const FullDisk full(1000);
        QVERIFY(offerAndWait(keeper, withText(QString(5000, 'B'))));
        QVERIFY(keeper.isFailing());
    }
    QCOMPARE(kept(desk), QString("А"));
}

void TestDraftKeeper::discardedDraftDoesNotComeBackWhereNothingCanBeRemoved()
{
    const Desk desk;
    QVERIFY(QDir().mkdir(desk.path("data")));
    QVERIFY(QDir::setCurrent(desk.path("data")));
    CDraftKeeper keeper;
    QVERIFY(offerAndWait(keeper, withText("А")));
    {
        const ReadOnly locked(desk, "data", ReadOnly::Writable);
        keeper.discard(Draft());
    }
    QVERIFY(!keeper.load());
}

// What is sent must not come back because the disk was read-only for a while.
void TestDraftKeeper::draftThatCannotBeRemovedIsRemovedLater()
{
    const Desk desk;
    QVERIFY(QDir().mkdir(desk.path("data")));
    QVERIFY(QDir::setCurrent(desk.path("data")));
    CDraftKeeper keeper;
    QVERIFY(offerAndWait(keeper, withText("А")));
    {
        const ReadOnly locked(desk, "data");
        keeper.discard(withText("А"));
        QVERIFY(keeper.isFailing());
        QVERIFY(offerAndWait(keeper, withText("А")));
        QVERIFY(keeper.isFailing());
    }
    QVERIFY(offerAndWait(keeper, withText("А")));
    QVERIFY(!keeper.isFailing());
    QVERIFY(!QFile::exists(desk.path("data/" + Name)));
    QVERIFY(offerAndWait(keeper, withText("Б")));
    QVERIFY(*keeper.load() == withText("Б"));
}

void TestDraftKeeper::noOrdinaryFileIsLeftAlone_data()
{
    specialFiles();
}

void TestDraftKeeper::noOrdinaryFileIsLeftAlone()
{
    QFETCH(SpecialFile, kind);
    const Desk desk;
    place(desk, kind, Name);
    CDraftKeeper keeper;
    QVERIFY(!keeper.load());
    QVERIFY(offerAndWait(keeper, withText("А")));
    QVERIFY(keeper.isFailing());
    keeper.discard(Draft());
    QVERIFY(stands(desk, kind, Name));
}

QTEST_GUILESS_MAIN(TestDraftKeeper)
#include "test_draft_keeper.moc"
