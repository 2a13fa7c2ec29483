#include "tests/support/row.h"
#include "text/growing_text.h"
#include "text/scan_position.h"

#include <QtTest>

using Change = void (*)(CGrowingText &);
Q_DECLARE_METATYPE(Change)

/// A position that is remembered in a text holds as long as the text only grows.
class TestScanPosition : public QObject
{
    Q_OBJECT

private slots:
    void nothingHoldsBeforeTheFirstLook();
    void positionSurvivesAnAppend();
    void everyOtherChangeEndsIt_data();
    void everyOtherChangeEndsIt();
    void cutOfNothingIsNoCut();
    void textOfTheSameLengthInTheSamePlaceIsAnother();
    void positionReachedBehindACutHoldsAgain();
    void positionsOfOneTextKnowTheirOwnPlaces();
    void positionIsVoidInAnotherText();
    void forgottenPositionBeginsAtTheStart();
    void everyLookMayBeMadeToBeginAnew();
    void cutsLeaveTheirTexts();
    void readsLikeItsText();
};

void TestScanPosition::nothingHoldsBeforeTheFirstLook()
{
    const CGrowingText text;
    const CScanPosition position;
    QVERIFY(!position.holds(text));
    QCOMPARE(position.in(text), 0);
}

void TestScanPosition::positionSurvivesAnAppend()
{
    CGrowingText text;
    CScanPosition position;
    position.reach(text, 0); // of an empty one, too
    text.append("ПЕРВЫЙ");
    QVERIFY(position.holds(text));
    position.reach(text, 4);
    text.append("ВТОРОЙ");
    text.append(QString(100000, 'A')); // the text moves in memory
    text.append("");
    QVERIFY(position.holds(text));
    QCOMPARE(position.in(text), 4);
}

void TestScanPosition::everyOtherChangeEndsIt_data()
{
    QTest::addColumn<Change>("change");
    row("head removed", Change([](CGrowingText &text) { text.removeHead(1); }));
    row("more removed than there is", Change([](CGrowingText &text) { text.removeHead(100); }));
    row("tail kept", Change([](CGrowingText &text) { text.keepTail(3); }));
    row("cleared", Change([](CGrowingText &text) { text.clear(); }));
    row("another text", Change([](CGrowingText &text) { text = QStringLiteral("ДРУГОЙ"); }));
    row("an equal text", Change([](CGrowingText &text) { text = QStringLiteral("ПЕРВЫЙ"); }));
}

void TestScanPosition::everyOtherChangeEndsIt()
{
    QFETCH(Change, change);
    CGrowingText text;
    text.append("ПЕРВЫЙ");
    CScanPosition position;
    position.reach(text, 4);
    change(text);
    QVERIFY(!position.holds(text));
    QCOMPARE(position.in(text), 0);
    text.append("ЕЩЕ");
    QVERIFY(!position.holds(text));
}

void TestScanPosition::cutOfNothingIsNoCut()
{
    CGrowingText text;
    text.append("ПЕРВЫЙ");
    CScanPosition position;
    position.reach(text, 4);
    text.removeHead(0);
    text.removeHead(-1);
    text.keepTail(6);
    text.keepTail(7);
    QCOMPARE(position.in(text), 4);
    QCOMPARE(text, QStringLiteral("ПЕРВЫЙ"));
}

/// What was cut off comes back in the same number at the end: neither the size nor the place in memory tells.
void TestScanPosition::textOfTheSameLengthInTheSamePlaceIsAnother()
{
    CGrowingText text;
    text.append("ПЕРВЫЙ");
    CScanPosition position;
    position.reach(text, 6);
    text.removeHead(3);
    text.append("МАЙ");
    QCOMPARE(text, QStringLiteral("ВЫЙМАЙ"));
    QCOMPARE(position.in(text), 0);
}

void TestScanPosition::positionReachedBehindACutHoldsAgain()
{
    CGrowingText text;
    text.append("ПЕРВЫЙ");
    CScanPosition position;
    position.reach(text, 6);
    text.removeHead(3);
    position.reach(text, 2);
    text.append("МАЙ");
    QCOMPARE(position.in(text), 2);
}

void TestScanPosition::positionsOfOneTextKnowTheirOwnPlaces()
{
    CGrowingText text;
    text.append("ПЕРВЫЙ");
    CScanPosition first, second;
    first.reach(text, 2);
    second.reach(text, 5);
    QCOMPARE(first.in(text), 2);
    QCOMPARE(second.in(text), 5);
    text.removeHead(1);
    first.reach(text, 1);
    QCOMPARE(first.in(text), 1);
    QVERIFY(!second.holds(text));
}

void TestScanPosition::positionIsVoidInAnotherText()
{
    CGrowingText text, other;
    text.append("ПЕРВЫЙ");
    other.append("ПЕРВЫЙ");
    CScanPosition position;
    position.reach(text, 4);
    QVERIFY(!position.holds(other));
    QCOMPARE(position.in(text), 4);
}

void TestScanPosition::forgottenPositionBeginsAtTheStart()
{
    const CGrowingText text;
    CScanPosition position;
    position.reach(text, 4);
    position.forget();
    QVERIFY(!position.holds(text));
    QCOMPARE(position.in(text), 0);
}

void TestScanPosition::everyLookMayBeMadeToBeginAnew()
{
    CGrowingText text;
    text.append("ПЕРВЫЙ");
    CScanPosition position;
    position.reach(text, 4);
    CScanPosition::beginAnew = true;
    const bool held = position.holds(text);
    const int at = position.in(text);
    CScanPosition::beginAnew = false;
    QVERIFY(!held);
    QCOMPARE(at, 0);
    QCOMPARE(position.in(text), 4);
}

void TestScanPosition::cutsLeaveTheirTexts()
{
    CGrowingText text;
    text.append("ПЕРВЫЙ");
    text.removeHead(2);
    QCOMPARE(text, QStringLiteral("РВЫЙ"));
    text.append("МАЙ");
    text.keepTail(5);
    QCOMPARE(text, QStringLiteral("ЫЙМАЙ"));
    text.removeHead(5);
    QVERIFY(text.isEmpty());
    text = QStringLiteral("А");
    QCOMPARE(text, QStringLiteral("А"));
    text.clear();
    QCOMPARE(text.size(), 0);
}

void TestScanPosition::readsLikeItsText()
{
    CGrowingText text;
    text.append("АБВАБВ");
    const QString &plain = text;
    QCOMPARE(plain, QStringLiteral("АБВАБВ"));
    QCOMPARE(text.size(), 6);
    QVERIFY(!text.isEmpty());
    QCOMPARE(text.at(2), QChar(u'В'));
    QCOMPARE(text.left(2), QStringLiteral("АБ"));
    QCOMPARE(text.mid(4), QStringLiteral("БВ"));
    QCOMPARE(text.mid(1, 2), QStringLiteral("БВ"));
    QCOMPARE(text.midRef(1, 2), QStringLiteral("БВ"));
    QCOMPARE(text.indexOf(QChar(u'В'), 3), 5);
    QCOMPARE(text.indexOf(QStringLiteral("БВ"), 2), 4);
}

QTEST_GUILESS_MAIN(TestScanPosition)
#include "test_scan_position.moc"
