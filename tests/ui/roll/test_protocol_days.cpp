#include "tests/support/row.h"
#include "tests/ui/roll/roll.h"

#include <QDateEdit>

namespace
{
const QDate Today(2026, 7, 31);
const QDate Yesterday(2026, 7, 30);
const QDate Before(2026, 7, 29);

QByteArray book(const QByteArray &word, int lines)
{
    QByteArray content;
    for (int i = 0; i < lines; ++i)
        content += '\1' + word + QByteArray::number(i) + "<>\n";
    return content;
}

/// Yesterday with 200 lines, nothing the day before, today with 300.
class Days : public Roll
{
public:
    Days()
    {
        desk.write("prt/20260730.prt", book("Y", 200));
        show();
        addLines(300);
    }
    [[nodiscard]] QString firstShown() const { return view->shownLines().value(top()).mid(1); }
};
} // namespace

class TestProtocolDays : public QObject
{
    Q_OBJECT

private slots:
    void moveInsideADayStaysInside()
    {
        Days days;
        days.view->toFirstLine();
        days.view->move(5);
        QCOMPARE(days.top(), 5);
        days.view->move(-2);
        QCOMPARE(days.top(), 3);
        days.view->move(-20);
        QCOMPARE(days.top(), 0);
        QCOMPARE(days.view->date(), Today);
    }

    void moveUpAtTheFirstLineOpensTheDayBefore()
    {
        Days days;
        days.view->toFirstLine();
        days.view->move(-1);
        QCOMPARE(days.view->date(), Yesterday);
        QCOMPARE(days.view->shownLines().size(), 200);
        QCOMPARE(days.top(), days.bar()->maximum()); // the reading goes on where it came from
        QVERIFY(!days.view->isLastString());
    }

    void moveDownAtTheLastLineOpensTheNextDay()
    {
        Days days;
        days.view->setDate(Yesterday);
        days.view->toLastLine();
        days.view->move(1);
        QCOMPARE(days.view->date(), Today);
        QVERIFY(&days.view->shownLines() == &Log.lines.list());
        QCOMPARE(days.top(), 0);
    }

    void moveDownAtTheLastLineOfTodayStays()
    {
        Days days;
        days.view->move(1);
        QCOMPARE(days.view->date(), Today);
        QVERIFY(days.view->isLastString());
        days.view->movePage(1);
        QVERIFY(days.view->isLastString());
    }

    void moveDownNeverPassesToday()
    {
        Days days;
        days.view->setDate(Today.addDays(3));
        days.view->move(1);
        QCOMPARE(days.view->date(), Today.addDays(3));
        days.view->move(-1);
        QCOMPARE(days.view->date(), Today.addDays(2));
    }

    void pagesMoveByTheLinesOnScreen()
    {
        Days days;
        days.view->toFirstLine();
        days.view->movePage(1);
        QCOMPARE(days.top(), days.view->linesOnScreen());
        days.view->movePage(-1);
        QCOMPARE(days.top(), 0);
        days.view->movePage(-1);
        QCOMPARE(days.view->date(), Yesterday);
    }

    void dayWithoutAFileIsEmpty()
    {
        Days days;
        days.view->setDate(Before);
        QVERIFY(days.view->shownLines().isEmpty());
        QCOMPARE(days.bar()->maximum(), 0);
        days.view->move(-1);
        QCOMPARE(days.view->date(), Before.addDays(-1));
        days.view->move(1);
        days.view->move(1);
        QCOMPARE(days.view->date(), Yesterday);
    }

    void dateInTheFutureIsEmpty()
    {
        Days days;
        days.desk.write("prt/20260803.prt", book("F", 0));
        days.view->setDate(QDate(2026, 8, 3));
        QVERIFY(days.view->shownLines().isEmpty());
    }

    void otherDayBeginsAtItsFirstLine()
    {
        Days days;
        days.view->findChild<QDateEdit *>()->setDate(Yesterday);
        QCOMPARE(days.top(), 0);
        QCOMPARE(days.firstShown(), QString("Y0<>"));
        QVERIFY(!days.view->isLastString());
        days.view->toLastLine();
        QVERIFY(!days.view->isLastString());
    }

    void resetReturnsToTheEndOfToday()
    {
        Days days;
        days.view->setDate(Yesterday);
        days.view->reset();
        QCOMPARE(days.view->date(), Today);
        QVERIFY(days.view->isLastString());
        days.view->toFirstLine();
        days.view->reset();
        QVERIFY(days.view->isLastString());
    }

    void todayIsNeverReadFromItsFile()
    {
        Days days;
        days.desk.write("prt/20260731.prt", book("FILE", 3));
        days.view->setDate(Yesterday);
        days.view->setDate(Today);
        QVERIFY(&days.view->shownLines() == &Log.lines.list());
        QCOMPARE(days.top(), days.bar()->maximum());
    }

    void fileWrittenWhileItIsShownIsReadOnTheNextChoice()
    {
        Days days;
        days.view->setDate(Yesterday);
        days.desk.write("prt/20260730.prt", book("Z", 5));
        QVERIFY(!days.picture().isNull());
        QCOMPARE(days.view->shownLines().size(), 200);
        days.view->setDate(Yesterday);
        QCOMPARE(days.view->shownLines().size(), 5);
    }

    void fileThatVanishesWhileItIsShownStaysOnScreen()
    {
        Days days;
        days.view->setDate(Yesterday);
        QVERIFY(QFile::remove(days.desk.path("prt/20260730.prt")));
        QVERIFY(!days.picture().isNull());
        QCOMPARE(days.view->shownLines().size(), 200);
        days.view->setDate(Yesterday);
        QVERIFY(days.view->shownLines().isEmpty());
    }

    void newsOfTodayLeaveAnotherDayAlone()
    {
        Days days;
        days.view->setDate(Yesterday);
        days.view->toLastLine();
        const int top = days.top();
        PaintCounter paints(days.view.get());
        paints.taken();
        Log.add("НОВОЕ\r\n", ProtocolReceived);
        days.view->slotFlush();
        QCOMPARE(paints.taken(), 0);
        QCOMPARE(days.top(), top);
        QCOMPARE(days.view->shownLines().size(), 200);
        days.view->reset();
        QCOMPARE(days.view->shownLines().size(), 302);
        QVERIFY(days.view->isLastString());
    }

    void damagedFileIsShownAsFarAsItCanBeRead_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("lines");
        row("empty", QByteArray(), 0);
        row("zeros", QByteArray("\1AB\0CD\n\1EF\n", 10), 2);
        row("no marks", QByteArray("ABC\nDEF"), 2);
        row("unknown marks", QByteArray("\6\7\10ABC\n"), 1);
        row("not UTF-8", QByteArray("\1\xff\xfe\xc0\xd0\n"), 1);
        row("control characters",
            QByteArray("\1A\x1b\x0c\x7f"
                       "B\r\n"),
            1);
        row("a line of a megabyte", QByteArray(1000000, 'A'), 1);
    }
    void damagedFileIsShownAsFarAsItCanBeRead()
    {
        QFETCH(QByteArray, content);
        QFETCH(int, lines);
        Days days;
        days.desk.write("prt/20260729.prt", content);
        days.view->setDate(Before);
        QCOMPARE(days.view->shownLines().size(), lines);
        QVERIFY(!days.picture().isNull());
        for (const char *name : {"protocolInfo", "protocolSplit", "protocolRegisters"}) {
            days.box(name)->toggle();
            QVERIFY(!days.picture().isNull());
        }
    }

    void directoryInPlaceOfAFileIsEmpty()
    {
        Days days;
        QVERIFY(QDir().mkpath(days.desk.path("prt/20260729.prt")));
        days.view->setDate(Before);
        QVERIFY(days.view->shownLines().isEmpty());
    }

    void midnightMovesTheRollToTheNewDay()
    {
        Days days;
        Time.setTo(QDateTime(Today.addDays(1), QTime(0, 0, 1)));
        Log.Load();
        days.view->setDate(Time.date);
        QCOMPARE(days.view->date(), Today.addDays(1));
        QVERIFY(days.view->shownLines().isEmpty());
        Log.add("УТРО\r\n", ProtocolReceived);
        QVERIFY(days.view->isLastString());
        days.view->move(-1);
        QCOMPARE(days.view->date(), Today);
    }

    void daysOfTheSplitViewArePartedToo()
    {
        Days days;
        days.desk.write("prt/20260729.prt", "\1RCV<>\n\2SND<>\n\3INFO");
        days.box("protocolSplit")->setChecked(true);
        days.view->setDate(Before);
        QCOMPARE(days.view->shownLines(), QStringList{mark(1) + "RCV<>"});
    }
};

QTEST_MAIN(TestProtocolDays)
#include "test_protocol_days.moc"
