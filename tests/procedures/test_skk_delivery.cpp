// The automatic send from its start to the booking of the file.

#include "records/file_attr.h"
#include "tests/procedures/skk_desk.h"

#include <QFile>
#include <QtTest>

class TestSkkDelivery : public QObject
{
    Q_OBJECT

private slots:
    void bookedAsSent();
    void markedIfAsked();
    void bookedUnderTheCounterOfThisMoment();
    void fileThatCannotBeMovedIsStillBooked();
    void fileThatStaysInTheQueueStopsTheAutomaticMode();
    void wholeSendToASubscriber();
    void wholeSendToTheCentreWithoutQuestions();
};

namespace
{
const QString OwnAO = QStringLiteral("#\r\n777777 ДЕСК");
} // namespace

void TestSkkDelivery::bookedAsSent()
{
    const SkkDesk desk;
    State.PK_out = 6;
    State.scanCountdown = 1;
    desk.automatic(14, 5);
    ProcessSKK.compliteSKKFileSendedInAutoMode();
    QCOMPARE(desk.noted(), QStringList({"312:00:00 Файл a отправлен",
                                        "312:00:00 ПЕРЕИМЕНОВАНИЕ out/a В out/20260731/a.006"}));
    QCOMPARE(desk.names("out"), QStringList("20260731"));
    QCOMPARE(desk.read("out/20260731/a.006"), QByteArray("ТЕКСТ\r\n"));
    QCOMPARE(State.PK_out, 7);
    QCOMPARE(State.currentFile, "");
    QCOMPARE(State.scanCountdown, 10);
    QVERIFY(State.fileInProgress); // until the machine ends
    QVERIFY(!QFile::exists(desk.path("velda_state.ini")));
}

void TestSkkDelivery::markedIfAsked()
{
    for (const bool marked : {true, false}) {
        const SkkDesk desk;
        Options.markNewFilesInOut = marked;
        State.PK_out = 6;
        desk.automatic(14, 5);
        ProcessSKK.compliteSKKFileSendedInAutoMode();
        QCOMPARE(CFileAttr("out/20260731/a.006").checkNew(), marked);
    }
}

void TestSkkDelivery::bookedUnderTheCounterOfThisMoment()
{
    const SkkDesk desk;
    State.PK_out = 1005;
    desk.automatic(14, 5);
    ProcessSKK.compliteSKKFileSendedInAutoMode();
    QCOMPARE(desk.names("out/20260731"), QStringList("a.005"));
    QCOMPARE(State.PK_out, 1006); // no modulo
}

void TestSkkDelivery::fileThatCannotBeMovedIsStillBooked()
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

// A file stands where the day's directory should be.
void TestSkkDelivery::fileThatStaysInTheQueueStopsTheAutomaticMode()
{
    const SkkDesk desk;
    desk.write("out/20260731", "");
    desk.automatic(14, 5);
    ProcessSKK.compliteSKKFileSendedInAutoMode();
    QVERIFY(State.manualMode);
    QCOMPARE(desk.names("out"), QStringList({"20260731", "a"})); // the record goes in any case
    QCOMPARE(desk.noted(),
             QStringList({"312:00:00 Файл a отправлен", "312:00:00 ПЕРЕИМЕНОВАНИЕ out/a В out/20260731/a.000",
                          "412:00:00 Ошибка переименования", "312:00:00 Установлен РУЧНОЙ режим"}));
    QCOMPARE(State.PK_out, 1); // the subscriber has it
}

void TestSkkDelivery::wholeSendToASubscriber()
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

void TestSkkDelivery::wholeSendToTheCentreWithoutQuestions()
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

QTEST_GUILESS_MAIN(TestSkkDelivery)
#include "test_skk_delivery.moc"
