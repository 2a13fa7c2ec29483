#include "app/options.h"
#include "app/state.h"
#include "records/file_info.h"
#include "records/new_telegram.h"
#include "records/protocol.h"
#include "tests/support/desk.h"
#include "tests/support/full_disk.h"
#include "tests/support/row.h"

#include <QDir>

namespace
{
const QString Failure = QStringLiteral("412:00:00 Телеграмма не поставлена в очередь, не записан файл out/");

QStringList queue(const Desk &desk)
{
    return desk.names("out").filter("20260731u") + desk.names("out").filter("20260731q");
}

CFileInfo record()
{
    CFileInfo record;
    record.number = "123456";
    record.trys = 3;
    record.sendTime = QDateTime(QDate(2026, 7, 31), QTime(13, 30));
    return record;
}
} // namespace

/// A telegram of this workstation goes into the queue whole, under a number of its own.
class TestNewTelegram : public QObject
{
    Q_OBJECT

private slots:
    void nameHoldsDayLetterAndNextNumber_data();
    void nameHoldsDayLetterAndNextNumber();
    void textIsWrittenInUpperCase();
    void recordStandsBesideTheTelegram();
    void numberIsSavedAtOnce();
    void takenNumberIsPassedOver_data();
    void takenNumberIsPassedOver();
    void thousandTakenNumbersAreRefused();
    void failedWriteLeavesNothingAndUsesNoNumber_data();
    void failedWriteLeavesNothingAndUsesNoNumber();
    void missingDirectoryIsToldOnce();
};

void TestNewTelegram::nameHoldsDayLetterAndNextNumber_data()
{
    QTest::addColumn<QString>("category");
    QTest::addColumn<int>("before");
    QTest::addColumn<QString>("name");
    row("first", "П", 0, "20260731u001");
    row("later", "С", 41, "20260731u042");
    row("no category", "", 7, "20260731u008");
    row("Latin C", "C", 7, "20260731q008");
    row("Cyrillic С", "С", 7, "20260731u008");
    row("after a thousand", "П", 999, "20260731u000");
    row("and on", "П", 1000, "20260731u001");
}

void TestNewTelegram::nameHoldsDayLetterAndNextNumber()
{
    QFETCH(QString, category);
    QFETCH(int, before);
    QFETCH(QString, name);
    const Desk desk;
    State.EditorN = before;
    QCOMPARE(queueTelegram(category, "А"), std::optional<QString>(name));
    QCOMPARE(queue(desk), QStringList{name});
    QCOMPARE(State.EditorN, before + 1);
    QVERIFY(desk.journal().isEmpty());
}

void TestNewTelegram::textIsWrittenInUpperCase()
{
    const Desk desk;
    QVERIFY(queueTelegram("П", "Привет, world ё\r\n"));
    QCOMPARE(desk.read("out/20260731u001"), QByteArray("ПРИВЕТ, WORLD Ё\r\n"));
}

void TestNewTelegram::recordStandsBesideTheTelegram()
{
    const Desk desk;
    const CFileInfo given = record();
    QVERIFY(queueTelegram(QString(), "А", &given));
    QCOMPARE(queue(desk), (QStringList{"20260731u001", "20260731u001.dat"}));
    QCOMPARE(desk.read("out/20260731u001.dat"), QByteArray("123456|S|31.07.2026 13:30|u|3|N|"));
}

void TestNewTelegram::numberIsSavedAtOnce()
{
    const Desk desk;
    QVERIFY(queueTelegram("П", "А"));
    QVERIFY(queueTelegram("П", "Б"));
    State.EditorN = 0;
    State.Load();
    QCOMPARE(State.EditorN, 2);
}

void TestNewTelegram::takenNumberIsPassedOver_data()
{
    QTest::addColumn<QString>("there");
    row("a telegram", "20260731u001");
    row("one that failed", "20260731u001.b099");
    row("a record that is left over", "20260731u001.dat");
    row("one with a time", "20260731u001.260731_120000");
    row("a draft", "20260731u001.velda-00000000");
}

void TestNewTelegram::takenNumberIsPassedOver()
{
    QFETCH(QString, there);
    const Desk desk;
    desk.write("out/" + there, "ЧУЖОЕ");
    QVERIFY(QDir().mkdir(desk.path("out/20260731u002")));
    const CFileInfo given = record();
    QCOMPARE(queueTelegram(QString(), "А", &given), std::optional<QString>("20260731u003"));
    QCOMPARE(desk.read("out/" + there), QByteArray("ЧУЖОЕ"));
    QCOMPARE(State.EditorN, 3);
}

void TestNewTelegram::thousandTakenNumbersAreRefused()
{
    const Desk desk;
    State.EditorN = 5;
    Log.addCacheServiceString("Запуск", ProtocolInfo, false);
    for (int number = 0; number < 1000; ++number)
        desk.write(QStringLiteral("out/20260731u%1").arg(number, 3, 10, QLatin1Char('0')), "ЧУЖОЕ");
    QVERIFY(!queueTelegram("П", "А"));
    QCOMPARE(State.EditorN, 5);
    QCOMPARE(queue(desk).size(), 1000);
    QCOMPARE(desk.journal().filter(Failure).size(), 1);
}

void TestNewTelegram::failedWriteLeavesNothingAndUsesNoNumber_data()
{
    QTest::addColumn<int>("room");
    row("no room at all", 0);
    row("room for the record", 40); // which has 32 bytes
    row("and half of the text", 1000);
}

void TestNewTelegram::failedWriteLeavesNothingAndUsesNoNumber()
{
    QFETCH(int, room);
    const Desk desk;
    State.EditorN = 8;
    const CFileInfo given = record();
    {
        const FullDisk full{qint64(room)};
        QVERIFY(!queueTelegram(QString(), QString(2000, 'A'), &given));
        QVERIFY(!queueTelegram("П", QString(2000, 'A')));
    }
    QCOMPARE(queue(desk), QStringList());
    QCOMPARE(State.EditorN, 8);
    QCOMPARE(desk.journal().filter(Failure + "20260731u009").size(), 2); // one for each
    QCOMPARE(queueTelegram(QString(), "А", &given), std::optional<QString>("20260731u009"));
}

void TestNewTelegram::missingDirectoryIsToldOnce()
{
    const Desk desk;
    Log.addCacheServiceString("Запуск", ProtocolInfo, false);
    Options.pathOut = "nowhere";
    QVERIFY(!queueTelegram("П", "А"));
    QCOMPARE(State.EditorN, 0);
    QCOMPARE(desk.journal().filter("не записан файл nowhere/20260731u001").size(), 1);
}

QTEST_MAIN(TestNewTelegram)
#include "test_new_telegram.moc"
