#include "tests/ui/window/fields_room.h"

/// The editor with the keyboard alone.
class TestEditorKeys : public QObject
{
    Q_OBJECT

private slots:
    void everyButtonHasAKeyOfItsOwn();
    void keyPressesItsButtonFromAnyField_data();
    void keyPressesItsButtonFromAnyField();
    void keyLeavesTheLineFirst();
    void keysAreOfTheEditorsTabAlone();
    void keysOfTheWindowStayTheirs();
    void tabGoesThroughTheForm_data();
    void tabGoesThroughTheForm();
    void enterGoesOnToTheNextLine_data();
    void enterGoesOnToTheNextLine();
    void enterStopsAtAFieldThatIsTakenOver();
    void enterBehindTheLastLineLeadsToSending();
    void controlTabLeadsOut();
    void keyboardBeginsInTheText();
};

namespace
{
struct Key {
    const char *button;
    int key;
    Qt::KeyboardModifiers modifiers;
};
const Key keys[] = {
    {"editorClearButton", Qt::Key_N, Qt::ControlModifier},
    {"editorLoadButton", Qt::Key_O, Qt::ControlModifier},
    {"editorAttachButton", Qt::Key_I, Qt::ControlModifier},
    {"editorSaveButton", Qt::Key_S, Qt::ControlModifier},
    {"editorToPerforatorButton", Qt::Key_F6, Qt::NoModifier},
    {"editorFromPerforatorButton", Qt::Key_F7, Qt::NoModifier},
    {"editorSendButton", Qt::Key_Return, Qt::ControlModifier},
    {"editorSendButton", Qt::Key_Enter, Qt::ControlModifier | Qt::KeypadModifier},
    {"editorPrintButton", Qt::Key_P, Qt::ControlModifier},
};

void withEverything()
{
    Options.usePrf = Options.enableAttachFiles = Options.useOperators = true;
    Options.listOperators = QStringList{"ИВАНОВ"};
}

/// The buttons that \a act presses; what they do otherwise does not take place.
QStringList pressed(const FieldsRoom &room, const std::function<void()> &act)
{
    QStringList names;
    for (QPushButton *button : room.page.findChildren<QPushButton *>()) {
        QObject::disconnect(button, &QPushButton::clicked, nullptr, nullptr);
        QObject::connect(button, &QPushButton::clicked, button,
                         [&names, button] { names << button->objectName(); });
    }
    act();
    for (QPushButton *button : room.page.findChildren<QPushButton *>())
        QObject::disconnect(button, &QPushButton::clicked, nullptr, nullptr);
    return names;
}

QStringList tabOrder(const FieldsRoom &room, Qt::Key key)
{
    QStringList names;
    QWidget *focus = key == Qt::Key_Backtab ? room.page.print : static_cast<QWidget *>(room.page.form);
    for (focus->setFocus(); room.page.isAncestorOf(QApplication::focusWidget());) {
        names << QApplication::focusWidget()->objectName().mid(6); // behind "editor"
        FieldsRoom::press(key, key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        if (names.contains(QApplication::focusWidget()->objectName().mid(6)))
            break;
    }
    return names;
}
} // namespace

void TestEditorKeys::everyButtonHasAKeyOfItsOwn()
{
    const FieldsRoom room(FullForm, SKK, withEverything);
    QStringList tips;
    for (const QPushButton *button : room.page.findChildren<QPushButton *>())
        tips << button->toolTip();
    tips.sort();
    QCOMPARE(tips, (QStringList{"Ctrl+Enter", "Ctrl+I", "Ctrl+N", "Ctrl+O", "Ctrl+P", "Ctrl+S", "F6", "F7"}));
}

void TestEditorKeys::keyPressesItsButtonFromAnyField_data()
{
    QTest::addColumn<QByteArray>("field");
    for (const char *field : {"editorText", "editorAddress", "editorWordsCount", "editorForm",
                              "editorCategory", "editorCryptoMode", "editorSendButton"})
        row(field, QByteArray(field));
}

void TestEditorKeys::keyPressesItsButtonFromAnyField()
{
    QFETCH(QByteArray, field);
    const FieldsRoom room(FullForm, SKK, withEverything);
    FieldsRoom::type("ТЕКСТ");
    room.page.toPerforator->setEnabled(true);
    room.page.fromPerforator->setEnabled(true);
    for (const Key &key : keys) {
        room.find<QWidget>(field.constData())->setFocus();
        QCOMPARE(pressed(room, [&] { FieldsRoom::press(Qt::Key(key.key), key.modifiers); }),
                 QStringList{key.button});
    }
    QCOMPARE(room.text(), "ТЕКСТ");
}

void TestEditorKeys::keyLeavesTheLineFirst()
{
    const FieldsRoom room(FullForm);
    FieldsRoom::type("ТЕКСТ");
    FieldsRoom::write(room.page.address, "дом № 5");
    QString address;
    connect(room.page.print, &QPushButton::pressed, this, [&] { address = room.page.address->text(); });
    (void)pressed(room, [] { FieldsRoom::press(Qt::Key_P, Qt::ControlModifier); });
    QCOMPARE(room.page.address->text(), "ДОМ  НОМЕР  5");
    QCOMPARE(address, "ДОМ  НОМЕР  5");
}

void TestEditorKeys::keysAreOfTheEditorsTabAlone()
{
    const FieldsRoom room(FullForm, Direct, withEverything);
    FieldsRoom::type("ТЕКСТ");
    for (int tab = 0; tab < room.form->tabWidget->count(); ++tab) {
        room.form->tabWidget->setCurrentIndex(tab);
        if (room.form->tabWidget->currentWidget() == &room.page)
            continue;
        for (const Key &key : keys)
            QCOMPARE(pressed(room,
                             [&] {
                                 QTest::keyClick(room.form.get(), Qt::Key(key.key), key.modifiers);
                                 QTest::keyClick(QApplication::focusWidget(), Qt::Key(key.key),
                                                 key.modifiers);
                             }),
                     QStringList());
    }
    // Nor of a button that is not there, or that has nothing to do
    Options.usePrf = Options.enableAttachFiles = false;
    room.form->setPrfInterface();
    room.form->tabWidget->setCurrentWidget(&room.page);
    room.form->setEditorText("");
    QCOMPARE(pressed(room,
                     [&] {
                         for (const Key &key : keys)
                             QTest::keyClick(room.page.text, Qt::Key(key.key), key.modifiers);
                     }),
             QStringList{"editorLoadButton"});
}

void TestEditorKeys::keysOfTheWindowStayTheirs()
{
    const FieldsRoom room(FullForm);
    const QFont font = QApplication::font();
    QCOMPARE(pressed(room,
                     [&] {
                         FieldsRoom::press(Qt::Key_Plus, Qt::ControlModifier | Qt::KeypadModifier);
                         FieldsRoom::press(Qt::Key_Minus, Qt::ControlModifier | Qt::KeypadModifier);
                         FieldsRoom::press(Qt::Key_Escape);
                     }),
             QStringList());
    QCOMPARE(QApplication::font().pointSize(), font.pointSize());
    QCOMPARE(room.text(), QString());
}

void TestEditorKeys::tabGoesThroughTheForm_data()
{
    QTest::addColumn<int>("form");
    QTest::addColumn<QString>("fields");
    row("message", int(MessageForm), "Text");
    row("telegram", int(ShortForm), "Category Series Index Text");
    row("telegram in full form", int(FullForm),
        "Category Series Index From WordsCount Time Marks Address Text PScript");
    row("international", int(InternationalForm),
        "Category Series Index FKassa FTo FFrom FWordsCount FTime Text PScript");
    row("REX400", int(Rex400Form), "From WordsCount Time Text PScript");
}

void TestEditorKeys::tabGoesThroughTheForm()
{
    QFETCH(int, form);
    QFETCH(QString, fields);
    const FieldsRoom room(form, SKK, withEverything);
    FieldsRoom::type("ТЕКСТ");
    room.page.toPerforator->setEnabled(true);
    room.page.fromPerforator->setEnabled(true);
    QStringList order =
        QStringList{"Form", "CryptoMode"} + fields.split(' ') +
        QStringList{"Operator",           "ClearButton",          "LoadButton", "AttachButton", "SaveButton",
                    "ToPerforatorButton", "FromPerforatorButton", "SendButton", "PrintButton"};
    QCOMPARE(tabOrder(room, Qt::Key_Tab), order);
    std::reverse(order.begin(), order.end());
    QCOMPARE(tabOrder(room, Qt::Key_Backtab), order);
}

void TestEditorKeys::enterGoesOnToTheNextLine_data()
{
    QTest::addColumn<int>("form");
    QTest::addColumn<int>("key");
    QTest::addColumn<QStringList>("fields");
    const QStringList full{"editorIndex", "editorFrom", "editorMarks", "editorAddress", "editorText"};
    const QStringList far{"editorIndex", "editorFKassa", "editorFTo", "editorFFrom", "editorText"};
    row("telegram in full form", int(FullForm), int(Qt::Key_Return), full);
    row("on the keypad", int(FullForm), int(Qt::Key_Enter), full);
    row("international", int(InternationalForm), int(Qt::Key_Return), far);
    row("telegram", int(ShortForm), int(Qt::Key_Return), QStringList{"editorIndex", "editorText"});
    row("REX400", int(Rex400Form), int(Qt::Key_Return), QStringList{"editorFrom", "editorText"});
}

void TestEditorKeys::enterGoesOnToTheNextLine()
{
    QFETCH(int, form);
    QFETCH(int, key);
    QFETCH(QStringList, fields);
    const FieldsRoom room(form);
    room.find<QWidget>(fields.first().toLatin1().constData())->setFocus();
    for (const QString &field : fields) {
        QCOMPARE(QApplication::focusWidget()->objectName(), field);
        FieldsRoom::press(Qt::Key(key));
    }
    QCOMPARE(QApplication::focusWidget(), room.page.text);
    QCOMPARE(room.text(), "\n"); // where it makes a line
}

void TestEditorKeys::enterStopsAtAFieldThatIsTakenOver()
{
    const FieldsRoom room(FullForm);
    room.page.time->setFocus();
    FieldsRoom::press(Qt::Key_F2);
    room.page.from->setFocus();
    FieldsRoom::press(Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget(), room.page.time);
    FieldsRoom::press(Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget(), room.page.marks);
}

void TestEditorKeys::enterBehindTheLastLineLeadsToSending()
{
    const FieldsRoom room(FullForm);
    FieldsRoom::type("ТЕКСТ");
    room.page.pScript->setFocus();
    FieldsRoom::press(Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget(), room.page.send);
    room.form->setEditorText("");
    room.page.pScript->setFocus();
    FieldsRoom::press(Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget(), room.page.text); // there is nothing to send yet
}

void TestEditorKeys::controlTabLeadsOut()
{
    const FieldsRoom room(FullForm);
    for (const char *field : {"editorForm", "editorIndex", "editorWordsCount", "editorText", "editorPScript",
                              "editorLoadButton"}) {
        room.form->tabWidget->setCurrentWidget(&room.page);
        room.find<QWidget>(field)->setFocus();
        FieldsRoom::press(Qt::Key_Tab, Qt::ControlModifier);
        QVERIFY2(room.form->tabWidget->currentWidget() != &room.page, field);
    }
}

void TestEditorKeys::keyboardBeginsInTheText()
{
    const FieldsRoom room(FullForm);
    room.form->tabWidget->setCurrentIndex(0);
    room.form->tabWidget->setCurrentWidget(&room.page);
    QCOMPARE(QApplication::focusWidget(), room.page.text);
}

QTEST_MAIN(TestEditorKeys)
#include "test_editor_keys.moc"
