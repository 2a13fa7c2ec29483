// The adapter at its serial port, with the serial port class of the workstation at the other end and a far
// end behind it.

#include "tests/support/row.h"
#include "tests/support/serial_ports.h"
#include "tools/linesim/adapter/adapter_options.h"
#include "tools/linesim/centre/centre.h"
#include "tools/linesim/network/channel_switch.h"
#include "tools/linesim/peer/peer.h"

#include <QSerialPort>
#include <QTemporaryDir>
#include <QtTest>

class TestLinesimAdapterPort : public QObject
{
    Q_OBJECT

private slots:
    void portIsAnnounced();
    void farEndIsConnectedOnceTheProgramListens();
    void telegramsPassBothWays();
    void echoFollowsEachCode();
    void centreReadsTheRequestOfAFiveBitLine();
    void switchTakesADialledCall();
    void switchTakesANumberDialledAsText();
    void goodbyeEndsTheConnection();
    void closeWithoutGoodbyeIsABreach();
    void brokenRuleIsTold_data();
    void brokenRuleIsTold();
    void unpluggedPortComesBackUnderItsName();
    void versionIsDueBehindALossIfAllowed();
    void droppedLineComesBackByItself();
    void closedLineGoesOnceAllIsSent();
    void silenceOfTheAdapterEnds();
    void faultsAreCommands_data();
    void faultsAreCommands();
    void silencedAdapterSaysNothing();
    void lostEchoesAreCounted();
    void garbageIsRepeatedByItsSeed();
    void textWithoutAProgramIsNotSent();
    void portThatCannotBeMadeEndsIt();
};

namespace
{
QByteArray hex(const char *digits)
{
    return QByteArray::fromHex(digits);
}

/// A far end behind an adapter with a program's serial port.
template <class End> struct Line {
    template <class Options>
    Line(const AdapterOptions &adapter,
         Options (*read)(const QStringList &, const std::optional<AdapterLine::Settings> &))
        : log([this](const QString &line) { lines << line; }), end(*read(adapter.farEnd, adapter.line), log)
    {
        if (!end.start())
            qFatal("there is no port");
        QObject::connect(&port, &QSerialPort::readyRead, [this] { received += port.readAll(); });
    }

    void open()
    {
        port.setPortName(end.place());
        port.setBaudRate(QSerialPort::Baud9600);
        if (!opens(port))
            qFatal("the port does not open");
    }
    /// Opens the port and comes to answer statuses, by \a mode.
    void talk(const char *mode = "67")
    {
        open();
        QTRY_VERIFY(!received.isEmpty());
        port.write(hex(mode));
        QTRY_VERIFY(received.count('\x3f') > 1);
        port.write(hex(mode));
        QTRY_VERIFY(has("ready:"));
        received.clear();
    }
    [[nodiscard]] bool has(const char *line) const { return lines.contains(QString::fromUtf8(line)); }
    [[nodiscard]] QStringList breaches() const { return lines.filter(QStringLiteral("violation: ")); }
    /// What came over the line: codes and calls, without statuses and echoes.
    [[nodiscard]] QByteArray fromTheLine() const
    {
        QByteArray line;
        for (const char byte : received)
            if ((quint8(byte) & 0xE0) != 0x20 && quint8(byte) < 0x80)
                line += byte;
        return line.toHex();
    }

    QStringList lines;
    EventLog log;
    End end;
    QSerialPort port;
    QByteArray received;
};

AdapterOptions options(const QStringList &arguments)
{
    const auto read = readAdapterOptions(QStringList{QStringLiteral("adapter"), QStringLiteral("--status"),
                                                     QStringLiteral("40"), QStringLiteral("--answer"),
                                                     QStringLiteral("60000")} +
                                         arguments);
    if (!read)
        qFatal("the options are not understood");
    return *read;
}

struct PeerLine : Line<Peer> {
    explicit PeerLine(const QStringList &adapter = {}, const QStringList &peer = {})
        : Line(options(adapter + QStringList("peer") + peer), &readPeerOptions)
    {
    }
};
} // namespace

void TestLinesimAdapterPort::portIsAnnounced()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("port"));
    const PeerLine line({"--port", path, "--serial", "30000007"});
    QCOMPARE(line.lines, QStringList("port: 30000007=" + path));
    QCOMPARE(line.end.place(), path);
}

void TestLinesimAdapterPort::farEndIsConnectedOnceTheProgramListens()
{
    PeerLine line({}, {"--do", "text Б"});
    line.open();
    QTRY_VERIFY(!line.lines.filter(QStringLiteral("connected: ")).isEmpty());
    QTRY_VERIFY(line.received.contains('\x3f'));
    line.port.write(hex("67"));
    QTRY_VERIFY(line.has("mode: 67 200 baud"));
    line.port.write(hex("5b"));
    QTRY_VERIFY(line.received.contains(hex("170b0b")));
    QVERIFY(!line.has("ready:"));
    line.received.clear();
    line.port.write(hex("67"));
    QTRY_VERIFY(line.has("ready:"));
    QTRY_COMPARE(line.fromTheLine(), QByteArray("0019"));
    QVERIFY(line.breaches().isEmpty());
}

void TestLinesimAdapterPort::telegramsPassBothWays()
{
    const QTemporaryDir sent, kept;
    QFile file(sent.filePath(QStringLiteral("a")));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("Б1\n") > 0);
    file.close();
    PeerLine line({}, {"--send", sent.path(), "--store", kept.path()});
    line.talk();
    QTRY_COMPARE(line.fromTheLine(), QByteArray("00191b170802"));
    line.port.write(hex("00110e110e04")); // ЗЦЗЦ
    line.port.write(hex("190802"));       // Б and a line end
    line.port.write(hex("0c0c0c0c0404")); // НННН
    QTRY_VERIFY(line.has("telegram: 001.txt 14"));
    QFile telegram(QDir(kept.path()).filePath(QStringLiteral("001.txt")));
    QVERIFY(telegram.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(telegram.readAll()), QStringLiteral("ЗЦЗЦ Б\r\nНННН  "));
    QFile stream(QDir(kept.path()).filePath(QStringLiteral("stream.bin")));
    QVERIFY(stream.open(QIODevice::ReadOnly));
    QCOMPARE(stream.readAll().toHex(), QByteArray("00110e110e041908020c0c0c0c0404"));
    QVERIFY(line.breaches().isEmpty());
}

void TestLinesimAdapterPort::echoFollowsEachCode()
{
    PeerLine line;
    line.talk();
    line.port.write(hex("00191b17"));
    QByteArray echoes;
    QTRY_VERIFY(line.received.contains('\x97'));
    for (const char byte : qAsConst(line.received))
        if (quint8(byte) >= 0x80)
            echoes += byte;
    QCOMPARE(echoes.toHex(), QByteArray("80999b97"));
}

void TestLinesimAdapterPort::centreReadsTheRequestOfAFiveBitLine()
{
    Line<Centre> line(options({"centre"}), &readCentreOptions);
    line.talk();
    line.port.write(hex("00111104")); // "|ЗЗ "
    QTRY_VERIFY(line.has("request:"));
    QTRY_VERIFY(line.fromTheLine().size() >= 44);
    // "\r\nЗЦЗЦ ВАШ 000 ": line end, letters, ЗЦЗЦ, blank, ВА, figures, Ш, blank, 000, blank
    QVERIFY(line.fromTheLine().startsWith("080200110e110e0413031b1a0416161604"));
    QVERIFY(line.breaches().isEmpty());
}

void TestLinesimAdapterPort::switchTakesADialledCall()
{
    Line<ChannelSwitch> line(options({"switch", "--subscriber", "12:12 |ЗАРЯ"}), &readChannelSwitchOptions);
    line.talk("69");
    line.port.write(hex("435d42010240")); // "@C@N12@"
    QTRY_VERIFY(line.has("dialled: 12"));
    QTRY_VERIFY(line.fromTheLine().startsWith("44")); // "@E"
    QTRY_VERIFY(line.has("up: to 12"));
    line.port.write(hex("1b09")); // "#*"
    QTRY_VERIFY(line.has("question: 12"));
    line.port.write(hex("41"));
    QTRY_VERIFY(line.has("down: 12 by the terminal"));
    QTRY_VERIFY(line.fromTheLine().endsWith("41"));
    QVERIFY(line.breaches().isEmpty());
}

void TestLinesimAdapterPort::switchTakesANumberDialledAsText()
{
    Line<ChannelSwitch> line(options({"switch", "--subscriber", "123:123 |ЗАРЯ"}), &readChannelSwitchOptions);
    line.talk("69");
    line.port.write(hex("44"));                                     // "@E"
    QTRY_COMPARE(line.fromTheLine(), QByteArray("08021f1a03041b")); // "\r\n&GA #", & in place already
    line.port.write(hex("1b171301"));                               // "#123"
    QTRY_VERIFY(line.has("dialled: 123"));
    QTRY_VERIFY(line.has("up: to 123"));
    QVERIFY(line.breaches().isEmpty());
}

void TestLinesimAdapterPort::goodbyeEndsTheConnection()
{
    PeerLine line;
    line.talk();
    line.port.write(hex("60"));
    line.port.flush();
    line.port.close();
    QTRY_VERIFY(line.has("closed: by the program"));
    QVERIFY(line.has("goodbye:"));
    QVERIFY(line.breaches().isEmpty());
    line.lines.clear();
    line.talk(); // and the next one begins
    QVERIFY(line.breaches().isEmpty());
}

void TestLinesimAdapterPort::closeWithoutGoodbyeIsABreach()
{
    PeerLine line;
    line.talk();
    line.port.close();
    QTRY_COMPARE(line.breaches(), QStringList("violation: closed without a goodbye"));
    line.end.run(QStringLiteral("allow-kill"));
    line.lines.clear();
    line.talk();
    line.port.close();
    QTRY_VERIFY(line.has("closed: by the program"));
    QVERIFY(line.breaches().isEmpty());
}

void TestLinesimAdapterPort::brokenRuleIsTold_data()
{
    QTest::addColumn<QByteArray>("mode");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("breach");
    row("status without an answer", QByteArray("67"), QByteArray(), "status not answered in 300 ms");
    row("sixteen characters of fifteen", QByteArray("67"), QByteArray("03").repeated(16),
        "1 characters more than granted");
    row("another mode", QByteArray("66"), QByteArray(), "mode 66 100 baud instead of 67 200 baud");
    row("version", QByteArray("67"), QByteArray("5b"), "version asked when it was not due");
    row("goodbye", QByteArray("67"), QByteArray("6067"), "goodbye without a close");
}

void TestLinesimAdapterPort::brokenRuleIsTold()
{
    QFETCH(QByteArray, mode);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, breach);
    PeerLine line({"--answer", "300"});
    line.talk(mode.constData());
    line.port.write(QByteArray::fromHex(bytes));
    QTRY_VERIFY(line.breaches().contains(QStringLiteral("violation: ") + breach));
    QVERIFY(line.log.violations > 0);
}

void TestLinesimAdapterPort::unpluggedPortComesBackUnderItsName()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("port"));
    PeerLine line({"--port", path});
    line.talk();
    line.end.run(QStringLiteral("unplug"));
    QVERIFY(line.has("closed: unplugged"));
    QVERIFY(!QFile::exists(path));
    QTRY_VERIFY(line.port.error() != QSerialPort::NoError);
    line.port.close();
    line.end.run(QStringLiteral("plug"));
    QCOMPARE(line.end.place(), path);
    line.lines.clear();
    line.talk();
    line.port.write(hex("5b"));
    QTRY_COMPARE(line.breaches(), QStringList("violation: version asked when it was not due"));
}

void TestLinesimAdapterPort::versionIsDueBehindALossIfAllowed()
{
    PeerLine line;
    line.talk();
    line.end.run(QStringLiteral("unplug"));
    line.port.close();
    line.end.run(QStringLiteral("allow-version"));
    line.end.run(QStringLiteral("plug"));
    line.open();
    QTRY_VERIFY(line.received.contains('\x3f'));
    line.port.write(hex("675b"));
    QTRY_VERIFY(line.received.contains(hex("170b0b")));
    QVERIFY(line.breaches().isEmpty());
}

void TestLinesimAdapterPort::droppedLineComesBackByItself()
{
    PeerLine line;
    line.talk();
    line.end.run(QStringLiteral("drop"));
    QVERIFY(line.has("closed: unplugged"));
    QCOMPARE(line.lines.filter(QStringLiteral("port: ")).size(), 1);
    QTRY_COMPARE(line.lines.filter(QStringLiteral("port: ")).size(), 2);
}

void TestLinesimAdapterPort::closedLineGoesOnceAllIsSent()
{
    PeerLine line;
    line.talk();
    line.end.run(QStringLiteral("text ББББ"));
    line.end.run(QStringLiteral("close"));
    QVERIFY(!line.has("closed: unplugged"));
    QTRY_VERIFY(line.has("closed: unplugged"));
    QCOMPARE(line.fromTheLine(), QByteArray("0019191919"));
}

void TestLinesimAdapterPort::silenceOfTheAdapterEnds()
{
    PeerLine line({"--silent"});
    line.open();
    QTRY_VERIFY(!line.lines.filter(QStringLiteral("connected: ")).isEmpty());
    QVERIFY(line.received.isEmpty());
    line.end.run(QStringLiteral("speak"));
    QTRY_VERIFY(line.received.contains('\x3f'));
}

void TestLinesimAdapterPort::faultsAreCommands_data()
{
    QTest::addColumn<QString>("event");
    QTest::addColumn<QByteArray>("bytes");
    row("break", "broken:", QByteArray("4f"));
    row("mend", "mended:", QByteArray());
    row("no-signal", "no signal:", QByteArray("5e"));
    row("signal", "signal:", QByteArray());
    row("silence", "silent:", QByteArray());
    row("lose-echo 3", "echoes to lose: 3", QByteArray());
    row("no-credit 900", "no credit: 900", QByteArray("30"));
    row("garbage 9 1", "garbage: 9", QByteArray());
    row("allow-version", "version allowed:", QByteArray());
    row("raw c3", "", QByteArray("c3"));
    row("dance", "error: no command dance", QByteArray());
    row("windows on", "error: no command windows on", QByteArray());
}

void TestLinesimAdapterPort::faultsAreCommands()
{
    QFETCH(QString, event);
    QFETCH(QByteArray, bytes);
    PeerLine line;
    line.talk();
    line.end.run(QString::fromLatin1(QTest::currentDataTag()));
    QVERIFY(event.isEmpty() || line.lines.contains(event));
    line.port.write(hex("67"));
    QTRY_VERIFY(line.received.contains(QByteArray::fromHex(bytes)));
}

void TestLinesimAdapterPort::silencedAdapterSaysNothing()
{
    PeerLine line;
    line.talk();
    line.end.run(QStringLiteral("silence"));
    QTest::qWait(50); // what is under way
    line.received.clear();
    line.port.write(hex("6703")); // neither an echo nor a status
    line.end.run(QStringLiteral("text Б"));
    QTest::qWait(300);
    QCOMPARE(line.received.toHex(), QByteArray());
    line.end.run(QStringLiteral("speak"));
    QTRY_VERIFY(line.received.contains('\x3f'));
}

void TestLinesimAdapterPort::lostEchoesAreCounted()
{
    PeerLine line;
    line.talk();
    line.end.run(QStringLiteral("lose-echo 3"));
    line.port.write(hex("00191b17"));
    QTRY_VERIFY(line.received.contains('\x97'));
    for (const char lost : {'\x80', '\x99', '\x9b'})
        QVERIFY(!line.received.contains(lost));
}

void TestLinesimAdapterPort::garbageIsRepeatedByItsSeed()
{
    PeerLine line;
    line.talk();
    QTRY_COMPARE(line.received.size(), 1); // a status; the next one waits for its answer
    for (const char *command : {"garbage 9 1", "garbage 9 1", "garbage 9 2"})
        line.end.run(QString::fromLatin1(command));
    QTRY_COMPARE(line.received.size(), 28);
    QCOMPARE(line.received.mid(1, 9), line.received.mid(10, 9));
    QVERIFY(line.received.mid(10, 9) != line.received.mid(19, 9));
}

void TestLinesimAdapterPort::textWithoutAProgramIsNotSent()
{
    PeerLine line;
    line.end.run(QStringLiteral("text А\\r\\n"));
    QVERIFY(line.has("not sent: А\\r\\n"));
}

void TestLinesimAdapterPort::portThatCannotBeMadeEndsIt()
{
    const AdapterOptions adapter = options({"--port", "/nonexistent/port", "peer"});
    QStringList lines;
    EventLog log([&lines](const QString &line) { lines << line; });
    Peer peer(*readPeerOptions(adapter.farEnd, adapter.line), log);
    QVERIFY(!peer.start());
    QCOMPARE(lines, QStringList("error: no port /nonexistent/port"));
}

QTEST_GUILESS_MAIN(TestLinesimAdapterPort)
#include "test_linesim_adapter_port.moc"
