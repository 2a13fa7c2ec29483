#include "tests/support/row.h"
#include "tests/ui/roll/roll.h"

#include <QPushButton>

namespace
{
/// A day of 200 lines with an unfinished one at its end, on the screen, and its repaints.
class Feed : public Roll
{
public:
    explicit Feed(bool manual)
    {
        addLines(200);
        Log.add(QStringLiteral("НАЧАЛО"), ProtocolReceived);
        State.manualMode = manual;
        show();
        view->reset();
        paints = std::make_unique<PaintCounter>(view.get());
        paints->taken();
        paints->taken();
    }
    /// \a count characters, one by one, each given its chance of a repaint; how many took it.
    int type(int count)
    {
        int repaints = 0;
        for (int i = 0; i < count; ++i) {
            Log.add(QStringLiteral("Ы"), ProtocolReceived);
            repaints += paints->taken();
        }
        return repaints;
    }
    [[nodiscard]] QRect lastRow() const { return view->lineRect(Log.lines.size() - 1); }

    std::unique_ptr<PaintCounter> paints;
};
} // namespace

class TestProtocolFeed : public QObject
{
    Q_OBJECT

private slots:
    void manualModeRepaintsTheLastRowOncePerChange()
    {
        Feed feed(true);
        for (int i = 0; i < 25; ++i) {
            Log.add("Ы", ProtocolReceived);
            QCOMPARE(feed.paints->taken(), 1);
            QCOMPARE(feed.paints->lastRegion.boundingRect(), feed.lastRow());
        }
    }

    void changesOfOneMomentAreOneRepaint()
    {
        Feed feed(true);
        for (int i = 0; i < 25; ++i)
            Log.add("Ы", ProtocolReceived);
        QCOMPARE(feed.paints->taken(), 1);
    }

    void automaticModeRepaintsEachEleventhChange()
    {
        Feed feed(false);
        QCOMPARE(feed.type(10), 0);
        QCOMPARE(feed.type(1), 1);
        QCOMPARE(feed.paints->lastRegion.boundingRect(), feed.lastRow());
        QCOMPARE(feed.type(10), 0);
        QCOMPARE(feed.type(1), 1);
        QCOMPARE(feed.type(110), 10);
    }

    void automaticModeRepaintsOnTheSecond()
    {
        Feed feed(false);
        QCOMPARE(feed.type(3), 0);
        feed.view->slotFlush();
        QCOMPARE(feed.paints->taken(), 1);
        QCOMPARE(feed.paints->lastRegion.boundingRect(), feed.lastRow());
        feed.view->slotFlush();
        QCOMPARE(feed.paints->taken(), 0); // nothing new
        QCOMPARE(feed.type(10), 0);        // the second has begun a new count
        QCOMPARE(feed.type(1), 1);
    }

    void manualModeWithoutInformationWaitsAsTheAutomaticDoes()
    {
        Feed feed(true);
        feed.view->setShowInfo(false);
        feed.paints->taken();
        QCOMPARE(feed.type(10), 0);
        QCOMPARE(feed.type(1), 1);
        QCOMPARE(feed.type(1), 0);
        feed.view->slotFlush();
        QCOMPARE(feed.paints->taken(), 1);
    }

    void finishedLinesMoveTheRollAndArePaintedByTheRule()
    {
        Feed feed(false);
        int repaints = 0;
        for (int i = 0; i < 22; ++i) {
            Log.add("Ы\r\n", ProtocolReceived);
            QVERIFY(feed.view->isLastString());
            repaints += feed.paints->taken();
        }
        QCOMPARE(repaints, 2);
        feed.view->slotFlush();
        QCOMPARE(feed.paints->taken(), 0);
        Log.add("Ы\r\n", ProtocolReceived);
        feed.view->slotFlush();
        QCOMPARE(feed.paints->taken(), 1);
        QCOMPARE(feed.paints->lastRegion.boundingRect(), feed.view->textArea());
    }

    void finishedLineInManualModeIsPaintedAtOnce()
    {
        Feed feed(true);
        Log.add("Ы\r\n", ProtocolReceived);
        QVERIFY(feed.view->isLastString());
        QCOMPARE(feed.paints->taken(), 1);
        QCOMPARE(feed.paints->lastRegion.boundingRect(), feed.view->textArea());
    }

    void rowPaintedAloneNeverFollowsAnUnpaintedScroll()
    {
        Feed feed(false);
        Log.add("Ы\r\n", ProtocolReceived); // scrolled, not painted
        QCOMPARE(feed.paints->taken(), 0);
        feed.view->setInputStopped(true);
        QCOMPARE(feed.paints->taken(), 1);
        QCOMPARE(feed.paints->lastRegion.boundingRect(), feed.view->textArea());
    }

    void scrolledBackIsNotPainted_data()
    {
        QTest::addColumn<bool>("manual");
        row("manual", true);
        row("automatic", false);
    }
    void scrolledBackIsNotPainted()
    {
        QFETCH(bool, manual);
        Feed feed(manual);
        feed.view->move(-5);
        feed.paints->taken();
        const int top = feed.top();
        QCOMPARE(feed.type(30), 0);
        for (int i = 0; i < 30; ++i)
            Log.add("Ы\r\n", ProtocolReceived);
        feed.view->slotFlush();
        QCOMPARE(feed.paints->taken(), 0);
        QCOMPARE(feed.top(), top);
    }

    void hiddenRollIsNotPaintedAndShowsAllLater()
    {
        Feed feed(true);
        feed.view->hide();
        feed.paints->taken();
        QCOMPARE(feed.type(30), 0);
        Log.add("КОНЕЦ\r\n", ProtocolReceived);
        feed.view->slotFlush();
        QCOMPARE(feed.paints->taken(), 0);
        feed.view->show();
        QTRY_VERIFY(feed.paints->count > 0);
        QVERIFY(feed.view->isLastString());
    }

    void filteredListGrowsWithTheDay()
    {
        Feed feed(false);
        feed.view->setShowInfo(false);
        const int before = feed.view->shownLines().size();
        Log.addServiceString("12:00:00 X", ProtocolInfo);
        QCOMPARE(feed.view->shownLines().size(), before);
        Log.add("ДАЛЬШЕ\r\nЕЩЕ", ProtocolReceived);
        feed.view->slotFlush();
        QCOMPARE(feed.view->shownLines().size(), before + 1);
        QCOMPARE(feed.view->shownLines().last(), mark(1) + "ЕЩЕ");
        QCOMPARE(feed.view->shownLines().at(before - 1), mark(1) + "НАЧАЛОДАЛЬШЕ<>");
        QVERIFY(feed.view->isLastString());
    }

    void newLinesOfOneHalfMoveTheSplitView()
    {
        Feed feed(true);
        feed.box("protocolSplit")->setChecked(true);
        feed.paints->taken();
        const int before = feed.bar()->maximum();
        QCOMPARE(feed.type(5), 5);
        QCOMPARE(feed.bar()->maximum(), before);
        Log.add(">A", ProtocolReceived);
        feed.paints->taken();
        QCOMPARE(feed.bar()->maximum(), before + 1);
        QVERIFY(feed.view->isLastString());
    }

    void lineBreakOfTheLimitAndAWaitingLineInOneTextAreShown()
    {
        Feed feed(true);
        Log.lineWidthLimit = 8;
        Log.add("123", ProtocolReceived);
        Log.addCacheServiceString("СОБЫТИЕ", ProtocolInfo, true);
        Log.add("ДАЛЬШЕ\r\n", ProtocolReceived);
        const int size = Log.lines.size();
        QCOMPARE(Log.lines.mid(size - 4), (QStringList{mark(1) + "НАЧАЛО123", mark(1) + "ДАЛЬШЕ<>",
                                                       mark(3) + "12:00:00 СОБЫТИЕ", QString()}));
        QVERIFY(feed.view->isLastString());
        QCOMPARE(feed.bar()->maximum(), size - feed.view->linesOnScreen());
        QCOMPARE(feed.paints->taken(), 1);
        QCOMPARE(feed.paints->lastRegion.boundingRect(), feed.view->textArea());
    }

    void flagsRepaintTheLastRowOnly()
    {
        Feed feed(true);
        const auto expectLastRow = [&feed] {
            QCOMPARE(feed.paints->taken(), 1);
            QCOMPARE(feed.paints->lastRegion.boundingRect(), feed.lastRow());
        };
        feed.view->setCursorEnable(true);
        expectLastRow();
        feed.view->setInputStopped(true);
        expectLastRow();
        feed.view->setInputStopped(true); // as each second tells
        QCOMPARE(feed.paints->taken(), 0);
        feed.view->clearFocus();
        expectLastRow();
        feed.view->setFocus();
        expectLastRow();
    }

    void flagsLeaveAScrolledBackRollAlone()
    {
        Feed feed(true);
        feed.view->toFirstLine();
        feed.paints->taken();
        feed.view->setCursorEnable(true);
        feed.view->setInputStopped(true);
        QCOMPARE(feed.paints->taken(), 0);
    }
};

QTEST_MAIN(TestProtocolFeed)
#include "test_protocol_feed.moc"
