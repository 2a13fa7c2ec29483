#include "app/options.h"
#include "link/prf_thread.h"
#include "tests/ui/dialogs/answers.h"
#include "tests/ui/window/archive_room.h"
#include "text/attachments.h"
#include "text/encodings.h"
#include "text/mtk2.h"
#include "text/utils.h"
#include "ui/dialogs/perforator_out_dialog.h"
#include "ui/dialogs/print_txt_dialog.h"
#include "ui/pages/editor_page.h"

#include <QScrollBar>
#include <QTextEdit>

/// What the buttons of the tabs of telegrams do with the text on view.
class TestArchiveCommands : public QObject
{
    Q_OBJECT

private slots:
    void marksAreShownOnRequest_data() { everyTab(); }
    void marksAreShownOnRequest();
    void commandsToTheAdapterAreNeverShown_data() { everyTab(); }
    void commandsToTheAdapterAreNeverShown();
    void choiceOfMarksIsKept_data() { everyTab(); }
    void choiceOfMarksIsKept();
    void marksComeAndGoWhereTheOperatorReads();
    void lettersOfTheNationalLanguageAreShown_data() { everyTab(); }
    void lettersOfTheNationalLanguageAreShown();
    void textGoesToTheEditor_data() { everyTab(); }
    void textGoesToTheEditor();
    void textGoesToThePrintDialog_data() { everyTab(); }
    void textGoesToThePrintDialog();
    void textGoesToTheTape_data() { everyDayTab(); }
    void textGoesToTheTape();
    void incomingTextIsSavedUnderItsName();
    void incomingTextOnViewIsSaved();
    void attachmentNeedsBothMarkers_data();
    void attachmentNeedsBothMarkers();
    void attachmentIsSavedFromTheTextAsItCame();
    void attachmentIsSavedFromATextTooLongToBeShown();
};

void TestArchiveCommands::marksAreShownOnRequest()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    room.put("a", "|ДВА #22&ABC\"<>\r\n");
    room.refresh();
    room.click("a");
    QCOMPARE(room.text(), "ДВА 22ABC\n");
    ArchiveRoom::click(room.page.registers);
    QCOMPARE(room.text(), "|ДВА #22&ABC\"<>\n");
    ArchiveRoom::click(room.page.registers);
    QCOMPARE(room.text(), "ДВА 22ABC\n");
}

void TestArchiveCommands::commandsToTheAdapterAreNeverShown()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    room.put("a", "А@HБ");
    room.refresh();
    room.click("a");
    QCOMPARE(room.text(), "АБ");
    ArchiveRoom::click(room.page.registers);
    QCOMPARE(room.text(), "АБ");
}

void TestArchiveCommands::choiceOfMarksIsKept()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    room.put("a", "|А");
    room.put("b", "#1");
    room.refresh();
    ArchiveRoom::click(room.page.registers);
    room.click("a");
    QCOMPARE(room.text(), "|А");
    room.click("b");
    QCOMPARE(room.text(), "#1");
}

void TestArchiveCommands::marksComeAndGoWhereTheOperatorReads()
{
    const ArchiveRoom room(CArchivePage::Received);
    room.put("a", QByteArray("|СТРОКА\r\n").repeated(300));
    room.refresh();
    room.click("a");
    room.page.text->verticalScrollBar()->setValue(120);
    ArchiveRoom::click(room.page.registers);
    QCOMPARE(room.page.text->verticalScrollBar()->value(), 120);
    room.put("b", QByteArray("ДРУГОЙ\r\n").repeated(300));
    room.refresh();
    room.click("b");
    QCOMPARE(room.page.text->verticalScrollBar()->value(), 0);
}

void TestArchiveCommands::lettersOfTheNationalLanguageAreShown()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind, CKS, [] {
        Options.nationalLanguageUse = Tatar;
        initMTK2Table();
    });
    QString text = "ӘҢ";
    maskNationalLanguage(text);
    QVERIFY(text != "ӘҢ");
    room.put("a", text.toUtf8());
    room.refresh();
    room.click("a");
    QCOMPARE(room.text(), "ӘҢ");
}

void TestArchiveCommands::textGoesToTheEditor()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    room.put("a", "|ПРИВЕТ\r\n#123");
    room.refresh();
    room.click("a");
    ArchiveRoom::click(room.page.toEditor);
    QCOMPARE(room.form->editorPage->text->toPlainText(), "ПРИВЕТ\n123");
}

void TestArchiveCommands::textGoesToThePrintDialog()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind);
    room.put("a", "|ПРИВЕТ");
    room.refresh();
    room.click("a");
    QString shown;
    inNextDialog([&shown](QDialog &dialog) {
        QVERIFY(qobject_cast<CPrintTxtDialog *>(&dialog));
        shown = dialog.findChild<QTextEdit *>()->toPlainText();
    });
    ArchiveRoom::click(room.page.print);
    QCOMPARE(shown, "ПРИВЕТ");
}

void TestArchiveCommands::textGoesToTheTape()
{
    QFETCH(CArchivePage::Kind, kind);
    const ArchiveRoom room(kind, CKS, [] { Options.usePrf = true; });
    room.put("a", "ПРИВЕТ\r\n");
    room.refresh();
    room.click("a");
    QString punched;
    inNextDialog([&punched](QDialog &dialog) {
        const auto *out = qobject_cast<CPerforatorOutDialog *>(&dialog);
        QVERIFY(out != nullptr);
        punched = out->text;
    });
    if (kind == CArchivePage::Received)
        ArchiveRoom::click(room.page.toPerforator);
    else
        room.form->outputToPerforator(); // which has no button
    QCOMPARE(punched, "ПРИВЕТ\r\n");
}

void TestArchiveCommands::incomingTextIsSavedUnderItsName()
{
    const ArchiveRoom room(CArchivePage::Received);
    QVERIFY(QDir().mkdir(room.desk.path("saved")));
    Options.pathForSaveInInput = room.desk.path("saved");
    room.put("20260731u1a.001_", "ПРИВЕТ\r\n");
    room.refresh();
    room.click(0);
    Answers answers;
    answers.files = {{room.desk.path("saved/x"), FileCoding::CP1251}};
    ArchiveRoom::click(room.page.save);
    QCOMPARE(answers.asked,
             QStringList{"Сохранение файла/" + room.desk.path("saved/20260731u1a.001") + "/UTF-8"});
    QCOMPARE(room.desk.read("saved/x"), QByteArray("\xCF\xD0\xC8\xC2\xC5\xD2\r\n"));
}

void TestArchiveCommands::incomingTextOnViewIsSaved()
{
    const ArchiveRoom room(CArchivePage::Received);
    room.put("a", "|А\r\n#1");
    room.refresh();
    room.click("a");
    Answers answers;
    answers.files = {{room.desk.path("plain"), FileCoding::UTF8},
                     {room.desk.path("marks"), FileCoding::UTF8}};
    ArchiveRoom::click(room.page.save);
    ArchiveRoom::click(room.page.registers);
    ArchiveRoom::click(room.page.save);
    ArchiveRoom::click(room.page.save); // and then thinks better of it
    QCOMPARE(room.desk.read("plain"), QByteArray("А\r\n1"));
    QCOMPARE(room.desk.read("marks"), QByteArray("|А\r\n#1"));
}

void TestArchiveCommands::attachmentNeedsBothMarkers_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("enabled");
    row("none", QByteArray("А"), false);
    row("a text with only the first marker", QByteArray("А -&FILE#-### Б"), false);
    row("only the second", QByteArray("А ###-&FILE#- Б"), false);
    row("both", QByteArray("А -&FILE#-###B#C###-&FILE#- Б"), true);
    row("both, without the register marks", QByteArray("А -FILE-B###-FILE-"), false);
}

void TestArchiveCommands::attachmentNeedsBothMarkers()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, enabled);
    const ArchiveRoom room(CArchivePage::Received, CKS, [] { Options.enableAttachFiles = true; });
    room.put("a", text);
    room.put("b", "А -&FILE#-###B#C###-&FILE#- Б");
    room.refresh();
    QVERIFY(!room.page.saveAttach->isEnabled());
    room.click("b");
    QVERIFY(room.page.saveAttach->isEnabled());
    room.click("a");
    QCOMPARE(room.page.saveAttach->isEnabled(), enabled);
}

void TestArchiveCommands::attachmentIsSavedFromTheTextAsItCame()
{
    const ArchiveRoom room(CArchivePage::Received, CKS, [] { Options.enableAttachFiles = true; });
    // Register marks are part of the frame, whether they are shown or not.
    const QString name = ByteArrayToMTKCoding("file.txt");
    const QByteArray data("DATA");
    const QString coded = ByteArrayToMTKCoding(data + char(CUtils::CRC8(data)));
    room.put("a", ("А-&FILE#-###" + name + "#" + coded + "###-&FILE#-Б").toUtf8());
    room.refresh();
    room.click("a");
    Answers answers;
    answers.paths << room.desk.path("saved");
    ArchiveRoom::click(room.page.saveAttach);
    QCOMPARE(answers.asked, QStringList{"Сохранение файла/file.txt/Все (*.*)"});
    QCOMPARE(room.desk.read("saved"), data);
}

void TestArchiveCommands::attachmentIsSavedFromATextTooLongToBeShown()
{
    const ArchiveRoom room(CArchivePage::Received, CKS, [] { Options.enableAttachFiles = true; });
    const QByteArray data(2000000, 'A');
    QString block = attachmentBlock("file.txt", data);
    room.put("a", block.replace("-&FILE-", "-&FILE#-").toUtf8());
    room.put("b", "ТЕКСТ");
    room.refresh();
    room.click("a");
    QCOMPARE(room.text(), QString());
    QVERIFY(room.page.saveAttach->isEnabled());
    Answers answers;
    answers.paths << room.desk.path("saved");
    ArchiveRoom::click(room.page.saveAttach);
    QVERIFY(room.desk.read("saved") == data);
    room.click("b");
    QVERIFY(!room.page.saveAttach->isEnabled());
}

QTEST_MAIN(TestArchiveCommands)
#include "test_archive_commands.moc"
