// A line adapter by itself: what it does with the bytes of a program, with given times.

#include "tests/linesim/adapter_desk.h"
#include "tests/support/row.h"

#include <QtTest>

class TestLinesimAdapter : public QObject
{
    Q_OBJECT

private slots:
    void talksUnasked();
    void versionIsTold_data();
    void versionIsTold();
    void statusesComeByThemselves();
    void nextStatusWaitsForItsAnswer();
    void codesAreTransmittedAtTheSpeedOfTheLine();
    void wordIsGoneOnWithWithinItsSilence_data();
    void wordIsGoneOnWithWithinItsSilence();
    void oldFirmwareDoesNotEcho();
    void drainedAdapterSaysSo();
    void roomThatOpensIsTold();
    void obedientProgramNeverOverrunsIt_data();
    void obedientProgramNeverOverrunsIt();
    void charactersBeyondTheCreditAreABreach();
    void textBeforeTheModeIsABreach();
    void programWithoutAModeIsABreach();
    void anotherModeIsABreach();
    void registerCodesAreFree();
    void farEndIsHeardAtTheSpeedOfTheLine();
    void whatHasNoCodeIsNotCarried();
    void callsOfTheProgramBecomeCommands();
    void callsOfTheFarEndBecomeBytes();
    void callWithoutASwitchedChannelIsABreach();
    void dialledNumberBecomesACommand_data();
    void dialledNumberBecomesACommand();
    void dialledNumberMayComeInPieces();
    void dialledNumberBrokenOffIsABreach();
    void byteThatMeansNothingIsABreach_data();
    void byteThatMeansNothingIsABreach();
    void burstsAndTotalsAreTold();
    void nextConnectionBeginsAnew();
};

void TestLinesimAdapter::talksUnasked()
{
    AdapterDesk desk;
    desk.pass(1000);
    QCOMPARE(desk.bytes(), QByteArray()); // nobody is there
    desk.adapter.opened(desk.now);
    desk.adapter.advance(desk.now);
    QCOMPARE(desk.bytes(), QByteArray("3f")); // all transmitted, room for 15
}

void TestLinesimAdapter::versionIsTold_data()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<QByteArray>("reply");
    row("new", 20231111, QByteArray("170b0b"));
    row("old", 20231110, QByteArray("170b0a"));
    row("later", 20261231, QByteArray("1a0c1f"));
    row("none", 0, QByteArray());
}

void TestLinesimAdapter::versionIsTold()
{
    QFETCH(int, version);
    QFETCH(QByteArray, reply);
    AdapterDesk desk(with([=](LineAdapter::Settings &settings) { settings.version = version; }));
    desk.adapter.opened(0);
    desk.adapter.advance(0);
    desk.program("67");
    desk.sent.clear();
    desk.program("5b");
    QCOMPARE(desk.bytes(), reply);
    QVERIFY(desk.breaches().isEmpty());
}

void TestLinesimAdapter::statusesComeByThemselves()
{
    AdapterDesk desk;
    desk.connect();
    for (int i = 0; i < 3; ++i) {
        desk.pass(500);
        QCOMPARE(desk.bytes(), QByteArray("3f"));
        desk.program("67");
    }
    QVERIFY(desk.breaches().isEmpty());
}

void TestLinesimAdapter::nextStatusWaitsForItsAnswer()
{
    AdapterDesk desk;
    desk.connect();
    desk.pass(400);
    QCOMPARE(desk.bytes(), QByteArray("3f"));
    desk.pass(999);
    QCOMPARE(desk.bytes(), QByteArray());
    desk.pass(2);
    QCOMPARE(desk.bytes().size(), 2);
    QCOMPARE(desk.breaches(), QStringList("violation: status not answered in 1000 ms"));
}

void TestLinesimAdapter::codesAreTransmittedAtTheSpeedOfTheLine()
{
    AdapterDesk desk;
    desk.connect();
    desk.program("001901"); // БЕ
    desk.program("67");
    desk.sent.clear();
    desk.pass(37);
    QVERIFY(!desk.bytes().contains("80"));
    desk.pass(1); // 38 ms
    QVERIFY(desk.sent.contains('\x80'));
    QCOMPARE(desk.heard, QString());
    desk.pass(37); // 75 ms
    QVERIFY(desk.sent.contains('\x99'));
    QCOMPARE(desk.heard, QStringLiteral("Б"));
    desk.pass(38); // 113 ms
    QVERIFY(desk.sent.contains('\x81'));
    QCOMPARE(desk.heard, QStringLiteral("БЕ"));
}

void TestLinesimAdapter::wordIsGoneOnWithWithinItsSilence_data()
{
    QTest::addColumn<int>("silenceMs");
    QTest::addColumn<QString>("text");
    row("last moment of it", 699, QStringLiteral("|ЗЗ "));
    row("all of it", 700, QStringLiteral("ЗЗ "));
    row("more", 701, QStringLiteral("ЗЗ "));
}

void TestLinesimAdapter::wordIsGoneOnWithWithinItsSilence()
{
    QFETCH(int, silenceMs);
    AdapterDesk desk(with([](LineAdapter::Settings &settings) { settings.wordMs = 700; }));
    desk.connect();
    desk.program("0011"); // the mark and the first sign of ЗЗ
    desk.pass(75);        // two characters
    QCOMPARE(desk.heard, QString());
    desk.pass(silenceMs);
    desk.program("1104");
    desk.pass(75);
    QTEST(desk.heard, "text");
}

void TestLinesimAdapter::oldFirmwareDoesNotEcho()
{
    AdapterDesk desk(with([](LineAdapter::Settings &settings) { settings.version = 20231110; }));
    desk.connect();
    desk.program("0019");
    desk.pass(100);
    QCOMPARE(desk.heard, QStringLiteral("Б"));
    for (const char byte : qAsConst(desk.sent))
        QVERIFY(quint8(byte) < 0x80);
}

void TestLinesimAdapter::drainedAdapterSaysSo()
{
    AdapterDesk desk(with([](LineAdapter::Settings &settings) { settings.version = 20231110; }));
    desk.connect();
    desk.program("03");
    QCOMPARE(desk.bytes(), QByteArray("2f")); // a code waits: not drained
    desk.program("67");
    desk.pass(37);
    QCOMPARE(desk.bytes(), QByteArray());
    desk.pass(1);
    QCOMPARE(desk.bytes(), QByteArray("3f"));
}

void TestLinesimAdapter::roomThatOpensIsTold()
{
    AdapterDesk desk(with([](LineAdapter::Settings &settings) {
        settings.version = 20231110;
        settings.statusMs = 60'000;
    }));
    desk.adapter.opened(0);
    desk.adapter.advance(0);
    desk.program("6767");
    desk.sent.clear();
    // 15 characters, each with a register code of its own: 30 codes
    const QByteArray worst = QByteArray("1b17").repeated(15);
    desk.program(worst.constData());
    QCOMPARE(desk.bytes(), QByteArray("2f")); // 34 of 64 are free
    desk.program("67");
    desk.program(worst.constData());
    for (int left = 60; left > 48; --left) {
        QCOMPARE(desk.bytes(), QByteArray()); // too little to tell
        desk.now += CharacterUs;
        desk.adapter.advance(desk.now);
    }
    QCOMPARE(desk.bytes(), QByteArray("28")); // 48 wait, room for 8
}

void TestLinesimAdapter::obedientProgramNeverOverrunsIt_data()
{
    QTest::addColumn<int>("room");
    for (const int room : {4, 5, 8, 16, 31, 64, 200})
        QTest::addRow("%d codes", room) << room;
}

/// A program that answers each status at once and always sends all that it may, at the worst cost.
void TestLinesimAdapter::obedientProgramNeverOverrunsIt()
{
    QFETCH(int, room);
    AdapterDesk desk(with([=](LineAdapter::Settings &settings) { settings.roomCodes = room; }));
    desk.connect();
    int characters = 0;
    for (int ms = 0; ms < 60'000; ++ms) {
        desk.pass(1);
        int credit = -1;
        for (const char byte : qAsConst(desk.sent))
            if ((quint8(byte) & 0xE0) == 0x20)
                credit = quint8(byte) & 0x0F;
        desk.sent.clear();
        if (credit < 0)
            continue;
        desk.program("67");
        for (int i = 0; i < credit; ++i, ++characters) // "A1A1"
            desk.program(characters % 2 ? "1b17" : "1f03");
    }
    QVERIFY(desk.breaches().isEmpty());
    QVERIFY(desk.lines.filter(QStringLiteral("overrun")).isEmpty());
    // In a minute the line carries 1600 codes, 800 such characters.
    QVERIFY2(characters >= 790 || room < 16, qPrintable(QString::number(characters)));
}

void TestLinesimAdapter::charactersBeyondTheCreditAreABreach()
{
    AdapterDesk desk;
    desk.connect(); // 15 are granted
    desk.program("030303030303030303030303030303");
    QVERIFY(desk.breaches().isEmpty());
    desk.program("0303");
    QCOMPARE(desk.breaches(), QStringList("violation: 2 characters more than granted"));
}

void TestLinesimAdapter::textBeforeTheModeIsABreach()
{
    AdapterDesk desk;
    desk.adapter.opened(0);
    desk.adapter.advance(0); // a status grants room, but nothing has answered it
    desk.program("0367");
    QCOMPARE(desk.breaches(), QStringList("violation: 1 characters more than granted"));
}

void TestLinesimAdapter::programWithoutAModeIsABreach()
{
    AdapterDesk desk;
    desk.adapter.opened(0);
    desk.pass(1000);
    QVERIFY(desk.breaches().isEmpty());
    desk.pass(1);
    QCOMPARE(desk.breaches(), QStringList("violation: status not answered in 1000 ms"));
}

void TestLinesimAdapter::anotherModeIsABreach()
{
    AdapterDesk desk(with([](LineAdapter::Settings &settings) { settings.expectedMode = 0x67; }));
    desk.connect("67");
    desk.program("67");
    QVERIFY(desk.breaches().isEmpty());
    desk.program("69"); // it has changed
    QCOMPARE(desk.breaches(), QStringList("violation: mode 69 switched instead of 67 200 baud"));
}

void TestLinesimAdapter::registerCodesAreFree()
{
    AdapterDesk desk;
    desk.connect();
    desk.program("000300030003000300030003000300030003000300030003000300030003"); // 15 times
    QVERIFY(desk.breaches().isEmpty());
}

void TestLinesimAdapter::farEndIsHeardAtTheSpeedOfTheLine()
{
    AdapterDesk desk(with([](LineAdapter::Settings &settings) { settings.baud = 50; }));
    desk.connect("65");
    desk.adapter.sendText(QStringLiteral("А1"), desk.now);
    desk.pass(140);
    QCOMPARE(desk.bytes(), QByteArray());
    desk.pass(10);
    QCOMPARE(desk.bytes(), QByteArray("00"));
    desk.pass(150);
    QCOMPARE(desk.bytes(), QByteArray("03"));
    desk.pass(150);
    QVERIFY(desk.sent.contains('\x1b'));
    desk.pass(150);
    QVERIFY(desk.sent.contains('\x17'));
}

void TestLinesimAdapter::whatHasNoCodeIsNotCarried()
{
    AdapterDesk desk;
    desk.connect();
    desk.adapter.sendText(QStringLiteral("!А^"), desk.now);
    desk.pass(75);
    QCOMPARE(desk.bytes(), QByteArray("0003"));
    QVERIFY(desk.lines.contains(QStringLiteral("not carried: !^")));
}

void TestLinesimAdapter::callsOfTheProgramBecomeCommands()
{
    AdapterDesk desk(with([](LineAdapter::Settings &settings) { settings.expectedMode = 0x69; }));
    desk.connect("69");
    desk.program("430003410044"); // @C, А, @H, a register, @E
    QCOMPARE(desk.heard, QStringLiteral("@C"));
    desk.pass(75);
    QCOMPARE(desk.heard, QStringLiteral("@CА@H"));
    desk.pass(38);
    QCOMPARE(desk.heard, QStringLiteral("@CА@H|@E"));
    QVERIFY(desk.breaches().isEmpty());
}

void TestLinesimAdapter::callsOfTheFarEndBecomeBytes()
{
    AdapterDesk desk;
    desk.connect("69");
    desk.adapter.sendText(QStringLiteral("@CА@H@E@S"), desk.now);
    desk.pass(0);
    QCOMPARE(desk.bytes(), QByteArray("43"));
    desk.pass(75);
    QCOMPARE(desk.bytes(), QByteArray("0003414445"));
}

void TestLinesimAdapter::callWithoutASwitchedChannelIsABreach()
{
    AdapterDesk desk;
    desk.connect("67");
    desk.program("43");
    QCOMPARE(desk.breaches(), QStringList("violation: call without a switched channel: @C"));
}

void TestLinesimAdapter::dialledNumberBecomesACommand_data()
{
    QTest::addColumn<QByteArray>("bytes");
    row("@N123+@", QByteArray("5d420102030b40"));
    row("@n0987654321@", QByteArray("5e420009080706050403020140"));
    row("@N@", QByteArray("5d4240"));
}

void TestLinesimAdapter::dialledNumberBecomesACommand()
{
    QFETCH(QByteArray, bytes);
    AdapterDesk desk;
    desk.connect("69");
    desk.program(bytes.constData());
    QCOMPARE(desk.heard, QString::fromLatin1(QTest::currentDataTag()));
    QVERIFY(desk.breaches().isEmpty());
    desk.program("03"); // a code again, and no digit
    desk.pass(40);
    QVERIFY(desk.heard.endsWith(QLatin1Char('A')));
}

void TestLinesimAdapter::dialledNumberMayComeInPieces()
{
    AdapterDesk desk;
    desk.connect("69");
    for (const char *byte : {"5d", "42", "01", "02", "40"})
        desk.program(byte);
    QCOMPARE(desk.heard, QStringLiteral("@N12@"));
}

void TestLinesimAdapter::dialledNumberBrokenOffIsABreach()
{
    AdapterDesk desk;
    desk.connect("69");
    desk.program("5d420169");
    QCOMPARE(desk.breaches(), QStringList("violation: dialling broken off: @N1"));
    desk.program("5d40");
    QCOMPARE(desk.breaches().value(1), QStringLiteral("violation: dialling broken off: @N"));
    desk.program("5d420a");
    QCOMPARE(desk.breaches().value(3), QStringLiteral("violation: dialling broken off: @N"));
    QCOMPARE(desk.heard, QString());
}

void TestLinesimAdapter::byteThatMeansNothingIsABreach_data()
{
    QTest::addColumn<int>("byte");
    const QByteArray known = QByteArray::fromHex("4143445b5d5e606465666769");
    for (int byte = 0x20; byte < 0x100; ++byte)
        if (!known.contains(char(byte)))
            QTest::addRow("%02x", byte) << byte;
}

void TestLinesimAdapter::byteThatMeansNothingIsABreach()
{
    QFETCH(int, byte);
    AdapterDesk desk;
    desk.connect("69");
    desk.adapter.takeFromProgram(QByteArray(1, char(byte)), desk.now);
    QCOMPARE(desk.breaches(),
             QStringList(QStringLiteral("violation: byte %1 means nothing").arg(QTest::currentDataTag())));
}

void TestLinesimAdapter::burstsAndTotalsAreTold()
{
    AdapterDesk desk;
    desk.connect();
    desk.program("000319");
    desk.adapter.sendText(QStringLiteral("А"), desk.now);
    desk.pass(1000);
    QVERIFY(desk.lines.contains(QStringLiteral("line: 3 codes in 112 ms")));
    QVERIFY(desk.lines.contains(QStringLiteral("raw: 000319")));
    QVERIFY(desk.lines.contains(QStringLiteral("text: 2 АБ")));
    desk.adapter.tellTotals();
    QVERIFY(desk.lines.contains(QStringLiteral("transmitted: 3 codes, longest pause 0 ms")));
    QVERIFY(desk.lines.contains(QStringLiteral("received: 2 codes")));
}

void TestLinesimAdapter::nextConnectionBeginsAnew()
{
    AdapterDesk desk;
    desk.connect();
    desk.program("0003030303");
    desk.pass(80);
    desk.program("60");
    desk.adapter.closed(desk.now);
    desk.heard.clear();
    desk.pass(1000);
    QCOMPARE(desk.heard, QString()); // what was not transmitted is gone
    desk.connect();
    desk.program("03"); // Latin again
    desk.pass(40);
    QCOMPARE(desk.heard, QStringLiteral("A"));
    QVERIFY(desk.breaches().isEmpty());
}

QTEST_GUILESS_MAIN(TestLinesimAdapter)
#include "test_linesim_adapter.moc"
