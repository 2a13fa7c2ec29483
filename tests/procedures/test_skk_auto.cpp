// The automatic send of a queue file: its start and the steps that the timer moves.

#include "tests/procedures/skk_desk.h"
#include "tests/support/no_ordinary_file.h"
#include "tests/support/row.h"

#include <QFile>
#include <QtTest>

class TestSkkAuto : public QObject
{
    Q_OBJECT

private slots:
    void startSpendsATryOnDisk();
    void startTakesTheRowOfTheCentre();
    void startIsRefused_data();
    void startIsRefused();
    void idleMachineDoesNothing();

    void callTimesOut();
    void connectedAsksWithThePause_data();
    void connectedAsksWithThePause();
    void connectedWaitsWithoutAsking_data();
    void connectedWaitsWithoutAsking();
    void questionsBeforeTheFile_data();
    void questionsBeforeTheFile();
    void answerbackDoesNotCome();
    void ownAnswerbackThenThePauseBeforeTheFile();
    void fileGoesOutAfterThePause();
    void pauseBeforeTheFileIsExtended_data();
    void pauseBeforeTheFileIsExtended();
    void fileIsReadToItsFirstZero();
    void missingFileStandsStill();
    void specialFileCountsAsMissing_data() { specialFiles(); }
    void specialFileCountsAsMissing();
    void fileGoingOutIsWaitedFor();
    void pauseOfZeroStopsTheMachine();
};

namespace
{
const QString OwnAO = QStringLiteral("#\r\n777777 ДЕСК");

QList<int> machine()
{
    return {State.AutoModeState, State.AutoModeWaitTimer, State.AutoModeWaitAA};
}
} // namespace

void TestSkkAuto::startSpendsATryOnDisk()
{
    const SkkDesk desk;
    CTableViewModelItem_Send item = desk.row("a");
    item.resultText = QStringLiteral("Нет ответа");
    ProcessSKK.timing = &Options.SKKTiming[1];
    ProcessSKK.checkForSendNewTlg(item);
    QVERIFY(State.fileInProgress);
    QCOMPARE(State.currentFile, "a");
    QCOMPARE(State.sendInfo.number, "12345678");
    QCOMPARE(State.sendInfo.trys, 2);
    QCOMPARE(ProcessSKK.timing, &Options.SKKTiming[0]);
    QCOMPARE(desk.record(), "12345678|S|31.07.2026 11:59|u|2|N|Нет ответа");
    QCOMPARE(machine(), QList<int>({1, 61, 0}));
    QCOMPARE(State.waitTimeAfterCallEstablished, 62);
    QCOMPARE(desk.sent(), "@C@N12345678@");
    QCOMPARE(desk.noted(), QStringList({"312:00:00 Установка соединения для отправки файла a",
                                        "312:00:00 Набор номера 12345678"}));
}

void TestSkkAuto::startTakesTheRowOfTheCentre()
{
    const SkkDesk desk;
    CTableViewModelItem_Send item = desk.row("a", "ТЕКСТ", true);
    ProcessSKK.checkForSendNewTlg(item);
    QCOMPARE(ProcessSKK.timing, &Options.SKKTiming[1]);
    QCOMPARE(machine(), QList<int>({1, 71, 0}));
    QCOMPARE(State.waitTimeAfterCallEstablished, 72);
    QCOMPARE(desk.record(), "12345678|C|31.07.2026 11:59|u|2|N|");
}

void TestSkkAuto::startIsRefused_data()
{
    QTest::addColumn<bool>("bad");
    QTest::addColumn<int>("trys");
    QTest::addColumn<int>("seconds");
    QTest::addColumn<bool>("starts");
    row("its time is past", false, 1, -1, true);
    row("its time is now", false, 1, 0, false);
    row("its time will come", false, 1, 1, false);
    row("no tries left", false, 0, -1, false);
    row("bad mark", true, 1, -1, false);
}

void TestSkkAuto::startIsRefused()
{
    QFETCH(bool, bad);
    QFETCH(int, trys);
    QFETCH(int, seconds);
    QFETCH(bool, starts);
    const SkkDesk desk;
    CTableViewModelItem_Send item = desk.row("a");
    item.bad = bad;
    item.trys = trys;
    item.sendTime = Time.dateTime.addSecs(seconds);
    ProcessSKK.checkForSendNewTlg(item);
    QCOMPARE(State.AutoModeState, starts ? 1 : 0);
    QCOMPARE(State.fileInProgress, starts);
    QCOMPARE(State.currentFile, starts ? "a" : "");
    QCOMPARE(desk.sent(), starts ? "@C@N12345678@" : "");
    QCOMPARE(desk.noted().isEmpty(), !starts);
    QCOMPARE(desk.record().isEmpty(), !starts);
}

void TestSkkAuto::idleMachineDoesNothing()
{
    const SkkDesk desk;
    State.AutoModeWaitTimer = 1;
    ProcessSKK.processAutoMode();
    QCOMPARE(machine(), QList<int>({0, 0, 0}));
    QCOMPARE(desk.sent(), "");
}

void TestSkkAuto::callTimesOut()
{
    const SkkDesk desk;
    desk.automatic(1, 61);
    desk.autoTick(60);
    QCOMPARE(machine(), QList<int>({1, 1, 0}));
    desk.autoTick();
    QCOMPARE(machine(), QList<int>({0, 0, 0}));
    QCOMPARE(desk.sent(), "@H");
    QCOMPARE(desk.record(), "12345678|S|31.07.2026 12:05|u|2|N|");
    QCOMPARE(desk.noted(), QStringList());
}

void TestSkkAuto::connectedAsksWithThePause_data()
{
    QTest::addColumn<bool>("toCKS");
    QTest::addColumn<int>("pause");
    row("subscriber", false, 3);
    row("centre", true, 13);
}

void TestSkkAuto::connectedAsksWithThePause()
{
    QFETCH(bool, toCKS);
    QFETCH(int, pause);
    const SkkDesk desk;
    desk.automatic(2, 2, toCKS);
    desk.autoTick();
    QCOMPARE(machine(), QList<int>({2, 1, 0}));
    desk.autoTick();
    QCOMPARE(machine(), QList<int>({3, pause, 0}));
    QCOMPARE(desk.sent(), "");
}

void TestSkkAuto::connectedWaitsWithoutAsking_data()
{
    QTest::addColumn<bool>("toCKS");
    QTest::addColumn<QList<int>>("after");
    row("subscriber", false, QList<int>({5, 12, 7}));
    row("centre", true, QList<int>({5, 22, 8}));
}

void TestSkkAuto::connectedWaitsWithoutAsking()
{
    QFETCH(bool, toCKS);
    QFETCH(QList<int>, after);
    const SkkDesk desk;
    Options.afterConnectAskAO = false;
    desk.automatic(2, 1, toCKS);
    desk.autoTick();
    QCOMPARE(machine(), after);
    QCOMPARE(desk.sent(), "");
    desk.autoTick(after.at(1) - 1);
    QCOMPARE(State.AutoModeState, 5);
    QCOMPARE(desk.sent(), ""); // no question goes out before the file
    desk.autoTick();
    QCOMPARE(State.AutoModeState, 0);
    QCOMPARE(desk.sent(), "@H");
}

void TestSkkAuto::questionsBeforeTheFile_data()
{
    QTest::addColumn<bool>("toCKS");
    QTest::addColumn<QList<int>>("asked");
    QTest::addColumn<QList<int>>("askedAgain");
    row("subscriber", false, QList<int>({4, 7, 7}), QList<int>({5, 12, 7}));
    row("centre", true, QList<int>({4, 17, 8}), QList<int>({5, 22, 8}));
}

void TestSkkAuto::questionsBeforeTheFile()
{
    QFETCH(bool, toCKS);
    QFETCH(QList<int>, asked);
    QFETCH(QList<int>, askedAgain);
    const SkkDesk desk;
    desk.automatic(3, 2, toCKS);
    ProcessSKK.receiveBuffer = QStringLiteral("ШУМ");
    TlgThread.recvBuffer.mAppend("ЕЩЕ");
    desk.autoTick();
    QCOMPARE(machine(), QList<int>({3, 1, 0}));
    QCOMPARE(ProcessSKK.receiveBuffer, "ШУМ");
    desk.autoTick();
    QCOMPARE(machine(), asked);
    QCOMPARE(desk.sent(), "#*");
    QCOMPARE(ProcessSKK.receiveBuffer, "");
    QVERIFY(TlgThread.recvBuffer.mIsEmpty());

    ProcessSKK.receiveBuffer = QStringLiteral("ШУМ");
    TlgThread.recvBuffer.mAppend("ЕЩЕ");
    State.AutoModeWaitAA = 3; // kept, whatever it is
    desk.autoTick(asked.at(1) - 1);
    QCOMPARE(desk.sent(), "");
    desk.autoTick();
    askedAgain[2] = 3;
    QCOMPARE(machine(), askedAgain);
    QCOMPARE(desk.sent(), "#*");
    QCOMPARE(ProcessSKK.receiveBuffer, "");
    QVERIFY(TlgThread.recvBuffer.mIsEmpty());
}

void TestSkkAuto::answerbackDoesNotCome()
{
    const SkkDesk desk;
    desk.automatic(5, 2);
    State.AutoModeWaitAA = 7;
    desk.autoTick();
    QCOMPARE(machine(), QList<int>({5, 1, 7}));
    desk.autoTick();
    QCOMPARE(machine(), QList<int>({0, 0, 0}));
    QCOMPARE(desk.sent(), "@H");
    QCOMPARE(desk.noted(), QStringList({"312:00:00 Автоответ не распознан", "312:00:00 АО не распознан",
                                        "312:00:00 Соединение сохранено out/20260731/s120000"}));
    QCOMPARE(desk.record(), "12345678|S|31.07.2026 11:59|u|2|N|Нет ответа");
}

void TestSkkAuto::ownAnswerbackThenThePauseBeforeTheFile()
{
    const SkkDesk desk;
    desk.automatic(6, 2);
    desk.autoTick();
    QCOMPARE(desk.sent(), "");
    desk.autoTick();
    QCOMPARE(desk.sent(), OwnAO);
    QCOMPARE(machine(), QList<int>({10, 6, 0}));
}

void TestSkkAuto::fileGoesOutAfterThePause()
{
    const SkkDesk desk;
    desk.automatic(10, 2, false, "текст <>\r\n");
    State.secondsSinceRx = 5;
    desk.autoTick();
    QCOMPARE(desk.sent(), "");
    desk.autoTick();
    QCOMPARE(desk.sent(), "\r\nТЕКСТ \r\n\r\n");
    QCOMPARE(machine(), QList<int>({11, 1, 0}));
}

void TestSkkAuto::pauseBeforeTheFileIsExtended_data()
{
    QTest::addColumn<int>("silence");
    QTest::addColumn<int>("timer"); // 0: the file goes
    row("talks now", 0, 6);
    row("last second that extends", 4, 2);
    row("silent enough", 5, 0);
    row("silent for long", 6, 0);
}

void TestSkkAuto::pauseBeforeTheFileIsExtended()
{
    QFETCH(int, silence);
    QFETCH(int, timer);
    const SkkDesk desk;
    desk.automatic(10, 1);
    State.secondsSinceRx = silence;
    desk.autoTick();
    QCOMPARE(machine(), timer != 0 ? QList<int>({10, timer, 0}) : QList<int>({11, 1, 0}));
    QCOMPARE(desk.sent().isEmpty(), timer != 0);
}

void TestSkkAuto::fileIsReadToItsFirstZero()
{
    const SkkDesk desk;
    desk.automatic(10, 1, false, QByteArray("ТЕКСТ\0ДАЛЬШЕ", 22));
    State.secondsSinceRx = 100;
    desk.autoTick();
    QCOMPARE(desk.sent(), "\r\nТЕКСТ");
    desk.automatic(10, 1, false, "");
    desk.autoTick();
    QCOMPARE(desk.sent(), "\r\n");
    QCOMPARE(State.AutoModeState, 11);
}

void TestSkkAuto::specialFileCountsAsMissing()
{
    QFETCH(SpecialFile, kind);
    const SkkDesk desk;
    desk.automatic(10, 1);
    State.secondsSinceRx = 100;
    QVERIFY(QFile::remove(desk.path("out/a")));
    place(desk, kind, "out/a");
    desk.autoTick(20);
    QCOMPARE(machine(), QList<int>({10, 0, 0}));
    QCOMPARE(State.sendInfo.trys, 0);
    QCOMPARE(desk.noted(), QStringList("412:00:00 Ошибка открытия файла a"));
}

void TestSkkAuto::missingFileStandsStill()
{
    const SkkDesk desk;
    desk.automatic(10, 1);
    State.secondsSinceRx = 100;
    QVERIFY(QFile::remove(desk.path("out/a")));
    desk.autoTick(20);
    QCOMPARE(machine(), QList<int>({10, 0, 0}));
    QCOMPARE(State.sendInfo.trys, 0);
    QCOMPARE(desk.sent(), "");
    QCOMPARE(desk.noted(), QStringList("412:00:00 Ошибка открытия файла a"));
    QCOMPARE(desk.record(), "12345678|S|31.07.2026 11:59|u|2|N|"); // saved by the end of the machine alone
    QCOMPARE(State.callDirection, 2);
    ProcessSKK.clearAutoMode();
    QCOMPARE(desk.record(), "12345678|S|31.07.2026 11:59|u|0|N|Файл не отправлен");
}

void TestSkkAuto::fileGoingOutIsWaitedFor()
{
    const SkkDesk desk;
    desk.automatic(11, 1);
    ProcessSKK.SendTlgText("ЕЩЕ");
    ProcessSKK.processAutoMode();
    QCOMPARE(machine(), QList<int>({11, 1, 0}));
    (void)desk.sent();
    TlgThread.allSent = false;
    ProcessSKK.processAutoMode();
    QCOMPARE(machine(), QList<int>({11, 1, 0}));
    TlgThread.allSent = true;
    ProcessSKK.processAutoMode();
    QCOMPARE(State.AutoModeState, 13);
}

void TestSkkAuto::pauseOfZeroStopsTheMachine()
{
    const SkkDesk desk;
    Options.SKKTiming[0].Pause_Before_Ask_Who = 0;
    desk.automatic(2, 1);
    desk.autoTick(10);
    QCOMPARE(machine(), QList<int>({3, 0, 0}));
    QCOMPARE(desk.sent(), "");
}

QTEST_GUILESS_MAIN(TestSkkAuto)
#include "test_skk_auto.moc"
