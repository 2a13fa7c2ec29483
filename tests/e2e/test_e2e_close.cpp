#include "tests/e2e/station.h"
#include "tests/link/black_hole.h"
#include "tests/support/row.h"

#include <QTcpSocket>
#include <QtTest>

#include <cstdlib>

/// The orderly end while the link is in the middle of something that takes long, or never ends.
class TestE2eClose : public QObject
{
    Q_OBJECT

private slots:
    void linkThatHangsInTheSystem_data();
    void linkThatHangsInTheSystem();
    void callThatNobodyAnswers();
    void closingConnectionThatNobodyReads();
};

namespace
{
/// Ends the station; whether it ended in order, with its counters, settings and journal on the disk.
void verifyOrderlyEnd(Station &station)
{
    QVERIFY(QFile::remove(station.path("velda_state.ini")));
    const bool ended = station.end(60);
    QVERIFY2(ended, qPrintable(station.lines.join('\n')));
    QVERIFY(QFile::exists(station.path("velda_state.ini")));
    QVERIFY(station.read("velda.ini").contains("\neditorInterfaceModes="));
    const QStringList journal = station.journal();
    QCOMPARE(journal.value(journal.size() - 3).mid(9), QStringLiteral("Выход"));
    QVERIFY(!QFile::exists(station.path("velda.lck")));
}

/// The other end of a pseudo-terminal, so that there is a serial port to open.
class Terminal
{
public:
    Terminal() : m_master(posix_openpt(O_RDWR | O_NOCTTY))
    {
        if (grantpt(m_master) == 0 && unlockpt(m_master) == 0)
            name = QString::fromLocal8Bit(ptsname(m_master));
    }
    ~Terminal() { close(m_master); }
    Terminal(const Terminal &) = delete;
    Terminal &operator=(const Terminal &) = delete;

    QString name;

private:
    int m_master;
};

enum Road { Client, Server, Adapter };
} // namespace

void TestE2eClose::linkThatHangsInTheSystem_data()
{
    QTest::addColumn<int>("road");
    QTest::addColumn<QString>("call");
    row("connecting", int(Client), "connect");
    row("listening", int(Server), "listen");
    row("opening the port", int(Adapter), "tcgetattr");
}

void TestE2eClose::linkThatHangsInTheSystem()
{
    QFETCH(int, road);
    QFETCH(QString, call);
    const Terminal terminal;
    Station station;
    if (road == Server)
        station.listenOn(freePort());
    if (road == Adapter)
        station.useAdapter("10000001=" + terminal.name);
    station.hangIn(call);
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(station.lines.contains("hangs"), 60000);
    verifyOrderlyEnd(station);
}

void TestE2eClose::callThatNobodyAnswers()
{
    const BlackHole hole;
    QVERIFY(hole.port != 0);
    Station station;
    station.realTime();
    station.callTo(hole.port);
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(station.logged("Протокол открыт"), 60000); // with the thread's first second
    verifyOrderlyEnd(station);
}

void TestE2eClose::closingConnectionThatNobodyReads()
{
    Station station;
    const quint16 port = freePort();
    station.listenOn(port);
    station.set("CONNECT/TimeOut", "6");
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(station.logged("Ожидание подключения"), 60000);
    QTcpSocket peer;
    peer.setReadBufferSize(1);
    peer.connectToHost(QHostAddress::LocalHost, port);
    QVERIFY(peer.waitForConnected(30000));
    peer.write(QByteArray("\xB1"
                          "A")
                   .repeated(16 * 1024 * 1024)); // more answers than the system holds
    QTRY_VERIFY_WITH_TIMEOUT(station.logged("Таймаут SYN"), 60000);
    verifyOrderlyEnd(station);
}

QTEST_GUILESS_MAIN(TestE2eClose)
#include "test_e2e_close.moc"
