// The adapter link from the search for its port to the first text, over a real serial port.

#include "app/options.h"
#include "tests/link/adapter_port.h"
#include "tests/support/row.h"

#include <QElapsedTimer>
#include <QtTest>

#include <cstdlib>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

class TestPortOpening : public QObject
{
    Q_OBJECT

private slots:
    void connectingIsTold_data();
    void connectingIsTold();
    void portRunsAt9600BaudWithEightBitsWithoutParity();
    void anAdapterPluggedLaterIsFound();
    void anotherAdapterOfTheClassIsAdopted();
    void anotherAdapterIsLeftAloneWithoutAutomaticDetection();
    void modeByteIsTheFirstOfAll_data();
    void modeByteIsTheFirstOfAll();
    void firstBytesAreThrownAway();
    void bytesOfTheFirstTwoSecondsAreThrownAway();
    void errorsOfTheFormerConnectionAreForgotten();
    void firstByteIsAwaitedForFiveSeconds();
    void silentAdapterIsToldEachTime();
    void restartInTheWaitForTheFirstByteCloses();
    void stopInTheWaitForTheFirstByteCloses();
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}
} // namespace

void TestPortOpening::connectingIsTold_data()
{
    QTest::addColumn<QByteArray>("serial");
    QTest::addColumn<bool>("told");
    QTest::addColumn<QString>("prefix");
    row("line adapter", QByteArray("10000001"), true, "Trelo (10000001)");
    row("line adapter, in an outage", QByteArray("10000001"), false, "Trelo (10000001)");
    row("Ethernet adapter", QByteArray("30000001"), true, "Nerva (30000001)");
    row("perforator's class is no other kind", QByteArray("20000001"), true, "Trelo (20000001)");
}

void TestPortOpening::connectingIsTold()
{
    QFETCH(QByteArray, serial);
    QFETCH(bool, told);
    QFETCH(QString, prefix);
    AdapterLink link(2, 100, serial.constData());
    link.thread.reportFailure = told;
    link.thread.txCredit = 7;
    link.begin();
    QTRY_VERIFY(link.adapter.isOpen());
    QTRY_COMPARE(link.thread.txCredit.load(), 0);
    QVERIFY(!link.thread.connected);
    const QStringList connecting = told ? QStringList(prefix + qs(": Подключение")) : QStringList();
    QCOMPARE(link.line.states(), connecting);

    link.adapter.send("30");
    QTRY_COMPARE(link.line.states(),
                 connecting + QStringList(prefix + qs(": Соединено ") + link.adapter.name()));
    QVERIFY(link.thread.connected);
    QVERIFY(link.thread.reportFailure);
    QCOMPARE(link.thread.portName, link.adapter.name());
}

void TestPortOpening::portRunsAt9600BaudWithEightBitsWithoutParity()
{
    const Desk desk;
    const int master = ::posix_openpt(O_RDWR | O_NOCTTY);
    QVERIFY(master >= 0 && ::grantpt(master) == 0 && ::unlockpt(master) == 0);
    qputenv("VELDA_PORTS", "10000001=" + QByteArray(::ptsname(master)));
    Line line;
    QVERIFY(line.thread.setTrelo(qs("10000001"), 50, false)); // not the speed of the cable
    line.once(&CTlgThread::PortThread);
    termios settings = {};
    const auto set = [&] { return ::tcgetattr(master, &settings) == 0 && ::cfgetospeed(&settings) == B9600; };
    QTRY_VERIFY(set());
    QCOMPARE(::cfgetispeed(&settings), speed_t(B9600));
    QCOMPARE(settings.c_cflag & (CSIZE | PARENB | CSTOPB | CRTSCTS), tcflag_t(CS8));
    QCOMPARE(settings.c_iflag & (IXON | IXOFF), tcflag_t(0));
    line.thread.stopThread();
    QTRY_VERIFY(line.ended());
    ::close(master);
    qunsetenv("VELDA_PORTS");
}

void TestPortOpening::anAdapterPluggedLaterIsFound()
{
    AdapterLink link;
    link.adapter.unplug();
    link.begin();
    QVERIFY(link.ended());
    QCOMPARE(link.states(), QStringList({qs(": Подключение"), qs(":  Нет устройства")}));
    QCOMPARE(link.thread.reconnectDelay.load(), 60);
    QVERIFY(!link.thread.reportFailure);

    link.begin(); // the outage lasts, in silence
    QVERIFY(link.ended());
    QCOMPARE(link.states().size(), 2);

    link.adapter.plug();
    link.begin();
    link.adapter.send("30");
    QVERIFY(link.shows(3));
    QCOMPARE(link.states().mid(2), QStringList(qs(": Соединено ") + link.adapter.name()));
    QVERIFY(link.thread.reportFailure);
}

void TestPortOpening::anotherAdapterOfTheClassIsAdopted()
{
    AdapterLink link;
    link.adapter.unplug();
    const AdapterPort perforator("20000001");
    AdapterPort other("10000002");
    Options.autodetectPortTrelo = true;
    link.thread.refreshOptions();
    link.begin();
    other.send("30");
    QVERIFY(link.shows(2));
    QCOMPARE(link.line.states(), QStringList({qs("Trelo (10000002): Подключение"),
                                              qs("Trelo (10000002): Соединено ") + other.name()}));
    link.stop();
    QVERIFY(link.ended());
    QCOMPARE(link.thread.adapterSN, qs("10000002"));
}

void TestPortOpening::anotherAdapterIsLeftAloneWithoutAutomaticDetection()
{
    AdapterLink link;
    link.adapter.unplug();
    const AdapterPort other("10000002");
    Options.autodetectPortTrelo = false;
    link.thread.refreshOptions();
    link.begin();
    QVERIFY(link.ended());
    QCOMPARE(link.states(), QStringList({qs(": Подключение"), qs(":  Нет устройства")}));
    QCOMPARE(link.thread.adapterSN, qs("10000001"));
    QVERIFY(!other.isOpen());
}

void TestPortOpening::modeByteIsTheFirstOfAll_data()
{
    QTest::addColumn<int>("processMode");
    QTest::addColumn<int>("baud");
    QTest::addColumn<QByteArray>("byte");
    for (const int mode : {0, 2}) {
        QTest::addRow("procedure %d, no speed", mode) << mode << 0 << QByteArray("64");
        QTest::addRow("procedure %d, 50 baud", mode) << mode << 50 << QByteArray("65");
        QTest::addRow("procedure %d, 100 baud", mode) << mode << 100 << QByteArray("66");
        QTest::addRow("procedure %d, 200 baud", mode) << mode << 200 << QByteArray("67");
        QTest::addRow("procedure %d, another speed", mode) << mode << 75 << QByteArray("64");
    }
    for (const int baud : {0, 50, 100, 200})
        QTest::addRow("switched channel, %d baud", baud) << 1 << baud << QByteArray("69");
}

void TestPortOpening::modeByteIsTheFirstOfAll()
{
    QFETCH(int, processMode);
    QFETCH(int, baud);
    QFETCH(QByteArray, byte);
    AdapterLink link(processMode, baud);
    link.begin();
    QTRY_VERIFY(link.adapter.isOpen());
    QCOMPARE(link.adapter.got(), QByteArray()); // the adapter speaks first
    link.adapter.send("3f");
    QTRY_COMPARE(link.adapter.got(), byte);
}

void TestPortOpening::firstBytesAreThrownAway()
{
    AdapterLink link(1);
    link.realWaits();
    link.line.send(qs("EA"));
    link.begin();
    link.adapter.send("01034f5e43833f"); // text, a break, no signal, a call, an echo, fifteen granted
    QVERIFY(link.shows(3));
    QCOMPARE(link.received(), QString());
    QCOMPARE(link.thread.lineError.load(), 0);
    QCOMPARE(link.thread.txCredit.load(), 0);
    QCOMPARE(link.thread.shownWindow.load(), -1);
    QCOMPARE(link.thread.sendBuffer.mGet(), qs("EA"));
    link.adapter.send("03");
    QTRY_COMPARE(link.thread.recvBuffer.mGet(), qs("A"));
    QCOMPARE(link.adapter.got(), QByteArray("69"));
}

void TestPortOpening::bytesOfTheFirstTwoSecondsAreThrownAway()
{
    AdapterLink link(1);
    link.realWaits();
    link.line.send(qs("EA"));
    link.begin();
    QElapsedTimer timer;
    timer.start();
    link.adapter.send("30");
    QTRY_COMPARE(link.adapter.got(), QByteArray("69"));
    while (timer.elapsed() < 700) {
        link.adapter.send("01034f5e43833f");
        QTest::qWait(50);
    }
    QVERIFY(link.shows(3));
    QVERIFY2(timer.elapsed() >= 2000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(link.adapter.got(), QByteArray("69"));
    QCOMPARE(link.received(), QString());
    QCOMPARE(link.thread.lineError.load(), 0);
    QCOMPARE(link.thread.txCredit.load(), 0);
    QCOMPARE(link.thread.sendBuffer.mGet(), qs("EA"));
    link.adapter.send("23");
    QTRY_COMPARE(link.adapter.got(), QByteArray("69690103"));
}

void TestPortOpening::errorsOfTheFormerConnectionAreForgotten()
{
    AdapterLink link;
    QVERIFY(link.open());
    link.adapter.send("4f5e3f");
    QTRY_COMPARE(link.adapter.got(), QByteArray("66"));
    QCOMPARE(link.thread.lineError.load(), 0); // by the credit
    link.adapter.send("4f5e30");
    QTRY_COMPARE(link.thread.lineError.load(), 3);
    QVERIFY(!link.thread.linkUp());
    link.stop();
    QVERIFY(link.ended());
    QVERIFY(link.open());
    QCOMPARE(link.thread.lineError.load(), 0);
    QVERIFY(link.thread.linkUp());
    QVERIFY(link.adapter.got().isEmpty()); // no answer is owed for the former status
}

void TestPortOpening::firstByteIsAwaitedForFiveSeconds()
{
    AdapterLink late, silent(2, 100, "10000002");
    silent.realWaits();
    QElapsedTimer timer;
    timer.start();
    late.begin();
    silent.begin();
    QTRY_VERIFY(late.adapter.isOpen() && silent.adapter.isOpen());
    QTest::qWait(2500);
    QCOMPARE(late.states().size() + silent.states().size(), 2);
    late.adapter.send("ff"); // any byte will do
    QTRY_VERIFY(late.thread.connected);
    QVERIFY(silent.ended());
    QVERIFY2(timer.elapsed() >= 5000, qPrintable(QString::number(timer.elapsed())));
    QTRY_COMPARE(late.adapter.got(), QByteArray("66"));
}

void TestPortOpening::silentAdapterIsToldEachTime()
{
    AdapterLink first, second(2, 100, "10000002");
    CPortLoop::waits.firstByteMs = 200;
    first.thread.reportFailure = true;
    second.thread.reportFailure = false;
    first.begin(true);
    second.begin(true);
    QVERIFY(first.ended() && second.ended());
    QCOMPARE(first.states(), QStringList({qs(": Подключение"), qs(": Адаптер не отвечает")}));
    QCOMPARE(second.states(), QStringList(qs(": Адаптер не отвечает")));
    for (const AdapterLink *link : {&first, &second}) {
        QCOMPARE(link->thread.reconnectDelay.load(), 30);
        QVERIFY(!link->thread.connected);
        QVERIFY(link->thread.needVersion);
        QCOMPARE(link->thread.reportFailure.load(), link == &first); // as it was
        QCOMPARE(link->adapter.got(), QByteArray());
    }
    QTRY_VERIFY(!first.adapter.isOpen());
}

void TestPortOpening::restartInTheWaitForTheFirstByteCloses()
{
    AdapterLink link;
    link.begin(true);
    QTRY_VERIFY(link.adapter.isOpen());
    link.thread.restartThread();
    QVERIFY(link.ended());
    QCOMPARE(link.states(), QStringList({qs(": Подключение"), qs(": Порт закрыт")}));
    QCOMPARE(link.thread.reconnectDelay.load(), 0);
    QTRY_COMPARE(link.adapter.got(), QByteArray("60"));
    QTRY_VERIFY(!link.adapter.isOpen());
    QVERIFY(link.thread.needVersion);
}

void TestPortOpening::stopInTheWaitForTheFirstByteCloses()
{
    AdapterLink link;
    link.begin();
    QTRY_VERIFY(link.adapter.isOpen());
    link.stop();
    QVERIFY(link.ended());
    QCOMPARE(link.states(), QStringList(qs(": Подключение")));
    QTRY_COMPARE(link.adapter.got(), QByteArray("60"));
    QVERIFY(!link.thread.connected);
}

QTEST_GUILESS_MAIN(TestPortOpening)
#include "test_port_opening.moc"
