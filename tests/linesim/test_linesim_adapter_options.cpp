// What the command line of an adapter before a far end is taken for.

#include "tests/support/row.h"
#include "tools/linesim/adapter/adapter_options.h"
#include "tools/linesim/subcommands.h"

#include <QtTest>

class TestLinesimAdapterOptions : public QObject
{
    Q_OBJECT

private slots:
    void optionsAreRead();
    void firmwareIsRead_data();
    void firmwareIsRead();
    void modeFollowsTheFarEnd_data();
    void modeFollowsTheFarEnd();
    void optionsThatAreNotUnderstood_data();
    void optionsThatAreNotUnderstood();
};

void TestLinesimAdapterOptions::optionsAreRead()
{
    const auto read = readAdapterOptions({"adapter", "--port", "/p", "--serial", "7", "--baud", "50",
                                          "--room", "32", "--status", "200", "--answer", "3000", "--word",
                                          "70", "--silent", "peer", "--send", "d"});
    QVERIFY(read);
    QCOMPARE(read->line.port, QStringLiteral("/p"));
    QCOMPARE(read->line.serial, QStringLiteral("7"));
    QCOMPARE(read->line.adapter.baud, 50);
    QCOMPARE(read->line.adapter.roomCodes, 32);
    QCOMPARE(read->line.adapter.statusMs, 200);
    QCOMPARE(read->line.adapter.answerMs, 3000);
    QCOMPARE(read->line.adapter.wordMs, 70);
    QVERIFY(read->line.adapter.silent);
    QCOMPARE(read->farEnd, QStringList({"peer", "--send", "d"}));
    const auto plain = readAdapterOptions({"adapter", "centre"});
    QCOMPARE(plain->line.serial, QStringLiteral("10000001"));
    QCOMPARE(plain->line.adapter.baud, 200);
    QCOMPARE(plain->line.adapter.wordMs, 500);
    QCOMPARE(plain->line.adapter.version, 20231111);
}

void TestLinesimAdapterOptions::firmwareIsRead_data()
{
    QTest::addColumn<int>("version");
    row("new", 20231111);
    row("old", 20231110);
    row("none", 0);
    row("240229", 20240229);
}

void TestLinesimAdapterOptions::firmwareIsRead()
{
    const auto read = readAdapterOptions({"adapter", "--firmware", QTest::currentDataTag(), "peer"});
    QTEST(read->line.adapter.version, "version");
}

void TestLinesimAdapterOptions::modeFollowsTheFarEnd_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("mode");
    row("peer", QStringList{"peer"}, 0x67);
    row("centre at 50 baud", QStringList{"--baud", "50", "centre"}, 0x65);
    row("100 baud", QStringList{"--baud", "100", "peer"}, 0x66);
    row("switch", QStringList{"--baud", "50", "switch"}, 0x69);
    row("told", QStringList{"--mode", "50", "peer"}, 0x65);
    row("none", QStringList{"--mode", "none", "peer"}, 0x64);
    row("switched", QStringList{"--mode", "switched", "peer"}, 0x69);
    row("any", QStringList{"--mode", "any", "switch"}, -1);
}

void TestLinesimAdapterOptions::modeFollowsTheFarEnd()
{
    QFETCH(QStringList, arguments);
    QTEST(readAdapterOptions(QStringList("adapter") + arguments)->line.adapter.expectedMode, "mode");
}

void TestLinesimAdapterOptions::optionsThatAreNotUnderstood_data()
{
    QTest::addColumn<QStringList>("arguments");
    row("no far end", QStringList{});
    row("unknown far end", QStringList{"perforator"});
    row("adapter behind an adapter", QStringList{"adapter", "peer"});
    row("baud", QStringList{"--baud", "300", "peer"});
    row("room", QStringList{"--room", "3", "peer"});
    row("status", QStringList{"--status", "0", "peer"});
    row("word", QStringList{"--word", "long", "peer"});
    row("firmware", QStringList{"--firmware", "latest", "peer"});
    row("firmware of no month", QStringList{"--firmware", "241301", "peer"});
    row("mode", QStringList{"--mode", "75", "peer"});
    row("listen", QStringList{"peer", "--listen", "0"});
    row("connect", QStringList{"centre", "--connect", "127.0.0.1:1"});
    row("windows", QStringList{"switch", "--no-windows"});
    row("option of the adapter behind the far end", QStringList{"peer", "--baud", "50"});
}

void TestLinesimAdapterOptions::optionsThatAreNotUnderstood()
{
    QFETCH(QStringList, arguments);
    QCOMPARE(runSubcommand(QStringList{"linesim", "adapter"} + arguments), 2);
}

QTEST_GUILESS_MAIN(TestLinesimAdapterOptions)
#include "test_linesim_adapter_options.moc"
