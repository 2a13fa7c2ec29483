#include "app/state.h"
#include "link/prf_thread.h"
#include "link/tlg_thread.h"
#include "tests/ui/station.h"
#include "ui/form_main.h"

#include <QFrame>
#include <QtTest>

class TestFormMainState : public QObject
{
    Q_OBJECT

private slots:
    void stateOfTheLinkIsShownAndJournalled();
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
    station.form->slotOnTlgState();
    QCOMPARE(station.news(), QStringList{QStringLiteral("312:00:00 Разрыв")});
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
    QTest::newRow("connected") << true << true << QColor(Qt::green);
    QTest::newRow("found") << false << true << QColor(Qt::white);
    QTest::newRow("absent") << false << false << QColor(Qt::red);
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
