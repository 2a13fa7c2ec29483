// What the command line of an adapter before a far end is taken for.

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
    const auto read =
        readAdapterOptions({"adapter", "--port", "/p", "--serial", "7", "--baud", "50", "--room", "32",
                            "--status", "200", "--answer", "3000", "--silent", "peer", "--send", "d"});
    QVERIFY(read);
    QCOMPARE(read->line.port, QStringLiteral("/p"));
    QCOMPARE(read->line.serial, QStringLiteral("7"));
    QCOMPARE(read->line.adapter.baud, 50);
    QCOMPARE(read->line.adapter.roomCodes, 32);
    QCOMPARE(read->line.adapter.statusMs, 200);
    QCOMPARE(read->line.adapter.answerMs, 3000);
    QVERIFY(read->line.adapter.silent);
    QCOMPARE(read->farEnd, QStringList({"peer", "--send", "d"}));
    const auto plain = readAdapterOptions({"adapter", "centre"});
    QCOMPARE(plain->line.serial, QStringLiteral("10000001"));
    QCOMPARE(plain->line.adapter.baud, 200);
    QCOMPARE(plain->line.adapter.version, 20231111);
}

void TestLinesimAdapterOptions::firmwareIsRead_data()
{
    QTest::addColumn<int>("version");
    QTest::newRow("new") << 20231111;
    QTest::newRow("old") << 20231110;
    QTest::newRow("none") << 0;
    QTest::newRow("240229") << 20240229;
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
    QTest::newRow("peer") << QStringList{"peer"} << 0x67;
    QTest::newRow("centre at 50 baud") << QStringList{"--baud", "50", "centre"} << 0x65;
    QTest::newRow("100 baud") << QStringList{"--baud", "100", "peer"} << 0x66;
    QTest::newRow("switch") << QStringList{"--baud", "50", "switch"} << 0x69;
    QTest::newRow("told") << QStringList{"--mode", "50", "peer"} << 0x65;
    QTest::newRow("none") << QStringList{"--mode", "none", "peer"} << 0x64;
    QTest::newRow("switched") << QStringList{"--mode", "switched", "peer"} << 0x69;
    QTest::newRow("any") << QStringList{"--mode", "any", "switch"} << -1;
}

void TestLinesimAdapterOptions::modeFollowsTheFarEnd()
{
    QFETCH(QStringList, arguments);
    QTEST(readAdapterOptions(QStringList("adapter") + arguments)->line.adapter.expectedMode, "mode");
}

void TestLinesimAdapterOptions::optionsThatAreNotUnderstood_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("no far end") << QStringList{};
    QTest::newRow("unknown far end") << QStringList{"perforator"};
    QTest::newRow("adapter behind an adapter") << QStringList{"adapter", "peer"};
    QTest::newRow("baud") << QStringList{"--baud", "300", "peer"};
    QTest::newRow("room") << QStringList{"--room", "3", "peer"};
    QTest::newRow("status") << QStringList{"--status", "0", "peer"};
    QTest::newRow("firmware") << QStringList{"--firmware", "latest", "peer"};
    QTest::newRow("firmware of no month") << QStringList{"--firmware", "241301", "peer"};
    QTest::newRow("mode") << QStringList{"--mode", "75", "peer"};
    QTest::newRow("listen") << QStringList{"peer", "--listen", "0"};
    QTest::newRow("connect") << QStringList{"centre", "--connect", "127.0.0.1:1"};
    QTest::newRow("windows") << QStringList{"switch", "--no-windows"};
    QTest::newRow("option of the adapter behind the far end") << QStringList{"peer", "--baud", "50"};
}

void TestLinesimAdapterOptions::optionsThatAreNotUnderstood()
{
    QFETCH(QStringList, arguments);
    QCOMPARE(runSubcommand(QStringList{"linesim", "adapter"} + arguments), 2);
}

QTEST_GUILESS_MAIN(TestLinesimAdapterOptions)
#include "test_linesim_adapter_options.moc"
