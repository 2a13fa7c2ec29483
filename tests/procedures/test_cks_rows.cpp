// Each service message of the centre in each channel mode, automatic and manual: all that it changes, as it
// stands, with register marks between all its characters, and with further words behind it.

#include "app/options.h"
#include "tests/procedures/cks_desk.h"
#include "tests/support/row.h"

#include <QSignalSpy>
#include <QtTest>

class TestCksRows : public QObject
{
    Q_OBJECT

private slots:
    void eachRowInEachMode_data();
    void eachRowInEachMode();
    void registerMarksInsideChangeNothing_data() { eachRowInEachMode_data(); }
    void registerMarksInsideChangeNothing();
    void extraFieldsChangeNothing_data() { eachRowInEachMode_data(); }
    void extraFieldsChangeNothing();
    void oneCharacterShortIsNoMessage_data();
    void oneCharacterShortIsNoMessage();

private:
    void check(const QString &text);
};

namespace
{
const char File[] = "20260731u001";

/// All that a message may change, one "name=value" each.
struct Picture {
    QStringList lines;

    explicit Picture(const CksDesk &desk, int confirmed, int categories)
    {
        const auto add = [this](const char *name, const auto &value) {
            lines << QStringLiteral("%1=%2").arg(QString::fromLatin1(name)).arg(value);
        };
        add("mode", State.tlgMode);
        add("age", State.tlgModeSeconds);
        add("manual", int(State.manualMode));
        add("in", State.PK_in);
        add("out", State.PK_out);
        add("centreIn", State.CKS_in);
        add("centreOut", State.CKS_out);
        add("ask", State.askReceiptCountdown);
        add("send", State.sendReceiptCountdown);
        add("scan", State.scanCountdown);
        add("asked", int(State.askSent));
        add("announced", int(State.renumberAnnounced));
        add("quiet", int(State.dayChangeQuiet));
        add("channel", State.channelName);
        add("progress", int(State.fileInProgress));
        add("current", State.currentFile);
        add("queue", desk.names("out", "*u*").join(','));
        add("sent", desk.names("out/20260731").join(','));
        add("line", desk.sent());
        add("confirm", confirmed);
        add("categories", categories);
        for (const QString &line : desk.noted())
            lines << QStringLiteral("note") + line.at(0) + QLatin1Char('=') + line.mid(10).trimmed();
    }

    /// What of \a other is not here.
    [[nodiscard]] QStringList changed(const Picture &other) const
    {
        QStringList result;
        for (const QString &line : other.lines)
            if (!lines.contains(line))
                result << line;
        return result;
    }
};

void prepare(const CksDesk &desk, int mode, bool manual)
{
    desk.inTransit(QString::fromLatin1(File));
    State.tlgMode = mode;
    State.tlgModeSeconds = 50;
    State.manualMode = manual;
    State.PK_in = State.CKS_out = 4;
    State.PK_out = State.CKS_in = 6;
    State.prevPK_in = State.prevCKS_out = 40;
    State.prevPK_out = State.prevCKS_in = 12;
    State.askReceiptCountdown = 9;
    State.askSent = State.dayChangeQuiet = true;
}

const char Automatic[] = "a", Manual[] = "m", Both[] = "am", AllModes[] = "012345", NotAsked[] = "01345",
           NotOpen[] = "01245";

void row(const char *name, const char *text, const char *modes, const char *manners,
         const QStringList &changes)
{
    ::row(name, QString::fromUtf8(text), modes, manners, changes);
}

const QStringList toManual{"manual=1", "scan=3"};
const QStringList manualNote{"note3=Установлен РУЧНОЙ режим"};
const QStringList ended{"scan=0", "progress=0", "current="};
const QStringList receipt{"ask=0", "asked=0"};
const QStringList toAsked{"mode=2", "age=0"};
const QStringList accepted =
    QStringList{"queue=", "sent=20260731u001.006",
                "note3=ПЕРЕИМЕНОВАНИЕ out/20260731u001 В out/20260731/20260731u001.006"} +
    ended;

QStringList aside(const QString &suffix)
{
    return QStringList{"queue=20260731u001.b" + suffix,
                       "note3=ПЕРЕИМЕНОВАНИЕ out/20260731u001 В out/20260731u001.b" + suffix} +
           ended;
}

void addReceipts()
{
    row("receipt asked for", "ЗАПРОСИТЕ КВИТАНЦИЮ", AllModes, Both, {"ask=1"});
    row("renumbering announced", "ЗАПРОСИТЕ КВИТАНЦИЮ СМЕНА НУМЕРАЦИИ В 0001", AllModes, Both,
        {"ask=1", "announced=1"});

    row("receipt of two fields", "ВАШ 006 НАШ 004", AllModes, Both, receipt + accepted);
    row("receipt: open the channel", "ВАШ 006 НАШ 004 ПОСЛЕДНИЕ ОТКРОЙТЕ СВЯЗЬ АБВГДЕ/12", AllModes,
        Automatic, receipt + accepted + toAsked + QStringList{"channel=АБВГДЕ/12", "send=3"});
    row("receipt: open the channel, manual", "ВАШ 006 НАШ 004 ПОСЛЕДНИЕ ОТКРОЙТЕ СВЯЗЬ АБВГДЕ/12", AllModes,
        Manual, receipt + accepted + toAsked + QStringList{"channel=АБВГДЕ/12"});
    row("receipt: channel open", "ВАШ 006 НАШ 004 ПОСЛЕДНИЕ СВЯЗЬ ОТКРЫТА А", AllModes, Both,
        receipt + accepted + QStringList{"mode=3", "age=0", "channel=А"});
    row("receipt: channel closed", "ВАШ 006 НАШ 004 ПОСЛЕДНИЕ СВЯЗЬ ЗАКРЫТА А", AllModes, Both,
        receipt + accepted + QStringList{"mode=1", "age=0", "channel=А"});
    row("receipt: closed till", "ВАШ 006 НАШ 004 ПОСЛЕДНИЕ ЗАКРЫТО ПО 1800", AllModes, Both,
        receipt + accepted + QStringList{"mode=4", "age=0", "channel=1800"});
    row("receipt: closed otherwise", "ВАШ 006 НАШ 004 ПОСЛЕДНИЕ ЗАКРЫТО ДО 1800", AllModes, Both,
        receipt + accepted + QStringList{"channel=1800"});
    row("receipt: confirm", "ВАШ 006 НАШ 004 ПОСЛЕДНИЕ ПОДТВЕРДИТЕ ПРИЕМ Р", AllModes, Both,
        receipt + accepted + QStringList{"mode=5", "age=0", "channel=Р", "confirm=4"});
}

void addReceiptsThatDiffer()
{
    row("receipt: ours differ", "ВАШ 005 НАШ 004", AllModes, Automatic,
        receipt + toManual + manualNote + aside("006") + QStringList{"centreIn=5"});
    row("receipt: ours differ, manual", "ВАШ 005 НАШ 004", AllModes, Manual,
        receipt + aside("006") + QStringList{"centreIn=5"});
    row("receipt: theirs differ, open", "ВАШ 006 НАШ 005", "3", Automatic,
        receipt + accepted + manualNote +
            QStringList{"centreOut=5", "manual=1", "scan=3", "line=|ЗЦЗЦ КС СТОП НННН  ",
                        "note4=РАСХОЖДЕНИЕ СЧЕТЧИКОВ"});
    row("receipt: theirs differ, not open", "ВАШ 006 НАШ 005", NotOpen, Automatic,
        receipt + accepted + manualNote +
            QStringList{"centreOut=5", "manual=1", "scan=3", "note4=РАСХОЖДЕНИЕ СЧЕТЧИКОВ"});
    row("receipt: theirs differ, open, manual", "ВАШ 006 НАШ 005", "3", Manual,
        receipt + accepted +
            QStringList{"centreOut=5", "scan=3", "line=|ЗЦЗЦ КС СТОП НННН  ", "note4=РАСХОЖДЕНИЕ СЧЕТЧИКОВ"});
}

void addOpenings()
{
    row("opening", "ОТКРОЙТЕ СВЯЗЬ АБВГДЕ/12", NotAsked, Automatic,
        toAsked + QStringList{"channel=АБВГДЕ/12", "send=3"});
    row("opening, manual", "ОТКРОЙТЕ СВЯЗЬ АБВГДЕ/12", NotAsked, Manual,
        toAsked + QStringList{"channel=АБВГДЕ/12"});
    row("opening when asked already", "ОТКРОЙТЕ СВЯЗЬ АБВГДЕ/12", "2", Automatic, {"send=3"});
    row("opening when asked already, manual", "ОТКРОЙТЕ СВЯЗЬ АБВГДЕ/12", "2", Manual, {});

    row("open", "СВЯЗЬ ОТКРЫТА", AllModes, Both, {"mode=3", "age=0"});
    row("closed", "СВЯЗЬ ЗАКРЫТА", AllModes, Both, {"mode=1", "age=0"});
    row("word of no mode", "СВЯЗЬ НЕЯСНА", AllModes, Both, {"mode=0", "age=0"});

    row("waits for the opening", "ЖДУ ОТКРЫТИЯ СВЯЗИ", AllModes, Automatic, {"mode=0", "age=0", "ask=2"});
    row("waits for the opening, manual, open", "ЖДУ ОТКРЫТИЯ СВЯЗИ", "3", Manual, toAsked);
    row("waits for the opening, manual", "ЖДУ ОТКРЫТИЯ СВЯЗИ", NotOpen, Manual, {});
    row("waits for another thing", "ЖДУ ЗАКРЫТИЯ СВЯЗИ", AllModes, Automatic, {"mode=0", "age=0"});
    row("waits for another thing, manual", "ЖДУ ЗАКРЫТИЯ СВЯЗИ", AllModes, Manual, {});
}

void addRenumberings()
{
    const QStringList renumbered{"quiet=0", "in=0", "out=0", "note3=Счетчики сброшены"};
    row("renumbering", "СМЕНА НУМЕРАЦИИ ПРИН 0012 ПЕР 0040 ОТКРОЙТЕ СВЯЗЬ", AllModes, Automatic,
        renumbered + QStringList{"line=\r\n|ЗЦЗЦ КС ВАШ 040=040 НННН  "});
    row("renumbering, manual", "СМЕНА НУМЕРАЦИИ ПРИН 0012 ПЕР 0040 ОТКРОЙТЕ СВЯЗЬ", AllModes, Manual,
        renumbered);
    row("renumbering that is bad", "СМЕНА НУМЕРАЦИИ ПРИН 0011 ПЕР 0040 ОТКРОЙТЕ СВЯЗЬ", AllModes, Automatic,
        renumbered + toManual + manualNote +
            QStringList{"note4=Расхождение за предыдущие сутки: ПРИН 0012 ПЕР 0040"});
    row("renumbering that is bad, manual", "СМЕНА НУМЕРАЦИИ ПРИН 0011 ПЕР 0040 ОТКРОЙТЕ СВЯЗЬ", AllModes,
        Manual, renumbered + QStringList{"note4=Расхождение за предыдущие сутки: ПРИН 0012 ПЕР 0040"});

    row("correction", "ОБРАЩАЙТЕСЬ В КСС ЗА ТЛГ 005-009", AllModes, Both,
        {"in=9", "note3=КОРРЕКТИРОВКА СЧЕТЧИКОВ ПРИЕМ"});
    row("repetition ended", "ПОВТОР ОКОНЧЕН", AllModes, Both, {});
}

void addTheRest()
{
    row("distortion", "ИСКАЖЕНИЕ 7 ВАШ 12", "3", Automatic,
        toAsked + toManual + manualNote + aside("07") + QStringList{"centreIn=12"});
    row("distortion, manual", "ИСКАЖЕНИЕ 7 ВАШ 12", "3", Manual,
        toAsked + aside("07") + QStringList{"centreIn=12"});
    row("distortions", "ИСКАЖЕНИЯ 7", "3", Automatic, toAsked + toManual + manualNote + aside("07"));
    row("distortions without a number", "ИСКАЖЕНИЯ", "3", Automatic,
        toAsked + toManual + manualNote + aside("rk"));
    row("distortion when not open", "ИСКАЖЕНИЕ 7 ВАШ 12", NotOpen, Both, {});

    row("category", "ПЕРЕДАЕТСЯ КАТЕГОРИЙНАЯ ВНЕ ОЧЕРЕДИ", AllModes, Both, {"categories=1"});
    row("acceptance", "Р 3 ПРИНЯТА", AllModes, Both, accepted);
    row("confirmation", "ПОДТВЕРДИТЕ ПРИЕМ Р 017", AllModes, Both, {"mode=5", "age=0", "confirm=17"});
    row("confirmation without a number", "ПОДТВЕРДИТЕ ПРИЕМ Р ВСЕХ", AllModes, Both,
        {"mode=5", "age=0", "confirm=4"});
    row("refusal", "ТЕЛЕГРАММА НЕ ПРИНЯТА", AllModes, Automatic, toAsked + toManual + manualNote);
    row("refusal, manual", "ТЕЛЕГРАММА НЕ ПРИНЯТА", AllModes, Manual, toAsked + QStringList{"scan=3"});
    row("taken", "ССС ПРИНЯТО 5", AllModes, Both, {});
    row("anything else", "ПРИВЕТ", AllModes, Both, {});
}
} // namespace

void TestCksRows::eachRowInEachMode_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("modes");
    QTest::addColumn<QString>("manners");
    QTest::addColumn<QStringList>("changes"); // those that hold already are no changes
    addReceipts();
    addReceiptsThatDiffer();
    addOpenings();
    addRenumberings();
    addTheRest();
}

void TestCksRows::check(const QString &text)
{
    QFETCH(QString, modes);
    QFETCH(QString, manners);
    QFETCH(QStringList, changes);
    for (const QChar mode : modes) {
        for (const QChar manner : manners) {
            const CksDesk desk;
            prepare(desk, mode.digitValue(), manner == QLatin1Char('m'));
            QSignalSpy due(&ProcessCKS, &CProcessCKS::confirmationDue);
            QSignalSpy announced(&ProcessCKS, &CProcessCKS::categoryAnnounced);
            const Picture before(desk, -1, 0);
            ProcessCKS.ProcessKG(text);
            const Picture after(desk, due.isEmpty() ? -1 : due.last().at(0).toInt(), announced.count());
            QStringList expected;
            for (const QString &change : changes)
                if (!before.lines.contains(change))
                    expected << change;
            // Of two changes of the same thing the last one holds: a scan due at once, then in three seconds.
            if (expected.contains("scan=0") && expected.contains("scan=3"))
                expected.removeAll(changes.indexOf("scan=3") < changes.indexOf("scan=0") ? "scan=3"
                                                                                         : "scan=0");
            QStringList found = before.changed(after);
            expected.sort();
            found.sort();
            QCOMPARE(found.join('\n'), expected.join('\n'));
        }
    }
}

void TestCksRows::eachRowInEachMode()
{
    QFETCH(QString, text);
    check(text);
    check(text + QLatin1Char(' ')); // as it comes, with the blank in front of the end mark
}

void TestCksRows::registerMarksInsideChangeNothing()
{
    QFETCH(QString, text);
    QString marked;
    int n = 0;
    for (const QChar c : text)
        marked += QStringLiteral("|#&").at(n++ % 3) + QString(c);
    check(marked + QLatin1Char('|'));
}

void TestCksRows::extraFieldsChangeNothing()
{
    QFETCH(QString, text);
    check(text + QStringLiteral(" ЕЩЕ 12 СЛОВ "));
}

void TestCksRows::oneCharacterShortIsNoMessage_data()
{
    QTest::addColumn<QString>("text");
    for (const char *begins :
         {"ЗАПРОСИТЕ КВИТАНЦИЮ", "ВАШ ", "ОТКРОЙТЕ СВЯЗЬ", "СВЯЗЬ ", "ЖДУ ", "СМЕНА ",
          "ОБРАЩАЙТЕСЬ В КСС ЗА ", "ПОВТОР ОКОНЧЕН", "ИСКАЖЕНИ", "ПЕРЕДАЕТСЯ КАТЕГОРИЙНАЯ ", "Р ",
          "ПОДТВЕРДИТЕ ПРИЕМ Р ", "ТЕЛЕГРАММА НЕ ПРИНЯТА", "ССС"})
        ::row(begins, QString::fromUtf8(begins).chopped(1));
}

void TestCksRows::oneCharacterShortIsNoMessage()
{
    QFETCH(QString, text);
    for (const bool manual : {false, true}) {
        for (int mode = 0; mode <= 5; ++mode) {
            const CksDesk desk;
            prepare(desk, mode, manual);
            QSignalSpy due(&ProcessCKS, &CProcessCKS::confirmationDue);
            QSignalSpy announced(&ProcessCKS, &CProcessCKS::categoryAnnounced);
            const Picture before(desk, -1, 0);
            ProcessCKS.ProcessKG(text);
            const Picture after(desk, due.isEmpty() ? -1 : 0, announced.count());
            QCOMPARE(before.changed(after), QStringList());
        }
    }
}

QTEST_GUILESS_MAIN(TestCksRows)
#include "test_cks_rows.moc"
