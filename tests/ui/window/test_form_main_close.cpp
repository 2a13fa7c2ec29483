#include "app/options.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "tests/support/row.h"
#include "tests/ui/window/station.h"
#include "ui/form_main.h"
#include "ui/roll/protocol_widget.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>
#include <QtTest>

class TestFormMainClose : public QObject
{
    Q_OBJECT

private slots:
    void crossOfTheWindowHidesIt();
    void closeIsAskedFor();
    void refusalChangesNothing_data();
    void refusalChangesNothing();
    void agreementCountsDown_data();
    void agreementCountsDown();
    void trayExitAsksOnlyOnceAtATime();
    void modeGoesToNoneWithTheFirstTick_data();
    void modeGoesToNoneWithTheFirstTick();
    void centreIsLeftWithAStopInManualMode();
    void switchedConnectionIsClearedOnce();
    void withoutAnOpenChannelNothingIsSent_data();
    void withoutAnOpenChannelNothingIsSent();
    void tickOfTheEndReallyCloses();
    void windowInTheTrayIsReallyClosed();
    void realCloseKeepsWhatTheOperatorSet();
    void commandSwitchIsKeptOnlyWhereItExists_data();
    void commandSwitchIsKeptOnlyWhereItExists();
    void figureInTheWordsFieldLeavesTheTemplate();
    void ignoredCloseKeepsNothing();
    void openQuestionIsClosedWithTheWindow();
    void openMenuIsClosedWithTheWindow();
};

void TestFormMainClose::crossOfTheWindowHidesIt()
{
    Station station(Direct);
    station.form->show();
    QVERIFY(!station.form->close());
    QVERIFY(!station.form->isVisible());
    QVERIFY(station.form->trayIcon.isVisible());
    QCOMPARE(State.stopCountdown, 0);
    QVERIFY(!State.closeAllowed);
}

void TestFormMainClose::closeIsAskedFor()
{
    Station station(Direct);
    const Answer answer(QMessageBox::No);
    station.form->closeApplication();
    QCOMPARE(answer.asked, (QStringList{QStringLiteral("Velda"), QStringLiteral("Завершить приложение?")}));
}

void TestFormMainClose::refusalChangesNothing_data()
{
    QTest::addColumn<int>("answer");
    row("no", int(QMessageBox::No));
    row("box closed", int(QMessageBox::NoButton));
    row("Esc", int(QMessageBox::Cancel));
}

void TestFormMainClose::refusalChangesNothing()
{
    QFETCH(int, answer);
    Station station(Direct);
    State.tlgMode = 3;
    const Answer given(answer);
    station.form->closeApplication();
    QCOMPARE(State.stopCountdown, 0);
}

void TestFormMainClose::agreementCountsDown_data()
{
    QTest::addColumn<int>("tlgMode");
    QTest::addColumn<int>("countdown");
    for (const int mode : {0, 1, 2, 4, 5})
        QTest::addRow("%d", mode) << mode << 2;
    row("3", 3, 5);
}

void TestFormMainClose::agreementCountsDown()
{
    QFETCH(int, tlgMode);
    Station station(CKS);
    State.tlgMode = tlgMode;
    const Answer yes(QMessageBox::Yes);
    station.form->closeApplication();
    QTEST(State.stopCountdown, "countdown");
    QVERIFY(!State.closeAllowed); // the tick closes
}

void TestFormMainClose::trayExitAsksOnlyOnceAtATime()
{
    Station station(Direct);
    auto *exit = station.find<QAction>("trayExit");
    const Answer answer(QMessageBox::No, [exit] { exit->trigger(); });
    exit->trigger();
    QCOMPARE(answer.asked.size(), 2); // one title, one text
    exit->trigger();
    QCOMPARE(answer.asked.size(), 4);
}

void TestFormMainClose::modeGoesToNoneWithTheFirstTick_data()
{
    QTest::addColumn<int>("processMode");
    row("CKS", int(CKS));
    row("SKK", int(SKK));
    row("direct", int(Direct));
}

void TestFormMainClose::modeGoesToNoneWithTheFirstTick()
{
    QFETCH(int, processMode);
    Station station(processMode);
    State.manualMode = true; // keeps the line quiet for what follows
    State.tlgMode = 3;
    State.tlgModeSeconds = 100;
    State.stopCountdown = 5;
    station.tick();
    QCOMPARE(State.tlgMode, 0);
    QCOMPARE(State.tlgModeSeconds, 1);
    QCOMPARE(State.stopCountdown, 4);
    (void)station.desk.sent();
    (void)station.news();
    for (int left = 3; left >= 1; --left) {
        station.tick();
        QCOMPARE(State.stopCountdown, left);
        QCOMPARE(State.tlgModeSeconds, 5 - left);
        QVERIFY(!State.closeAllowed);
    }
    station.tick();
    QVERIFY(State.closeAllowed);
    QVERIFY(station.desk.sent().isEmpty());
    QVERIFY(station.news().isEmpty());
}

void TestFormMainClose::centreIsLeftWithAStopInManualMode()
{
    Station station(CKS);
    station.setLinkUp(true);
    State.tlgMode = 3;
    State.stopCountdown = 5;
    TlgThread.sendBuffer.mAppend(QStringLiteral("ЗЦЗЦ 001 ТЕКСТ"));
    station.tick();
    QVERIFY(State.manualMode);
    QCOMPARE(station.desk.sent(), QStringLiteral("|ЗЦЗЦ КС СТОП НННН  "));
    station.tick(4);
    QVERIFY(station.desk.sent().isEmpty());
}

void TestFormMainClose::switchedConnectionIsClearedOnce()
{
    Station station(SKK);
    State.manualMode = true;
    station.setLinkUp(true);
    State.connectionActive = true;
    State.setCallDirection(2); // the mode becomes 3
    State.stopCountdown = 5;
    station.tick();
    QVERIFY(!State.connectionActive);
    QCOMPARE(State.tlgMode, 0);
    QCOMPARE(station.desk.sent(), QStringLiteral("@H"));
    station.tick(4);
    QVERIFY(State.closeAllowed);
    QVERIFY(station.desk.sent().isEmpty());
}

void TestFormMainClose::withoutAnOpenChannelNothingIsSent_data()
{
    modeGoesToNoneWithTheFirstTick_data();
}

void TestFormMainClose::withoutAnOpenChannelNothingIsSent()
{
    QFETCH(int, processMode);
    Station station(processMode);
    station.setLinkUp(true);
    State.scanCountdown = 1000;
    State.stopCountdown = 2;
    station.tick();
    QVERIFY(!State.closeAllowed);
    QVERIFY(!State.manualMode);
    station.tick();
    QVERIFY(State.closeAllowed);
    QVERIFY(station.desk.sent().isEmpty());
}

void TestFormMainClose::tickOfTheEndReallyCloses()
{
    Station station(Direct);
    station.form->show();
    State.stopCountdown = 1;
    station.tick();
    QCOMPARE(State.stopCountdown, 0);
    QVERIFY(!station.form->isVisible());
    QVERIFY(!station.form->trayIcon.isVisible());
    QVERIFY(QApplication::quitOnLastWindowClosed());
    station.tick(); // a tick that comes before the event loop ends
    QCOMPARE(State.stopCountdown, 0);
}

void TestFormMainClose::windowInTheTrayIsReallyClosed()
{
    Station station(Direct);
    station.form->hide();
    QVERIFY(!QApplication::quitOnLastWindowClosed()); // a box closed meanwhile must not end the program
    State.stopCountdown = 1;
    station.tick();
    QVERIFY(!station.form->trayIcon.isVisible());
    QVERIFY(QApplication::quitOnLastWindowClosed());
}

void TestFormMainClose::realCloseKeepsWhatTheOperatorSet()
{
    Station station(SKK);
    station.form->show();
    station.form->setGeometry(30, 40, 950, 500);
    station.form->protocolWidget->setShowRegisters(true);
    station.form->protocolWidget->setShowInfo(false);
    station.form->protocolWidget->setShowCmd(true);
    station.find<QLineEdit>("editorFrom")->setText(QStringLiteral("ЗАГОЛОВОК"));
    station.find<QLineEdit>("editorPScript")->setText(QStringLiteral("ПОДПИСЬ"));
    station.find<QLineEdit>("editorFKassa")->setText(QStringLiteral("КАССА"));
    station.find<QLineEdit>("editorFFrom")->setText(QStringLiteral("ОТКУДА"));
    station.find<QLineEdit>("editorWordsCount")->setText(QStringLiteral("$/2"));
    State.closeAllowed = true;
    QVERIFY(station.form->close());
    QCOMPARE(Options.geometryMainForm, QRect(30, 40, 950, 500));
    QVERIFY(Options.ShowRegisters);
    QVERIFY(!Options.ShowInfo);
    QVERIFY(Options.ShowCmd);
    QCOMPARE(Options.editorFromString, QStringLiteral("ЗАГОЛОВОК"));
    QCOMPARE(Options.editorPScriptString, QStringLiteral("ПОДПИСЬ"));
    QCOMPARE(Options.editorFKassaString, QStringLiteral("КАССА"));
    QCOMPARE(Options.editorFFromString, QStringLiteral("ОТКУДА"));
    QCOMPARE(Options.editorWordsCountShablon, QStringLiteral("$/2"));
}

void TestFormMainClose::commandSwitchIsKeptOnlyWhereItExists_data()
{
    QTest::addColumn<int>("procedure");
    QTest::addColumn<bool>("stored");
    QTest::addColumn<bool>("kept");
    for (const bool stored : {true, false}) {
        QTest::addRow("centre, %d", stored) << int(CKS) << stored << stored;
        QTest::addRow("direct, %d", stored) << int(Direct) << stored << stored;
        QTest::addRow("switched, %d", stored) << int(SKK) << stored << !stored;
    }
}

// Through the file, as the next run reads it.
void TestFormMainClose::commandSwitchIsKeptOnlyWhereItExists()
{
    QFETCH(int, procedure);
    QFETCH(bool, stored);
    QFETCH(bool, kept);
    Station station(procedure, [stored] { Options.ShowCmd = stored; });
    station.form->protocolWidget->setShowCmd(!stored); // the operator's click, where there is a box
    State.closeAllowed = true;
    QVERIFY(station.form->close());
    Options.Save();
    Options.ShowCmd = !kept;
    Options.Load();
    QCOMPARE(Options.ShowCmd, kept);
}

void TestFormMainClose::figureInTheWordsFieldLeavesTheTemplate()
{
    Station station(Direct, [] { Options.editorWordsCountShablon = QStringLiteral("$ СЛ"); });
    auto *words = station.find<QLineEdit>("editorWordsCount");
    QCOMPARE(words->text(), QStringLiteral("$ СЛ"));
    words->setText(QStringLiteral("17"));
    State.closeAllowed = true;
    station.form->close();
    QCOMPARE(Options.editorWordsCountShablon, QStringLiteral("$ СЛ"));
}

void TestFormMainClose::ignoredCloseKeepsNothing()
{
    Station station(Direct);
    station.form->setGeometry(30, 40, 700, 500);
    station.find<QLineEdit>("editorFrom")->setText(QStringLiteral("ЗАГОЛОВОК"));
    station.form->close();
    QCOMPARE(Options.geometryMainForm, QRect(0, 0, 800, 600));
    QVERIFY(Options.editorFromString.isEmpty());
}

void TestFormMainClose::openQuestionIsClosedWithTheWindow()
{
    Station station(Direct);
    station.form->show();
    // The system asks the program to end while the operator is being asked.
    QTimer::singleShot(0, station.form.get(), [&station] {
        QVERIFY(QApplication::activeModalWidget());
        State.stopCountdown = 2;
        station.tick(2);
    });
    station.form->closeApplication(); // the real box
    QVERIFY(State.closeAllowed);
    QCOMPARE(State.stopCountdown, 0);
    QVERIFY(!station.form->isVisible());
}

void TestFormMainClose::openMenuIsClosedWithTheWindow()
{
    Station station(Direct);
    station.form->show();
    QTimer::singleShot(0, station.form.get(), [&station] {
        QVERIFY(QApplication::activePopupWidget());
        State.stopCountdown = 1;
        station.tick();
    });
    station.form->trayIcon.contextMenu()->exec(QPoint(10, 10));
    QVERIFY(State.closeAllowed);
    QVERIFY(!QApplication::activePopupWidget());
}

QTEST_MAIN(TestFormMainClose)
#include "test_form_main_close.moc"
