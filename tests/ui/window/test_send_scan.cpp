// The tab "Передача" while the queue changes under the operator's hands.

#include "app/clock.h"
#include "app/state.h"
#include "tests/support/no_ordinary_file.h"
#include "tests/support/possible_name.h"
#include "tests/ui/window/send_tab.h"

#include <QScrollBar>

namespace
{
const QString A = QStringLiteral("20260731u001"), B = QStringLiteral("20260731u002"),
              C = QStringLiteral("20260731u003");

QString recordAt(const char *time)
{
    return QStringLiteral("123456|S|31.07.2026 %1|u|3|N|").arg(QLatin1String(time));
}
} // namespace

class TestSendScan : public QObject
{
    Q_OBJECT

private slots:
    void selectionStaysWithItsFileWhenRowsComeAndGo();
    void selectionStaysWithItsFileWhenTheOrderChanges();
    void textNeitherJumpsNorReloads();
    void failedFileStaysSelectedWhenItsTriesAreRaised();
    void fileThatGoesLeavesItsView();
    void replacedFileIsReadAtTheNextSelection();
    void openMenuHoldsTheRows_data();
    void openMenuHoldsTheRows();
    void menuActsOnItsFileThoughOthersCame();
    void fileThatGoesUnderTheMenuIsToldOnce();
    void menuOverNoSelectionStaysAway();
    void menuOfTheTextHoldsTheRowsToo();
    void sentFileIsNotOfferedAgainUnderTheMenu();
    void spentTryHoldsUnderTheMenu();
    void oddNamesAreShownAndDeleted_data();
    void oddNamesAreShownAndDeleted();
    void whatIsNoFileIsNeitherReadNorHarmed_data() { specialFiles(); }
    void whatIsNoFileIsNeitherReadNorHarmed();
};

void TestSendScan::selectionStaysWithItsFileWhenRowsComeAndGo()
{
    SendTab tab(CKS);
    tab.queue(B);
    tab.queue(C);
    tab.form->scanDir();
    tab.click(B);
    tab.queue(A);
    tab.form->scanDir();
    QCOMPARE(tab.selected(tab.waiting), B);
    tab.remove(C);
    tab.form->scanDir();
    QCOMPARE(tab.selected(tab.waiting), B);
    QCOMPARE(tab.form->sendSelectedPath(), QDir::toNativeSeparators("out/" + B));
}

void TestSendScan::selectionStaysWithItsFileWhenTheOrderChanges()
{
    SendTab tab(SKK);
    tab.queueWithRecord(A, recordAt("10:00"));
    tab.queueWithRecord(B, recordAt("11:00"));
    tab.form->scanDir();
    tab.click(A);
    tab.queueWithRecord(A, recordAt("13:00"));
    tab.queueWithRecord(C, recordAt("09:00"));
    tab.form->scanDir();
    QCOMPARE(tab.names(tab.waiting), QStringList({C, B, A}));
    QCOMPARE(tab.selected(tab.waiting), A);
    QTest::mouseClick(tab.page->remove, Qt::LeftButton);
    QCOMPARE(tab.names(tab.waiting), QStringList({C, B}));
}

void TestSendScan::textNeitherJumpsNorReloads()
{
    SendTab tab(CKS);
    tab.queue(A, QByteArray("СТРОКА\r\n").repeated(500));
    tab.form->scanDir();
    tab.click(A);
    tab.page->text->verticalScrollBar()->setValue(200);
    QTextCursor cursor = tab.page->text->textCursor();
    cursor.setPosition(1500);
    cursor.setPosition(1600, QTextCursor::KeepAnchor);
    tab.page->text->setTextCursor(cursor);
    const int row = tab.page->text->verticalScrollBar()->value();
    const QSignalSpy changed(tab.page->text, &QPlainTextEdit::textChanged);
    tab.queue(A, "ДРУГОЙ");
    tab.queue(B);
    for (int i = 0; i < 3; ++i)
        tab.form->scanDir();
    QCOMPARE(changed.count(), 0);
    QCOMPARE(tab.page->text->verticalScrollBar()->value(), row);
    QCOMPARE(tab.page->text->textCursor().selectedText().size(), 100);
}

void TestSendScan::failedFileStaysSelectedWhenItsTriesAreRaised()
{
    SendTab tab(SKK);
    tab.queueWithRecord(A, QStringLiteral("123456|S|31.07.2026 11:00|u|0|N|"));
    tab.form->scanDir();
    tab.click(A);
    tab.queueWithRecord(A, QStringLiteral("123456|S|31.07.2026 11:00|u|2|N|")); // by another program
    tab.form->scanDir();
    QCOMPARE(tab.selected(tab.waiting), A);
    QVERIFY(tab.failed->isHidden());
    QVERIFY(!tab.page->reSend->isEnabled());
    QCOMPARE(tab.form->sendPath, QDir::toNativeSeparators("out/" + A));
}

void TestSendScan::fileThatGoesLeavesItsView()
{
    SendTab tab(CKS);
    tab.queue(A, "ПЕРВЫЙ");
    tab.queue(B, "ВТОРОЙ");
    tab.form->scanDir();
    tab.click(A);
    tab.remove(A);
    tab.form->scanDir();
    QCOMPARE(tab.names(tab.waiting), QStringList{B});
    QCOMPARE(tab.text(), QStringLiteral("ПЕРВЫЙ"));
    QCOMPARE(tab.selected(tab.waiting), QString());
    QVERIFY(!tab.page->remove->isEnabled());
    tab.form->sendDeleteFile();
    QVERIFY(tab.isQueued(B));
}

void TestSendScan::replacedFileIsReadAtTheNextSelection()
{
    SendTab tab(CKS);
    tab.queue(A, "ПЕРВЫЙ");
    tab.queue(B, "ВТОРОЙ");
    tab.form->scanDir();
    tab.click(A);
    tab.queue(A, "ЗАМЕНЕН");
    tab.form->scanDir();
    tab.click(A);
    QCOMPARE(tab.text(), QStringLiteral("ПЕРВЫЙ"));
    tab.click(B);
    tab.click(A);
    QCOMPARE(tab.text(), QStringLiteral("ЗАМЕНЕН"));
}

void TestSendScan::openMenuHoldsTheRows_data()
{
    QTest::addColumn<bool>("byKey");
    row("left by Esc", true);
    row("an entry chosen", false);
}

void TestSendScan::openMenuHoldsTheRows()
{
    QFETCH(bool, byKey);
    SendTab tab(SKK);
    tab.queueWithRecord(B, recordAt("11:00"));
    tab.form->scanDir();
    QMenu *menu = tab.openMenu(B);
    tab.queueWithRecord(A, recordAt("10:00"));
    tab.tick(10);
    tab.form->scanDir();
    QCOMPARE(tab.names(tab.waiting), QStringList{B});
    if (byKey)
        QTest::keyClick(menu, Qt::Key_Escape);
    else
        tab.choose(menu, tab.page->pause);
    tab.form->scanDir();
    QCOMPARE(tab.names(tab.waiting), byKey ? QStringList({A, B}) : QStringList{A});
    QCOMPARE(tab.selected(byKey ? tab.waiting : tab.failed), B);
}

void TestSendScan::menuActsOnItsFileThoughOthersCame()
{
    SendTab tab(SKK);
    tab.queueWithRecord(B, recordAt("11:00"));
    tab.form->scanDir();
    QMenu *menu = tab.openMenu(B);
    tab.queueWithRecord(A, recordAt("10:00"));
    tab.form->scanDir();
    tab.choose(menu, tab.page->pause);
    QCOMPARE(tab.record(A), recordAt("10:00"));
    QCOMPARE(tab.record(B), QStringLiteral("123456|S|31.07.2026 11:00|u|0|N|"));
}

void TestSendScan::fileThatGoesUnderTheMenuIsToldOnce()
{
    SendTab tab(SKK);
    tab.queueWithRecord(A, recordAt("10:00"));
    tab.queueWithRecord(B, recordAt("11:00"));
    tab.form->scanDir();
    QMenu *menu = tab.openMenu(A);
    tab.remove(A);
    tab.remove(A + ".dat");
    tab.tick(5);
    (void)tab.news();
    tab.choose(menu, tab.page->pause);
    QCOMPARE(tab.news().size(), 1);
    QCOMPARE(tab.record(B), recordAt("11:00"));
    QVERIFY(!tab.isQueued(A + ".dat"));
    QCOMPARE(tab.names(tab.waiting), QStringList{B});
}

void TestSendScan::menuOverNoSelectionStaysAway()
{
    SendTab tab(SKK);
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), tab.waiting->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(tab.waiting->viewport(), &event);
    QVERIFY(tab.menu() == nullptr);
    QVERIFY(!tab.form->sendMenuOpen);
}

void TestSendScan::menuOfTheTextHoldsTheRowsToo()
{
    SendTab tab(SKK);
    tab.queueWithRecord(A, recordAt("10:00"));
    tab.form->scanDir();
    tab.click(A);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5),
                            tab.page->text->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(tab.page->text->viewport(), &event);
    QMenu *menu = tab.menu();
    QVERIFY(menu != nullptr);
    QVERIFY(tab.form->sendMenuOpen);
    QVERIFY(menu->actions().contains(tab.page->pause));
    QTest::keyClick(menu, Qt::Key_Escape);
    QVERIFY(!tab.form->sendMenuOpen);
}

// The row of a file that has gone out stays in the list as long as the menu is up.
void TestSendScan::sentFileIsNotOfferedAgainUnderTheMenu()
{
    SendTab tab(SKK);
    tab.queueWithRecord(A, recordAt("10:00"));
    tab.form->scanDir();
    QMenu *menu = tab.openMenu(A);
    tab.remove(A);
    tab.remove(A + ".dat");
    tab.setLinkUp(true);
    (void)tab.news();
    tab.tick(30);
    QCOMPARE(tab.news(), QStringList());
    QVERIFY(!State.fileInProgress);
    QCOMPARE(tab.desk.names("out"), QStringList());
    QTest::keyClick(menu, Qt::Key_Escape);
}

// The record that a try has left counts, not the row that the menu holds.
void TestSendScan::spentTryHoldsUnderTheMenu()
{
    SendTab tab(SKK);
    tab.queueWithRecord(A, recordAt("10:00"));
    tab.form->scanDir();
    QMenu *menu = tab.openMenu(A);
    tab.queueWithRecord(A, QStringLiteral("123456|S|31.07.2026 13:00|u|2|N|Занято"));
    tab.setLinkUp(true);
    tab.tick(30);
    QVERIFY(!State.fileInProgress);
    QCOMPARE(tab.record(A), QStringLiteral("123456|S|31.07.2026 13:00|u|2|N|Занято"));
    QTest::keyClick(menu, Qt::Key_Escape);
}

void TestSendScan::oddNamesAreShownAndDeleted_data()
{
    QTest::addColumn<QString>("name");
    row("blanks", "2026 731u001");
    row("quotes", possibleName("\"2026'31u001"));
    row("line feed", possibleName("2026\n731u001"));
    row("Cyrillic letter of the mask", "20260731с001");
    row("Cyrillic all over", "телеграмu001");
    row("200 characters", "20260731u001.b" + QString(186, 'x'));
    row("percent signs", "%1%2%3%4u001");
}

void TestSendScan::oddNamesAreShownAndDeleted()
{
    QFETCH(QString, name);
    SendTab tab(CKS);
    tab.queue(name, "ТЕКСТ");
    tab.form->scanDir();
    tab.click(name);
    QCOMPARE(tab.text(), QStringLiteral("ТЕКСТ"));
    (void)tab.news();
    QTest::mouseClick(tab.page->remove, Qt::LeftButton);
    QCOMPARE(tab.desk.names("out"), QStringList());
    QString shown = name;
    QCOMPARE(tab.news(), QStringList{"312:00:00 Удаление out/" + shown.replace('\n', '?')});
}

void TestSendScan::whatIsNoFileIsNeitherReadNorHarmed()
{
    QFETCH(SpecialFile, kind);
    SendTab tab(CKS);
    place(tab.desk, kind, "out/" + A);
    tab.queue(B);
    tab.form->scanDir();
    const bool listed = kind == SpecialFile::LinkToFifo || kind == SpecialFile::LinkToDevice;
    QCOMPARE(tab.names(tab.waiting), listed ? QStringList({A, B}) : QStringList{B});
    if (listed) {
        tab.click(A);
        QCOMPARE(tab.page->text->placeholderText(), QStringLiteral("Невозможно прочитать файл"));
    }
    QVERIFY(stands(tab.desk, kind, "out/" + A));
}

QTEST_MAIN(TestSendScan)
#include "test_send_scan.moc"
