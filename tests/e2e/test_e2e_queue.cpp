#include "tests/e2e/far_end.h"
#include "tests/e2e/process_memory.h"
#include "tests/e2e/station.h"

#include <QtTest>

// Files of other programs in the outgoing directory, and disks that fail.
class TestE2eQueue : public QObject
{
    Q_OBJECT

private slots:
    void vanishedFileHoldsUpTheQueueUntilTheNextScan();
    void fileOfOtherEncodingGoesWithoutItsLetters();
    void emptyFileIsSent();
    void fileOfFiveMegabytesLeavesTheProgramReady();
    void telegramThatCannotBeStoredIsReported();
    void sentFileThatCannotBeMovedStopsTheQueue();
};

namespace
{
const QString first = QStringLiteral("20200101u001.200101_000000");
const QString second = QStringLiteral("20200101u002.200101_000001");
const QStringList quick = {QStringLiteral("--window-pause"), QStringLiteral("0")};
} // namespace

void TestE2eQueue::vanishedFileHoldsUpTheQueueUntilTheNextScan()
{
    FarEnd farEnd(quick);
    Station station;
    station.callTo(farEnd.port);
    station.set(QStringLiteral("PATH/scanDirsTimeout"), QStringLiteral("20"));
    station.fakeTime(QStringLiteral("@2026-07-31 12:00:00 x2"));
    const QString text = telegram(QStringLiteral("ВТОРАЯ\r\n"));
    station.write(QStringLiteral("out/20260731u001.260731_120010"),
                  telegram(QStringLiteral("ПЕРВАЯ\r\n")).toUtf8());
    station.write(QStringLiteral("out/20260731u002.260731_120011"), text.toUtf8());
    station.start();
    // The first scan, three seconds after the start, finds both.
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral(": Соединено ")), PatienceMs);
    QTest::qWait(1500);
    QVERIFY(QFile::remove(station.path(QStringLiteral("out/20260731u001.260731_120010"))));
    QTRY_COMPARE_WITH_TIMEOUT(farEnd.telegrams(), QStringList(text), 40000);
    QVERIFY(station.logged(QStringLiteral(" Отправка файла: 20260731u001.260731_120010")));
    QVERIFY(station.logged(QStringLiteral(" Невозможно прочитать файл")));
    QVERIFY(station.end());
}

void TestE2eQueue::fileOfOtherEncodingGoesWithoutItsLetters()
{
    FarEnd farEnd(quick);
    Station station;
    station.callTo(farEnd.port);
    // "ПРИВЕТ" as CP1251 is no UTF-8.
    station.write(QStringLiteral("out/") + first, "ZCZC 1\r\n\xCF\xD0\xC8\xC2\xC5\xD2=\r\nNNNN  ");
    station.write(QStringLiteral("out/") + second, telegram(QStringLiteral("ВТОРАЯ\r\n")).toUtf8());
    station.start();
    QTRY_COMPARE_WITH_TIMEOUT(farEnd.telegrams().size(), 2, 40000);
    QCOMPARE(farEnd.telegrams().first(), QStringLiteral("ZCZC 1\r\n=\r\nNNNN  "));
    QTRY_COMPARE_WITH_TIMEOUT(station.names(QStringLiteral("out"), QStringLiteral("*u*")), QStringList(),
                              10000);
    QVERIFY(station.end());
}

void TestE2eQueue::emptyFileIsSent()
{
    FarEnd farEnd(quick);
    Station station;
    station.callTo(farEnd.port);
    const QString text = telegram(QStringLiteral("ВТОРАЯ\r\n"));
    station.write(QStringLiteral("out/") + first, QByteArray());
    station.write(QStringLiteral("out/") + second, text.toUtf8());
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral(" Отправка файла: ") + first), PatienceMs);
    QTRY_COMPARE_WITH_TIMEOUT(farEnd.telegrams(), QStringList(text), 40000);
    QTRY_COMPARE_WITH_TIMEOUT(station.names(QStringLiteral("out"), QStringLiteral("*u*")), QStringList(),
                              10000);
    QVERIFY(station.end());
}

// It would take days at the speed of a line; meanwhile telegrams come in and the program can be left.
void TestE2eQueue::fileOfFiveMegabytesLeavesTheProgramReady()
{
    FarEnd farEnd(quick);
    Station station;
    station.callTo(farEnd.port);
    const QByteArray big = telegram(QStringLiteral("БОЛЬШАЯ"), 2900000).toUtf8();
    QVERIFY(big.size() > 5000000);
    station.write(QStringLiteral("out/") + first, big);
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(farEnd.text().contains(QStringLiteral("СТРОКА 0003")), 40000);
    const QString in = telegram(QStringLiteral("МЕЖДУ ТЕМ\r\n"));
    farEnd.send(in);
    QTRY_COMPARE_WITH_TIMEOUT(station.received(), QStringList(in), PatienceMs);
    if (!isSanitized())
        QVERIFY(highestResidentKilobytes(station.process.processId()) < 150000);
    QVERIFY(station.end());
    QCOMPARE(station.names(QStringLiteral("out"), QStringLiteral("*u*")), QStringList(first));
    QCOMPARE(station.read(QStringLiteral("out/") + first), big);
    QCOMPARE(farEnd.violations(), QStringList());
}

// A file stands where the directory of the incoming telegrams should be.
void TestE2eQueue::telegramThatCannotBeStoredIsReported()
{
    FarEnd farEnd(quick);
    Station station;
    station.callTo(farEnd.port);
    station.write(QStringLiteral("inp"), "x");
    // The journal's line waits for the end of the text's own.
    farEnd.send(telegram(QStringLiteral("НЕКУДА ПОЛОЖИТЬ\r\n")) + QStringLiteral("\r\n"));
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral(" Не получилось сохранить файл:inp/")), 30000);
    QVERIFY(station.logged(QStringLiteral("НЕКУДА ПОЛОЖИТЬ<>"))); // the journal has it all the same
    // What stands in the place of the directory keeps the books out.
    QVERIFY(station.leave());
    QCOMPARE(station.state(QStringLiteral("PK_in")), QStringLiteral("0"));
}

// A file stands where the day's directory should be: the queue must not go on with a file that stays in it.
void TestE2eQueue::sentFileThatCannotBeMovedStopsTheQueue()
{
    FarEnd farEnd(quick);
    Station station;
    station.callTo(farEnd.port);
    station.fakeTime(QStringLiteral("@2026-07-31 12:00:00"));
    station.write(QStringLiteral("out/20260731"), "x");
    station.write(QStringLiteral("out/") + first, telegram(QStringLiteral("ПЕРВАЯ\r\n")).toUtf8());
    station.write(QStringLiteral("out/") + second, telegram(QStringLiteral("ВТОРАЯ\r\n")).toUtf8());
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral(" Ошибка переименования")), 30000);
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral(" Установлен РУЧНОЙ режим")), PatienceMs);
    QTest::qWait(4000);
    QCOMPARE(farEnd.telegrams().size(), 1);
    const QStringList both = {first, second};
    QCOMPARE(station.names(QStringLiteral("out"), QStringLiteral("*u*")), both);
    // The books miss the file among the sent ones.
    QVERIFY(station.leave());
}

QTEST_GUILESS_MAIN(TestE2eQueue)
#include "test_e2e_queue.moc"
