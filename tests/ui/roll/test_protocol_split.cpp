#include "tests/support/row.h"
#include "tests/ui/roll/roll.h"

#include <QApplication>
#include <QWheelEvent>

namespace
{
enum Half { Received = 1, Sent = 2 };

/// The split view on the screen over "R0", "R1", ... above and "S0", "S1", ... below.
class Split : public Roll
{
public:
    Split(int received, int sent)
    {
        add(Received, received);
        add(Sent, sent);
        show();
        box("protocolSplit")->setChecked(true);
        rows = view->linesOnScreen() / 2;
        QCoreApplication::processEvents();
    }
    /// The line brings \a count finished lines of one direction.
    void add(Half half, int count)
    {
        int &number = half == Received ? m_received : m_sent;
        for (int i = 0; i < count; ++i)
            Log.add((half == Received ? "R" : "S") + QString::number(number++) + "\r\n", ProtocolTypes(half));
    }
    void wheel(int steps) const
    {
        const QPointF at(50, 200);
        QWheelEvent event(at, view->mapToGlobal(at.toPoint()), {}, {0, steps * 120}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(view.get(), &event);
    }
    /// Presses the mouse on a row of a half and tells what is selected then; the selection goes again.
    [[nodiscard]] QString clicked(Half half, int rowIndex) const
    {
        QPoint at(60, row(rowIndex).center().y());
        if (half == Sent)
            at.ry() += view->textArea().height() / 2 + 1;
        QTest::mousePress(view.get(), Qt::LeftButton, {}, at);
        const QString text = view->getSelect(0);
        QMouseEvent away(QEvent::MouseMove, at, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(view.get(), &away);
        QTest::mouseRelease(view.get(), Qt::LeftButton, {}, at + QPoint(1, 0));
        QTest::mousePress(view.get(), Qt::LeftButton, {}, at + QPoint(20, 0));
        QTest::mouseRelease(view.get(), Qt::LeftButton, {}, at + QPoint(20, 0));
        return text;
    }
    /// The halves' first lines, as a click finds them.
    [[nodiscard]] QString tops() const { return clicked(Received, 0) + clicked(Sent, 0); }
    [[nodiscard]] QString lasts() const { return clicked(Received, rows - 1) + clicked(Sent, rows - 1); }

    int rows = 0; ///< of a half

private:
    int m_received = 0, m_sent = 0;
};

QString line(const char *letter, int number)
{
    return QLatin1String(letter) + QString::number(number) + QStringLiteral("<>");
}
} // namespace

/// The halves of the split view while lines come and the operator reads further up.
class TestProtocolSplit : public QObject
{
    Q_OBJECT

private slots:
    void bothHalvesEndWithTheirLastLines()
    {
        const Split split(100, 60);
        QCOMPARE(split.lasts(), line("R", 99) + line("S", 59));
    }

    void scrolledBackTheHalvesHaveGoneTheSameWay()
    {
        const Split split(100, 60);
        split.wheel(4);
        QCOMPARE(split.lasts(), line("R", 99 - 12) + line("S", 59 - 12));
    }

    void halvesKeepTheirPlaceWhileLinesCome_data()
    {
        QTest::addColumn<int>("received");
        QTest::addColumn<int>("sent");
        QTest::addColumn<int>("comeReceived");
        QTest::addColumn<int>("comeSent");
        ::row("the longer half grows", 100, 60, 7, 0);
        ::row("the shorter half grows", 100, 60, 0, 7);
        ::row("the longer half is below, it grows", 60, 100, 0, 7);
        ::row("the longer half is below, the other grows", 60, 100, 7, 0);
        ::row("both grow", 100, 60, 5, 9);
        ::row("the shorter half overtakes", 100, 60, 0, 80);
        ::row("a half shows all of itself", 100, 2, 9, 1);
        ::row("equal halves", 80, 80, 3, 0);
    }
    void halvesKeepTheirPlaceWhileLinesCome()
    {
        QFETCH(int, received);
        QFETCH(int, sent);
        QFETCH(int, comeReceived);
        QFETCH(int, comeSent);
        Split split(received, sent);
        split.wheel(5);
        const QString tops = split.tops();
        const QImage picture = split.picture();
        split.add(Received, comeReceived);
        split.add(Sent, comeSent);
        split.view->slotFlush();
        QCoreApplication::processEvents();
        QCOMPARE(split.tops(), tops);
        QImage after = split.picture();
        if (sent > split.rows) // a half with room left shows its new lines in it
            QCOMPARE(after.copy(split.view->textArea()), picture.copy(split.view->textArea()));
        split.wheel(1);
        split.wheel(-1);
        QCOMPARE(split.tops(), tops);
    }

    void selectionStaysOnItsLine()
    {
        Split split(100, 60);
        split.wheel(5);
        const QPoint at(60, split.row(2).center().y() + split.view->textArea().height() / 2 + 1);
        QTest::mousePress(split.view.get(), Qt::LeftButton, {}, at);
        const QString chosen = split.view->getSelect(0);
        QCOMPARE(chosen, line("S", 60 - split.rows - 15 + 2));
        split.add(Received, 4);
        QTest::mouseRelease(split.view.get(), Qt::LeftButton, {}, at + QPoint(5, 0));
        QCOMPARE(split.view->getSelect(0), chosen);
    }

    void everyLineThatCameIsPassedOnTheWayToTheEnd()
    {
        Split split(100, 60);
        split.wheel(5);
        split.add(Received, 3);
        split.add(Sent, 40);
        QString last = split.clicked(Sent, split.rows - 1);
        for (int number = 60 - 15; number < 100; ++number) {
            split.view->move(1);
            QCOMPARE(split.clicked(Sent, split.rows - 1), line("S", number));
        }
        QCOMPARE(split.lasts(), line("R", 102) + line("S", 99));
        QVERIFY(split.view->isLastString());
        split.add(Received, 1);
        split.add(Sent, 1);
        QCOMPARE(split.lasts(), line("R", 103) + line("S", 100));
    }

    void startOfTheDayIsTheStartOfBoth()
    {
        Split split(100, 60);
        split.wheel(5);
        split.add(Sent, 20);
        split.view->toFirstLine();
        QCOMPARE(split.tops(), line("R", 0) + line("S", 0));
        split.add(Received, 20);
        QCOMPARE(split.tops(), line("R", 0) + line("S", 0));
    }

    void windowThatShrinksKeepsThePlaces()
    {
        Split split(100, 60);
        split.wheel(5);
        split.add(Received, 6);
        const QString tops = split.tops();
        split.view->resize(900, 300);
        QCoreApplication::processEvents();
        QCOMPARE(split.tops(), tops);
    }

    void hitOfTheSearchStandsAtTheTopOfItsHalf()
    {
        Split split(100, 60);
        split.wheel(5);
        split.add(Received, 25);
        split.view->slotProtocolSearchChanged(QStringLiteral("R30"));
        QCOMPARE(split.clicked(Received, 0), line("R", 30));
        split.add(Sent, 200);
        split.view->slotProtocolSearchChanged(QStringLiteral("R99"));
        QCOMPARE(split.clicked(Received, 0), line("R", 99));
    }

    void anotherJournalBeginsWithFreshPlaces()
    {
        Split split(20, 200);
        split.wheel(5);
        Log.lines = QStringList{mark(1) + "A<>", mark(2) + "B<>", QString()};
        emit Log.Changed();
        split.view->slotProtocolNewLine();
        QCOMPARE(split.bar()->maximum(), 0);
        QCOMPARE(split.tops(), QString("A<>B<>"));
    }
};

QTEST_MAIN(TestProtocolSplit)
#include "test_protocol_split.moc"
