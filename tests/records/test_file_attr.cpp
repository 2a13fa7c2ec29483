#include "records/file_attr.h"
#include "tests/support/desk.h"
#include "tests/support/no_attributes.h"
#include "tests/support/row.h"

#include <QDir>
#include <QFile>
#include <QtTest>

namespace
{
QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}
} // namespace

/// The new-mark, on a file system with extended attributes and on one without.
class TestFileAttr : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { refuseAttributes = false; }

    void fileThatNobodyMarkedIsNotNew_data() { carriers(); }
    void fileThatNobodyMarkedIsNotNew();
    void markedFileIsNewUntilCleared_data() { carriers(); }
    void markedFileIsNewUntilCleared();
    void clearedFileMayBeMarkedAgain_data() { carriers(); }
    void clearedFileMayBeMarkedAgain();
    void clearingAnUnmarkedFileKeepsItNotNew_data() { carriers(); }
    void clearingAnUnmarkedFileKeepsItNotNew();
    void markBelongsToOneFile_data() { carriers(); }
    void markBelongsToOneFile();
    void missingFileIsNotNewAndCannotBeMarked_data() { carriers(); }
    void missingFileIsNotNewAndCannotBeMarked();
    void contentStaysAsItIs_data() { carriers(); }
    void contentStaysAsItIs();
    void markStandsInTheFileSystem();
    void markGoesWithARenamedFile();
    void fallbackFileIsHiddenFromLists();
    void foreignValueIsNotNew();

private:
    static void carriers();
};

void TestFileAttr::carriers()
{
    QTest::addColumn<bool>("refuse");
    QTest::addColumn<QString>("name");
    row("attribute", false, text("inp/20260731u001"));
    row("attribute, Cyrillic name", false, text("inp/20260731с001"));
    row("hidden file", true, text("inp/20260731u001"));
    row("hidden file, Cyrillic name", true, text("inp/20260731с001"));
}

void TestFileAttr::fileThatNobodyMarkedIsNotNew()
{
    QFETCH(bool, refuse);
    QFETCH(QString, name);
    Desk desk;
    refuseAttributes = refuse;
    desk.write(name, "text");
    QVERIFY(!CFileAttr(name).checkNew());
}

void TestFileAttr::markedFileIsNewUntilCleared()
{
    QFETCH(bool, refuse);
    QFETCH(QString, name);
    Desk desk;
    refuseAttributes = refuse;
    desk.write(name, "text");
    CFileAttr(name).setNew();
    QVERIFY(CFileAttr(name).checkNew());
    QVERIFY(CFileAttr(desk.path(name)).checkNew()); // by another path, as after a restart
    CFileAttr(name).clearNew();
    QVERIFY(!CFileAttr(name).checkNew());
}

void TestFileAttr::clearedFileMayBeMarkedAgain()
{
    QFETCH(bool, refuse);
    QFETCH(QString, name);
    Desk desk;
    refuseAttributes = refuse;
    desk.write(name, "text");
    CFileAttr(name).setNew();
    CFileAttr(name).clearNew();
    CFileAttr(name).setNew();
    QVERIFY(CFileAttr(name).checkNew());
}

void TestFileAttr::clearingAnUnmarkedFileKeepsItNotNew()
{
    QFETCH(bool, refuse);
    QFETCH(QString, name);
    Desk desk;
    refuseAttributes = refuse;
    desk.write(name, "text");
    CFileAttr(name).clearNew();
    QVERIFY(!CFileAttr(name).checkNew());
}

void TestFileAttr::markBelongsToOneFile()
{
    QFETCH(bool, refuse);
    QFETCH(QString, name);
    Desk desk;
    refuseAttributes = refuse;
    desk.write(name, "text");
    desk.write(name + "1", "text");
    CFileAttr(name).setNew();
    QVERIFY(!CFileAttr(name + "1").checkNew());
}

void TestFileAttr::missingFileIsNotNewAndCannotBeMarked()
{
    QFETCH(bool, refuse);
    QFETCH(QString, name);
    Desk desk;
    refuseAttributes = refuse;
    CFileAttr(name).setNew();
    QVERIFY(!CFileAttr(name).checkNew());
    CFileAttr(name).clearNew();
    QVERIFY(QDir("inp").entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).isEmpty());
}

void TestFileAttr::contentStaysAsItIs()
{
    QFETCH(bool, refuse);
    QFETCH(QString, name);
    Desk desk;
    refuseAttributes = refuse;
    desk.write(name, "text");
    CFileAttr(name).setNew();
    CFileAttr(name).clearNew();
    QCOMPARE(desk.read(name), QByteArray("text"));
    QCOMPARE(QDir("inp").entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(), 1);
}

void TestFileAttr::markStandsInTheFileSystem()
{
    Desk desk;
    desk.write("inp/a", "text");
    CFileAttr("inp/a").setNew();
    char value = 0;
    QCOMPARE(int(getxattr("inp/a", "user.velda.archive", &value, 1)), 1);
    QCOMPARE(value, '0');
    CFileAttr("inp/a").clearNew();
    QCOMPARE(int(getxattr("inp/a", "user.velda.archive", &value, 1)), 1);
    QCOMPARE(value, '1');
}

void TestFileAttr::markGoesWithARenamedFile()
{
    Desk desk;
    desk.write("inp/a_", "text");
    CFileAttr("inp/a_").setNew();
    QVERIFY(QFile::rename("inp/a_", "inp/a"));
    QVERIFY(CFileAttr("inp/a").checkNew());
}

void TestFileAttr::fallbackFileIsHiddenFromLists()
{
    Desk desk;
    refuseAttributes = true;
    desk.write("inp/a", "text");
    CFileAttr("inp/a").setNew();
    QCOMPARE(QDir("inp").entryList(QDir::Files), QStringList{"a"});
}

void TestFileAttr::foreignValueIsNotNew()
{
    Desk desk;
    desk.write("inp/a", "text");
    QCOMPARE(setxattr("inp/a", "user.velda.archive", "", 0, 0), 0);
    QVERIFY(!CFileAttr("inp/a").checkNew());
    QCOMPARE(setxattr("inp/a", "user.velda.archive", "00", 2, 0), 0);
    QVERIFY(!CFileAttr("inp/a").checkNew());
    QCOMPARE(setxattr("inp/a", "user.velda.archive", "x", 1, 0), 0);
    QVERIFY(!CFileAttr("inp/a").checkNew());
}

QTEST_GUILESS_MAIN(TestFileAttr)
#include "test_file_attr.moc"
