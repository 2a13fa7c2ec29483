#include "tests/ui/window/fields_room.h"

#include <QDropEvent>
#include <QMessageBox>
#include <QMimeData>

using Change = std::function<void(const FieldsRoom &)>;
Q_DECLARE_METATYPE(Change)

/// What the editor cannot take or carry is told in red, and what it replaced comes back by Ctrl+Z.
class TestEditorDropped : public QObject
{
    Q_OBJECT

private slots:
    void pasteIntoTheTextStaysAndIsTold();
    void dropOntoTheTextIsTold();
    void typingIsToldAndLeftAlone();
    void textTakenFromElsewhereTellsWhatItLost_data();
    void textTakenFromElsewhereTellsWhatItLost();
    void nextTextEndsTheTelling();
    void pasteIntoALineTellsWhatItLosesWhenItIsLeft();
    void lossIsToldUntilTheLineIsWrittenAnew();
    void lossOfATemplateIsTold();
    void lossOfTheLastMomentIsToldThoughTheTelegramGoes();
    void signatureIsToldOfWhatIsNotSpelledOut();
    void linesThatAreNotCleanedTellWhatTheLineDrops();
    void hiddenRowsAreNotTold();
    void longPasteIntoTheIndexIsTold();
    void indexThatIsCutByItsCategoryIsTold();
    void cipherTellsOfItsLineEndsOnlyOutsideItsMode();
    void tellingIsRedAndFitsTheScreen();
    void clearEndsTheTelling();
    void textThatWasReplacedComesBack_data();
    void textThatWasReplacedComesBack();
    void cursorStaysWhereTheTextIsNotReplaced();
    void cleanedLineComesBack();
};

namespace
{
const QString NotCarried = "Не передаются знаки: ";
const QString Removed = "Удалены знаки: ";
} // namespace

void TestEditorDropped::pasteIntoTheTextStaysAndIsTold()
{
    const FieldsRoom room(MessageForm);
    FieldsRoom::paste("Цена № 5 ~ «10» €");
    QCOMPARE(room.text(), "Цена № 5 ~ «10» €"); // it is filtered when it is sent
    QCOMPARE(room.dropped(), NotCarried + "~ « »");
    FieldsRoom::press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(room.text(), QString());
    QCOMPARE(room.dropped(), QString());
}

void TestEditorDropped::dropOntoTheTextIsTold()
{
    const FieldsRoom room(MessageForm);
    QMimeData dragged;
    dragged.setText("А^Б");
    QWidget *under = room.page.text->viewport();
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &dragged, Qt::LeftButton, {});
    QApplication::sendEvent(under, &enter);
    QDropEvent drop(QPoint(5, 5), Qt::CopyAction, &dragged, Qt::LeftButton, {});
    QApplication::sendEvent(under, &drop);
    QCOMPARE(room.text(), "А^Б");
    QCOMPARE(room.dropped(), NotCarried + "^");
}

void TestEditorDropped::typingIsToldAndLeftAlone()
{
    const FieldsRoom room(MessageForm);
    FieldsRoom::type("что?\n");
    QCOMPARE(room.text(), "что?\n");
    QCOMPARE(room.dropped(), QString()); // Ч and the capitals are everyone's
    FieldsRoom::type("^");
    QCOMPARE(room.dropped(), NotCarried + "^");
    FieldsRoom::press(Qt::Key_Backspace);
    QCOMPARE(room.dropped(), QString());
}

void TestEditorDropped::textTakenFromElsewhereTellsWhatItLost_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("told");
    row("nothing", "привет\r\n[{}$", "");
    row("several", "А~Б№В~", Removed + "~ №");
    row("mark of a line end is a line end", "А>Б", "");
    row("a sign that stays, and will not go", "А<~Б", Removed + "~\n" + NotCarried + "<");
}

void TestEditorDropped::textTakenFromElsewhereTellsWhatItLost()
{
    QFETCH(QString, text);
    const FieldsRoom room(MessageForm);
    room.form->setEditorText(text);
    QTEST(room.dropped(), "told");
}

void TestEditorDropped::nextTextEndsTheTelling()
{
    const FieldsRoom room(MessageForm);
    room.form->setEditorText("А~Б");
    FieldsRoom::type("ЕЩЕ");
    room.form->tabWidget->setCurrentIndex(0); // it can still be read
    QCOMPARE(room.dropped(), Removed + "~");
    room.form->setEditorText("ДРУГОЕ");
    QCOMPARE(room.dropped(), QString());
}

void TestEditorDropped::pasteIntoALineTellsWhatItLosesWhenItIsLeft()
{
    for (const char *field : {"editorFrom", "editorMarks", "editorAddress"}) {
        const FieldsRoom room(FullForm);
        auto *line = room.find<QLineEdit>(field);
        FieldsRoom::goTo(line);
        FieldsRoom::paste("дом № 5 «А»");
        QCOMPARE(room.dropped(), NotCarried + "« »");
        FieldsRoom::press(Qt::Key_Tab);
        QCOMPARE(line->text(), "ДОМ  НОМЕР  5 А");
        QCOMPARE(room.dropped(), Removed + "« »");
        line->setFocus(); // to pass through it does not end the telling
        FieldsRoom::press(Qt::Key_Tab);
        QCOMPARE(room.dropped(), Removed + "« »");
    }
}

void TestEditorDropped::lossIsToldUntilTheLineIsWrittenAnew()
{
    const FieldsRoom room(FullForm);
    FieldsRoom::write(room.page.address, "А~^");
    FieldsRoom::write(room.page.marks, "люкс!");
    FieldsRoom::write(room.page.pScript, "Иван^№");
    FieldsRoom::press(Qt::Key_Tab);
    QCOMPARE(room.page.marks->text(), "ЛЮКС ВОСКЛИЦАТЕЛЬНЫЙ ЗНАК ");
    QStringList told = room.dropped().mid(Removed.size()).split(' ');
    told.sort();
    QCOMPARE(told, (QStringList{"^", "~", "№"}));
    room.page.form->setCurrentText("REX400"); // without the address
    QCOMPARE(room.dropped(), Removed + "^ №");
    room.page.form->setCurrentText("Телеграмма с оформлением");
    FieldsRoom::write(room.page.pScript, "ОВ");
    FieldsRoom::press(Qt::Key_Tab);
    QCOMPARE(room.dropped(), Removed + "~ ^");
    FieldsRoom::write(room.page.address, "Б");
    FieldsRoom::press(Qt::Key_Tab);
    QCOMPARE(room.dropped(), QString());
}

void TestEditorDropped::lossOfATemplateIsTold()
{
    const FieldsRoom room(FullForm);
    TelegramFields fields;
    fields.address = "ДОМ ~";
    room.page.setFields(fields);
    QCOMPARE(room.dropped(), NotCarried + "~");
    room.page.address->setFocus();
    FieldsRoom::press(Qt::Key_Tab);
    QCOMPARE(room.page.address->text(), "ДОМ ");
    QCOMPARE(room.dropped(), Removed + "~");
}

void TestEditorDropped::lossOfTheLastMomentIsToldThoughTheTelegramGoes()
{
    const FieldsRoom room(FullForm);
    FieldsRoom::write(room.page.text, "ТЕКСТ");
    FieldsRoom::write(room.page.address, "А~");
    FieldsRoom::press(Qt::Key_Return, Qt::ControlModifier); // the index is missing
    QCOMPARE(room.page.address->text(), "А");
    (void)room.form->getEditorTextForSend();
    QCOMPARE(room.dropped(), Removed + "~");
}

void TestEditorDropped::signatureIsToldOfWhatIsNotSpelledOut()
{
    const FieldsRoom room(FullForm);
    FieldsRoom::write(room.page.pScript, "Иван!");
    QCOMPARE(room.dropped(), NotCarried + "!");
    FieldsRoom::press(Qt::Key_Tab);
    QCOMPARE(room.page.pScript->text(), "ИВАН");
    QCOMPARE(room.dropped(), Removed + "!");
}

void TestEditorDropped::linesThatAreNotCleanedTellWhatTheLineDrops()
{
    for (const char *field : {"editorFKassa", "editorFTo", "editorFFrom", "editorIndex"}) {
        const FieldsRoom room(InternationalForm);
        FieldsRoom::write(room.find<QLineEdit>(field), "a№1");
        FieldsRoom::press(Qt::Key_Tab);
        QCOMPARE(room.find<QLineEdit>(field)->text(), "a№1");
        QCOMPARE(room.dropped(), NotCarried + "№");
    }
}

void TestEditorDropped::hiddenRowsAreNotTold()
{
    const FieldsRoom room(InternationalForm);
    FieldsRoom::write(room.page.fTo, "№");
    room.page.form->setFocus();
    FieldsRoom::press(Qt::Key_Home); // to the message, which has no such row
    QCOMPARE(room.dropped(), QString());
}

void TestEditorDropped::longPasteIntoTheIndexIsTold()
{
    const FieldsRoom room(ShortForm);
    FieldsRoom::goTo(room.page.index);
    FieldsRoom::paste("1234567");
    QCOMPARE(room.page.index->text(), "123456");
    QTRY_COMPARE(room.dropped(), "Лишние знаки индекса не приняты");
    FieldsRoom::press(Qt::Key_Backspace);
    QCOMPARE(room.dropped(), QString());
    FieldsRoom::type("6");
    QCOMPARE(room.dropped(), QString());
    FieldsRoom::type("7");
    QTRY_COMPARE(room.dropped(), "Лишние знаки индекса не приняты");
}

void TestEditorDropped::indexThatIsCutByItsCategoryIsTold()
{
    const FieldsRoom room(ShortForm, CKS, [] { Options.CategoryList = "ПЦ,П"; });
    FieldsRoom::write(room.page.index, "123=123");
    room.page.category->setFocus();
    FieldsRoom::press(Qt::Key_Down);
    QCOMPARE(room.page.index->text(), "123=12");
    QCOMPARE(room.dropped(), "Индекс был длиннее: 123=123");
}

void TestEditorDropped::cipherTellsOfItsLineEndsOnlyOutsideItsMode()
{
    const FieldsRoom room(MessageForm);
    room.page.cryptoMode->setFocus();
    FieldsRoom::press(Qt::Key_Space);
    FieldsRoom::write(room.page.text, "12345<\n");
    QCOMPARE(room.dropped(), QString());
    FieldsRoom::type("6<7");
    room.page.cryptoMode->setFocus();
    FieldsRoom::press(Qt::Key_Space);
    QCOMPARE(room.text(), "12345\n6<7");
    QCOMPARE(room.dropped(), NotCarried + "<");
}

void TestEditorDropped::tellingIsRedAndFitsTheScreen()
{
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPointSize(24);
    QApplication::setFont(large);
    const FieldsRoom room(FullForm);
    room.form->resize(800, 600);
    room.form->setEditorText("@№€\\!;%_~^<>[]");
    FieldsRoom::type(QString::fromUcs4(U"\U0001F600\uFDFD\u1234\u200B\u200C\u200D\u00A0^~"));
    QCoreApplication::processEvents();
    QCOMPARE(room.page.dropped->palette().color(QPalette::WindowText), QColor(Qt::red));
    QCOMPARE(room.form->width(), 800);
    const QLabel &label = *room.page.dropped;
    QVERIFY(label.isVisible());
    QVERIFY(label.mapTo(room.form.get(), label.rect().topRight()).x() < 800);
    QVERIFY(label.height() >= label.heightForWidth(label.width()));
    room.form->setEditorText("А");
    QVERIFY(!label.isVisible());
    QApplication::setFont(usual);
}

void TestEditorDropped::clearEndsTheTelling()
{
    const FieldsRoom room(MessageForm);
    room.form->setEditorText("А~<");
    QTest::mouseClick(room.page.clear, Qt::LeftButton);
    QCOMPARE(room.dropped(), QString());
}

void TestEditorDropped::textThatWasReplacedComesBack_data()
{
    QTest::addColumn<Change>("change");
    row("another text", Change([](const FieldsRoom &room) { room.form->setEditorText("ДРУГОЕ"); }));
    row("an empty text", Change([](const FieldsRoom &room) { room.form->setEditorText(""); }));
    row("crypto mode", Change([](const FieldsRoom &room) { room.page.cryptoMode->click(); }));
    row("transliteration", Change([](const FieldsRoom &room) {
            const Answer yes(QMessageBox::Yes);
            room.form->slotEditorTransliterate();
        }));
    row("clear", Change([](const FieldsRoom &room) { room.page.clear->click(); }));
    row("composition", Change([](const FieldsRoom &room) { (void)room.form->getEditorTextForSend(); }));
}

void TestEditorDropped::textThatWasReplacedComesBack()
{
    QFETCH(Change, change);
    const FieldsRoom room(MessageForm);
    const QString written = "ЧТО\n№ 5, ПРИВЕТ\n";
    FieldsRoom::type(written);
    change(room);
    QVERIFY(room.text() != written);
    const QString changed = room.text();
    room.page.text->setFocus();
    FieldsRoom::press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(room.text(), written);
    FieldsRoom::press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(room.text(), changed);
}

void TestEditorDropped::cursorStaysWhereTheTextIsNotReplaced()
{
    const FieldsRoom room(MessageForm);
    FieldsRoom::type("АБ\nВГ");
    FieldsRoom::press(Qt::Key_Up);
    FieldsRoom::press(Qt::Key_Left);
    room.page.replaceText("АБ<\nВГ");
    FieldsRoom::type("1");
    QCOMPARE(room.text(), "А1Б<\nВГ");
}

void TestEditorDropped::cleanedLineComesBack()
{
    const FieldsRoom room(FullForm);
    FieldsRoom::write(room.page.address, "дом № 5");
    FieldsRoom::press(Qt::Key_Tab);
    QCOMPARE(room.page.address->text(), "ДОМ  НОМЕР  5");
    room.page.address->setFocus();
    FieldsRoom::press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(room.page.address->text(), "дом № 5");
}

QTEST_MAIN(TestEditorDropped)
#include "test_editor_dropped.moc"
