#include "tests/support/possible_name.h"
#include "tests/support/read_only.h"
#include "tests/ui/window/editor_room.h"
#include "text/telegram_form.h"

#include <QDir>

/// The store of templates: forms with their fields, as files of a directory for each form.
class TestEditorTemplates : public QObject
{
    Q_OBJECT

private slots:
    void storeIsAskedForOnlyWhereItIsInUse();
    void refusedStoreLeavesThePlainDialogs();
    void directoriesAreMade();
    void templateIsWrittenWithItsSeparators();
    void nameWithoutADotGetsTheSuffix_data();
    void nameWithoutADotGetsTheSuffix();
    void everyFormIsSavedAndLoadedAgain_data();
    void everyFormIsSavedAndLoadedAgain();
    void foreignLettersAreSavedAndLoadedAgain();
    void templateOfAnotherPageIsLoaded();
    void zeroInAFieldIsNotWrittenAgain();
    void everyFormIsLoadedInEveryOther_data();
    void everyFormIsLoadedInEveryOther();
    void loadedFieldsReplaceTheFormerOnes();
    void hiddenFieldsStay();
    void damagedFileGoesIntoTheText_data();
    void damagedFileGoesIntoTheText();
    void lineTooLongForItsFieldStaysInTheText();
    void anyEndOfATemplateIsHarmless();
    void directoryThatCannotBeMadeIsJournalled_data();
    void directoryThatCannotBeMadeIsJournalled();
    void unreadableTemplateLeavesEverything();
};

namespace
{
const QString End = QStringLiteral("-\n\n\n\n\n\n");
const auto useStore = [] { Options.editorUseShablonFiles = true; };

struct StoreRoom : EditorRoom {
    StoreRoom(int processMode, int formNumber) : EditorRoom(processMode, useStore) { choose(formNumber); }
    explicit StoreRoom(int formNumber) : StoreRoom(formNumber == InternationalForm ? CKS : SKK, formNumber) {}

    void load(const QString &name)
    {
        answers.yes << true;
        answers.opened << desk.path(name);
        click(page.load);
    }
    void save(const QString &name)
    {
        answers.yes << true;
        answers.names << FilteredFile{desk.path(name), QStringLiteral("Все (*.*)")};
        if (page.text->toPlainText().isEmpty())
            type(QStringLiteral(" "));
        click(page.save);
    }
    void fill() const
    {
        page.category->setCurrentText(QStringLiteral("С"));
        page.series->setCurrentIndex(1);
        page.index->setText(QStringLiteral("123456"));
        page.from->setText(QStringLiteral("ЗАГОЛОВОК $"));
        page.marks->setText(QStringLiteral("ЛЮКС"));
        page.address->setText(QStringLiteral("КАЗАНЬ ПЕТРОВУ"));
        page.fKassa->setText(QStringLiteral("КАССА 5"));
        page.fTo->setText(QStringLiteral("PARIS"));
        page.fFrom->setText(QStringLiteral("MOSCOW"));
        page.pScript->setText(QStringLiteral("ИВАНОВ"));
        type(QStringLiteral("ТЕКСТ [ {\nА = Б -\n"));
    }
    void empty() const
    {
        page.category->setCurrentIndex(0);
        page.series->setCurrentIndex(0);
        for (QLineEdit *line : {page.index, page.from, page.marks, page.address, page.fKassa, page.fTo,
                                page.fFrom, page.pScript})
            line->clear();
        type(QString());
    }
    /// What the form shows, without the counted words and times.
    [[nodiscard]] QString shown() const
    {
        TelegramFields fields = page.fields();
        return composeTemplate(fields, page.shownRows());
    }
};

void addForms()
{
    QTest::addColumn<int>("form");
    row("message", int(MessageForm));
    row("telegram", int(ShortForm));
    row("with its heading", int(FullForm));
    row("international", int(InternationalForm));
    row("REX400", int(Rex400Form));
}
} // namespace

void TestEditorTemplates::storeIsAskedForOnlyWhereItIsInUse()
{
    StoreRoom room(ShortForm);
    room.type("А");
    room.answers.yes << true << true;
    EditorRoom::click(room.page.load);
    EditorRoom::click(room.page.save);
    QCOMPARE(room.asked(),
             (QStringList{"Загрузка/Использовать хранилище шаблонов?",
                          "Загрузка из шаблона/Шаблоны/Телеграмма/Текстовые (*.txt);;Все (*.*)",
                          "Сохранение/Использовать хранилище шаблонов?",
                          "Сохранение шаблона/Шаблоны/Телеграмма/Текстовые (*.txt);;Все (*.*)"}));
    Options.editorUseShablonFiles = false;
    EditorRoom::click(room.page.load);
    QCOMPARE(room.asked(), QStringList("Загрузка//Все (*.*)"));
}

void TestEditorTemplates::refusedStoreLeavesThePlainDialogs()
{
    StoreRoom room(ShortForm);
    room.type("А");
    EditorRoom::click(room.page.load);
    EditorRoom::click(room.page.save);
    QCOMPARE(room.asked(), (QStringList{"Загрузка/Использовать хранилище шаблонов?", "Загрузка//Все (*.*)",
                                        "Сохранение/Использовать хранилище шаблонов?",
                                        "Сохранение файла из редактора//Текст (*.txt);;Все (*.*)"}));
    QVERIFY(!QDir(room.desk.path("Шаблоны")).exists());
}

void TestEditorTemplates::directoriesAreMade()
{
    StoreRoom room(FullForm);
    room.type("А");
    room.answers.yes << true;
    EditorRoom::click(room.page.load);
    QVERIFY(!QDir(room.desk.path("Шаблоны")).exists());
    room.answers.yes << true;
    EditorRoom::click(room.page.save);
    QCOMPARE(room.desk.names("Шаблоны"), QStringList("Телеграмма с оформлением"));
    QCOMPARE(room.news(), QStringList());
}

void TestEditorTemplates::templateIsWrittenWithItsSeparators()
{
    StoreRoom room(FullForm);
    room.fill();
    room.save("a.txt");
    QCOMPARE(QString::fromUtf8(room.desk.read("a.txt")),
             "С02 123456\r\n|||\r\n\n\nЗАГОЛОВОК $=\r\n\nЛЮКС\r\n\nКАЗАНЬ ПЕТРОВУ=\r\n"
             "ТЕКСТ [ {\r\nА = Б -\r\n=\r\nИВАНОВ" +
                 End);
    QCOMPARE(room.news(),
             QStringList("312:00:00 Содержимое редактора сохранено как шаблон в " + room.desk.path("a.txt")));
    QCOMPARE(Options.lastSaveFilePath, QString());
}

void TestEditorTemplates::nameWithoutADotGetsTheSuffix_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("written");
    row("without a dot", "a", "a.txt");
    row("with a suffix", "a.b", "a.b");
    row("with a dot alone", "a.", possibleName("a."));
}

void TestEditorTemplates::nameWithoutADotGetsTheSuffix()
{
    QFETCH(QString, typed);
    QFETCH(QString, written);
    StoreRoom room(ShortForm);
    QVERIFY(QDir().mkdir(room.desk.path("dir.of")));
    room.type("А");
    room.save("dir.of/" + typed);
    QCOMPARE(room.desk.names("dir.of"), QStringList(written));
}

void TestEditorTemplates::everyFormIsSavedAndLoadedAgain_data()
{
    addForms();
}

void TestEditorTemplates::everyFormIsSavedAndLoadedAgain()
{
    QFETCH(int, form);
    StoreRoom room(form);
    room.fill();
    const QString before = room.shown();
    room.save("a.txt");
    room.empty();
    QVERIFY(room.shown() != before);
    room.load("a.txt");
    QCOMPARE(room.shown(), before);
    QCOMPARE(room.text(), QString("ТЕКСТ [ {\nА = Б -\n"));
}

// The file would end there.
void TestEditorTemplates::zeroInAFieldIsNotWrittenAgain()
{
    StoreRoom room(Rex400Form);
    room.desk.write("a.txt", QByteArray("\x80\0\x81=\r\n\n\x82", 8));
    room.load("a.txt");
    QCOMPARE(room.page.from->text(), QString("АБ"));
    QCOMPARE(room.text(), QString("В"));
    room.save("b.txt");
    QCOMPARE(room.desk.read("b.txt"), ("АБ=\r\n\nВ=\r\n" + End).toUtf8());
}

// They are the more of the letters here, and not the code's.
void TestEditorTemplates::foreignLettersAreSavedAndLoadedAgain()
{
    StoreRoom room(InternationalForm);
    room.page.fTo->setText(QStringLiteral("ALLÉE №5 «ÉTÉ»"));
    room.type(QStringLiteral("TEXT"));
    room.save("a.txt");
    room.empty();
    room.load("a.txt");
    QCOMPARE(room.page.fTo->text(), QString("ALLÉE №5 «ÉTÉ»"));
    QCOMPARE(room.text(), QString("TEXT"));
}

void TestEditorTemplates::templateOfAnotherPageIsLoaded()
{
    StoreRoom room(Rex400Form);
    room.desk.write("a.txt", QByteArray("\xCC\xC8\xD0=\r\n\n\xCC\xC8\xD0"));
    room.load("a.txt");
    QCOMPARE(room.page.from->text(), QString("МИР"));
    QCOMPARE(room.text(), QString("МИР"));
}

void TestEditorTemplates::everyFormIsLoadedInEveryOther_data()
{
    QTest::addColumn<int>("saved");
    QTest::addColumn<int>("loaded");
    for (int saved = MessageForm; saved < TelegramFormCount; ++saved)
        for (int loaded = MessageForm; loaded < TelegramFormCount; ++loaded)
            QTest::addRow("%d in %d", saved, loaded) << saved << loaded;
}

// What has no field of its own stands in the text: no word of the operator's is lost.
void TestEditorTemplates::everyFormIsLoadedInEveryOther()
{
    QFETCH(int, saved);
    QFETCH(int, loaded);
    StoreRoom room(SKK, saved);
    room.fill();
    room.save("a.txt");
    const QString words = QString::fromUtf8(room.desk.read("a.txt"));
    room.choose(loaded);
    room.empty();
    room.load("a.txt");
    const QString all = room.shown();
    for (const char *word : {"С02 123456", "ЗАГОЛОВОК $", "ЛЮКС", "КАЗАНЬ ПЕТРОВУ", "КАССА 5", "PARIS",
                             "MOSCOW", "ТЕКСТ [ {", "А = Б -", "ИВАНОВ"})
        if (words.contains(QString::fromUtf8(word)))
            QVERIFY2(all.contains(QString::fromUtf8(word)), word);
}

void TestEditorTemplates::loadedFieldsReplaceTheFormerOnes()
{
    StoreRoom room(FullForm);
    room.fill();
    room.desk.write("a.txt", "П111111\r\n|||\r\n\n\n=\r\n\n\r\n\n=\r\nТЕКСТ=\r\n-\n\n\n\n\n\n");
    room.load("a.txt");
    QCOMPARE(room.page.category->currentText(), QString("П"));
    QCOMPARE(room.page.series->currentText(), QString("01"));
    QCOMPARE(room.page.index->text(), QString("111111"));
    for (const QLineEdit *line : {room.page.from, room.page.marks, room.page.address, room.page.pScript})
        QCOMPARE(line->text(), QString());
    QCOMPARE(room.text(), QString("ТЕКСТ"));
}

void TestEditorTemplates::hiddenFieldsStay()
{
    StoreRoom room(ShortForm);
    room.fill();
    room.desk.write("a.txt", "П111111\r\n|||\r\n\n\nТЕКСТ");
    room.load("a.txt");
    QCOMPARE(room.page.address->text(), QString("КАЗАНЬ ПЕТРОВУ"));
    QCOMPARE(room.page.pScript->text(), QString("ИВАНОВ"));
}

void TestEditorTemplates::damagedFileGoesIntoTheText_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("text");
    row("no field at all", QByteArray("ПРИВЕТ МИР"), "ПРИВЕТ МИР");
    row("first separator over two lines", QByteArray("П1\r\n23\r\n|||\r\n\n\nТЕКСТ"),
        "П1\n23\n|||\n\n\nТЕКСТ");
    row("empty", QByteArray(), "");
    row("a zero in the middle", QByteArray("АБ\0ВГ", 9), "АБ");
    row("no letter of the code", QByteArray("~^_\x01\x02"), "");
}

void TestEditorTemplates::damagedFileGoesIntoTheText()
{
    QFETCH(QByteArray, content);
    StoreRoom room(FullForm);
    room.fill();
    room.desk.write("a.txt", content);
    room.load("a.txt");
    QTEST(room.text(), "text");
    QCOMPARE(room.page.address->text(), QString());
}

void TestEditorTemplates::lineTooLongForItsFieldStaysInTheText()
{
    StoreRoom room(Rex400Form);
    const QString line(40000, 'A');
    room.desk.write("a.txt", (line + "=\r\n\nТЕКСТ").toUtf8());
    room.load("a.txt");
    QCOMPARE(room.page.from->text(), QString());
    QCOMPARE(room.text(), line + "=\n\nТЕКСТ");
}

void TestEditorTemplates::anyEndOfATemplateIsHarmless()
{
    StoreRoom room(FullForm);
    room.fill();
    room.save("a.txt");
    const QByteArray whole = room.desk.read("a.txt");
    for (int size = 0; size < whole.size(); ++size) {
        room.desk.write("b.txt", whole.left(size));
        room.load("b.txt");
    }
    room.load("a.txt");
    QCOMPARE(room.text(), QString("ТЕКСТ [ {\nА = Б -\n"));
}

void TestEditorTemplates::directoryThatCannotBeMadeIsJournalled_data()
{
    QTest::addColumn<bool>("fileInTheWay");
    row("a file in its place", true);
    row("no right to make it", false);
}

// The operator may still choose another place.
void TestEditorTemplates::directoryThatCannotBeMadeIsJournalled()
{
    QFETCH(bool, fileInTheWay);
    StoreRoom room(ShortForm);
    Options.pathShablons = room.desk.path("locked/Шаблоны");
    room.desk.write(fileInTheWay ? "locked/Шаблоны" : "locked/a", "A");
    room.type("ТЕКСТ");
    {
        const ReadOnly locked(room.desk, "locked");
        room.save("a");
    }
    QCOMPARE(room.answers.told, QStringList());
    QCOMPARE(room.desk.read("a.txt"), ("П\r\n|||\r\n\n\nТЕКСТ" + End).toUtf8());
    QCOMPARE(
        room.news(),
        (QStringList{"412:00:00 Ошибка создания каталога " + Options.pathShablons + "/Телеграмма",
                     "312:00:00 Содержимое редактора сохранено как шаблон в " + room.desk.path("a.txt")}));
    QCOMPARE(room.desk.names("locked").size(), 1);
}

void TestEditorTemplates::unreadableTemplateLeavesEverything()
{
    StoreRoom room(FullForm);
    room.fill();
    const QString before = room.shown();
    room.load("none.txt");
    QCOMPARE(room.shown(), before);
    QCOMPARE(room.news(), QStringList("412:00:00 Невозможно прочитать файл:" + room.desk.path("none.txt")));
}

QTEST_MAIN(TestEditorTemplates)
#include "test_editor_templates.moc"
