#include "tests/support/row.h"
#include "tests/ui/roll/roll.h"

namespace
{
/// A day with all kinds of lines.
class Day : public Roll
{
public:
    Day()
    {
        Log.lines = QStringList{mark(3) + "12:00:00 A", mark(1) + "ABCDEF<>",   mark(3) + "12:00:01 B",
                                mark(2) + "GHI<>",      mark(4) + "12:00:02 C", QString()};
        show();
    }
};
} // namespace

class TestProtocolList : public QObject
{
    Q_OBJECT

private slots:
    void listStandsAsItIsWithInformation()
    {
        Day day;
        QVERIFY(&day.view->shownLines() == &Log.lines.list());
    }

    void informationOffLeavesItOut()
    {
        Day day;
        day.view->setShowInfo(false);
        const QStringList expected{mark(1) + "ABCDEF<>", mark(2) + "GHI<>", mark(4) + "12:00:02 C"};
        QCOMPARE(day.view->shownLines(), expected);
        day.view->setShowInfo(true);
        QVERIFY(&day.view->shownLines() == &Log.lines.list());
    }

    void splitShowsTheReceivedLines()
    {
        Day day;
        day.box("protocolSplit")->setChecked(true);
        QCOMPARE(day.view->shownLines(), QStringList{mark(1) + "ABCDEF<>"});
        day.box("protocolSplit")->setChecked(false);
        QVERIFY(&day.view->shownLines() == &Log.lines.list());
    }

    void widthComesFromTheOptionIfItIsOn_data()
    {
        QTest::addColumn<bool>("limit");
        QTest::addColumn<QStringList>("lines");
        row("off", false, QStringList{mark(1) + "ABCDEF<>"});
        row("on", true, QStringList{mark(1) + "ABCD", mark(1) + "EF<>"});
    }
    void widthComesFromTheOptionIfItIsOn()
    {
        QFETCH(bool, limit);
        QFETCH(QStringList, lines);
        Day day;
        Options.limitProtocolStringWidth = limit;
        Options.protocolStringWidth = 4;
        day.box("protocolSplit")->setChecked(true);
        QCOMPARE(day.view->shownLines(), lines);
    }

    void changedWidthIsTakenFromTheOptions()
    {
        Day day;
        Options.limitProtocolStringWidth = true;
        Options.protocolStringWidth = 4;
        day.view->setShowInfo(false);
        QCOMPARE(day.view->shownLines().first(), mark(1) + "ABCD");
        Options.protocolStringWidth = 3;
        day.view->slotProtocolOptionsChanged();
        QCOMPARE(day.view->shownLines().first(), mark(1) + "ABC");
        Options.limitProtocolStringWidth = false;
        day.view->slotProtocolOptionsChanged();
        QCOMPARE(day.view->shownLines().first(), mark(1) + "ABCDEF<>");
    }

    void registersAndCommandsDoNotTouchTheList()
    {
        Day day;
        day.view->setShowInfo(false);
        day.view->selectAndShowLine(1);
        day.view->setShowRegisters(true);
        QCOMPARE(day.view->firstSelectedLine(), 1);
        QCOMPARE(day.view->shownLines().size(), 3);
    }

    void anotherListDropsTheSelection()
    {
        Day day;
        day.view->selectAndShowLine(1);
        day.view->setShowInfo(false);
        QVERIFY(!day.view->hasSelection());
    }

    void newsWaitForTheRebuild()
    {
        Day day;
        State.manualMode = false;
        day.view->setShowInfo(false);
        Log.add("J", ProtocolReceived);
        QCOMPARE(day.view->shownLines().size(), 3);
        day.view->slotFlush();
        QCOMPARE(day.view->shownLines().last(), mark(4) + "12:00:02 C" + mark(1) + "J");
    }

    void reloadedJournalIsTakenFromItsStart()
    {
        Day day;
        day.view->setShowInfo(false);
        day.desk.write("prt/20260731.prt", "\1NEW<>\n\3X\n\2SENT<>\n");
        Log.Load();
        day.view->setDate(Time.date);
        const QStringList expected{mark(1) + "NEW<>", mark(2) + "SENT<>"};
        QCOMPARE(day.view->shownLines(), expected);
    }

    void journalThatShrinksBehindTheViewIsHarmless()
    {
        Day day;
        Roll::addLines(500);
        Log.lines.clear();
        QVERIFY(!day.picture().isNull());
        day.view->setShowInfo(false);
        Roll::addLines(500);
        Log.lines.clear();
        Log.lines << mark(1) + "X";
        emit Log.Changed();
        day.view->slotFlush();
        QVERIFY(!day.picture().isNull());
        QCOMPARE(day.view->shownLines(), QStringList{mark(1) + "X"});
    }

    void switchingKeepsTheEnd()
    {
        Day day;
        Roll::addLines(500);
        for (const char *name : {"protocolInfo", "protocolSplit", "protocolInfo", "protocolSplit"}) {
            day.box(name)->toggle();
            QVERIFY(day.view->isLastString());
        }
    }
};

QTEST_MAIN(TestProtocolList)
#include "test_protocol_list.moc"
