// The answerbacks of the automatic send, form by form.

#include "tests/procedures/skk_answerbacks.h"
#include "tests/support/row.h"

#include <QtTest>

class TestSkkAnswerback : public QObject
{
    Q_OBJECT

private slots:
    void subscriber_data();
    void subscriber();
    void subscriberInEachState_data();
    void subscriberInEachState();
    void wrongSubscriberEndsTheSend();
    void anyNumberOnRequest();
    void anyTextOnRequest_data();
    void anyTextOnRequest();
    void anyTextInEachState_data();
    void anyTextInEachState();
    void anyTextIsForSubscribersOnly();

    void shortCentre_data();
    void shortCentre();
    void shortCentreInFewerCharacters();
    void openingExtendsTheWait_data();
    void openingExtendsTheWait();
    void centreOpeningIsForTheCentreOnly();
    void noWaitReadsNothing_data();
    void noWaitReadsNothing();
};

void TestSkkAnswerback::subscriber_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<Fate>("fate");
    row("exact", fill("#\r\n123456 АБОНЕНТ", 20), Taken);
    row("one character short", fill("#\r\n123456 АБОНЕНТ", 19), Waits);
    row("seventeen characters", "#\r\n00000000000000", Waits);
    row("nineteen, another number", "#\r\n0000000000000000", Waits);
    row("another number", "#\r\n00000000000000000", Refused);
    for (int place = 3; place <= 14; ++place)
        QTest::addRow("number at %d", place) << fill(fill("#\r\n", place) + "123456", 20) << Taken;
    row("number one beyond, cut off", fill("#\r\n", 15) + "12345", Refused);
    row("number behind all", fill("#\r\n", 40) + "123456", Taken);
    row("number in front", "123456#\r\n" + QString(17, '-'), Refused);
    row("from its third character", fill("#\r\n--345678", 20), Taken);
    row("from its second character", fill("#\r\n--234567", 20), Refused);
    row("from its fourth character", fill("#\r\n--45678", 20), Refused);
    row("first five", fill("#\r\n12345-", 20), Refused);
    row("opening of a centre", fill("\r\n#123456", 20), Waits);
    row("no opening", fill("\r\n123456", 30), Waits);
    row("behind noise", "ШУМ" + fill("#\r\n123456", 20), Taken);
}

void TestSkkAnswerback::subscriber()
{
    QFETCH(QString, text);
    QFETCH(Fate, fate);
    const SkkDesk desk;
    await(desk, 5, 7);
    desk.receive(text);
    QCOMPARE(fateIn(5), fate);
    QCOMPARE(State.AutoModeWaitAA, fate == Waits ? 7 : 0);
    if (fate == Taken) {
        QCOMPARE(State.AutoModeState, 6);
        QCOMPARE(State.AutoModeWaitTimer, 5);
        const int taken = text.indexOf("#\r\n") + 20;
        QCOMPARE(ProcessSKK.receiveBuffer, text.mid(taken));
    } else {
        QCOMPARE(ProcessSKK.receiveBuffer, text);
    }
    QCOMPARE(desk.sent(), fate == Refused ? "@H" : "");
}

void TestSkkAnswerback::subscriberInEachState_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("after");
    row("asked", 4, 6);
    row("waiting", 5, 6);
    row("waiting after the file", 14, 15);
    for (const int state : {2, 6, 10, 11, 15, 16, 17})
        QTest::addRow("%d", state) << state << state;
}

void TestSkkAnswerback::subscriberInEachState()
{
    QFETCH(int, state);
    QFETCH(int, after);
    const QString text = fill("#\r\n123456", 20);
    for (int cut = 0; cut < text.size(); ++cut) {
        const SkkDesk desk;
        await(desk, state, 7);
        desk.receive(text.left(cut));
        desk.receive(text.mid(cut) + "К");
        QCOMPARE(State.AutoModeState, after);
        QCOMPARE(State.AutoModeWaitAA, after == state ? 7 : 0);
        QCOMPARE(State.AutoModeWaitTimer, after == state ? 9 : 5);
        QCOMPARE(State.PK_out, state == 14 ? 1 : 0);
        QCOMPARE(ProcessSKK.receiveBuffer, "К");
        QCOMPARE(desk.sent(), "");
        QCOMPARE(desk.noted(), state != 14
                                   ? QStringList()
                                   : QStringList({"312:00:00 Файл a отправлен",
                                                  "312:00:00 ПЕРЕИМЕНОВАНИЕ out/a В out/20260731/a.000"}));
    }
}

void TestSkkAnswerback::wrongSubscriberEndsTheSend()
{
    for (const int state : {4, 5, 14}) {
        const SkkDesk desk;
        await(desk, state, 7);
        desk.receive(fill("#\r\n654321 ДРУГОЙ", 20) + "@C");
        QCOMPARE(State.AutoModeState, 0);
        QCOMPARE(desk.sent(), "@H"); // the call of the scan ends here, the event behind waits
        QStringList notes{"312:00:00 Неправильный АО"};
        if (state != 14)
            notes << "312:00:00 АО не распознан";
        QCOMPARE(desk.noted(), notes << "312:00:00 Соединение сохранено out/20260731/s120000");
        QCOMPARE(desk.record(), QStringLiteral("12345678|S|31.07.2026 11:59|u|2|N|") +
                                    (state == 14 ? "Нет ответа после отправки файла" : "Нет ответа"));
    }
}

void TestSkkAnswerback::anyNumberOnRequest()
{
    const SkkDesk desk;
    Options.noCheckAOAbonent = true;
    await(desk, 5, 7);
    desk.receive(fill("#\r\n654321", 19));
    QCOMPARE(State.AutoModeState, 5);
    desk.receive("-К");
    QCOMPARE(State.AutoModeState, 6);
    QCOMPARE(State.AutoModeWaitTimer, 5);
    QCOMPARE(ProcessSKK.receiveBuffer, "К");
    QCOMPARE(desk.noted(), QStringList());
}

void TestSkkAnswerback::anyTextOnRequest_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<Fate>("fate");
    row("nineteen characters of noise", QString(19, 'A'), Waits);
    row("twenty", QString(20, 'A'), Taken);
    row("more", QString(25, 'A'), Taken);
    row("another number", fill("#\r\n654321", 20), Taken);
}

void TestSkkAnswerback::anyTextOnRequest()
{
    QFETCH(QString, text);
    QFETCH(Fate, fate);
    const SkkDesk desk;
    Options.noCheckAOText = true;
    await(desk, 5, 7);
    for (const QChar c : text)
        desk.receive(c);
    QCOMPARE(fateIn(5), fate);
    QCOMPARE(State.AutoModeWaitTimer, fate == Taken ? 5 : 9);
    QCOMPARE(ProcessSKK.receiveBuffer, fate == Taken ? text.mid(20) : text);
    QCOMPARE(desk.sent(), "");
}

void TestSkkAnswerback::anyTextInEachState_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("after");
    row("asked", 4, 6);
    row("waiting", 5, 6);
    row("waiting after the file", 14, 15);
    row("any other", 11, 11);
}

void TestSkkAnswerback::anyTextInEachState()
{
    QFETCH(int, state);
    QFETCH(int, after);
    const SkkDesk desk;
    Options.noCheckAOText = true;
    await(desk, state, 7);
    desk.receive(QString(20, 'A'));
    QCOMPARE(State.AutoModeState, after);
    QCOMPARE(State.AutoModeWaitAA, after == state ? 7 : 0);
    QCOMPARE(State.AutoModeWaitTimer, after == state ? 9 : 5);
    QCOMPARE(State.PK_out, state == 14 ? 1 : 0);
    QCOMPARE(ProcessSKK.receiveBuffer, "");
}

void TestSkkAnswerback::anyTextIsForSubscribersOnly()
{
    for (const int kind : {8, 9}) {
        const SkkDesk desk;
        Options.noCheckAOText = true;
        await(desk, 5, kind);
        desk.receive(QString(100, 'A'));
        QCOMPARE(State.AutoModeState, 5);
        QCOMPARE(ProcessSKK.receiveBuffer.size(), 100);
    }
}

void TestSkkAnswerback::shortCentre_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("text");
    QTest::addColumn<Fate>("fate");
    for (const int type : {0, 1}) {
        const auto row = [type](const char *what, const QString &text, Fate fate) {
            QTest::addRow("type %d, %s", type, what) << type << fill(text, 20) << fate;
        };
        row("exact", "\r\n#01 |ЦКС&", Taken);
        row("name at fifteen", fill("\r\n#01", 15) + "|ЦКС&", Taken);
        row("name at sixteen, beyond the twenty", fill("\r\n#01", 16) + "|ЦКС&", Taken);
        row("name at sixteen, cut off", fill("\r\n#01", 16) + "|ЦКС", Refused);
        row("name at seventeen", fill("\r\n#01", 17) + "|ЦКС&", Refused);
        row("other opening", "#\r\n#01 |ЦКС&", Taken);
        row("number behind the name", "\r\n# |ЦКС& #01", Taken);
        row("other number", "\r\n#02 |ЦКС&", Refused);
        row("no name", "\r\n#01", Refused);
        row("name without its marks", "\r\n#01 ЦКС", Refused);
        row("no opening", "--#01 |ЦКС&", Waits);
    }
    ::row("type 2", 2, fill("\r\n#911", 20), Taken);
    ::row("type 2, at the end", 2, fill("#\r\n", 17) + "911", Taken);
    ::row("type 2, other number", 2, fill("\r\n#01 |ЦКС&", 20), Refused);
    ::row("type 3", 3, fill("\r\n#", 20), Taken);
    ::row("type 4", 4, fill("#\r\n", 20), Taken);
    ::row("type 5", 5, fill("\r\n#01 |ЦКС&911", 20), Refused);
    ::row("type 6", 6, fill("\r\n#01 |ЦКС&911", 20), Refused);
    ::row("type below 0", -1, fill("\r\n#01 |ЦКС&911", 20), Refused);
}

void TestSkkAnswerback::shortCentre()
{
    QFETCH(int, type);
    QFETCH(QString, text);
    QFETCH(Fate, fate);
    const SkkDesk desk;
    Options.CKS_Type = type;
    await(desk, 5, 8);
    desk.receive("ШУМ" + text + "К");
    QCOMPARE(fateIn(5), fate);
    QCOMPARE(ProcessSKK.receiveBuffer, fate == Taken ? text.mid(20) + "К" : "ШУМ" + text + "К");
    QCOMPARE(desk.sent(), fate == Refused ? "@H" : "");
    if (fate == Taken) {
        QCOMPARE(State.AutoModeState, 6);
        QCOMPARE(State.AutoModeWaitAA, 0);
        QCOMPARE(State.AutoModeWaitTimer, 15);
    }
    QCOMPARE(desk.noted(), fate == Refused
                               ? QStringList({"312:00:00 Неправильный АО ЦКС", "312:00:00 АО не распознан",
                                              "312:00:00 Соединение сохранено out/20260731/s120000"})
                               : QStringList());
}

void TestSkkAnswerback::shortCentreInFewerCharacters()
{
    for (int type = 0; type <= 5; ++type) {
        for (int length = 1; length < 20; ++length) {
            const SkkDesk desk;
            Options.CKS_Type = type;
            await(desk, 5, 8);
            desk.receive(fill("\r\n#", 20).left(length));
            QCOMPARE(fateIn(5), Waits);
        }
    }
}

void TestSkkAnswerback::openingExtendsTheWait_data()
{
    QTest::addColumn<bool>("toCKS");
    QTest::addColumn<int>("state");
    QTest::addColumn<QList<int>>("after");
    row("before the question", false, 3, QList<int>({5, 8, 7}));
    row("before the question, centre", true, 3, QList<int>({5, 18, 8}));
    row("asked", false, 4, QList<int>({5, 13, 7}));
    row("asked, centre", true, 4, QList<int>({5, 23, 8}));
    row("before the last question", false, 13, QList<int>({14, 13, 7}));
    row("before the last question, centre", true, 13, QList<int>({14, 23, 9}));
    row("waiting", false, 5, QList<int>({5, 9, 7}));
    row("waiting after the file, centre", true, 14, QList<int>({14, 9, 8}));
}

void TestSkkAnswerback::openingExtendsTheWait()
{
    QFETCH(bool, toCKS);
    QFETCH(int, state);
    QFETCH(QList<int>, after);
    const SkkDesk desk;
    await(desk, state, toCKS ? 8 : 7);
    desk.receive(toCKS ? "\r\n" : "#\r");
    QCOMPARE(State.AutoModeState, state);
    desk.receive(toCKS ? "#" : "\n");
    QCOMPARE((QList<int>{State.AutoModeState, State.AutoModeWaitTimer, State.AutoModeWaitAA}), after);
}

void TestSkkAnswerback::centreOpeningIsForTheCentreOnly()
{
    const SkkDesk desk;
    await(desk, 4, 7);
    desk.receive("\r\n#");
    QCOMPARE(State.AutoModeState, 4);
    QCOMPARE(ProcessSKK.processAutoModeWaitAA(0), 0);
    State.sendInfo.toCKS = true;
    QCOMPARE(ProcessSKK.processAutoModeWaitAA(0), 0);
    QCOMPARE(State.AutoModeState, 5);
    QCOMPARE(ProcessSKK.processAutoModeWaitAA(3), 0); // not inside the buffer
}

void TestSkkAnswerback::noWaitReadsNothing_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("kind");
    row("nothing awaited", 5, 0);
    row("unknown kind", 5, 3);
    row("call in setup", 1, 7);
    row("no automatic send", 0, 7);
}

void TestSkkAnswerback::noWaitReadsNothing()
{
    QFETCH(int, state);
    QFETCH(int, kind);
    const SkkDesk desk;
    await(desk, 5, 7);
    State.AutoModeState = state;
    State.AutoModeWaitAA = kind;
    const QString text = fill("#\r\n123456", 60);
    desk.receive(text);
    QCOMPARE(State.AutoModeState, state);
    QCOMPARE(ProcessSKK.receiveBuffer, text);
    QCOMPARE(desk.noted(), QStringList());
}

QTEST_GUILESS_MAIN(TestSkkAnswerback)
#include "test_skk_answerback.moc"
