#include "app/state.h"
#include "tests/ui/window/archive_room.h"

namespace
{
void putNew(const ArchiveRoom &room, const QString &name)
{
    room.put(name, "ТЕКСТ " + name.toUtf8());
    CFileAttr(room.pathOf(name)).setNew();
    room.refresh();
}
} // namespace

/// The mark of a telegram that nobody has read: an attribute of its file, or "_" at the end of its name.
class TestArchiveMarks : public QObject
{
    Q_OBJECT

private slots:
    void newTelegramIsYellow_data() { everyDayTab(); }
    void newTelegramIsYellow();
    void choiceClearsTheMarkAtOnce_data() { everyDayTab(); }
    void choiceClearsTheMarkAtOnce();
    void choiceTakesTheSuffixOffTheName_data() { everyDayTab(); }
    void choiceTakesTheSuffixOffTheName();
    void bothCarriersGoTogether();
    void takenNameKeepsTheSuffix();
    void markClearedFromOutsideStaysYellowUntilSelected_data() { everyDayTab(); }
    void markClearedFromOutsideStaysYellowUntilSelected();
    void markSetFromOutsideIsSeenAtTheNextAppearance();
    void clickOnTheSameRowClearsNothing();
    void choiceInTheSearchClearsTheAttribute();
    void markedTelegramIsSelectedUnderItsShorterName();
};

void TestArchiveMarks::newTelegramIsYellow()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    putNew(room, "a");
    room.putAndShow({"b", "c_"});
    QCOMPARE(room.rows(), (QStringList{"a", "b", "c_"}));
    QVERIFY(room.isYellow(0));
    QVERIFY(!room.isYellow(1));
    QVERIFY(room.isYellow(2));
}

// "Selecting a new telegram clears its mark at once, and the row changes its look at the next reload."
void TestArchiveMarks::choiceClearsTheMarkAtOnce()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    putNew(room, "a");
    putNew(room, "b");
    room.click("a");
    QVERIFY(!CFileAttr(room.pathOf("a")).checkNew());
    QVERIFY(CFileAttr(room.pathOf("b")).checkNew());
    room.refresh();
    QVERIFY(!room.isYellow(0));
    QVERIFY(room.isYellow(1));
    QCOMPARE(room.selected(), "a");
}

void TestArchiveMarks::choiceTakesTheSuffixOffTheName()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    room.putAndShow({"a_", "b"});
    room.click("a_");
    QCOMPARE(room.rows(), (QStringList{"a", "b"}));
    QCOMPARE(room.text(), "ТЕКСТ a_");
    QVERIFY(QFile::exists(room.pathOf("a")));
    QVERIFY(!QFile::exists(room.pathOf("a_")));
    room.refresh();
    QCOMPARE(room.rows(), (QStringList{"a", "b"}));
    QVERIFY(!room.isYellow(0));
}

void TestArchiveMarks::bothCarriersGoTogether()
{
    const ArchiveRoom room(CArchivePage::Received);
    putNew(room, "a_");
    room.click("a_");
    QCOMPARE(room.rows(), QStringList{"a"});
    QVERIFY(!CFileAttr(room.pathOf("a")).checkNew());
    QVERIFY(!room.isYellow(0));
}

void TestArchiveMarks::takenNameKeepsTheSuffix()
{
    ArchiveRoom room(CArchivePage::Received);
    room.putAndShow({"a", "a_"});
    (void)room.news();
    room.click("a_");
    QCOMPARE(room.desk.read(room.place("a")), QByteArray("ТЕКСТ a")); // not written over
    QCOMPARE(room.rows(), (QStringList{"a", "a_"}));
    QCOMPARE(room.text(), "ТЕКСТ a_");
    QVERIFY(room.isYellow(1));       // as the disk has it
    QCOMPARE(room.news().size(), 1); // in one outage
    room.click("a");
    room.click("a_");
    QCOMPARE(room.news().size(), 0);
}

void TestArchiveMarks::markClearedFromOutsideStaysYellowUntilSelected()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    putNew(room, "a");
    CFileAttr(room.pathOf("a")).clearNew();
    room.refresh();
    QVERIFY(room.isYellow(0));
    room.click("a");
    room.refresh();
    QVERIFY(!room.isYellow(0));
}

void TestArchiveMarks::markSetFromOutsideIsSeenAtTheNextAppearance()
{
    const ArchiveRoom room(CArchivePage::Received);
    room.putAndShow({"a"});
    CFileAttr(room.pathOf("a")).setNew();
    room.refresh();
    QVERIFY(!room.isYellow(0));
    room.page.date->setDate(QDate(2026, 7, 30));
    room.page.date->setDate(QDate(2026, 7, 31));
    QVERIFY(room.isYellow(0));
}

void TestArchiveMarks::clickOnTheSameRowClearsNothing()
{
    const ArchiveRoom room(CArchivePage::Received);
    putNew(room, "a");
    room.click("a");
    CFileAttr(room.pathOf("a")).setNew();
    room.click("a");
    QVERIFY(CFileAttr(room.pathOf("a")).checkNew());
}

void TestArchiveMarks::choiceInTheSearchClearsTheAttribute()
{
    const ArchiveRoom room(CArchivePage::Found);
    putNew(room, "a");
    room.putAndShow({"b_"});
    room.click("a");
    QVERIFY(!CFileAttr(room.pathOf("a")).checkNew());
    room.click("b_");
    QCOMPARE(room.rows(), (QStringList{"a", "b_"}));
    QVERIFY(QFile::exists(room.pathOf("b_"))); // its row is here, but its mark is the other tab's
}

void TestArchiveMarks::markedTelegramIsSelectedUnderItsShorterName()
{
    // The row of a file that went stands above; it gives way to the one that takes its name.
    const ArchiveRoom room(CArchivePage::Received);
    room.putAndShow({"a", "a_", "b"});
    QVERIFY(QFile::remove(room.pathOf("a")));
    room.click("a_");
    QCOMPARE(room.rows(), (QStringList{"a", "b"}));
    QCOMPARE(room.selected(), "a");
    QCOMPARE(room.text(), "ТЕКСТ a_");
}

QTEST_MAIN(TestArchiveMarks)
#include "test_archive_marks.moc"
