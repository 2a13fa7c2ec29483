// The steps of the automatic send behind the file: the proof of delivery and the end.

#include "tests/procedures/skk_desk.h"
#include "tests/support/row.h"

#include <QFile>
#include <QtTest>

class TestSkkAfterFile : public QObject
{
    Q_OBJECT

private slots:
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
};

namespace
{
const QString OwnAO = QStringLiteral("#\r\n777777 ДЕСК");

QList<int> machine()
{
    return {State.AutoModeState, State.AutoModeWaitTimer, State.AutoModeWaitAA};
}
} // namespace

void TestSkkAfterFile::afterTheFile_data()
{
    QTest::addColumn<bool>("toCKS");
    QTest::addColumn<bool>("asks");
    QTest::addColumn<QList<int>>("after");
    row("subscriber, asked", false, true, QList<int>({13, 3, 0}));
    row("subscriber, asked all the same", false, false, QList<int>({13, 3, 0}));
    row("centre, asked", true, true, QList<int>({13, 13, 0}));
    row("centre, not asked", true, false, QList<int>({14, 22, 9}));
}

void TestSkkAfterFile::afterTheFile()
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

void TestSkkAfterFile::lastQuestion_data()
{
    QTest::addColumn<bool>("toCKS");
    QTest::addColumn<QList<int>>("after");
    row("subscriber", false, QList<int>({14, 12, 7}));
    row("centre", true, QList<int>({14, 22, 9}));
}

void TestSkkAfterFile::lastQuestion()
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

void TestSkkAfterFile::lastAnswerbackDoesNotCome()
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

void TestSkkAfterFile::ownAnswerbackAfterDelivery()
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

void TestSkkAfterFile::pauseBeforeAnsweringIsExtended_data()
{
    QTest::addColumn<int>("silence");
    QTest::addColumn<int>("timer"); // 0: the answerback goes
    row("talks now", 0, 4);
    row("last second that extends", 2, 2);
    row("silent enough", 3, 0);
}

void TestSkkAfterFile::pauseBeforeAnsweringIsExtended()
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

void TestSkkAfterFile::answeredThenTheLastPause()
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

void TestSkkAfterFile::lastPauseHangsUp()
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

QTEST_GUILESS_MAIN(TestSkkAfterFile)
#include "test_skk_after_file.moc"
