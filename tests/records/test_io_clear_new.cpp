#include "tests/records/archive_day.h"
#include "tests/support/no_attributes.h"
#include "tests/support/read_only.h"
#include "tests/support/row.h"

#include <QDir>
#include <QSignalSpy>
#include <QtTest>

/// What the selection of a new file does to its mark: the attribute or the hidden file, and the suffix of its
/// name.
class TestIOClearNew : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { refuseAttributes = false; }

    void markGoesFromRowFileAndName_data();
    void markGoesFromRowFileAndName();
    void rowThatIsNotNewIsLeftAlone();
    void markThatCannotBeWrittenStaysOnShow_data();
    void markThatCannotBeWrittenStaysOnShow();
    void journalShowsNoControlCharacters();
    void missingFileStaysAsItIsUntilTheReload();
};

void TestIOClearNew::markGoesFromRowFileAndName_data()
{
    QTest::addColumn<bool>("refuse");
    QTest::addColumn<bool>("marked");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shorter");
    row("attribute", false, true, "a", "a");
    row("hidden file", true, true, "a", "a");
    row("suffix", false, false, "a_", "a");
    row("suffix, no attributes", true, false, "a_", "a");
    row("attribute and suffix", false, true, "a_", "a");
    row("hidden file and suffix", true, true, "a_", "a");
    row("two suffixes", false, false, "a__", "a_");
    row("odd name", false, true, text(" \"с\" \n_"), text(" \"с\" \n"));
}

void TestIOClearNew::markGoesFromRowFileAndName()
{
    QFETCH(bool, refuse);
    QFETCH(bool, marked);
    QFETCH(QString, name);
    QFETCH(QString, shorter);
    refuseAttributes = refuse;
    Day day;
    day.add(name, "TEXT");
    if (marked)
        CFileAttr(day.path(day.place(name))).setNew();
    day.model.reloadFromDir();
    QVERIFY(isYellow(day.model, 0));
    QSignalSpy changed(&day.model, &CTableViewModel_IO::dataChanged);
    QVERIFY(day.model.clearNew(0));
    QCOMPARE(day.model.at(0).fileName, shorter);
    QCOMPARE(day.model.pathAt(0), day.path(day.place(shorter)));
    QCOMPARE(isYellow(day.model, 0), shorter.endsWith('_'));
    QCOMPARE(changed.size(), 1);
    QCOMPARE(changed.first().at(0).value<QModelIndex>(), day.model.index(0, 0));
    QCOMPARE(changed.first().at(1).value<QModelIndex>(), day.model.index(0, 2));
    QVERIFY(!day.isNew(shorter));
    QCOMPARE(day.read(day.place(shorter)), QByteArray("TEXT"));
    const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    QCOMPARE(QDir(day.model.dirPath).entryList(all), QStringList{shorter});
    QCOMPARE(day.journal(), QStringList{QString()});
}

void TestIOClearNew::rowThatIsNotNewIsLeftAlone()
{
    Day day(0, {"a"});
    QSignalSpy changed(&day.model, &CTableViewModel_IO::dataChanged);
    QVERIFY(day.model.clearNew(0));
    QCOMPARE(changed.size(), 0);
    char value = 0;
    QCOMPARE(int(getxattr("inp/20260731/a", "user.velda.archive", &value, 1)), -1);
}

void TestIOClearNew::markThatCannotBeWrittenStaysOnShow_data()
{
    QTest::addColumn<bool>("refuse");
    QTest::addColumn<bool>("marked");
    QTest::addColumn<QString>("name");
    row("attribute", false, true, "a");
    row("hidden file", true, true, "a");
    row("suffix", false, false, "a_");
    row("both", false, true, "a_");
}

void TestIOClearNew::markThatCannotBeWrittenStaysOnShow()
{
    QFETCH(bool, refuse);
    QFETCH(bool, marked);
    QFETCH(QString, name);
    refuseAttributes = refuse;
    Day day;
    day.add(name);
    if (marked)
        CFileAttr(day.path(day.place(name))).setNew();
    day.model.reloadFromDir();
    {
        const ReadOnly readOnly(day, "inp/20260731");
        QVERIFY(!day.model.clearNew(0));
        day.model.reloadFromDir();
        QVERIFY(!day.model.clearNew(0));
        QCOMPARE(names(day.model), QStringList{name});
        QCOMPARE(day.model.at(0).isNew, marked);
        QVERIFY(isYellow(day.model, 0));
        QCOMPARE(day.isNew(name), marked);
    }
    const QString line = text("412:00:00 Невозможно снять отметку нового файла:") + day.model.pathAt(0);
    QCOMPARE(day.journal(), QStringList({line, ""}));
    QCOMPARE(day.read(day.place(name)), QByteArray("TEXT"));
    QVERIFY(day.model.clearNew(0)); // as soon as the disk can be written
    QVERIFY(!isYellow(day.model, 0));
    QCOMPARE(day.model.at(0).fileName, QString("a"));
}

void TestIOClearNew::journalShowsNoControlCharacters()
{
    Day day(0, {"a\n\2b", "a\n\2b_"});
    QVERIFY(!day.model.clearNew(1));
    QVERIFY(day.journal().first().endsWith("/a??b_"));
}

void TestIOClearNew::missingFileStaysAsItIsUntilTheReload()
{
    Day day;
    day.addNew("a_");
    day.model.reloadFromDir();
    day.remove("a_");
    QVERIFY(!day.model.clearNew(0));
    QVERIFY(day.model.at(0).isNew);
    QCOMPARE(names(day.model), QStringList{"a_"});
    QCOMPARE(day.journal(), QStringList{QString()});
    day.model.reloadFromDir();
    QCOMPARE(day.model.rowCount(), 0);
}

QTEST_GUILESS_MAIN(TestIOClearNew)
#include "test_io_clear_new.moc"
