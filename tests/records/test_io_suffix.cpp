#include "tests/records/archive_day.h"
#include "tests/support/read_only.h"
#include "tests/support/row.h"

#include <QAbstractItemModelTester>
#include <QtTest>

/// What the selection of a new file does to the mark that is a suffix of its name.
class TestIOSuffix : public QObject
{
    Q_OBJECT

private slots:
    void clearedRowStaysItselfAtTheNextReload();
    void refusalIsToldOnceUntilAMarkWasCleared();
    void takenNameIsNotWrittenOver_data();
    void takenNameIsNotWrittenOver();
    void nameOfNothingButTheSuffixStays();
    void whatTookTheFilesPlaceIsLeftAlone();
    void rowOfAFileThatWasGoneGivesItsNameUp();
};

void TestIOSuffix::clearedRowStaysItselfAtTheNextReload()
{
    Day day(0, {"a", "b_", "c"});
    const QAbstractItemModelTester tester(&day.model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    const QPersistentModelIndex selected = day.select("b_");
    QVERIFY(day.model.clearNew(1));
    day.model.reloadFromDir();
    QCOMPARE(names(day.model), QStringList({"a", "b", "c"}));
    QCOMPARE(selected.row(), 1);
    QCOMPARE(day.model.at(1).N, QString("001"));
}

void TestIOSuffix::refusalIsToldOnceUntilAMarkWasCleared()
{
    Day day;
    for (const char *name : {"a_", "b_", "c_"})
        day.add(name);
    day.model.reloadFromDir();
    {
        const ReadOnly readOnly(day, "inp/20260731");
        for (const int row : {0, 1, 2, 0})
            QVERIFY(!day.model.clearNew(row));
    }
    QVERIFY(day.model.clearNew(0));
    {
        const ReadOnly readOnly(day, "inp/20260731");
        QVERIFY(day.model.clearNew(0)); // no longer new
        QVERIFY(!day.model.clearNew(2));
    }
    const QString line = text("412:00:00 Невозможно снять отметку нового файла:") + day.model.dirPath;
    QCOMPARE(day.journal(), QStringList({line + "/a_", line + "/c_", ""}));
}

void TestIOSuffix::takenNameIsNotWrittenOver_data()
{
    QTest::addColumn<bool>("isDirectory");
    row("by a file", false);
    row("by a directory", true);
}

void TestIOSuffix::takenNameIsNotWrittenOver()
{
    QFETCH(bool, isDirectory);
    Day day;
    if (isDirectory)
        day.add("a/inside", "OTHER");
    else
        day.add("a", "OTHER");
    day.addNew("a_");
    day.model.reloadFromDir();
    const int row = day.rowOf("a_");
    QVERIFY(!day.model.clearNew(row));
    QCOMPARE(day.model.at(row).fileName, QString("a_"));
    QVERIFY(!day.model.at(row).isNew); // this mark could be cleared
    QVERIFY(!day.isNew("a_"));
    QVERIFY(isYellow(day.model, row)); // the suffix is there
    QCOMPARE(day.read(day.place("a_")), QByteArray("TEXT"));
    QCOMPARE(day.read(day.place(isDirectory ? "a/inside" : "a")), QByteArray("OTHER"));
    QCOMPARE(day.journal().size(), 2);
    day.model.reloadFromDir();
    QCOMPARE(day.rowOf("a_"), row);
}

void TestIOSuffix::nameOfNothingButTheSuffixStays()
{
    Day day(0, {"_"});
    QVERIFY(!day.model.clearNew(0));
    QCOMPARE(day.model.at(0).fileName, QString("_"));
    QCOMPARE(day.read(day.place("_")), QByteArray("TEXT"));
}

void TestIOSuffix::whatTookTheFilesPlaceIsLeftAlone()
{
    Day day(0, {"a_"});
    day.remove("a_");
    day.add("a_/inside");
    QVERIFY(!day.model.clearNew(0));
    QCOMPARE(day.names("inp/20260731"), QStringList{"a_"});
}

void TestIOSuffix::rowOfAFileThatWasGoneGivesItsNameUp()
{
    Day day(0, {"a", "a_", "b"});
    const QAbstractItemModelTester tester(&day.model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    const QPersistentModelIndex selected = day.select("a_");
    day.remove("a");
    QVERIFY(day.model.clearNew(1));
    QCOMPARE(names(day.model), QStringList({"a", "b"}));
    QCOMPARE(selected.row(), 0);
    day.model.reloadFromDir();
    QCOMPARE(names(day.model), QStringList({"a", "b"}));
    QCOMPARE(selected.row(), 0);
    QCOMPARE(day.model.at(0).N, QString("001")); // the row that was selected
}

QTEST_GUILESS_MAIN(TestIOSuffix)
#include "test_io_suffix.moc"
