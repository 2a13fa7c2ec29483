// The telegram that the editor's fields become, from the window into the queue.

#include "tests/support/row.h"
#include "tests/ui/window/sending_room.h"
#include "ui/widgets/line_edit_blocked.h"

#include <QCheckBox>

namespace
{
const QString End = "-\n\n\n\n\n\n";
const QString Head = "П123456\r\n|||\r\n\n\n";

/// What stands in the queue behind the head when \a text is sent in the form of category and text.
QString bodyOf(const QString &text)
{
    const SendingRoom room(CKS, ShortForm);
    room.write(text);
    if (!room.send())
        return "not sent";
    return room.queued("20260731u001").mid(Head.size());
}
} // namespace

class TestEditorSendForm : public QObject
{
    Q_OBJECT

private slots:
    void incompleteIndexIsRefusedWithMessageAndFocus_data();
    void incompleteIndexIsRefusedWithMessageAndFocus();
    void formWithoutIndexIsSentWhateverItHolds();
    void fieldsStandInTheirOrder();
    void internationalFieldsStandInTheirOrder();
    void rex400FieldsStandInTheirOrder();
    void textEndsOnce_data();
    void textEndsOnce();
    void dashGetsTheSignatureBehindIt();
    void messageGetsNoEnd();
    void textOfOneCharacterIsNotEnded();
    void wordCountStandsForTheDollar_data();
    void wordCountStandsForTheDollar();
    void bracketIsTheNumberInTheName();
    void dayAndTimeAreThoseOfTheSending();
    void templateInTheWordsIsFilledIn();
    void spelledOutSignsStandInTheEditor();
    void cursorAndSelectionStayAtTheirLetters();
    void spellingOutIsUndone();
    void textThatNeedsNoSpellingIsLeftAlone();
    void cipherKeepsItsLineEnds();
};

void TestEditorSendForm::incompleteIndexIsRefusedWithMessageAndFocus_data()
{
    QTest::addColumn<QString>("category");
    QTest::addColumn<QString>("index");
    QTest::addColumn<QString>("message"); // empty if it is sent
    const QString wrong = "Неверно указан индекс", missing = "Не указан индекс";
    row("no index", "П", "", wrong);
    row("five digits", "П", "12345", wrong);
    row("six digits", "П", "123456", "");
    row("six letters", "П", "АБВГДЕ", "");
    row("no index, halves allowed", "ПЦ", "", missing);
    row("five digits, halves allowed", "ПЦ", "12345", missing);
    row("six digits, halves allowed", "ПЦ", "123456", "");
    row("two halves", "ПЦ", "123=123", "");
    row("halves that differ", "ПЦ", "123=456", "");
    row("seven without =", "ПЦ", "1234567", wrong);
    row("= at the wrong place", "ПЦ", "12=3456", wrong);
    row("Ц at the start alone, no index", "Ц", "", wrong);
    row("Ц at the start alone, five", "Ц", "12345", wrong);
    row("Ц at the start alone, six", "Ц", "123456", "");
    row("Ц at the start alone, seven without =", "Ц", "1234567", "");
    row("Ц twice, seven without =", "ЦЦ", "1234567", wrong);
    row("Ц later on, seven without =", "АБЦ", "1234567", wrong);
}

void TestEditorSendForm::incompleteIndexIsRefusedWithMessageAndFocus()
{
    QFETCH(QString, category);
    QFETCH(QString, index);
    QFETCH(QString, message);
    SendingRoom room(CKS, ShortForm, [] { Options.CategoryList = "П,ПЦ,Ц,ЦЦ,АБЦ"; });
    room.write("ПРИВЕТ", category, index);
    room.page.indexFault->setText("СТАРОЕ");
    room.page.text->setFocus();
    QCOMPARE(room.send(), message.isEmpty());
    QCOMPARE(room.page.indexFault->text(), message);
    QCOMPARE(room.page.index->hasFocus(), !message.isEmpty());
    QCOMPARE(room.queue().isEmpty(), !message.isEmpty());
    QCOMPARE(room.queued("20260731u001").section("\r\n", 0, 0),
             message.isEmpty() ? category + index : QString());
    QCOMPARE(State.EditorN, message.isEmpty() ? 1 : 0);
}

void TestEditorSendForm::formWithoutIndexIsSentWhateverItHolds()
{
    SendingRoom room(SKK, MessageForm);
    room.write("ПРИВЕТ", "П", "1");
    QVERIFY(room.send(toNumbers("654321")));
    QCOMPARE(room.queued("20260731u001"), "ПРИВЕТ");
    QCOMPARE(room.page.indexFault->text(), QString());
}

void TestEditorSendForm::fieldsStandInTheirOrder()
{
    SendingRoom room(CKS, FullForm);
    room.write("ПРИЕЗЖАЮ ЗАВТРА", "П", "654321");
    room.page.series->setCurrentIndex(1);
    room.page.from->setText("ТВЕРЬ 17");
    room.page.marks->setText("ЛЮКС");
    room.page.address->setText("МОСКВА ИВАНОВУ");
    room.page.pScript->setText("ПЕТРОВ");
    QVERIFY(room.send());
    QCOMPARE(room.queued("20260731u001"),
             "П02 654321\r\n|||\r\n\n\nТВЕРЬ 17 6 31/07 1200=\r\n\nЛЮКС\r\n\nМОСКВА ИВАНОВУ=\r\nПРИЕЗЖАЮ "
             "ЗАВТРА=\r\nПЕТРОВ" +
                 End);
}

void TestEditorSendForm::internationalFieldsStandInTheirOrder()
{
    SendingRoom room(CKS, InternationalForm);
    room.write("HAPPY BIRTHDAY", "П", "654321");
    room.page.fKassa->setText("КАССА 1");
    room.page.fTo->setText("PARIS");
    room.page.fFrom->setText("TVER");
    room.page.pScript->setText("PETROV");
    QVERIFY(room.send());
    QCOMPARE(room.queued("20260731u001"),
             "П654321\r\n|||\r\n\n\nКАССА 1\r\nPARIS\r\nTVER 3/4 31 1200\r\nHAPPY BIRTHDAY");
}

void TestEditorSendForm::rex400FieldsStandInTheirOrder()
{
    SendingRoom room(SKK, Rex400Form);
    room.write("ПРИВЕТ");
    room.page.from->setText("ТВЕРЬ 17");
    room.page.pScript->setText("ПЕТРОВ");
    QVERIFY(room.send(toNumbers("654321")));
    QCOMPARE(room.queued("20260731u001"), "ТВЕРЬ 17 2 31/07 1200=\r\n\nПРИВЕТ=\r\nПЕТРОВ" + End);
}

void TestEditorSendForm::textEndsOnce_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("body");
    row("without an end", "ПРИВЕТ", "ПРИВЕТ" + End);
    row("ended by a dash", "ПРИВЕТ-", "ПРИВЕТ-");
    row("ended by a dash and blanks", "ПРИВЕТ- \n", "ПРИВЕТ- \r\n");
    row("a dash inside", "А-Б", "А-Б" + End);
}

void TestEditorSendForm::textEndsOnce()
{
    QFETCH(QString, text);
    QTEST(bodyOf(text), "body");
}

void TestEditorSendForm::dashGetsTheSignatureBehindIt()
{
    SendingRoom room(CKS, FullForm);
    room.write("ПРИВЕТ-");
    room.page.pScript->setText("ПЕТРОВ");
    QVERIFY(room.send());
    QVERIFY(room.queued("20260731u001").endsWith("ПРИВЕТ-=\r\nПЕТРОВ" + End));
    room.write("ПРИВЕТ-");
    room.page.pScript->clear();
    QVERIFY(room.send());
    QVERIFY(room.queued("20260731u002").endsWith("ПРИВЕТ-"));
}

void TestEditorSendForm::messageGetsNoEnd()
{
    SendingRoom room(SKK, MessageForm);
    room.write("ПРИВЕТ");
    QVERIFY(room.send(toNumbers("654321")));
    QCOMPARE(room.queued("20260731u001"), "ПРИВЕТ");
}

void TestEditorSendForm::textOfOneCharacterIsNotEnded()
{
    QCOMPARE(bodyOf("А"), "А");
    QCOMPARE(bodyOf("АБ"), "АБ" + End);
}

void TestEditorSendForm::wordCountStandsForTheDollar_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("body");
    row("alone", "ПРИВЕТ МИР $", "ПРИВЕТ МИР 3" + End);
    row("before a digit", "ПРИВЕТ МИР $5", "ПРИВЕТ МИР 35" + End);
}

void TestEditorSendForm::wordCountStandsForTheDollar()
{
    QFETCH(QString, text);
    QTEST(bodyOf(text), "body");
}

void TestEditorSendForm::bracketIsTheNumberInTheName()
{
    SendingRoom room(CKS, FullForm);
    State.EditorN = 41;
    room.write("ТЕЛЕГРАММА [");
    room.page.from->setText("ТВЕРЬ [");
    QVERIFY(room.send());
    QCOMPARE(room.queue(), QStringList{"20260731u042"});
    QVERIFY(room.queued("20260731u042").contains("ТВЕРЬ 42 "));
    QVERIFY(room.queued("20260731u042").contains("ТЕЛЕГРАММА 42"));
    QCOMPARE(room.page.text->toPlainText(), "ТЕЛЕГРАММА ["); // to be sent under the next number
}

void TestEditorSendForm::dayAndTimeAreThoseOfTheSending()
{
    SendingRoom room(CKS, FullForm, [] { Options.editorAllowManualChangeWordsCountAndTime = true; });
    room.write("{ } $DD $MM $YYYY $YY");
    room.page.from->setText("ТВЕРЬ");
    room.page.wordsCount->setText("$");
    room.page.time->setBlocked(false);
    room.page.time->setText("$hh:$mm:$ss");
    Time.setTo(QDateTime(QDate(2026, 7, 31), QTime(14, 5, 9)));
    QVERIFY(room.send());
    QCOMPARE(room.queued("20260731u001"), Head + "ТВЕРЬ 6 14:05:09=\r\n\n07.31 1405 31 07 2026 26" + End);
}

void TestEditorSendForm::templateInTheWordsIsFilledIn()
{
    SendingRoom room(CKS, FullForm, [] { Options.editorAllowManualChangeWordsCountAndTime = true; });
    room.page.from->setText("ТВЕРЬ");
    room.page.wordsCount->setText("$");
    room.page.time->setBlocked(false);
    room.write("ОДИН ДВА ТРИ");
    room.page.time->setText("}");
    QCOMPARE(room.page.wordsCount->text(), "$");
    QVERIFY(room.send());
    QVERIFY(room.queued("20260731u001").contains("\r\n\n\nТВЕРЬ 3 1200=\r\n\n"));
}

void TestEditorSendForm::spelledOutSignsStandInTheEditor()
{
    SendingRoom room(CKS, ShortForm);
    room.write("ЧАС!\nъё");
    QVERIFY(room.send());
    QCOMPARE(room.page.text->toPlainText(), "4АС ВОСКЛИЦАТЕЛЬНЫЙ ЗНАК \nЬЕ");
    QCOMPARE(room.queued("20260731u001"), Head + "4АС ВОСКЛИЦАТЕЛЬНЫЙ ЗНАК \r\nЬЕ" + End);
    QVERIFY(!room.page.send->isEnabled());
}

void TestEditorSendForm::cursorAndSelectionStayAtTheirLetters()
{
    SendingRoom room(CKS, ShortForm);
    room.write("А%Б\nвгд%");
    QTextCursor cursor = room.page.text->textCursor();
    cursor.setPosition(6);
    cursor.setPosition(5, QTextCursor::KeepAnchor); // "г", backwards
    room.page.text->setTextCursor(cursor);
    (void)room.form->getEditorTextForSend();
    QCOMPARE(room.page.text->toPlainText(), "А ПРОЦЕНТЫ Б\nВГД ПРОЦЕНТЫ ");
    QCOMPARE(room.page.text->textCursor().selectedText(), "Г");
    QVERIFY(room.page.text->textCursor().position() < room.page.text->textCursor().anchor());
}

void TestEditorSendForm::spellingOutIsUndone()
{
    SendingRoom room(CKS, ShortForm);
    room.page.text->setFocus();
    QTest::keyClicks(room.page.text, "50%");
    (void)room.form->getEditorTextForSend();
    QCOMPARE(room.page.text->toPlainText(), "50 ПРОЦЕНТЫ ");
    QTest::keySequence(room.page.text, QKeySequence::Undo);
    QCOMPARE(room.page.text->toPlainText(), "50%");
    QTest::keySequence(room.page.text, QKeySequence::Undo);
    QCOMPARE(room.page.text->toPlainText(), QString());
}

void TestEditorSendForm::textThatNeedsNoSpellingIsLeftAlone()
{
    SendingRoom room(CKS, ShortForm);
    room.page.text->setPlainText("ПРИВЕТ\nМИР");
    const int revision = room.page.text->document()->revision();
    (void)room.form->getEditorTextForSend();
    QCOMPARE(room.page.text->document()->revision(), revision);
}

void TestEditorSendForm::cipherKeepsItsLineEnds()
{
    SendingRoom room(SKK, MessageForm);
    room.page.cryptoMode->setChecked(true);
    room.write("12345<\n67890<\n");
    QVERIFY(room.send(toNumbers("654321")));
    QCOMPARE(room.queued("20260731u001"), "12345\r\n67890\r\n");
}

QTEST_MAIN(TestEditorSendForm)
#include "test_editor_send_form.moc"
