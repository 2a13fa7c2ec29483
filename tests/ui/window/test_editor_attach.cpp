#include "tests/support/no_ordinary_file.h"
#include "tests/ui/window/editor_room.h"
#include "text/attachments.h"

#include <QDir>
#include <QScrollBar>

/// Files that are enclosed in the editor's text.
class TestEditorAttach : public QObject
{
    Q_OBJECT

private slots:
    void blockIsAddedBehindTheText();
    void nothingIsAttachedWithoutTheOption();
    void cipherShowsTheLineEndsOfTheBlock();
    void everyContentComesBack_data();
    void everyContentComesBack();
    void blockIsUndoneAlone();
    void operatorStaysAtHisPlace();
    void nothingChosenChangesNothing();
    void unreadableFileLeavesTheText_data();
    void unreadableFileLeavesTheText();
    void hugeFileLeavesTheText();
    void longTransmissionIsAskedAbout_data();
    void longTransmissionIsAskedAbout();
    void nameThatIsLostOnTheWayIsAskedAbout_data();
    void nameThatIsLostOnTheWayIsAskedAbout();
    void blockWithAChangedByteIsReportedAndTheNextIsFound();
};

namespace
{
struct AttachRoom : EditorRoom {
    AttachRoom() : EditorRoom(SKK, [] { Options.enableAttachFiles = true; })
    {
        Options.tlgBaud = 200;
        form->show();
    }
    void attach(const QString &name, const QByteArray &content)
    {
        desk.write(name, content);
        answers.opened << desk.path(name);
        form->editorAttach();
    }
    /// As the telegram arrives: each "-" that follows letters has got the mark of the figures.
    [[nodiscard]] QString arrived() const { return text().replace("-&FILE-", "-&FILE#-"); }
};
} // namespace

// "ab" is 6162, its check byte by the polynomial 31 from FF on is F9; "name" is 6E616D65.
void TestEditorAttach::blockIsAddedBehindTheText()
{
    AttachRoom room;
    room.type("ТЕКСТ");
    room.attach("dir/name", "ab");
    QCOMPARE(room.asked(), QStringList("Включение файла на передачу/Все (*.*)"));
    QCOMPARE(room.text(), QString("ТЕКСТ\n-&FILE-###6.616=65#6162,9###-&FILE-\n"));
    QCOMPARE(room.form->getEditorText(), QString("ТЕКСТ\r\n-&FILE-###6.616=65#6162,9###-&FILE-\r\n"));
    QCOMPARE(room.news(), QStringList());
}

void TestEditorAttach::nothingIsAttachedWithoutTheOption()
{
    AttachRoom room;
    QVERIFY(room.page.attach->isVisibleTo(&room.page));
    Options.enableAttachFiles = false;
    room.form->setPrfInterface();
    QVERIFY(!room.page.attach->isVisibleTo(&room.page));
    room.attach("name", "ab");
    QCOMPARE(room.text(), QString());
    QCOMPARE(room.asked(), QStringList());
}

void TestEditorAttach::cipherShowsTheLineEndsOfTheBlock()
{
    AttachRoom room;
    room.page.cryptoMode->setChecked(true);
    room.type("12345<\n");
    room.attach("name", "ab");
    QCOMPARE(room.text(), QString("12345<\n<\n-&FILE-###6.616=65#6162,9###-&FILE-<\n"));
    QCOMPARE(room.form->getEditorText(), QString("12345\r\n\r\n-&FILE-###6.616=65#6162,9###-&FILE-\r\n"));
}

void TestEditorAttach::everyContentComesBack_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QByteArray all;
    for (int i = 0; i < 256; ++i)
        all += char(i);
    row("every byte", "all.bin", all);
    row("empty", "empty", QByteArray());
    row("one zero", "zero", QByteArray(1, 0));
    row("a megabyte", "large.bin", all.repeated(4096));
    row("Russian name", "Приказ №5.txt", QByteArray("A"));
    row("four Russian letters", "яяяя", QByteArray("A"));
}

void TestEditorAttach::everyContentComesBack()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    AttachRoom room;
    Options.tlgBaud = 1000000;
    room.type("ТЕКСТ");
    room.attach(name, content);
    const QVector<Attachment> found = attachmentsOf(room.arrived());
    QCOMPARE(found.size(), 1);
    QCOMPARE(found.first().name, name);
    QVERIFY(found.first().crcOk);
    QVERIFY(found.first().data == content);
}

void TestEditorAttach::blockIsUndoneAlone()
{
    AttachRoom room;
    QTest::keyClicks(room.page.text, "ABC");
    room.attach("name", "ab");
    QVERIFY(room.text().size() > 3);
    room.page.text->undo();
    QCOMPARE(room.text(), QString("ABC"));
    room.page.text->undo();
    QCOMPARE(room.text(), QString());
}

void TestEditorAttach::operatorStaysAtHisPlace()
{
    AttachRoom room;
    room.type(QString("СТРОКА\n").repeated(200));
    for (const int place : {3, 700, int(room.text().size())}) {
        QTextCursor cursor = room.page.text->textCursor();
        cursor.setPosition(place);
        cursor.setPosition(place - 3, QTextCursor::KeepAnchor);
        room.page.text->setTextCursor(cursor);
        QScrollBar &bar = *room.page.text->verticalScrollBar();
        bar.setValue(bar.maximum() / 2);
        const int scrolled = bar.value();
        room.attach("name", "ab");
        QCOMPARE(room.page.text->textCursor().position(), place - 3);
        QCOMPARE(room.page.text->textCursor().anchor(), place);
        QCOMPARE(bar.value(), scrolled);
    }
    QTextCursor cursor = room.page.text->textCursor();
    cursor.movePosition(QTextCursor::End);
    room.page.text->setTextCursor(cursor);
    const int end = cursor.position();
    room.attach("name", "ab");
    QCOMPARE(room.page.text->textCursor().position(), end);
}

void TestEditorAttach::nothingChosenChangesNothing()
{
    AttachRoom room;
    room.type("ТЕКСТ");
    room.form->editorAttach();
    QCOMPARE(room.text(), QString("ТЕКСТ"));
}

void TestEditorAttach::unreadableFileLeavesTheText_data()
{
    specialFiles();
}

void TestEditorAttach::unreadableFileLeavesTheText()
{
    QFETCH(SpecialFile, kind);
    AttachRoom room;
    room.type("ТЕКСТ");
    place(room.desk, kind, "name");
    room.answers.opened << room.desk.path("name") << room.desk.path("none");
    room.form->editorAttach();
    room.form->editorAttach();
    QCOMPARE(room.text(), QString("ТЕКСТ"));
    QCOMPARE(room.answers.told, QStringList());
    QCOMPARE(room.news(), (QStringList{"412:00:00 Невозможно прочитать файл:" + room.desk.path("name"),
                                       "412:00:00 Невозможно прочитать файл:" + room.desk.path("none")}));
}

void TestEditorAttach::hugeFileLeavesTheText()
{
    AttachRoom room;
    room.type("ТЕКСТ");
    QFile file(room.desk.path("name"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.resize(20LL * 1024 * 1024 * 1024)); // takes no room on the disk
    file.close();
    room.answers.opened << file.fileName();
    room.form->editorAttach();
    QCOMPARE(room.text(), QString("ТЕКСТ"));
    QCOMPARE(room.news(), QStringList("412:00:00 Невозможно прочитать файл:" + file.fileName()));
}

// At 50 baud ten minutes are 4000 characters of 7.5 units. A block has 2 for each byte, 2 for the check byte,
// 8 for the name, 1 behind it, and 24 for marks and line ends.
void TestEditorAttach::longTransmissionIsAskedAbout_data()
{
    QTest::addColumn<int>("baud");
    QTest::addColumn<int>("bytes");
    QTest::addColumn<QString>("duration");
    row("just ten minutes", 50, 1982, "");
    row("a character more", 50, 1983, "11 мин");
    row("a speed of twice that", 100, 3982, "");
    row("a little more", 100, 3983, "11 мин");
    row("the fastest line", 200, 100000, "2 ч 06 мин"); // 200035 characters: 7501.3 s
    row("damaged setting", 0, 1983, "11 мин");
    row("a megabyte", 50, 1048576, "87 ч 23 мин"); // 2097187 characters: 314578.05 s
}

void TestEditorAttach::longTransmissionIsAskedAbout()
{
    QFETCH(int, baud);
    QFETCH(int, bytes);
    QFETCH(QString, duration);
    AttachRoom room;
    Options.tlgBaud = baud;
    for (const bool agrees : {false, true}) {
        room.type("ТЕКСТ");
        if (agrees)
            room.answers.yes << true;
        room.attach("name", QByteArray(bytes, 'a'));
        QStringList asked{"Включение файла на передачу/Все (*.*)"};
        if (!duration.isEmpty())
            asked << QString("Включение файла на передачу/Для передачи файла со скоростью %1 бод потребуется "
                             "%2. Добавить вложение?")
                         .arg(baud)
                         .arg(duration);
        QCOMPARE(room.asked(), asked);
        QCOMPARE(room.text() != "ТЕКСТ", agrees || duration.isEmpty());
        room.answers.yes.clear();
    }
}

void TestEditorAttach::nameThatIsLostOnTheWayIsAskedAbout_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("lost");
    row("three letters", "a.b", true);
    row("four", "ab.c", false);
    row("one Russian letter", "я", true);
    row("four Russian letters", "яяяя", false);
}

void TestEditorAttach::nameThatIsLostOnTheWayIsAskedAbout()
{
    QFETCH(QString, name);
    QFETCH(bool, lost);
    AttachRoom room;
    room.attach(name, "ab");
    QCOMPARE(room.asked().size(), lost ? 2 : 1);
    QCOMPARE(room.text().isEmpty(), lost);
    room.answers.yes << true;
    room.attach(name, "ab");
    QCOMPARE(attachmentsOf(room.arrived()).isEmpty(), lost);
}

// A changed byte is found by the check byte of its own file alone.
void TestEditorAttach::blockWithAChangedByteIsReportedAndTheNextIsFound()
{
    AttachRoom room;
    room.attach("first", "ab");
    room.attach("second", "cd");
    room.attach("third", "ef");
    QString text = room.arrived();
    text.replace("#6364", "#6374");
    const QVector<Attachment> found = attachmentsOf(text);
    QCOMPARE(found.size(), 3);
    QVERIFY(found[0].crcOk && !found[1].crcOk && found[2].crcOk);
    QCOMPARE(found[2].data, QByteArray("ef"));
    room.desk.write("inp/20260731/a", text.toUtf8());
    room.form->inputShown.text = text;
    room.answers.paths << room.desk.path("1") << room.desk.path("3");
    room.form->inputSaveAttach();
    QCOMPARE(room.answers.told, QStringList("Сохранение вложения/Файл second искажен"));
    QCOMPARE(room.desk.read("1"), QByteArray("ab"));
    QCOMPARE(room.desk.read("3"), QByteArray("ef"));
}

QTEST_MAIN(TestEditorAttach)
#include "test_editor_attach.moc"
