// The fields of the dialog by which a telegram is forwarded: what they take, what may go, keys, room.

#include "app/clock.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"
#include "tests/ui/dialogs/forward.h"
#include "tests/ui/dialogs/room.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QDateTimeEdit>
#include <QPlainTextEdit>
#include <QScreen>

class TestReSendFields : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_desk = std::make_unique<Desk>(); }
    void cleanup() { m_desk.reset(); }

    void whatCannotArriveCannotBeSent_data();
    void whatCannotArriveCannotBeSent();
    void categoryIsJudgedWithItsIndex();
    void pasteLeavesWhatTheFieldHolds_data();
    void pasteLeavesWhatTheFieldHolds();
    void refusedCharacterLeavesTheCursor();
    void enterSendsNothingThatCannotArrive();
    void enterInTheTextSends();
    void beginningOfAFormerNumberIsSentAsTyped();
    void formerNumberIsChosenFromTheList();
    void escapeLeavesTheListThenTheDialog();
    void tabGoesThroughTheFields_data();
    void tabGoesThroughTheFields();
    void keysTypedIntoTheTextGoNowhere();
    void calendarTakesTheDayAlone();
    void escapeLeavesTheCalendarThenTheDialog();
    void timeOfYesterdayMayBeGiven();

    void longTextIsShownInPartAndKeptWhole_data();
    void longTextIsShownInPartAndKeptWhole();
    void oddTextIsKeptAsItIs();
    void everythingHasItsRoom_data();
    void everythingHasItsRoom();

private:
    std::unique_ptr<Desk> m_desk;
};

void TestReSendFields::whatCannotArriveCannotBeSent_data()
{
    QTest::addColumn<int>("procedure");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("fault");
    const int centre = CKS, direct = Direct, switched = SKK;
    row("centre, nothing", centre, "", "Неверно указан индекс");
    row("centre, five figures", centre, "12345", "Неверно указан индекс");
    row("centre, six figures", centre, "123456", "");
    row("direct, nothing", direct, "", "");
    row("direct, one figure", direct, "1", "");
    row("switched, nothing", switched, "", "Не указан номер");
    row("switched, a sign alone", switched, "+", "Не указан номер");
    row("switched, one figure", switched, "1", "");
    row("switched, two numbers", switched, "123456,123456", "Укажите один номер");
}

void TestReSendFields::whatCannotArriveCannotBeSent()
{
    QFETCH(int, procedure);
    QFETCH(QString, typed);
    QFETCH(QString, fault);
    const Forward forward(procedure);
    forward.type("9");
    forward.key(Qt::Key_Backspace);
    forward.type(typed);
    QCOMPARE(forward.fault(), fault);
    QCOMPARE(forward.mayGo(), fault.isEmpty());
    QVERIFY(forward.button("cancel")->isEnabled());
}

void TestReSendFields::categoryIsJudgedWithItsIndex()
{
    Options.CategoryList = "П,ПЦ";
    const Forward forward(CKS);
    forward.type("1234567");
    QVERIFY(forward.mayGo());
    forward.combo("category")->setFocus();
    forward.key(Qt::Key_Down);
    QCOMPARE(forward.fault(), QString("Неверно указан индекс"));
    QVERIFY(!forward.mayGo());
    forward.combo("index")->setFocus();
    forward.combo("index")->lineEdit()->selectAll();
    forward.type("123=123");
    QVERIFY(forward.mayGo());
    forward.click("forward");
    QCOMPARE(forward.dialog->category + forward.dialog->index, QString("ПЦ123=123"));
}

void TestReSendFields::pasteLeavesWhatTheFieldHolds_data()
{
    QTest::addColumn<int>("procedure");
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("left");
    const int centre = CKS, switched = SKK;
    row("index with line ends", centre, "\r\n123456\r\n", "123456");
    row("index in groups", centre, "12-34 56", "123456");
    row("index of letters", centre, "абв!№12", "АБВ12");
    row("index of marks", centre, "|&#\"<>123@456", "123456");
    row("index of foreign figures", centre, QString(QChar(0x0661)) + "1", "1");
    row("index too long", centre, "1234567890", "1234567");
    row("index of a million letters", centre, QString(1000000, 'x'), "XXXXXXX");
    row("half a character", centre, QString(QChar(0xD83D)) + "1", "1");
    row("number as it is written", switched, "тел. +7 (12) 34-56", "+7123456");
    row("number with line ends", switched, "123\r\n456\n", "123456");
    row("number with field marks", switched, "1|2|3", "123");
    row("two numbers", switched, "123456, 234567", "123456,234567");
    row("nothing of a number", switched, "нет\t", "");
}

void TestReSendFields::pasteLeavesWhatTheFieldHolds()
{
    QFETCH(int, procedure);
    QFETCH(QString, pasted);
    QFETCH(QString, left);
    const Forward forward(procedure);
    forward.paste(pasted);
    QCOMPARE(forward.combo(procedure == SKK ? "number" : "index")->currentText(), left);
}

void TestReSendFields::refusedCharacterLeavesTheCursor()
{
    const Forward forward(SKK);
    forward.type("1256");
    forward.key(Qt::Key_Left);
    forward.key(Qt::Key_Left);
    forward.type("x3y4");
    QCOMPARE(forward.combo("number")->currentText(), QString("123456"));
    QCOMPARE(forward.combo("number")->lineEdit()->cursorPosition(), 4);
}

void TestReSendFields::enterSendsNothingThatCannotArrive()
{
    const Forward forward(CKS);
    forward.type("12345");
    forward.key(Qt::Key_Return);
    QVERIFY(forward.dialog->isVisible());
    forward.type("6");
    forward.key(Qt::Key_Return);
    QVERIFY(!forward.dialog->isVisible());
    QCOMPARE(forward.dialog->index, QString("123456"));
}

void TestReSendFields::enterInTheTextSends()
{
    const Forward forward(SKK);
    forward.type("1");
    forward.find<QPlainTextEdit>("text")->setFocus();
    forward.key(Qt::Key_Return);
    QCOMPARE(forward.dialog->result(), 1);
    QCOMPARE(forward.dialog->text, Telegram);
}

void TestReSendFields::beginningOfAFormerNumberIsSentAsTyped()
{
    Options.lastSKKCallNumbers = QStringList{"112233"};
    const Forward forward(SKK);
    forward.type("112");
    QCOMPARE(forward.combo("number")->currentText(), QString("112"));
    QVERIFY(forward.combo("number")->completer()->popup()->isVisible());
    forward.key(Qt::Key_Return);
    QCOMPARE(forward.dialog->result(), 1);
    QCOMPARE(forward.dialog->number, QString("112"));
}

void TestReSendFields::formerNumberIsChosenFromTheList()
{
    Options.lastCKSCallNumbers = QStringList{"112233", "112244"};
    const Forward forward(CKS);
    forward.type("11");
    forward.key(Qt::Key_Down);
    forward.key(Qt::Key_Down);
    forward.key(Qt::Key_Return);
    QVERIFY(forward.dialog->isVisible());
    QCOMPARE(forward.combo("index")->currentText(), QString("112244"));
    forward.key(Qt::Key_Return);
    QCOMPARE(forward.dialog->index, QString("112244"));
}

void TestReSendFields::escapeLeavesTheListThenTheDialog()
{
    Options.lastCKSCallNumbers = QStringList{"112233"};
    const Forward forward(CKS);
    forward.type("11");
    forward.key(Qt::Key_Escape);
    QVERIFY(forward.dialog->isVisible());
    QCOMPARE(forward.combo("index")->currentText(), QString("11"));
    forward.key(Qt::Key_Escape);
    QVERIFY(!forward.dialog->isVisible());
    QCOMPARE(Options.lastCKSCallNumbers, QStringList{"112233"});
}

void TestReSendFields::tabGoesThroughTheFields_data()
{
    QTest::addColumn<int>("procedure");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("order");
    row("centre", int(CKS), "123456", "index forward cancel text category index");
    row("centre, nothing to send", int(CKS), "", "index cancel text category index");
    row("direct", int(Direct), "", "index forward cancel text category index");
    // The field of the time goes through day, month, year, hour and minute by itself.
    row("switched", int(SKK), "1",
        "number sendTime sendTime sendTime sendTime sendTime forward cancel text number");
}

void TestReSendFields::tabGoesThroughTheFields()
{
    QFETCH(int, procedure);
    QFETCH(QString, typed);
    QFETCH(QString, order);
    const Forward forward(procedure);
    forward.type(typed);
    QStringList seen{forward.focus()};
    for (int i = order.count(' '); i > 0; --i) {
        forward.key(Qt::Key_Tab);
        seen << forward.focus();
    }
    QCOMPARE(seen.join(' '), order);
    seen = QStringList{forward.focus()};
    for (int i = order.count(' '); i > 0; --i) {
        forward.key(Qt::Key_Backtab, Qt::ShiftModifier);
        seen.prepend(forward.focus());
    }
    QCOMPARE(seen.join(' '), order);
}

void TestReSendFields::keysTypedIntoTheTextGoNowhere()
{
    const Forward forward(SKK);
    auto *text = forward.find<QPlainTextEdit>("text");
    text->setFocus();
    const QString shown = text->toPlainText();
    forward.type("123 abc");
    forward.key(Qt::Key_Delete);
    forward.paste("9");
    QCOMPARE(text->toPlainText(), shown);
    QCOMPARE(forward.combo("number")->currentText(), QString());
    QVERIFY(forward.dialog->isVisible());
}

void TestReSendFields::calendarTakesTheDayAlone()
{
    const Forward forward(SKK);
    auto *time = forward.find<QDateTimeEdit>("sendTime");
    QVERIFY(time->calendarPopup());
    time->setFocus();
    forward.key(Qt::Key_Down, Qt::AltModifier);
    forward.type("1");
    forward.combo("number")->setEditText("1");
    time->setDate(QDate(2026, 8, 2));
    forward.click("forward");
    QCOMPARE(forward.dialog->sendTime, QDateTime(QDate(2026, 8, 2), QTime(12, 0)));
}

void TestReSendFields::escapeLeavesTheCalendarThenTheDialog()
{
    const Forward forward(SKK);
    auto *time = forward.find<QDateTimeEdit>("sendTime");
    QTest::mouseClick(time, Qt::LeftButton, Qt::NoModifier, QPoint(time->width() - 5, time->height() / 2));
    QWidget *popup = QApplication::activePopupWidget();
    QVERIFY(popup != nullptr);
    QVERIFY(popup->findChild<QCalendarWidget *>() != nullptr || qobject_cast<QCalendarWidget *>(popup));
    QTest::keyClick(popup, Qt::Key_Escape);
    QTRY_VERIFY(QApplication::activePopupWidget() == nullptr);
    QVERIFY(forward.dialog->isVisible());
    forward.key(Qt::Key_Escape);
    QVERIFY(!forward.dialog->isVisible());
}

// A time that has passed means at once.
void TestReSendFields::timeOfYesterdayMayBeGiven()
{
    const Forward forward(SKK);
    forward.type("1");
    forward.find<QDateTimeEdit>("sendTime")->setDate(QDate(2026, 7, 30));
    QVERIFY(forward.mayGo());
    forward.click("forward");
    QCOMPARE(forward.dialog->sendTime, QDateTime(QDate(2026, 7, 30), QTime(12, 0)));
}

// Text and room

void TestReSendFields::longTextIsShownInPartAndKeptWhole_data()
{
    QTest::addColumn<QString>("piece");
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("cut");
    row("one line of a million", "А", 1000000, false);
    row("a million lines", "\n", 1000000, true);
    row("a telegram of 500 lines", QString(68, 'A') + "\r\n", 500, false);
    row("lines of a telegram, 50 million", QString(68, 'A') + "\r\n", 50000000 / 70, true);
}

void TestReSendFields::longTextIsShownInPartAndKeptWhole()
{
    QFETCH(QString, piece);
    QFETCH(int, count);
    const QString text = piece.repeated(count);
    const Forward forward(SKK, text);
    const QString shown = forward.find<QPlainTextEdit>("text")->toPlainText();
    QVERIFY(shown.startsWith(QString(piece).remove('\r')));
    QVERIFY(shown.size() < 1100000);
    QTEST(shown.contains("всего знаков: " + QString::number(text.size())), "cut");
    forward.type("1");
    forward.click("forward");
    QCOMPARE(forward.dialog->result(), 1);
    QVERIFY(forward.dialog->text == text);
}

void TestReSendFields::oddTextIsKeptAsItIs()
{
    const QString text = QString(QChar(0)) + "<b>А</b>\r\r\n\x01|&#@E" + QChar(0x2028) + QChar(0xD83D);
    const Forward forward(Direct, text);
    QVERIFY(forward.find<QPlainTextEdit>("text")->toPlainText().contains("<b>А</b>"));
    forward.click("forward");
    QCOMPARE(forward.dialog->text, text);
    const Forward empty(Direct, QString());
    QCOMPARE(empty.find<QPlainTextEdit>("text")->toPlainText(), QString());
}

void TestReSendFields::everythingHasItsRoom_data()
{
    QTest::addColumn<int>("procedure");
    QTest::addColumn<int>("zoom");
    for (const int procedure : {int(CKS), int(SKK), int(Direct)})
        for (const int zoom : {1, 2})
            QTest::addRow("%d at %d00 %%", procedure, zoom) << procedure << zoom;
}

void TestReSendFields::everythingHasItsRoom()
{
    QFETCH(int, procedure);
    QFETCH(int, zoom);
    const LargeLetters letters(zoom);
    Options.saveWindowPos = false;
    const Forward forward(procedure);
    expectRoom(*forward.dialog);
}

QTEST_MAIN(TestReSendFields)
#include "test_re_send_fields.moc"
