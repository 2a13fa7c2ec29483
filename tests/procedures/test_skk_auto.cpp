// The automatic send of a queue file: its start and the steps that the timer moves.

#include "records/file_attr.h"
#include "tests/procedures/skk_desk.h"

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
    void fileGoingOutIsWaitedFor();
    void afterTheFile_data();
    void afterTheFile();
    void lastQuestion_data();
    void lastQuestion();
    void lastAnswerbackDoesNotCome();
    void ownAnswerbackAfterDelivery();
    void pauseBeforeAnsweringIsExtended_data();
    void pauseBeforeAnsweringIsExtended();
    void answeredThenTheLastPause();
    void lastPauseHangsUp();
    void pauseOfZeroStopsTheMachine();

    void bookedAsSent();
    void bookedUnderTheCounterOfThisMoment();
    void fileThatCannotBeMovedIsStillBooked();
    void wholeSendToASubscriber();
    void wholeSendToTheCentreWithoutQuestions();
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
    QTest::newRow("its time is past") << false << 1 << -1 << true;
    QTest::newRow("its time is now") << false << 1 << 0 << false;
    QTest::newRow("its time will come") << false << 1 << 1 << false;
    QTest::newRow("no tries left") << false << 0 << -1 << false;
    QTest::newRow("bad mark") << true << 1 << -1 << false;
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
    QTest::newRow("subscriber") << false << 3;
    QTest::newRow("centre") << true << 13;
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
    QTest::newRow("subscriber") << false << QList<int>({5, 12, 7});
    QTest::newRow("centre") << true << QList<int>({5, 22, 8});
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
    QTest::newRow("subscriber") << false << QList<int>({4, 7, 7}) << QList<int>({5, 12, 7});
    QTest::newRow("centre") << true << QList<int>({4, 17, 8}) << QList<int>({5, 22, 8});
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
    QTest::newRow("talks now") << 0 << 6;
    QTest::newRow("last second that extends") << 4 << 2;
    QTest::newRow("silent enough") << 5 << 0;
    QTest::newRow("silent for long") << 6 << 0;
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

void TestSkkAuto::afterTheFile_data()
{
    QTest::addColumn<bool>("toCKS");
    QTest::addColumn<bool>("asks");
    QTest::addColumn<QList<int>>("after");
    QTest::newRow("subscriber, asked") << false << true << QList<int>({13, 3, 0});
    QTest::newRow("subscriber, asked all the same") << false << false << QList<int>({13, 3, 0});
    QTest::newRow("centre, asked") << true << true << QList<int>({13, 13, 0});
    QTest::newRow("centre, not asked") << true << false << QList<int>({14, 22, 9});
}

void TestSkkAuto::afterTheFile()
{
    QFETCH(bool, toCKS);
    QFETCH(bool, asks);
    QFETCH(QList<int>, after);
    const SkkDesk desk;
    Options.sendAskAOAfterTlgText = asks;
    desk.automatic(11, 1, toCKS);
    ProcessSKK.receiveBuffer = QStringLiteral("ШУМ");
    desk.autoTick();
    QCOMPARE(machine(), after);
    QCOMPARE(ProcessSKK.receiveBuffer, "ШУМ");
    QCOMPARE(desk.sent(), "");
}

void TestSkkAuto::lastQuestion_data()
{
    QTest::addColumn<bool>("toCKS");
    QTest::addColumn<QList<int>>("after");
    QTest::newRow("subscriber") << false << QList<int>({14, 12, 7});
    QTest::newRow("centre") << true << QList<int>({14, 22, 9});
}

void TestSkkAuto::lastQuestion()
{
    QFETCH(bool, toCKS);
    QFETCH(QList<int>, after);
    const SkkDesk desk;
    desk.automatic(13, 2, toCKS);
    ProcessSKK.receiveBuffer = QStringLiteral("ШУМ");
    TlgThread.recvBuffer.mAppend("ЕЩЕ");
    desk.autoTick();
    QCOMPARE(machine(), QList<int>({13, 1, 0}));
    desk.autoTick();
    QCOMPARE(machine(), after);
    QCOMPARE(desk.sent(), "#*");
    QCOMPARE(ProcessSKK.receiveBuffer, "");
    QCOMPARE(TlgThread.recvBuffer.mGet(), "ЕЩЕ"); // only the first questions empty it
}

void TestSkkAuto::lastAnswerbackDoesNotCome()
{
    const SkkDesk desk;
    desk.automatic(14, 2);
    State.AutoModeWaitAA = 7;
    desk.autoTick();
    QCOMPARE(machine(), QList<int>({14, 1, 7}));
    desk.autoTick();
    QCOMPARE(machine(), QList<int>({0, 0, 0}));
    QCOMPARE(desk.sent(), "@H");
    QCOMPARE(desk.noted(), QStringList("312:00:00 Соединение сохранено out/20260731/s120000"));
    QCOMPARE(desk.record(), "12345678|S|31.07.2026 11:59|u|2|N|Нет ответа после отправки файла");
    QVERIFY(QFile::exists(desk.path("out/a")));
}

void TestSkkAuto::ownAnswerbackAfterDelivery()
{
    const SkkDesk desk;
    desk.automatic(15, 2);
    State.secondsSinceRx = 3;
    desk.autoTick();
    QCOMPARE(desk.sent(), "");
    desk.autoTick();
    QCOMPARE(desk.sent(), OwnAO);
    QCOMPARE(machine(), QList<int>({16, 1, 0}));
}

void TestSkkAuto::pauseBeforeAnsweringIsExtended_data()
{
    QTest::addColumn<int>("silence");
    QTest::addColumn<int>("timer"); // 0: the answerback goes
    QTest::newRow("talks now") << 0 << 4;
    QTest::newRow("last second that extends") << 2 << 2;
    QTest::newRow("silent enough") << 3 << 0;
}

void TestSkkAuto::pauseBeforeAnsweringIsExtended()
{
    QFETCH(int, silence);
    QFETCH(int, timer);
    const SkkDesk desk;
    desk.automatic(15, 1);
    State.secondsSinceRx = silence;
    desk.autoTick();
    QCOMPARE(machine(), timer != 0 ? QList<int>({15, timer, 0}) : QList<int>({16, 1, 0}));
    QCOMPARE(desk.sent().isEmpty(), timer != 0);
}

void TestSkkAuto::answeredThenTheLastPause()
{
    const SkkDesk desk;
    desk.automatic(16, 1);
    desk.autoTick();
    QCOMPARE(machine(), QList<int>({17, 5, 0}));
    QCOMPARE(desk.sent(), "");
    desk.automatic(16, 1, true);
    desk.autoTick();
    QCOMPARE(machine(), QList<int>({17, 15, 0}));
}

void TestSkkAuto::lastPauseHangsUp()
{
    const SkkDesk desk;
    desk.automatic(17, 2);
    ProcessSKK.secondsSinceCmdOut = 9;
    desk.autoTick();
    QCOMPARE(desk.sent(), "");
    desk.autoTick();
    QCOMPARE(desk.sent(), "@H@H"); // the second one is that of every end
    QCOMPARE(char(ProcessSKK.lastCmdOut), 'H');
    QCOMPARE(ProcessSKK.secondsSinceCmdOut, 0);
    QCOMPARE(machine(), QList<int>({0, 0, 0}));
    QCOMPARE(State.callDirection, 0);
    QCOMPARE(State.hangUpPause, 5);
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

void TestSkkAuto::bookedAsSent()
{
    for (const bool marked : {true, false}) {
        const SkkDesk desk;
        Options.markNewFilesInOut = marked;
        State.PK_out = 6;
        State.scanCountdown = 1;
        desk.automatic(14, 5);
        ProcessSKK.compliteSKKFileSendedInAutoMode();
        QCOMPARE(desk.noted(), QStringList({"312:00:00 Файл a отправлен",
                                            "312:00:00 ПЕРЕИМЕНОВАНИЕ out/a В out/20260731/a.006"}));
        QCOMPARE(desk.names("out"), QStringList("20260731"));
        QCOMPARE(desk.read("out/20260731/a.006"), QByteArray("ТЕКСТ\r\n"));
        QCOMPARE(CFileAttr("out/20260731/a.006").checkNew(), marked);
        QCOMPARE(State.PK_out, 7);
        QCOMPARE(State.currentFile, "");
        QCOMPARE(State.scanCountdown, 10);
        QVERIFY(State.fileInProgress); // until the machine ends
        QVERIFY(!QFile::exists(desk.path("velda_state.ini")));
    }
}

void TestSkkAuto::bookedUnderTheCounterOfThisMoment()
{
    const SkkDesk desk;
    State.PK_out = 1005;
    desk.automatic(14, 5);
    ProcessSKK.compliteSKKFileSendedInAutoMode();
    QCOMPARE(desk.names("out/20260731"), QStringList("a.005"));
    QCOMPARE(State.PK_out, 1006); // no modulo
}

void TestSkkAuto::fileThatCannotBeMovedIsStillBooked()
{
    const SkkDesk desk;
    desk.automatic(14, 5);
    QVERIFY(QFile::remove(desk.path("out/a")));
    ProcessSKK.compliteSKKFileSendedInAutoMode();
    QCOMPARE(desk.noted(),
             QStringList({"312:00:00 Файл a отправлен", "312:00:00 ПЕРЕИМЕНОВАНИЕ out/a В out/20260731/a.000",
                          "412:00:00 Ошибка переименования"}));
    QCOMPARE(State.PK_out, 1);
    QCOMPARE(State.currentFile, "");
}

void TestSkkAuto::wholeSendToASubscriber()
{
    const SkkDesk desk;
    CTableViewModelItem_Send item = desk.row("a");
    ProcessSKK.checkForSendNewTlg(item);
    QCOMPARE(desk.sent(), "@C@N12345678@");
    desk.receive("@E\r\n #12.00");
    desk.tick();
    desk.autoTick(1 + 3);
    QCOMPARE(desk.sent(), "#*");
    desk.receive("#\r\n123456 АБОНЕНТ    "); // 20 characters
    State.secondsSinceRx = 100;
    desk.autoTick(5);
    QCOMPARE(desk.sent(), OwnAO);
    desk.autoTick(6);
    QCOMPARE(desk.sent(), "\r\nТЕКСТ\r\n");
    desk.autoTick(1 + 3);
    QCOMPARE(desk.sent(), "#*");
    desk.receive("#\r\n123456 АБОНЕНТ    ");
    QCOMPARE(desk.names("out/20260731"), QStringList("a.000"));
    desk.autoTick(5);
    QCOMPARE(desk.sent(), OwnAO);
    desk.autoTick(1 + 5);
    QCOMPARE(desk.sent(), "@H@H");
    QCOMPARE(State.callDirection, 0);
    QVERIFY(!State.fileInProgress);
    QCOMPARE(desk.names("out/20260731"), QStringList({"a.000", "s120000"}));
    QCOMPARE(State.SKK_out, 2);
    QCOMPARE(State.PK_out, 1);
    QCOMPARE(desk.noted(), QStringList({"312:00:00 Установка соединения для отправки файла a",
                                        "312:00:00 Набор номера 12345678", "312:00:00 Файл a отправлен",
                                        "312:00:00 ПЕРЕИМЕНОВАНИЕ out/a В out/20260731/a.000",
                                        "312:00:00 Соединение сохранено out/20260731/s120000"}));
}

void TestSkkAuto::wholeSendToTheCentreWithoutQuestions()
{
    const SkkDesk desk;
    Options.afterConnectAskAO = false;
    Options.sendAskAOAfterTlgText = false;
    Options.SKK_noSendCKSAOAfterSendFile = true;
    CTableViewModelItem_Send item = desk.row("a", "ТЕКСТ", true);
    ProcessSKK.checkForSendNewTlg(item);
    desk.receive("@E\r\n #12.00");
    desk.tick();
    (void)desk.sent();
    desk.autoTick();
    desk.receive("\r\n#01234 |ЦКС&МОСК  ");
    State.secondsSinceRx = 100;
    desk.autoTick(15);
    QCOMPARE(desk.sent(), OwnAO);
    desk.autoTick(16);
    QCOMPARE(desk.sent(), "\r\nТЕКСТ");
    desk.autoTick();
    desk.receive(QStringLiteral("\r\n#01234 |ЦКС&МОСК 12.00").leftJustified(50, '-'));
    QCOMPARE(desk.names("out/20260731"), QStringList("a.000"));
    desk.autoTick(1 + 14);
    QCOMPARE(desk.sent(), "");
    QCOMPARE(State.AutoModeState, 17);
    desk.autoTick();
    QCOMPARE(desk.sent(), "@H@H");
    QCOMPARE(desk.names("out/20260731"), QStringList({"a.000", "s120000"}));
}

QTEST_GUILESS_MAIN(TestSkkAuto)
#include "test_skk_auto.moc"
