#include "tests/support/row.h"
#include "tools/linesim/console/event_log.h"
#include "tools/linesim/line/corva.h"
#include "tools/linesim/line/stream_cipher.h"

#include <QtTest>

class TestLinesimBytes : public QObject
{
    Q_OBJECT

private slots:
    void lettersAreOneByteEach();
    void starHasAByteOfItsOwn();
    void smallLettersAreFolded();
    void charactersWithoutAByteAreLeftOut();
    void foreignBytesShow();
    void workstationsBlockIsRead();
    void eachBlockBeginsAtTheSamePlaceWithOneSeedMore();
    void blockForTheWorkstationFollowsItsFeedback();
    void whatTheWorkstationSendsChangesItsReceivingKey();
    void keyIsCutAtSixteenBytes();
    void blockLongerThanEightBitsIsTreatedInPart();
    void eventsAreLinesWithEscapes();
    void escapesAreReadBack_data();
    void escapesAreReadBack();
};

void TestLinesimBytes::lettersAreOneByteEach()
{
    QCOMPARE(toCorva(QStringLiteral("АЯ AZ 09\r\n")), QByteArray::fromHex("809f20415a2030390d0a"));
    QCOMPARE(fromCorva(QByteArray::fromHex("809f20415a2030390d0a")), QStringLiteral("АЯ AZ 09\r\n"));
}

void TestLinesimBytes::starHasAByteOfItsOwn()
{
    QCOMPARE(toCorva(QStringLiteral("*")), QByteArray("\x05"));
    QCOMPARE(fromCorva(QByteArray("\x05")), QStringLiteral("*"));
}

void TestLinesimBytes::smallLettersAreFolded()
{
    QCOMPARE(toCorva(QStringLiteral("ая")), QByteArray::fromHex("809f"));
}

void TestLinesimBytes::charactersWithoutAByteAreLeftOut()
{
    QCOMPARE(toCorva(QStringLiteral("АЁ№") + QChar(0) + QStringLiteral("Б")), QByteArray::fromHex("8081"));
}

void TestLinesimBytes::foreignBytesShow()
{
    QCOMPARE(fromCorva(QByteArray::fromHex("80a0ff00")), QStringLiteral("А\uFFFD\uFFFD"));
}

// Key 01 02 03, the workstation's seed 04, ours 05. Its writing begins at 5 mod 3 = 2, where 4 is added:
// working key 01 02 07, read from the third byte on: 07, 01, 02, 07.
void TestLinesimBytes::workstationsBlockIsRead()
{
    StreamCipher cipher(QByteArray::fromHex("010203"), 0x04, 0x05);
    QCOMPARE(cipher.fromWorkstation(QByteArray::fromHex("87818287")), QByteArray::fromHex("80808080"));
}

// The second block begins at the third byte again, now 07 + 04 = 0B.
void TestLinesimBytes::eachBlockBeginsAtTheSamePlaceWithOneSeedMore()
{
    StreamCipher cipher(QByteArray::fromHex("010203"), 0x04, 0x05);
    QCOMPARE(cipher.fromWorkstation(QByteArray::fromHex("87")), QByteArray::fromHex("80"));
    QCOMPARE(cipher.fromWorkstation(QByteArray::fromHex("8b")), QByteArray::fromHex("80"));
}

// Its reading begins at 4 mod 3 = 1, where 5 is added: 01 07 03. The plain 80 goes as 80^07 = 87, then the
// third byte becomes (03+87) rotated = 15; 80^15 = 95, the first becomes (01+95) rotated = 2D; 80^2D = AD.
void TestLinesimBytes::blockForTheWorkstationFollowsItsFeedback()
{
    StreamCipher cipher(QByteArray::fromHex("010203"), 0x04, 0x05);
    QCOMPARE(cipher.toWorkstation(QByteArray::fromHex("808080")), QByteArray::fromHex("8795ad"));
}

// The byte 87 that it wrote from the third place puts (01+87) rotated = 11 on the first. Reading begins at
// the second, 02+05 = 07: 80^07 = 87, third (03+87) rotated = 15: 95, first (11+95) rotated = 4D: CD.
void TestLinesimBytes::whatTheWorkstationSendsChangesItsReceivingKey()
{
    StreamCipher cipher(QByteArray::fromHex("010203"), 0x04, 0x05);
    QCOMPARE(cipher.fromWorkstation(QByteArray::fromHex("87")), QByteArray::fromHex("80"));
    QCOMPARE(cipher.toWorkstation(QByteArray::fromHex("808080")), QByteArray::fromHex("8795cd"));
}

void TestLinesimBytes::keyIsCutAtSixteenBytes()
{
    const QByteArray sixteen = QByteArray::fromHex("000102030405060708090a0b0c0d0e0f");
    StreamCipher cipher(sixteen + QByteArray::fromHex("10111213"), 0x00, 0x0F);
    QCOMPARE(cipher.fromWorkstation(QByteArray::fromHex("8f8081")), QByteArray::fromHex("808080"));
}

void TestLinesimBytes::blockLongerThanEightBitsIsTreatedInPart()
{
    StreamCipher cipher(QByteArray::fromHex("0101"), 0x00, 0x00);
    const QByteArray read = cipher.fromWorkstation(QByteArray(258, char(0x81)));
    QCOMPARE(read, QByteArray(2, char(0x80)) + QByteArray(256, char(0x81)));
}

void TestLinesimBytes::eventsAreLinesWithEscapes()
{
    QStringList lines;
    EventLog log([&lines](const QString &line) { lines << line; });
    log.event(QStringLiteral("ready"));
    log.event(QStringLiteral("text"), escaped(QStringLiteral("А\r\n\\\x05")));
    log.violation(QStringLiteral("too much"));
    const QStringList expected = {QStringLiteral("ready:"), QStringLiteral("text: А\\r\\n\\\\\\x05"),
                                  QStringLiteral("violation: too much")};
    QCOMPARE(lines, expected);
    QCOMPARE(log.violations, 1);
}

void TestLinesimBytes::escapesAreReadBack_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("text");
    row("line ends", "A\\r\\nB", "A\r\nB");
    row("backslash", "A\\\\n", "A\\n");
    row("hexadecimal", "\\x41\\x05", "A\x05");
    row("cut hexadecimal", "\\x4", "\\x4");
    row("unknown", "\\q", "\\q");
    row("backslash at the end", "A\\", "A\\");
}

void TestLinesimBytes::escapesAreReadBack()
{
    QFETCH(QString, line);
    QTEST(unescaped(line), "text");
}

QTEST_APPLESS_MAIN(TestLinesimBytes)
#include "test_linesim_bytes.moc"
