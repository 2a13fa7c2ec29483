// The tab "Передача" while the line procedure sends the very file that is selected: nothing is lost, sent
// twice or numbered wrong.

#include "app/clock.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "procedures/process_skk.h"
#include "tests/ui/window/send_tab.h"

namespace
{
const QString A = QStringLiteral("20260731u001"), B = QStringLiteral("20260731u002");

/// The centre has opened the channel and gets the first of two telegrams.
void beginWithCentre(SendTab &tab)
{
    tab.queue(A, "ПЕРВЫЙ");
    tab.queue(B, "ВТОРОЙ");
    tab.form->scanDir();
    State.scanCountdown = 1000;
    State.setTlgMode(ModeOpen);
    State.secondsSinceRx = 10;
    tab.setLinkUp(true);
    tab.tick();
    QCOMPARE(tab.desk.sent(), QStringLiteral("|ЗЦЗЦ 001 ПЕРВЫЙ НННН  "));
    tab.click(A);
    (void)tab.news();
}

/// The first of two telegrams is on its call, with \a tries left before it.
void beginCall(SendTab &tab, int tries)
{
    const QString record = QStringLiteral("123456|S|31.07.2026 11:00|u|%1|N|").arg(tries);
    tab.queueWithRecord(A, record, "ПЕРВЫЙ");
    tab.form->scanDir();
    tab.click(A);
    tab.setLinkUp(true);
    tab.tick();
    QCOMPARE(State.currentFile, A);
    QCOMPARE(State.AutoModeState, int(AutoCalling));
    (void)tab.desk.sent();
    (void)tab.news();
}
} // namespace

class TestSendUnderWay : public QObject
{
    Q_OBJECT

private slots:
    void telegramDeletedOnTheWayToTheCentreKeepsItsNumber();
    void telegramDeletedOnTheDirectLinkStopsTheQueue();
    void telegramDeletedDuringItsCallDoesNotGoOut();
    void stopDuringTheCallOutlastsIt();
    void repeatDuringTheLastTryOutlastsIt();
    void timeSetDuringTheCallIsNotTakenBack();
    void numberUnderWayStays();
    void telegramThatWentOutDuringTheMenuIsToldOnce();
};

void TestSendUnderWay::telegramDeletedOnTheWayToTheCentreKeepsItsNumber()
{
    SendTab tab(CKS);
    beginWithCentre(tab);
    QTest::mouseClick(tab.page->remove, Qt::LeftButton);
    QCOMPARE(tab.names(tab.waiting), QStringList{B});
    tab.tick(10); // the second waits for the receipt of the first
    QCOMPARE(tab.desk.sent(), QString());
    tab.receive(QStringLiteral("ЗЦЗЦ ВАШ 001 НАШ 000 ПОСЛЕДНИЕ СВЯЗЬ ОТКРЫТА АБВ123/4 НННН  \r\n"));
    tab.tick(5);
    QCOMPARE(tab.news().filter(QStringLiteral("Ошибка переименования")).size(), 1);
    QVERIFY(State.manualMode); // the operator is to see that the archive lacks a telegram
    QCOMPARE(State.PK_out, 1);
    QCOMPARE(tab.desk.sent(), QString());
    State.setAutomatic(true);
    State.setTlgMode(ModeOpen);
    State.askReceiptCountdown = 0;
    tab.tick(5);
    QCOMPARE(tab.desk.sent(), QStringLiteral("|ЗЦЗЦ 002 ВТОРОЙ НННН  "));
    QVERIFY(tab.isQueued(B));
}

void TestSendUnderWay::telegramDeletedOnTheDirectLinkStopsTheQueue()
{
    SendTab tab(Direct);
    const QString stamp = QStringLiteral(".260731_110000");
    tab.queue(A + stamp, "ПЕРВЫЙ");
    tab.queue(B + stamp, "ВТОРОЙ");
    tab.form->scanDir();
    tab.setLinkUp(true);
    TlgThread.allSent = true;
    tab.tick();
    QCOMPARE(tab.desk.sent(), QStringLiteral("ПЕРВЫЙ"));
    tab.click(A + stamp);
    QTest::mouseClick(tab.page->remove, Qt::LeftButton);
    tab.reportSent(QStringLiteral("ПЕРВЫЙ"));
    QVERIFY(State.manualMode);
    QVERIFY(!State.fileInProgress);
    tab.tick(5);
    QCOMPARE(tab.desk.sent(), QString());
    State.setAutomatic(true);
    tab.tick(5);
    QCOMPARE(tab.desk.sent(), QStringLiteral("ВТОРОЙ"));
}

void TestSendUnderWay::telegramDeletedDuringItsCallDoesNotGoOut()
{
    SendTab tab(SKK);
    beginCall(tab, 3);
    QTest::mouseClick(tab.page->remove, Qt::LeftButton);
    TlgThread.allSent = true;
    State.connectionActive = true; // the far end has answered and is known
    State.AutoModeState = AutoBeforeFile;
    State.AutoModeWaitTimer = 1;
    State.secondsSinceRx = 100;
    tab.tick();
    QVERIFY(!tab.desk.sent().contains(QStringLiteral("ПЕРВЫЙ")));
    QVERIFY(tab.news().join('/').contains(QStringLiteral("Ошибка открытия файла ") + A));
    ProcessSKK.clearSKKConnection();
    State.hangUpPause = 0;
    tab.tick(30);
    QVERIFY(!State.fileInProgress);
    QCOMPARE(tab.names(tab.waiting), QStringList());
}

void TestSendUnderWay::stopDuringTheCallOutlastsIt()
{
    SendTab tab(SKK);
    beginCall(tab, 3);
    tab.choose(tab.openMenu(A), tab.page->pause);
    QCOMPARE(tab.selected(tab.failed), A);
    QVERIFY(State.fileInProgress); // the call itself goes on
    ProcessSKK.clearAutoMode();
    State.hangUpPause = 0;
    tab.tick(30);
    QVERIFY(tab.record(A).contains(QStringLiteral("|u|0|N|")));
    QVERIFY(!State.fileInProgress);
    QCOMPARE(tab.selected(tab.failed), A);
}

void TestSendUnderWay::repeatDuringTheLastTryOutlastsIt()
{
    SendTab tab(SKK, [] { Options.sendTrys = 4; });
    beginCall(tab, 1);
    tab.form->scanDir();
    QCOMPARE(tab.selected(tab.failed), A); // its last try is spent
    QTest::mouseClick(tab.page->reSend, Qt::LeftButton);
    QCOMPARE(tab.selected(tab.waiting), A);
    ProcessSKK.clearAutoMode();
    QVERIFY(tab.record(A).contains(QStringLiteral("|u|4|N|")));
    tab.form->scanDir();
    QCOMPARE(tab.selected(tab.waiting), A);
}

void TestSendUnderWay::timeSetDuringTheCallIsNotTakenBack()
{
    SendTab tab(SKK);
    beginCall(tab, 3);
    Time.setTo(QDateTime(QDate(2026, 7, 31), QTime(12, 30)));
    tab.form->slotSendResetSendTime();
    State.AutoModeState = AutoAsked; // whose failure sets no time
    ProcessSKK.clearAutoMode();
    QCOMPARE(tab.record(A), QStringLiteral("123456|S|31.07.2026 12:30|u|2|N|Нет ответа"));
}

void TestSendUnderWay::numberUnderWayStays()
{
    SendTab tab(SKK);
    beginCall(tab, 3);
    const QString before = tab.record(A);
    QMenu *menu = tab.openMenu(A);
    QVERIFY(!tab.page->changeNumber->isEnabled());
    QTest::keyClick(menu, Qt::Key_Escape);
    tab.form->slotSendChangeAbonentNumber(); // opens no dialog, whose loop would not end
    QCOMPARE(tab.record(A), before);
}

void TestSendUnderWay::telegramThatWentOutDuringTheMenuIsToldOnce()
{
    SendTab tab(SKK);
    beginCall(tab, 3);
    QMenu *menu = tab.openMenu(A);
    ProcessSKK.compliteSKKFileSendedInAutoMode();
    ProcessSKK.clearSKKConnection();
    QVERIFY(!tab.isQueued(A));
    (void)tab.news();
    tab.choose(menu, tab.page->pause);
    QCOMPARE(tab.news().filter(QStringLiteral("Нет файла")).size(), 1);
    QVERIFY(!tab.isQueued(A + ".dat"));
    QCOMPARE(tab.names(tab.waiting) + tab.names(tab.failed), QStringList());
}

QTEST_MAIN(TestSendUnderWay)
#include "test_send_under_way.moc"
