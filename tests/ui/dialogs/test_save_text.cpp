// Saving received texts: what is asked, what is written, and what is told.

#include "app/options.h"
#include "records/protocol.h"
#include "tests/support/desk.h"
#include "tests/support/full_disk.h"
#include "tests/support/no_ordinary_file.h"
#include "tests/support/row.h"
#include "tests/ui/dialogs/answers.h"
#include "ui/dialogs/file_dialog_with_codepage_select.h"
#include "ui/dialogs/save_text.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QtTest>

Q_DECLARE_METATYPE(FileCoding)

class TestSaveText : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void textIsWrittenInTheCodingChosen_data();
    void textIsWrittenInTheCodingChosen();
    void dialogBeginsInTheDirectoryOfTheOption_data();
    void dialogBeginsInTheDirectoryOfTheOption();
    void cancelWritesNothing();
    void lossIsToldBeforeItIsWritten();
    void lossRefusedLetsChooseAnew();
    void lossOfManyCharactersNamesSome();
    void lossOfWhatIsNotSeenIsNamedByItsCode();
    void fullDiskLeavesTheFormerFile();
    void whatIsNoFileIsNotWritten_data();
    void whatIsNoFileIsNotWritten();

    void boxOffersTheDirectoryTheNameAndTheCodings();
    void boxGivesWhatWasTyped();
    void boxPutsTheSuffixBehindATextsName_data();
    void boxPutsTheSuffixBehindATextsName();
    void boxAsksBeforeItReplaces_data();
    void boxAsksBeforeItReplaces();
    void boxShowsFilesWithoutASuffix();
    void boxLeftByEscapeGivesNothing();

private:
    QTemporaryDir m_settings; ///< of the file dialog, which keeps where it has been
};

namespace
{
CodedFile file(const QString &path, FileCoding coding)
{
    return {path, coding};
}

/// Opens the real box on \a suggested with \a act inside it.
CodedFile inside(const CodedFile &suggested, const std::function<void(CFileDialogWithCodepageSelect &)> &act)
{
    bool acted = false;
    QTimer::singleShot(0, [&] {
        auto *box = qobject_cast<CFileDialogWithCodepageSelect *>(QApplication::activeModalWidget());
        QVERIFY(box != nullptr);
        act(*box);
        acted = true;
        if (box->isVisible())
            box->reject();
    });
    const CodedFile chosen = pickCodedFileToSave(nullptr, "Сохранение файла", suggested);
    return acted ? chosen : file("the box did not open", FileCoding::UTF8);
}

QLineEdit *nameOf(const QDialog &box)
{
    return box.findChild<QLineEdit *>("fileNameEdit");
}
} // namespace

void TestSaveText::initTestCase()
{
    qputenv("XDG_CONFIG_HOME", m_settings.path().toLocal8Bit());
}

void TestSaveText::textIsWrittenInTheCodingChosen_data()
{
    QTest::addColumn<FileCoding>("coding");
    QTest::addColumn<QByteArray>("bytes");
    row("UTF-8", FileCoding::UTF8, QByteArray::fromHex("d097d0a6d0970d0a31d18f"));
    row("CP866", FileCoding::CP866, QByteArray::fromHex("8796870d0a31ef"));
    row("CP1251", FileCoding::CP1251, QByteArray::fromHex("c7d6c70d0a31ff"));
}

void TestSaveText::textIsWrittenInTheCodingChosen()
{
    QFETCH(FileCoding, coding);
    QFETCH(QByteArray, bytes);
    const Desk desk;
    Answers answers;
    answers.files << file(desk.path("saved.txt"), coding);
    QVERIFY(saveTextWithCodepage(nullptr, "ЗЦЗ\r\n1я"));
    QCOMPARE(desk.read("saved.txt"), bytes);
    QCOMPARE(answers.asked, QStringList{"Сохранение файла//UTF-8"});
    QCOMPARE(desk.journal(), QStringList());
}

void TestSaveText::dialogBeginsInTheDirectoryOfTheOption_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("begin");
    QTest::addColumn<QString>("beginWithName");
    row("none", "", "", "name");
    row("one of the data", "taken", "taken", "taken/name");
    row("one that is gone", "gone", "", "name");
}

void TestSaveText::dialogBeginsInTheDirectoryOfTheOption()
{
    QFETCH(QString, option);
    QFETCH(QString, begin);
    QFETCH(QString, beginWithName);
    const Desk desk;
    desk.write("taken/other", "1");
    Options.pathForSaveInInput = option;
    Answers answers;
    answers.files << file(desk.path("elsewhere.txt"), FileCoding::UTF8);
    QVERIFY(saveTextWithCodepage(nullptr, "А"));
    QVERIFY(!saveTextWithCodepage(nullptr, "А", "name"));
    QCOMPARE(answers.asked, (QStringList{"Сохранение файла/" + begin + "/UTF-8",
                                         "Сохранение файла/" + beginWithName + "/UTF-8"}));
    QCOMPARE(Options.pathForSaveInInput, option); // it is the options' dialog that changes it
}

void TestSaveText::cancelWritesNothing()
{
    const Desk desk;
    const Answers answers;
    const QStringList before = desk.names("");
    QVERIFY(!saveTextWithCodepage(nullptr, "Ә"));
    QCOMPARE(desk.names(""), before);
    QCOMPARE(answers.asked.size(), 1);
    QCOMPARE(answers.told, QStringList());
}

void TestSaveText::lossIsToldBeforeItIsWritten()
{
    const Desk desk;
    Answers answers;
    answers.files << file(desk.path("saved.txt"), FileCoding::CP866);
    answers.yes << true;
    QVERIFY(saveTextWithCodepage(nullptr, "АӘБҒӘ"));
    QCOMPARE(answers.asked.value(1), "Сохранение файла/В кодировке CP866 нет знаков текста (3):\nӘ Ғ\n\n"
                                     "Вместо каждого будет записан знак «?». Сохранить?");
    QCOMPARE(desk.read("saved.txt"), QByteArray("\x80?\x81??"));
}

void TestSaveText::lossRefusedLetsChooseAnew()
{
    const Desk desk;
    desk.write("saved.txt", "former");
    Answers answers;
    answers.files << file(desk.path("saved.txt"), FileCoding::CP1251)
                  << file(desk.path("saved.txt"), FileCoding::UTF8);
    QVERIFY(saveTextWithCodepage(nullptr, "Ә"));
    QCOMPARE(answers.asked.size(), 3);
    QCOMPARE(answers.asked.at(2), "Сохранение файла/" + desk.path("saved.txt") + "/CP1251");
    QCOMPARE(desk.read("saved.txt"), QByteArray("\xD3\x98"));

    answers.files << file(desk.path("other.txt"), FileCoding::CP1251);
    QVERIFY(!saveTextWithCodepage(nullptr, "Ә")); // refused, then left
    QVERIFY(!QFile::exists(desk.path("other.txt")));
}

void TestSaveText::lossOfManyCharactersNamesSome()
{
    const Desk desk;
    Answers answers;
    answers.files << file(desk.path("saved.txt"), FileCoding::CP866);
    QString text;
    for (ushort c = 0x10D0; c < 0x10D0 + 21; ++c)
        text += QChar(c);
    QVERIFY(!saveTextWithCodepage(nullptr, text));
    const QString names = answers.asked.value(1).section('\n', 1, 1);
    QCOMPARE(names, "ა ბ გ დ ე ვ ზ თ ი კ ლ მ ნ ო პ ჟ რ ს ტ უ ...");
}

void TestSaveText::lossOfWhatIsNotSeenIsNamedByItsCode()
{
    const Desk desk;
    Answers answers;
    answers.files << file(desk.path("saved.txt"), FileCoding::CP866);
    QVERIFY(!saveTextWithCodepage(nullptr, QString(QChar(0x202E)) + QChar(0x0301) + QChar(0x0085)));
    QCOMPARE(answers.asked.value(1).section('\n', 1, 1), "U+202E U+0301 U+0085");
}

void TestSaveText::fullDiskLeavesTheFormerFile()
{
    const Desk desk;
    desk.write("saved.txt", "former");
    Log.lines << QString(); // no text runs that the note would wait for
    Answers answers;
    answers.files << file(desk.path("saved.txt"), FileCoding::UTF8);
    {
        const FullDisk full;
        QVERIFY(!saveTextWithCodepage(nullptr, "НОВОЕ"));
    }
    QCOMPARE(desk.read("saved.txt"), QByteArray("former"));
    QCOMPARE(answers.told, QStringList{"Сохранение файла/Ошибка записи файла " + desk.path("saved.txt")});
    QCOMPARE(desk.journal(),
             (QStringList{"412:00:00 Ошибка записи файла " + desk.path("saved.txt"), QString()}));
}

void TestSaveText::whatIsNoFileIsNotWritten_data()
{
    specialFiles();
}

void TestSaveText::whatIsNoFileIsNotWritten()
{
    QFETCH(SpecialFile, kind);
    const Desk desk;
    place(desk, kind, "saved.txt");
    Answers answers;
    answers.files << file(desk.path("saved.txt"), FileCoding::UTF8);
    QVERIFY(!saveTextWithCodepage(nullptr, "А"));
    QCOMPARE(answers.told.size(), 1);
    QVERIFY(stands(desk, kind, "saved.txt"));
}

// The box itself

void TestSaveText::boxOffersTheDirectoryTheNameAndTheCodings()
{
    const Desk desk;
    desk.write("taken/other.txt", "1");
    const CodedFile chosen =
        inside(file(desk.path("taken"), FileCoding::CP866), [&](CFileDialogWithCodepageSelect &box) {
            QCOMPARE(box.windowTitle(), QString("Сохранение файла"));
            QCOMPARE(box.acceptMode(), QFileDialog::AcceptSave);
            QCOMPARE(box.directory().absolutePath(), desk.path("taken"));
            QCOMPARE(nameOf(box)->text(), QString());
            QCOMPARE(box.codepage(), QString("CP866"));
            QCOMPARE(box.nameFilters(), (QStringList{"Текст (*.txt)", "Все (*)"}));
        });
    QCOMPARE(chosen.path, QString());
    (void)inside(file(desk.path("taken/20260731u001"), FileCoding::UTF8), [&](auto &box) {
        QCOMPARE(box.directory().absolutePath(), desk.path("taken"));
        QCOMPARE(nameOf(box)->text(), QString("20260731u001"));
        QCOMPARE(box.codepage(), QString("UTF-8"));
    });
}

void TestSaveText::boxGivesWhatWasTyped()
{
    const Desk desk;
    const CodedFile chosen = inside(file(desk.path(), FileCoding::UTF8), [](auto &box) {
        QTest::keyClicks(nameOf(box), "a.001");
        auto *codings = box.template findChild<QComboBox *>("codepage");
        codings->setFocus();
        QTest::keyClick(codings, Qt::Key_End);
        QTest::keyClick(nameOf(box), Qt::Key_Return);
    });
    QCOMPARE(chosen.path, desk.path("a.001"));
    QVERIFY(chosen.coding == FileCoding::CP1251);
}

void TestSaveText::boxPutsTheSuffixBehindATextsName_data()
{
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("name");
    row("texts", "Текст (*.txt)", "a", "a.txt");
    row("texts, with a suffix", "Текст (*.txt)", "a.001", "a.001");
    row("all", "Все (*)", "a", "a");
}

void TestSaveText::boxPutsTheSuffixBehindATextsName()
{
    QFETCH(QString, filter);
    QFETCH(QString, typed);
    QFETCH(QString, name);
    const Desk desk;
    const CodedFile chosen = inside(file(desk.path(), FileCoding::UTF8), [&](auto &box) {
        auto *filters = box.template findChild<QComboBox *>("fileTypeCombo");
        filters->setFocus();
        QTest::keyClick(filters, filter.startsWith("Все") ? Qt::Key_End : Qt::Key_Home);
        nameOf(box)->setText(typed);
        QTest::keyClick(nameOf(box), Qt::Key_Return);
    });
    QCOMPARE(chosen.path, desk.path(name));
}

void TestSaveText::boxAsksBeforeItReplaces_data()
{
    QTest::addColumn<QString>("typed");
    row("whole name", "there.txt");
    row("without its suffix", "there");
}

void TestSaveText::boxAsksBeforeItReplaces()
{
    QFETCH(QString, typed);
    const Desk desk;
    desk.write("there.txt", "former");
    const CodedFile chosen = inside(file(desk.path(), FileCoding::UTF8), [&](auto &box) {
        bool asked = false;
        QTimer::singleShot(0, [&] {
            auto *question = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            QVERIFY(question != nullptr);
            asked = true;
            question->done(QMessageBox::No);
        });
        nameOf(box)->setText(typed);
        QTest::keyClick(nameOf(box), Qt::Key_Return);
        QVERIFY(asked);
        QVERIFY(box.isVisible());
    });
    QCOMPARE(chosen.path, QString());
}

void TestSaveText::boxShowsFilesWithoutASuffix()
{
    const Desk desk;
    desk.write("taken/20260731u001", "1");
    desk.write("taken/a.txt", "1");
    (void)inside(file(desk.path("taken"), FileCoding::UTF8), [](auto &box) {
        auto *filters = box.template findChild<QComboBox *>("fileTypeCombo");
        filters->setFocus();
        QTest::keyClick(filters, Qt::Key_End);
        const auto *list = box.template findChild<QListView *>("listView");
        QTRY_COMPARE(list->model()->rowCount(list->rootIndex()), 2);
    });
}

void TestSaveText::boxLeftByEscapeGivesNothing()
{
    const Desk desk;
    const CodedFile chosen = inside(file(desk.path("a.txt"), FileCoding::UTF8), [](auto &box) {
        QTest::keyClick(&box, Qt::Key_Escape);
        QVERIFY(!box.isVisible());
    });
    QCOMPARE(chosen.path, QString());
}

QTEST_MAIN(TestSaveText)
#include "test_save_text.moc"
