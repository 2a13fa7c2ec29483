// The field for the numbers of a sending: what it takes key by key and at once, and what may then be sent.

#include "tests/support/desk.h"
#include "tests/support/row.h"
#include "tests/ui/dialogs/sending.h"

#include <QApplication>
#include <QTableWidget>

class TestSendNumbers : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_desk = std::make_unique<Desk>(); }
    void cleanup() { m_desk.reset(); }

    void keysAndPasteLeaveTheSame_data();
    void keysAndPasteLeaveTheSame();
    void sendingFollowsEachKey();
    void refusedCharacterLeavesTheCursor();
    void keyInTheMiddleIsJudgedWithTheRest();
    void roomGrowsWithTheNumbers();
    void formerNumbersAreChosenFromTheList();
    void numberIsTakenFromTheSubscribers();
    void numbersAreTakenFromTheLists();
    void shortNumberIsTakenAlone();
    void severalNumbersNeverRunTogether_data();
    void severalNumbersNeverRunTogether();
    void buttonsStandWhereThereIsAList_data();
    void buttonsStandWhereThereIsAList();
    void subscriberLeftKeepsTheNumber();

private:
    std::unique_ptr<Desk> m_desk;
};

void TestSendNumbers::keysAndPasteLeaveTheSame_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<bool>("valid");
    row("12,3 keeps no comma", "12,3", "123", false);
    row("123456,1234 is not valid", "123456,1234", "123456,1234", false);
    row("123456,123456 is valid", "123456,123456", "123456,123456", true);
    row("nothing of a number", "abc, -", "", false);
    row("as it is written", "+7 (12) 34-56", "+7123456", true);
    row("two with blanks", "123456, 234567", "123456,234567", true);
    row("a comma at the end", "123456,", "123456,", false);
    row("longer than a line", repeated("123456789", 30).join(','), repeated("123456789", 30).join(','), true);
}

void TestSendNumbers::keysAndPasteLeaveTheSame()
{
    QFETCH(QString, typed);
    for (const bool pasted : {false, true}) {
        const Sending sending(SKK);
        pasted ? sending.paste(typed) : sending.type(typed);
        QTEST(sending.number(), "shown");
        QTEST(sending.maySend(), "valid");
    }
}

void TestSendNumbers::sendingFollowsEachKey()
{
    const Sending sending(SKK);
    const QString keys = "123456,1234567";
    QString allowed;
    for (const QChar key : keys) {
        sending.type(key);
        allowed += sending.maySend() ? '1' : '0';
    }
    QCOMPARE(allowed, QString("00000100000011"));
    sending.key(Qt::Key_Backspace);
    sending.key(Qt::Key_Backspace);
    QVERIFY(!sending.maySend());
    sending.line()->clear();
    QVERIFY(!sending.maySend());
}

void TestSendNumbers::refusedCharacterLeavesTheCursor()
{
    const Sending sending(SKK);
    sending.type("1256");
    sending.key(Qt::Key_Left);
    sending.key(Qt::Key_Left);
    sending.type("x3,4");
    QCOMPARE(sending.number(), QString("123456"));
    QCOMPARE(sending.line()->cursorPosition(), 4);
}

// A number that has become too short holds no comma.
void TestSendNumbers::keyInTheMiddleIsJudgedWithTheRest()
{
    const Sending sending(SKK);
    sending.type("123456,234567");
    sending.line()->setCursorPosition(6);
    sending.key(Qt::Key_Backspace);
    QCOMPARE(sending.number(), QString("12345234567"));
    QCOMPARE(sending.line()->cursorPosition(), 5);
}

void TestSendNumbers::roomGrowsWithTheNumbers()
{
    const Sending sending(SKK);
    const QStringList numbers = repeated("12345678", 5000);
    sending.dialog->setNumber(numbers.join(','));
    QCOMPARE(sending.number(), numbers.join(','));
    QVERIFY(sending.line()->maxLength() >= 9 * 5000 + 16);
    sending.click("send");
    QCOMPARE(sending.dialog->order.numbers, numbers);
}

void TestSendNumbers::formerNumbersAreChosenFromTheList()
{
    Options.lastSKKCallNumbers = QStringList{"111111,222222", "333333"};
    const Sending sending(SKK);
    auto *combo = sending.find<QComboBox>("number");
    sending.key(Qt::Key_Down);
    QCOMPARE(combo->currentText(), QString("111111,222222"));
    QVERIFY(sending.maySend());
    sending.click("send");
    QCOMPARE(sending.dialog->order.numbers, (QStringList{"111111", "222222"}));
    QCOMPARE(Options.lastSKKCallNumbers, (QStringList{"111111,222222", "333333"}));
}

namespace
{
/// Presses the button \a name and, in the list that opens, \a key with the first row current.
void openList(const Sending &sending, const char *name, Qt::Key key)
{
    bool opened = false;
    QTimer::singleShot(0, sending.dialog.get(), [&] {
        QWidget *list = QApplication::activeModalWidget();
        auto *table = list->findChild<QTableWidget *>();
        QVERIFY(table != nullptr);
        opened = true;
        table->setCurrentCell(0, 0);
        QTest::keyClick(list, key);
    });
    sending.click(name);
    QVERIFY(opened);
}

QString note(const Sending &sending)
{
    const auto *label = sending.find<QLabel>("note");
    return label->isVisible() ? label->text() : QString();
}
} // namespace

void TestSendNumbers::numberIsTakenFromTheSubscribers()
{
    Options.abonents = {{"А", "1", "123456", ""}, {"Б", "1", "234567", ""}};
    const Sending sending(SKK);
    QCOMPARE(sending.find<QPushButton>("abonents")->text(), QString("Абоненты"));
    sending.type("999999");
    openList(sending, "abonents", Qt::Key_Return);
    QCOMPARE(sending.number(), QString("123456"));
    QCOMPARE(sending.focus(), QString("number"));
    QVERIFY(sending.maySend());
    QVERIFY(sending.dialog->isVisible());
}

void TestSendNumbers::numbersAreTakenFromTheLists()
{
    Options.abonentLists = {{"А", {"123456", "234567", "123456"}, ""}, {"Б", {"345678"}, ""}};
    const Sending sending(SKK);
    sending.type("999999");
    openList(sending, "abonentLists", Qt::Key_Return);
    QCOMPARE(sending.number(), QString("123456,234567,123456"));
    QCOMPARE(sending.focus(), QString("number"));
    sending.click("send");
    QCOMPARE(sending.dialog->order.numbers, (QStringList{"123456", "234567", "123456"}));
}

void TestSendNumbers::shortNumberIsTakenAlone()
{
    Options.abonents = {{"А", "1", "1234", ""}};
    const Sending sending(SKK);
    openList(sending, "abonents", Qt::Key_Return);
    QCOMPARE(sending.number(), QString("1234"));
    QVERIFY(!sending.maySend());
    QCOMPARE(note(sending), QString());
}

void TestSendNumbers::severalNumbersNeverRunTogether_data()
{
    QTest::addColumn<QStringList>("numbers");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("told");
    row("all long enough", QStringList{"123456", "234567"}, "123456,234567", "");
    row("some too short", QStringList{"1234", "567890", " 4321", "111111"}, "567890,111111",
        "Не взяты номера короче 6 знаков: 1234, 4321");
    row("all too short", QStringList{"1234", "5678"}, "", "Не взяты номера короче 6 знаков: 1234, 5678");
}

void TestSendNumbers::severalNumbersNeverRunTogether()
{
    QFETCH(QStringList, numbers);
    Options.abonentLists = {{"А", numbers, ""}};
    const Sending sending(SKK);
    openList(sending, "abonentLists", Qt::Key_Return);
    QTEST(sending.number(), "shown");
    QTEST(note(sending), "told");
    sending.line()->setFocus();
    sending.type("2");
    QCOMPARE(note(sending), QString());
}

void TestSendNumbers::buttonsStandWhereThereIsAList_data()
{
    QTest::addColumn<bool>("subscribers");
    QTest::addColumn<bool>("lists");
    row("neither", false, false);
    row("subscribers", true, false);
    row("lists", false, true);
    row("both", true, true);
}

void TestSendNumbers::buttonsStandWhereThereIsAList()
{
    QFETCH(bool, subscribers);
    QFETCH(bool, lists);
    if (subscribers)
        Options.abonents = {{"А", "1", "123456", ""}};
    if (lists)
        Options.abonentLists = {{"А", {"123456"}, ""}};
    const Sending sending(SKK);
    QCOMPARE(sending.find<QPushButton>("abonents") != nullptr, subscribers);
    const auto *button = sending.find<QPushButton>("abonentLists");
    QCOMPARE(button != nullptr, lists);
    if (lists)
        QCOMPARE(button->text(), QStringLiteral("\u0043писки")); // a Latin C
}

void TestSendNumbers::subscriberLeftKeepsTheNumber()
{
    Options.abonents = {{"А", "1", "123456", ""}};
    const Sending sending(SKK);
    sending.type("999999");
    openList(sending, "abonents", Qt::Key_Escape);
    QCOMPARE(sending.number(), QString("999999"));
}

QTEST_MAIN(TestSendNumbers)
#include "test_send_numbers.moc"
