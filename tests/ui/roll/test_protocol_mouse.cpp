#include "tests/support/row.h"
#include "tests/ui/roll/roll.h"

#include <QApplication>
#include <QClipboard>
#include <QWheelEvent>

namespace
{
class Mouse : public Roll
{
public:
    Mouse()
    {
        desk.write("prt/20260730.prt", "\1Y<>");
        addLines(100);
        show();
        view->toFirstLine();
    }
    [[nodiscard]] QPoint point(int rowIndex, int x = 50) const { return {x, row(rowIndex).center().y()}; }
    void press(const QPoint &at) const { QTest::mousePress(view.get(), Qt::LeftButton, {}, at); }
    void release(const QPoint &at) const { QTest::mouseRelease(view.get(), Qt::LeftButton, {}, at); }
    void drag(const QPoint &to) const
    {
        QMouseEvent event(QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(view.get(), &event);
    }
    void wheel(int delta) const
    {
        const QPointF at(50, 100);
        QWheelEvent event(at, view->mapToGlobal(at.toPoint()), {}, {0, delta}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(view.get(), &event);
    }
    [[nodiscard]] QPair<int, int> selection() const
    {
        return {view->firstSelectedLine(), view->lastSelectedLine()};
    }
};

using Lines = QPair<int, int>;
const Lines none(-1, -1);
} // namespace

class TestProtocolMouse : public QObject
{
    Q_OBJECT

private slots:
    void pressSelectsTheLineUnderIt()
    {
        const Mouse mouse;
        mouse.press(mouse.point(3));
        QCOMPARE(mouse.selection(), Lines(3, 3));
        mouse.view->move(10);
        mouse.press(mouse.point(3));
        QCOMPARE(mouse.selection(), Lines(13, 13));
    }

    void releaseWithoutMovementClears()
    {
        const Mouse mouse;
        mouse.press(mouse.point(3));
        mouse.release(mouse.point(3));
        QCOMPARE(mouse.selection(), none);
    }

    void secondPressAtOneColumnKeepsTheLine()
    {
        const Mouse mouse;
        mouse.press(mouse.point(3));
        mouse.release(mouse.point(3));
        mouse.press(mouse.point(3));
        mouse.release(mouse.point(3));
        QCOMPARE(mouse.selection(), Lines(3, 3));
        mouse.press(mouse.point(3));
        mouse.release(mouse.point(3));
        QCOMPARE(mouse.selection(), none);
    }

    void movementExtendsDownAndUp()
    {
        const Mouse mouse;
        mouse.press(mouse.point(5));
        mouse.drag(mouse.point(8, 60));
        QCOMPARE(mouse.selection(), Lines(5, 8));
        mouse.drag(mouse.point(2, 60));
        QCOMPARE(mouse.selection(), Lines(2, 5));
        mouse.release(mouse.point(2, 60));
        QCOMPARE(mouse.selection(), Lines(2, 5));
        mouse.drag(mouse.point(9));
        QCOMPARE(mouse.selection(), Lines(2, 5)); // the button is up
    }

    void movementInsideALineKeepsIt()
    {
        const Mouse mouse;
        mouse.press(mouse.point(5));
        mouse.drag(mouse.point(5, 80));
        mouse.release(mouse.point(5, 80));
        QCOMPARE(mouse.selection(), Lines(5, 5));
    }

    void draggingBeyondTheEdgeScrolls()
    {
        const Mouse mouse;
        mouse.press(mouse.point(5));
        const QPoint below(50, mouse.view->textArea().bottom() + 20);
        mouse.drag(below);
        mouse.drag(below);
        QCOMPARE(mouse.top(), 2);
        QCOMPARE(mouse.selection(), Lines(5, 2 + mouse.view->linesOnScreen() - 1));
        mouse.drag({50, mouse.view->textArea().top() - 5});
        QCOMPARE(mouse.selection(), Lines(1, 5));
    }

    void pressBelowTheLastLineSelectsNothing()
    {
        Mouse mouse;
        Log.lines = QStringList{mark(1) + "A<>"};
        emit Log.NewLine();
        mouse.press(mouse.point(0));
        QCOMPARE(mouse.selection(), Lines(0, 0));
        mouse.press(mouse.point(4));
        QCOMPARE(mouse.selection(), none);
    }

    void otherButtonsAndThePanelSelectNothing()
    {
        const Mouse mouse;
        QTest::mouseClick(mouse.view.get(), Qt::RightButton, {}, mouse.point(3));
        QTest::mouseClick(mouse.view.get(), Qt::MiddleButton, {}, mouse.point(3));
        mouse.press({50, 2});
        QCOMPARE(mouse.selection(), none);
    }

    void rightPressKeepsTheSelection()
    {
        const Mouse mouse;
        mouse.view->selectAndShowLine(3);
        QTest::mouseClick(mouse.view.get(), Qt::RightButton, {}, mouse.point(7));
        QCOMPARE(mouse.selection(), Lines(3, 3));
    }

    void halvesOfTheSplitViewAreSelectedForThemselves()
    {
        Mouse mouse;
        Log.lines = QStringList{mark(1) + "R0<>", mark(2) + "S0<>", mark(1) + "R1<>", mark(2) + "S1<>"};
        mouse.view->setDate(Time.date);
        mouse.box("protocolSplit")->setChecked(true);
        mouse.press(mouse.point(1));
        QCOMPARE(mouse.view->getSelect(0), QString("R1<>"));
        const int half = mouse.view->textArea().height() / 2 + 1;
        mouse.press(mouse.point(1) + QPoint(0, half));
        QCOMPARE(mouse.view->getSelect(0), QString("S1<>"));
        mouse.drag(mouse.point(0, 80) + QPoint(0, half));
        QCOMPARE(mouse.view->getSelect(0), QString("S0<>S1<>"));
    }

    void wheelMovesByThreeLines()
    {
        const Mouse mouse;
        mouse.wheel(-120);
        QCOMPARE(mouse.top(), 3);
        mouse.wheel(-240);
        QCOMPARE(mouse.top(), 9);
        mouse.wheel(120);
        QCOMPARE(mouse.top(), 6);
        mouse.wheel(-60);
        QCOMPARE(mouse.top(), 6);
        mouse.wheel(-60);
        QCOMPARE(mouse.top(), 9);
    }

    void wheelPassesTheDaysBorder()
    {
        const Mouse mouse;
        mouse.wheel(120);
        QCOMPARE(mouse.view->date(), QDate(2026, 7, 30));
        mouse.wheel(-120);
        QCOMPARE(mouse.view->date(), QDate(2026, 7, 31));
    }

    // What is copied

    void selectionHasItsMarks()
    {
        Mouse mouse;
        Log.lines = QStringList{mark(1) + "A<>", mark(2) + "B<>", mark(3) + "C"};
        QCOMPARE(mouse.view->getSelect(), QString());
        mouse.press(mouse.point(0));
        mouse.drag(mouse.point(1, 60));
        QCOMPARE(mouse.view->getSelect(), mark(1) + "A<>\n" + mark(2) + "B<>");
    }

    void selectionAsCleanText_data()
    {
        QTest::addColumn<QString>("both");
        QTest::addColumn<QString>("received");
        QTest::addColumn<QString>("sent");
        QTest::addColumn<QStringList>("lines");
        ::row("directions", "AB<>C<>", "A<>", "BC<>",
              QStringList{mark(1) + "A" + mark(2) + "B" + mark(1) + "<>", mark(2) + "C<>"});
        ::row("a line that an event has cut", "AB\n12:00:00 X\nCD<>", "ABCD<>", "",
              QStringList{mark(1) + "AB", mark(3) + "12:00:00 X", mark(1) + "CD<>"});
        ::row("events", "X\nY", "", "", QStringList{mark(3) + "X", mark(4) + "Y"});
        ::row("registers and commands are left out", "AБ1<>", "AБ1<>", "",
              QStringList{mark(1) + "&A|Б#1@H@N12@<>\""});
        ::row("a line that the width has cut", "ABC<>", "ABC<>", "",
              QStringList{mark(1) + "AB", mark(1) + "C<>"});
    }
    void selectionAsCleanText()
    {
        QFETCH(QString, both);
        QFETCH(QString, received);
        QFETCH(QString, sent);
        QFETCH(QStringList, lines);
        Mouse mouse;
        Log.lines = lines;
        mouse.press(mouse.point(0));
        mouse.drag(mouse.point(lines.size() - 1, 80));
        QCOMPARE(mouse.view->getSelect(0), both);
        QCOMPARE(mouse.view->getSelect(1), received);
        QCOMPARE(mouse.view->getSelect(2), sent);
    }

    void registersThatAreShownAreCopied()
    {
        Mouse mouse;
        Log.lines = QStringList{mark(1) + "&A|Б#1<>"};
        mouse.view->setShowRegisters(true);
        mouse.press(mouse.point(0));
        QCOMPARE(mouse.view->getSelect(0), QString("&A|Б#1<>"));
    }

    void clipboardTakesTheSelection()
    {
        Mouse mouse;
        Log.lines = QStringList{mark(1) + "A" + mark(2) + "B<>"};
        mouse.press(mouse.point(0));
        mouse.view->copyToClipboard(0);
        QCOMPARE(QApplication::clipboard()->text(), QString("AB<>"));
        mouse.view->copyToClipboard(1);
        QCOMPARE(QApplication::clipboard()->text(), QString("A"));
        mouse.view->copyToClipboard(2);
        QCOMPARE(QApplication::clipboard()->text(), QString("B<>"));
    }

    void clipboardStaysWithoutASelection()
    {
        const Mouse mouse;
        QApplication::clipboard()->setText("СТАРОЕ");
        mouse.view->copyToClipboard(0);
        QCOMPARE(QApplication::clipboard()->text(), QString("СТАРОЕ"));
    }
};

QTEST_MAIN(TestProtocolMouse)
#include "test_protocol_mouse.moc"
