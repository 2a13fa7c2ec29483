// Lists of numbers and the station's time stamps.

#include "procedures/utils_skk.h"

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
    QTest::newRow("nothing") << "" << 0 << "";
    QTest::newRow("two numbers") << "123456,789012" << 2 << "123456,789012";
    QTest::newRow("short item runs on") << "12,345678" << 1 << "12345678";
    QTest::newRow("dashes count as passed") << "12-34-56" << 1 << "123456";
    QTest::newRow("plus is kept inside a number") << "1234+56" << 1 << "1234+56";
    QTest::newRow("five characters") << "12345" << 0 << "12345";
    QTest::newRow("six characters") << "123456" << 1 << "123456";
    QTest::newRow("comma behind five") << "12345,6" << 1 << "123456";
    QTest::newRow("comma behind six") << "123456,7" << 1 << "123456,7";
    QTest::newRow("dropped comma counts as passed") << "12,34,5" << 1 << "12345";
    QTest::newRow("dropped comma makes the next one count") << "1234,,567890" << 1 << "1234567890";
    QTest::newRow("dropped comma is the sixth") << "12345,,67" << 1 << "12345,67";
    QTest::newRow("commas alone") << ",,,,,," << 1 << "";
    QTest::newRow("five commas") << ",,,,," << 0 << "";
    QTest::newRow("letters alone count as passed") << "АБВГДЕ,123456" << 2 << ",123456";
    QTest::newRow("blanks between") << " 12 34 , 567890" << 2 << "1234,567890";
    QTest::newRow("comma at the end") << "123456," << 1 << "123456,";
    QTest::newRow("three numbers") << "123456,234567,345678" << 3 << "123456,234567,345678";
    QTest::newRow("figures of another script") << QStringLiteral("\u0661\u0662\u0663456") << 1 << "456";
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
    QTest::newRow("empty format") << ""
                                  << "\r\n #12.34" << 0 << -1;
    QTest::newRow("empty text") << usual << "" << 0 << -1;
    QTest::newRow("usual") << usual << "\r\n #12.34" << 0 << 9;
    QTest::newRow("usual, behind noise") << usual << "12\r\r\n #12.34" << 0 << 12;
    QTest::newRow("usual, written out") << usual << "<> #12.34" << 0 << 9;
    QTest::newRow("usual, half written out") << usual << "\r> #12.34" << 0 << 9;
    QTest::newRow("usual, figure missing") << usual << "\r\n #12.3" << 0 << -1;
    QTest::newRow("usual, letter for figure") << usual << "\r\n #12.3О" << 0 << -1;
    QTest::newRow("usual, other sign") << usual << "\r\n #12:34" << 0 << -1;
    QTest::newRow("usual, without mark") << usual << "\r\n 12.34" << 0 << -1;
    QTest::newRow("usual, in front of the start") << usual << "\r\n #12.34" << 1 << -1;
    QTest::newRow("usual, second behind the start") << usual << "\r\n #12.34\r\n #56.78" << 1 << 18;
    QTest::newRow("a return hides what is written out in front") << usual << "<> #12.34\r" << 0 << -1;
    QTest::newRow("behind the last return it is read") << usual << "\r<> #12.34" << 0 << 10;
    QTest::newRow("dated") << dated << "\r\n#31 12 34" << 0 << 11;
    QTest::newRow("dated, blank missing") << dated << "\r\n#31 1234 " << 0 << -1;
    QTest::newRow("line feed first") << ">hh"
                                     << "\r\n12" << 0 << 4;
    QTest::newRow("line feed first, written out") << ">hh"
                                                  << "\r>12" << 0 << 4;
    QTest::newRow("line feed hides what is written out") << ">hh"
                                                         << ">12\n"
                                                         << 0 << -1;
    QTest::newRow("literal first") << "#hh"
                                   << "##12" << 0 << 4;
    QTest::newRow("literal first, at the start") << "#hh"
                                                 << "#12" << 0 << 3;
    QTest::newRow("one literal") << "К"
                                 << "ТЕКСТ" << 0 << 3;
    QTest::newRow("figure first") << "hh.mm"
                                  << "К12.34" << 0 << 6;
    QTest::newRow("figure first, d") << "dd"
                                     << "К12" << 0 << 3;
    QTest::newRow("figure first, m") << "mm"
                                     << "К12" << 0 << 3;
    QTest::newRow("figure first, first figure does not fit") << "hh.mm"
                                                             << "7 12.34" << 0 << -1;
    QTest::newRow("figure first, in front of the start") << "hh"
                                                         << "12КК" << 2 << 2;
    QTest::newRow("figure first, no room") << "hh.mm"
                                           << "К12.3" << 0 << -1;
    QTest::newRow("figure first, none") << "hh"
                                        << "ККК" << 0 << -1;
    QTest::newRow("capitals are themselves") << "HH"
                                             << "12HH" << 0 << 4;
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
    QTest::newRow("below 0") << QChar('/') << false;
    QTest::newRow("0") << QChar('0') << true;
    QTest::newRow("9") << QChar('9') << true;
    QTest::newRow("above 9") << QChar(':') << false;
    QTest::newRow("another script") << QChar(0x0661) << false;
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
