#include "app/clock.h"
#include "tests/records/queue_desk.h"
#include "tests/support/odd_names.h"
#include "tests/support/row.h"

#include <QDir>
#include <QFile>
#include <QtTest>

namespace
{
void proceduresWithRecords()
{
    QTest::addColumn<int>("mode");
    row("CKS", 0);
    row("SKK", 1);
}
} // namespace

/// The scan of the outgoing directory.
class TestSendQueue : public QObject
{
    Q_OBJECT

private slots:
    void masksAreListedInTheirOrder_data() { proceduresWithRecords(); }
    void masksAreListedInTheirOrder();
    void namesThatMatchNoMaskAreNotListed_data();
    void namesThatMatchNoMaskAreNotListed();
    void fileWithLetterQIsNeverListed_data();
    void fileWithLetterQIsNeverListed();
    void directoriesAreNotListed();
    void fileWithoutSideCarIsSendableNow();
    void sideCarIsRead();
    void fileSetAsideGoesToTheFailedListWhateverItsSideCarSays_data();
    void fileSetAsideGoesToTheFailedListWhateverItsSideCarSays();
    void queueNameThatHoldsTheMarkGoesToTheFailedList();
    void spentFileGoesToTheFailedListInSKK();
    void spentFileStaysInTheQueueInCKS();
    void badFileStaysInTheQueue();

    void rowsGrowAndShrinkWithTheDirectory();
    void rowTakesOnTheNewRecord();
    void fileThatChangesItsClassChangesItsList();
    void goodListIsSortedAndTheFailedIsNot();
    void scanGivesTheCountOfFiles();
    void missingDirectoryEmptiesBothLists();
    void foreignNamesAndRecordsAreListed();
    void fileThatVanishesBeforeItsRecordIsReadIsListedUntilTheNextScan();
    void otherOutgoingDirectoryIsFollowed();
};

void TestSendQueue::masksAreListedInTheirOrder()
{
    QFETCH(int, mode);
    Queue queue(mode, {"20260731u002", "20260731u001", text("20260731с002"), text("20260730с009"),
                       "20260730u001.b1"});
    const SendQueueScan scan = scanSendQueue();
    QCOMPARE(names(scan.good),
             QStringList({text("20260730с009"), text("20260731с002"), "20260731u001", "20260731u002"}));
    QCOMPARE(numbers(scan.good), QStringList({"000", "001", "002", "003"}));
    QCOMPARE(names(scan.bad), QStringList{"20260730u001.b1"});
    QCOMPARE(numbers(scan.bad), QStringList{"004"});
}

void TestSendQueue::namesThatMatchNoMaskAreNotListed_data()
{
    QTest::addColumn<QString>("name");
    row("one character short", "20260731u01");
    row("one character more", "20260731u0011");
    row("guaranteed transfer", "20260731g001");
    row("Latin c", "20260731c001");
    row("with a time", "20260731u001.260731_120000");
    row("side-car", "20260731u001.dat");
    row("side-car of no name", ".dat");
    row("mark too early", "20260731u01.b1");
}

void TestSendQueue::namesThatMatchNoMaskAreNotListed()
{
    QFETCH(QString, name);
    for (const int mode : {0, 1}) {
        Queue queue(mode, {name});
        QCOMPARE(queue.scan(), 0);
    }
}

void TestSendQueue::fileWithLetterQIsNeverListed_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("name");
    row("CKS", 0, "20260731q001");
    row("SKK", 1, "20260731q001");
    row("direct", 2, "20260731q001.260731_120000");
}

void TestSendQueue::fileWithLetterQIsNeverListed()
{
    QFETCH(int, mode);
    QFETCH(QString, name);
    Queue queue(mode, {name});
    QCOMPARE(queue.scan(), 0);
    QVERIFY(QFile::exists("out/" + name));
}

void TestSendQueue::directoriesAreNotListed()
{
    Queue queue(0);
    QVERIFY(QDir().mkdir("out/20260731u001"));
    QVERIFY(QDir().mkdir("out/20260731u001.b1"));
    QCOMPARE(queue.scan(), 0);
}

void TestSendQueue::fileWithoutSideCarIsSendableNow()
{
    Queue queue(1, {"20260731u001"});
    QCOMPARE(queue.scan(), 1);
    const CTableViewModelItem_Send &row = queue.good.at(0);
    QCOMPARE(row.number, QString());
    QCOMPARE(row.toCKS, true);
    QCOMPARE(row.trys, 1);
    QCOMPARE(row.sendTime, Time.dateTime);
    QCOMPARE(row.bad, false);
    QCOMPARE(row.checked, false);
}

void TestSendQueue::sideCarIsRead()
{
    Queue queue(1, {"20260731u001"});
    queue.write("out/20260731u001.dat", "1234567|S|01.08.2026 09:05|u|3|N|НЕТ ОТВЕТА");
    QCOMPARE(queue.scan(), 1);
    const CTableViewModelItem_Send &row = queue.good.at(0);
    QCOMPARE(row.number, QString("1234567"));
    QCOMPARE(row.toCKS, false);
    QCOMPARE(row.trys, 3);
    QCOMPARE(row.sendTime, QDateTime(QDate(2026, 8, 1), QTime(9, 5)));
    QCOMPARE(row.resultText, text("НЕТ ОТВЕТА"));
}

void TestSendQueue::fileSetAsideGoesToTheFailedListWhateverItsSideCarSays_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("name");
    for (const int mode : {0, 1})
        for (const char *name :
             {"20260731u001.b1", "20260731u001.b012", "20260731u001.brk", "20260731u001.b"})
            QTest::addRow("processMode %d, %s", mode, name) << mode << QString(name);
}

void TestSendQueue::fileSetAsideGoesToTheFailedListWhateverItsSideCarSays()
{
    QFETCH(int, mode);
    QFETCH(QString, name);
    Queue queue(mode, {name});
    CFileInfo info;
    info.trys = 5;
    QVERIFY(info.Save("out/" + name));
    QVERIFY(QFile::rename("out/" + name + ".dat", "out/keep"));
    queue.scan();
    QCOMPARE(names(queue.bad), QStringList{name});
    QCOMPARE(queue.bad.at(0).bad, true);
    QCOMPARE(queue.good.rowCount(), 0);
    QVERIFY(QFile::rename("out/keep", "out/" + name + ".dat"));
    queue.scan();
    QCOMPARE(queue.bad.at(0).fileName, name);
    QCOMPARE(queue.bad.at(0).trys, 5);
    QCOMPARE(queue.bad.at(0).bad, true);
    QCOMPARE(queue.good.rowCount(), 0);
}

void TestSendQueue::queueNameThatHoldsTheMarkGoesToTheFailedList()
{
    Queue queue(0, {"2026.b31u001", ".b260731u001"});
    queue.scan();
    QCOMPARE(names(queue.bad), QStringList{"2026.b31u001"});
    QCOMPARE(queue.good.rowCount(), 0); // a name that begins with a dot is hidden here
}

void TestSendQueue::spentFileGoesToTheFailedListInSKK()
{
    Queue queue(1, {"20260731u001"});
    queue.write("out/20260731u001.dat", "1|S|31.07.2026 09:05|u|0|N|");
    queue.scan();
    QCOMPARE(names(queue.bad), QStringList{"20260731u001"});
    QCOMPARE(queue.bad.at(0).bad, false); // as the side-car says
    QCOMPARE(queue.good.rowCount(), 0);
    queue.write("out/20260731u001.dat", "1|S|31.07.2026 09:05|u|1|N|");
    queue.scan();
    QCOMPARE(names(queue.good), QStringList{"20260731u001"});
    QCOMPARE(queue.bad.rowCount(), 0);
}

void TestSendQueue::spentFileStaysInTheQueueInCKS()
{
    Queue queue(0, {"20260731u001"});
    queue.write("out/20260731u001.dat", "|C|31.07.2026 09:05|u|0|N|");
    queue.scan();
    QCOMPARE(names(queue.good), QStringList{"20260731u001"});
    QCOMPARE(queue.bad.rowCount(), 0);
}

void TestSendQueue::badFileStaysInTheQueue()
{
    for (const int mode : {0, 1}) {
        Queue queue(mode, {"20260731u001"});
        queue.write("out/20260731u001.dat", "|C|31.07.2026 09:05|u|2|B|");
        queue.scan();
        QCOMPARE(names(queue.good), QStringList{"20260731u001"});
        QCOMPARE(queue.good.at(0).bad, true);
    }
}

void TestSendQueue::rowsGrowAndShrinkWithTheDirectory()
{
    Queue queue(0, {"20260731u001", "20260731u002", "20260731u003.b1"});
    QCOMPARE(queue.scan(), 3);
    QVERIFY(QFile::remove("out/20260731u001"));
    QVERIFY(QFile::remove("out/20260731u003.b1"));
    queue.write("out/20260731u000", "TEXT");
    QCOMPARE(queue.scan(), 2);
    QCOMPARE(names(queue.good), QStringList({"20260731u002", "20260731u000"})); // the old row keeps its place
    QCOMPARE(queue.bad.rowCount(), 0);
}

void TestSendQueue::rowTakesOnTheNewRecord()
{
    Queue queue(1, {"20260731u001", "20260731u002"});
    queue.scan();
    queue.write("out/20260731u001.dat", "1234567|S|01.08.2026 09:05|u|3|N|НЕТ ОТВЕТА");
    queue.scan();
    QCOMPARE(names(queue.good), QStringList({"20260731u001", "20260731u002"}));
    QCOMPARE(queue.good.at(0).number, QString("1234567"));
    QCOMPARE(queue.good.at(0).resultText, text("НЕТ ОТВЕТА"));
}

void TestSendQueue::fileThatChangesItsClassChangesItsList()
{
    Queue queue(0, {"20260731u001"});
    queue.scan();
    QVERIFY(QFile::rename("out/20260731u001", "out/20260731u001.b07"));
    queue.scan();
    QCOMPARE(queue.good.rowCount(), 0);
    QCOMPARE(names(queue.bad), QStringList{"20260731u001.b07"});
    QVERIFY(QFile::rename("out/20260731u001.b07", "out/20260731u001"));
    queue.scan();
    QCOMPARE(names(queue.good), QStringList{"20260731u001"});
    QCOMPARE(queue.bad.rowCount(), 0);
}

void TestSendQueue::goodListIsSortedAndTheFailedIsNot()
{
    Queue queue(1, {"20260731u001", "20260731u002", "20260731u003", "20260731u004"});
    queue.write("out/20260731u001.dat", "1|S|31.07.2026 12:30|u|3|N|");
    queue.write("out/20260731u002.dat", "1|S|31.07.2026 12:10|u|3|N|");
    queue.write("out/20260731u003.dat", "1|S|31.07.2026 12:30|u|0|N|");
    queue.write("out/20260731u004.dat", "1|S|31.07.2026 12:10|u|0|N|");
    queue.scan();
    QCOMPARE(names(queue.good), QStringList({"20260731u002", "20260731u001"}));
    QCOMPARE(names(queue.bad), QStringList({"20260731u003", "20260731u004"}));
}

void TestSendQueue::scanGivesTheCountOfFiles()
{
    Queue queue(0);
    QCOMPARE(queue.scan(), 0);
    queue.write("out/20260731u001", "");
    queue.write("out/20260731u002.b1", "");
    QCOMPARE(queue.scan(), 2);
}

void TestSendQueue::missingDirectoryEmptiesBothLists()
{
    Queue queue(0, {"20260731u001", "20260731u002.b1"});
    QCOMPARE(queue.scan(), 2);
    QVERIFY(QDir("out").removeRecursively());
    QCOMPARE(queue.scan(), 0);
    QCOMPARE(queue.good.rowCount(), 0);
    QCOMPARE(queue.bad.rowCount(), 0);
}

void TestSendQueue::foreignNamesAndRecordsAreListed()
{
    Queue queue(0, foreignNames() + QStringList{text("ПРОГРАММс001")});
    queue.write("out/" + foreignNames().last() + ".dat", QByteArray(1000, '\xFF'));
    QCOMPARE(queue.scan(), 3);
    QCOMPARE(names(queue.good).size(), 3);
}

void TestSendQueue::fileThatVanishesBeforeItsRecordIsReadIsListedUntilTheNextScan()
{
    Queue queue(0, {"20260731u001", "20260731u002"});
    const SendQueueScan scan = scanSendQueue();
    QVERIFY(QFile::remove("out/20260731u001"));
    QCOMPARE(applySendQueue(scan, queue.good, queue.bad), 2);
    QCOMPARE(queue.scan(), 1);
    QCOMPARE(names(queue.good), QStringList{"20260731u002"});
}

void TestSendQueue::otherOutgoingDirectoryIsFollowed()
{
    Queue queue(0, {"20260731u001"});
    queue.write("elsewhere/20260731u009", "TEXT");
    Options.pathOut = "elsewhere";
    QCOMPARE(queue.scan(), 1);
    QCOMPARE(names(queue.good), QStringList{"20260731u009"});
}

QTEST_GUILESS_MAIN(TestSendQueue)
#include "test_send_queue.moc"
