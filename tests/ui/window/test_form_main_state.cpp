#include "app/state.h"
#include "link/prf_thread.h"
#include "link/tlg_thread.h"
#include "tests/support/row.h"
#include "tests/ui/window/station.h"
#include "tools/linesim/serial/pseudo_terminal.h"
#include "ui/form_main.h"

#include <QFrame>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

class TestFormMainState : public QObject
{
    Q_OBJECT

private slots:
    void stateOfTheLinkIsShownAndJournalled();
    void everyTextIsJournalledOnceInOrder();
    void everyForeignCallerStandsInTheJournal();
    void everyStateOfAnAdapterIsJournalledOnce();
    void stateOfTheLinkWithALineErrorIsRed();
    void buttonsWorkOnlyWhileTheLinkIsUp();
    void lostLinkEndsTheConnection();
    void stateOfThePerforatorIsShown_data();
    void stateOfThePerforatorIsShown();
    void clickOnStateReconnectsOnlyADownLink();
};

void TestFormMainState::stateOfTheLinkIsShownAndJournalled()
{
    Station station(Direct);
    (void)station.news();
    TlgThread.stateText.mSet(QStringLiteral("Соединение установлено"));
    station.setLinkUp(true);
    station.form->slotOnTlgState();
    QCOMPARE(station.shown("labelLinkState"), QStringLiteral("Соединение установлено"));
    QCOMPARE(station.colour("labelLinkState"), QColor(Qt::green));
    QCOMPARE(station.news(), QStringList{QStringLiteral("312:00:00 Соединение установлено")});
    TlgThread.stateText.mSet(QStringLiteral("Разрыв"));
    station.setLinkUp(false);
    station.form->slotOnTlgState();
    QCOMPARE(station.shown("labelLinkState"), QStringLiteral("Разрыв"));
    QCOMPARE(station.colour("labelLinkState"), QColor(Qt::red));
    // The line does not wait for the end of a running one.
    station.receive(QStringLiteral("АБ"));
    (void)station.news();
    TlgThread.stateText.mSet(QStringLiteral("Разрыв"));
    station.form->slotOnTlgState();
    QCOMPARE(station.news(), QStringList{QStringLiteral("312:00:00 Разрыв")});
}

void TestFormMainState::everyTextIsJournalledOnceInOrder()
{
    Station station(Direct);
    (void)station.news();
    for (const char *text : {"1", "2", "2", "3"})
        TlgThread.setState(QString::fromUtf8(text));
    QCoreApplication::processEvents();
    station.form->slotOnTlgState(); // the colour alone has changed
    QCOMPARE(station.shown("labelLinkState"), QStringLiteral("3"));
    QCOMPARE(station.news(), (QStringList{"312:00:00 1", "312:00:00 2", "312:00:00 2", "312:00:00 3"}));
}

// They call faster than the main thread looks.
void TestFormMainState::everyForeignCallerStandsInTheJournal()
{
    Station station(Direct);
    (void)station.news();
    QTcpServer place;
    QVERIFY(place.listen(QHostAddress::Any));
    const quint16 port = place.serverPort();
    place.close();
    TlgThread.setTcp(QStringLiteral("127.0.0.1"), port, true);
    TlgThread.start();
    const auto state = [] { return TlgThread.stateText.mGet(); };
    while (!state().contains(QStringLiteral("Ожидание")) && !TlgThread.isFinished())
        QThread::msleep(10); // no event is handled meanwhile
    QStringList expected{QStringLiteral("312:00:00 TcpServer (port:%1): Ожидание подключения").arg(port)};
    for (int caller = 2; caller <= 6; ++caller) {
        const QString address = QStringLiteral("127.0.0.%1").arg(caller);
        QTcpSocket socket;
        QVERIFY(socket.bind(QHostAddress(address)));
        socket.connectToHost(QHostAddress::LocalHost, port);
        QVERIFY(socket.waitForDisconnected(30000) || socket.state() == QAbstractSocket::UnconnectedState);
        expected << QStringLiteral("312:00:00 TcpServer (port:%1): попытка соединения с IP %2")
                        .arg(port)
                        .arg(address);
    }
    TlgThread.stopThread();
    TlgThread.wait();
    QCoreApplication::processEvents();
    QCOMPARE(station.news(), expected);
}

void TestFormMainState::everyStateOfAnAdapterIsJournalledOnce()
{
    Station station(Direct);
    (void)station.news();
    PseudoTerminal adapter;
    QVERIFY(adapter.plug());
    qputenv("VELDA_PORTS", "10000001=" + adapter.portName().toLocal8Bit() + ';');
    QByteArray got;
    connect(&adapter, &PseudoTerminal::opened, &adapter, [&] { adapter.write("\x30"); });
    connect(&adapter, &PseudoTerminal::received, &adapter, [&](const QByteArray &bytes) {
        got += bytes;
        if (bytes.contains('['))
            adapter.write("\x17\x0b\x0b");
    });
    QVERIFY(TlgThread.setTrelo(QStringLiteral("10000001"), 100, false));
    TlgThread.start();
    const QString version = adapter.portName() + QStringLiteral(" (V 20231111)");
    QTRY_COMPARE_WITH_TIMEOUT(station.shown("labelLinkState"), "Trelo (10000001): " + version, 30000);
    got.clear();
    adapter.write("\x30");
    QTRY_VERIFY_WITH_TIMEOUT(!got.isEmpty(), 30000); // in the loop, so all that belongs to the start is told
    QCoreApplication::processEvents();
    QStringList expected;
    for (const QString &text : {QStringLiteral("Подключение"), "Соединено " + adapter.portName(), version})
        expected << "312:00:00 Trelo (10000001): " + text;
    QCOMPARE(station.news(), expected);
    TlgThread.stopThread();
    TlgThread.wait();
    qunsetenv("VELDA_PORTS");
}

void TestFormMainState::stateOfTheLinkWithALineErrorIsRed()
{
    Station station(Direct);
    station.setLinkUp(true);
    TlgThread.lineError = 1;
    station.form->slotOnTlgState();
    QCOMPARE(station.colour("labelLinkState"), QColor(Qt::red));
    QVERIFY(!station.find<QFrame>("modeFrame")->isEnabled());
}

void TestFormMainState::buttonsWorkOnlyWhileTheLinkIsUp()
{
    for (const int mode : {CKS, SKK, Direct}) {
        Station station(mode);
        auto *frame = station.find<QFrame>("modeFrame");
        QVERIFY(!frame->isEnabled());
        station.setLinkUp(true);
        station.form->slotOnTlgState();
        QVERIFY(frame->isEnabled());
        station.setLinkUp(false);
        station.form->slotOnTlgState();
        QVERIFY(!frame->isEnabled());
    }
}

void TestFormMainState::lostLinkEndsTheConnection()
{
    Station station(SKK);
    station.setLinkUp(true);
    State.connectionActive = true;
    State.setCallDirection(2);
    station.form->slotOnTlgState();
    QVERIFY(State.connectionActive);
    station.setLinkUp(false);
    station.form->slotOnTlgState();
    QVERIFY(!State.connectionActive);
    QCOMPARE(State.callDirection, 0);
    // Without a connection there is nothing to end.
    State.hangUpPause = 0;
    station.form->slotOnTlgState();
    QCOMPARE(State.hangUpPause, 0);
}

void TestFormMainState::stateOfThePerforatorIsShown_data()
{
    QTest::addColumn<bool>("connected");
    QTest::addColumn<bool>("found");
    QTest::addColumn<QColor>("colour");
    row("connected", true, true, QColor(Qt::green));
    row("found", false, true, QColor(Qt::white));
    row("absent", false, false, QColor(Qt::red));
}

void TestFormMainState::stateOfThePerforatorIsShown()
{
    QFETCH(bool, connected);
    QFETCH(bool, found);
    Station station(Direct);
    PrfThread.connected = connected;
    PrfThread.adapterFound = found;
    PrfThread.stateText = QStringLiteral("Перфоратор");
    station.form->slotOnPrfState();
    QCOMPARE(station.shown("labelPrfState"), QStringLiteral("Перфоратор"));
    QTEST(station.colour("labelPrfState"), "colour");
    PrfThread.connected = PrfThread.adapterFound = false;
}

void TestFormMainState::clickOnStateReconnectsOnlyADownLink()
{
    Station station(Direct);
    auto *label = station.find<QWidget>("labelLinkState");
    station.setLinkUp(true);
    TlgThread.restartRequested = false;
    QTest::mouseClick(label, Qt::LeftButton);
    QVERIFY(!TlgThread.restartRequested);
    station.setLinkUp(false);
    QTest::mouseClick(label, Qt::LeftButton);
    QVERIFY(TlgThread.restartRequested);
}

QTEST_MAIN(TestFormMainState)
#include "test_form_main_state.moc"
