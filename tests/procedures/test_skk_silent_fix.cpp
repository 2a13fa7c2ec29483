// The long answerback of a centre that gives it no form: fixed by its silence, or by its question.

#include "tests/procedures/skk_desk.h"
#include "tests/support/row.h"

#include <QtTest>

class TestSkkSilentFix : public QObject
{
    Q_OBJECT

private slots:
    void silenceFixes_data();
    void silenceFixes();
    void silenceFixesOnlyWhatIsAwaited_data();
    void silenceFixesOnlyWhatIsAwaited();
    void afterSilence_data();
    void afterSilence();
    void questionFixes_data();
    void questionFixes();
    void questionFixesOnlyWhatIsAwaited_data();
    void questionFixesOnlyWhatIsAwaited();
    void afterTheQuestion_data();
    void afterTheQuestion();
};

namespace
{
QString fill(const QString &text, int length)
{
    return text.leftJustified(length, QChar('-'));
}

/// The machine waits for the long answerback of a centre of type 4.
void await(const SkkDesk &desk)
{
    Options.CKS_Type = 4;
    desk.automatic(14, 9, true);
    State.AutoModeWaitAA = 9;
    State.secondsSinceRx = 3;
}

QList<int> machine()
{
    return {State.AutoModeState, State.AutoModeWaitTimer, State.AutoModeWaitAA};
}

QStringList booked(const QString &how)
{
    return {"312:00:00 Фиксируем АА от ЦКС (" + how + ')', "312:00:00 Файл a отправлен",
            "312:00:00 ПЕРЕИМЕНОВАНИЕ out/a В out/20260731/a.000"};
}

void otherWaits()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("state");
    row("type 3", 3, 9, 14);
    row("type 0", 0, 9, 14);
    row("type 5", 5, 9, 14);
    row("nothing awaited", 4, 0, 14);
    row("state 16", 4, 9, 16);
}
} // namespace

void TestSkkSilentFix::silenceFixes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("silence");
    QTest::addColumn<bool>("fixed");
    row("two seconds", fill("\r\n#", 30), 2, false);
    row("three seconds", fill("\r\n#", 30), 3, true);
    row("twenty characters", fill("\r\n#", 20), 3, false);
    row("twenty-one characters", fill("\r\n#", 21), 3, true);
    row("other opening", fill("#\r\n", 21), 3, true);
    row("behind noise", "ШУМ" + fill("\r\n#", 21), 3, true);
    row("behind noise, short", fill("ШУМ\r\n#", 23), 3, false);
    row("the first form decides", fill("\r\n#", 30) + "#\r\n", 3, false);
    row("no opening", fill("", 100), 3, false);
}

void TestSkkSilentFix::silenceFixes()
{
    QFETCH(QString, text);
    QFETCH(int, silence);
    QFETCH(bool, fixed);
    const SkkDesk desk;
    await(desk);
    State.secondsSinceRx = silence;
    desk.receive(text);
    QCOMPARE(State.AutoModeState, 14);
    desk.autoTick();
    QCOMPARE(machine(), fixed ? QList<int>({15, 14, 0}) : QList<int>({14, 8, 9}));
    QCOMPARE(desk.noted(), fixed ? booked("2сек") : QStringList());
    QCOMPARE(ProcessSKK.receiveBuffer, text);
}

void TestSkkSilentFix::silenceFixesOnlyWhatIsAwaited_data()
{
    otherWaits();
    row("subscriber awaited", 4, 7, 14);
    row("state 13", 4, 9, 13);
}

void TestSkkSilentFix::silenceFixesOnlyWhatIsAwaited()
{
    QFETCH(int, type);
    QFETCH(int, kind);
    QFETCH(int, state);
    const SkkDesk desk;
    await(desk);
    Options.CKS_Type = type;
    State.AutoModeWaitAA = kind;
    State.AutoModeState = state;
    ProcessSKK.receiveBuffer = fill("\r\n#", 30);
    desk.autoTick();
    QCOMPARE(machine(), QList<int>({state, 8, kind}));
    QCOMPARE(State.PK_out, 0);
}

void TestSkkSilentFix::afterSilence_data()
{
    QTest::addColumn<bool>("silent");
    QTest::addColumn<QList<int>>("after");
    // The tick that fixes it takes a second of the new timer at once.
    row("own answerback follows", false, QList<int>({15, 14, 0}));
    row("no own answerback", true, QList<int>({17, 14, 9}));
}

void TestSkkSilentFix::afterSilence()
{
    QFETCH(bool, silent);
    QFETCH(QList<int>, after);
    const SkkDesk desk;
    Options.SKK_noSendCKSAOAfterSendFile = silent;
    await(desk);
    desk.receive(fill("\r\n#", 30));
    desk.autoTick();
    QCOMPARE(machine(), after);
    desk.autoTick(13);
    QCOMPARE(desk.sent(), "");
    State.secondsSinceRx = 100;
    desk.autoTick();
    QCOMPARE(desk.sent(), silent ? "@H@H" : "#\r\n777777 ДЕСК");
}

void TestSkkSilentFix::questionFixes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("fixed");
    row("twenty to the end of the buffer", fill("\r\n#", 18) + "#*", false);
    row("twenty-one", fill("\r\n#", 19) + "#*", true);
    row("what is behind the question counts", fill("\r\n#", 10) + "#*---------", true);
    row("other opening", fill("#\r\n", 19) + "#*", true);
    row("opening behind the question", "#*" + fill("\r\n#", 30), false);
    row("no opening", fill("", 30) + "#*", false);
}

void TestSkkSilentFix::questionFixes()
{
    QFETCH(QString, text);
    QFETCH(bool, fixed);
    const SkkDesk desk;
    await(desk);
    desk.receive(text);
    // With the answerback fixed, the question cuts the pause short; otherwise it is answered at once.
    QCOMPARE(machine(), fixed ? QList<int>({15, 1, 0}) : QList<int>({14, 9, 9}));
    QCOMPARE(desk.noted(), fixed ? booked("Запрос") : QStringList());
    QCOMPARE(desk.sent(), fixed ? "" : "#\r\n777777 ДЕСК");
    QCOMPARE(ProcessSKK.receiveBuffer, text.mid(text.indexOf("#*") + 2));
}

void TestSkkSilentFix::questionFixesOnlyWhatIsAwaited_data()
{
    otherWaits();
}

void TestSkkSilentFix::questionFixesOnlyWhatIsAwaited()
{
    QFETCH(int, type);
    QFETCH(int, kind);
    QFETCH(int, state);
    const SkkDesk desk;
    await(desk);
    Options.CKS_Type = type;
    State.AutoModeWaitAA = kind;
    State.AutoModeState = state;
    desk.receive(fill("\r\n#", 19) + "#*");
    QCOMPARE(machine(), QList<int>({state, 9, kind}));
    QCOMPARE(State.PK_out, 0);
    QCOMPARE(desk.sent(), "#\r\n777777 ДЕСК");
}

void TestSkkSilentFix::afterTheQuestion_data()
{
    QTest::addColumn<bool>("silent");
    QTest::addColumn<QList<int>>("after");
    QTest::addColumn<QString>("sent");
    row("own answerback follows", false, QList<int>({15, 1, 0}), "");
    row("question answered at once", true, QList<int>({16, 1, 9}), "#\r\n777777 ДЕСК");
}

void TestSkkSilentFix::afterTheQuestion()
{
    QFETCH(bool, silent);
    QFETCH(QList<int>, after);
    QFETCH(QString, sent);
    const SkkDesk desk;
    Options.SKK_noSendCKSAOAfterSendFile = silent;
    await(desk);
    desk.receive(fill("\r\n#", 30) + "#*");
    QCOMPARE(machine(), after);
    QCOMPARE(desk.sent(), sent);
    QCOMPARE(desk.names("out/20260731"), QStringList("a.000"));
}

QTEST_GUILESS_MAIN(TestSkkSilentFix)
#include "test_skk_silent_fix.moc"
