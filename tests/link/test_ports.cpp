#include "app/options.h"
#include "link/utils_ports.h"
#include "tests/link/line.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"
#include "text/utils.h"

#include <QSerialPortInfo>
#include <QtTest>

class TestPorts : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { qunsetenv("VELDA_PORTS"); }
    void listIsReadEntryByEntry_data();
    void listIsReadEntryByEntry();
    void portsOfTheSystemComeFirst();
    void serialFindsItsPort_data();
    void serialFindsItsPort();
    void serialOfWrongLengthMatchesNoPort_data();
    void serialOfWrongLengthMatchesNoPort();
    void automaticSearchAdoptsAnAdapterOfTheClass_data();
    void automaticSearchAdoptsAnAdapterOfTheClass();
    void ethernetAdapterIsToldByItsSerial_data();
    void ethernetAdapterIsToldByItsSerial();
    void absentAdapterLeavesThePauseAsItWas();
    void presentAdapterStartsTheLink();
    void telegraphSpeedIsOneOfThree_data();
    void telegraphSpeedIsOneOfThree();
    void linkSaysThatThereIsNoDevice_data();
    void linkSaysThatThereIsNoDevice();

private:
    std::unique_ptr<Desk> m_desk;
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}

constexpr auto SomePorts =
    "10000001ABCD=/dev/a;1000000=/dev/b;20000001=/dev/c;10000002=/dev/d;20000002=/dev/e";
} // namespace

void TestPorts::init()
{
    m_desk = std::make_unique<Desk>();
}

void TestPorts::listIsReadEntryByEntry_data()
{
    QTest::addColumn<QString>("list");
    QTest::addColumn<QStringList>("ports");
    row("empty", QString(), QStringList());
    row("one", qs("10000001=/dev/pts/4"), QStringList(qs("10000001 /dev/pts/4")));
    row("two, with spaces", qs(" 10000001 = /dev/pts/4 ; 20000001=COM5;"),
        QStringList({qs("10000001 /dev/pts/4"), qs("20000001 COM5")}));
    row("no entries", qs(";;abc;=x;y=;"), QStringList());
    row("second sign is of the name", qs("1=a=b"), QStringList(qs("1 a=b")));
}

void TestPorts::listIsReadEntryByEntry()
{
    QFETCH(QString, list);
    QFETCH(QStringList, ports);
    QStringList read;
    for (const SerialPort &port : serialPortsFromList(list))
        read << port.serial + QLatin1Char(' ') + port.name;
    QCOMPARE(read, ports);
}

void TestPorts::portsOfTheSystemComeFirst()
{
    qputenv("VELDA_PORTS", "10000001=/dev/a");
    const QList<SerialPort> ports = serialPorts();
    const QList<QSerialPortInfo> system = QSerialPortInfo::availablePorts();
    QCOMPARE(ports.size(), system.size() + 1);
    for (int i = 0; i < system.size(); ++i)
        QCOMPARE(ports[i].name, system[i].portName());
    QCOMPARE(ports.last().name, qs("/dev/a"));
}

void TestPorts::serialFindsItsPort_data()
{
    QTest::addColumn<QString>("serial");
    QTest::addColumn<QString>("name");
    row("12 characters match on the first 8", qs("10000001"), qs("/dev/a"));
    row("7 characters match nothing", qs("1000000"), QString());
    row("12 characters match nothing", qs("10000001ABCD"), QString());
    row("exact", qs("20000001"), qs("/dev/c"));
    row("absent", qs("10000009"), QString());
    row("empty", QString(), QString());
}

void TestPorts::serialFindsItsPort()
{
    QFETCH(QString, serial);
    QFETCH(QString, name);
    qputenv("VELDA_PORTS", SomePorts);
    QCOMPARE(CUtils::getPortNameBySN(serial), name);
    QString asked = serial;
    QCOMPARE(CUtils::getPortNameBySN(asked, 0), name);
    QCOMPARE(asked, serial);
}

void TestPorts::serialOfWrongLengthMatchesNoPort_data()
{
    QTest::addColumn<QString>("serial");
    for (int length = 0; length <= 20; ++length)
        if (length != 8)
            QTest::addRow("%d characters", length) << qs("10000001ABCDEFGHIJKL").left(length);
}

// Neither a device with that very serial nor one that begins with it.
void TestPorts::serialOfWrongLengthMatchesNoPort()
{
    QFETCH(QString, serial);
    qputenv("VELDA_PORTS",
            (serial + qs("=/dev/same;10000001ABCDEFGHIJKL=/dev/long;=/dev/none")).toLocal8Bit());
    QCOMPARE(CUtils::getPortNameBySN(serial), QString());
    QString asked = serial;
    QCOMPARE(CUtils::getPortNameBySN(asked, 0), QString());
    QCOMPARE(asked, serial);
    QCOMPARE(CUtils::getPortNameBySN(asked, 3), QString());
    QCOMPARE(asked, serial);
    CTlgThread thread;
    thread.paused = true;
    qputenv("VELDA_PORTS", serial.size() < 8 ? (serial + qs("=/dev/same")).toLocal8Bit() : QByteArray());
    QVERIFY(!thread.setTrelo(serial, 100, false));
    QVERIFY(thread.paused);
    QVERIFY(!thread.restartRequested);
}

void TestPorts::automaticSearchAdoptsAnAdapterOfTheClass_data()
{
    QTest::addColumn<QString>("serial");
    QTest::addColumn<int>("autoClass");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("adopted");
    row("present one stays", qs("10000002"), 1, qs("/dev/d"), qs("10000002"));
    row("present one of another class stays", qs("20000002"), 1, qs("/dev/e"), qs("20000002"));
    row("absent one gives way to the first", qs("10000009"), 1, qs("/dev/a"), qs("10000001"));
    row("none set", QString(), 1, qs("/dev/a"), qs("10000001"));
    row("perforators", QString(), 2, qs("/dev/c"), qs("20000001"));
    row("class without adapters", qs("30000001"), 3, QString(), qs("30000001"));
}

void TestPorts::automaticSearchAdoptsAnAdapterOfTheClass()
{
    QFETCH(QString, serial);
    QFETCH(int, autoClass);
    QFETCH(QString, name);
    QFETCH(QString, adopted);
    qputenv("VELDA_PORTS", SomePorts);
    QCOMPARE(CUtils::getPortNameBySN(serial, autoClass), name);
    QCOMPARE(serial, adopted);
}

void TestPorts::ethernetAdapterIsToldByItsSerial_data()
{
    QTest::addColumn<QString>("serial");
    QTest::addColumn<bool>("ethernet");
    row("of the class", qs("30000001"), true);
    row("line adapter", qs("10000003"), false);
    row("short", qs("3000000"), false);
    row("long", qs("300000011"), false);
    row("empty", QString(), false);
}

void TestPorts::ethernetAdapterIsToldByItsSerial()
{
    QFETCH(QString, serial);
    QFETCH(bool, ethernet);
    QCOMPARE(isEthernetAdapter(serial), ethernet);
}

void TestPorts::absentAdapterLeavesThePauseAsItWas()
{
    for (const bool paused : {true, false}) {
        CTlgThread thread;
        thread.paused = paused;
        thread.reportFailure = false;
        thread.linkType = CTlgThread::TcpClient;
        QVERIFY(!thread.setTrelo(qs("10000001"), 100, true));
        QCOMPARE(thread.paused.load(), paused);
        QCOMPARE(thread.linkType.load(), int(CTlgThread::AdapterPort));
        QCOMPARE(thread.reconnectDelay.load(), 2);
        QCOMPARE(thread.adapterSN, qs("10000001"));
        QVERIFY(thread.adapterArg);
        QVERIFY(thread.portName.isEmpty());
        QVERIFY(!thread.restartRequested && !thread.needVersion && !thread.reportFailure);
        QCOMPARE(thread.tlgBaud.load(), 100);
    }
}

void TestPorts::presentAdapterStartsTheLink()
{
    qputenv("VELDA_PORTS", "10000001=/dev/a");
    CTlgThread thread;
    thread.reportFailure = false;
    QVERIFY(thread.setTrelo(qs("19999999"), 50, false)); // another one of the class is adopted
    QCOMPARE(thread.adapterSN, qs("10000001"));
    QCOMPARE(thread.portName, qs("/dev/a"));
    QVERIFY(thread.needVersion && thread.reportFailure && thread.restartRequested && !thread.paused);
    QCOMPARE(thread.reconnectDelay.load(), 0);
}

void TestPorts::telegraphSpeedIsOneOfThree_data()
{
    QTest::addColumn<int>("asked");
    QTest::addColumn<int>("stored");
    for (const int baud : {50, 100, 200})
        row(qPrintable(QString::number(baud)), baud, baud);
    for (const int baud : {0, -50, 49, 75, 300})
        row(qPrintable(QString::number(baud)), baud, 0);
}

void TestPorts::telegraphSpeedIsOneOfThree()
{
    QFETCH(int, asked);
    QFETCH(int, stored);
    CTlgThread thread;
    thread.tlgBaud = 200;
    (void)thread.setTrelo(QString(), asked, false);
    QCOMPARE(thread.tlgBaud.load(), stored);
}

void TestPorts::linkSaysThatThereIsNoDevice_data()
{
    QTest::addColumn<QString>("serial");
    QTest::addColumn<QString>("prefix");
    row("line adapter", qs("10000001"), qs("Trelo (10000001)"));
    row("Ethernet adapter", qs("30000001"), qs("Nerva (30000001)"));
    row("none set", QString(), qs("Trelo ()"));
}

void TestPorts::linkSaysThatThereIsNoDevice()
{
    QFETCH(QString, serial);
    QFETCH(QString, prefix);
    Line line;
    QVERIFY(!line.thread.setTrelo(serial, 50, false));
    for (int attempt = 0; attempt < 3; ++attempt) {
        line.thread.PortThread();
        QVERIFY(!line.thread.connected);
        QCOMPARE(line.thread.reconnectDelay.load(), 60);
        QVERIFY(!line.thread.reportFailure);
    }
    QCOMPARE(line.states(), QStringList({prefix + qs(": Подключение"), prefix + qs(":  Нет устройства")}));
}

QTEST_GUILESS_MAIN(TestPorts)
#include "test_ports.moc"
