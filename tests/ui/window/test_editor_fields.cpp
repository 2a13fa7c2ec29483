#include "tests/ui/window/fields_room.h"

#include <QMessageBox>

/// The fields of the editor: what is counted, how lines are cleaned, category and index.
class TestEditorFields : public QObject
{
    Q_OBJECT

private slots:
    void wordsAndTimeFollowTheText();
    void wordsAreThoseOfTheShownRows();
    void internationalWordsAreTensOfCharactersThenWords();
    void timeIsSetWhenTheTabIsChosen();
    void timeIsSetWhenAnyRowIsLeft_data();
    void timeIsSetWhenAnyRowIsLeft();
    void templateWithDollarInTheWordsFieldKeepsItThroughTextChanges();
    void ownWordsStandOnlyWhileTheyAreAllowed_data();
    void ownWordsStandOnlyWhileTheyAreAllowed();
    void fieldThatIsGivenBackIsCountedAtOnce();
    void buttonsNeedAText();
    void lineIsCleanedWhenItIsLeft_data();
    void lineIsCleanedWhenItIsLeft();
    void categoryShapesTheIndex_data();
    void categoryShapesTheIndex();
    void indexIsColouredAsItIsTyped_data();
    void indexIsColouredAsItIsTyped();
    void messageGoesOnceTheIndexIsWhite();
    void categoriesAreThoseOfTheOptions();
    void newCategoriesKeepTheIndexOfTheOneInForce();
    void clearEmptiesTheTextAndBlocksTheFields_data();
    void clearEmptiesTheTextAndBlocksTheFields();
    void operatorSignsTheTelegram();
};

void TestEditorFields::wordsAndTimeFollowTheText()
{
    const FieldsRoom room(FullForm);
    QCOMPARE(room.page.wordsCount->text(), "0");
    FieldsRoom::type("ПРИВЕТ МИР");
    QCOMPARE(room.page.wordsCount->text(), "2");
    QCOMPARE(room.page.time->text(), "31/07 1200");
    FieldsRoom::setTime(12, 5);
    FieldsRoom::type(" А=Б");
    QCOMPARE(room.page.wordsCount->text(), "4");
    QCOMPARE(room.page.time->text(), "31/07 1205");
}

void TestEditorFields::wordsAreThoseOfTheShownRows()
{
    const FieldsRoom room(FullForm);
    room.page.fTo->setText("НЕ ВИДНО"); // of another form
    FieldsRoom::write(room.page.marks, "ЛЮКС");
    FieldsRoom::write(room.page.address, "МОСКВА ЛЕНИНА 5");
    FieldsRoom::write(room.page.text, "ПРИЕЗЖАЮ ЗАВТРА");
    FieldsRoom::write(room.page.pScript, "ИВАН");
    FieldsRoom::press(Qt::Key_Tab);
    QCOMPARE(room.page.wordsCount->text(), "7");
    room.page.form->setCurrentText("REX400"); // header and signature
    FieldsRoom::goTo(room.page.from);
    FieldsRoom::press(Qt::Key_Tab);
    QCOMPARE(room.page.wordsCount->text(), "3");
}

// "ПАРИЖ ИВАН ПРИЕЗЖАЮ" has 19 characters: two tens.
void TestEditorFields::internationalWordsAreTensOfCharactersThenWords()
{
    const FieldsRoom room(InternationalForm);
    FieldsRoom::write(room.page.fTo, "ПАРИЖ");
    FieldsRoom::write(room.page.pScript, "ИВАН");
    FieldsRoom::write(room.page.text, "ПРИЕЗЖАЮ");
    QCOMPARE(room.page.fWordsCount->text(), "2/3");
    QCOMPARE(room.page.fTime->text(), "31 1200");
    FieldsRoom::type("\n1"); // 21 characters
    QCOMPARE(room.page.fWordsCount->text(), "3/4");
}

void TestEditorFields::timeIsSetWhenTheTabIsChosen()
{
    const FieldsRoom room(FullForm);
    FieldsRoom::setTime(13, 0);
    room.form->tabWidget->setCurrentIndex(0);
    QCOMPARE(room.page.time->text(), "31/07 1300");
    FieldsRoom::setTime(13, 1);
    room.form->tabWidget->setCurrentWidget(room.form->editorPage);
    QCOMPARE(room.page.time->text(), "31/07 1301");
}

void TestEditorFields::timeIsSetWhenAnyRowIsLeft_data()
{
    QTest::addColumn<int>("form");
    QTest::addColumn<QByteArray>("field");
    for (const char *field : {"editorForm", "editorCryptoMode", "editorCategory", "editorSeries",
                              "editorIndex", "editorFrom", "editorWordsCount", "editorTime", "editorMarks",
                              "editorAddress", "editorText", "editorPScript", "editorOperator"})
        row(field, int(FullForm), QByteArray(field));
    for (const char *field : {"editorFKassa", "editorFTo", "editorFFrom", "editorFWordsCount", "editorFTime"})
        row(field, int(InternationalForm), QByteArray(field));
}

void TestEditorFields::timeIsSetWhenAnyRowIsLeft()
{
    QFETCH(int, form);
    QFETCH(QByteArray, field);
    const FieldsRoom room(form, SKK, [] {
        Options.useOperators = true;
        Options.listOperators = QStringList{"ИВАНОВ"};
    });
    auto *widget = room.find<QWidget>(field.constData());
    widget->setFocus();
    QVERIFY(widget->hasFocus());
    FieldsRoom::setTime(14, 7);
    FieldsRoom::press(Qt::Key_Tab);
    QVERIFY(!widget->hasFocus());
    QCOMPARE(room.page.time->text(), "31/07 1407");
    QCOMPARE(room.page.fTime->text(), "31 1407");
}

void TestEditorFields::templateWithDollarInTheWordsFieldKeepsItThroughTextChanges()
{
    const FieldsRoom room(FullForm, SKK, [] { Options.editorWordsCountShablon = "$/$"; });
    QCOMPARE(room.page.wordsCount->text(), "$/$");
    FieldsRoom::type("ПРИВЕТ МИР");
    FieldsRoom::press(Qt::Key_Tab);
    room.form->tabWidget->setCurrentIndex(0);
    QCOMPARE(room.page.wordsCount->text(), "$/$");
}

void TestEditorFields::ownWordsStandOnlyWhileTheyAreAllowed_data()
{
    QTest::addColumn<bool>("allowed");
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("time");
    row("allowed", true, "12", "01/02 0304");
    row("not allowed", false, "3", "31/07 1200");
}

void TestEditorFields::ownWordsStandOnlyWhileTheyAreAllowed()
{
    QFETCH(bool, allowed);
    const FieldsRoom room(FullForm, SKK,
                          [allowed] { Options.editorAllowManualChangeWordsCountAndTime = allowed; });
    FieldsRoom::write(room.page.text, "ПРИВЕТ МИР");
    const QPair<QLineEdit *, QString> own[] = {{room.page.wordsCount, "12"}, {room.page.time, "01/02 0304"}};
    for (const auto &field : own) {
        QTest::mouseDClick(field.first, Qt::LeftButton);
        QVERIFY(!field.first->isReadOnly());
        field.first->setFocus();
        field.first->selectAll();
        FieldsRoom::type(field.second);
        QCOMPARE(field.first->text(), field.second);
    }
    FieldsRoom::write(room.page.text, " ВСЕМ");
    room.form->tabWidget->setCurrentIndex(0);
    QTEST(room.page.wordsCount->text(), "words");
    QTEST(room.page.time->text(), "time");
}

void TestEditorFields::fieldThatIsGivenBackIsCountedAtOnce()
{
    const FieldsRoom room(InternationalForm, SKK,
                          [] { Options.editorAllowManualChangeWordsCountAndTime = true; });
    FieldsRoom::write(room.page.text, "ПРИВЕТ");
    for (QLineEditBlocked *field : {room.page.fWordsCount, room.page.fTime}) {
        const QString counted = field->text();
        field->setFocus();
        FieldsRoom::press(Qt::Key_F2);
        field->selectAll();
        FieldsRoom::type("777");
        FieldsRoom::press(Qt::Key_F2);
        QVERIFY(field->isReadOnly());
        QCOMPARE(field->text(), counted);
    }
}

void TestEditorFields::buttonsNeedAText()
{
    const FieldsRoom room(FullForm);
    const QList<QPushButton *> buttons{room.page.clear, room.page.send, room.page.print, room.page.save};
    for (const QPushButton *button : buttons)
        QVERIFY(!button->isEnabled());
    QVERIFY(room.page.load->isEnabled());
    FieldsRoom::type("А");
    for (const QPushButton *button : buttons)
        QVERIFY(button->isEnabled());
    FieldsRoom::press(Qt::Key_Backspace);
    for (const QPushButton *button : buttons)
        QVERIFY(!button->isEnabled());
}

void TestEditorFields::lineIsCleanedWhenItIsLeft_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<int>("form");
    QTest::addColumn<QString>("stands");
    const QString cleaned = "НОВЫЙ 4АС $ ВОСКЛИЦАТЕЛЬНЫЙ ЗНАК [{}";
    row("header", QByteArray("editorFrom"), int(FullForm), cleaned);
    row("marks", QByteArray("editorMarks"), int(FullForm), cleaned);
    row("address", QByteArray("editorAddress"), int(FullForm), cleaned);
    row("signature", QByteArray("editorPScript"), int(FullForm), QString("НОВЫЙ ЧАС $[{}"));
    for (const char *field : {"editorFKassa", "editorFTo", "editorFFrom"})
        row(field, QByteArray(field), int(InternationalForm), QString("новый час $![{}]"));
}

void TestEditorFields::lineIsCleanedWhenItIsLeft()
{
    QFETCH(QByteArray, field);
    QFETCH(int, form);
    const FieldsRoom room(form);
    auto *line = room.find<QLineEdit>(field.constData());
    FieldsRoom::write(line, "новый час $![{}]");
    QCOMPARE(line->text(), "новый час $![{}]"); // not while it is written
    FieldsRoom::press(Qt::Key_Tab);
    QTEST(line->text(), "stands");
    line->setFocus();
    FieldsRoom::press(Qt::Key_Tab);
    QTEST(line->text(), "stands");
}

void TestEditorFields::categoryShapesTheIndex_data()
{
    QTest::addColumn<QString>("category");
    QTest::addColumn<int>("length");
    QTest::addColumn<QString>("placeholder");
    row("ordinary", "П", 6, "000000");
    row("several letters", "СРОЧНАЯ", 6, "000000");
    row("in the end", "ПЦ", 7, "000=000");
    row("at the start", "Ц", 7, "000=000");
    row("in the middle", "АЦБ", 7, "000=000");
}

void TestEditorFields::categoryShapesTheIndex()
{
    QFETCH(QString, category);
    const FieldsRoom room(ShortForm, CKS, [&] { Options.CategoryList = "В," + category + ",Г"; });
    room.page.category->setFocus();
    FieldsRoom::press(Qt::Key_Down);
    QCOMPARE(room.page.category->currentText(), category);
    QTEST(room.page.index->maxLength(), "length");
    QTEST(room.page.index->placeholderText(), "placeholder");
    FieldsRoom::press(Qt::Key_Down);
    QCOMPARE(room.page.index->maxLength(), 6);
    QCOMPARE(room.page.index->placeholderText(), "000000");
}

void TestEditorFields::indexIsColouredAsItIsTyped_data()
{
    QTest::addColumn<QString>("category");
    QTest::addColumn<QString>("index");
    QTest::addColumn<QString>("colours"); // after each key: w or y
    row("six digits", "П", "123456", "yyyyyw");
    row("six letters", "П", "АБВГДЕ", "yyyyyw");
    row("six digits in halves' category", "ПЦ", "123456", "yyyyyw");
    row("equal halves", "ПЦ", "123=123", "yyyyyyw");
    row("other half", "ПЦ", "123=124", "yyyyyyy");
    row("seven digits", "ПЦ", "1234567", "yyyyywy");
    row("six signs with =", "ПЦ", "123=12", "yyyyyy");
    row("letters in halves", "ПЦ", "АБВ=АБВ", "yyyyyyy");
    // Though sending takes it for a category like the others
    row("category Ц at position 0 is one for the colour", "Ц", "123=123", "yyyyyyw");
    row("category Ц at position 0 wants digits", "Ц", "АБВГДЕ", "yyyyyy");
}

void TestEditorFields::indexIsColouredAsItIsTyped()
{
    QFETCH(QString, category);
    QFETCH(QString, index);
    QFETCH(QString, colours);
    const FieldsRoom room(ShortForm, CKS, [&] { Options.CategoryList = category; });
    QCOMPARE(room.indexColour(), QColor(Qt::yellow));
    room.page.index->setFocus();
    for (int i = 0; i < index.size(); ++i) {
        FieldsRoom::type(index.at(i));
        QVERIFY2(room.indexColour() == QColor(colours.at(i) == 'w' ? Qt::white : Qt::yellow),
                 qPrintable(index.left(i + 1)));
    }
}

void TestEditorFields::messageGoesOnceTheIndexIsWhite()
{
    const FieldsRoom room(ShortForm, CKS);
    room.page.indexFault->setText("Неверно указан индекс");
    room.page.index->setFocus();
    FieldsRoom::type("12345");
    QCOMPARE(room.page.indexFault->text(), "Неверно указан индекс");
    FieldsRoom::type("6");
    QCOMPARE(room.page.indexFault->text(), QString());
}

void TestEditorFields::categoriesAreThoseOfTheOptions()
{
    const FieldsRoom room(ShortForm, CKS, [] { Options.CategoryList = "П,С,ПЦ"; });
    QStringList shown;
    for (int i = 0; i < room.page.category->count(); ++i)
        shown << room.page.category->itemText(i);
    QCOMPARE(shown, (QStringList{"П", "С", "ПЦ"}));
    QCOMPARE(room.page.category->currentText(), "П");
    QCOMPARE(room.page.series->itemText(0) + room.page.series->itemText(1), "0102");
}

void TestEditorFields::newCategoriesKeepTheIndexOfTheOneInForce()
{
    const FieldsRoom room(ShortForm, CKS, [] { Options.CategoryList = "П,ПЦ"; });
    room.page.category->setCurrentText("ПЦ");
    FieldsRoom::write(room.page.index, "123=123");
    room.page.setCategories({"А", "ПЦ", "Б"});
    QCOMPARE(room.page.category->currentText(), "ПЦ");
    QCOMPARE(room.page.index->text(), "123=123");
    QCOMPARE(room.indexColour(), QColor(Qt::white));
    room.page.setCategories({"А"});
    QCOMPARE(room.page.index->maxLength(), 6);
}

void TestEditorFields::clearEmptiesTheTextAndBlocksTheFields_data()
{
    QTest::addColumn<bool>("signatureToo");
    QTest::addColumn<QString>("signature");
    QTest::addColumn<QString>("words");
    row("signature stays", false, "ИВАН", "1");
    row("signature goes", true, "", "0");
}

void TestEditorFields::clearEmptiesTheTextAndBlocksTheFields()
{
    QFETCH(bool, signatureToo);
    const FieldsRoom room(FullForm, SKK, [signatureToo] {
        Options.editorEmptyPScriptOnClear = signatureToo;
        Options.editorAllowManualChangeWordsCountAndTime = true;
    });
    FieldsRoom::write(room.page.pScript, "ИВАН");
    FieldsRoom::write(room.page.text, "ТЕКСТ");
    for (QLineEditBlocked *field : {room.page.wordsCount, room.page.time}) {
        QTest::mouseDClick(field, Qt::LeftButton);
        field->setText("777");
    }
    FieldsRoom::setTime(15, 30);
    QTest::mouseClick(room.page.clear, Qt::LeftButton);
    QCOMPARE(room.text(), QString());
    QTEST(room.page.pScript->text(), "signature");
    QCOMPARE(room.page.time->text(), "31/07 1530");
    QTEST(room.page.wordsCount->text(), "words");
    QVERIFY(room.page.time->isReadOnly() && room.page.wordsCount->isReadOnly());
    QVERIFY(!room.page.clear->isEnabled() && !room.page.send->isEnabled());
}

void TestEditorFields::operatorSignsTheTelegram()
{
    const FieldsRoom room(FullForm, SKK, [] {
        Options.useOperators = true;
        Options.listOperators = QStringList{"ИВАНОВ"};
        Options.lastOperator = "-";
    });
    room.page.operators->setFocus();
    FieldsRoom::press(Qt::Key_Down);
    QCOMPARE(room.page.pScript->text(), "ИВАНОВ");
    QCOMPARE(Options.lastOperator, "ИВАНОВ");
    FieldsRoom::press(Qt::Key_Up);
    QCOMPARE(room.page.pScript->text(), "ИВАНОВ");
    QCOMPARE(Options.lastOperator, "-");
}

QTEST_MAIN(TestEditorFields)
#include "test_editor_fields.moc"
