#include "procedures/queue_file.h"

#include "app/options.h"
#include "app/state.h"
#include "procedures/telegram_files.h"
#include "records/file_info.h"
#include "records/protocol.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"

#include <QFile>
#include <QtTest>

const QString Path = QStringLiteral("out/20260731u001");
const QString Record = QStringLiteral("123456|S|31.07.2026 11:00|u|3|N|Занято");

/// A desk with its journal at the beginning of a line.
class QueueFileDesk : public Desk
{
public:
    QueueFileDesk() { Log.lines = QStringList(QString()); }
    [[nodiscard]] QStringList noted() const { return journal().mid(0, journal().size() - 1); }
};

class TestQueueFile : public QObject
{
    Q_OBJECT

private slots:
    void fileIsRemovedBeforeItsRecord();
    void recordOfAFileThatStaysStays();
    void changeLeavesTheOtherFields();
    void changeOfTheFileUnderWayReachesItsCopy_data();
    void changeOfTheFileUnderWayReachesItsCopy();
    void recordThatCannotBeWrittenIsToldOnce();
    void failedNameIsCutAtItsMark_data();
    void failedNameIsCutAtItsMark();
};

void TestQueueFile::fileIsRemovedBeforeItsRecord()
{
    const QueueFileDesk desk;
    desk.write(Path, "ТЕКСТ");
    desk.write(Path + ".dat", Record.toUtf8());
    QVERIFY(removeQueueFile(Path));
    QCOMPARE(desk.names("out"), QStringList());
    QCOMPARE(desk.noted(), QStringList{"312:00:00 Удаление " + Path});
}

void TestQueueFile::recordOfAFileThatStaysStays()
{
    const QueueFileDesk desk;
    desk.write(Path + "/a", "ЧУЖОЙ");
    desk.write(Path + ".dat", Record.toUtf8());
    QVERIFY(!removeQueueFile(Path));
    QCOMPARE(desk.read(Path + ".dat"), Record.toUtf8());
    QCOMPARE(desk.noted(), QStringList{"412:00:00 Ошибка удаления " + Path});
}

void TestQueueFile::changeLeavesTheOtherFields()
{
    const QueueFileDesk desk;
    desk.write(Path, "ТЕКСТ");
    desk.write(Path + ".dat", Record.toUtf8());
    QVERIFY(changeQueueRecord(Path, [](CFileInfo &record) { record.trys = 9; }));
    QCOMPARE(QString::fromUtf8(desk.read(Path + ".dat")), QString(Record).replace("|3|", "|9|"));
    QCOMPARE(desk.noted(), QStringList());
}

void TestQueueFile::changeOfTheFileUnderWayReachesItsCopy_data()
{
    QTest::addColumn<QString>("current");
    QTest::addColumn<bool>("inProgress");
    QTest::addColumn<int>("tries");
    row("this one", "20260731u001", true, 0);
    row("another one", "20260731u002", true, 2);
    row("none any more", "20260731u001", false, 2);
}

void TestQueueFile::changeOfTheFileUnderWayReachesItsCopy()
{
    QFETCH(QString, current);
    QFETCH(bool, inProgress);
    const QueueFileDesk desk;
    desk.write(Path, "ТЕКСТ");
    State.currentFile = current;
    State.fileInProgress = inProgress;
    State.sendInfo.trys = 2;
    QVERIFY(changeQueueRecord(queuePath("20260731u001"), [](CFileInfo &record) { record.trys = 0; }));
    QTEST(State.sendInfo.trys, "tries");
}

void TestQueueFile::recordThatCannotBeWrittenIsToldOnce()
{
    const QueueFileDesk desk;
    desk.write(Path, "ТЕКСТ");
    desk.write(Path + ".dat/a", "ЧУЖОЙ");
    State.currentFile = QStringLiteral("20260731u001");
    State.fileInProgress = true;
    State.sendInfo.trys = 2;
    QVERIFY(!changeQueueRecord(Path, [](CFileInfo &record) { record.trys = 0; }));
    QCOMPARE(desk.noted(), QStringList{"412:00:00 Не получилось сохранить параметры файла " + Path});
    QCOMPARE(State.sendInfo.trys, 2);
}

void TestQueueFile::failedNameIsCutAtItsMark_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("restored");
    row("a number", "20260731u001.b012", "20260731u001");
    row("a further name", "20260731u001.b012_3", "20260731u001");
    row("two marks", "20260731u001.b012.b1", "20260731u001");
    row("no mark", "20260731u001", "");
    row("the mark first", ".b12", "");
}

void TestQueueFile::failedNameIsCutAtItsMark()
{
    QFETCH(QString, name);
    QFETCH(QString, restored);
    const QueueFileDesk desk;
    desk.write("out/" + name, "ТЕКСТ");
    QCOMPARE(restoreFailedFile("out/" + name), restored.isEmpty() ? QString() : queuePath(restored));
    QCOMPARE(desk.read("out/" + (restored.isEmpty() ? name : restored)), QByteArray("ТЕКСТ"));
    QCOMPARE(desk.noted().isEmpty(), restored.isEmpty());
}

QTEST_MAIN(TestQueueFile)
#include "test_queue_file.moc"
