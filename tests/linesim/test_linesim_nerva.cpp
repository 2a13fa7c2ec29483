// The simulated Ethernet adapter: its configuration byte by byte, and at its port.

#include "tests/support/row.h"
#include "tests/support/serial_ports.h"
#include "tools/linesim/adapter/adapter_options.h"
#include "tools/linesim/console/event_log.h"
#include "tools/linesim/nerva/nerva_line.h"
#include "tools/linesim/subcommands.h"

#include <QSerialPort>
#include <QtTest>

Q_DECLARE_METATYPE(NervaFault)

class TestLinesimNerva : public QObject
{
    Q_OBJECT

private slots:
    void optionsAreRead();
    void optionsThatAreNotUnderstood_data();
    void optionsThatAreNotUnderstood();
    void unknownKeyEndsIt();
    void questionIsAnsweredWithTheText();
    void textIsTaken_data();
    void textIsTaken();
    void breachIsTold_data();
    void breachIsTold();
    void closeWithoutTheEndIsABreach_data();
    void closeWithoutTheEndIsABreach();
    void valuesWithoutStoringAreGoneWithARestart();
    void faultChangesTheText_data();
    void faultChangesTheText();
    void tornReplyIsFollowedByAWholeOne();
    void silentAdapterNotesTheQuestion();
    void bytesOfTheLineAreNotTaken();
    void portTalksUnasked();
    void portTellsItsConfiguration();
    void programOfTheLineIsServed();
    void tooEarlyQuestionIsABreach();
    void unpluggedInTheMiddleOfAReply();
    void unpluggedItForgetsWhatIsNotStored();
    void megabyteComesWhole();
    void commandsChangeAndShowIt();
};

namespace
{
const QString Whole =
    "{v:2,ver:260601,mac:\"02:00:00:00:00:01\",eth_spd:4,local_ip:\"192.168.0.20\",gw:\"192.168.0.1\","
    "netmask:\"255.255.255.0\",local_port:5674,tlg_baud:50,tlg_type:1,ip_mode:0,tcp_timeout:30,sys_mode:0,"
    "remote_ip:\"192.168.0.30\",remote_port:5675,remote2_ip:\"192.168.0.31\",remote2_port:5676,http_mode:1,"
    "http_port:80,http_access:\"192.168.0.0/255.255.255.0\",sn:\"30000001\"}";

/// The configuration's bytes without a port.
struct Bytes {
    Bytes()
    {
        QObject::connect(&mode, &NervaMode::toProgram, [this](const QByteArray &bytes) { told += bytes; });
        QObject::connect(&mode, &NervaMode::halfToProgram,
                         [this](const QByteArray &bytes) { told += bytes; });
        QObject::connect(&mode, &NervaMode::restarting, [this] { ++restarts; });
        mode.opened();
    }
    /// Takes them as a program's; true if all of them are the configuration's.
    bool program(const QByteArray &bytes, bool started = true)
    {
        bool all = true;
        for (const char byte : bytes)
            all = mode.take(quint8(byte), started) && all;
        return all;
    }
    [[nodiscard]] QStringList breaches() const { return lines.filter("violation: "); }

    QStringList lines;
    EventLog log{[this](const QString &line) { lines << line; }};
    NervaConfig config{"30000001", 50, log};
    NervaMode mode{config, log};
    QByteArray told;
    int restarts = 0;
};

/// The adapter at its port, and a program's port.
struct Port {
    explicit Port(const NervaSettings &nerva = shortStart(), const LineAdapter::Settings &adapter = {})
    {
        AdapterLine::Settings settings;
        settings.serial = "30000001";
        settings.nerva = nerva;
        settings.adapter = adapter;
        line = std::make_unique<NervaLine>(settings, log);
        if (!line->start())
            qFatal("no port");
        QObject::connect(&port, &QSerialPort::readyRead, [this] { received += port.readAll(); });
    }
    static NervaSettings shortStart()
    {
        NervaSettings settings;
        settings.startMs = 0;
        return settings;
    }
    void open()
    {
        port.setPortName(line->place());
        if (!opens(port))
            qFatal("the port does not open");
    }
    /// Once the adapter talks it has started.
    void openAndWait()
    {
        open();
        QTRY_VERIFY(received.contains('\x3F'));
        received.clear();
    }

    QStringList lines;
    EventLog log{[this](const QString &text) { lines << text; }};
    std::unique_ptr<NervaLine> line;
    QSerialPort port;
    QByteArray received;
};
} // namespace

void TestLinesimNerva::optionsAreRead()
{
    const auto plain = readAdapterOptions({"nerva", "peer"});
    QCOMPARE(plain->line.serial, QString("30000001"));
    QVERIFY(plain->line.nerva.has_value());
    QCOMPARE(plain->line.nerva->startMs, 1500);
    const auto read =
        readAdapterOptions({"nerva", "--serial", "31234567", "--set", "gw=10.0.0.1", "--set", "ver=1",
                            "--fault", "torn", "--start", "5", "--baud", "50", "centre", "--send", "d"});
    QCOMPARE(read->line.serial, QString("31234567"));
    QCOMPARE(read->line.nerva->values.size(), 2);
    QCOMPARE(read->line.nerva->values[0].key, QString("gw"));
    QCOMPARE(read->line.nerva->values[0].value, QString("10.0.0.1"));
    QCOMPARE(read->line.nerva->fault, NervaFault::Torn);
    QCOMPARE(read->line.nerva->startMs, 5);
    QCOMPARE(read->line.adapter.baud, 50);
    QCOMPARE(read->farEnd, (QStringList{"centre", "--send", "d"}));
    QVERIFY(!readAdapterOptions({"adapter", "peer"})->line.nerva);
}

void TestLinesimNerva::optionsThatAreNotUnderstood_data()
{
    QTest::addColumn<QStringList>("arguments");
    row("no far end", QStringList{"nerva"});
    row("another class", QStringList{"nerva", "--serial", "10000001", "peer"});
    row("short serial", QStringList{"nerva", "--serial", "3000001", "peer"});
    row("no such fault", QStringList{"nerva", "--fault", "lazy", "peer"});
    row("no number", QStringList{"nerva", "--start", "soon", "peer"});
    row("of another kind of adapter", QStringList{"adapter", "--fault", "torn", "peer"});
}

void TestLinesimNerva::optionsThatAreNotUnderstood()
{
    QFETCH(QStringList, arguments);
    QVERIFY(!readAdapterOptions(arguments));
}

void TestLinesimNerva::unknownKeyEndsIt()
{
    QCOMPARE(runSubcommand({"linesim", "nerva", "--set", "colour=red", "peer"}), 2);
}

void TestLinesimNerva::questionIsAnsweredWithTheText()
{
    Bytes bytes;
    QVERIFY(bytes.program("\xE0"));
    QCOMPARE(QString::fromLatin1(bytes.told), Whole);
    QCOMPARE(bytes.lines, QStringList("asked:"));
    QCOMPARE(bytes.mode.phase(), NervaMode::Told);
}

void TestLinesimNerva::textIsTaken_data()
{
    QTest::addColumn<QByteArray>("program");
    QTest::addColumn<QStringList>("events");
    QTest::addColumn<QString>("gateway");
    row("for now", QByteArray("\xE0\xE1{gw:\"10.0.0.1\"}\xE1"),
        QStringList{"asked:", "written: {gw:\"10.0.0.1\"}"}, QString("10.0.0.1"));
    row("for good", QByteArray("\xE0\xE1{gw:\"10.0.0.1\",local_port:1}\xE3"),
        QStringList{"asked:", "written: {gw:\"10.0.0.1\",local_port:1}", "stored:", "restarted:"},
        QString("10.0.0.1"));
    row("without a question", QByteArray("\xE1{gw:\"10.0.0.1\"}\xE1"),
        QStringList{"written: {gw:\"10.0.0.1\"}"}, QString("10.0.0.1"));
    row("nothing", QByteArray("\xE0\xE1{}\xE1"), QStringList{"asked:", "written: {}"},
        QString("192.168.0.1"));
}

void TestLinesimNerva::textIsTaken()
{
    QFETCH(QByteArray, program);
    QFETCH(QStringList, events);
    QFETCH(QString, gateway);
    Bytes bytes;
    QVERIFY(bytes.program(program));
    QCOMPARE(bytes.lines, events);
    QCOMPARE(bytes.config.value("gw"), gateway);
    QCOMPARE(bytes.restarts, events.contains("restarted:") ? 1 : 0);
}

void TestLinesimNerva::breachIsTold_data()
{
    QTest::addColumn<QByteArray>("program");
    QTest::addColumn<QString>("breach");
    row("order", QByteArray("\xE1{gw:\"10.0.0.1\",netmask:\"255.0.0.0\"}\xE1"),
        QString("out of order: netmask:\"255.0.0.0\""));
    row("twice", QByteArray("\xE1{eth_spd:1,eth_spd:2}\xE1"), QString("out of order: eth_spd:2"));
    row("unchanged", QByteArray("\xE0\xE1{eth_spd:4}\xE1"), QString("not changed: eth_spd:4"));
    row("number in quotes", QByteArray("\xE1{eth_spd:\"1\"}\xE1"),
        QString("not the form of its key: eth_spd:\"1\""));
    row("text without quotes", QByteArray("\xE1{gw:10}\xE1"), QString("not the form of its key: gw:10"));
    row("version", QByteArray("\xE1{ver:1}\xE1"), QString("no key to be written: ver:1"));
    row("no key", QByteArray("\xE1{colour:1}\xE1"), QString("no key to be written: colour:1"));
    row("key in quotes", QByteArray("\xE1{\"eth_spd\":1}\xE1"),
        QString("no key to be written: \"eth_spd\":1"));
    row("torn", QByteArray("\xE1{eth_spd:1\xE1"), QString("text without its end: {eth_spd:1"));
    row("behind the text", QByteArray("\xE1{}x\xE1"), QString("byte 78 behind the text"));
    row("unannounced", QByteArray("\xE0{"), QString("byte 7b in the middle of configuring"));
    row("a code", QByteArray("\xE0\x05"), QString("byte 5 in the middle of configuring"));
}

void TestLinesimNerva::breachIsTold()
{
    QFETCH(QByteArray, program);
    QFETCH(QString, breach);
    Bytes bytes;
    QVERIFY(bytes.program(program));
    QCOMPARE(bytes.breaches(), QStringList("violation: " + breach));
}

void TestLinesimNerva::closeWithoutTheEndIsABreach_data()
{
    QTest::addColumn<QByteArray>("program");
    QTest::addColumn<bool>("judged");
    QTest::addColumn<bool>("breach");
    row("nothing said", QByteArray(), true, false);
    row("told", QByteArray("\xE0"), true, true);
    row("told, killed", QByteArray("\xE0"), false, false);
    row("ended", QByteArray("\xE0\xE1"), true, false);
    row("written", QByteArray("\xE0\xE1{}\xE1"), true, false);
    row("stored", QByteArray("\xE0\xE1{}\xE3"), true, true);
    row("stored and ended", QByteArray("\xE0\xE1{}\xE3\xE1"), true, false);
    row("told once more", QByteArray("\xE0\xE1\xE0"), true, true);
}

void TestLinesimNerva::closeWithoutTheEndIsABreach()
{
    QFETCH(QByteArray, program);
    QFETCH(bool, judged);
    QFETCH(bool, breach);
    Bytes bytes;
    QVERIFY(bytes.program(program));
    bytes.mode.closed(judged);
    QCOMPARE(bytes.breaches(),
             breach ? QStringList("violation: closed without the end of configuring") : QStringList());
}

void TestLinesimNerva::valuesWithoutStoringAreGoneWithARestart()
{
    Bytes bytes;
    bytes.program("\xE1{gw:\"10.0.0.1\"}\xE1");
    QCOMPARE(bytes.config.stored("gw"), QString("192.168.0.1"));
    bytes.config.restart();
    QCOMPARE(bytes.config.value("gw"), QString("192.168.0.1"));
    bytes.program("\xE1{gw:\"10.0.0.2\"}\xE3");
    QCOMPARE(bytes.config.value("gw"), QString("10.0.0.2"));
    QCOMPARE(bytes.config.stored("gw"), QString("10.0.0.2"));
}

void TestLinesimNerva::faultChangesTheText_data()
{
    QTest::addColumn<NervaFault>("fault");
    QTest::addColumn<QString>("text");
    row("no-end", NervaFault::NoEnd, Whole.chopped(1));
    row("mac16", NervaFault::Mac16, QString(Whole).replace("00:01\"", "00:0\""));
    row("eth7", NervaFault::Eth7, QString(Whole).replace("eth_spd:4", "eth_spd:7"));
    row("unplug", NervaFault::Unplug, Whole.left(Whole.size() / 2));
    row("wrong-kind", NervaFault::WrongKind,
        QString("{v:2,ver:260601,mac:17,eth_spd:\"ten\",local_ip:17,gw:17,netmask:17,local_port:\"ten\","
                "tlg_baud:\"ten\",tlg_type:\"ten\",ip_mode:\"ten\",tcp_timeout:\"ten\",sys_mode:\"ten\","
                "remote_ip:17,remote_port:\"ten\",remote2_ip:17,remote2_port:\"ten\",http_mode:\"ten\","
                "http_port:\"ten\",http_access:17,sn:17}"));
}

void TestLinesimNerva::faultChangesTheText()
{
    QFETCH(NervaFault, fault);
    QFETCH(QString, text);
    Bytes bytes;
    bytes.mode.fault = fault;
    bytes.program("\xE0");
    QCOMPARE(QString::fromLatin1(bytes.told), text);
}

void TestLinesimNerva::tornReplyIsFollowedByAWholeOne()
{
    Bytes bytes;
    bytes.mode.fault = NervaFault::Torn;
    bytes.program("\xE0");
    QCOMPARE(QString::fromLatin1(bytes.told), Whole.left(Whole.size() / 2));
    bytes.told.clear();
    bytes.program("\xE0");
    QCOMPARE(QString::fromLatin1(bytes.told), Whole);
}

void TestLinesimNerva::silentAdapterNotesTheQuestion()
{
    Bytes bytes;
    bytes.mode.fault = NervaFault::Silent;
    bytes.program("\xE0");
    QCOMPARE(bytes.told, QByteArray());
    QCOMPARE(bytes.lines, QStringList("asked:"));
}

void TestLinesimNerva::bytesOfTheLineAreNotTaken()
{
    Bytes bytes;
    for (const QByteArray &program : QList<QByteArray>{"\x67", "\x05", "{", "\xE3"})
        QVERIFY(!bytes.program(program));
    QVERIFY(bytes.program("\xE0\xE1"));
    QVERIFY(!bytes.program("\x67"));
    QCOMPARE(bytes.breaches(), QStringList());
}

void TestLinesimNerva::portTalksUnasked()
{
    Port port;
    port.open();
    QTRY_COMPARE(port.received, QByteArray("\x3F\x3F"));
    port.port.close();
    QTRY_VERIFY(port.lines.contains("closed: by the program"));
    QVERIFY(port.lines.filter("violation").isEmpty());
}

void TestLinesimNerva::portTellsItsConfiguration()
{
    Port port;
    port.openAndWait();
    port.port.write("\xE0");
    QTRY_VERIFY(port.received.endsWith('}'));
    QCOMPARE(QString::fromLatin1(port.received), QString(Whole).replace("baud:50", "baud:200"));
    port.received.clear();
    QTest::qWait(1200); // two statuses
    QCOMPARE(port.received, QByteArray());
    port.port.write("\xE1");
    QTRY_VERIFY(port.received.contains('\x3F'));
    QVERIFY(port.lines.contains("left:"));
    port.port.close();
    QTRY_VERIFY(port.lines.contains("closed: by the program"));
    QVERIFY(port.lines.filter("violation").isEmpty());
}

void TestLinesimNerva::programOfTheLineIsServed()
{
    Port port;
    QString heard;
    QObject::connect(port.line.get(), &FarLine::text, port.line.get(),
                     [&](const QString &text) { heard += text; });
    port.openAndWait();
    port.port.write("\x67");
    QTRY_VERIFY(!port.received.isEmpty());
    port.port.write("\x67");
    QTRY_VERIFY(port.line->isReady());
    QTRY_VERIFY(port.received.contains('\x3F'));
    port.port.write(QByteArray("\x67\x03\x03", 3));
    QTRY_VERIFY(heard.contains("AA"));
    port.port.write("\x60");
    port.port.flush();
    port.port.close();
    QTRY_VERIFY(port.lines.contains("closed: by the program"));
    QVERIFY(port.lines.filter("violation").isEmpty());
}

void TestLinesimNerva::tooEarlyQuestionIsABreach()
{
    NervaSettings settings;
    settings.startMs = 60000;
    Port port(settings);
    port.open();
    port.port.write("\xE0");
    QTRY_VERIFY(port.lines.contains("violation: configured before it has started"));
    QCOMPARE(port.received, QByteArray());
}

void TestLinesimNerva::unpluggedInTheMiddleOfAReply()
{
    NervaSettings settings = Port::shortStart();
    settings.fault = NervaFault::Unplug;
    Port port(settings);
    port.openAndWait();
    port.port.write("\xE0");
    QTRY_VERIFY(port.lines.contains("closed: unplugged"));
    QVERIFY(port.lines.filter("violation").isEmpty());
    port.port.close();
}

void TestLinesimNerva::unpluggedItForgetsWhatIsNotStored()
{
    Port port;
    port.openAndWait();
    port.port.write("\xE1{gw:\"10.0.0.1\"}\xE1");
    QTRY_VERIFY(port.lines.contains("written: {gw:\"10.0.0.1\"}"));
    port.line->run("unplug", QString());
    QCOMPARE(port.lines.filter("restarted").size(), 1);
    port.port.close();
    port.line->run("plug", QString());
    port.line->run("show", QString());
    QVERIFY(port.lines.last().contains("gw:\"192.168.0.1\""));
    QVERIFY(port.lines.at(port.lines.size() - 2).contains("gw:\"192.168.0.1\""));
}

void TestLinesimNerva::megabyteComesWhole()
{
    NervaSettings settings = Port::shortStart();
    settings.fault = NervaFault::Megabyte;
    Port port(settings);
    port.openAndWait();
    port.port.write("\xE0");
    QTRY_VERIFY(port.received.endsWith('}'));
    QVERIFY(port.received.size() > 1000000);
}

void TestLinesimNerva::commandsChangeAndShowIt()
{
    const Port port;
    QVERIFY(port.line->run("set", "gw 10.0.0.1"));
    QVERIFY(port.line->run("show", QString()));
    const QString text = QString(Whole).replace("192.168.0.1\"", "10.0.0.1\"").replace("baud:50", "baud:200");
    QCOMPARE(port.lines.mid(1), (QStringList{"working: " + text, "kept: " + text}));
    QVERIFY(port.line->run("set", "colour red"));
    QCOMPARE(port.lines.last(), QString("error: no key colour"));
    QVERIFY(port.line->run("fault", "lazy"));
    QCOMPARE(port.lines.last(), QString("error: no fault lazy"));
    QVERIFY(!port.line->run("lazy", QString()));
}

QTEST_GUILESS_MAIN(TestLinesimNerva)
#include "test_linesim_nerva.moc"
