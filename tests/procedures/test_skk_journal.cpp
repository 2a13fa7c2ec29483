// Which lines of a dialled connection cut a running line of text, and which wait for its end.

#include "tests/procedures/skk_desk.h"
#include "tests/support/row.h"

#include <QtTest>

class TestSkkJournal : public QObject
{
    Q_OBJECT

private slots:
    void lineCutsOrWaits_data();
    void lineCutsOrWaits();
    void everyDebugLineStandsByItself();
};

namespace
{
using Action = void (*)(const SkkDesk &desk);

/// An answerback of \a kind that is none, in a state whose end notes nothing by itself.
void badAnswerback(int kind, int length)
{
    State.sendInfo.toCKS = kind != SubscriberAA;
    State.AutoModeState = AutoGotAA;
    State.AutoModeWaitAA = kind;
    ProcessSKK.receiveBuffer = QStringLiteral("#\r\n").leftJustified(length, '0');
    (void)ProcessSKK.processAutoModeWaitAA(0);
}

void endIn(int state)
{
    State.AutoModeState = state;
    ProcessSKK.clearAutoMode();
}
} // namespace

Q_DECLARE_METATYPE(Action)

void TestSkkJournal::lineCutsOrWaits_data()
{
    QTest::addColumn<Action>("act");
    QTest::addColumn<QString>("line"); // with the digit of its type
    QTest::addColumn<bool>("waits");
    const auto row = [](const char *line, bool waits, Action act) {
        ::row(line, act, QString::fromUtf8(line), waits);
    };
    row("312:00:00 Набор номера 123", false, [](const SkkDesk &) { ProcessSKK.callNumber("123"); });
    row("312:00:00 Входящий отбой", true, [](const SkkDesk &desk) {
        State.connectionActive = true;
        desk.receive("@H");
    });
    row("312:00:00 Входящий вызов", true, [](const SkkDesk &desk) { desk.receive("@C"); });
    row("312:00:00 Абонент занят", true, [](const SkkDesk &desk) {
        State.callState = WaitResult;
        desk.receive("\r\n&OCC");
    });
    row("312:00:00 Время распознано", false, [](const SkkDesk &desk) {
        Options.debugInfoToProtocol = true;
        Options.timeFormat = "<> #hh.mm";
        State.callState = WaitResult;
        desk.receive("\r\n #12.00");
    });
    row("312:00:00 Соединение сохранено inp/20260731/s120000", true, [](const SkkDesk &desk) {
        desk.connect(Incoming);
        ProcessSKK.clearSKKConnection();
    });
    row("312:00:00 Ошибка сохранения соединения в файл: inp/20260731/s120000", true, [](const SkkDesk &desk) {
        desk.write("inp/20260731", "no directory");
        desk.connect(Incoming);
        ProcessSKK.clearSKKConnection();
    });
    row("412:00:00 Ошибка открытия файла a", true, [](const SkkDesk &) {
        State.currentFile = "a";
        State.secondsSinceRx = 100;
        State.AutoModeState = AutoBeforeFile;
        State.AutoModeWaitTimer = 1;
        ProcessSKK.processAutoMode();
    });
    row("312:00:00 АО не распознан", false, [](const SkkDesk &) { endIn(AutoBeforeQuestion); });
    ::row("no answer", Action([](const SkkDesk &) { endIn(AutoWaitAA); }), "312:00:00 АО не распознан",
          false);
    row("312:00:00 Неправильный АО", true, [](const SkkDesk &) { badAnswerback(SubscriberAA, 20); });
    row("312:00:00 Неправильный АО ЦКС", true, [](const SkkDesk &) { badAnswerback(ShortCentreAA, 20); });
    row("312:00:00 Неправильный длинный АО ЦКС", true,
        [](const SkkDesk &) { badAnswerback(LongCentreAA, 50); });
}

void TestSkkJournal::lineCutsOrWaits()
{
    QFETCH(Action, act);
    QFETCH(QString, line);
    QFETCH(bool, waits);
    const SkkDesk desk;
    Log.add(QStringLiteral("А"), ProtocolReceived);
    act(desk);
    QCOMPARE(desk.noted(), waits ? QStringList("1А") : QStringList({"1А", line}));
    Log.add(QStringLiteral("\n"), ProtocolReceived);
    QCOMPARE(desk.noted(), waits ? QStringList({"1А>", line}) : QStringList({"1А", line, "1>"}));
}

void TestSkkJournal::everyDebugLineStandsByItself()
{
    const SkkDesk desk;
    ProcessSKK.receiveBuffer = QStringLiteral("ТЕКСТ");
    State.AutoModeWaitTimer = 1;
    State.AutoModeState = 2;
    State.AutoModeWaitAA = 3;
    State.callNumberResult = 4;
    State.waitTimeAfterCallEstablished = 5;
    Log.add(QStringLiteral("А"), ProtocolReceived);
    ProcessSKK.debugInfoToLog();
    QCOMPARE(desk.noted(),
             QStringList({"1А", "312:00:00 Receive=ТЕКСТ", "312:00:00 AutoModeWaitTimer=1",
                          "312:00:00 AutoModeState=2", "312:00:00 AutoModeWaitAA=3",
                          "312:00:00 callNumberResult=4", "312:00:00 waitTimeAfterCallEstablished=5"}));
}

QTEST_GUILESS_MAIN(TestSkkJournal)
#include "test_skk_journal.moc"
