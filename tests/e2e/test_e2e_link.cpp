#include "tests/e2e/far_end.h"
#include "tests/e2e/station.h"
#include "tests/support/rounds.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

// The connection itself: who is admitted, when it is given up, when it is tried again.
class TestE2eLink : public QObject
{
    Q_OBJECT

private slots:
    void foreignPeerIsTurnedAway();
    void silentPeerIsDropped();
    void silentCallerIsPolledThenDropped();
    void failedConnectionIsShownOnce();
    void backOffGrowsByAMinute();
    void busyPortIsShownOnce();
    void peerThatClosesIsCalledAgain();
    void nothingIsSentWithoutAWindow();
    void flowReportLimitsTheNextPiece();
};

namespace
{
int secondOfDay(const QString &line)
{
    return QTime(0, 0).secsTo(QTime::fromString(line.left(8), QStringLiteral("hh:mm:ss")));
}

/// How many seconds lie between the lines, each from the one before.
QList<int> distances(const QStringList &lines)
{
    QList<int> result;
    for (int i = 1; i < lines.size(); ++i)
        result << secondOfDay(lines[i]) - secondOfDay(lines[i - 1]);
    return result;
}

const QString queueFile = QStringLiteral("out/20200101u001.200101_000000");
} // namespace

void TestE2eLink::foreignPeerIsTurnedAway()
{
    const quint16 port = freePort();
    Station station;
    station.listenOn(port);
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral("Ожидание подключения")), PatienceMs);
    FarEnd foreign(port, {QStringLiteral("--from"), QStringLiteral("127.0.0.2"), QStringLiteral("--retry"),
                          QStringLiteral("60000")});
    const QString prefix = QStringLiteral(" TcpServer (port:%1): ").arg(port);
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(prefix + QStringLiteral("попытка соединения с IP 127.0.0.2")),
                             10000);
    QTRY_VERIFY_WITH_TIMEOUT(!foreign.lines.filter(QStringLiteral("closed: ")).isEmpty(), PatienceMs);
    QVERIFY(!station.logged(QStringLiteral("Подключение с IP")));
    QVERIFY(!station.logged(QStringLiteral("Соединено")));

    FarEnd admitted(port, {});
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(prefix + QStringLiteral("Подключение с IP 127.0.0.1")),
                             PatienceMs);
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(prefix + QStringLiteral("Соединено ")), PatienceMs);
}

// The timer starts with the peer's first byte; after the loss the client waits 10 seconds.
void TestE2eLink::silentPeerIsDropped()
{
    FarEnd farEnd({QStringLiteral("--after"), QStringLiteral("2000:silence")});
    Station station;
    station.callTo(farEnd.port);
    station.set(QStringLiteral("CONNECT/TimeOut"), QStringLiteral("3"));
    station.start();
    const QString prefix = QStringLiteral(" TCP (127.0.0.1:%1): ").arg(farEnd.port);
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(prefix + QStringLiteral("Таймаут SYN 3сек")), PatienceMs);
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(prefix + QStringLiteral("Соединение закрыто")), PatienceMs);
    QTRY_COMPARE_WITH_TIMEOUT(station.count(prefix + QStringLiteral("Соединено ")), 2, PatienceMs);
    const QList<int> waited =
        distances(station.journal()
                      .filter(QRegularExpression(QStringLiteral("Соединение закрыто|Соединено ")))
                      .mid(1, 2));
    QVERIFY2(waited.first() >= 10 && waited.first() <= 20, qPrintable(QString::number(waited.first())));
}

// A listening workstation asks with BF, once a second, for as long as the timer runs.
void TestE2eLink::silentCallerIsPolledThenDropped()
{
    const quint16 port = freePort();
    Station station;
    station.listenOn(port);
    station.set(QStringLiteral("CONNECT/TimeOut"), QStringLiteral("4"));
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral("Ожидание подключения")), PatienceMs);
    QTcpSocket caller;
    caller.connectToHost(QHostAddress::LocalHost, port);
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral("Соединено ")), PatienceMs);
    caller.write("\x16");
    QByteArray received;
    connect(&caller, &QTcpSocket::readyRead, &caller, [&] { received += caller.readAll(); });
    QTRY_COMPARE_WITH_TIMEOUT(caller.state(), QAbstractSocket::UnconnectedState, PatienceMs);
    QCOMPARE(received.toHex(), QByteArray("16bfbfbf"));
    QVERIFY(station.logged(QStringLiteral(" TcpServer (port:%1): Таймаут SYN 4сек").arg(port)));
    QTRY_VERIFY_WITH_TIMEOUT(
        station.logged(QStringLiteral(" TcpServer (port:%1): Соединение закрыто").arg(port)), PatienceMs);
}

void TestE2eLink::failedConnectionIsShownOnce()
{
    const quint16 port = freePort();
    Station station;
    station.callTo(port);
    station.fakeTime(QStringLiteral("@2026-07-31 12:00:00 x60"));
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral(" TCP (127.0.0.1:%1):").arg(port)), PatienceMs);
    // Four minutes hold the second attempt, at one, and the third, at three.
    QTest::qWait(4000);
    QCOMPARE(station.count(QStringLiteral(" TCP (127.0.0.1:%1):").arg(port)), 1);
    QVERIFY(station.end());
}

// A peer that hangs up within the first second counts as a failure: 60, 120, 180 seconds of back-off, each
// with the second of the connection and that of the thread's round, and what a busy machine adds. One that is
// held up, and hangs up later than that, has been a connection.
void TestE2eLink::backOffGrowsByAMinute()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    connect(&server, &QTcpServer::newConnection, &server, [&] { server.nextPendingConnection()->abort(); });
    QList<int> waited;
    const auto grows = [&waited] {
        bool result = waited.size() == 3;
        for (int i = 0; i < waited.size(); ++i)
            result = result && waited[i] >= 60 * (i + 1) && waited[i] < 60 * (i + 2);
        return result;
    };
    const bool grew = onceInAFew([&] {
        Station station;
        station.callTo(server.serverPort());
        station.fakeTime(QStringLiteral("@2026-07-31 12:00:00 x15"));
        station.start();
        const QString lost = QStringLiteral("Сброшено соединение / ");
        (void)QTest::qWaitFor([&] { return station.count(lost) == 4; }, 60000);
        waited = distances(station.journal().filter(lost));
        return station.end() && grows();
    });
    QVERIFY2(grew, qPrintable(QStringLiteral("%1 distances, the last of %2 s")
                                  .arg(waited.size())
                                  .arg(waited.isEmpty() ? 0 : waited.last())));
}

void TestE2eLink::busyPortIsShownOnce()
{
    QTcpServer other;
    QVERIFY(other.listen(QHostAddress::Any));
    Station station;
    station.listenOn(other.serverPort());
    station.fakeTime(QStringLiteral("@2026-07-31 12:00:00 x30"));
    station.start();
    const QString failed =
        QStringLiteral(" TcpServer (port:%1): не удалось запустить ").arg(other.serverPort());
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(failed), PatienceMs);
    other.close(); // the port is free at the next attempt, a minute later
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral("Ожидание подключения")), PatienceMs);
    QCOMPARE(station.count(failed), 1);
    QVERIFY(station.end());
}

void TestE2eLink::peerThatClosesIsCalledAgain()
{
    FarEnd farEnd({QStringLiteral("--after"), QStringLiteral("2500:close")});
    Station station;
    station.callTo(farEnd.port);
    station.fakeTime(QStringLiteral("@2026-07-31 12:00:00 x5"));
    station.start();
    QTRY_COMPARE_WITH_TIMEOUT(station.count(QStringLiteral(": Соединение закрыто")), 2, 30000);
    QVERIFY(!station.logged(QStringLiteral("Сброшено")));
    QVERIFY(station.end());
}

void TestE2eLink::nothingIsSentWithoutAWindow()
{
    FarEnd farEnd({QStringLiteral("--no-windows")});
    Station station;
    station.callTo(farEnd.port);
    const QString text = telegram(QStringLiteral("ЖДЕТ ОКНА\r\n"));
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(farEnd.has(QStringLiteral("keep-alive: answered")), PatienceMs);
    station.write(queueFile, text.toUtf8());
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral("Отправка файла: ")), PatienceMs);
    QTest::qWait(2000);
    QVERIFY(farEnd.lines.filter(QStringLiteral("text: ")).isEmpty());
    farEnd.command(QStringLiteral("grant 4"));
    QTRY_VERIFY_WITH_TIMEOUT(farEnd.has(QStringLiteral("text: 4 ЗЦЗЦ")), PatienceMs);
    farEnd.command(QStringLiteral("windows on"));
    QTRY_COMPARE_WITH_TIMEOUT(farEnd.telegrams(), QStringList(text), PatienceMs);
    QCOMPARE(farEnd.violations(), QStringList());
}

// Half of 07 is 3 characters; the piece after that takes the whole window again.
void TestE2eLink::flowReportLimitsTheNextPiece()
{
    FarEnd farEnd({QStringLiteral("--no-windows")});
    Station station;
    station.callTo(farEnd.port);
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(farEnd.has(QStringLiteral("keep-alive: answered")), PatienceMs);
    station.write(queueFile, telegram(QStringLiteral("ПО ЧАСТЯМ"), 100).toUtf8());
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral("Отправка файла: ")), PatienceMs);
    farEnd.command(QStringLiteral("flow 7"));
    farEnd.command(QStringLiteral("grant 30"));
    QTRY_VERIFY_WITH_TIMEOUT(farEnd.has(QStringLiteral("text: 3 ЗЦЗ")), PatienceMs);
    farEnd.command(QStringLiteral("grant 30"));
    QTRY_COMPARE_WITH_TIMEOUT(farEnd.lines.filter(QStringLiteral("text: 30 ")).size(), 1, PatienceMs);
    QCOMPARE(farEnd.violations(), QStringList());
}

QTEST_GUILESS_MAIN(TestE2eLink)
#include "test_e2e_link.moc"
