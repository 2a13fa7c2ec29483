// The terminal's short forms and every row of the centre's service messages but receipt, renumbering and
// distortion, which have programs of their own.

#include "app/options.h"
#include "tests/procedures/cks_desk.h"
#include "tests/support/row.h"

#include <QSignalSpy>
#include <QtTest>

class TestCksForms : public QObject
{
    Q_OBJECT

private slots:
    void formsToTheLine_data();
    void formsToTheLine();
    void receiptRequestFormClearsItsCountdown();
    void receiptFormClearsItsCountdown();
    void receiptRequestFromTheCentre();
    void receiptRequestWithRenumberingAnnounced();
    void registersInsideAreIgnored();
    void stateWord_data();
    void stateWord();
    void openingRequest_data();
    void openingRequest();
    void openingInModeAskedKeepsTheChannelName();
    void openingInManualModeStartsNoReceipt();
    void waiting_data();
    void waiting();
    void correction_data();
    void correction();
    void acceptanceMovesTheFileUnderPkOut();
    void acceptanceWithoutFileInTransitDoesNothing();
    void acceptanceThatCannotMoveGoesToManual();
    void confirmationRequest_data();
    void confirmationRequest();
    void categoryIsAnnounced();
    void refusalClosesTheChannel();
    void messagesThatChangeNothing_data();
    void messagesThatChangeNothing();
};

namespace
{
/// All that a service message may change, as one line.
QString picture()
{
    return QStringLiteral("mode %1 man %2 PK %3/%4 CKS %5/%6 ask %7 send %8 file %9")
        .arg(State.tlgMode)
        .arg(int(State.manualMode))
        .arg(State.PK_in)
        .arg(State.PK_out)
        .arg(State.CKS_in)
        .arg(State.CKS_out)
        .arg(State.askReceiptCountdown)
        .arg(State.sendReceiptCountdown)
        .arg(State.currentFile);
}
} // namespace

void TestCksForms::formsToTheLine_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("line");
    row("0 receipt request", 0, "|ЗЗ ");
    row("1 receipt", 1, "|ЗЦЗЦ КС ВАШ 007=007 НННН  ");
    row("2 stop", 2, "|ЗЦЗЦ КС СТОП НННН  ");
    row("3 nothing", 3, "");
    row("4 nothing, though it has a button", 4, "");
    row("5 text", 5, "|ЗЦЗЦ КС ТЕКСТ НННН  ");
    row("6 nothing", 6, "");
    row("-1 nothing", -1, "");
}

void TestCksForms::formsToTheLine()
{
    QFETCH(int, code);
    QFETCH(QString, line);
    const CksDesk desk;
    State.PK_in = 7;
    ProcessCKS.SendKG(code);
    QCOMPARE(desk.sent(), line);
    QCOMPARE(State.askSent, code == 0);
}

void TestCksForms::receiptRequestFormClearsItsCountdown()
{
    const CksDesk desk;
    State.askReceiptCountdown = 4;
    State.sendReceiptCountdown = 3;
    ProcessCKS.SendKG(0);
    QCOMPARE(State.askReceiptCountdown, 0);
    QCOMPARE(State.sendReceiptCountdown, 3);
}

void TestCksForms::receiptFormClearsItsCountdown()
{
    const CksDesk desk;
    State.askReceiptCountdown = 4;
    State.sendReceiptCountdown = 3;
    State.PK_in = 999;
    ProcessCKS.SendKG(1);
    QCOMPARE(desk.sent(), QStringLiteral("|ЗЦЗЦ КС ВАШ 999=999 НННН  "));
    QCOMPARE(State.askReceiptCountdown, 4);
    QCOMPARE(State.sendReceiptCountdown, 0);
}

void TestCksForms::receiptRequestFromTheCentre()
{
    const CksDesk desk;
    ProcessCKS.ProcessKG(QStringLiteral("ЗАПРОСИТЕ КВИТАНЦИЮ "));
    QCOMPARE(State.askReceiptCountdown, 1);
    QVERIFY(!State.renumberAnnounced);
    State.askReceiptCountdown = 0;
    ProcessCKS.ProcessKG(QStringLiteral("ЗАПРОСИТЕ КВИТАНЦИ"));
    QCOMPARE(State.askReceiptCountdown, 0);
}

void TestCksForms::receiptRequestWithRenumberingAnnounced()
{
    const CksDesk desk;
    ProcessCKS.ProcessKG(QStringLiteral("ЗАПРОСИТЕ КВИТАНЦИЮ СМЕНА НУМЕРАЦИИ В"));
    QVERIFY(!State.renumberAnnounced);
    ProcessCKS.ProcessKG(QStringLiteral("ЗАПРОСИТЕ КВИТАНЦИЮ СМЕНА НУМЕРАЦИИ В 0001 "));
    QCOMPARE(State.askReceiptCountdown, 1);
    QVERIFY(State.renumberAnnounced);
}

void TestCksForms::registersInsideAreIgnored()
{
    const CksDesk desk;
    ProcessCKS.ProcessKG(QStringLiteral("|СВ#|ЯЗЬ &|ОТКР<>ЫТА "));
    QCOMPARE(State.tlgMode, 3);
}

void TestCksForms::stateWord_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("mode");
    row("closed", "СВЯЗЬ ЗАКРЫТА ", 1);
    row("open", "СВЯЗЬ ОТКРЫТА ", 3);
    row("open, extra fields", "СВЯЗЬ ОТКРЫТА 1035 ЕЩЕ ", 3);
    row("word БД", "СВЯЗЬ БД", 1);
    row("word БА", "СВЯЗЬ БА", 2);
    row("word РБ", "СВЯЗЬ РБ", 3);
    row("word БВ", "СВЯЗЬ БВ", 4);
    row("word БР", "СВЯЗЬ БР", 5);
    row("unknown word", "СВЯЗЬ ОТКРЫТ", 0);
    row("no word: not read", "СВЯЗЬ ", 4);
    row("no blank: not this message", "СВЯЗЬ", 4);
}

void TestCksForms::stateWord()
{
    QFETCH(QString, text);
    QFETCH(int, mode);
    const CksDesk desk;
    State.tlgMode = 4;
    ProcessCKS.ProcessKG(text);
    QCOMPARE(State.tlgMode, mode);
}

void TestCksForms::openingRequest_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("name");
    row("with a channel name", "ОТКРОЙТЕ СВЯЗЬ АБВГДЕ/12 1035", "АБВГДЕ/12");
    row("seven characters suffice", "ОТКРОЙТЕ СВЯЗЬ АБВГДЕ/", "АБВГДЕ/");
    row("one character short", "ОТКРОЙТЕ СВЯЗЬ АБВГД/", "");
    row("stroke elsewhere", "ОТКРОЙТЕ СВЯЗЬ АБВГД/Е12", "");
    row("nothing behind", "ОТКРОЙТЕ СВЯЗЬ", "");
}

void TestCksForms::openingRequest()
{
    QFETCH(QString, text);
    QFETCH(QString, name);
    for (const int mode : {0, 1, 3, 4, 5}) {
        const CksDesk desk;
        State.tlgMode = mode;
        State.tlgModeSeconds = 50;
        ProcessCKS.ProcessKG(text);
        QCOMPARE(State.tlgMode, 2);
        QCOMPARE(State.tlgModeSeconds, 0);
        QCOMPARE(State.sendReceiptCountdown, 3);
        QCOMPARE(State.channelName, name);
    }
}

void TestCksForms::openingInModeAskedKeepsTheChannelName()
{
    const CksDesk desk;
    State.tlgMode = 2;
    State.tlgModeSeconds = 50;
    ProcessCKS.ProcessKG(QStringLiteral("ОТКРОЙТЕ СВЯЗЬ АБВГДЕ/12"));
    QCOMPARE(State.channelName, QString());
    QCOMPARE(State.tlgModeSeconds, 50);
    QCOMPARE(State.sendReceiptCountdown, 3);
}

void TestCksForms::openingInManualModeStartsNoReceipt()
{
    const CksDesk desk;
    State.manualMode = true;
    ProcessCKS.ProcessKG(QStringLiteral("ОТКРОЙТЕ СВЯЗЬ"));
    QCOMPARE(State.tlgMode, 2);
    QCOMPARE(State.sendReceiptCountdown, 0);
}

void TestCksForms::waiting_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("manual");
    QTest::addColumn<int>("modeBefore");
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("ask");
    row("opening, open, automatic", "ЖДУ ОТКРЫТИЯ СВЯЗИ ", false, 3, 0, 2);
    row("opening, open, manual", "ЖДУ ОТКРЫТИЯ СВЯЗИ ", true, 3, 2, 0);
    row("opening, closed, automatic", "ЖДУ ОТКРЫТИЯ СВЯЗИ ", false, 1, 0, 2);
    row("opening, closed, manual", "ЖДУ ОТКРЫТИЯ СВЯЗИ ", true, 1, 1, 0);
    row("other word, automatic", "ЖДУ ЗАКРЫТИЯ СВЯЗИ ", false, 3, 0, 0);
    row("other word, manual", "ЖДУ ЗАКРЫТИЯ СВЯЗИ ", true, 3, 3, 0);
    row("second word is another", "ЖДУ ОТКРЫТИЯ КАНАЛА ", false, 3, 3, 0);
    row("one word", "ЖДУ ОТКРЫТИЯ", false, 3, 3, 0);
}

void TestCksForms::waiting()
{
    QFETCH(QString, text);
    QFETCH(bool, manual);
    QFETCH(int, modeBefore);
    QFETCH(int, mode);
    QFETCH(int, ask);
    const CksDesk desk;
    State.manualMode = manual;
    State.tlgMode = modeBefore;
    ProcessCKS.ProcessKG(text);
    QCOMPARE(State.tlgMode, mode);
    QCOMPARE(State.askReceiptCountdown, ask);
}

void TestCksForms::correction_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("counter");
    row("range that follows ours", "ОБРАЩАЙТЕСЬ В КСС ЗА ТЛГ 005-009 ", 9);
    row("range of one", "ОБРАЩАЙТЕСЬ В КСС ЗА ТЛГ 005-005", 5);
    row("range that begins later", "ОБРАЩАЙТЕСЬ В КСС ЗА ТЛГ 006-009 ", 4);
    row("range that begins earlier", "ОБРАЩАЙТЕСЬ В КСС ЗА ТЛГ 004-009 ", 4);
    row("last number missing", "ОБРАЩАЙТЕСЬ В КСС ЗА ТЛГ 005-", 4);
    row("last number short", "ОБРАЩАЙТЕСЬ В КСС ЗА ТЛГ 005-09 ", 4);
    row("word missing", "ОБРАЩАЙТЕСЬ В КСС ЗА 005-009 ", 4);
}

void TestCksForms::correction()
{
    QFETCH(QString, text);
    QFETCH(int, counter);
    const CksDesk desk;
    State.PK_in = 4;
    State.Save();
    ProcessCKS.ProcessKG(text);
    QCOMPARE(State.PK_in, counter);
    QCOMPARE(desk.noted(),
             counter == 4 ? QStringList() : QStringList({"312:00:00 КОРРЕКТИРОВКА СЧЕТЧИКОВ ПРИЕМ "}));
    State.Load(); // as after a restart
    QCOMPARE(State.PK_in, counter);
}

void TestCksForms::acceptanceMovesTheFileUnderPkOut()
{
    const CksDesk desk;
    desk.inTransit(QStringLiteral("20260731u001"));
    State.PK_out = 12;
    State.scanCountdown = 20;
    ProcessCKS.ProcessKG(QStringLiteral("Р 3 ПРИНЯТА "));
    QCOMPARE(desk.names("out/20260731"), QStringList("20260731u001.012"));
    QVERIFY(!State.fileInProgress);
    QCOMPARE(State.currentFile, QString());
    QCOMPARE(State.scanCountdown, 0);
    QVERIFY(!State.manualMode);
    QCOMPARE(desk.noted(),
             QStringList({"312:00:00 ПЕРЕИМЕНОВАНИЕ out/20260731u001 В out/20260731/20260731u001.012"}));
}

void TestCksForms::acceptanceWithoutFileInTransitDoesNothing()
{
    const CksDesk desk;
    State.PK_out = 3;
    const QString before = picture();
    ProcessCKS.ProcessKG(QStringLiteral("Р 3 ПРИНЯТА "));
    QCOMPARE(picture(), before);
    QCOMPARE(desk.noted(), QStringList());
}

void TestCksForms::acceptanceThatCannotMoveGoesToManual()
{
    const CksDesk desk;
    State.fileInProgress = true;
    State.currentFile = QStringLiteral("20260731u009"); // gone from the directory
    ProcessCKS.ProcessKG(QStringLiteral("Р 9 ПРИНЯТА "));
    QVERIFY(State.manualMode);
    QVERIFY(!State.fileInProgress);
}

void TestCksForms::confirmationRequest_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number");
    row("with a number", "ПОДТВЕРДИТЕ ПРИЕМ Р 017 ", 17);
    row("without: the last of the centre", "ПОДТВЕРДИТЕ ПРИЕМ Р ВСЕХ", 40);
    row("nothing behind", "ПОДТВЕРДИТЕ ПРИЕМ Р ", 40);
    row("one blank short: not this message", "ПОДТВЕРДИТЕ ПРИЕМ Р", -1);
}

void TestCksForms::confirmationRequest()
{
    QFETCH(QString, text);
    QFETCH(int, number);
    const CksDesk desk;
    State.CKS_out = 40;
    State.tlgMode = 3;
    State.tlgModeSeconds = 9;
    QSignalSpy due(&ProcessCKS, &CProcessCKS::confirmationDue);
    ProcessCKS.ProcessKG(text);
    QCOMPARE(due.count(), number < 0 ? 0 : 1);
    QCOMPARE(State.tlgMode, number < 0 ? 3 : 5);
    QCOMPARE(State.tlgModeSeconds, number < 0 ? 9 : 0);
    if (number >= 0)
        QCOMPARE(due.at(0).at(0).toInt(), number);
}

void TestCksForms::categoryIsAnnounced()
{
    const CksDesk desk;
    QSignalSpy announced(&ProcessCKS, &CProcessCKS::categoryAnnounced);
    ProcessCKS.ProcessKG(QStringLiteral("ПЕРЕДАЕТСЯ КАТЕГОРИЙНАЯ"));
    QCOMPARE(announced.count(), 0);
    ProcessCKS.ProcessKG(QStringLiteral("ПЕРЕДАЕТСЯ КАТЕГОРИЙНАЯ ВНЕ "));
    QCOMPARE(announced.count(), 1);
    QCOMPARE(State.tlgMode, 0);
}

void TestCksForms::refusalClosesTheChannel()
{
    const CksDesk desk;
    State.tlgMode = 3;
    ProcessCKS.ProcessKG(QStringLiteral("ТЕЛЕГРАММА НЕ ПРИНЯТА 012 "));
    QCOMPARE(State.tlgMode, 2);
    QVERIFY(State.manualMode);
    QCOMPARE(desk.noted(), QStringList({"312:00:00 Установлен РУЧНОЙ режим"}));
    QCOMPARE(desk.sent(), QString());
}

void TestCksForms::messagesThatChangeNothing_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : {"ПОВТОР ОКОНЧЕН", "ССС ПРИНЯТО 5", "ССС", "ССС ПРИНЯТО ", "", "ПРИВЕТ", "ВАШ",
                             "Р", "12 ТЕКСТ", "связь открыта", " СВЯЗЬ ОТКРЫТА", "ЖДУ", "СМЕНА", "ИСКАЖЕН"})
        row(*text ? text : "empty", QString::fromUtf8(text));
}

void TestCksForms::messagesThatChangeNothing()
{
    QFETCH(QString, text);
    for (int mode = 0; mode <= 5; ++mode) {
        const CksDesk desk;
        desk.inTransit(QStringLiteral("20260731u001"));
        State.tlgMode = mode;
        State.PK_in = 5;
        State.PK_out = 6;
        const QString before = picture();
        ProcessCKS.ProcessKG(text);
        QCOMPARE(picture(), before);
        QCOMPARE(desk.sent(), QString());
        QCOMPARE(desk.noted(), QStringList());
        QVERIFY(State.fileInProgress);
    }
}

QTEST_GUILESS_MAIN(TestCksForms)
#include "test_cks_forms.moc"
