// The tab "Передача": its controls, the selected file's text, and what is enabled when.

#include "app/state.h"
#include "tests/support/row.h"
#include "tests/ui/window/send_tab.h"
#include "text/mtk2.h"
#include "text/utils.h"
#include "ui/pages/editor_page.h"

#include <QHeaderView>
#include <QScrollBar>

namespace
{
const QString A = QStringLiteral("20260731u001"), B = QStringLiteral("20260731u002"),
              C = QStringLiteral("20260731u003");
const QString Failed = QStringLiteral("20260731u009.b012");
const QString Record = QStringLiteral("123456|S|31.07.2026 11:00|u|3|N|");
const QString Spent = QStringLiteral("123456|S|31.07.2026 11:00|u|0|N|");
} // namespace

class TestSendTab : public QObject
{
    Q_OBJECT

private slots:
    void controlsStandUnderTheirWords();
    void nothingIsEnabledBeforeASelection_data() { everyProcedure(); }
    void nothingIsEnabledBeforeASelection();
    void columnsAreThoseOfTheProcedure_data();
    void columnsAreThoseOfTheProcedure();
    void selectionShowsTheText();
    void textEndsAtItsFirstZeroByte();
    void lettersOfTheNationalLanguageAreShown();
    void registersAreShownOnRequest();
    void selectionInOneListClearsTheOther();
    void enabledActionsFollowTheSelectedFile_data();
    void enabledActionsFollowTheSelectedFile();
    void repeatIsEnabledInTheQueueOnceTheTriesAreSpent();
    void viewCannotBeEditedAndHasTheTelegramFont();
    void arrowsSelectAndEnterGoesToTheText();
    void tabGoesThroughTheControls();
    void textOnViewGoesToTheEditor();
    void emptyTextLeavesTheEditorAlone();
    void unreadableFileIsToldOnceAndBarsTheEditor();
    void tooLargeTextIsToldAndBarsTheEditor();
    void longestTextReachesTheEditorWhole();

private:
    static void everyProcedure()
    {
        QTest::addColumn<int>("procedure");
        row("CKS", int(CKS));
        row("SKK", int(SKK));
        row("direct", int(Direct));
    }
};

void TestSendTab::controlsStandUnderTheirWords()
{
    const SendTab tab(SKK);
    QCOMPARE(tab.page->registers->text(), QStringLiteral("Показать регистры"));
    QVERIFY(!tab.page->registers->isChecked());
    QCOMPARE(tab.page->toEditor->text(), QStringLiteral("В редактор"));
    QCOMPARE(tab.page->remove->text(), QStringLiteral("Удалить"));
    QCOMPARE(tab.page->reSend->text(), QStringLiteral("Повторить передачу"));
    tab.queueWithRecord(A, Record);
    tab.form->scanDir();
    QStringList entries;
    for (const QAction *action : tab.openMenu(A)->actions())
        entries << action->text();
    QCOMPARE(entries, QStringList({QStringLiteral("Изменить номер абонента"),
                                   QStringLiteral("Изменить время отправки на сейчас"),
                                   QStringLiteral("Повторить передачу"), QStringLiteral("Остановить")}));
}

void TestSendTab::nothingIsEnabledBeforeASelection()
{
    QFETCH(int, procedure);
    SendTab tab(procedure);
    tab.queue(A);
    tab.queue(A + QStringLiteral(".260731_110000"));
    tab.form->scanDir();
    for (const QPushButton *button : {tab.page->toEditor, tab.page->remove, tab.page->reSend})
        QVERIFY(!button->isEnabled());
    for (const QAction *action :
         {tab.page->changeNumber, tab.page->resetTime, tab.page->reSendAction, tab.page->pause})
        QVERIFY(!action->isEnabled());
    QCOMPARE(tab.text(), QString());
    QVERIFY(tab.form->sendSelectedPath().isEmpty());
}

void TestSendTab::columnsAreThoseOfTheProcedure_data()
{
    QTest::addColumn<int>("procedure");
    QTest::addColumn<QList<int>>("characters");
    QTest::addColumn<QStringList>("titles");
    row("CKS", int(CKS), QList<int>{17, 8}, QStringList{"Файл", "-"});
    row("SKK", int(SKK), QList<int>{17, 2, 9, 9, 16, 50},
        QStringList{"Файл", "-", "Абонент", "Попыток", "Время начала", "Информация"});
    row("direct", int(Direct), QList<int>{27, 8}, QStringList{"Файл", "-"});
}

void TestSendTab::columnsAreThoseOfTheProcedure()
{
    QFETCH(int, procedure);
    QFETCH(QList<int>, characters);
    QFETCH(QStringList, titles);
    SendTab tab(procedure);
    for (const CFileTable *table : {tab.waiting, tab.failed}) {
        QCOMPARE(table->model()->columnCount(), characters.size());
        for (int column = 0; column < characters.size(); ++column) {
            QCOMPARE(table->columnWidth(column), CFileTable::widthOf(characters[column], table->font()));
            const QString title = column == 0 && table == tab.failed ? "Неудачные" : titles[column];
            QCOMPARE(table->model()->headerData(column, Qt::Horizontal).toString(), title);
        }
    }
}

void TestSendTab::selectionShowsTheText()
{
    SendTab tab(CKS);
    tab.queue(A, "ПЕРВЫЙ\r\nТЕКСТ");
    tab.queue(B, "ВТОРОЙ");
    tab.queue(Failed, "НЕУДАЧНЫЙ");
    tab.form->scanDir();
    tab.click(A);
    QCOMPARE(tab.text(), QStringLiteral("ПЕРВЫЙ\nТЕКСТ"));
    QCOMPARE(tab.form->sendSelectedPath(), QDir::toNativeSeparators("out/" + A));
    tab.click(B);
    QCOMPARE(tab.text(), QStringLiteral("ВТОРОЙ"));
    tab.click(Failed);
    QCOMPARE(tab.text(), QStringLiteral("НЕУДАЧНЫЙ"));
    QCOMPARE(tab.news(), QStringList());
}

void TestSendTab::textEndsAtItsFirstZeroByte()
{
    SendTab tab(CKS);
    tab.queue(A, QByteArray("AB\0CD", 5));
    tab.queue(B, QByteArray("\0AB", 3));
    tab.form->scanDir();
    tab.click(A);
    QCOMPARE(tab.text(), QStringLiteral("AB"));
    tab.click(B);
    QCOMPARE(tab.text(), QString());
}

void TestSendTab::lettersOfTheNationalLanguageAreShown()
{
    SendTab tab(CKS, [] { Options.nationalLanguageUse = 1; });
    QString masked = QStringLiteral("Ә");
    maskNationalLanguage(masked);
    tab.queue(A, masked.toUtf8());
    tab.form->scanDir();
    tab.click(A);
    QCOMPARE(tab.text(), QStringLiteral("Ә"));
}

void TestSendTab::registersAreShownOnRequest()
{
    SendTab tab(CKS);
    const QString marked = QStringLiteral("А|Б");
    tab.queue(A, marked.toUtf8() + QByteArray("\n").repeated(300));
    tab.queue(B, marked.toUtf8());
    tab.form->scanDir();
    tab.click(A);
    QVERIFY(tab.text().startsWith(QStringLiteral("АБ")));
    tab.page->text->verticalScrollBar()->setValue(100);
    tab.page->registers->click();
    QVERIFY(tab.text().startsWith(marked));
    QCOMPARE(tab.page->text->verticalScrollBar()->value(), 100);
    tab.click(B);
    QCOMPARE(tab.text(), marked);
    tab.page->registers->click();
    QCOMPARE(tab.text(), QStringLiteral("АБ"));
}

void TestSendTab::selectionInOneListClearsTheOther()
{
    SendTab tab(CKS);
    tab.queue(A);
    tab.queue(Failed);
    tab.form->scanDir();
    tab.click(A);
    QCOMPARE(tab.form->sendPath, QDir::toNativeSeparators("out/" + A));
    QCOMPARE(tab.form->sendBadPath, QString());
    tab.click(Failed);
    QCOMPARE(tab.selected(tab.waiting), QString());
    QCOMPARE(tab.form->sendPath, QString());
    QCOMPARE(tab.form->sendBadPath, QDir::toNativeSeparators("out/" + Failed));
    tab.click(A);
    QCOMPARE(tab.selected(tab.failed), QString());
    QCOMPARE(tab.form->sendBadPath, QString());
}

void TestSendTab::enabledActionsFollowTheSelectedFile_data()
{
    QTest::addColumn<int>("procedure");
    QTest::addColumn<int>("tlgMode");
    QTest::addColumn<bool>("ofTheFailed");
    QTest::addColumn<bool>("repeat");
    QTest::addColumn<bool>("pause");
    QTest::addColumn<bool>("change"); // number and time
    for (int mode = 0; mode <= 5; ++mode) {
        const auto named = [mode](const char *words) {
            return QByteArray(words) + ", mode " + QByteArray::number(mode);
        };
        row(named("CKS, queue").constData(), int(CKS), mode, false, false, false, false);
        row(named("CKS, failed").constData(), int(CKS), mode, true, true, false, false);
        row(named("SKK, queue").constData(), int(SKK), mode, false, false, true, mode != 3);
        row(named("SKK, failed").constData(), int(SKK), mode, true, true, true, mode != 3);
        row(named("direct").constData(), int(Direct), mode, false, false, false, false);
    }
}

void TestSendTab::enabledActionsFollowTheSelectedFile()
{
    QFETCH(int, procedure);
    QFETCH(int, tlgMode);
    QFETCH(bool, ofTheFailed);
    SendTab tab(procedure);
    const QString name = procedure == Direct ? A + ".260731_110000"
                         : ofTheFailed       ? procedure == CKS ? Failed : C
                                             : A;
    if (name == Failed) // whose record would pass for a further failed file
        tab.queue(name);
    else
        tab.queueWithRecord(name, ofTheFailed ? Spent : Record);
    tab.form->scanDir();
    QCOMPARE(tab.names(ofTheFailed ? tab.failed : tab.waiting), QStringList{name});
    tab.click(name);
    State.setTlgMode(TlgMode(tlgMode));
    QVERIFY(tab.page->toEditor->isEnabled());
    QVERIFY(tab.page->remove->isEnabled());
    QTEST(tab.page->reSend->isEnabled(), "repeat");
    QTEST(tab.page->reSendAction->isEnabled(), "repeat");
    QTEST(tab.page->pause->isEnabled(), "pause");
    QTEST(tab.page->changeNumber->isEnabled(), "change");
    QTEST(tab.page->resetTime->isEnabled(), "change");
}

// Such a row stands in the queue only until the next scan.
void TestSendTab::repeatIsEnabledInTheQueueOnceTheTriesAreSpent()
{
    SendTab tab(SKK);
    tab.queueWithRecord(A, Record);
    tab.queueWithRecord(B, Record);
    tab.form->scanDir();
    tab.form->modelSend.at(1).trys = 0;
    tab.click(B);
    QVERIFY(tab.page->reSendAction->isEnabled());
    tab.click(A);
    QVERIFY(!tab.page->reSendAction->isEnabled());
}

void TestSendTab::viewCannotBeEditedAndHasTheTelegramFont()
{
    SendTab tab(CKS, [] { Options.tlgFont.setPointSize(17); });
    tab.queue(A, "ТЕКСТ");
    tab.form->scanDir();
    tab.click(A);
    QVERIFY(tab.page->text->isReadOnly());
    QTest::keyClicks(tab.page->text, QStringLiteral("X"));
    QCOMPARE(tab.text(), QStringLiteral("ТЕКСТ"));
    QCOMPARE(tab.page->text->font().pointSize(), 17);
}

void TestSendTab::arrowsSelectAndEnterGoesToTheText()
{
    SendTab tab(CKS);
    for (const QString &name : {A, B, C})
        tab.queue(name, name.toUtf8());
    tab.form->scanDir();
    QVERIFY(QTest::qWaitForWindowActive(tab.form.get()));
    tab.waiting->setFocus();
    struct Step {
        Qt::Key key;
        QString name;
    };
    const Step steps[] = {{Qt::Key_Down, A}, {Qt::Key_Down, B}, {Qt::Key_End, C},
                          {Qt::Key_Up, B},   {Qt::Key_Home, A}, {Qt::Key_PageDown, C}};
    for (const Step &step : steps) {
        QTest::keyClick(tab.waiting, step.key);
        QCOMPARE(tab.text(), step.name);
    }
    QTest::keyClick(tab.waiting, Qt::Key_Return);
    QVERIFY(tab.page->text->hasFocus());
}

void TestSendTab::tabGoesThroughTheControls()
{
    SendTab tab(CKS);
    tab.queue(A);
    tab.queue(Failed);
    tab.form->scanDir();
    QVERIFY(QTest::qWaitForWindowActive(tab.form.get()));
    tab.click(Failed);
    tab.waiting->setFocus();
    QStringList order;
    for (int i = 0; i < 7; ++i) {
        order << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(order, QStringList({"tableSend", "tableSendBad", "sendRegisters", "sendText",
                                 "sendToEditorButton", "sendDeleteButton", "sendReSendButton"}));
}

void TestSendTab::textOnViewGoesToTheEditor()
{
    SendTab tab(CKS);
    tab.queue(A, "ПЕРВАЯ|\r\nВТОРАЯ");
    tab.form->scanDir();
    tab.click(A);
    QTest::mouseClick(tab.page->toEditor, Qt::LeftButton);
    QCOMPARE(tab.form->editorPage->text->toPlainText(), QStringLiteral("ПЕРВАЯ\nВТОРАЯ"));
    QCOMPARE(tab.form->tabWidget->currentWidget(), tab.form->editorPage);
}

void TestSendTab::emptyTextLeavesTheEditorAlone()
{
    SendTab tab(CKS);
    tab.form->setEditorText(QStringLiteral("НАЧАТО"));
    tab.queue(A, QByteArray());
    tab.form->scanDir();
    tab.click(A);
    QVERIFY(!tab.page->toEditor->isEnabled());
    QVERIFY(tab.page->remove->isEnabled());
    tab.form->sendToEditor();
    QCOMPARE(tab.form->editorPage->text->toPlainText(), QStringLiteral("НАЧАТО"));
}

void TestSendTab::unreadableFileIsToldOnceAndBarsTheEditor()
{
    SendTab tab(CKS);
    tab.queue(A, "ПЕРВЫЙ");
    tab.queue(B);
    tab.form->scanDir();
    tab.click(A);
    tab.remove(B); // still in the list
    (void)tab.news();
    tab.click(B);
    QCOMPARE(tab.text(), QString());
    QCOMPARE(tab.page->text->placeholderText(), QStringLiteral("Невозможно прочитать файл"));
    QCOMPARE(tab.news(),
             QStringList{QStringLiteral("412:00:00 Невозможно прочитать файл ") + QString("out/" + B)});
    QVERIFY(!tab.page->toEditor->isEnabled());
    tab.click(A);
    QCOMPARE(tab.text(), QStringLiteral("ПЕРВЫЙ"));
    QVERIFY(tab.page->toEditor->isEnabled());
}

void TestSendTab::tooLargeTextIsToldAndBarsTheEditor()
{
    SendTab tab(CKS);
    tab.queue(A, QByteArray(50 << 20, 'A'));
    tab.form->scanDir();
    tab.click(A);
    QCOMPARE(tab.text(), QString());
    QCOMPARE(tab.page->text->placeholderText(), QStringLiteral("Файл слишком велик, текст не показан"));
    QVERIFY(!tab.page->toEditor->isEnabled());
    tab.page->registers->click();
    QCOMPARE(tab.text(), QString());
    QVERIFY(tab.page->remove->isEnabled());
}

void TestSendTab::longestTextReachesTheEditorWhole()
{
    SendTab tab(CKS);
    const QByteArray line(32766, 'A');
    tab.queue(A, (line + "\r\n").repeated(32));
    tab.form->scanDir();
    tab.click(A);
    QTest::mouseClick(tab.page->toEditor, Qt::LeftButton);
    QCOMPARE(tab.form->editorPage->text->toPlainText().size(), 32 * 32767);
}

QTEST_MAIN(TestSendTab)
#include "test_send_tab.moc"
