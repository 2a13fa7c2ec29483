// Lists of numbers and the station's time stamps.

#include "procedures/utils_skk.h"
#include "tests/support/row.h"

#include <QtTest>

class TestUtilsSkk : public QObject
{
    Q_OBJECT

private slots:
    void checkCallNumber_data();
    void checkCallNumber();
    void resultIsEmptiedFirst();
    void timeStamp_data();
    void timeStamp();
    void everyPositionIsTried();
    void figuresAreThoseOfTheCode_data();
    void figuresAreThoseOfTheCode();
};

void TestUtilsSkk::checkCallNumber_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("result");
    row("nothing", "", 0, "");
    row("two numbers", "123456,789012", 2, "123456,789012");
    row("short item runs on", "12,345678", 1, "12345678");
    row("dashes count as passed", "12-34-56", 1, "123456");
    row("plus is kept inside a number", "1234+56", 1, "1234+56");
    row("five characters", "12345", 0, "12345");
    row("six characters", "123456", 1, "123456");
    row("comma behind five", "12345,6", 1, "123456");
    row("comma behind six", "123456,7", 1, "123456,7");
    row("dropped comma counts as passed", "12,34,5", 1, "12345");
    row("dropped comma makes the next one count", "1234,,567890", 1, "1234567890");
    row("dropped comma is the sixth", "12345,,67", 1, "12345,67");
    row("commas alone", ",,,,,,", 1, "");
    row("five commas", ",,,,,", 0, "");
    row("letters alone count as passed", "АБВГДЕ,123456", 2, ",123456");
    row("blanks between", " 12 34 , 567890", 2, "1234,567890");
    row("comma at the end", "123456,", 1, "123456,");
    row("three numbers", "123456,234567,345678", 3, "123456,234567,345678");
    row("figures of another script", QStringLiteral("\u0661\u0662\u0663456"), 1, "456");
}

void TestUtilsSkk::checkCallNumber()
{
    QFETCH(QString, input);
    QFETCH(int, count);
    QFETCH(QString, result);
    QString read;
    QCOMPARE(CUtilsSKK::checkCallNumber(input, read), count);
    QCOMPARE(read, result);
}

void TestUtilsSkk::resultIsEmptiedFirst()
{
    QString read = QStringLiteral("987654");
    QCOMPARE(CUtilsSKK::checkCallNumber("", read), 0);
    QCOMPARE(read, "");
    read = QStringLiteral("987654");
    QCOMPARE(CUtilsSKK::checkCallNumber("1", read), 0);
    QCOMPARE(read, "1");
}

void TestUtilsSkk::timeStamp_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("behind");
    const QString usual = QStringLiteral("<> #hh.mm");
    const QString dated = QStringLiteral("<>#dd hh mm");
    row("empty format", "", "\r\n #12.34", 0, -1);
    row("empty text", usual, "", 0, -1);
    row("usual", usual, "\r\n #12.34", 0, 9);
    row("usual, behind noise", usual, "12\r\r\n #12.34", 0, 12);
    row("usual, written out", usual, "<> #12.34", 0, 9);
    row("usual, half written out", usual, "\r> #12.34", 0, 9);
    row("usual, figure missing", usual, "\r\n #12.3", 0, -1);
    row("usual, letter for figure", usual, "\r\n #12.3О", 0, -1);
    row("usual, other sign", usual, "\r\n #12:34", 0, -1);
    row("usual, without mark", usual, "\r\n 12.34", 0, -1);
    row("usual, in front of the start", usual, "\r\n #12.34", 1, -1);
    row("usual, second behind the start", usual, "\r\n #12.34\r\n #56.78", 1, 18);
    row("a return hides what is written out in front", usual, "<> #12.34\r", 0, -1);
    row("behind the last return it is read", usual, "\r<> #12.34", 0, 10);
    row("dated", dated, "\r\n#31 12 34", 0, 11);
    row("dated, blank missing", dated, "\r\n#31 1234 ", 0, -1);
    row("line feed first", ">hh", "\r\n12", 0, 4);
    row("line feed first, written out", ">hh", "\r>12", 0, 4);
    row("line feed hides what is written out", ">hh", ">12\n", 0, -1);
    row("literal first", "#hh", "##12", 0, 4);
    row("literal first, at the start", "#hh", "#12", 0, 3);
    row("one literal", "К", "ТЕКСТ", 0, 3);
    row("figure first", "hh.mm", "К12.34", 0, 6);
    row("figure first, d", "dd", "К12", 0, 3);
    row("figure first, m", "mm", "К12", 0, 3);
    row("figure first, first figure does not fit", "hh.mm", "7 12.34", 0, -1);
    row("figure first, in front of the start", "hh", "12КК", 2, 2);
    row("figure first, no room", "hh.mm", "К12.3", 0, -1);
    row("figure first, none", "hh", "ККК", 0, -1);
    row("capitals are themselves", "HH", "12HH", 0, 4);
}

void TestUtilsSkk::timeStamp()
{
    QFETCH(QString, format);
    QFETCH(QString, text);
    QFETCH(int, from);
    QFETCH(int, behind);
    QCOMPARE(CUtilsSKK::behindTimeStamp(text, from, format), behind);
}

void TestUtilsSkk::everyPositionIsTried()
{
    const QString stamp = QStringLiteral("\r\n #12.34");
    for (int noise = 0; noise < 20; ++noise)
        QCOMPARE(CUtilsSKK::behindTimeStamp(QString(noise, '\r') + stamp, 0, "<> #hh.mm"), noise + 9);
}

void TestUtilsSkk::figuresAreThoseOfTheCode_data()
{
    QTest::addColumn<QChar>("character");
    QTest::addColumn<bool>("isFigure");
    row("below 0", QChar('/'), false);
    row("0", QChar('0'), true);
    row("9", QChar('9'), true);
    row("above 9", QChar(':'), false);
    row("another script", QChar(0x0661), false);
}

void TestUtilsSkk::figuresAreThoseOfTheCode()
{
    QFETCH(QChar, character);
    QFETCH(bool, isFigure);
    for (const QString format : {"#h", "#d", "#m"})
        QCOMPARE(CUtilsSKK::behindTimeStamp('#' + QString(character), 0, format), isFigure ? 2 : -1);
}

QTEST_APPLESS_MAIN(TestUtilsSkk)
#include "test_utils_skk.moc"
