#include "tests/support/row.h"
#include "tests/text/row_name.h"
#include "text/utils.h"

#include <QtTest>

/// Checksum, values of a reply, code page of a file of unknown origin.
class TestUtilsData : public QObject
{
    Q_OBJECT

private slots:
    void checksumOfNothingIsTheInitialValue();
    void checksumOfAZeroByteIsComputed();
    void checksumOfKnownBytes();

    void valueInQuotesIsRead();
    void suffixOfAnotherKeyGivesNothing();
    void values_data();
    void values();

    void codePage_data();
    void codePage();
    void capitalsAreMadeByByteInCp1251();
};

void TestUtilsData::checksumOfNothingIsTheInitialValue()
{
    QCOMPARE(CUtils::CRC8(QByteArray()), uchar(0xFF));
}

// 0xFF shifted eight times under 0x31: CF AF 6F DE 8D 2B 56 AC.
void TestUtilsData::checksumOfAZeroByteIsComputed()
{
    QCOMPARE(CUtils::CRC8(QByteArray(1, '\0')), uchar(0xAC));
}

void TestUtilsData::checksumOfKnownBytes()
{
    QCOMPARE(CUtils::CRC8(QByteArray("123456789")), uchar(0xF7)); // the check value of this polynomial
    QCOMPARE(CUtils::CRC8(QByteArray("\xBE\xEF")), uchar(0x92));
    QCOMPARE(CUtils::CRC8(QByteArray(1, '\xFF')), uchar(0x00));
}

void TestUtilsData::valueInQuotesIsRead()
{
    QByteArray json("{\"a\":\"x y\"}");
    QCOMPARE(CUtils::getValueFromJSON(json, "\"a\""), QStringLiteral("x y"));
}

void TestUtilsData::suffixOfAnotherKeyGivesNothing()
{
    QByteArray json("{ba:1,a:2}"); // only the first place is looked at
    QCOMPARE(CUtils::getValueFromJSON(json, "a"), QString());
    QCOMPARE(CUtils::getValueFromJSON(json, "ba"), QStringLiteral("1"));
}

void TestUtilsData::values_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("value");
    const auto row = [](const char *json, const char *value) {
        ::row(rowName(json).constData(), QByteArray(json), QString::fromUtf8(value));
    };
    row("{key:12}", "12");
    row("{key:12,b:3}", "12");
    row("{a:1,key:12}", "12");
    row("{a:1, key:12}", "12");
    row("{\tkey:12}", ""); // a tab is not allowed in front
    row(" key:0}", "0");
    row("key:12}", ""); // at the start
    row("{a:1}", "");
    row("", "");
    row("{key \t\r\n:\v\f 12 \n}", "12");
    row("{key 12}", "");
    row("{key", "");
    row("{key:", "");
    row("{key: ", "");
    row("{key:12", "");
    row("{key:12 ", "");
    row("{key:12;", "");
    row("{key:12]", "");
    row("{key:1 2}", "");
    row("{key:1.5}", "");
    row("{key:-1}", "");
    row("{key:true}", "");
    row("{key:[1]}", "");
    row("{key:{b:1}}", "");
    row("{key:'1'}", "");
    row("{key:\"\"}", "");
    row("{key:\"a,}{:b\"", "a,}{:b");
    row("{key: \"12\" }", "12");
    row("{key:\"open}", "");
    row("{key:\"", "");
    row("{key:\"a\\\"b\"}", "a\\"); // no escapes
    row("{key:\"Ёж\"}", "Ёж");
    row("{xkey:1,key:2}", "");
    row("{keys:1,key:2}", ""); // a longer key stands first
}

void TestUtilsData::values()
{
    QFETCH(QByteArray, json);
    QTEST(CUtils::getValueFromJSON(json, "key"), "value");
}

void TestUtilsData::codePage_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    row("empty", QByteArray(), QString());
    row("ASCII stays as it is", QByteArray("abc 123\r\n"), QStringLiteral("abc 123\r\n"));
    row("UTF-8", QByteArray("\xD0\x9F\xD1\x80\xD0\xB8"), QStringLiteral("При"));
    row("UTF-8 ends at a zero byte", QByteArray("\xD0\x90\x00\xD0\x91", 5), QStringLiteral("А"));
    row("ASCII ends at a zero byte", QByteArray("a\0b", 3), QStringLiteral("a"));
    // П Р И в е т a
    row("1251", QByteArray("\xCF\xC8\xE2\xE5\xF2 a"), QStringLiteral("ПИВЕТ A"));
    row("1251, a zero byte inside", QByteArray("\xCF\x00\xE2", 3),
        QStringLiteral("П") + QChar() + QChar(0x0412));
    row("866", QByteArray("\x8F\xE0\xA8\xA2\xA5\xE2 a"), QStringLiteral("ПРИВЕТ A"));
    row("866, all small", QByteArray("\xAF\xA0\xE7\xEF"), QStringLiteral("ПАЧЯ"));
    // Two bytes against two: UTF-8 wins a draw. 0xCF is no letter of UTF-8 here, and decodes to its sign.
    row("UTF-8 wins a draw with 1251", QByteArray("\xD0\x90\xCF"), QStringLiteral("А\uFFFD"));
    row("UTF-8 wins a draw with 866", QByteArray("\xD0\x90\x8F"), QStringLiteral("А\uFFFD"));
    row("UTF-8 loses by one to 1251", QByteArray("\xD0\x90\xCF\xCF"), QStringLiteral("РђПП"));
    // The byte behind 0xD0 is not looked at: it does not vote for 1251.
    row("the second byte is unseen", QByteArray("\xD0\xCF\xD1\xCF\xCF\xCF"),
        QStringLiteral("\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"));
    row("866 wins a draw with 1251", QByteArray("\x8F\xCF"), QStringLiteral("П\u2567"));
    row("lone first byte at the end", QByteArray("a\xD0"), QStringLiteral("a\uFFFD"));
    // Bytes that vote for nothing: a text of them alone is taken for UTF-8.
    row("no votes", QByteArray("\xE0 \xB0"), QStringLiteral("\uFFFD \uFFFD"));
}

void TestUtilsData::codePage()
{
    QFETCH(QByteArray, bytes);
    QTEST(CUtils::CorrectCodePageToUtf8(bytes), "text");
}

// By byte, the capital of 0xE0..0xFE stands 0x20 lower, but for 0xF7, which is no letter in that rule; so
// the letters of 0xF7 and 0xFF stay small.
void TestUtilsData::capitalsAreMadeByByteInCp1251()
{
    QByteArray bytes("\xCF");
    QString capitals = QStringLiteral("П");
    for (int byte = 0xE0; byte <= 0xFF; ++byte) {
        bytes += char(byte);
        capitals += QChar((byte == 0xF7 || byte == 0xFF ? 0x0430 : 0x0410) + byte - 0xE0);
    }
    QCOMPARE(CUtils::CorrectCodePageToUtf8(bytes), capitals);
}

QTEST_GUILESS_MAIN(TestUtilsData)
#include "test_utils_data.moc"
