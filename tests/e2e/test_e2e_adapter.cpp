// The direct link through a line adapter of either generation, at the pace of the line.

#include "tests/e2e/adapter_station.h"

#include <QtTest>

class TestE2eAdapter : public QObject
{
    Q_OBJECT

private slots:
    void telegramsGoBothWays_data() { AdapterStation::generations(); }
    void telegramsGoBothWays();
    void ethernetAdapterCarriesThemToo();
    void withoutInputSignalTheQueueWaits();
    void brokenLineStopsNeitherEnd();
    void silentAdapterIsTriedAgain();
    void killedProgramFindsThePortAgain();
};

void TestE2eAdapter::telegramsGoBothWays()
{
    QFETCH(QString, firmware);
    QFETCH(QString, version);
    FarEnd farEnd({}, AdapterStation::adapterOf(firmware));
    AdapterStation station(farEnd);
    const QString out = telegram(QStringLiteral("ИСХОДЯЩАЯ 1, 2 И 3\r\nТЕКСТ"), 700);
    const QStringList in = {telegram(QStringLiteral("ВХОДЯЩАЯ 1\r\nТЕКСТ")),
                            telegram(QStringLiteral("ВХОДЯЩАЯ 2"), 500)};
    station.queue(out);
    for (const QString &text : in)
        farEnd.send(QStringLiteral("\r\n") + text + QStringLiteral("\r\n"));
    station.start();
    QTRY_COMPARE_WITH_TIMEOUT(farEnd.telegrams(), QStringList(out), 60000);
    QTRY_VERIFY_WITH_TIMEOUT(station.hasSent(out), 60000);
    QTRY_COMPARE_WITH_TIMEOUT(station.received(), in, 60000);
    QTRY_COMPARE_WITH_TIMEOUT(station.names(QStringLiteral("out"), QStringLiteral("*u???.*")), QStringList(),
                              10000);
    const QString path = farEnd.ports.section(QLatin1Char('='), 1);
    QVERIFY(station.logged(QStringLiteral(" Trelo (10000001): Соединено ") + path));
    QVERIFY(station.logged(QStringLiteral(" Trelo (10000001): %1 (V %2)").arg(path, version)));
    QCOMPARE(station.tree(QStringLiteral("out")),
             QStringList(QStringLiteral("20260731/") + AdapterStation::queueName()));
    verifyOrderlyEnd(station, farEnd);
    QCOMPARE(station.state(QStringLiteral("PK_out")), QStringLiteral("1"));
    QCOMPARE(station.state(QStringLiteral("PK_in")), QStringLiteral("2"));
}

void TestE2eAdapter::ethernetAdapterCarriesThemToo()
{
    FarEnd::Adapter adapter = AdapterStation::adapterOf(QStringLiteral("new"));
    adapter.device = QStringLiteral("nerva");
    FarEnd farEnd({}, adapter);
    AdapterStation station(farEnd);
    const QString out = telegram(QStringLiteral("ИСХОДЯЩАЯ"), 100);
    const QString in = telegram(QStringLiteral("ВХОДЯЩАЯ"), 100);
    station.queue(out);
    farEnd.send(QStringLiteral("\r\n") + in + QStringLiteral("\r\n"));
    station.start();
    QTRY_COMPARE_WITH_TIMEOUT(farEnd.telegrams(), QStringList(out), 60000);
    QTRY_VERIFY_WITH_TIMEOUT(station.hasSent(out), 60000);
    QTRY_COMPARE_WITH_TIMEOUT(station.received(), QStringList(in), 60000);
    const QString path = farEnd.ports.section(QLatin1Char('='), 1);
    QVERIFY(farEnd.ports.startsWith(QLatin1String("30000001=")));
    QVERIFY(station.logged(QStringLiteral(" Nerva (30000001): Соединено ") + path));
    QVERIFY(station.logged(QStringLiteral(" Nerva (30000001): %1 (V 20231111)").arg(path)));
    verifyOrderlyEnd(station, farEnd);
}

void TestE2eAdapter::withoutInputSignalTheQueueWaits()
{
    FarEnd farEnd({}, AdapterStation::adapterOf(QStringLiteral("new")));
    AdapterStation station(farEnd);
    station.start();
    QTRY_COMPARE_WITH_TIMEOUT(station.connections(), 1, PatienceMs);
    farEnd.command(QStringLiteral("no-signal"));
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral(" Trelo (10000001): Нет входного сигнала ")),
                             20000);
    const QString out = telegram(QStringLiteral("ЖДЕТ СИГНАЛА\r\n"));
    station.queue(out);
    QTest::qWait(2000); // ten ticks
    QVERIFY(!station.logged(QStringLiteral("Отправка файла")));
    QCOMPARE(farEnd.telegrams(), QStringList());
    farEnd.command(QStringLiteral("signal"));
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral(" Trelo (10000001): Адаптер подключен")),
                             PatienceMs);
    QTRY_COMPARE_WITH_TIMEOUT(farEnd.telegrams(), QStringList(out), 60000);
    QTRY_VERIFY_WITH_TIMEOUT(station.hasSent(out), 60000);
    QCOMPARE(station.connections(), 1);
    verifyOrderlyEnd(station, farEnd);
}

// A break shows as one "^" in the journal, however long it is.
void TestE2eAdapter::brokenLineStopsNeitherEnd()
{
    FarEnd farEnd({}, AdapterStation::adapterOf(QStringLiteral("new")));
    AdapterStation station(farEnd);
    station.start();
    QTRY_COMPARE_WITH_TIMEOUT(station.connections(), 1, PatienceMs);
    farEnd.command(QStringLiteral("text ДО ОБРЫВА"));
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral("ДО ОБРЫВА")), PatienceMs);
    farEnd.command(QStringLiteral("break"));
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral("ДО ОБРЫВА^")), PatienceMs);
    QTest::qWait(1000); // it goes on
    farEnd.command(QStringLiteral("mend"));
    farEnd.command(QStringLiteral("text ПОСЛЕ ОБРЫВА"));
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral("ПОСЛЕ ОБРЫВА")), PatienceMs);
    QCOMPARE(station.journal().join(QString()).count(QLatin1Char('^')), 1);
    QCOMPARE(station.connections(), 1);
    verifyOrderlyEnd(station, farEnd);
}

// Silent at the start it is tried again after 30 seconds, silent later for 31 seconds after 5.
void TestE2eAdapter::silentAdapterIsTriedAgain()
{
    FarEnd farEnd({}, AdapterStation::adapterOf(QStringLiteral("new"), {QStringLiteral("--silent")}));
    AdapterStation station(farEnd);
    station.start();
    const QString silent = QStringLiteral(" Trelo (10000001): Адаптер не отвечает");
    QTRY_COMPARE_WITH_TIMEOUT(station.count(silent), 1, PatienceMs);
    QCOMPARE(station.connections(), 0);
    farEnd.command(QStringLiteral("speak"));
    QTRY_COMPARE_WITH_TIMEOUT(station.connections(), 1, 30000);
    farEnd.command(QStringLiteral("silence"));
    QTRY_COMPARE_WITH_TIMEOUT(station.count(silent), 2, 30000);
    farEnd.command(QStringLiteral("speak"));
    QTRY_COMPARE_WITH_TIMEOUT(station.connections(), 2, 30000);
    const QString out = telegram(QStringLiteral("ПОСЛЕ ТИШИНЫ\r\n"));
    station.queue(out);
    QTRY_COMPARE_WITH_TIMEOUT(farEnd.telegrams(), QStringList(out), 60000);
    QTRY_VERIFY_WITH_TIMEOUT(station.hasSent(out), 60000);
    verifyOrderlyEnd(station, farEnd);
}

// The queue file of a killed program is whole, and goes again from its beginning.
void TestE2eAdapter::killedProgramFindsThePortAgain()
{
    FarEnd farEnd({}, AdapterStation::adapterOf(QStringLiteral("new")));
    AdapterStation station(farEnd);
    const QString out = telegram(QStringLiteral("ПЕРЕДАННАЯ ДВАЖДЫ"), 400);
    station.queue(out);
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(farEnd.text().contains(QStringLiteral("СТРОКА 0002")), 60000);
    farEnd.command(QStringLiteral("allow-kill"));
    QTest::qWait(200);
    station.kill();
    QCOMPARE(station.tree(QStringLiteral("out")), QStringList(AdapterStation::queueName()));
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(farEnd.text().endsWith(out), 60000);
    QTRY_VERIFY_WITH_TIMEOUT(station.hasSent(out), 60000);
    QTRY_COMPARE_WITH_TIMEOUT(station.tree(QStringLiteral("out")),
                              QStringList(QStringLiteral("20260731/") + AdapterStation::queueName()),
                              PatienceMs);
    verifyOrderlyEnd(station, farEnd);
}

QTEST_GUILESS_MAIN(TestE2eAdapter)
#include "test_e2e_adapter.moc"
