#include "records/creation_time.h"
#include "tests/records/archive_day.h"
#include "tests/support/row.h"

#include <QFileInfo>
#include <QtTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{
bool hideBirth = false; // as a file system does that keeps none
} // namespace

// Stands before the function of the C library.
extern "C" int statx(int directory, const char *path, int flags, unsigned mask, struct statx *status) noexcept
{
    const int result = int(syscall(SYS_statx, directory, path, flags, mask, status));
    if (hideBirth)
        status->stx_mask &= ~unsigned(STATX_BTIME);
    return result;
}

/// The time of a file's creation.
class TestCreationTime : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { hideBirth = false; }

    void birthCountsWhereItIsKept();
    void oldestTimeCountsWhereNoBirthIsKept_data();
    void oldestTimeCountsWhereNoBirthIsKept();
    void changeOfTheEntryCountsIfItIsTheOldest();
    void missingFileHasNone();
    void listsShowIt();

private:
    static void setTimes(const Desk &desk, const QDateTime &read, const QDateTime &modified);
};

namespace
{
const QDateTime Nine(QDate(2020, 1, 2), QTime(9, 0));
const QDateTime Ten(QDate(2020, 1, 2), QTime(10, 0));
const QDateTime Later(QDate(2099, 1, 1), QTime(0, 0));
} // namespace

void TestCreationTime::setTimes(const Desk &desk, const QDateTime &read, const QDateTime &modified)
{
    const timespec times[] = {{time_t(read.toSecsSinceEpoch()), 0}, {time_t(modified.toSecsSinceEpoch()), 0}};
    desk.write("a", "TEXT");
    QCOMPARE(utimensat(AT_FDCWD, "a", times, 0), 0);
}

void TestCreationTime::birthCountsWhereItIsKept()
{
    const Desk desk;
    setTimes(desk, Nine, Ten);
    QVERIFY(creationTime(QFileInfo("a")).isValid());
    QVERIFY(creationTime(QFileInfo("a")) > Ten.addYears(1));
    QCOMPARE(creationTime(QFileInfo("a")), QFileInfo("a").birthTime());
}

void TestCreationTime::oldestTimeCountsWhereNoBirthIsKept_data()
{
    QTest::addColumn<QDateTime>("read");
    QTest::addColumn<QDateTime>("modified");
    row("modified before it was read", Ten, Nine);
    row("read before it was modified", Nine, Ten);
}

void TestCreationTime::oldestTimeCountsWhereNoBirthIsKept()
{
    QFETCH(QDateTime, read);
    QFETCH(QDateTime, modified);
    const Desk desk;
    setTimes(desk, read, modified);
    hideBirth = true;
    QVERIFY(!QFileInfo("a").birthTime().isValid());
    QCOMPARE(creationTime(QFileInfo("a")), Nine);
}

void TestCreationTime::changeOfTheEntryCountsIfItIsTheOldest()
{
    const Desk desk;
    setTimes(desk, Later, Later);
    hideBirth = true;
    const QDateTime time = creationTime(QFileInfo("a"));
    QVERIFY(time.isValid());
    QVERIFY(time < Later);
    QCOMPARE(time, QFileInfo("a").metadataChangeTime());
}

void TestCreationTime::missingFileHasNone()
{
    const Desk desk;
    QVERIFY(!creationTime(QFileInfo("a")).isValid());
}

void TestCreationTime::listsShowIt()
{
    Day day;
    setTimes(day, Ten, Nine);
    QVERIFY(QDir().mkpath("inp/20260731"));
    QVERIFY(QFile::rename("a", "inp/20260731/a"));
    hideBirth = true;
    day.model.reloadFromDir();
    QCOMPARE(day.model.at(0).time, QTime(9, 0));
    QCOMPARE(day.model.index(0, 0).data().toString(), QString("09:00:00"));
}

QTEST_GUILESS_MAIN(TestCreationTime)
#include "test_creation_time.moc"
