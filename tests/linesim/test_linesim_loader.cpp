// The simulated boot loader, with the serial port class of the workstation at the other end of its cable.

#include "tests/support/row.h"
#include "tests/support/serial_ports.h"
#include "tools/linesim/loader/loader.h"
#include "tools/linesim/subcommands.h"

#include <QSerialPort>
#include <QTemporaryDir>
#include <QtTest>

class TestLinesimLoader : public QObject
{
    Q_OBJECT

private slots:
    void usageOffersIt();
    void portIsToldWithItsSerial();
    void commandIsWrittenDownAndAnswered_data();
    void commandIsWrittenDownAndAnswered();
    void commandInPiecesIsOne();
    void againstTheRulesIsAViolation_data();
    void againstTheRulesIsAViolation();
    void faultAnswersAtItsCommandOnly();
    void lateAnswerComes();
    void unplugTakesThePortAway();
    void faultFromTheInput();
    void rubbishHoldsNoAnswer();
    void noiseIsTheSameFromTheSameSeed();
    void optionsThatMakeNoSense_data();
    void optionsThatMakeNoSense();
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}

/// A loader whose port has been opened.
struct Line {
    explicit Line(const QStringList &options = {})
        : log([this](const QString &line) { lines << line; }),
          loader(*readLoaderOptions(QStringList{qs("loader")} + options), log)
    {
        if (!loader.start())
            qFatal("no port");
        port.setPortName(loader.portName());
        if (!opens(port) || !comesTrue([this] { return has("opened:"); }))
            qFatal("the port does not open");
        QObject::connect(&port, &QSerialPort::readyRead, &port, [this] { received += port.readAll(); });
    }

    [[nodiscard]] bool has(const char *line) const { return lines.contains(qs(line)); }
    void send(const char *hex) { port.write(QByteArray::fromHex(hex)); }
    void enter()
    {
        send("5020");
        if (!comesTrue([this] { return received == "\x14\x10"; }))
            qFatal("no programming mode");
        received.clear();
    }

    QStringList lines;
    EventLog log;
    Loader loader;
    QSerialPort port;
    QByteArray received;
};
} // namespace

void TestLinesimLoader::usageOffersIt()
{
    QVERIFY(usage().contains(qs("\n  loader ")));
    QCOMPARE(runSubcommand({qs("linesim"), qs("loader"), qs("--fault"), qs("no")}), 2);
}

void TestLinesimLoader::portIsToldWithItsSerial()
{
    const Line line;
    QCOMPARE(line.lines.first(), qs("port: 10000001=") + line.loader.portName());
    const QTemporaryDir directory;
    const QString path = directory.filePath(qs("port"));
    const Line other({qs("--serial"), qs("30000007"), qs("--port"), path});
    QCOMPARE(other.lines.first(), qs("port: 30000007=") + path);
}

void TestLinesimLoader::commandIsWrittenDownAndAnswered_data()
{
    QTest::addColumn<QByteArray>("sent");
    QTest::addColumn<QString>("line");
    row("sync", QByteArray("3020"), qs("command: 30 20"));
    row("address", QByteArray("55800020"), qs("command: 55 80 00 20"));
    row("leave", QByteArray("5120"), qs("command: 51 20"));
}

void TestLinesimLoader::commandIsWrittenDownAndAnswered()
{
    QFETCH(QByteArray, sent);
    QFETCH(QString, line);
    Line one;
    one.enter();
    one.send(sent.constData());
    QTRY_COMPARE(one.received, QByteArray("\x14\x10"));
    QCOMPARE(one.lines.last(), line);
    QCOMPARE(one.log.violations, 0);
}

void TestLinesimLoader::commandInPiecesIsOne()
{
    Line line;
    line.enter();
    line.send("55000020");
    QTRY_COMPARE(line.received.size(), 2);
    for (const char *piece : {"64", "00", "02", "46", "20", "14"}) {
        line.send(piece);
        QTRY_COMPARE(line.port.bytesToWrite(), 0);
    }
    line.send("20");
    QTRY_COMPARE(line.received.size(), 4);
    QCOMPARE(line.lines.last(), qs("command: 64 00 02 46 20 14 20"));
    QCOMPARE(line.log.violations, 0);
}

void TestLinesimLoader::againstTheRulesIsAViolation_data()
{
    QTest::addColumn<QByteArray>("sent");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QByteArray>("answer");
    const QByteArray good("\x14\x10"), unknown("\x15");
    row("unknown", QByteArray("99"), qs("violation: no command"), unknown);
    row("end mark missing", QByteArray("3021"), qs("violation: no command"), unknown);
    row("not entered", QByteArray("55000020"), qs("violation: not in programming mode"), good);
    row("left already", QByteArray("502051205120"), qs("violation: not in programming mode"),
        good + good + good);
    row("no address", QByteArray("50206400014610205120"),
        qs("violation: page without address, of another memory or too long"), good + good + good);
}

void TestLinesimLoader::againstTheRulesIsAViolation()
{
    QFETCH(QByteArray, sent);
    QFETCH(QString, line);
    QFETCH(QByteArray, answer);
    Line one;
    one.send(sent.constData());
    QTRY_COMPARE(one.received, answer);
    QVERIFY(one.lines.contains(line));
    QCOMPARE(one.log.violations, 1);
}

void TestLinesimLoader::faultAnswersAtItsCommandOnly()
{
    Line line({qs("--fault"), qs("wrong:sync:1")});
    line.send("302030203020");
    QTRY_COMPARE(line.received, QByteArray::fromHex("141014111410"));
    QCOMPARE(line.lines.count(qs("command: 30 20")), 3);
}

void TestLinesimLoader::lateAnswerComes()
{
    Line line({qs("--fault"), qs("late:sync:0")});
    line.send("3020");
    line.send("3020");
    QTRY_COMPARE(line.received, QByteArray::fromHex("14101410"));
}

void TestLinesimLoader::unplugTakesThePortAway()
{
    Line line({qs("--fault"), qs("unplug:enter")});
    line.send("5020");
    QTRY_VERIFY(line.has("unplugged:"));
    QVERIFY(line.loader.portName().isEmpty());
    line.loader.run(qs("plug"));
    QVERIFY(!line.loader.portName().isEmpty());
}

void TestLinesimLoader::faultFromTheInput()
{
    Line line;
    line.loader.run(qs("fault wrong:sync"));
    line.send("3020");
    QTRY_COMPARE(line.received, QByteArray("\x14\x11"));
    line.loader.run(qs("fault wrong"));
    QCOMPARE(line.lines.last(), qs("error: fault wrong"));
}

void TestLinesimLoader::rubbishHoldsNoAnswer()
{
    Line line({qs("--rubbish"), qs("2000")});
    line.send("3020");
    QTRY_COMPARE(line.received.size(), 2002);
    QCOMPARE(line.received.indexOf('\x14'), 2000);
    QVERIFY(line.received.endsWith("\x14\x10"));
}

void TestLinesimLoader::noiseIsTheSameFromTheSameSeed()
{
    QByteArray answers[3];
    const char *seeds[] = {"5", "5", "6"};
    for (int i = 0; i < 3; ++i) {
        Line line({qs("--noise"), qs(seeds[i])});
        line.send("30203020302030203020302030203020");
        QTRY_COMPARE(line.lines.count(qs("command: 30 20")), 8);
        while (line.port.waitForReadyRead(50)) // all of it is on its way
            line.received += line.port.readAll();
        answers[i] = line.received;
    }
    QCOMPARE(answers[0], answers[1]);
    QVERIFY(answers[0] != answers[2]);
}

void TestLinesimLoader::optionsThatMakeNoSense_data()
{
    QTest::addColumn<QStringList>("options");
    for (const char *fault : {"", "wrong", "loud:page", "wrong:pages", "wrong:page:", "wrong:page:-1",
                              "wrong:page:x", "wrong:page:1:2"})
        row(fault, QStringList{qs("--fault"), qs(fault)});
    row("rubbish", QStringList{qs("--rubbish"), qs("-1")});
    row("noise", QStringList{qs("--noise"), qs("x")});
    row("word", QStringList{qs("word")});
    row("unknown", QStringList{qs("--listen"), qs("1")});
}

void TestLinesimLoader::optionsThatMakeNoSense()
{
    QFETCH(QStringList, options);
    QVERIFY(!readLoaderOptions(QStringList{qs("loader")} + options));
}

QTEST_GUILESS_MAIN(TestLinesimLoader)
#include "test_linesim_loader.moc"
#include "tests/support/patience.h"
