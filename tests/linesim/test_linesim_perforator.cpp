// The simulated perforator, with a workstation at its port that keeps the rules or breaks them.

#include "tests/support/row.h"
#include "tests/support/serial_ports.h"
#include "tools/linesim/perforator/perforator.h"

#include <QElapsedTimer>
#include <QFile>
#include <QSerialPort>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

class TestLinesimPerforator : public QObject
{
    Q_OBJECT

private slots:
    void portIsAnnounced();
    void roomIsTold();
    void roomIsToldUpTo31();
    void statusIsToldOnceTheLastOneIsAnswered();
    void codesArePunchedIntoFiles();
    void roomShrinksByWhatWaits();
    void overrunIsABreach();
    void registerCodesOfOnePieceAreNoBreach();
    void missingAnswerIsABreach();
    void otherModeIsABreach();
    void modeWithoutAStatusMayBeAnother();
    void modeIsWantedAtEachOpening();
    void firstByteThatIsNoModeIsABreach_data();
    void firstByteThatIsNoModeIsABreach();
    void byteWithoutAMeaningIsABreach_data();
    void byteWithoutAMeaningIsABreach();
    void tapeIsReadBetweenItsCommands();
    void tapeRunsAtItsSpeed();
    void closedPortStopsTheTape();
    void tapeOfCodesIsReadAsItIs();
    void anotherTapeIsMounted();
    void jamLeavesNoRoom();
    void unpluggingTakesThePortAway();
    void garbageIsTheSameForASeed();
    void optionsAreRead();
    void optionsThatMakeNoSenseAreRefused_data();
    void optionsThatMakeNoSenseAreRefused();
    void unknownCommandIsAnError();
};

namespace
{
constexpr int Silent = 3600 * 1000; // as the time between statuses: one, and no other

PerforatorOptions quick()
{
    PerforatorOptions options;
    options.speed = 0;
    options.statusMs = 10;
    return options;
}

/// A perforator, and a port at it.
struct Bench {
    explicit Bench(const PerforatorOptions &options = quick()) : perforator(options, log)
    {
        if (!perforator.start())
            qFatal("no perforator");
        open();
    }
    void open()
    {
        port.setPortName(perforator.portName());
        if (!opens(port) || !comesTrue([this] { return saw("opened:"); }))
            qFatal("no port");
        QObject::connect(&port, &QSerialPort::readyRead, &port, [this] { got += port.readAll(); });
    }
    void write(const QByteArray &hex)
    {
        port.write(QByteArray::fromHex(hex));
        port.flush();
    }
    [[nodiscard]] bool saw(const QString &line) const { return lines.contains(line); }
    [[nodiscard]] QStringList breaches() const { return lines.filter(QStringLiteral("violation: ")); }

    QStringList lines;
    EventLog log{[this](const QString &line) { lines << line; }};
    Perforator perforator;
    QSerialPort port;
    QByteArray got;
};

/// A perforator that tells its room once.
Bench *benchWithOneStatus(int room, bool jammed = false)
{
    PerforatorOptions options = quick();
    options.statusMs = Silent;
    options.room = room;
    auto *bench = new Bench(options);
    if (jammed)
        bench->perforator.run(QStringLiteral("jam"));
    return bench;
}

QByteArray contentOf(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

QString makeFile(const QTemporaryDir &directory, const char *name, const QByteArray &content)
{
    QFile file(directory.filePath(QString::fromLatin1(name)));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("no file");
    return file.fileName();
}

std::optional<PerforatorOptions> read(const QStringList &arguments)
{
    return readPerforatorOptions(QStringList(QStringLiteral("perforator")) + arguments);
}
} // namespace

void TestLinesimPerforator::portIsAnnounced()
{
    const QTemporaryDir directory;
    PerforatorOptions options = quick();
    options.serial = QStringLiteral("20000007");
    options.port = directory.filePath(QStringLiteral("port"));
    const Bench bench(options);
    QCOMPARE(bench.lines.value(0), QStringLiteral("port: 20000007=") + options.port);
}

void TestLinesimPerforator::roomIsTold()
{
    const std::unique_ptr<Bench> bench(benchWithOneStatus(18));
    bench->write("61");
    QTRY_COMPARE(bench->got.toHex(), QByteArray("32"));
    QTRY_COMPARE(bench->lines.last(), QStringLiteral("mode: 0x61"));
}

void TestLinesimPerforator::roomIsToldUpTo31()
{
    const std::unique_ptr<Bench> bench(benchWithOneStatus(40));
    QTRY_COMPARE(bench->got.toHex(), QByteArray("3f"));
}

void TestLinesimPerforator::statusIsToldOnceTheLastOneIsAnswered()
{
    Bench bench;
    QTRY_COMPARE(bench.got.toHex(), QByteArray("3f"));
    QTest::qWait(50);
    QCOMPARE(bench.got.toHex(), QByteArray("3f"));
    bench.write("61");
    QTRY_COMPARE(bench.got.toHex(), QByteArray("3f3f"));
    bench.write("61");
    QTRY_COMPARE(bench.got.toHex(), QByteArray("3f3f3f"));
    QCOMPARE(bench.breaches(), QStringList());
}

void TestLinesimPerforator::codesArePunchedIntoFiles()
{
    const QTemporaryDir directory;
    PerforatorOptions options = quick();
    options.punchFile = directory.filePath(QStringLiteral("codes"));
    options.punchTextFile = directory.filePath(QStringLiteral("text"));
    Bench bench(options);
    QTRY_COMPARE(bench.got.size(), 1);
    bench.write("61"
                "000319080204");
    QTRY_VERIFY(bench.saw(QStringLiteral("punched: |АБ\\r\\n ")));
    bench.write("031b17");
    QTRY_VERIFY(bench.saw(QStringLiteral("punched: А#1")));
    QCOMPARE(contentOf(options.punchFile).toHex(), QByteArray("000319080204031b17"));
    QCOMPARE(contentOf(options.punchTextFile), QStringLiteral("|АБ\r\n А#1").toUtf8());
    QCOMPARE(bench.breaches(), QStringList());
}

void TestLinesimPerforator::roomShrinksByWhatWaits()
{
    PerforatorOptions options = quick();
    options.room = 20;
    Bench bench(options);
    QTRY_COMPARE(bench.got.toHex(), QByteArray("34"));
    bench.perforator.run(QStringLiteral("jam"));
    bench.write("61"
                "0303030303");
    QTRY_COMPARE(bench.got.toHex(), QByteArray("3420"));
    bench.perforator.run(QStringLiteral("unjam"));
    bench.write("61");
    QTRY_COMPARE(bench.got.toHex(), QByteArray("342034")); // all is punched meanwhile
}

void TestLinesimPerforator::overrunIsABreach()
{
    const std::unique_ptr<Bench> bench(benchWithOneStatus(5));
    QTRY_COMPARE(bench->got.toHex(), QByteArray("25"));
    bench->write("61"
                 "0303030303030303"); // five, and the reserve of three
    QTRY_VERIFY(bench->saw(QStringLiteral("punched: AAAAAAAA")));
    QCOMPARE(bench->breaches(), QStringList());
    bench->write("0303");
    QTRY_VERIFY(bench->saw(QStringLiteral("punched: AA")));
    QCOMPARE(bench->breaches(), QStringList(QStringLiteral("violation: overrun: more codes than room")));
}

void TestLinesimPerforator::registerCodesOfOnePieceAreNoBreach()
{
    const std::unique_ptr<Bench> bench(benchWithOneStatus(31));
    QTRY_COMPARE(bench->got.toHex(), QByteArray("3f"));
    // 24 codes leave a room of seven, into which a piece of eight goes
    bench->write("61" + QByteArray(24, 3).toHex() + "00031b1700031b17");
    QTRY_VERIFY(
        bench->saw(QStringLiteral("punched: ") + QString(24, QLatin1Char('A')) + QStringLiteral("|А#1|А#1")));
    QCOMPARE(bench->breaches(), QStringList());
}

void TestLinesimPerforator::missingAnswerIsABreach()
{
    PerforatorOptions options = quick();
    options.answerMs = 50;
    Bench bench(options);
    bench.write("61");
    QTRY_VERIFY(bench.saw(QStringLiteral("violation: no mode byte within 50 ms")));
    QTRY_VERIFY(bench.got.size() > 2); // the room is told again
}

void TestLinesimPerforator::otherModeIsABreach()
{
    Bench bench;
    QTRY_COMPARE(bench.got.size(), 1);
    bench.write("61");
    QTRY_COMPARE(bench.got.size(), 2);
    bench.write("62");
    QTRY_COMPARE(bench.breaches(), QStringList(QStringLiteral("violation: mode 0x62 after 0x61")));
}

void TestLinesimPerforator::modeWithoutAStatusMayBeAnother()
{
    PerforatorOptions options = quick();
    options.statusMs = 0;
    Bench bench(options);
    bench.write("616f");
    QTRY_COMPARE(bench.lines.last(), QStringLiteral("mode: 0x6f"));
    QVERIFY(bench.saw(QStringLiteral("mode: 0x61")));
    QCOMPARE(bench.breaches(), QStringList());
}

void TestLinesimPerforator::modeIsWantedAtEachOpening()
{
    Bench bench;
    bench.write("61");
    QTRY_VERIFY(bench.saw(QStringLiteral("mode: 0x61")));
    bench.port.close();
    QTRY_VERIFY(bench.saw(QStringLiteral("closed:")));
    bench.lines.clear();
    bench.open();
    bench.write("03");
    QTRY_COMPARE(bench.breaches(), QStringList(QStringLiteral("violation: a code ahead of the mode")));
}

void TestLinesimPerforator::firstByteThatIsNoModeIsABreach_data()
{
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QString>("breach");
    row("code", QByteArray("03"), "violation: a code ahead of the mode");
    row("start", QByteArray("51"), "violation: a command ahead of the mode");
    row("stop", QByteArray("50"), "violation: a command ahead of the mode");
}

void TestLinesimPerforator::firstByteThatIsNoModeIsABreach()
{
    QFETCH(const QByteArray, first);
    QFETCH(const QString, breach);
    Bench bench;
    bench.write(first);
    QTRY_COMPARE(bench.breaches(), QStringList(breach));
}

void TestLinesimPerforator::byteWithoutAMeaningIsABreach_data()
{
    QTest::addColumn<QByteArray>("byte");
    for (const char *byte : {"20", "3f", "40", "4f", "52", "5f", "60", "70", "80", "ff"})
        row(byte, QByteArray(byte));
}

void TestLinesimPerforator::byteWithoutAMeaningIsABreach()
{
    QFETCH(const QByteArray, byte);
    Bench bench;
    bench.write("61" + byte);
    QTRY_COMPARE(
        bench.breaches(),
        QStringList(QStringLiteral("violation: the byte 0x%1 means nothing").arg(QString::fromLatin1(byte))));
}

void TestLinesimPerforator::tapeIsReadBetweenItsCommands()
{
    const QTemporaryDir directory;
    PerforatorOptions options = quick();
    options.speed = 200;
    options.statusMs = 0;
    options.tapeFile = makeFile(directory, "tape", QStringLiteral("АБ1").repeated(20).toUtf8());
    Bench bench(options);
    QTest::qWait(50);
    QVERIFY(bench.got.isEmpty());
    bench.write("6151");
    QTRY_VERIFY(bench.got.size() >= 7);
    bench.write("50");
    QTRY_VERIFY(bench.lines.last().startsWith(QStringLiteral("stopped: ")));
    const int at = bench.lines.last().section(QLatin1Char(' '), 1).toInt();
    QVERIFY(at < 100);
    QTRY_COMPARE(bench.got.size(), at);
    bench.write("51");
    QTRY_VERIFY(bench.saw(QStringLiteral("tape ended:")));
    QTRY_COMPARE(bench.got.toHex(), QByteArray("0003191b17").repeated(20));
}

void TestLinesimPerforator::tapeRunsAtItsSpeed()
{
    const QTemporaryDir directory;
    PerforatorOptions options = quick();
    options.speed = 100;
    options.statusMs = 0;
    options.tapeFile = makeFile(directory, "tape", QByteArray(50, 'A'));
    Bench bench(options);
    QElapsedTimer passed;
    passed.start();
    bench.write("6151");
    QTRY_COMPARE(bench.got.size(), 50);
    QVERIFY(passed.elapsed() >= 300); // 500, less what the machine may have slept just before
}

void TestLinesimPerforator::closedPortStopsTheTape()
{
    const QTemporaryDir directory;
    PerforatorOptions options = quick();
    options.speed = 200;
    options.statusMs = 0;
    options.tapeFile = makeFile(directory, "tape", QByteArray(2000, 'A'));
    Bench bench(options);
    bench.write("6151");
    QTRY_VERIFY(!bench.got.isEmpty());
    bench.port.close();
    QTRY_VERIFY(bench.saw(QStringLiteral("closed:")));
    bench.lines.clear();
    bench.got.clear();
    bench.open();
    QTest::qWait(50);
    QCOMPARE(bench.got.size(), 0);
}

void TestLinesimPerforator::tapeOfCodesIsReadAsItIs()
{
    const QTemporaryDir directory;
    PerforatorOptions options = quick();
    options.statusMs = 0;
    options.tapeCodesFile = makeFile(directory, "tape", QByteArray::fromHex("0003190303"));
    Bench bench(options);
    bench.write("6151");
    QTRY_COMPARE(bench.got.toHex(), QByteArray("0003190303"));
    bench.perforator.run(QStringLiteral("rewind"));
    bench.write("51");
    QTRY_COMPARE(bench.got.toHex(), QByteArray("00031903030003190303"));
    bench.perforator.run(QStringLiteral("tape-codes ") + makeFile(directory, "other", "\xe7"));
    bench.write("51");
    QTRY_COMPARE(bench.got.toHex(), QByteArray("0003190303000319030307"));
    QTest::qWait(20);
    QCOMPARE(bench.lines.count(QStringLiteral("tape ended:")), 3);
}

void TestLinesimPerforator::anotherTapeIsMounted()
{
    const QTemporaryDir directory;
    PerforatorOptions options = quick();
    options.statusMs = 0;
    Bench bench(options);
    bench.perforator.run(QStringLiteral("tape ") + makeFile(directory, "tape", "AB"));
    QVERIFY(bench.saw(QStringLiteral("tape: 2")));
    bench.write("6151");
    QTRY_VERIFY(bench.got.endsWith(QByteArray::fromHex("0319")));
    bench.perforator.run(QStringLiteral("tape ") + directory.filePath(QStringLiteral("absent")));
    QVERIFY(bench.lines.last().startsWith(QStringLiteral("error: no tape ")));
}

void TestLinesimPerforator::jamLeavesNoRoom()
{
    const std::unique_ptr<Bench> bench(benchWithOneStatus(31, true));
    QTRY_COMPARE(bench->got.toHex(), QByteArray("20"));
    bench->write("61");
    bench->write("03030303");
    QTRY_COMPARE(bench->breaches().size(), 1);
    QTest::qWait(20);
    QVERIFY(bench->lines.filter(QStringLiteral("punched")).isEmpty());
    bench->perforator.run(QStringLiteral("unjam"));
    QTRY_VERIFY(bench->saw(QStringLiteral("punched: AAAA")));
}

void TestLinesimPerforator::unpluggingTakesThePortAway()
{
    const QTemporaryDir directory;
    PerforatorOptions options = quick();
    options.port = directory.filePath(QStringLiteral("port"));
    Bench bench(options);
    bench.perforator.run(QStringLiteral("unplug"));
    QVERIFY(!QFile::exists(options.port));
    QTRY_VERIFY(bench.port.error() != QSerialPort::NoError);
    bench.port.close();
    bench.perforator.run(QStringLiteral("plug"));
    QCOMPARE(bench.lines.last(), QStringLiteral("port: 20000001=") + options.port);
    bench.perforator.run(QStringLiteral("plug")); // it is there already
    QCOMPARE(bench.lines.filter(QStringLiteral("port: ")).size(), 2);
    bench.lines.clear();
    bench.open();
    bench.write("61");
    QTRY_COMPARE(bench.lines.last(), QStringLiteral("mode: 0x61"));
}

void TestLinesimPerforator::garbageIsTheSameForASeed()
{
    QByteArray first;
    for (int time = 0; time < 2; ++time) {
        PerforatorOptions options = quick();
        options.statusMs = 0;
        Bench bench(options);
        bench.perforator.run(QStringLiteral("garbage 100 7"));
        QTRY_COMPARE(bench.got.size(), 100);
        if (time == 1)
            QCOMPARE(bench.got, first);
        first = bench.got;
        bench.write("61" + QByteArray(60, 3).toHex()); // what it makes of it is not judged
        QTRY_VERIFY(bench.saw(QStringLiteral("punched: ") + QString(60, QLatin1Char('A'))));
        QCOMPARE(bench.breaches(), QStringList());
    }
}

void TestLinesimPerforator::optionsAreRead()
{
    const auto options =
        read({"--port", "/tmp/p", "--serial", "20000009", "--punch", "a", "--punch-text", "b", "--tape", "c",
              "--room", "7", "--speed", "30", "--status", "40", "--answer", "50"});
    QVERIFY(options);
    QCOMPARE(QStringList({options->port, options->serial, options->punchFile, options->punchTextFile,
                          options->tapeFile}),
             QStringList({"/tmp/p", "20000009", "a", "b", "c"}));
    QCOMPARE(options->room, 7);
    QCOMPARE(options->speed, 30);
    QCOMPARE(options->statusMs, 40);
    QCOMPARE(options->answerMs, 50);
    const auto plain = read({"--tape-codes", "d"});
    QVERIFY(plain);
    QCOMPARE(plain->tapeCodesFile, QStringLiteral("d"));
    QCOMPARE(plain->serial, QStringLiteral("20000001"));
    QVERIFY(plain->port.isEmpty() && plain->tapeFile.isEmpty());
}

void TestLinesimPerforator::optionsThatMakeNoSenseAreRefused_data()
{
    QTest::addColumn<QStringList>("arguments");
    row("room", QStringList({"--room", "x"}));
    row("speed", QStringList({"--speed", "-1"}));
    row("two tapes", QStringList({"--tape", "a", "--tape-codes", "b"}));
    row("unknown", QStringList({"--listen", "0"}));
    row("left over", QStringList({"file"}));
}

void TestLinesimPerforator::optionsThatMakeNoSenseAreRefused()
{
    QFETCH(const QStringList, arguments);
    QVERIFY(!read(arguments));
}

void TestLinesimPerforator::unknownCommandIsAnError()
{
    Bench bench;
    bench.perforator.run(QStringLiteral("dance 2"));
    QVERIFY(bench.saw(QStringLiteral("error: no command dance 2")));
    bench.perforator.run(QString());
    QSignalSpy quit(&bench.perforator, &Perforator::quit);
    bench.perforator.run(QStringLiteral("quit"));
    QCOMPARE(quit.count(), 1);
}

QTEST_GUILESS_MAIN(TestLinesimPerforator)
#include "test_linesim_perforator.moc"
#include "tests/support/patience.h"
