// What the switched-channel network reads and says: items of the line, forms, habits of its subscribers.

#include "tests/support/row.h"
#include "tools/linesim/network/network_forms.h"
#include "tools/linesim/network/subscriber.h"
#include "tools/linesim/network/switch_reader.h"

#include <QtTest>

class TestLinesimSwitchForms : public QObject
{
    Q_OBJECT

private slots:
    void readsEachItem_data();
    void readsEachItem();
    void readsItemsInPieces();
    void waitsForTheRestOfAForm_data();
    void waitsForTheRestOfAForm();
    void takesSilenceForTheEnd();
    void saysEachResult_data();
    void saysEachResult();
    void saysEachSignal_data();
    void saysEachSignal();
    void stampsTheTime_data();
    void stampsTheTime();
    void answerbacksHaveTheirLength();
    void centreAnswerbacks_data();
    void centreAnswerbacks();
    void readsHabits();
    void refusesAnUnknownHabit_data();
    void refusesAnUnknownHabit();
    void readsSubscribers();
    void habitsGoInTurn();
    void refusesABadLine_data();
    void refusesABadLine();
};

namespace
{
const QString ao = QStringLiteral("654321 ЗНАМЯ");

QStringList itemsOf(SwitchReader &reader)
{
    QStringList items;
    while (const std::optional<SwitchItem> item = reader.next())
        items << QStringLiteral("%1:%2").arg(item->kind).arg(item->text);
    return items;
}
} // namespace

void TestLinesimSwitchForms::readsEachItem_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("text");
    row("call", "@C", int(SwitchItem::Call), "@C");
    row("number", "@N123456@", int(SwitchItem::Number), "123456");
    row("number in code", "@n123456@", int(SwitchItem::Number), "123456");
    row("number with a plus", "@N123+@", int(SwitchItem::Number), "123+");
    row("no number", "@N@", int(SwitchItem::Number), "");
    row("seizure", "@E", int(SwitchItem::Seize), "@E");
    row("hang-up", "@H", int(SwitchItem::HangUp), "@H");
    row("question", "#*", int(SwitchItem::Question), "#*");
    row("answerback", "#\r\n654321 ЗНАМЯ", int(SwitchItem::Answerback), "#\r\n654321 ЗНАМЯ");
    row("muted", "\r\n|АО ВЫКЛ", int(SwitchItem::Muted), "\r\n|АО ВЫКЛ");
    row("unmuted", "\r\n|АО ВКЛ", int(SwitchItem::Unmuted), "\r\n|АО ВКЛ");
    row("text", "ПРИВЕТ", int(SwitchItem::Text), "ПРИВЕТ");
    row("number as text", "#123456", int(SwitchItem::Text), "#123456");
    row("strange answerback",
        "#\r"
        "X",
        int(SwitchItem::Text), "#");
    row("unknown command", "@S", int(SwitchItem::Unknown), "@S");
}

void TestLinesimSwitchForms::readsEachItem()
{
    QFETCH(QString, line);
    SwitchReader reader(ao);
    reader.take(line);
    const std::optional<SwitchItem> item = reader.next();
    QVERIFY(item);
    QTEST(int(item->kind), "kind");
    QTEST(item->text, "text");
}

void TestLinesimSwitchForms::readsItemsInPieces()
{
    const QString line = QStringLiteral("@C@N112233@#*#\r\n654321 ЗНАМЯТЕКСТ#*@H@H");
    const QStringList whole = {"0:@C",    "1:112233", "4:#*", "5:#\r\n654321 ЗНАМЯ",
                               "8:ТЕКСТ", "4:#*",     "3:@H", "3:@H"};
    for (int cut = 0; cut <= line.size(); ++cut) {
        SwitchReader reader(ao);
        reader.take(line.left(cut));
        QStringList items = itemsOf(reader);
        reader.take(line.mid(cut));
        items += itemsOf(reader);
        QVERIFY(!reader.isInside());
        QCOMPARE(items.join(QLatin1Char(';')).replace(QRegularExpression(QStringLiteral(";8:")), QString()),
                 whole.join(QLatin1Char(';')).replace(QStringLiteral(";8:"), QString()));
    }
}

void TestLinesimSwitchForms::waitsForTheRestOfAForm_data()
{
    QTest::addColumn<QString>("line");
    for (const char *line : {"@", "@N", "@N123", "#", "#\r", "#\r\n654321 ЗНАМ", "\r", "\r\n|АО В"})
        row(line, line);
}

void TestLinesimSwitchForms::waitsForTheRestOfAForm()
{
    QFETCH(QString, line);
    SwitchReader reader(ao);
    reader.take(line);
    QVERIFY(!reader.next());
    QVERIFY(reader.isInside());
}

void TestLinesimSwitchForms::takesSilenceForTheEnd()
{
    SwitchReader reader(ao);
    QVERIFY(!reader.giveUp());
    reader.take(QStringLiteral("#\r\n65"));
    const std::optional<SwitchItem> text = reader.giveUp();
    QVERIFY(text);
    QCOMPARE(int(text->kind), int(SwitchItem::Text));
    QCOMPARE(text->text, QStringLiteral("#\r\n65"));
    reader.take(QStringLiteral("@N12"));
    const std::optional<SwitchItem> command = reader.giveUp();
    QVERIFY(command);
    QCOMPARE(int(command->kind), int(SwitchItem::Unknown));
    QVERIFY(!reader.isInside());
    reader.take(QStringLiteral("@N12"));
    reader.forget();
    QVERIFY(!reader.isInside());
}

void TestLinesimSwitchForms::saysEachResult_data()
{
    QTest::addColumn<QString>("text");
    row("busy", "\r\n&OCC");
    row("fault", "\r\n&DER");
    row("no-circuit", "\r\n&NC&");
    row("wrong", "\r\n&NP&");
    row("absent", "\r\n&ABS");
    row("network-fault", "\r\n&CI&");
    row("barred", "\r\n&NA&");
    row("inf", "\r\n&INF");
    row("nch", "\r\n&NCH");
    row("broken", "\r\n&BK\r\n");
    row("married", "");
}

void TestLinesimSwitchForms::saysEachResult()
{
    QTEST(NetworkForms::result(QLatin1String(QTest::currentDataTag())), "text");
}

void TestLinesimSwitchForms::saysEachSignal_data()
{
    QTest::addColumn<QString>("text");
    row("signal-occ", "!>СИГНАЛ OCC\r\n");
    row("signal-der", "!>СИГНАЛ DER\r\n");
    row("signal-nc", "!>СИГНАЛ NC\r\n");
    row("signal-np", "!>СИГНАЛ NP\r\n");
    row("signal-other", "!>СИГНАЛ INF\r\n");
    row("busy", "");
}

void TestLinesimSwitchForms::saysEachSignal()
{
    QTEST(NetworkForms::refusalSignal(QLatin1String(QTest::currentDataTag())), "text");
}

void TestLinesimSwitchForms::stampsTheTime_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("text");
    row("usual", "<> #hh.mm", "\r\n #09.07");
    row("with the day", "<>#dd hh mm", "\r\n#03 09 07");
    row("none", "", "");
}

void TestLinesimSwitchForms::stampsTheTime()
{
    QFETCH(QString, format);
    QTEST(NetworkForms::timeStamp(format, QDateTime(QDate(2026, 7, 3), QTime(9, 7))), "text");
}

void TestLinesimSwitchForms::answerbacksHaveTheirLength()
{
    QCOMPARE(NetworkForms::answerback(QStringLiteral("112233 |ЗАРЯ")),
             QStringLiteral("#\r\n112233 |ЗАРЯ     "));
    QCOMPARE(NetworkForms::answerback(QStringLiteral("112233 |ОЧЕНЬ ДЛИННОЕ ИМЯ")),
             QStringLiteral("#\r\n112233 |ОЧЕНЬ ДЛИННОЕ ИМЯ"));
}

void TestLinesimSwitchForms::centreAnswerbacks_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("lineFirst");
    QTest::addColumn<QString>("shortForm");
    QTest::addColumn<int>("longLength");
    row("0", 0, false, "#\r\n#01 123 |ЦКС&    ", 50);
    row("0, line first", 0, true, "\r\n##01 123 |ЦКС&    ", 50);
    row("1", 1, false, "#\r\n#01 123 |ЦКС&    ", 48);
    row("2", 2, false, "#\r\n911 #01|ЦКС&     ", 48);
    row("3", 3, false, "#\r\nТТ 7001 ТРАНЗИТ  ", 58);
    row("4", 4, false, "#\r\n5150 УЗЕЛ СВЯЗИ  ", 60);
    row("5", 5, false, "#\r\n#01 123 |ЦКС&    ", 0);
}

void TestLinesimSwitchForms::centreAnswerbacks()
{
    QFETCH(int, type);
    QFETCH(bool, lineFirst);
    QFETCH(QString, shortForm);
    QFETCH(int, longLength);
    const NetworkForms::CentreForm form{type, lineFirst};
    QCOMPARE(NetworkForms::shortCentre(form), shortForm);
    QCOMPARE(shortForm.size(), 20);
    QCOMPARE(NetworkForms::longCentreLength(type), longLength);
    if (longLength == 0)
        return;
    const QString longForm = NetworkForms::longCentre(form);
    QCOMPARE(longForm.size(), longLength);
    QVERIFY(longForm.startsWith(shortForm.trimmed().left(10)) || longForm.startsWith(shortForm.left(10)));
    QVERIFY(longForm.trimmed().endsWith(QStringLiteral(" 31 12.34 ПРИНЯТА")));
}

void TestLinesimSwitchForms::readsHabits()
{
    QString wrong;
    const auto habits = parseHabits(
        QStringLiteral("busy seconds=9 sign=df first=cut last=none ask@connect+5  hang@text"), wrong);
    QVERIFY(habits);
    QCOMPARE(habits->result, QStringLiteral("busy"));
    QCOMPARE(habits->seconds, 9);
    QCOMPARE(habits->sign, QStringLiteral("df"));
    QCOMPARE(int(habits->first), int(Habits::Cut));
    QCOMPARE(int(habits->last), int(Habits::None));
    QCOMPARE(habits->deeds.size(), 2);
    QCOMPARE(int(habits->deeds[0].what), int(Deed::Ask));
    QCOMPARE(int(habits->deeds[0].when), int(Deed::Connected));
    QCOMPARE(habits->deeds[0].seconds, 5);
    QCOMPARE(int(habits->deeds[1].what), int(Deed::HangUp));
    QCOMPARE(int(habits->deeds[1].when), int(Deed::Text));
    QCOMPARE(habits->deeds[1].seconds, 0);
}

void TestLinesimSwitchForms::refusesAnUnknownHabit_data()
{
    QTest::addColumn<QString>("word");
    for (const char *word : {"lazy", "first=late", "sign=smile", "seconds=x", "seconds=-1", "ask@noon",
                             "sing@text", "ask@text+x", "colour=red"})
        row(word, word);
}

void TestLinesimSwitchForms::refusesAnUnknownHabit()
{
    QFETCH(QString, word);
    QString wrong;
    QVERIFY(!parseHabits(QStringLiteral("busy ") + word, wrong));
    QCOMPARE(wrong, word);
}

void TestLinesimSwitchForms::readsSubscribers()
{
    QString wrong;
    const auto parties = parseSubscribers(QStringLiteral("; a comment\n"
                                                         "112233: 112233 |ЗАРЯ\n\n"
                                                         "700100:ЦКС:busy/\n"),
                                          wrong);
    QVERIFY(parties);
    QCOMPARE(parties->size(), 2);
    QCOMPARE(parties->at(0).number, QStringLiteral("112233"));
    QCOMPARE(parties->at(0).answerback, QStringLiteral("112233 |ЗАРЯ"));
    QVERIFY(!parties->at(0).isCentre());
    QVERIFY(parties->at(1).isCentre());
}

void TestLinesimSwitchForms::habitsGoInTurn()
{
    QString wrong;
    auto parties = parseSubscribers(QStringLiteral("1:А:busy/fault/first=none\n2:Б"), wrong);
    QVERIFY(parties);
    Subscriber &first = (*parties)[0];
    QCOMPARE(first.nextHabits().result, QStringLiteral("busy"));
    QCOMPARE(first.nextHabits().result, QStringLiteral("fault"));
    QCOMPARE(int(first.nextHabits().first), int(Habits::None));
    QCOMPARE(int(first.nextHabits().first), int(Habits::None));
    QCOMPARE(first.calls, 4);
    QCOMPARE((*parties)[1].nextHabits().result, QString());
    QCOMPARE(Subscriber().nextHabits().result, QString());
}

void TestLinesimSwitchForms::refusesABadLine_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("fault");
    row("no number", ":А", ":А");
    row("no answerback", "112233", "112233");
    row("unknown habit", "112233:А:/lazy", "lazy");
}

void TestLinesimSwitchForms::refusesABadLine()
{
    QFETCH(QString, line);
    QString wrong;
    QVERIFY(!parseSubscribers(line, wrong));
    QTEST(wrong, "fault");
}

QTEST_GUILESS_MAIN(TestLinesimSwitchForms)
#include "test_linesim_switch_forms.moc"
