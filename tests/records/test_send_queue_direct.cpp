#include "app/clock.h"
#include "tests/records/queue_desk.h"

#include <QtTest>

/// The scan of the outgoing directory for the direct link.
class TestSendQueueDirect : public QObject
{
    Q_OBJECT

private slots:
    void directLinkListsStampedNamesByTheirTime();
    void directLinkReadsTheTimeFromTheName();
    void directLinkReadsNoSideCar();
    void directLinkDoesNotListAFileWithoutAStamp();
    void stampThatIsNoTimeLeavesTheTimeInvalid();
    void futureFileStandsFirstOnlyWhileNoEarlierOneExists();
    void yearOfTheStampIsOfThisCentury();
};

void TestSendQueueDirect::directLinkListsStampedNamesByTheirTime()
{
    Queue queue(2, {"20260731u003.260731_120000", "20260731u001.260731_130000", "20260731u002.260731_120000",
                    "20260731g001.260730_235959"});
    const SendQueueScan scan = scanSendQueue();
    QCOMPARE(names(scan.good), QStringList({"20260731u002.260731_120000", "20260731u003.260731_120000",
                                            "20260731u001.260731_130000", "20260731g001.260730_235959"}));
    QCOMPARE(numbers(scan.good), QStringList({"000", "001", "002", "003"}));
    QVERIFY(scan.bad.isEmpty());
    QCOMPARE(queue.scan(), 4);
    QCOMPARE(names(queue.good), QStringList({"20260731g001.260730_235959", "20260731u002.260731_120000",
                                             "20260731u003.260731_120000", "20260731u001.260731_130000"}));
}

void TestSendQueueDirect::directLinkReadsTheTimeFromTheName()
{
    Queue queue(2, {"20260731u001.260801_090507"});
    QCOMPARE(queue.scan(), 1);
    QCOMPARE(queue.good.at(0).sendTime, QDateTime(QDate(2026, 8, 1), QTime(9, 5, 7)));
}

void TestSendQueueDirect::directLinkReadsNoSideCar()
{
    Queue queue(2, {"20260731u001.260731_120000"});
    queue.write("out/20260731u001.260731_120000.dat", "1234567|C|01.08.2026 09:05|q|3|B|НЕТ ОТВЕТА");
    QCOMPARE(queue.scan(), 1);
    const CTableViewModelItem_Send &row = queue.good.at(0);
    QCOMPARE(row.number, QString());
    QCOMPARE(row.trys, 0);
    QCOMPARE(row.toCKS, false);
    QCOMPARE(row.bad, false);
    QCOMPARE(row.resultText, QString());
    QCOMPARE(row.sendTime, QDateTime(QDate(2026, 7, 31), QTime(12, 0)));
}

void TestSendQueueDirect::directLinkDoesNotListAFileWithoutAStamp()
{
    Queue queue(2, {"20260731u001", "20260731g001", text("20260731с001"), text("20260731с001.260731_120000"),
                    "20260731u001.b1", "20260731u001.260731_12000", "20260731u001.260731_1200000",
                    "20260731u001.2607310120000"});
    QCOMPARE(queue.scan(), 0);
}

void TestSendQueueDirect::stampThatIsNoTimeLeavesTheTimeInvalid()
{
    Queue queue(2, {"20260731u001.260732_120000", "20260731u002.abcdef_ghijkl", "20260731u003.260731_120000",
                    "20260731u004.ab0731_120000"});
    QCOMPARE(queue.scan(), 4);
    QVERIFY(!queue.good.at(0).sendTime.isValid());
    QVERIFY(!queue.good.at(1).sendTime.isValid());
    QVERIFY(!queue.good.at(2).sendTime.isValid());
    QCOMPARE(queue.good.at(3).fileName, QString("20260731u003.260731_120000"));
}

void TestSendQueueDirect::futureFileStandsFirstOnlyWhileNoEarlierOneExists()
{
    Queue queue(2, {"20260731u001.260731_180000"});
    queue.scan();
    QCOMPARE(names(queue.good), QStringList{"20260731u001.260731_180000"});
    QVERIFY(queue.good.at(0).sendTime > Time.dateTime); // the tick holds it back
    queue.write("out/20260731u002.260731_115959", "TEXT");
    queue.scan();
    QCOMPARE(names(queue.good), QStringList({"20260731u002.260731_115959", "20260731u001.260731_180000"}));
}

void TestSendQueueDirect::yearOfTheStampIsOfThisCentury()
{
    Queue queue(2, {"20260731u001.000229_000000", "20260731u002.991231_235959"});
    QCOMPARE(queue.scan(), 2);
    QCOMPARE(queue.good.at(0).sendTime, QDateTime(QDate(2000, 2, 29), QTime(0, 0)));
    QCOMPARE(queue.good.at(1).sendTime, QDateTime(QDate(2099, 12, 31), QTime(23, 59, 59)));
}

QTEST_GUILESS_MAIN(TestSendQueueDirect)
#include "test_send_queue_direct.moc"
