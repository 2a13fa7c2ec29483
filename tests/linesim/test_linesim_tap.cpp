// A tap in a real line: two sockets or two serial ports with it between them, and what it has recorded played
// back.

#include "tests/support/row.h"
#include "tests/support/serial_ports.h"
#include "tools/linesim/record/replay.h"
#include "tools/linesim/record/tap.h"

#include <QRandomGenerator>
#include <QSerialPort>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QtTest>

class TestLinesimTap : public QObject
{
    Q_OBJECT

private slots:
    void everyByteOfBothDirectionsIsRecorded_data();
    void everyByteOfBothDirectionsIsRecorded();
    void hangingUpReachesTheOtherEnd_data();
    void hangingUpReachesTheOtherEnd();
    void callerIsLetGoIfNobodyAnswers();
    void secondCallerIsRefused();
    void cutEndsBothSides();
    void cutComesBehindTheByteThatItIsSetOn_data();
    void cutComesBehindTheByteThatItIsSetOn();
    void portsAreTapped();
    void adapterPulledOutTakesThePortAlong();
    void recordIsPlayedBack_data();
    void recordIsPlayedBack();
    void replayTellsWhereTheWorkstationDiffers();
    void replayCallsTheWorkstation();
    void optionsAreUnderstood_data();
    void optionsAreUnderstood();
};

namespace
{
/// What one side of a record said, of all connections.
QByteArray saidBy(LineRecord::Side side, const LineRecord &record)
{
    QByteArray bytes;
    for (const LineRecord::Event &event : record.events)
        if (event.side == side)
            bytes += event.bytes;
    return bytes;
}

/// A log that a test reads.
struct Log : EventLog {
    Log() : EventLog([this](const QString &line) { lines << line; }) {}
    [[nodiscard]] QString rest(const QString &event) const
    {
        const QStringList found = lines.filter(event);
        return found.isEmpty() ? QString() : found.first().mid(event.size());
    }
    QStringList lines;
};

/// A tap over TCP between a caller and an end that waits; and what both have heard.
class TcpTap
{
public:
    explicit TcpTap(bool workstationListens = false)
    {
        if (!waiting.listen(QHostAddress::LocalHost))
            qFatal("no port");
        QObject::connect(&waiting, &QTcpServer::newConnection, [this] {
            called = waiting.nextPendingConnection();
            QObject::connect(called, &QTcpSocket::readyRead, [this] { heardByCalled += called->readAll(); });
        });
        QObject::connect(&caller, &QTcpSocket::readyRead, [this] { heardByCaller += caller.readAll(); });
        options.record = directory.filePath(QStringLiteral("record"));
        options.tcp.host = QStringLiteral("127.0.0.1");
        options.tcp.hostPort = waiting.serverPort();
        options.tcp.workstationListens = workstationListens;
        tap = std::make_unique<Tap>(options, log);
        if (!tap->start())
            qFatal("no tap");
    }

    void call() { caller.connectToHost(QHostAddress::LocalHost, port()); }
    [[nodiscard]] quint16 port() const { return log.rest(QStringLiteral("listening: ")).toUShort(); }
    [[nodiscard]] QByteArray text() const
    {
        QFile file(options.record);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    [[nodiscard]] LineRecord record() const
    {
        QString error;
        const auto read = LineRecord::parse(text(), error);
        if (!read)
            qFatal("%s", qPrintable(error));
        return *read;
    }

    QTemporaryDir directory;
    TapOptions options;
    Log log;
    QTcpServer waiting;
    QTcpSocket caller;
    QTcpSocket *called = nullptr;
    QByteArray heardByCaller, heardByCalled;
    std::unique_ptr<Tap> tap;
};

QByteArray anyBytes(QRandomGenerator &random, int count)
{
    QByteArray bytes;
    while (bytes.size() < count)
        bytes += char(random.bounded(256));
    return bytes;
}

void bothRoles()
{
    QTest::addColumn<bool>("workstationListens");
    row("the workstation calls", false);
    row("the far end calls", true);
}
} // namespace

void TestLinesimTap::everyByteOfBothDirectionsIsRecorded_data()
{
    bothRoles();
}

// Pieces of any length, some before the other end has been reached.
void TestLinesimTap::everyByteOfBothDirectionsIsRecorded()
{
    QFETCH(bool, workstationListens);
    TcpTap line(workstationListens);
    QRandomGenerator random(1);
    QByteArray byCaller = anyBytes(random, 1000);
    QByteArray byCalled;
    line.call();
    line.caller.write(byCaller);
    QTRY_VERIFY(line.called);
    for (int i = 0; i < 200; ++i) {
        QTcpSocket *socket = random.bounded(2) ? &line.caller : line.called;
        const QByteArray bytes = anyBytes(random, random.bounded(1, 3000));
        (socket == line.called ? byCalled : byCaller) += bytes;
        socket->write(bytes);
        QCoreApplication::processEvents();
    }
    QTRY_COMPARE(line.heardByCalled, byCaller);
    QTRY_COMPARE(line.heardByCaller, byCalled);
    const LineRecord record = line.record();
    const auto callerSide = workstationListens ? LineRecord::FarEnd : LineRecord::Workstation;
    QCOMPARE(saidBy(callerSide, record), byCaller);
    QCOMPARE(saidBy(workstationListens ? LineRecord::Workstation : LineRecord::FarEnd, record), byCalled);
    QCOMPARE(record.events.first().kind, LineRecord::Open);
    QCOMPARE(record.events.first().side, callerSide);
}

void TestLinesimTap::hangingUpReachesTheOtherEnd_data()
{
    bothRoles();
}

void TestLinesimTap::hangingUpReachesTheOtherEnd()
{
    QFETCH(bool, workstationListens);
    TcpTap line(workstationListens);
    for (int connection = 1; connection <= 2; ++connection) {
        line.called = nullptr;
        line.call();
        QTRY_VERIFY(line.called);
        QTcpSocket *first = connection == 1 ? &line.caller : line.called;
        QTcpSocket *other = connection == 1 ? line.called : &line.caller;
        QTRY_COMPARE(line.caller.state(), QAbstractSocket::ConnectedState);
        first->write("LAST WORDS");
        first->disconnectFromHost();
        QTRY_COMPARE(other->state(), QAbstractSocket::UnconnectedState);
        QTRY_COMPARE(line.log.lines.filter(QStringLiteral("closed: ")).size(), connection);
    }
    QCOMPARE(line.heardByCalled, QByteArray("LAST WORDS"));
    QCOMPARE(line.heardByCaller, QByteArray("LAST WORDS"));
    QByteArrayList said;
    for (const LineRecord::Event &event : line.record().events)
        said << recordLine(event).mid(9);
    const QByteArray caller = workstationListens ? "F" : "W", called = workstationListens ? "W" : "F";
    const QByteArray words = " 4C 41 53 54 20 57 4F 52 44 53";
    QCOMPARE(said,
             (QByteArrayList{"1 " + caller + " open", "1 " + caller + words, "1 " + caller + " close",
                             "2 " + caller + " open", "2 " + called + words, "2 " + called + " close"}));
}

void TestLinesimTap::callerIsLetGoIfNobodyAnswers()
{
    TcpTap line;
    line.waiting.close();
    line.call();
    QTRY_COMPARE(line.record().events.size(), 2);
    QTRY_COMPARE(line.caller.state(), QAbstractSocket::UnconnectedState);
    QCOMPARE(line.record().events[1].kind, LineRecord::Close);
    QCOMPARE(line.record().events[1].side, LineRecord::FarEnd);
}

void TestLinesimTap::secondCallerIsRefused()
{
    TcpTap line;
    line.call();
    QTRY_VERIFY(line.called);
    QTcpSocket second;
    second.connectToHost(QHostAddress::LocalHost, line.port());
    QTRY_COMPARE(line.log.rest(QStringLiteral("refused: ")), QStringLiteral("a second connection"));
    QTRY_COMPARE(second.state(), QAbstractSocket::UnconnectedState);
    line.caller.write("A");
    QTRY_COMPARE(line.heardByCalled, QByteArray("A"));
}

void TestLinesimTap::cutEndsBothSides()
{
    TcpTap line;
    line.call();
    QTRY_VERIFY(line.called);
    line.tap->run(QStringLiteral("cut"));
    QTRY_COMPARE(line.called->state(), QAbstractSocket::UnconnectedState);
    QTRY_COMPARE(line.caller.state(), QAbstractSocket::UnconnectedState);
    QCOMPARE(line.record().events.last().kind, LineRecord::Close);
    line.tap->run(QStringLiteral("cut"));
    QCOMPARE(line.record().events.size(), 2);
}

void TestLinesimTap::cutComesBehindTheByteThatItIsSetOn_data()
{
    bothRoles();
}

// Of both sides and of two connections; the rest of what came with it is lost, the next line is whole.
void TestLinesimTap::cutComesBehindTheByteThatItIsSetOn()
{
    QFETCH(bool, workstationListens);
    TcpTap line(workstationListens);
    line.tap->run(QStringLiteral("cut 9"));
    line.call();
    line.caller.write("abc");
    QTRY_COMPARE(line.heardByCalled, QByteArray("abc"));
    line.called->write("de");
    QTRY_COMPARE(line.heardByCaller, QByteArray("de"));
    line.caller.disconnectFromHost();
    QTRY_COMPARE(line.log.lines.filter(QStringLiteral("closed: 1")).size(), 1);
    QTRY_COMPARE(line.caller.state(), QAbstractSocket::UnconnectedState);

    line.heardByCalled.clear();
    line.call();
    line.caller.write("fghijk");
    QTRY_COMPARE(line.caller.state(), QAbstractSocket::UnconnectedState);
    QTRY_COMPARE(line.heardByCalled, QByteArray("fghi"));
    QCOMPARE(line.log.lines.filter(QStringLiteral("cut:")).size(), 1);
    QCOMPARE(line.record().events.last().kind, LineRecord::Close);

    line.heardByCalled.clear();
    line.call();
    line.caller.write("lmnopqrstuvwxyz");
    QTRY_COMPARE(line.heardByCalled, QByteArray("lmnopqrstuvwxyz"));
}

void TestLinesimTap::portsAreTapped()
{
    const QTemporaryDir directory;
    PseudoTerminal adapter;
    QByteArray heard;
    connect(&adapter, &PseudoTerminal::received, &adapter, [&](const QByteArray &bytes) { heard += bytes; });
    QVERIFY(adapter.plug());
    TapOptions options;
    options.record = directory.filePath(QStringLiteral("record"));
    options.port = TappedPort::Settings{QStringLiteral("7"), QString(), adapter.portName()};
    Log log;
    Tap tap(options, log);
    QVERIFY(tap.start());
    QSerialPort workstation;
    workstation.setPortName(log.rest(QStringLiteral("port: 7=")));
    workstation.setBaudRate(QSerialPort::Baud19200);
    QVERIFY(opens(workstation));
    QTRY_VERIFY(adapter.isOpen());
    workstation.write(QByteArray("\x00\x11\x13\xFF\r\n", 6)); // what a line discipline would change
    QTRY_COMPARE(heard, QByteArray("\x00\x11\x13\xFF\r\n", 6));
    QCOMPARE(adapter.speed(), 19200);
    adapter.write(QByteArray("\x03\x00\x7F\n", 4));
    QTRY_COMPARE(workstation.bytesAvailable(), 4);
    QCOMPARE(workstation.readAll(), QByteArray("\x03\x00\x7F\n", 4));
    workstation.close();
    QTRY_VERIFY(!adapter.isOpen());
    QFile file(options.record);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QByteArrayList said;
    for (const QByteArray &text : file.readAll().split('\n').mid(1))
        said << text.mid(9);
    QCOMPARE(said, (QByteArrayList{"1 W open", "1 W 00 11 13 FF 0D 0A", "1 F 03 00 7F 0A", "1 W close", ""}));
}

void TestLinesimTap::adapterPulledOutTakesThePortAlong()
{
    const QTemporaryDir directory;
    PseudoTerminal adapter(directory.filePath(QStringLiteral("adapter")));
    QVERIFY(adapter.plug());
    TapOptions options;
    options.record = directory.filePath(QStringLiteral("record"));
    options.port = TappedPort::Settings{QStringLiteral("7"), directory.filePath(QStringLiteral("port")),
                                        adapter.portName()};
    Log log;
    Tap tap(options, log);
    QVERIFY(tap.start());
    QSerialPort workstation;
    workstation.setPortName(options.port->port);
    QVERIFY(opens(workstation));
    QTRY_VERIFY(adapter.isOpen());
    adapter.unplug();
    QTRY_VERIFY(workstation.error() != QSerialPort::NoError || !QFile::exists(options.port->port));
    workstation.close();
    QVERIFY(adapter.plug());
    QTRY_COMPARE(log.lines.filter(QStringLiteral("port: ")).size(), 2);
    QVERIFY(opens(workstation));
    QTRY_VERIFY(adapter.isOpen());
}

void TestLinesimTap::recordIsPlayedBack_data()
{
    bothRoles();
}

namespace
{
/// Starts a replay of \a text and tells its end.
struct Player {
    Player(const QByteArray &text, const TcpEnd::Settings &tcp)
    {
        QString error;
        options.record = *LineRecord::parse(text, error);
        options.player.speed = 0;
        options.tcp = tcp;
        options.tcp.callsAgain = false;
        replay = std::make_unique<Replay>(options, log);
        QObject::connect(replay.get(), &Commanded::quit, [this] { hasEnded = true; });
        if (!replay->start())
            qFatal("no replay");
    }
    ReplayOptions options;
    Log log;
    std::unique_ptr<Replay> replay;
    bool hasEnded = false;
};

const QByteArray dialogue = "0.000000 1 W open\n0.100000 1 F 41\n0.200000 1 W 61\n0.300000 1 F 42\n";
} // namespace

// A dialogue through the tap; then the replay in place of the far end, and the workstation alone.
void TestLinesimTap::recordIsPlayedBack()
{
    QFETCH(bool, workstationListens);
    TcpTap line(workstationListens);
    line.call();
    QTRY_VERIFY(line.called);
    QTcpSocket *workstation = workstationListens ? line.called : &line.caller;
    QTcpSocket *farEnd = workstationListens ? &line.caller : line.called;
    QByteArray &heard = workstationListens ? line.heardByCalled : line.heardByCaller;
    QByteArray &heardFar = workstationListens ? line.heardByCaller : line.heardByCalled;
    farEnd->write("QUESTION");
    QTRY_COMPARE(heard, QByteArray("QUESTION"));
    workstation->write("ANSWER");
    QTRY_COMPARE(heardFar, QByteArray("ANSWER"));
    farEnd->write("THANKS");
    QTRY_COMPARE(heard, QByteArray("QUESTIONTHANKS"));

    TcpEnd::Settings tcp;
    QTcpServer server;
    QTcpSocket client;
    QTcpSocket *again = &client;
    tcp.listens = !workstationListens;
    if (workstationListens) {
        QVERIFY(server.listen(QHostAddress::LocalHost));
        tcp.port = server.serverPort();
    }
    Player player(line.text(), tcp);
    if (workstationListens) {
        QTRY_VERIFY(server.hasPendingConnections());
        again = server.nextPendingConnection();
    } else {
        client.connectToHost(QHostAddress::LocalHost,
                             player.log.rest(QStringLiteral("listening: ")).toUShort());
    }
    QTRY_COMPARE(again->bytesAvailable(), 8);
    QCOMPARE(again->readAll(), QByteArray("QUESTION"));
    again->write("ANSWER");
    QTRY_COMPARE(again->bytesAvailable(), 6);
    QCOMPARE(again->readAll(), QByteArray("THANKS"));
    QTRY_VERIFY(player.hasEnded);
    QCOMPARE(player.log.lines.last(), QStringLiteral("same:"));
    QCOMPARE(player.log.violations, 0);
}

void TestLinesimTap::replayTellsWhereTheWorkstationDiffers()
{
    Player player(dialogue, {});
    QTcpSocket workstation;
    workstation.connectToHost(QHostAddress::LocalHost,
                              player.log.rest(QStringLiteral("listening: ")).toUShort());
    QTRY_COMPARE(workstation.bytesAvailable(), 1);
    workstation.write("x");
    QTRY_VERIFY(player.hasEnded);
    QCOMPARE(
        player.log.lines.last(),
        QStringLiteral("differs: 0.200000, connection 1: the workstation's byte 1 is 78, in the record 61"));
    QCOMPARE(player.log.violations, 1);
}

// Twice, as the record has it, the second time when the workstation listens again.
void TestLinesimTap::replayCallsTheWorkstation()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    TcpEnd::Settings tcp;
    tcp.listens = false;
    tcp.port = server.serverPort();
    tcp.retryMs = 20;
    Player player("0.000000 1 F open\n0.100000 1 F close\n0.200000 2 F open\n0.300000 2 W 61\n", tcp);
    QTRY_VERIFY(server.hasPendingConnections());
    QTcpSocket *first = server.nextPendingConnection();
    QTRY_COMPARE(first->state(), QAbstractSocket::UnconnectedState);
    QTRY_VERIFY(server.hasPendingConnections());
    server.nextPendingConnection()->write("a");
    QTRY_VERIFY(player.hasEnded);
    QCOMPARE(player.log.lines.last(), QStringLiteral("same:"));
}

void TestLinesimTap::optionsAreUnderstood_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<bool>("understood");
    row("a line", "tap --record r --listen 0 --to 127.0.0.1:5", true);
    row("the far end calls", "tap --record r --listen 0 --to 127.0.0.1:5 --workstation-listens", true);
    row("a port", "tap --record r --device /dev/x --port p", true);
    row("no record", "tap --listen 0 --to 127.0.0.1:5", false);
    row("nowhere to", "tap --record r --listen 0", false);
    row("both lines", "tap --record r --listen 0 --device /dev/x", false);
    row("no host", "tap --record r --listen 0 --to nobody:5", false);
    row("something else", "tap --record r --device /dev/x more", false);
    row("replay without a record", "replay --listen 0", false);
    row("replay of nothing", "replay --record /no/such/file --listen 0", false);
    row("replay on two lines", "replay --record r --listen 0 --port p", false);
}

void TestLinesimTap::optionsAreUnderstood()
{
    QFETCH(QString, arguments);
    QFETCH(bool, understood);
    const QStringList words = arguments.split(QLatin1Char(' '));
    if (words.first() == QLatin1String("tap"))
        QCOMPARE(bool(readTapOptions(words)), understood);
    else
        QCOMPARE(bool(readReplayOptions(words)), understood);
}

QTEST_GUILESS_MAIN(TestLinesimTap)
#include "test_linesim_tap.moc"
