// The switched-channel network as a program: its options, its commands.

#include "tests/support/row.h"
#include "tools/linesim/network/channel_switch.h"

#include <QTemporaryFile>
#include <QtTest>

class TestLinesimSwitchOptions : public QObject
{
    Q_OBJECT

private slots:
    void readsItsOptions();
    void hasItsDefaults();
    void refusesWhatItDoesNotUnderstand_data();
    void refusesWhatItDoesNotUnderstand();
    void commandsAreUnderstood_data();
    void commandsAreUnderstood();
    void scenarioThatCannotBeReadEndsIt();
};

namespace
{
QStringList arguments(const QStringList &more)
{
    return QStringList{QStringLiteral("switch"), QStringLiteral("--listen"), QStringLiteral("0")} + more;
}
} // namespace

void TestLinesimSwitchOptions::readsItsOptions()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    file.write("112233:112233 |ЗАРЯ:busy\n");
    file.close();
    const auto options = readChannelSwitchOptions(
        arguments({"--subscribers",  file.fileName(), "--subscriber", "700100:ЦКС",    "--terminal-ao",
                   "654321 ЗНАМЯ",   "--stamp",       "<>#dd hh mm",  "--sign",        "df",
                   "--text-signals", "--point",       "АБ-1",         "--centre-type", "3",
                   "--line-first",   "--telegram",    "А\\r\\n",      "--patience",    "7",
                   "--scenario",     "day",           "--store",      "kept"}));
    QVERIFY(options);
    QCOMPARE(options->line.subscribers.size(), 2);
    QCOMPARE(options->line.subscribers[0].number, QStringLiteral("112233"));
    QVERIFY(options->line.subscribers[1].isCentre());
    QCOMPARE(options->terminalAnswerback, QStringLiteral("654321 ЗНАМЯ"));
    QCOMPARE(options->line.stampFormat, QStringLiteral("<>#dd hh mm"));
    QCOMPARE(options->line.sign, QStringLiteral("df"));
    QVERIFY(options->line.textSignals);
    QCOMPARE(options->channelName, QStringLiteral("АБ-1"));
    QCOMPARE(options->line.party.centre.type, 3);
    QVERIFY(options->line.party.centre.lineFirst);
    QCOMPARE(options->line.party.telegram, QStringLiteral("А\r\n"));
    QCOMPARE(options->line.patience, 7);
    QCOMPARE(options->line.party.patience, 7);
    QCOMPARE(options->scenario, QStringLiteral("day"));
    QCOMPARE(options->storeDirectory, QStringLiteral("kept"));
}

void TestLinesimSwitchOptions::hasItsDefaults()
{
    const auto options = readChannelSwitchOptions(arguments({}));
    QVERIFY(options);
    QVERIFY(options->line.subscribers.isEmpty());
    QCOMPARE(options->line.stampFormat, QStringLiteral("<> #hh.mm"));
    QCOMPARE(options->line.sign, QStringLiteral("stamp"));
    QVERIFY(!options->line.textSignals);
    QCOMPARE(options->line.party.centre.type, 0);
    QCOMPARE(options->line.patience, 30);
}

void TestLinesimSwitchOptions::refusesWhatItDoesNotUnderstand_data()
{
    QTest::addColumn<QStringList>("more");
    row("no such option", QStringList{"--smile"});
    row("no such file", QStringList{"--subscribers", "/nonexistent/file"});
    row("bad subscriber", QStringList{"--subscriber", "112233"});
    row("bad habit", QStringList{"--subscriber", "112233:А:lazy"});
    row("bad sign", QStringList{"--sign", "smile"});
    row("bad type", QStringList{"--centre-type", "5"});
    row("type that is no number", QStringList{"--centre-type", "x"});
    row("bad patience", QStringList{"--patience", "-1"});
}

void TestLinesimSwitchOptions::refusesWhatItDoesNotUnderstand()
{
    QFETCH(QStringList, more);
    QVERIFY(!readChannelSwitchOptions(arguments(more)));
}

void TestLinesimSwitchOptions::commandsAreUnderstood_data()
{
    QTest::addColumn<QString>("lines");
    row("call 112233", "");
    row("call 112233 ask@connect+1", "");
    row("call 112233 lazy", "error: no habit lazy");
    row("hang", "hang-up: nothing to end");
    row("ask", "error: no connection");
    row("ao", "error: no connection");
    row("telegram", "error: no connection");
    row("check", "error: no connection");
    row("crypt", "error: no connection");
    row("say ПРИВЕТ", "");
    row("point АБ-123456", "");
    row("windows off", "");
    row("drop", "");
    row("figures", "figures: connections 0");
    row("quit", "figures: connections 0");
    row("dance now", "error: no command dance now");
    row("", "");
}

void TestLinesimSwitchOptions::commandsAreUnderstood()
{
    QFETCH(QString, lines);
    QStringList noted;
    EventLog log([&noted](const QString &line) { noted << line; });
    ChannelSwitch network(*readChannelSwitchOptions(arguments({})), log);
    network.run(QString::fromUtf8(QTest::currentDataTag()));
    QCOMPARE(noted.join(QLatin1Char('\n')), lines);
}

void TestLinesimSwitchOptions::scenarioThatCannotBeReadEndsIt()
{
    QStringList noted;
    EventLog log([&noted](const QString &line) { noted << line; });
    ChannelSwitch network(*readChannelSwitchOptions(arguments({"--scenario", "/nonexistent/day"})), log);
    QVERIFY(!network.start());
    QCOMPARE(noted, QStringList("error: scenario /nonexistent/day"));
}

QTEST_GUILESS_MAIN(TestLinesimSwitchOptions)
#include "test_linesim_switch_options.moc"
