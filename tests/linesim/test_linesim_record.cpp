#include "tests/support/full_disk.h"
#include "tests/support/row.h"
#include "tools/linesim/console/event_log.h"
#include "tools/linesim/record/record_writer.h"

#include <QTemporaryDir>
#include <QtTest>

// Line records as files.
class TestLinesimRecord : public QObject
{
    Q_OBJECT

private slots:
    void eventsAreReadAsTheyAreWritten();
    void commentsAndEmptyLinesTellNothing();
    void wrongLineIsNamed_data();
    void wrongLineIsNamed();
    void eachEventIsInTheFileAtOnce();
    void failedDiskIsToldOnce();
    void recordThatCannotBeginIsRefused();
};

namespace
{
const QByteArray whole = "0.000000 1 W open\n"
                         "0.104233 1 F 16\n"
                         "0.104233 1 W 16 BF 00\n"
                         "9.999999 1 F close\n"
                         "123456.000001 2 F open\n"
                         "123456.000002 2 W close\n";
} // namespace

void TestLinesimRecord::eventsAreReadAsTheyAreWritten()
{
    QString error;
    const auto record = LineRecord::parse(whole, error);
    QVERIFY2(record, qPrintable(error));
    QCOMPARE(record->events.size(), 6);
    const LineRecord::Event &third = record->events[2];
    QCOMPARE(third.us, 104233);
    QCOMPARE(third.connection, 1);
    QCOMPARE(third.side, LineRecord::Workstation);
    QCOMPARE(third.kind, LineRecord::Bytes);
    QCOMPARE(third.bytes, QByteArray("\x16\xBF\x00", 3));
    QCOMPARE(record->events[3].kind, LineRecord::Close);
    QCOMPARE(record->events[4].us, 123456000001);
    QCOMPARE(record->events[4].side, LineRecord::FarEnd);
    QByteArray again;
    for (const LineRecord::Event &event : record->events)
        again += recordLine(event) + '\n';
    QCOMPARE(again, whole);
}

void TestLinesimRecord::commentsAndEmptyLinesTellNothing()
{
    QString error;
    const auto record = LineRecord::parse("# begun\n\n1.000000 1 W open\r\n  \n# 2.0 1 W 16\n", error);
    QVERIFY2(record, qPrintable(error));
    QCOMPARE(record->events.size(), 1);
}

void TestLinesimRecord::wrongLineIsNamed_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("error");
    const QByteArray open = "1.000000 1 W open\n";
    row("no event", QByteArray("hello"), "line 1: not an event");
    row("five decimals", QByteArray("1.00000 1 W open"), "line 1: not an event");
    row("no such side", QByteArray("1.000000 1 X open"), "line 1: not an event");
    row("no bytes", QByteArray(open + "1.000000 1 W "), "line 2: not an event");
    row("half a byte", QByteArray(open + "1.000000 1 W 1"), "line 2: not an event");
    row("no hexadecimal", QByteArray(open + "1.000000 1 W 1G"), "line 2: not an event");
    row("time falls", QByteArray(open + "0.999999 1 W 16"), "line 2: time falls");
    row("not opened", QByteArray("1.000000 1 W 16"), "line 1: connection 1 is not open");
    row("another", QByteArray(open + "1.000000 2 W 16"), "line 2: connection 2 is not open");
    row("closed", QByteArray(open + "1.000000 1 W close\n1.000000 1 F 16"),
        "line 3: connection 1 is not open");
    row("two at once", QByteArray(open + "1.000000 2 W open"), "line 2: connection 1 is still open");
    row("one left out", QByteArray("1.000000 2 W open"), "line 1: connection 2 is not the next");
}

void TestLinesimRecord::wrongLineIsNamed()
{
    QFETCH(QByteArray, text);
    QString error;
    QVERIFY(!LineRecord::parse(text, error));
    QTEST(error, "error");
}

void TestLinesimRecord::eachEventIsInTheFileAtOnce()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("record"));
    EventLog log([](const QString &) {});
    RecordWriter writer(path, log);
    QVERIFY(writer.start());
    const auto written = [&] {
        QFile file(path);
        QString error;
        return file.open(QIODevice::ReadOnly) ? LineRecord::parse(file.readAll(), error) : std::nullopt;
    };
    writer.write(1, LineRecord::Workstation, LineRecord::Open);
    QCOMPARE(written()->events.size(), 1);
    writer.write(1, LineRecord::FarEnd, LineRecord::Bytes, "AB");
    QCOMPARE(written()->events.size(), 2);
    QCOMPARE(written()->events[1].bytes, QByteArray("AB"));
    QVERIFY(written()->events[1].us >= written()->events[0].us);
}

void TestLinesimRecord::failedDiskIsToldOnce()
{
    const QTemporaryDir directory;
    QStringList lines;
    EventLog log([&lines](const QString &line) { lines << line; });
    RecordWriter writer(directory.filePath(QStringLiteral("record")), log);
    QVERIFY(writer.start());
    const FullDisk disk(1000);
    for (int i = 0; i < 3; ++i)
        writer.write(1, LineRecord::FarEnd, LineRecord::Bytes, QByteArray(100000, 'A'));
    QCOMPARE(lines.filter(QStringLiteral("error: ")).size(), 1);
    QCOMPARE(lines.last(), QStringLiteral("violation: the record ends here"));
    QCOMPARE(log.violations, 1);
}

void TestLinesimRecord::recordThatCannotBeginIsRefused()
{
    QStringList lines;
    EventLog log([&lines](const QString &line) { lines << line; });
    RecordWriter writer(QStringLiteral("/no/such/folder/record"), log);
    QVERIFY(!writer.start());
    QCOMPARE(lines.size(), 1);
    QVERIFY(lines.first().startsWith(QStringLiteral("error: /no/such/folder/record: ")));
}

QTEST_GUILESS_MAIN(TestLinesimRecord)
#include "test_linesim_record.moc"
