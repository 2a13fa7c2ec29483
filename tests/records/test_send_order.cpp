#include "app/options.h"
#include "app/state.h"
#include "records/file_info.h"
#include "records/new_telegram.h"
#include "records/protocol.h"
#include "tests/records/queue_desk.h"
#include "tests/support/full_disk.h"
#include "tests/support/row.h"

#include <QDir>

namespace
{
const QDateTime Later(QDate(2026, 8, 1), QTime(6, 5, 9));

SendOrder toNumbers(const QStringList &numbers)
{
    SendOrder order;
    order.category = "П";
    order.numbers = numbers;
    order.sendTime = Later;
    return order;
}

QStringList outgoing(const Desk &desk)
{
    return desk.names("out").filter("20260731");
}

/// A line that has ended, behind which the journal takes the next one at once.
void endJournalLine()
{
    Log.addCacheServiceString("Запуск", ProtocolInfo, false);
}

int editorNumberOnDisk()
{
    const int known = State.EditorN;
    State.EditorN = -1;
    State.Load();
    return std::exchange(State.EditorN, known);
}
} // namespace

/// What the editor sends goes into the queue as its line procedure looks for it there.
class TestSendOrder : public QObject
{
    Q_OBJECT

private slots:
    void centreGetsAFileWithoutRecord();
    void letterTellsCategoryAndGuarantee_data();
    void letterTellsCategoryAndGuarantee();
    void subscriberGetsAFileWithRecord_data();
    void subscriberGetsAFileWithRecord();
    void eachNumberGetsAFileOfItsOwn();
    void numberThatRepeatsGetsTwo();
    void directLinkGetsTheTimeBehindTheName();
    void queueShowsWhatWasQueued_data();
    void queueShowsWhatWasQueued();
    void sentTwiceWithinOneSecondIsTwoTelegrams_data();
    void sentTwiceWithinOneSecondIsTwoTelegrams();
    void thousandthTelegramOfADayGetsZeros_data();
    void thousandthTelegramOfADayGetsZeros();
    void takenNameIsPassedOverNotWrittenOver_data();
    void takenNameIsPassedOverNotWrittenOver();
    void fullDiskLeavesNothing_data();
    void fullDiskLeavesNothing();
    void missingDirectoryLeavesNothing_data();
    void missingDirectoryLeavesNothing();
    void numbersWithoutATelegramAreTold();
};

namespace
{
void procedures()
{
    QTest::addColumn<int>("procedure");
    row("centre", int(CKS));
    row("switched", int(SKK));
    row("direct", int(Direct));
}
} // namespace

void TestSendOrder::centreGetsAFileWithoutRecord()
{
    const Queue desk(CKS);
    State.EditorN = 41;
    const Queued queued = queueTelegram(toNumbers({}), "Привет\r\n");
    QCOMPARE(queued.names, QStringList{"20260731u042"});
    QCOMPARE(queued.unsent, QStringList());
    QCOMPARE(outgoing(desk), QStringList{"20260731u042"});
    QCOMPARE(desk.read("out/20260731u042"), QByteArray("ПРИВЕТ\r\n"));
    QCOMPARE(State.EditorN, 42);
    QCOMPARE(editorNumberOnDisk(), 42);
    QCOMPARE(State.scanCountdown, 2);
    QVERIFY(desk.journal().isEmpty());
}

void TestSendOrder::letterTellsCategoryAndGuarantee_data()
{
    QTest::addColumn<int>("procedure");
    QTest::addColumn<QString>("category");
    QTest::addColumn<bool>("guaranteed");
    QTest::addColumn<QString>("name");
    const int centre = CKS, switched = SKK, direct = Direct;
    row("category П", centre, "П", false, "20260731u001");
    row("none", centre, "", false, "20260731u001");
    row("Cyrillic С", centre, "С", false, "20260731u001");
    row("Latin C", centre, "C", false, "20260731q001");
    row("Latin C, switched", switched, "C", false, "20260731q001");
    row("guaranteed, switched", switched, "П", true, "20260731g001");
    row("direct", direct, "П", false, "20260731u001.260801_060509");
    row("guaranteed, direct", direct, "П", true, "20260731g001.260801_060509");
    row("guaranteed Latin C", direct, "C", true, "20260731g001.260801_060509");
}

void TestSendOrder::letterTellsCategoryAndGuarantee()
{
    QFETCH(int, procedure);
    QFETCH(QString, category);
    QFETCH(bool, guaranteed);
    QFETCH(QString, name);
    const Queue desk(procedure);
    SendOrder order = toNumbers({"123456"});
    order.category = category;
    order.guaranteed = guaranteed;
    QCOMPARE(queueTelegram(order, "А").names, QStringList{name});
    QCOMPARE(desk.read("out/" + name), QByteArray("А"));
}

void TestSendOrder::subscriberGetsAFileWithRecord_data()
{
    QTest::addColumn<bool>("toCKS");
    QTest::addColumn<QByteArray>("record");
    row("subscriber", false, QByteArray("123456|S|01.08.2026 06:05|u|5|N|"));
    row("through the centre", true, QByteArray("123456|C|01.08.2026 06:05|u|5|N|"));
}

void TestSendOrder::subscriberGetsAFileWithRecord()
{
    QFETCH(bool, toCKS);
    const Queue desk(SKK);
    Options.sendTrys = 5;
    SendOrder order = toNumbers({"123456"});
    order.toCKS = toCKS;
    const Queued queued = queueTelegram(order, "зцзц а");
    QCOMPARE(queued.names, QStringList{"20260731u001"});
    QCOMPARE(outgoing(desk), (QStringList{"20260731u001", "20260731u001.dat"}));
    QCOMPARE(desk.read("out/20260731u001"), QByteArray("ЗЦЗЦ А"));
    QTEST(desk.read("out/20260731u001.dat"), "record");
    QCOMPARE(State.EditorN, 1);
    QCOMPARE(State.scanCountdown, 2);
}

void TestSendOrder::eachNumberGetsAFileOfItsOwn()
{
    const Queue desk(SKK);
    const Queued queued = queueTelegram(toNumbers({"222222", "111111", "333333"}), "а");
    QCOMPARE(queued.names, (QStringList{"20260731u001", "20260731u002", "20260731u003"}));
    QCOMPARE(queued.unsent, QStringList());
    const char *const numbers[] = {"222222", "111111", "333333"};
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(desk.read("out/" + queued.names.at(i)), QByteArray("А"));
        QCOMPARE(desk.read("out/" + queued.names.at(i) + ".dat"),
                 QByteArray(numbers[i]) + "|S|01.08.2026 06:05|u|3|N|");
    }
    QCOMPARE(State.EditorN, 4); // once more at the end
    QCOMPARE(editorNumberOnDisk(), 4);
    QCOMPARE(queueTelegram(toNumbers({"444444"}), "б").names, QStringList{"20260731u005"});
}

void TestSendOrder::numberThatRepeatsGetsTwo()
{
    const Queue desk(SKK);
    const Queued queued = queueTelegram(toNumbers({"111111", "222222", "111111"}), "а");
    QCOMPARE(queued.names.size(), 3);
    QCOMPARE(desk.read("out/20260731u001.dat").left(6), QByteArray("111111"));
    QCOMPARE(desk.read("out/20260731u002.dat").left(6), QByteArray("222222"));
    QCOMPARE(desk.read("out/20260731u003.dat").left(6), QByteArray("111111"));
}

void TestSendOrder::directLinkGetsTheTimeBehindTheName()
{
    const Queue desk(Direct);
    const Queued queued = queueTelegram(toNumbers({}), "а");
    QCOMPARE(queued.names, QStringList{"20260731u001.260801_060509"});
    QCOMPARE(outgoing(desk), queued.names); // no record
    QCOMPARE(State.EditorN, 1);
    QCOMPARE(editorNumberOnDisk(), 1);
    QCOMPARE(State.scanCountdown, 2);
}

void TestSendOrder::queueShowsWhatWasQueued_data()
{
    procedures();
}

void TestSendOrder::queueShowsWhatWasQueued()
{
    QFETCH(int, procedure);
    Queue desk(procedure);
    const Queued queued = queueTelegram(toNumbers({"123456", "234567"}), "а");
    desk.scan();
    QCOMPARE(names(desk.good), queued.names);
    QCOMPARE(names(desk.bad), QStringList());
}

void TestSendOrder::sentTwiceWithinOneSecondIsTwoTelegrams_data()
{
    procedures();
}

void TestSendOrder::sentTwiceWithinOneSecondIsTwoTelegrams()
{
    QFETCH(int, procedure);
    const Queue desk(procedure);
    const QString one = queueTelegram(toNumbers({"123456"}), "а").names.value(0);
    const QString other = queueTelegram(toNumbers({"123456"}), "б").names.value(0);
    QVERIFY(one != other);
    QCOMPARE(desk.read("out/" + one), QByteArray("А"));
    QCOMPARE(desk.read("out/" + other), QByteArray("Б"));
    QCOMPARE(State.EditorN, 2);
}

void TestSendOrder::thousandthTelegramOfADayGetsZeros_data()
{
    procedures();
}

void TestSendOrder::thousandthTelegramOfADayGetsZeros()
{
    QFETCH(int, procedure);
    const Queue desk(procedure);
    State.EditorN = 998;
    QStringList found;
    for (int telegram = 0; telegram < 3; ++telegram)
        found << queueTelegram(toNumbers({"123456"}), "а").names.value(0).left(12);
    QCOMPARE(found, (QStringList{"20260731u999", "20260731u000", "20260731u001"}));
    QCOMPARE(State.EditorN, 1001);
}

void TestSendOrder::takenNameIsPassedOverNotWrittenOver_data()
{
    QTest::addColumn<int>("procedure");
    QTest::addColumn<QString>("there");
    QTest::addColumn<QString>("name");
    const int centre = CKS, switched = SKK, direct = Direct;
    row("centre", centre, "20260731u000", "20260731u001");
    row("centre, failed", centre, "20260731u000.b099", "20260731u001");
    row("switched", switched, "20260731u000", "20260731u001");
    row("switched, a record alone", switched, "20260731u000.dat", "20260731u001");
    row("direct, the same time", direct, "20260731u000.260801_060509", "20260731u001.260801_060509");
    row("direct, another time", direct, "20260731u000.260801_070000", "20260731u001.260801_060509");
}

void TestSendOrder::takenNameIsPassedOverNotWrittenOver()
{
    QFETCH(int, procedure);
    QFETCH(QString, there);
    QFETCH(QString, name);
    const Queue desk(procedure);
    State.EditorN = 999;
    desk.write("out/" + there, "ЧУЖОЕ");
    QCOMPARE(queueTelegram(toNumbers({"123456"}), "а").names, QStringList{name});
    QCOMPARE(desk.read("out/" + there), QByteArray("ЧУЖОЕ"));
    QCOMPARE(State.EditorN, 1001);
}

void TestSendOrder::fullDiskLeavesNothing_data()
{
    QTest::addColumn<int>("procedure");
    QTest::addColumn<int>("room");
    for (const int procedure : {int(CKS), int(SKK), int(Direct)})
        for (const int room : {0, 40, 1000}) // none; for a record of 32 bytes; for half of the text
            QTest::addRow("%d with room for %d", procedure, room) << procedure << room;
}

void TestSendOrder::fullDiskLeavesNothing()
{
    QFETCH(int, procedure);
    QFETCH(int, room);
    const Queue desk(procedure);
    State.EditorN = 8;
    State.scanCountdown = 30;
    endJournalLine();
    const SendOrder order = toNumbers({"123456", "234567"});
    {
        const FullDisk full{qint64(room)};
        const Queued queued = queueTelegram(order, QString(2000, 'A'));
        QCOMPARE(queued.names, QStringList());
        QCOMPARE(queued.unsent, procedure == SKK ? order.numbers : QStringList());
    }
    QCOMPARE(outgoing(desk), QStringList());
    QCOMPARE(State.EditorN, 8);
    QCOMPARE(State.scanCountdown, 30);
    QCOMPARE(desk.journal().filter("не записан файл out/20260731u009").size(), 1);
    QCOMPARE(queueTelegram(order, "А").names.value(0).left(12), QString("20260731u009"));
}

void TestSendOrder::missingDirectoryLeavesNothing_data()
{
    procedures();
}

void TestSendOrder::missingDirectoryLeavesNothing()
{
    QFETCH(int, procedure);
    const Queue desk(procedure);
    Options.pathOut = "nowhere";
    endJournalLine();
    QCOMPARE(queueTelegram(toNumbers({"123456"}), "а").names, QStringList());
    QCOMPARE(State.EditorN, 0);
    QCOMPARE(desk.journal().filter("не записан файл nowhere/20260731u001").size(), 1);
}

// All names of the day but one are taken: the first number gets it, the others get none.
void TestSendOrder::numbersWithoutATelegramAreTold()
{
    const Queue desk(SKK);
    for (int number = 0; number < 1000; ++number)
        if (number != 7)
            desk.write(QStringLiteral("out/20260731u%1").arg(number, 3, 10, QLatin1Char('0')), "ЧУЖОЕ");
    endJournalLine();
    const Queued queued = queueTelegram(toNumbers({"111111", "222222", "333333"}), "а");
    QCOMPARE(queued.names, QStringList{"20260731u007"});
    QCOMPARE(queued.unsent, (QStringList{"222222", "333333"}));
    QCOMPARE(desk.read("out/20260731u007"), QByteArray("А"));
    const QStringList told = desk.journal().filter("не поставлена");
    QCOMPARE(told.size(), 1);
    QVERIFY(told.constFirst().endsWith(", номера: 222222,333333"));
    QCOMPARE(State.scanCountdown, 2);
}

QTEST_MAIN(TestSendOrder)
#include "test_send_order.moc"
