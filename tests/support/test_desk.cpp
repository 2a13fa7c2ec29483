// The workstation that the tests lay out, and the disk that is full for them.

#include "app/options.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "records/protocol.h"
#include "tests/support/desk.h"
#include "tests/support/full_disk.h"

#include <QtTest>

class TestDesk : public QObject
{
    Q_OBJECT

private slots:
    void directoryIsTheCurrentOneWhileItLives();
    void nextDeskKnowsNothingOfTheFormer();
    void journalShowsItsTypes();
    void fullDiskTakesItsRoomOnly();
};

void TestDesk::directoryIsTheCurrentOneWhileItLives()
{
    const QString former = QDir::currentPath();
    QString path;
    {
        const Desk desk;
        path = desk.path();
        QCOMPARE(QDir::current().canonicalPath(), QDir(path).canonicalPath());
        desk.write("a/b", "C");
        QCOMPARE(desk.read("a/b"), QByteArray("C"));
        QVERIFY(desk.names("").contains("a"));
    }
    QCOMPARE(QDir::currentPath(), former);
    QVERIFY(!QFile::exists(path));
}

void TestDesk::nextDeskKnowsNothingOfTheFormer()
{
    {
        const Desk desk;
        Options.processMode = 1;
        State.PK_in = 7;
        TlgThread.sendBuffer.mAppend("A");
        Log.addCacheServiceString("A", ProtocolInfo, false);
    }
    const Desk desk;
    QCOMPARE(Options.processMode, COptions().processMode);
    QCOMPARE(State.PK_in, 0);
    QCOMPARE(desk.sent(), QString());
    QVERIFY(desk.journal().filter("A").isEmpty());
}

void TestDesk::journalShowsItsTypes()
{
    const Desk desk(QTime(8, 30));
    Log.addCacheServiceString("A", ProtocolInfo, false);
    QVERIFY(desk.journal().contains("308:30:00 A"));
}

void TestDesk::fullDiskTakesItsRoomOnly()
{
    const Desk desk;
    QFile file("a");
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    {
        const FullDisk disk(10);
        QCOMPARE(file.write(QByteArray(10, 'A')), 10);
        QVERIFY(file.write("B") <= 0);
    }
    QCOMPARE(file.write("C"), 1);
    QCOMPARE(desk.read("a"), QByteArray(10, 'A') + 'C');
}

QTEST_GUILESS_MAIN(TestDesk)
#include "test_desk.moc"
