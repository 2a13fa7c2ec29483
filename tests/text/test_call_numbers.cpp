#include "tests/support/row.h"
#include "text/call_numbers.h"

#include <QRandomGenerator>
#include <QtTest>

class TestCallNumbers : public QObject
{
    Q_OBJECT

private slots:
    void whatMayStay_data();
    void whatMayStay();
    void numbersAreCounted_data();
    void numbersAreCounted();
    void lastNumberNeedsSixCharacters_data();
    void lastNumberNeedsSixCharacters();
    void typedKeyByKeyIsAsPasted();
};

void TestCallNumbers::whatMayStay_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("text");
    const QString arabicOne = QChar(0x0661);
    row("nothing", "", "");
    row("one number", "123456", "123456");
    row("12,3 keeps no comma", "12,3", "123");
    row("comma behind five", "12345,6", "123456");
    row("comma behind six", "123456,7", "123456,7");
    row("comma at the start", ",123456", "123456");
    row("second comma in a row", "123456,,7", "123456,7");
    row("comma behind a short second number", "123456,12345,6", "123456,123456");
    row("signs count as characters", "+12345,6", "+12345,6");
    row("as it is written", "тел. +7 (12) 34-56; 123456", "+7123456123456");
    row("line ends", "123456,\r\n234567\r\n", "123456,234567");
    row("field marks", "1|2|3\t4", "1234");
    row("figures of another script", arabicOne.repeated(6) + ",1", arabicOne.repeated(6) + ",1");
    row("half a character", QString(QChar(0xD835)) + "1", "1");
    row("letters alone", "абв", "");
}

void TestCallNumbers::whatMayStay()
{
    QFETCH(QString, typed);
    const QString text = readCallNumbers(typed).text;
    QTEST(text, "text");
    QCOMPARE(readCallNumbers(text).text, text);
}

void TestCallNumbers::numbersAreCounted_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("count");
    row("nothing", "", 1);
    row("one", "123456", 1);
    row("a comma that does not stay", "12,3", 1);
    row("one, another begun", "123456,", 2);
    row("two", "123456,123456", 2);
    row("two, a third begun", "123456,123456,1", 3);
}

void TestCallNumbers::numbersAreCounted()
{
    QFETCH(QString, typed);
    QTEST(readCallNumbers(typed).count, "count");
}

void TestCallNumbers::lastNumberNeedsSixCharacters_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("complete");
    row("nothing", "", false);
    row("five", "12345", false);
    row("six", "123456", true);
    row("seven", "1234567", true);
    row("123456,1234 is not valid", "123456,1234", false);
    row("123456,123456 is valid", "123456,123456", true);
    row("a comma at the end", "123456,", false);
    row("letters do not count", "12345x", false);
    row("12,3456 is one number", "12,3456", true);
}

void TestCallNumbers::lastNumberNeedsSixCharacters()
{
    QFETCH(QString, typed);
    QTEST(readCallNumbers(typed).complete, "complete");
}

void TestCallNumbers::typedKeyByKeyIsAsPasted()
{
    QRandomGenerator random(20261122);
    const QString keys = "0123456789,,,+x ";
    for (int session = 0; session < 2000; ++session) {
        QString pasted, shown;
        for (int key = random.bounded(60); key > 0; --key) {
            const QChar typed = keys.at(random.bounded(keys.size()));
            pasted += typed;
            shown = readCallNumbers(shown + typed).text;
        }
        QCOMPARE(shown, readCallNumbers(pasted).text);
    }
}

QTEST_APPLESS_MAIN(TestCallNumbers)
#include "test_call_numbers.moc"
