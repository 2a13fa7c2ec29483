// The long answerback of a centre, which proves the delivery.

#include "tests/procedures/skk_answerbacks.h"
#include "tests/support/row.h"

#include <QtTest>

class TestSkkLongAnswerback : public QObject
{
    Q_OBJECT

private slots:
    void longCentre_data();
    void longCentre();
    void longCentreByItsLength_data();
    void longCentreByItsLength();
    void longCentreIsNotReadForOtherTypes();
    void longCentreOutsideTheWaitEndsTheScan();
    void longCentreOutcome_data();
    void longCentreOutcome();
    void telegramInPlaceOfTheAnswerback();
    void tornStartMarkIsNone();
};

void TestSkkLongAnswerback::longCentre_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("text");
    QTest::addColumn<Fate>("fate");
    for (const int type : {0, 1, 2}) {
        const auto row = [type](const char *what, const QString &text, Fate fate) {
            QTest::addRow("type %d, %s", type, what) << type << fill(text, 50) << fate;
        };
        row("exact", "\r\n#01 |ЦКС&МОСКВА 12.00", Taken);
        row("other opening", "#\r\n#01 |ЦКС&МОСКВА 12.00", Taken);
        row("name at sixteen", fill("\r\n#01", 16) + "|ЦКС&.", Taken);
        row("name at seventeen", fill("\r\n#01", 17) + "|ЦКС&.", Refused);
        row("dot at its end", fill("\r\n#01 |ЦКС&", 49) + '.', Taken);
        row("no dot", "\r\n#01 |ЦКС&МОСКВА", Refused);
        row("dot in front of the name", "\r\n#01. |ЦКС&МОСКВА", Refused);
        row("other number", "\r\n#02 |ЦКС&МОСКВА 12.00", Refused);
        row("no name", "\r\n#01 МОСКВА 12.00", Refused);
        row("no opening", "--#01 |ЦКС&МОСКВА 12.00", Waits);
    }
}

void TestSkkLongAnswerback::longCentre()
{
    QFETCH(int, type);
    QFETCH(QString, text);
    QFETCH(Fate, fate);
    const SkkDesk desk;
    Options.CKS_Type = type;
    await(desk, 14, 9);
    desk.receive("ШУМ" + text);
    QCOMPARE(fateIn(14), fate);
    QCOMPARE(ProcessSKK.receiveBuffer, "ШУМ" + text);
    QCOMPARE(desk.sent(), fate == Refused ? "@H" : "");
    QStringList notes;
    if (fate == Taken)
        notes << "312:00:00 Получен АА от ЦКС "
              << "312:00:00 Файл a отправлен"
              << "312:00:00 ПЕРЕИМЕНОВАНИЕ out/a В out/20260731/a.000";
    if (fate == Refused)
        notes << "312:00:00 Неправильный длинный АО ЦКС"
              << "312:00:00 Соединение сохранено out/20260731/s120000";
    QCOMPARE(desk.noted(), notes);
}

void TestSkkLongAnswerback::longCentreByItsLength_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("option");
    QTest::addColumn<int>("length");
    row("type 0", 0, 50, 50);
    row("type 0, another length set", 0, 30, 50);
    row("type 1", 1, COptions::longAOLength(1), 48);
    row("type 1, custom", 1, 33, 33);
    row("type 2", 2, COptions::longAOLength(2), 48);
    row("type 2, custom", 2, 70, 70);
    row("type 2, shorter than any", 2, 0, 20);
}

void TestSkkLongAnswerback::longCentreByItsLength()
{
    QFETCH(int, type);
    QFETCH(int, option);
    QFETCH(int, length);
    const QString text = fill("\r\n#01 |ЦКС&12.00", length);
    for (int cut = 0; cut < length; ++cut) {
        const SkkDesk desk;
        Options.CKS_Type = type;
        Options.CKS_LongAOLength = option;
        await(desk, 14, 9);
        desk.receive(text.left(cut));
        QCOMPARE(fateIn(14), Waits);
        desk.receive(text.mid(cut));
        QCOMPARE(fateIn(14), Taken);
    }
}

void TestSkkLongAnswerback::longCentreIsNotReadForOtherTypes()
{
    for (const int type : {-1, 3, 4, 5}) {
        const SkkDesk desk;
        Options.CKS_Type = type;
        await(desk, 14, 9);
        desk.receive(fill("\r\n#01 |ЦКС&12.00", 100));
        QCOMPARE(fateIn(14), Waits);
        desk.receive("@H"); // the scan goes on behind it
        QCOMPARE(State.callDirection, 0);
    }
}

void TestSkkLongAnswerback::longCentreOutsideTheWaitEndsTheScan()
{
    const SkkDesk desk;
    await(desk, 16, 9);
    desk.receive(fill("\r\n#01 |ЦКС&12.00", 50) + "@H");
    QCOMPARE(State.AutoModeState, 16);
    QCOMPARE(State.callDirection, 2); // the hang-up behind it is not reached
    QCOMPARE(State.PK_out, 0);
}

void TestSkkLongAnswerback::longCentreOutcome_data()
{
    QTest::addColumn<bool>("silent");
    QTest::addColumn<QList<int>>("after");
    row("own answerback follows", false, QList<int>({15, 15, 0}));
    row("no own answerback", true, QList<int>({16, 1, 9}));
}

void TestSkkLongAnswerback::longCentreOutcome()
{
    QFETCH(bool, silent);
    QFETCH(QList<int>, after);
    const SkkDesk desk;
    Options.SKK_noSendCKSAOAfterSendFile = silent;
    await(desk, 14, 9);
    desk.receive(fill("\r\n#01 |ЦКС&12.00", 50));
    QCOMPARE((QList<int>{State.AutoModeState, State.AutoModeWaitTimer, State.AutoModeWaitAA}), after);
    QCOMPARE(desk.names("out/20260731"), QStringList("a.000"));
    State.secondsSinceRx = 100;
    desk.autoTick(after.at(1));
    QCOMPARE(desk.sent(), silent ? "" : "#\r\n777777 ДЕСК");
}

void TestSkkLongAnswerback::telegramInPlaceOfTheAnswerback()
{
    const QString text = fill("\r\n#ПРИВЕТ", 46) + "ЗЦЗЦ 001 ТЕКСТ НННН  ";
    for (int cut = 0; cut < text.size(); ++cut) {
        const SkkDesk desk;
        if (cut == 50)
            continue; // see tornStartMarkIsNone
        await(desk, 14, 9);
        desk.receive(text.left(cut));
        QCOMPARE(fateIn(14), Waits);
        desk.receive(text.mid(cut));
        QCOMPARE(fateIn(14), Waits);
        QCOMPARE(ProcessSKK.receiveBuffer, "");
        QCOMPARE(State.PK_in, 0); // it is no telegram to store
        desk.receive(fill("\r\n#01 |ЦКС&12.00", 50));
        QCOMPARE(State.AutoModeState, 15);
    }
}

/// The form is judged as soon as it has its length, even if that cuts a start mark in two.
void TestSkkLongAnswerback::tornStartMarkIsNone()
{
    const SkkDesk desk;
    await(desk, 14, 9);
    desk.receive(fill("\r\n#ПРИВЕТ", 46) + "ЗЦЗЦ");
    QCOMPARE(fateIn(14), Refused);
}

QTEST_GUILESS_MAIN(TestSkkLongAnswerback)
#include "test_skk_long_answerback.moc"
