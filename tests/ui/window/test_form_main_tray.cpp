#include "app/state.h"
#include "tests/support/row.h"
#include "tests/ui/window/station.h"
#include "ui/form_main.h"

#include <QAction>
#include <QMenu>
#include <QtTest>

class TestFormMainTray : public QObject
{
    Q_OBJECT

private slots:
    void trayShowsModeOfTheChannel_data();
    void trayShowsModeOfTheChannel();
    void trayShowsNothingForModeBV();
    void trafficAnimationGoesRoundItsFivePictures();
    void trafficInTheSecondOfAModeChangeShowsTheAnimation();
    void trayIconIsSetOnlyWhenItChanges();
    void trayHasTwoEntriesAndShowsTheStartIcon();
    void trayIconsAreThereButForModeBV();
    void trayClickTogglesTheWindow();
};

namespace
{
int traySetting(const Station &station)
{
    return station.form->trayIcon.prevIconN;
}
} // namespace

void TestFormMainTray::trayShowsModeOfTheChannel_data()
{
    QTest::addColumn<bool>("up");
    QTest::addColumn<int>("tlgMode");
    QTest::addColumn<int>("index");
    row("no link", false, 0, 7);
    row("no link in mode РБ", false, 3, 7);
    row("--", true, 0, 0);
    row("БД", true, 1, 4);
    row("БА", true, 2, 3);
    row("РБ", true, 3, 5);
    row("БВ", true, 4, 6);
    row("БР", true, 5, 0);
    row("above", true, 6, 0);
    row("below", true, -1, 0);
}

void TestFormMainTray::trayShowsModeOfTheChannel()
{
    QFETCH(bool, up);
    QFETCH(int, tlgMode);
    Station station(CKS);
    station.setLinkUp(up);
    State.tlgMode = tlgMode;
    State.secondsSinceTx = State.secondsSinceRx = 1;
    station.tick();
    QTEST(traySetting(station), "index");
}

void TestFormMainTray::trayShowsNothingForModeBV()
{
    Station station(CKS);
    station.setLinkUp(true);
    State.secondsSinceTx = State.secondsSinceRx = 1;
    State.tlgMode = 4;
    station.tick();
    QVERIFY(station.form->trayIcon.icon().isNull());
    State.tlgMode = 3;
    station.tick();
    QVERIFY(!station.form->trayIcon.icon().isNull());
}

void TestFormMainTray::trafficAnimationGoesRoundItsFivePictures()
{
    Station station(Direct);
    State.secondsSinceTx = 1;
    QList<int> indexes;
    for (int i = 0; i < 6; ++i) {
        State.secondsSinceRx = 0;
        station.tick();
        indexes << traySetting(station);
    }
    QCOMPARE(indexes, (QList<int>{9, 10, 11, 12, 8, 9}));
    station.tick(); // nothing came in this second
    QCOMPARE(traySetting(station), 7);
    State.secondsSinceTx = 0;
    station.tick();
    QCOMPARE(traySetting(station), 10);
}

void TestFormMainTray::trafficInTheSecondOfAModeChangeShowsTheAnimation()
{
    Station station(CKS);
    station.setLinkUp(true);
    State.setTlgMode(3);
    State.secondsSinceTx = 5;
    State.secondsSinceRx = 0;
    station.tick();
    QCOMPARE(traySetting(station), 9);
    station.tick();
    QCOMPARE(traySetting(station), 5);
}

void TestFormMainTray::trayIconIsSetOnlyWhenItChanges()
{
    Station station(Direct);
    State.secondsSinceTx = State.secondsSinceRx = 1;
    station.tick();
    const QIcon none;
    station.form->trayIcon.setIcon(none);
    station.tick();
    QVERIFY(station.form->trayIcon.icon().isNull());
}

void TestFormMainTray::trayHasTwoEntriesAndShowsTheStartIcon()
{
    Station station(Direct);
    QStringList entries;
    for (QAction *action : station.form->trayIcon.contextMenu()->actions())
        entries << action->text();
    QCOMPARE(entries, (QStringList{QStringLiteral("Развернуть"), QStringLiteral("Выход")}));
    QVERIFY(station.form->trayIcon.isVisible());
    QCOMPARE(station.form->trayIcon.icon().cacheKey(), station.form->trayIcon.icons[13].cacheKey());
    QCOMPARE(station.form->windowIcon().cacheKey(), station.form->trayIcon.icons[13].cacheKey());
    station.find<QAction>("trayShow")->trigger();
    QVERIFY(station.form->isVisible());
}

void TestFormMainTray::trayIconsAreThereButForModeBV()
{
    Station station(Direct);
    QCOMPARE(station.form->trayIcon.icons.size(), size_t(14));
    for (size_t i = 0; i < station.form->trayIcon.icons.size(); ++i)
        QCOMPARE(station.form->trayIcon.icons[i].availableSizes().isEmpty(), i == 6);
    QCOMPARE(station.form->trayIcon.prevIconN, -1); // so that the first tick sets its own
}

void TestFormMainTray::trayClickTogglesTheWindow()
{
    Station station(Direct);
    station.form->iconActivated(QSystemTrayIcon::Trigger);
    QVERIFY(station.form->isVisible());
    station.form->iconActivated(QSystemTrayIcon::DoubleClick);
    station.form->iconActivated(QSystemTrayIcon::Context);
    QVERIFY(station.form->isVisible());
    station.form->showMinimized();
    station.form->iconActivated(QSystemTrayIcon::Trigger);
    QVERIFY(station.form->isVisible());
    QVERIFY(!station.form->isMinimized());
    station.form->iconActivated(QSystemTrayIcon::Trigger);
    QVERIFY(!station.form->isVisible());
}

QTEST_MAIN(TestFormMainTray)
#include "test_form_main_tray.moc"
