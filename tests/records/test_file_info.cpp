#include "app/clock.h"
#include "records/file_info.h"
#include "records/protocol.h"
#include "tests/support/full_disk.h"
#include "tests/support/no_ordinary_file.h"
#include "tests/support/row.h"

namespace
{
QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

CFileInfo filled()
{
    CFileInfo info;
    info.number = "1234567";
    info.trys = 3;
    info.toCKS = true;
    info.sendTime = QDateTime(QDate(2026, 8, 1), QTime(9, 5));
    info.bad = true;
    info.resultText = text("НЕТ ОТВЕТА");
    return info;
}
} // namespace

Q_DECLARE_METATYPE(CFileInfo)

/// The side-car record.
class TestFileInfo : public QObject
{
    Q_OBJECT

private slots:
    void saveWritesOneLine_data();
    void saveWritesOneLine();
    void saveReplacesTheRecord();
    void saveThatCannotWriteGivesFalse();
    void fullDiskLeavesTheOldRecord();
    void savedRecordLoadsTheSame();
    void secondsOfTheTimeAreNotKept();

    void fileWithoutSideCarIsForTheCentreNowOnce();
    void loadReadsTheFields_data();
    void loadReadsTheFields();
    void resultTextThatHoldsTheSeparatorLoadsEmpty();
    void qFlagIsNeverReadBack();
    void reservedIsZeroAfterLoad();
    void returnBeforeAZeroEndsTheLine();
    void tornAndForeignRecordsLoad_data();
    void tornAndForeignRecordsLoad();
    void directoryInPlaceOfTheRecordCountsAsNone();
    void specialFileCountsAsNoRecord_data() { specialFiles(); }
    void specialFileCountsAsNoRecord();

    void removeDeletesTheSideCarAlone();
    void removeOfNothingDoesNothing();
    void recordThatStaysIsTold();
};

void TestFileInfo::saveWritesOneLine_data()
{
    QTest::addColumn<CFileInfo>("info");
    QTest::addColumn<QByteArray>("line");
    row("empty record", CFileInfo(), QByteArray("|S||u|0|N|"));
    row("every field", filled(), QByteArray("1234567|C|01.08.2026 09:05|u|3|B|НЕТ ОТВЕТА"));
    CFileInfo info = filled();
    info.qFlag = true;
    row("qFlag", info, QByteArray("1234567|C|01.08.2026 09:05|q|3|B|НЕТ ОТВЕТА"));
    info = filled();
    info.toCKS = false;
    info.bad = false;
    info.trys = -1;
    info.resultText.clear();
    row("to a subscriber", info, QByteArray("1234567|S|01.08.2026 09:05|u|-1|N|"));
    info.resultText = "a|b";
    row("separator in the text", info, QByteArray("1234567|S|01.08.2026 09:05|u|-1|N|a|b"));
}

void TestFileInfo::saveWritesOneLine()
{
    QFETCH(CFileInfo, info);
    QFETCH(QByteArray, line);
    Desk desk;
    QVERIFY(info.Save("out/a"));
    QCOMPARE(desk.read("out/a.dat"), line);
}

void TestFileInfo::saveReplacesTheRecord()
{
    Desk desk;
    desk.write("out/a.dat", QByteArray(1000, 'x'));
    QVERIFY(CFileInfo().Save("out/a"));
    QCOMPARE(desk.read("out/a.dat"), QByteArray("|S||u|0|N|"));
    QCOMPARE(desk.names("out"), QStringList{"a.dat"});
}

void TestFileInfo::saveThatCannotWriteGivesFalse()
{
    Desk desk;
    QVERIFY(!filled().Save("none/a"));
}

void TestFileInfo::fullDiskLeavesTheOldRecord()
{
    Desk desk;
    QVERIFY(CFileInfo().Save("out/a"));
    const FullDisk full{5};
    QVERIFY(!filled().Save("out/a"));
    QCOMPARE(desk.read("out/a.dat"), QByteArray("|S||u|0|N|"));
}

void TestFileInfo::savedRecordLoadsTheSame()
{
    Desk desk;
    QVERIFY(filled().Save("out/a"));
    CFileInfo info;
    QVERIFY(info.Load("out/a"));
    QCOMPARE(info.number, QString("1234567"));
    QCOMPARE(info.trys, 3);
    QCOMPARE(info.toCKS, true);
    QCOMPARE(info.sendTime, QDateTime(QDate(2026, 8, 1), QTime(9, 5)));
    QCOMPARE(info.qFlag, false);
    QCOMPARE(info.bad, true);
    QCOMPARE(info.resultText, text("НЕТ ОТВЕТА"));
}

void TestFileInfo::secondsOfTheTimeAreNotKept()
{
    Desk desk;
    CFileInfo info = filled();
    info.sendTime = QDateTime(QDate(2026, 8, 1), QTime(9, 5, 59));
    QVERIFY(info.Save("out/a"));
    QVERIFY(info.Load("out/a"));
    QCOMPARE(info.sendTime, QDateTime(QDate(2026, 8, 1), QTime(9, 5)));
}

void TestFileInfo::fileWithoutSideCarIsForTheCentreNowOnce()
{
    Desk desk(QTime(12, 34, 56));
    CFileInfo info = filled();
    info.qFlag = true;
    info.reserved = 7;
    QVERIFY(!info.Load("out/a"));
    QCOMPARE(info.number, QString());
    QCOMPARE(info.toCKS, true);
    QCOMPARE(info.sendTime, Time.dateTime);
    QCOMPARE(info.trys, 1);
    QCOMPARE(info.bad, false);
    QCOMPARE(info.qFlag, false);
    QCOMPARE(info.resultText, QString());
    QCOMPARE(info.reserved, 0);
}

void TestFileInfo::loadReadsTheFields_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<CFileInfo>("expected");
    row("every field", QByteArray("1234567|C|01.08.2026 09:05|u|3|B|НЕТ ОТВЕТА"), filled());
    row("line feed at the end", QByteArray("1234567|C|01.08.2026 09:05|u|3|B|НЕТ ОТВЕТА\r\n"), filled());
    row("first line alone", QByteArray("1234567|C|01.08.2026 09:05|u|3|B|НЕТ ОТВЕТА\nсовсем|другое"),
        filled());
    CFileInfo info = filled();
    info.toCKS = false;
    row("S", QByteArray("1234567|S|01.08.2026 09:05|u|3|B|НЕТ ОТВЕТА"), info);
    row("neither C nor S", QByteArray("1234567|c|01.08.2026 09:05|u|3|B|НЕТ ОТВЕТА"), info);
    info.bad = false;
    row("N", QByteArray("1234567|S|01.08.2026 09:05|u|3|N|НЕТ ОТВЕТА"), info);
    row("neither B nor N", QByteArray("1234567|S|01.08.2026 09:05|u|3|b|НЕТ ОТВЕТА"), info);
    info.resultText.clear();
    row("six fields", QByteArray("1234567|S|01.08.2026 09:05|u|3|N"), info);
    row("empty text", QByteArray("1234567|S|01.08.2026 09:05|u|3|N|"), info);
    info.trys = 0;
    row("tries that are no number", QByteArray("1234567|S|01.08.2026 09:05|u|x|N|"), info);
    info.sendTime = QDateTime();
    row("time that is none", QByteArray("1234567|S|32.08.2026 09:05|u|0|N|"), info);
    row("empty time", QByteArray("1234567|S||u|0|N|"), info);
}

void TestFileInfo::loadReadsTheFields()
{
    QFETCH(QByteArray, content);
    QFETCH(CFileInfo, expected);
    Desk desk;
    desk.write("out/a.dat", content);
    CFileInfo info;
    QVERIFY(info.Load("out/a"));
    QCOMPARE(info.number, expected.number);
    QCOMPARE(info.toCKS, expected.toCKS);
    QCOMPARE(info.sendTime, expected.sendTime);
    QCOMPARE(info.trys, expected.trys);
    QCOMPARE(info.bad, expected.bad);
    QCOMPARE(info.resultText, expected.resultText);
}

void TestFileInfo::resultTextThatHoldsTheSeparatorLoadsEmpty()
{
    Desk desk;
    CFileInfo info = filled();
    info.resultText = text("НЕТ|ОТВЕТА");
    QVERIFY(info.Save("out/a"));
    QVERIFY(info.Load("out/a"));
    QCOMPARE(info.resultText, QString());
    QCOMPARE(info.trys, 3);
    QCOMPARE(info.bad, true);
}

void TestFileInfo::qFlagIsNeverReadBack()
{
    Desk desk;
    CFileInfo info = filled();
    info.qFlag = true;
    QVERIFY(info.Save("out/a"));
    QVERIFY(info.Load("out/a"));
    QCOMPARE(info.qFlag, false);
    desk.write("out/a.dat", "|S||q|0|q|"); // the place where the reader looks
    QVERIFY(info.Load("out/a"));
    QCOMPARE(info.qFlag, true);
}

void TestFileInfo::reservedIsZeroAfterLoad()
{
    Desk desk;
    CFileInfo info = filled();
    QVERIFY(info.Save("out/a"));
    info.reserved = 5;
    QVERIFY(info.Load("out/a"));
    QCOMPARE(info.reserved, 0);
}

// It would be written into the line, and be taken for its end the next time.
void TestFileInfo::returnBeforeAZeroEndsTheLine()
{
    Desk desk;
    desk.write("out/a.dat", QByteArray("12|C||u|0|N|Занято\r") + QByteArray(1, '\0') + "second\n");
    CFileInfo info;
    QVERIFY(info.Load("out/a"));
    QCOMPARE(info.resultText, QString("Занято"));
}

void TestFileInfo::tornAndForeignRecordsLoad_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("number");
    row("empty", QByteArray(), QString());
    row("one field", QByteArray("123"), QString("123"));
    row("torn within the time", QByteArray("123|C|01.08.20"), QString("123"));
    row("no figure in the year", QByteArray("123|C|01.08.202x 09:05|u|0|N|"), QString("123"));
    row("zeros", QByteArray(100, '\0'), QString());
    row("text behind a zero", QByteArray("12\0003|S||u|5|B|", 15), QString("12"));
    row("not UTF-8", QByteArray("\xFF"), QString(QChar(0xFFFD)));
    row("a megabyte without an end", QByteArray(3 << 20, '|'), QString());
}

void TestFileInfo::tornAndForeignRecordsLoad()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, number);
    Desk desk;
    desk.write("out/a.dat", content);
    CFileInfo info = filled();
    QVERIFY(info.Load("out/a"));
    QCOMPARE(info.number, number);
    QCOMPARE(info.trys, 0);
    QVERIFY(!info.sendTime.isValid());
    QCOMPARE(info.bad, false);
    QCOMPARE(info.resultText, QString());
}

void TestFileInfo::directoryInPlaceOfTheRecordCountsAsNone()
{
    Desk desk;
    QVERIFY(QDir().mkdir("out/a.dat"));
    CFileInfo info;
    QVERIFY(!info.Load("out/a"));
    QCOMPARE(info.trys, 1);
}

void TestFileInfo::specialFileCountsAsNoRecord()
{
    QFETCH(SpecialFile, kind);
    const Desk desk;
    place(desk, kind, "a.dat");
    CFileInfo info = filled();
    QVERIFY(!info.Load("a"));
    QVERIFY(info.toCKS && info.trys == 1 && info.number.isEmpty() && !info.bad);
    QVERIFY(!info.Save("a"));
    QVERIFY(stands(desk, kind, "a.dat"));
}

void TestFileInfo::removeDeletesTheSideCarAlone()
{
    Desk desk;
    desk.write("out/a", "text");
    QVERIFY(filled().Save("out/a"));
    CFileInfo::Remove("out/a");
    QCOMPARE(desk.names("out"), QStringList{"a"});
}

void TestFileInfo::removeOfNothingDoesNothing()
{
    Desk desk;
    desk.write("out/a", "text");
    CFileInfo::Remove("out/a");
    QCOMPARE(desk.names("out"), QStringList{"a"});
}

void TestFileInfo::recordThatStaysIsTold()
{
    Desk desk;
    desk.write("out/a.dat/held", "");
    QVERIFY(!CFileInfo::Remove("out/a"));
    Log.add(QLatin1Char('\n'), ProtocolReceived); // the line that the note has waited for
    QCOMPARE(desk.journal().filter(text("Ошибка удаления out/a.dat")).size(), 1);
}

QTEST_GUILESS_MAIN(TestFileInfo)
#include "test_file_info.moc"
