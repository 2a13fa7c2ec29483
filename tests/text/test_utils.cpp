#include "tests/support/row.h"
#include "text/utils.h"

#include <QtTest>

class TestUtils : public QObject
{
    Q_OBJECT

private slots:
    void doubleQuoteIsARegister();
    void registersAreSixCharacters();
    void registersAreRemoved();
    void nonTextCharactersAreRemoved();
    void lineEndsCountInTheLength();
    void lengthLeavesOutMarksAndTypes();

    void fourBecomesCheOrStays_data();
    void fourBecomesCheOrStays();
    void serviceIsLeftOut_data();
    void serviceIsLeftOut();

    void startMarkNeedsItsSpace();
    void startMarkIsTheEarlierOfTwo_data();
    void startMarkIsTheEarlierOfTwo();
    void endMarkIsTheEarlierOfTwo_data();
    void endMarkIsTheEarlierOfTwo();

    void numbersHaveTheirLastDigits_data();
    void numbersHaveTheirLastDigits();
    void categoryLetterIsForLatinC();
    void categoryIsOrdinaryOnlyWithV();
    void onlyDigitsAreLeft();
    void testTextIsFourCopies();
};

void TestUtils::doubleQuoteIsARegister()
{
    QVERIFY(CUtils::isRegister(QChar(0x22)));
    QVERIFY(CUtils::isRegister('\x22'));
}

void TestUtils::registersAreSixCharacters()
{
    const QByteArray registers("\x22\x23\x26\x3C\x3E\x7C");
    for (int c = 0; c <= 0xFFFF; ++c)
        QCOMPARE(CUtils::isRegister(QChar(c)), c < 0x80 && registers.contains(char(c)) && c != 0);
    for (int c = 0; c <= 0xFF; ++c)
        QCOMPARE(CUtils::isRegister(char(c)), c < 0x80 && registers.contains(char(c)) && c != 0);
}

void TestUtils::registersAreRemoved()
{
    QCOMPARE(CUtils::removeRegisters(QStringLiteral("|А\"Б#1&A<>\r\n@\x01")),
             QStringLiteral("АБ1A\r\n@\x01"));
    QCOMPARE(CUtils::removeRegisters(QStringLiteral("|\"#&<>")), QString());
}

void TestUtils::nonTextCharactersAreRemoved()
{
    QCOMPARE(CUtils::removeNonTextChars(QStringLiteral("\x01|А\"\x02<Б>#&\x03\r\n")),
             QStringLiteral("АБ\x03\r\n"));
}

void TestUtils::lineEndsCountInTheLength()
{
    QCOMPARE(CUtils::lengthOnlyMTK2(QStringLiteral("|АБ\r\n")), 4);
}

void TestUtils::lengthLeavesOutMarksAndTypes()
{
    QCOMPARE(CUtils::lengthOnlyMTK2(QString()), 0);
    QString types;
    for (ushort c = 0; c <= 6; ++c)
        types += QChar(c);
    QCOMPARE(CUtils::lengthOnlyMTK2(types), 0);
    QCOMPARE(CUtils::lengthOnlyMTK2(types + QChar(7)), 1);
    QCOMPARE(CUtils::lengthOnlyMTK2(QStringLiteral("\"#&<>|")), 0);
    QCOMPARE(CUtils::lengthOnlyMTK2(QStringLiteral("А &1")), 3);
}

void TestUtils::fourBecomesCheOrStays_data()
{
    QTest::addColumn<QString>("received");
    QTest::addColumn<QString>("read");
    const auto row = [](const char *name, const char *received, const char *read) {
        ::row(name, QString::fromUtf8(received), QString::fromUtf8(read));
    };
    row("empty", "", "");
    row("marks are dropped", "|А#1&A|", "А1A");
    row("other signs are kept", "<А>\"\r\n@", "<А>\"\r\n@");
    row("letter behind a mark at the start", "|4ТО", "ЧТО");
    row("last, behind a space", "12 4", "12 4");
    row("behind a digit, before a letter", "14А", "14А");
    row("last, behind a letter", "А4", "АЧ");
    row("whole text", "4", "4");
    row("whole text but for a mark in front: last, no space before", "#4", "Ч");
    row("last, behind a digit", "14", "14");
    row("digits on both sides", "143", "143");
    row("digit behind a letter, digit next", "А41", "А41");
    row("first, digit next", "41", "41");
    row("digit before counts although a mark stands next", "#14|А", "14А");
    row("mark of letters next", "#4|ТО", "ЧТО");
    row("mark of letters next, behind a space", "А #4|ТО", "А ЧТО");
    row("first, letter next", "4А", "ЧА");
    row("first, Latin letter next", "4A", "ЧA");
    row("space before, letter next", " 4А", " ЧА");
    row("first, space next", "4 А", "4 А");
    row("spaces on both sides", "А 4 Б", "А 4 Б");
    row("first, sign next", "4.", "Ч.");
    row("space before, sign next", "А 4.", "А Ч.");
    row("letter before, sign next", "А4.", "АЧ.");
    row("letter before, space next", "А4 Б", "АЧ Б");
    row("mark before, space next", "#4 Б", "Ч Б");
    row("mark of figures before, digit next", "А #45", "А 45");
    row("mark behind the last figure of a number", "#24|", "24");
    row("last of two fours", "44", "44");
    row("four letters in a row", "|А#4|А#4|А", "АЧАЧА");
    row("line end is no space", "А\n4", "А\nЧ");
    row("first, line end next", "4\n", "Ч\n");
}

void TestUtils::fourBecomesCheOrStays()
{
    QFETCH(QString, received);
    QFETCH(QString, read);
    QCOMPARE(CUtils::removeRegistersAndCheck4(received), read);
}

void TestUtils::serviceIsLeftOut_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("left");
    const auto row = [](const char *name, const char *text, const char *left) {
        ::row(name, QString::fromUtf8(text), QString::fromUtf8(left));
    };
    row("no command", "|АБ#12", "|АБ#12");
    row("empty", "", "");
    row("letter", "А@HБ", "АБ");
    row("number", "А@N12@Б", "АБ");
    row("number, small letter", "А@n12+3@Б", "АБ");
    row("number without digits", "А@N@Б", "АБ");
    row("number ended by something else", "А@N12ZБ", "АБ");
    row("number at the end of the text", "А@N12", "А");
    row("number's letter at the end of the text", "А@N", "А");
    row("number ends at a wide digit",
        "А@N1\xEF\xBC\x92"
        "2Б",
        "А2Б");
    row("digits with a star", "@12*Б", "Б");
    row("one digit with a star", "А@1*Б", "АБ");
    row("digits without a star", "А@12Б", "А2Б");
    row("one digit without a star", "А@1Б", "АБ");
    row("digits at the end of the text", "А@12", "А");
    row("wide digit is like a letter", "А@\xEF\xBC\x92*Б", "А*Б");
    row("sign at the end", "А@", "А");
    row("sign alone", "@", "");
    row("two signs", "А@@Б", "АБ");
    row("commands in a row", "@C@N123@@HА@C", "А");
    row("Cyrillic letter", "@ЯБ", "Б");
}

void TestUtils::serviceIsLeftOut()
{
    QFETCH(QString, text);
    QFETCH(QString, left);
    QCOMPARE(CUtils::removeService(text), left);
}

void TestUtils::startMarkNeedsItsSpace()
{
    QCOMPARE(CUtils::indexOfZCZC(QStringLiteral("ЗЦЗЦ")), -1);
    QCOMPARE(CUtils::indexOfZCZC(QStringLiteral("ЗЦЗЦ\n")), -1);
}

void TestUtils::startMarkIsTheEarlierOfTwo_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("position");
    row("none", QStringLiteral("АБ"), -1);
    row("empty", QString(), -1);
    row("Cyrillic", QStringLiteral("А ЗЦЗЦ 001"), 2);
    row("Latin", QStringLiteral("АБВ ZCZC 001"), 4);
    row("at the start", QStringLiteral("ZCZC "), 0);
    row("Cyrillic first", QStringLiteral(".ЗЦЗЦ ZCZC "), 1);
    row("Latin first", QStringLiteral("..ZCZC ЗЦЗЦ "), 2);
    row("small letters", QStringLiteral("зцзц zczc "), -1);
    row("letters of both alphabets", QStringLiteral("ЗCЗC "), -1);
    row("first without its space", QStringLiteral("ЗЦЗЦЗЦЗЦ "), 4);
}

void TestUtils::startMarkIsTheEarlierOfTwo()
{
    QFETCH(QString, text);
    QFETCH(int, position);
    QCOMPARE(CUtils::indexOfZCZC(text), position);
}

void TestUtils::endMarkIsTheEarlierOfTwo_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("position");
    row("none", QStringLiteral("АБ"), -1);
    row("Cyrillic", QStringLiteral("А НННН  "), 2);
    row("Latin", QStringLiteral("АБ NNNN  "), 3);
    row("one space", QStringLiteral("НННН NNNN "), -1);
    row("Cyrillic first", QStringLiteral("НННН  NNNN  "), 0);
    row("Latin first", QStringLiteral(".NNNN  НННН  "), 1);
    row("five letters", QStringLiteral("ННННН  "), 1);
    row("small letters", QStringLiteral("нннн  nnnn  "), -1);
}

void TestUtils::endMarkIsTheEarlierOfTwo()
{
    QFETCH(QString, text);
    QFETCH(int, position);
    QCOMPARE(CUtils::indexOfNNNN(text), position);
}

void TestUtils::numbersHaveTheirLastDigits_data()
{
    QTest::addColumn<int>("n");
    QTest::addColumn<QString>("three");
    QTest::addColumn<QString>("two");
    row("0", 0, QStringLiteral("000"), QStringLiteral("00"));
    row("5", 5, QStringLiteral("005"), QStringLiteral("05"));
    row("7", 7, QStringLiteral("007"), QStringLiteral("07"));
    row("99", 99, QStringLiteral("099"), QStringLiteral("99"));
    row("100", 100, QStringLiteral("100"), QStringLiteral("00"));
    row("999", 999, QStringLiteral("999"), QStringLiteral("99"));
    row("1000", 1000, QStringLiteral("000"), QStringLiteral("00"));
    row("1234", 1234, QStringLiteral("234"), QStringLiteral("34"));
    row("greatest", 2147483647, QStringLiteral("647"), QStringLiteral("47"));
    row("least", int(-2147483647 - 1), QStringLiteral("648"), QStringLiteral("48"));
    row("-7", -7, QStringLiteral("007"), QStringLiteral("07"));
}

void TestUtils::numbersHaveTheirLastDigits()
{
    QFETCH(int, n);
    QFETCH(QString, three);
    QFETCH(QString, two);
    QCOMPARE(CUtils::StringNNN(n), three);
    QCOMPARE(CUtils::StringNN(n), two);
}

void TestUtils::categoryLetterIsForLatinC()
{
    QCOMPARE(CUtils::categoryLetter(QStringLiteral("\x43")), QStringLiteral("q"));
    QCOMPARE(CUtils::categoryLetter(QStringLiteral("\x43П")), QStringLiteral("q"));
    QCOMPARE(CUtils::categoryLetter(QString(QChar(0x0421))), QStringLiteral("u")); // the Cyrillic letter
    QCOMPARE(CUtils::categoryLetter(QStringLiteral("c")), QStringLiteral("u"));
    QCOMPARE(CUtils::categoryLetter(QStringLiteral("П\x43")), QStringLiteral("u"));
    QCOMPARE(CUtils::categoryLetter(QString()), QStringLiteral("u"));
}

void TestUtils::categoryIsOrdinaryOnlyWithV()
{
    QVERIFY(!CUtils::categoryIsV(QString()));
    QVERIFY(!CUtils::categoryIsV(QString(QChar(0x0412))));
    QVERIFY(!CUtils::categoryIsV(QChar(0x0412) + QStringLiteral("П")));
    QVERIFY(CUtils::categoryIsV(QStringLiteral("B")));    // the Latin letter
    QVERIFY(CUtils::categoryIsV(QString(QChar(0x0432)))); // the small letter
    QVERIFY(CUtils::categoryIsV(QStringLiteral("ПВ")));
}

void TestUtils::onlyDigitsAreLeft()
{
    QCOMPARE(CUtils::leaveOnlyDigits(QStringLiteral("+7 (495) 123-45-67 А")), QStringLiteral("74951234567"));
    QCOMPARE(CUtils::leaveOnlyDigits(QStringLiteral("1") + QChar(0x0662) + QChar(0x00B2) + QChar(0x00BD)),
             QStringLiteral("1") +
                 QChar(0x0662)); // a digit of another script, but no raised one, no fraction
    QCOMPARE(CUtils::leaveOnlyDigits(QStringLiteral("АБВ")), QString());
    QCOMPARE(CUtils::leaveOnlyDigits(QString()), QString());
}

void TestUtils::testTextIsFourCopies()
{
    const QString copy =
        QStringLiteral("<>#(0):-|В #4&\x41#Щ&\x41|Х #Ю|Г&\x41 |ЖИЛ БЫ ЦИТРУС#?|Д&\x41#,|НО Ф&\x41|ЛЬ#Ш|ИВЫЙ "
                       "#ЭКЗЕМПЛЯР#+1234567890=/'|||");
    QCOMPARE(CUtils::testTlgText(), copy + copy + copy + copy);
}

QTEST_GUILESS_MAIN(TestUtils)
#include "test_utils.moc"
