#include "tests/e2e/far_end.h"
#include "tests/e2e/station.h"
#include "tests/support/row.h"

#include <QDateTime>
#include <QtTest>

// Telegrams through the finished program, both ways, in both TCP roles.
class TestE2eExchange : public QObject
{
    Q_OBJECT

private slots:
    void clientExchangesTelegrams();
    void serverExchangesTelegrams();
    void twoWorkstationsExchangeTelegrams();
    void telegramIsConfirmed();
    void queueFileWithFutureTimeWaitsForIt();
    void orderlyCloseInEachMode_data();
    void orderlyCloseInEachMode();
    void closeWithAnOpenChannelSendsTheStop();
};

namespace
{
const QString queued1 = QStringLiteral("20200101u001.200101_000000");
const QString queued2 = QStringLiteral("20200101u002.200101_000001");

QByteArray fileOf(const QString &text)
{
    return ("\r\n" + text + "\r\n").toUtf8();
}

/// What every exchange must end with: telegrams on both sides, files moved, counters saved.
void verifyExchange(Station &station, FarEnd &farEnd, const QStringList &out, const QStringList &in)
{
    QTRY_COMPARE_WITH_TIMEOUT(farEnd.telegrams(), out, 60000);
    QTRY_COMPARE_WITH_TIMEOUT(station.received(), in, 60000);
    QTRY_COMPARE_WITH_TIMEOUT(station.names(QStringLiteral("out"), QStringLiteral("*u???.*")), QStringList(),
                              10000);
    QVERIFY(station.end());
    QCOMPARE(farEnd.violations(), QStringList());
    QVERIFY(farEnd.quit());
    const QString day = station.names(QStringLiteral("prt")).value(0).left(8);
    const QStringList sent = {day + QLatin1Char('/') + queued1, day + QLatin1Char('/') + queued2};
    QCOMPARE(station.tree(QStringLiteral("out")), sent);
    QCOMPARE(station.state(QStringLiteral("PK_out")), QString::number(out.size()));
    QCOMPARE(station.state(QStringLiteral("PK_in")), QString::number(in.size()));
    QVERIFY(station.logged(QStringLiteral(" Отправка файла: ") + queued2));
    QVERIFY(station.logged(QStringLiteral(" Выход")));
}

struct Load {
    QStringList out = {telegram(QStringLiteral("ИСХОДЯЩАЯ 1\r\nТЕКСТ")),
                       telegram(QStringLiteral("ИСХОДЯЩАЯ 2"), 2100)};
    QStringList in = {telegram(QStringLiteral("ВХОДЯЩАЯ 1\r\nТЕКСТ")),
                      telegram(QStringLiteral("ВХОДЯЩАЯ 2"), 2100)};

    void give(const Station &station, FarEnd &farEnd) const
    {
        station.write(QStringLiteral("out/") + queued1, fileOf(out[0]));
        station.write(QStringLiteral("out/") + queued2, fileOf(out[1]));
        for (const QString &text : in)
            farEnd.send(QStringLiteral("\r\n") + text + QStringLiteral("\r\n"));
    }
};

const QStringList quick = {QStringLiteral("--window-pause"), QStringLiteral("0"), QStringLiteral("--speed"),
                           QStringLiteral("2000")};
} // namespace

void TestE2eExchange::clientExchangesTelegrams()
{
    FarEnd farEnd(quick);
    Station station;
    station.callTo(farEnd.port);
    const Load load;
    load.give(station, farEnd);
    station.start();
    verifyExchange(station, farEnd, load.out, load.in);
    QVERIFY(station.logged(QStringLiteral(" TCP (127.0.0.1:%1): Соединено ").arg(farEnd.port)));
}

void TestE2eExchange::serverExchangesTelegrams()
{
    const quint16 port = freePort();
    Station station;
    station.listenOn(port);
    station.start();
    FarEnd farEnd(port, quick);
    const Load load;
    load.give(station, farEnd);
    verifyExchange(station, farEnd, load.out, load.in);
    const QString prefix = QStringLiteral(" TcpServer (port:%1): ").arg(port);
    QVERIFY(station.logged(prefix + QStringLiteral("Ожидание подключения")));
    QVERIFY(station.logged(prefix + QStringLiteral("Подключение с IP 127.0.0.1")));
    QVERIFY(station.logged(prefix + QStringLiteral("Соединено ")));
}

// The end that hears first has no window and falls silent; its peer, not yet spoken to, gives none. The
// time-out ends this, and the next connection begins the other way about.
void TestE2eExchange::twoWorkstationsExchangeTelegrams()
{
    const quint16 port = freePort();
    Station server;
    Station client;
    server.listenOn(port);
    client.callTo(port);
    for (Station *station : {&server, &client})
        station->fakeTime(QStringLiteral("@2026-07-31 12:00:00 x5"));
    const QString fromServer = telegram(QStringLiteral("ОТ СЕРВЕРА"), 2100);
    const QString fromClient = telegram(QStringLiteral("ОТ КЛИЕНТА"), 2100);
    server.write(QStringLiteral("out/") + queued1, fileOf(fromServer));
    client.write(QStringLiteral("out/") + queued1, fileOf(fromClient));
    server.start();
    QTRY_VERIFY_WITH_TIMEOUT(server.logged(QStringLiteral("Ожидание подключения")), PatienceMs);
    client.start();
    QTRY_COMPARE_WITH_TIMEOUT(client.received(), QStringList(fromServer), 60000);
    QTRY_COMPARE_WITH_TIMEOUT(server.received(), QStringList(fromClient), 60000);
    QVERIFY(client.end());
    QVERIFY(server.end());
}

// "\r\nЗЦЗЦ СООБЩЕНИЕ ПРИНЯТО НННН  " and the time of day, by the option alone.
void TestE2eExchange::telegramIsConfirmed()
{
    FarEnd farEnd(quick);
    Station station;
    station.callTo(farEnd.port);
    station.set(QStringLiteral("Direct/SendConfirmation"), QStringLiteral("true"));
    station.fakeTime(QStringLiteral("@2026-07-31 12:34:00"));
    farEnd.send(telegram(QStringLiteral("ПОДТВЕРДИТЕ\r\n")));
    station.start();
    QTRY_COMPARE_WITH_TIMEOUT(farEnd.text(), QStringLiteral("\r\nЗЦЗЦ СООБЩЕНИЕ ПРИНЯТО НННН  1234\r\n"),
                              30000);
    QVERIFY(station.end());
}

// The stamp itself is not yet its time: the file goes in the second after it.
void TestE2eExchange::queueFileWithFutureTimeWaitsForIt()
{
    FarEnd farEnd(quick);
    Station station;
    station.callTo(farEnd.port);
    station.fakeTime(QStringLiteral("@2026-07-31 12:00:00 x2"));
    const QString text = telegram(QStringLiteral("В СВОЁ ВРЕМЯ\r\n").replace(QChar(0x0401), QChar(0x0415)));
    station.write(QStringLiteral("out/20260731u001.260731_120030"), fileOf(text));
    station.start();
    QTRY_COMPARE_WITH_TIMEOUT(farEnd.telegrams(), QStringList(text), 40000);
    const QStringList sending = station.journal().filter(QStringLiteral("Отправка файла: "));
    QCOMPARE(sending.size(), 1);
    const QString at = sending.first().left(8);
    QVERIFY2(at > QStringLiteral("12:00:30") && at < QStringLiteral("12:01:00"), qPrintable(at));
    QVERIFY(station.end());
}

void TestE2eExchange::orderlyCloseInEachMode_data()
{
    QTest::addColumn<QString>("processMode");
    QTest::addColumn<QString>("word");
    row("centre", "0", "ЦКС");
    row("switched", "1", "СКК");
    row("direct", "2", "ПС");
}

void TestE2eExchange::orderlyCloseInEachMode()
{
    QFETCH(QString, processMode);
    QFETCH(QString, word);
    FarEnd farEnd;
    Station station;
    station.set(QStringLiteral("CONNECT/processMode"), processMode);
    station.callTo(farEnd.port);
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(farEnd.has(QStringLiteral("ready:")), PatienceMs);
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral(": Соединено ")), PatienceMs);
    QVERIFY(station.end(10));
    const QStringList journal = station.journal();
    QVERIFY(journal.first().contains(
        QStringLiteral(" Запуск ------------ %1 ------------ V:2026.07.31 B:").arg(word)));
    QCOMPARE(journal.filter(QStringLiteral(" Выход")).size(), 1);
    QVERIFY2(
        QRegularExpression(QStringLiteral("^[0-9:]{8} $")).match(journal.at(journal.size() - 2)).hasMatch(),
        qPrintable(journal.join(QLatin1Char('\n'))));
    QVERIFY(journal.last().isEmpty());
    QVERIFY(station.read(QStringLiteral("velda.ini")).contains("processMode=" + processMode.toLatin1()));
    QCOMPARE(station.state(QStringLiteral("YYYYMMDD")).size(), 8);
    QVERIFY(!QFile::exists(station.path(QStringLiteral("velda.lck"))));
    QTRY_VERIFY_WITH_TIMEOUT(!farEnd.lines.filter(QStringLiteral("closed: ")).isEmpty(), PatienceMs);
}

// With the channel open the centre is told, and five ticks are left for it.
void TestE2eExchange::closeWithAnOpenChannelSendsTheStop()
{
    FarEnd farEnd(quick);
    Station station;
    station.set(QStringLiteral("CONNECT/processMode"), QStringLiteral("0"));
    station.callTo(farEnd.port);
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(farEnd.text().contains(QStringLiteral("|ЗЗ ")), PatienceMs);
    farEnd.command(QStringLiteral("text \\r\\nЗЦЗЦ СВЯЗЬ ОТКРЫТА НННН  \\r\\n"));
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral(" Состояние РБ")), PatienceMs);
    QVERIFY(station.end());
    QVERIFY(farEnd.text().endsWith(QStringLiteral("|ЗЦЗЦ КС СТОП НННН  ")));
    QCOMPARE(farEnd.text().count(QStringLiteral("СТОП")), 1);
    QVERIFY(station.logged(QStringLiteral(" Установлен РУЧНОЙ режим")));
}

QTEST_GUILESS_MAIN(TestE2eExchange)
#include "test_e2e_exchange.moc"
