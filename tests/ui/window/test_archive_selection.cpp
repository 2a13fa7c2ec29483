#include "app/state.h"
#include "tests/support/row.h"
#include "tests/ui/window/archive_room.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>

/// What happens to the selected row and to the text on view while files come, go and change.
class TestArchiveSelection : public QObject
{
    Q_OBJECT

private slots:
    void choiceShowsTheText_data() { everyTab(); }
    void choiceShowsTheText();
    void selectionStaysWithItsFile_data() { everyDayTab(); }
    void selectionStaysWithItsFile();
    void textOnViewDoesNotMoveUnderTheReload_data() { everyDayTab(); }
    void textOnViewDoesNotMoveUnderTheReload();
    void deletedFileLeavesItsTextAndNoSelection_data() { everyDayTab(); }
    void deletedFileLeavesItsTextAndNoSelection();
    void neighbourOfADeletedFileKeepsItsMark();
    void replacedFileIsReadAtTheNextChoice_data() { everyTab(); }
    void replacedFileIsReadAtTheNextChoice();
    void renamedFileIsAnotherRow_data() { everyDayTab(); }
    void renamedFileIsAnotherRow();
    void fileThatIsGoneSaysSo_data() { everyTab(); }
    void fileThatIsGoneSaysSo();
    void otherDayLeavesTheTextOnView_data() { everyDayTab(); }
    void otherDayLeavesTheTextOnView();
    void sameNameOfAnotherDayIsNotSelected_data() { everyDayTab(); }
    void sameNameOfAnotherDayIsNotSelected();
    void actionsNeedAText_data() { everyTab(); }
    void actionsNeedAText();
    void tabsKeepTheirTextsApart();
};

namespace
{
QList<QPushButton *> actions(const CArchivePage &page)
{
    QList<QPushButton *> buttons{page.toEditor, page.print};
    for (QPushButton *button : {page.save, page.toPerforator, page.forward})
        if (button != nullptr)
            buttons << button;
    return buttons;
}
} // namespace

void TestArchiveSelection::choiceShowsTheText()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    room.putAndShow({"a", "b"});
    room.click("b");
    QCOMPARE(room.text(), "ТЕКСТ b");
    room.click("a");
    QCOMPARE(room.text(), "ТЕКСТ a");
    QCOMPARE(room.selected(), "a");
}

void TestArchiveSelection::selectionStaysWithItsFile()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    room.putAndShow({"b", "d", "f"});
    room.click("d");
    QSignalSpy chosen(room.page.table, &CArchiveTable::rowChosen);
    room.putAndShow({"a", "c", "e", "g"});
    QCOMPARE(room.selected(), "d");
    QVERIFY(QFile::remove(room.pathOf("b")));
    room.refresh();
    QCOMPARE(room.selected(), "d");
    for (const char *name : {"a", "c", "e", "f", "g"})
        QVERIFY(QFile::remove(room.pathOf(QString::fromLatin1(name))));
    room.refresh();
    QCOMPARE(room.rows(), QStringList{"d"});
    QCOMPARE(room.selected(), "d");
    QCOMPARE(chosen.count(), 0);
    QCOMPARE(room.text(), "ТЕКСТ d");
}

void TestArchiveSelection::textOnViewDoesNotMoveUnderTheReload()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    room.put("a", QByteArray("ЭТО СТРОКА\r\n").repeated(500));
    room.refresh();
    room.click("a");
    QScrollBar *bar = room.page.text->verticalScrollBar();
    bar->setValue(100);
    QCOMPARE(bar->value(), 100);
    QSignalSpy changed(room.page.text->document(), &QTextDocument::contentsChanged);
    room.put("a", "ДРУГОЙ");
    room.putAndShow({"b", "c"});
    QVERIFY(QFile::remove(room.pathOf("a")));
    room.refresh();
    QCOMPARE(bar->value(), 100);
    QCOMPARE(changed.count(), 0);
}

void TestArchiveSelection::deletedFileLeavesItsTextAndNoSelection()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    room.putAndShow({"a", "b", "c"});
    for (const char *name : {"b", "c", "a"}) { // from the middle, the last one, the only one
        room.click(QString::fromLatin1(name));
        QVERIFY(QFile::remove(room.pathOf(QString::fromLatin1(name))));
        QCOMPARE(room.selected(), QString::fromLatin1(name)); // the row goes at the scan
        room.refresh();
        QCOMPARE(room.selected(), QString());
        QCOMPARE(room.text(), QStringLiteral("ТЕКСТ ") + name);
        QVERIFY(room.page.toEditor->isEnabled());
    }
}

void TestArchiveSelection::neighbourOfADeletedFileKeepsItsMark()
{
    const ArchiveRoom room(CArchivePage::Received);
    room.put("a", "А");
    for (const char *name : {"b", "c"}) {
        room.put(name, "НОВОЕ");
        CFileAttr(room.pathOf(name)).setNew();
    }
    room.refresh();
    room.click("b");
    CFileAttr(room.pathOf("a")).setNew();
    QVERIFY(QFile::remove(room.pathOf("b")));
    room.refresh();
    QCOMPARE(room.rows(), (QStringList{"a", "c"}));
    QVERIFY(CFileAttr(room.pathOf("a")).checkNew());
    QVERIFY(CFileAttr(room.pathOf("c")).checkNew());
    QVERIFY(room.isYellow(1));
}

void TestArchiveSelection::replacedFileIsReadAtTheNextChoice()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    room.putAndShow({"a", "b"});
    room.click("a");
    QVERIFY(QFile::remove(room.pathOf("a")));
    room.put("a", "НОВЫЙ");
    if (kind != CArchivePage::Found) // where a new search begins a new list
        room.refresh();
    QCOMPARE(room.selected(), "a");
    QCOMPARE(room.text(), "ТЕКСТ a");
    room.click("b");
    room.click("a");
    QCOMPARE(room.text(), "НОВЫЙ");
}

void TestArchiveSelection::renamedFileIsAnotherRow()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    room.putAndShow({"a", "b"});
    room.click("a");
    QVERIFY(QFile::rename(room.pathOf("a"), room.pathOf("c")));
    room.refresh();
    QCOMPARE(room.rows(), (QStringList{"b", "c"}));
    QCOMPARE(room.selected(), QString());
    QCOMPARE(room.text(), "ТЕКСТ a");
}

void TestArchiveSelection::fileThatIsGoneSaysSo()
{
    QFETCH(CArchivePage::Kind, kind);
    ArchiveRoom room(kind);
    room.putAndShow({"a", "b"});
    room.click("a");
    QVERIFY(QFile::remove(room.pathOf("b")));
    (void)room.news();
    room.click("b");
    QCOMPARE(room.text(), QString());
    QCOMPARE(room.page.text->placeholderText(), "Невозможно прочитать файл");
    QVERIFY(!room.page.toEditor->isEnabled());
    const QStringList news = room.news();
    QCOMPARE(news.size(), 1);
    QVERIFY(news.first().endsWith("Невозможно прочитать файл " + room.place("b")));
    room.click(room.page.registers); // has nothing to show either
    QCOMPARE(room.page.text->placeholderText(), "Невозможно прочитать файл");
    room.click("a");
    QCOMPARE(room.text(), "ТЕКСТ a");
    QCOMPARE(room.page.text->placeholderText(), QString());
}

void TestArchiveSelection::otherDayLeavesTheTextOnView()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    room.putAndShow({"a"});
    room.click("a");
    room.page.date->setDate(QDate(2026, 7, 30));
    QCOMPARE(room.rows(), QStringList());
    QCOMPARE(room.text(), "ТЕКСТ a");
}

void TestArchiveSelection::sameNameOfAnotherDayIsNotSelected()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    room.put("a", "ВЧЕРА", "20260730");
    room.putAndShow({"a"});
    room.click("a");
    room.page.date->setDate(QDate(2026, 7, 30));
    QCOMPARE(room.rows(), QStringList{"a"});
    QCOMPARE(room.selected(), QString());
    QCOMPARE(room.text(), "ТЕКСТ a");
    room.click("a");
    QCOMPARE(room.text(), "ВЧЕРА");
}

void TestArchiveSelection::actionsNeedAText()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    room.put("empty", "");
    room.put("marks", "|#&");
    room.put("text", "А");
    room.refresh();
    const auto expect = [&room](bool on) {
        for (const QPushButton *button : actions(room.page))
            QVERIFY2(button->isEnabled() == on, qPrintable(button->text()));
    };
    expect(false);
    for (const char *name : {"text", "empty", "text", "marks"}) {
        room.click(QString::fromLatin1(name));
        expect(name == QLatin1String("text"));
    }
    room.click(room.page.registers); // with them there is something to see
    expect(true);
    room.click(room.page.registers);
    expect(false);
}

void TestArchiveSelection::tabsKeepTheirTextsApart()
{
    const ArchiveRoom room(CArchivePage::Received);
    room.put("a", "ПРИНЯТО");
    room.desk.write("out/20260731/b", "ПЕРЕДАНО");
    room.refresh();
    room.form->searchSearch();
    room.awaitSearch();
    room.click("a");
    for (const CArchivePage *page : {room.form->outputPage, room.form->searchPage->found}) {
        QCOMPARE(page->text->toPlainText(), QString());
        page->table->selectRow(page->table->model()->rowCount() - 1);
        QCOMPARE(page->text->toPlainText(), "ПЕРЕДАНО");
    }
    QCOMPARE(room.text(), "ПРИНЯТО");
}

QTEST_MAIN(TestArchiveSelection)
#include "test_archive_selection.moc"
