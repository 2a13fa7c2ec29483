#include "tests/ui/window/fields_room.h"

#include <QMessageBox>

/// The menus of the editor: the ready marks, and what can be done with the text.
class TestEditorMenus : public QObject
{
    Q_OBJECT

private slots:
    void readyMarkStandsInTheLine_data();
    void readyMarkStandsInTheLine();
    void readyMarkTakesThePlaceOfAnother();
    void markInTheLineIsTheOneThatIsChecked();
    void noReadyMarksMakeAnEmptyMenu();
    void textMenuOffersWhatCanBeDone_data();
    void textMenuOffersWhatCanBeDone();
    void textMenuCutsCopiesAndPastes();
    void transliterationIsAskedFor_data();
    void transliterationIsAskedFor();
};

namespace
{
const QStringList Marks{
    "ЛЮКС",           "ЛЮКС/М", "ЛЮКС/В", "УВЕДОМЛЕНИЕ ТЕЛЕГРАФОМ", "УВЕДОМЛЕНИЕ ТЕЛЕГРАФОМ СРОЧНОЕ",
    "ПОЧТОЙ ЗАКАЗНОЕ"};
}

void TestEditorMenus::readyMarkStandsInTheLine_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::addColumn<QString>("mark");
    for (const QString &mark : Marks) {
        row(qPrintable("mouse, " + mark), false, mark);
        row(qPrintable("key, " + mark), true, mark);
    }
}

void TestEditorMenus::readyMarkStandsInTheLine()
{
    QFETCH(bool, byKey);
    QFETCH(QString, mark);
    const FieldsRoom room(FullForm);
    room.page.marks->setFocus();
    const auto menu = byKey ? &FieldsRoom::menuByKey : &FieldsRoom::menuByMouse;
    QCOMPARE((room.*menu)(room.page.marks, mark), Marks);
    QCOMPARE(room.page.marks->text(), mark);
    const int words = mark.count(' ') + 1;
    QCOMPARE(room.page.wordsCount->text(), QString::number(words));
}

void TestEditorMenus::readyMarkTakesThePlaceOfAnother()
{
    const FieldsRoom room(FullForm);
    FieldsRoom::write(room.page.marks, "СРОЧНО");
    (void)room.menuByKey(room.page.marks, "ЛЮКС/В");
    QCOMPARE(room.page.marks->text(), "ЛЮКС/В");
    FieldsRoom::press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(room.page.marks->text(), "СРОЧНО");
}

void TestEditorMenus::markInTheLineIsTheOneThatIsChecked()
{
    const FieldsRoom room(FullForm);
    const auto checked = [&room] {
        QStringList marks;
        for (const QAction *action : room.page.findChild<QActionGroup *>()->actions())
            if (action->isChecked())
                marks << action->text();
        return marks;
    };
    room.page.marks->setText("ЛЮКС/М");
    (void)room.menuByKey(room.page.marks, "ЛЮКС/В");
    QCOMPARE(checked(), QStringList{"ЛЮКС/В"});
    QVERIFY(room.page.findChild<QActionGroup *>()->isExclusive());
    room.page.marks->setText("СРОЧНО");
    (void)room.menuByKey(room.page.marks);
    QCOMPARE(checked(), QStringList());
    (void)room.menuByKey(room.page.marks, "ЛЮКС/В"); // the same once more
    QCOMPARE(room.page.marks->text(), "ЛЮКС/В");
    (void)room.menuByKey(room.page.marks, "ЛЮКС/В");
    QCOMPARE(room.page.marks->text(), "ЛЮКС/В");
}

void TestEditorMenus::noReadyMarksMakeAnEmptyMenu()
{
    const FieldsRoom room(FullForm, SKK, [] { Options.serviceMarks.clear(); });
    room.page.marks->setFocus();
    QCOMPARE(room.menuByKey(room.page.marks), QStringList());
    FieldsRoom::write(room.page.marks, "ЛЮКС");
    QCOMPARE(room.page.marks->text(), "ЛЮКС");
}

void TestEditorMenus::textMenuOffersWhatCanBeDone_data()
{
    QTest::addColumn<bool>("selected");
    QTest::addColumn<bool>("copied");
    QTest::addColumn<QStringList>("entries");
    row("nothing", false, false, QStringList{"Транслитерация", "(Вырезать)", "(Копировать)", "(Вставить)"});
    row("a selection", true, false, QStringList{"Транслитерация", "Вырезать", "Копировать", "(Вставить)"});
    row("a clipboard", false, true, QStringList{"Транслитерация", "(Вырезать)", "(Копировать)", "Вставить"});
}

void TestEditorMenus::textMenuOffersWhatCanBeDone()
{
    QFETCH(bool, selected);
    QFETCH(bool, copied);
    const FieldsRoom room(MessageForm);
    FieldsRoom::type("ТЕКСТ");
    if (selected)
        FieldsRoom::press(Qt::Key_A, Qt::ControlModifier);
    QApplication::clipboard()->setText(copied ? "КОПИЯ" : "");
    QTEST(room.menuByKey(room.page.text), "entries");
    QTEST(room.menuByMouse(room.page.text), "entries");
}

void TestEditorMenus::textMenuCutsCopiesAndPastes()
{
    const FieldsRoom room(MessageForm);
    FieldsRoom::type("ТЕКСТ");
    FieldsRoom::press(Qt::Key_A, Qt::ControlModifier);
    (void)room.menuByKey(room.page.text, "Копировать");
    QCOMPARE(QApplication::clipboard()->text(), "ТЕКСТ");
    QApplication::clipboard()->setText("");
    (void)room.menuByKey(room.page.text, "Вырезать");
    QCOMPARE(room.text(), QString());
    (void)room.menuByKey(room.page.text, "Вставить");
    (void)room.menuByKey(room.page.text, "Вставить");
    QCOMPARE(room.text(), "ТЕКСТТЕКСТ");
}

void TestEditorMenus::transliterationIsAskedFor_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<QString>("text");
    row("yes", int(QMessageBox::Yes), "SCUKA 12 ABC");
    row("no", int(QMessageBox::No), "ЩУКА 12 ABC");
    row("closed", int(QMessageBox::Escape), "ЩУКА 12 ABC");
}

void TestEditorMenus::transliterationIsAskedFor()
{
    QFETCH(int, answer);
    const FieldsRoom room(MessageForm);
    FieldsRoom::type("ЩУКА 12 ABC");
    const Answer answered(answer);
    (void)room.menuByKey(room.page.text, "Транслитерация");
    QCOMPARE(answered.asked, (QStringList{"Velda|Редактор", "Произвести транслитерацию текста?"}));
    QTEST(room.text(), "text");
    FieldsRoom::press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(room.text(), answer == QMessageBox::Yes ? "ЩУКА 12 ABC" : "");
}

QTEST_MAIN(TestEditorMenus)
#include "test_editor_menus.moc"
