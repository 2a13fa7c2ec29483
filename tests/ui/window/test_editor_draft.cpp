#include "records/draft_keeper.h"
#include "tests/support/patience.h"
#include "tests/support/row.h"
#include "tests/ui/window/sending_room.h"
#include "ui/widgets/line_edit_blocked.h"

#include <QCheckBox>
#include <QCloseEvent>

/// What is typed into the editor is never lost.
class TestEditorDraft : public QObject
{
    Q_OBJECT

private slots:
    void nothingTypedLeavesNoFile();
    void everythingTypedComesBack_data();
    void everythingTypedComesBack();
    void lastKeyIsKeptWithTheNextTick();
    void everyFieldAloneIsKept_data();
    void everyFieldAloneIsKept();
    void countedWordsAndTimesAreNoChange();
    void ownWordsAndTimesComeBack();
    void templateOfWordsComesBack();
    void formThatIsNotOnOfferLeavesTheText();
    void cipherIsPlainWhereNoneCanBeWritten();
    void clearedTextIsNotGivenBack();
    void sentTelegramIsNotGivenBack_data();
    void sentTelegramIsNotGivenBack();
    void refusedSendingKeepsTheDraft();
    void changeBehindASendingIsKept();
    void orderlyCloseKeepsTheText();
    void closeBehindASendingKeepsNothing();
    void damagedFileIsNoError_data();
    void damagedFileIsNoError();
    void outageIsJournalledOnce();
    void draftIsWrittenAnewAfterAnOutage();
};

namespace
{
const QString Name = QStringLiteral("velda_draft.json");
const auto manual = [] { Options.editorAllowManualChangeWordsCountAndTime = true; };

/// A window that a kill may end: the next one begins on the same data.
struct DraftRoom : SendingRoom {
    explicit DraftRoom(int formNumber = FullForm, const std::function<void()> &prepare = {},
                       int processMode = CKS)
        : SendingRoom(processMode, formNumber, prepare)
    {
    }
    [[nodiscard]] QString kept() const
    {
        const auto draft = draftOf(desk.read(Name));
        return draft ? draft->fields.text : QStringLiteral("no draft");
    }
    /// Whether the file holds \a text, two ticks at the latest behind the last key.
    [[nodiscard]] bool keeps(const QString &text)
    {
        tick(2);
        return QTest::qWaitFor([&] { return kept() == text; }, PatienceMs);
    }
    [[nodiscard]] bool hasFile() const { return QFile::exists(desk.path(Name)); }
};

/// Lets \a look see the window of the next start on the same data, as after a kill.
void startAnew(const std::function<void(FormMain &)> &look)
{
    Options.editorInterfaceMode = MessageForm;
    FormMain next;
    look(next);
}

void fill(const CEditorPage &page)
{
    page.category->setCurrentText("С");
    page.series->setCurrentIndex(1);
    page.index->setText("123");
    page.from->setText("ЗАГОЛОВОК");
    page.marks->setText("ЛЮКС");
    page.address->setText("казань");
    page.fKassa->setText("КАССА");
    page.fTo->setText("PARIS");
    page.fFrom->setText("MOSCOW");
    page.pScript->setText("ИВАНОВ");
    page.text->setPlainText("Начало телегра");
}
} // namespace

void TestEditorDraft::nothingTypedLeavesNoFile()
{
    DraftRoom room(FullForm, [] { Options.editorPScriptString = "ПОДПИСЬ"; });
    room.tick(5);
    room.form->tabWidget->setCurrentIndex(0);
    room.tick(60);
    room.form->tabWidget->setCurrentWidget(&room.page);
    room.tick(5);
    QVERIFY(!room.hasFile());
    QCOMPARE(room.news(), QStringList());
}

void TestEditorDraft::everythingTypedComesBack_data()
{
    QTest::addColumn<int>("form");
    QTest::addColumn<bool>("crypto");
    row("message", int(MessageForm), false);
    row("telegram", int(ShortForm), false);
    row("with its heading", int(FullForm), false);
    row("international", int(InternationalForm), false);
    row("REX400", int(Rex400Form), false);
    row("cipher", int(ShortForm), true);
}

void TestEditorDraft::everythingTypedComesBack()
{
    QFETCH(int, form);
    QFETCH(bool, crypto);
    DraftRoom room(
        form,
        [] {
            for (auto &mode : Options.interfaceModes)
                mode.enabled = true;
        },
        SKK);
    room.page.cryptoMode->setChecked(crypto);
    fill(room.page);
    if (crypto)
        room.page.text->setPlainText("12345<\n678");
    const QString text = room.page.text->toPlainText();
    QVERIFY(room.keeps(text));
    startAnew([&](FormMain &window) {
        const CEditorPage &page = *window.editorPage;
        QCOMPARE(Options.editorInterfaceMode, form);
        QCOMPARE(page.form->currentText(), Options.interfaceModes[form].name);
        QVERIFY(page.shownRows() == rowsOfForm(form));
        QCOMPARE(page.cryptoMode->isChecked(), crypto);
        QCOMPARE(page.text->toPlainText(), text);
        QCOMPARE(page.category->currentText(), QString("С"));
        QCOMPARE(page.series->currentText(), QString("02"));
        QCOMPARE(page.index->text(), QString("123"));
        QCOMPARE(page.from->text(), QString("ЗАГОЛОВОК"));
        QCOMPARE(page.marks->text(), QString("ЛЮКС"));
        QCOMPARE(page.address->text(), QString("казань"));
        QCOMPARE(page.fKassa->text(), QString("КАССА"));
        QCOMPARE(page.fTo->text(), QString("PARIS"));
        QCOMPARE(page.fFrom->text(), QString("MOSCOW"));
        QCOMPARE(page.pScript->text(), QString("ИВАНОВ"));
        QVERIFY(page.send->isEnabled());
    });
    QCOMPARE(room.news().filter("черновик").size(), 1);
}

void TestEditorDraft::lastKeyIsKeptWithTheNextTick()
{
    DraftRoom room;
    room.page.text->setFocus();
    QTest::keyClicks(room.page.text, "AB");
    QVERIFY(room.keeps("AB"));
    QTest::keyClick(room.page.text, Qt::Key_C);
    QVERIFY(room.keeps(room.page.text->toPlainText()));
    QVERIFY(room.kept() != "AB");
}

void TestEditorDraft::everyFieldAloneIsKept_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"editorIndex", "editorFrom", "editorMarks", "editorAddress", "editorFKassa",
                             "editorFTo", "editorFFrom", "editorPScript"})
        row(name, QString(name));
}

void TestEditorDraft::everyFieldAloneIsKept()
{
    QFETCH(QString, name);
    DraftRoom room;
    room.form->findChild<QLineEdit *>(name)->setText("12");
    QVERIFY(room.keeps(""));
    startAnew(
        [&](FormMain &window) { QCOMPARE(window.findChild<QLineEdit *>(name)->text(), QString("12")); });
}

void TestEditorDraft::countedWordsAndTimesAreNoChange()
{
    DraftRoom room;
    room.page.text->setPlainText("ТЕКСТ");
    QVERIFY(room.keeps("ТЕКСТ"));
    QVERIFY(QFile::remove(room.desk.path(Name)));
    room.tick(120);
    room.form->editorTextChanged();
    room.tick(5);
    QVERIFY(!room.hasFile());
}

void TestEditorDraft::ownWordsAndTimesComeBack()
{
    DraftRoom room(FullForm, manual);
    room.page.wordsCount->setBlocked(false);
    room.page.wordsCount->setText("77");
    room.page.fTime->setBlocked(false);
    room.page.fTime->setText("01 0203");
    room.page.text->setPlainText("ТЕКСТ");
    QVERIFY(room.keeps("ТЕКСТ"));
    startAnew([](FormMain &window) {
        const CEditorPage &page = *window.editorPage;
        QCOMPARE(page.wordsCount->text(), QString("77"));
        QVERIFY(!page.wordsCount->isReadOnly());
        QCOMPARE(page.fTime->text(), QString("01 0203"));
        QVERIFY(page.time->isReadOnly());
    });
}

void TestEditorDraft::templateOfWordsComesBack()
{
    DraftRoom room;
    room.page.wordsCount->setText("$");
    room.page.text->setPlainText("ТЕКСТ");
    QVERIFY(room.keeps("ТЕКСТ"));
    startAnew([](FormMain &window) {
        QCOMPARE(window.editorPage->wordsCount->text(), QString("$"));
        QVERIFY(window.editorPage->wordsCount->isReadOnly());
    });
}

void TestEditorDraft::formThatIsNotOnOfferLeavesTheText()
{
    DraftRoom room(FullForm);
    fill(room.page);
    QVERIFY(room.keeps("Начало телегра"));
    Options.processMode = Direct;
    startAnew([](FormMain &window) {
        QCOMPARE(Options.editorInterfaceMode, int(MessageForm));
        QCOMPARE(window.editorPage->text->toPlainText(), QString("Начало телегра"));
        QCOMPARE(window.editorPage->address->text(), QString("казань"));
    });
}

void TestEditorDraft::cipherIsPlainWhereNoneCanBeWritten()
{
    DraftRoom room(ShortForm);
    room.page.cryptoMode->setChecked(true);
    room.page.text->setPlainText("12345<\n678");
    QVERIFY(room.keeps("12345<\n678"));
    Options.removeRegisterInInputFiles = true;
    startAnew([](FormMain &window) {
        QVERIFY(!window.editorPage->cryptoMode->isChecked());
        QCOMPARE(window.editorPage->text->toPlainText(), QString("12345\n678"));
    });
}

void TestEditorDraft::clearedTextIsNotGivenBack()
{
    DraftRoom room;
    room.write("ТЕКСТ");
    QVERIFY(room.keeps("ТЕКСТ"));
    QTest::mouseClick(room.page.clear, Qt::LeftButton);
    QCOMPARE(room.page.text->toPlainText(), QString());
    QVERIFY(!room.hasFile());
    room.tick(5);
    QVERIFY(!room.hasFile());
}

void TestEditorDraft::sentTelegramIsNotGivenBack_data()
{
    QTest::addColumn<int>("processMode");
    QTest::addColumn<bool>("atOnce");
    row("to a centre", int(CKS), false);
    row("direct, later", int(Direct), false);
    row("direct, at once", int(Direct), true);
}

void TestEditorDraft::sentTelegramIsNotGivenBack()
{
    QFETCH(int, processMode);
    QFETCH(bool, atOnce);
    DraftRoom room(processMode == Direct ? MessageForm : ShortForm, {}, processMode);
    room.setLinkUp(true);
    room.write("ТЕКСТ");
    QVERIFY(room.keeps("ТЕКСТ"));
    QVERIFY(room.send(atOnce ? InDialog(toLine) : InDialog(agree)));
    QVERIFY(!room.hasFile());
    room.tick(5);
    QVERIFY(!room.hasFile());
}

void TestEditorDraft::refusedSendingKeepsTheDraft()
{
    DraftRoom room(ShortForm);
    room.write("ТЕКСТ");
    QVERIFY(room.keeps("ТЕКСТ"));
    QVERIFY(room.send([](CSendTlgDialog &dialog) { dialog.reject(); }));
    QVERIFY(room.keeps("ТЕКСТ"));
}

void TestEditorDraft::changeBehindASendingIsKept()
{
    DraftRoom room(ShortForm);
    room.write("ТЕКСТ");
    QVERIFY(room.send());
    room.page.text->appendPlainText("ЕЩЕ");
    QVERIFY(room.keeps("ТЕКСТ\nЕЩЕ"));
}

void TestEditorDraft::orderlyCloseKeepsTheText()
{
    DraftRoom room(ShortForm);
    room.write("ТЕКСТ"); // no tick any more
    State.closeAllowed = true;
    room.form->close();
    QCOMPARE(room.kept(), QString("ТЕКСТ"));
}

void TestEditorDraft::closeBehindASendingKeepsNothing()
{
    DraftRoom room(ShortForm);
    room.write("ТЕКСТ");
    QVERIFY(room.send());
    State.closeAllowed = true;
    room.form->close();
    QVERIFY(!room.hasFile());
}

void TestEditorDraft::damagedFileIsNoError_data()
{
    QTest::addColumn<QByteArray>("content");
    row("empty", QByteArray());
    row("rubbish", QByteArray("\xFF\x00\x01 {", 5));
    row("cut off", contentOf(Draft()).left(40));
}

void TestEditorDraft::damagedFileIsNoError()
{
    QFETCH(QByteArray, content);
    DraftRoom room(ShortForm);
    room.desk.write(Name, content);
    startAnew([](FormMain &window) { QCOMPARE(window.editorPage->text->toPlainText(), QString()); });
    QCOMPARE(room.news().filter("ерновик"), QStringList());
    room.write("ТЕКСТ");
    QVERIFY(room.keeps("ТЕКСТ"));
}

void TestEditorDraft::outageIsJournalledOnce()
{
    DraftRoom room(ShortForm);
    QVERIFY(QDir().mkdir(room.desk.path(Name))); // nothing can be written there
    room.write("ТЕКСТ");
    int told = 0;
    const auto tells = [&] {
        room.tick();
        told += room.news().filter("Черновик редактора не записывается на диск").size();
        return told > 0;
    };
    QVERIFY(QTest::qWaitFor(tells, PatienceMs));
    for (int i = 0; i < 30; ++i) {
        room.page.text->appendPlainText("ЕЩЕ");
        (void)tells();
        QTest::qWait(1);
    }
    QCOMPARE(told, 1);
}

void TestEditorDraft::draftIsWrittenAnewAfterAnOutage()
{
    DraftRoom room(ShortForm);
    QVERIFY(QDir().mkdir(room.desk.path(Name)));
    room.write("ТЕКСТ");
    QStringList told;
    const auto tells = [&] {
        room.tick();
        told << room.news().filter("Черновик");
        return !told.isEmpty();
    };
    QVERIFY(QTest::qWaitFor(tells, PatienceMs));
    QVERIFY(QDir().rmdir(room.desk.path(Name)));
    QTRY_VERIFY_WITH_TIMEOUT(room.keeps("ТЕКСТ"), PatienceMs); // without another key
    room.tick(5);
    QVERIFY(QFile::remove(room.desk.path(Name)));
    QVERIFY(QDir().mkdir(room.desk.path(Name)));
    told.clear();
    room.page.text->appendPlainText("ЕЩЕ");
    QVERIFY(QTest::qWaitFor(tells, PatienceMs)); // another outage
    QCOMPARE(told.size(), 1);
}

QTEST_MAIN(TestEditorDraft)
#include "test_editor_draft.moc"
