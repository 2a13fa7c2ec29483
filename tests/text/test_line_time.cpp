#include "tests/support/row.h"
#include "text/line_time.h"

/// How long a line is busy with a text.
class TestLineTime : public QObject
{
    Q_OBJECT

private slots:
    void characterTakesSevenAndAHalfUnits_data();
    void characterTakesSevenAndAHalfUnits();
    void durationIsSaidInHoursAndMinutes_data();
    void durationIsSaidInHoursAndMinutes();
};

void TestLineTime::characterTakesSevenAndAHalfUnits_data()
{
    QTest::addColumn<qint64>("characters");
    QTest::addColumn<int>("baud");
    QTest::addColumn<qint64>("seconds");
    row("nothing", qint64(0), 50, qint64(0));
    row("one", qint64(1), 50, qint64(1));
    row("twenty", qint64(20), 50, qint64(3));
    row("twenty-one", qint64(21), 50, qint64(4));
    row("twice the speed", qint64(40), 100, qint64(3));
    row("four times the speed", qint64(80), 200, qint64(3));
    row("more than a day", qint64(1000000000), 50, qint64(150000000));
    row("a damaged speed", qint64(20), 0, qint64(3));
    row("a negative speed", qint64(20), -50, qint64(3));
}

void TestLineTime::characterTakesSevenAndAHalfUnits()
{
    QFETCH(qint64, characters);
    QFETCH(int, baud);
    QTEST(lineSeconds(characters, baud), "seconds");
}

void TestLineTime::durationIsSaidInHoursAndMinutes_data()
{
    QTest::addColumn<qint64>("seconds");
    QTest::addColumn<QString>("words");
    row("none", qint64(0), "0 мин");
    row("a second", qint64(1), "1 мин");
    row("a minute", qint64(60), "1 мин");
    row("more", qint64(61), "2 мин");
    row("nearly an hour", qint64(3540), "59 мин");
    row("an hour", qint64(3541), "1 ч 00 мин");
    row("days", qint64(360300), "100 ч 05 мин");
}

void TestLineTime::durationIsSaidInHoursAndMinutes()
{
    QFETCH(qint64, seconds);
    QTEST(durationInWords(seconds), "words");
}

QTEST_GUILESS_MAIN(TestLineTime)
#include "test_line_time.moc"
