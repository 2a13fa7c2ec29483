#include "tests/records/archive_day.h"
#include "tests/support/no_ordinary_file.h"
#include "tests/support/odd_names.h"
#include "tests/support/row.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QtTest>

using Mode = QAbstractItemModelTester::FailureReportingMode;

/// The list of a day's files beside its directory.
class TestIOReload : public QObject
{
    Q_OBJECT

private slots:
    void filesAreListedByName();
    void rowHoldsPlaceTimeAndMark();
    void connectionsAreHiddenButForTheCentre_data();
    void connectionsAreHiddenButForTheCentre();
    void fileRemovedFromOutsideGoesAtTheNextReload();
    void fileThatLostItsMarkStaysYellowUntilItIsSelected();
    void fileThatGotAMarkIsNotShownAsNew();
    void knownRowKeepsItsNumberAndPlace();
    void fileReplacedByAnotherKeepsItsRow();
    void selectionStaysWithItsFile();
    void nothingChangedEmitsNothing();
    void newFilesComeInOneRun();
    void missingDirectoryHasNoFiles_data();
    void missingDirectoryHasNoFiles();
    void otherDayHasRowsOfItsOwn();
    void oddNamesAreListed_data() { oddNames(); }
    void oddNamesAreListed();
    void oddNamesHaveTheMark_data() { oddNames(); }
    void oddNamesHaveTheMark();
    void oddContentIsListed();
    void whatIsNoFileIsLeftOutButForLinks_data() { specialFiles(); }
    void whatIsNoFileIsLeftOutButForLinks();
    void brokenLinkIsLeftOut();
};

void TestIOReload::filesAreListedByName()
{
    const Day day(0, {"20260731u010.003", "20260731u002.001", "B", "a"});
    QCOMPARE(names(day.model), QStringList({"20260731u002.001", "20260731u010.003", "B", "a"}));
}

void TestIOReload::rowHoldsPlaceTimeAndMark()
{
    Day day;
    const QTime before = QTime::currentTime();
    day.add("a");
    day.addNew("b");
    day.model.reloadFromDir();
    QCOMPARE(day.model.at(0).N, QString("000"));
    QCOMPARE(day.model.at(1).N, QString("001"));
    QVERIFY(!day.model.at(0).isNew);
    QVERIFY(day.model.at(1).isNew);
    QVERIFY(!isYellow(day.model, 0));
    QVERIFY(isYellow(day.model, 1));
    const int age = before.msecsTo(day.model.at(0).time); // the file system's clock goes in coarser steps
    QVERIFY2(age > -1000 || age < -86000000, qPrintable(QString::number(age)));
}

void TestIOReload::connectionsAreHiddenButForTheCentre_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("hide");
    QTest::addColumn<QStringList>("shown");
    QTest::addColumn<QStringList>("numbers");
    const QStringList all{"S1", "a", "s20260731_120000", "z", text("с")};
    const QStringList fewer{"S1", "a", "z", text("с")};
    const QStringList allNumbers{"000", "001", "002", "003", "004"};
    row("CKS", 0, false, all, allNumbers);
    row("CKS, hide", 0, true, all, allNumbers);
    row("SKK", 1, false, all, allNumbers);
    row("SKK, hide", 1, true, fewer, QStringList{"000", "001", "003", "004"});
    row("direct", 2, false, all, allNumbers);
    row("direct, hide", 2, true, fewer, QStringList{"000", "001", "003", "004"});
}

void TestIOReload::connectionsAreHiddenButForTheCentre()
{
    QFETCH(int, mode);
    QFETCH(bool, hide);
    Day day(mode);
    QVERIFY(!day.model.hideConnections); // as it is made
    for (const QString &name : {text("a"), text("s20260731_120000"), text("z"), text("S1"), text("с")})
        day.add(name);
    day.model.hideConnections = hide;
    day.model.reloadFromDir();
    QTEST(names(day.model), "shown");
    QStringList numbers;
    for (int row = 0; row < day.model.rowCount(); ++row)
        numbers << day.model.at(row).N;
    QTEST(numbers, "numbers");
    day.model.hideConnections = !hide; // the switch takes effect on rows that are there
    day.model.reloadFromDir();
    QCOMPARE(day.rowOf("s20260731_120000") >= 0, mode == 0 || hide);
}

void TestIOReload::fileRemovedFromOutsideGoesAtTheNextReload()
{
    Day day(0, {"a", "b", "c"});
    day.remove("b");
    QCOMPARE(names(day.model), QStringList({"a", "b", "c"}));
    day.model.reloadFromDir();
    QCOMPARE(names(day.model), QStringList({"a", "c"}));
}

void TestIOReload::fileThatLostItsMarkStaysYellowUntilItIsSelected()
{
    Day day;
    day.addNew("a");
    day.model.reloadFromDir();
    CFileAttr(day.path(day.place("a"))).clearNew();
    day.model.reloadFromDir();
    QVERIFY(isYellow(day.model, 0));
    QVERIFY(day.model.clearNew(0));
    QVERIFY(!isYellow(day.model, 0));
}

void TestIOReload::fileThatGotAMarkIsNotShownAsNew()
{
    Day day(0, {"a"});
    CFileAttr(day.path(day.place("a"))).setNew();
    day.model.reloadFromDir();
    QVERIFY(!isYellow(day.model, 0));
}

void TestIOReload::knownRowKeepsItsNumberAndPlace()
{
    Day day(0, {"m"});
    const QTime time = day.model.at(0).time;
    day.add("a");
    day.model.reloadFromDir();
    QCOMPARE(names(day.model), QStringList({"m", "a"}));
    QCOMPARE(day.model.at(0).N, QString("000")); // it is file 1 now
    QCOMPARE(day.model.at(1).N, QString("000"));
    QCOMPARE(day.model.at(0).time, time);
}

void TestIOReload::fileReplacedByAnotherKeepsItsRow()
{
    Day day(0, {"a", "b"});
    const QPersistentModelIndex selected = day.select("b");
    day.remove("b");
    day.addNew("b");
    day.model.reloadFromDir();
    QVERIFY(selected.isValid());
    QVERIFY(!day.model.at(selected.row()).isNew);
}

void TestIOReload::selectionStaysWithItsFile()
{
    Day day(0, {"a", "b", "c", "d", "e"});
    const QAbstractItemModelTester tester(&day.model, Mode::QtTest);
    const QPersistentModelIndex selected = day.select("c");
    day.remove("a");
    day.remove("d");
    for (const char *name : {"aa", "bb", "z"})
        day.add(name);
    day.model.reloadFromDir();
    QCOMPARE(names(day.model), QStringList({"b", "c", "e", "aa", "bb", "z"}));
    QCOMPARE(selected.row(), 1);
    QCOMPARE(selected.data(Qt::UserRole).toString(), QString("c"));
    day.remove("c");
    day.model.reloadFromDir();
    QVERIFY(!selected.isValid());
}

void TestIOReload::nothingChangedEmitsNothing()
{
    Day day(0, {"a", "b"});
    QSignalSpy inserted(&day.model, &CTableViewModel_IO::rowsInserted);
    QSignalSpy removed(&day.model, &CTableViewModel_IO::rowsRemoved);
    QSignalSpy changed(&day.model, &CTableViewModel_IO::dataChanged);
    QSignalSpy reset(&day.model, &CTableViewModel_IO::modelReset);
    day.model.reloadFromDir();
    QCOMPARE(inserted.size() + removed.size() + changed.size() + reset.size(), 0);
}

void TestIOReload::newFilesComeInOneRun()
{
    Day day(0, {"m"});
    QSignalSpy inserted(&day.model, &CTableViewModel_IO::rowsInserted);
    day.add("a");
    day.add("z");
    day.model.reloadFromDir();
    QCOMPARE(inserted.size(), 1);
    QCOMPARE(inserted.first().mid(1), QVariantList({1, 2}));
}

void TestIOReload::missingDirectoryHasNoFiles_data()
{
    QTest::addColumn<QString>("directory");
    row("another day", "inp/20260730");
    row("none", "");
    row("a file", "inp/20260731/a");
}

void TestIOReload::missingDirectoryHasNoFiles()
{
    QFETCH(QString, directory);
    Day day(0, {"a"});
    day.write("in the current directory", "TEXT");
    day.model.dirPath = directory;
    day.model.reloadFromDir();
    QCOMPARE(names(day.model), QStringList());
}

void TestIOReload::otherDayHasRowsOfItsOwn()
{
    Day day;
    day.addNew("a");
    day.add("b");
    day.model.reloadFromDir();
    const QPersistentModelIndex selected = day.select("a");
    day.write("inp/20260730/a", "TEXT");
    day.model.dirPath = day.path("inp/20260730");
    day.model.reloadFromDir();
    QCOMPARE(names(day.model), QStringList{"a"});
    QVERIFY(!day.model.at(0).isNew);
    QVERIFY(!selected.isValid());
}

void TestIOReload::oddNamesAreListed()
{
    QFETCH(QString, name);
    Day day;
    day.addNew(name);
    day.model.reloadFromDir();
    QCOMPARE(names(day.model), QStringList{name});
}

void TestIOReload::oddNamesHaveTheMark()
{
    QFETCH(QString, name);
    Day day;
    day.addNew(name);
    day.model.reloadFromDir();
    QVERIFY(day.model.at(0).isNew);
    QVERIFY(day.model.clearNew(0));
    QVERIFY(!day.isNew(name));
}

void TestIOReload::oddContentIsListed()
{
    Day day;
    day.add("empty", "");
    day.add("zero", QByteArray("\0TEXT", 5));
    QVERIFY(QFile::resize(day.path(day.place("zero")), 50 << 20));
    day.model.reloadFromDir();
    QCOMPARE(names(day.model), QStringList({"empty", "zero"}));
}

void TestIOReload::whatIsNoFileIsLeftOutButForLinks()
{
    QFETCH(SpecialFile, kind);
    const bool isLink = kind == SpecialFile::LinkToFifo || kind == SpecialFile::LinkToDevice;
    const QString name = QStringLiteral("20260731u002.002");
    Day day(0, {"20260731u001.001"});
    place(day, kind, day.place(name));
    day.add(".20260731u003.003.new"); // hidden, as the new-mark of a disk without attributes
    day.model.reloadFromDir();
    QCOMPARE(names(day.model),
             QStringList{"20260731u001.001"} + (isLink ? QStringList{name} : QStringList()));
    QVERIFY(stands(day, kind, day.place(name)));
}

void TestIOReload::brokenLinkIsLeftOut()
{
    Day day(0, {"a"});
    QVERIFY(QFile::link(day.path(day.place("a")), day.path(day.place("link"))));
    QVERIFY(QFile::link(day.path("nowhere"), day.path(day.place("broken"))));
    day.model.reloadFromDir();
    QCOMPARE(names(day.model), QStringList({"a", "link"}));
}

QTEST_GUILESS_MAIN(TestIOReload)
#include "test_io_reload.moc"
