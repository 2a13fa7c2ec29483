// The last step of sending from the editor: what the dialog asks for by procedure, and what it leaves.

#include "tests/support/desk.h"
#include "tests/support/row.h"
#include "tests/ui/dialogs/room.h"
#include "tests/ui/dialogs/sending.h"

#include <QApplication>
#include <QPlainTextEdit>
#include <QScreen>

namespace
{
/// What an operator sees beside the text, in the order of the places.
QStringList controls(const Sending &sending)
{
    QStringList found;
    for (const QWidget *widget : sending.dialog->findChildren<QWidget *>())
        if (const auto *label = qobject_cast<const QLabel *>(widget); label && label->isVisible())
            found << label->text();
        else if (const auto *button = qobject_cast<const QAbstractButton *>(widget);
                 button && button->isVisible() && !button->text().isEmpty())
            found << button->text();
    found.sort();
    return found;
}

void procedures()
{
    QTest::addColumn<int>("procedure");
    row("centre", int(CKS));
    row("switched", int(SKK));
    row("direct", int(Direct));
}
} // namespace

class TestSendDialog : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_desk = std::make_unique<Desk>(); }
    void cleanup() { m_desk.reset(); }

    void controlsOfEachProcedure_data();
    void controlsOfEachProcedure();
    void textIsShownAndCannotBeChanged_data() { procedures(); }
    void textIsShownAndCannotBeChanged();
    void sizeIsThatOfTheLastTime_data();
    void sizeIsThatOfTheLastTime();
    void timeBeginsNow_data();
    void timeBeginsNow();
    void centreNeedsNothingMore();
    void callerProposesNumberAndCentre_data();
    void callerProposesNumberAndCentre();
    void outsideSwitchedChannelsNumberAndCentreAreIgnored_data();
    void outsideSwitchedChannelsNumberAndCentreAreIgnored();
    void subscriberGetsNumberTimeAndGuarantee();
    void directLinkGetsTimeAndGuarantee();
    void numbersStandOnceAndSortedAtTheNextOpening();
    void formerListIsNoWiderThanTheScreen();
    void leavingChangesNothing_data();
    void leavingChangesNothing();
    void enterSends_data();
    void enterSends();
    void tabGoesThroughTheFields_data();
    void tabGoesThroughTheFields();
    void everythingHasItsRoom_data();
    void everythingHasItsRoom();

private:
    std::unique_ptr<Desk> m_desk;
};

void TestSendDialog::controlsOfEachProcedure_data()
{
    QTest::addColumn<int>("procedure");
    QTest::addColumn<bool>("byHand");     // a call stands in manual mode
    QTest::addColumn<bool>("guaranteed"); // transfer is on offer
    QTest::addColumn<QStringList>("found");
    const int centre = CKS, switched = SKK, direct = Direct;
    const QStringList buttons{"Отправить", "Отменить"};
    const QStringList number{"Номер:", "ЦКС", "Отправить после:"};
    const QString toLine = "Отправить в линию", guaranteed = "Алгоритм гарантированной передачи";
    const QStringList time{toLine, "Сохранить для отправки после: "};
    const QStringList choice{toLine, "Сохранить для отправки: "};
    row("centre", centre, true, true, buttons);
    row("switched", switched, false, false, buttons + number);
    row("switched, guaranteed", switched, false, true, buttons + number + QStringList{guaranteed});
    row("switched, connected", switched, true, false, buttons + number + choice);
    row("direct", direct, false, false, buttons + time);
    row("direct, guaranteed", direct, false, true, buttons + time + QStringList{guaranteed});
}

void TestSendDialog::controlsOfEachProcedure()
{
    QFETCH(int, procedure);
    QFETCH(bool, byHand);
    QFETCH(bool, guaranteed);
    QFETCH(QStringList, found);
    if (byHand)
        connectByHand();
    Options.enableProtectedSend = guaranteed;
    const Sending sending(procedure);
    found.sort();
    QCOMPARE(controls(sending), found);
    QCOMPARE(sending.find<QComboBox>("number") != nullptr, procedure == SKK);
    QCOMPARE(sending.sendTime() != nullptr, procedure != CKS);
    QVERIFY(sending.toQueue() == nullptr || sending.toQueue()->isChecked());
}

void TestSendDialog::textIsShownAndCannotBeChanged()
{
    QFETCH(int, procedure);
    const Sending sending(procedure);
    auto *text = sending.find<QPlainTextEdit>("text");
    QCOMPARE(text->toPlainText(), QString("ЗЦЗЦ 001\nПРИВЕТ\nНННН  "));
    QVERIFY(text->isReadOnly());
    QCOMPARE(text->font().toString(), Options.tlgFont.toString());
    const int zeros = 70 * QFontMetrics(Options.tlgFont).horizontalAdvance('0');
    const int screen = QGuiApplication::primaryScreen()->availableSize().width();
    QVERIFY(text->minimumWidth() >= qMin(zeros, screen * 2 / 3));
    text->setFocus();
    sending.type("123 abc");
    sending.key(Qt::Key_Delete);
    sending.paste("9");
    QCOMPARE(text->toPlainText(), QString("ЗЦЗЦ 001\nПРИВЕТ\nНННН  "));
    sending.dialog->setText(QString(10000, 'A'));
    QCOMPARE(text->toPlainText().remove('\n'), QString(10000, 'A'));
}

void TestSendDialog::sizeIsThatOfTheLastTime_data()
{
    QTest::addColumn<bool>("kept"); // places are
    QTest::addColumn<QSize>("second");
    row("places are kept", true, QSize(640, 520));
    row("places are not kept", false, QSize(600, 500));
}

void TestSendDialog::sizeIsThatOfTheLastTime()
{
    QFETCH(bool, kept);
    Options.saveWindowPos = kept;
    const Sending first(CKS);
    QCOMPARE(first.dialog->size(), QSize(600, 500));
    first.dialog->setGeometry(60, 80, 640, 520);
    first.click("send");
    QCOMPARE(Options.geometrySendTlg, QRect(60, 80, 640, 520));
    const Sending second(CKS);
    QTEST(second.dialog->size(), "second");
}

void TestSendDialog::timeBeginsNow_data()
{
    QTest::addColumn<int>("procedure");
    row("switched", int(SKK));
    row("direct", int(Direct));
}

// To the minute, as it is shown.
void TestSendDialog::timeBeginsNow()
{
    QFETCH(int, procedure);
    Time.setTo(QDateTime(QDate(2026, 7, 31), QTime(12, 0, 59)));
    const Sending sending(procedure);
    QCOMPARE(sending.sendTime()->text(), QString("31.07.2026 12:00"));
    sending.dialog->setNumber("123456");
    sending.click("send");
    QCOMPARE(sending.dialog->order.sendTime, QDateTime(QDate(2026, 7, 31), QTime(12, 0)));
}

void TestSendDialog::centreNeedsNothingMore()
{
    const Sending sending(CKS);
    QVERIFY(sending.maySend());
    QCOMPARE(sending.focus(), QString("send"));
    sending.click("send");
    QCOMPARE(sending.dialog->result(), 1);
    QVERIFY(!sending.dialog->sendNow);
    QVERIFY(!sending.dialog->order.guaranteed);
    QCOMPARE(Options.lastSKKCallNumbers, QStringList());
}

void TestSendDialog::callerProposesNumberAndCentre_data()
{
    QTest::addColumn<bool>("offered");
    QTest::addColumn<bool>("checked");
    row("offered and checked", true, true);
    row("offered", true, false);
    row("neither", false, false);
}

void TestSendDialog::callerProposesNumberAndCentre()
{
    QFETCH(bool, offered);
    QFETCH(bool, checked);
    const Sending sending(SKK);
    QVERIFY(!sending.maySend());
    sending.dialog->setNumber("123456");
    sending.dialog->setCKS(offered, checked);
    QCOMPARE(sending.number(), QString("123456"));
    QVERIFY(sending.maySend());
    QCOMPARE(sending.find<QCheckBox>("cks")->isVisible(), offered);
    sending.click("send");
    QCOMPARE(sending.dialog->order.numbers, QStringList{"123456"});
    QCOMPARE(sending.dialog->order.toCKS, checked);
}

void TestSendDialog::outsideSwitchedChannelsNumberAndCentreAreIgnored_data()
{
    QTest::addColumn<int>("procedure");
    row("centre", int(CKS));
    row("direct", int(Direct));
}

void TestSendDialog::outsideSwitchedChannelsNumberAndCentreAreIgnored()
{
    QFETCH(int, procedure);
    Options.abonents = {{"А", "1", "123456", ""}};
    Options.abonentLists = {{"А", {"123456", "234567"}, ""}};
    const Sending sending(procedure);
    sending.dialog->setNumber("123456");
    sending.dialog->setCKS(true, true);
    QVERIFY(sending.find<QPushButton>("abonents") == nullptr);
    QVERIFY(sending.find<QPushButton>("abonentLists") == nullptr);
    sending.click("send");
    QCOMPARE(sending.dialog->result(), 1);
    QCOMPARE(sending.dialog->order.numbers, QStringList());
    QVERIFY(!sending.dialog->order.toCKS);
    QCOMPARE(Options.lastSKKCallNumbers, QStringList());
}

void TestSendDialog::subscriberGetsNumberTimeAndGuarantee()
{
    Options.enableProtectedSend = true;
    const Sending sending(SKK);
    sending.type("123456,234567");
    sending.click("cks");
    sending.click("guaranteed");
    sending.sendTime()->setDateTime(QDateTime(QDate(2026, 8, 1), QTime(6, 5)));
    sending.key(Qt::Key_Return);
    QCOMPARE(sending.dialog->result(), 1);
    const SendOrder &order = sending.dialog->order;
    QVERIFY(!sending.dialog->sendNow);
    QCOMPARE(order.numbers, (QStringList{"123456", "234567"}));
    QVERIFY(order.toCKS);
    QVERIFY(order.guaranteed);
    QCOMPARE(order.sendTime, QDateTime(QDate(2026, 8, 1), QTime(6, 5)));
    QCOMPARE(Options.lastSKKCallNumbers, QStringList{"123456,234567"});
}

void TestSendDialog::directLinkGetsTimeAndGuarantee()
{
    Options.enableProtectedSend = true;
    const Sending sending(Direct);
    QVERIFY(sending.maySend());
    sending.sendTime()->setDateTime(QDateTime(QDate(2026, 8, 1), QTime(6, 5)));
    sending.click("guaranteed");
    sending.click("send");
    QVERIFY(!sending.dialog->sendNow);
    QVERIFY(sending.dialog->order.guaranteed);
    QCOMPARE(sending.dialog->order.sendTime, QDateTime(QDate(2026, 8, 1), QTime(6, 5)));
}

void TestSendDialog::numbersStandOnceAndSortedAtTheNextOpening()
{
    Options.lastSKKCallNumbers = QStringList{"300000", "100000", "300000"};
    const Sending first(SKK);
    first.type("200000");
    first.click("send");
    QCOMPARE(Options.lastSKKCallNumbers, (QStringList{"100000", "200000", "300000"}));
    const Sending second(SKK);
    const auto *combo = second.find<QComboBox>("number");
    QCOMPARE(combo->count(), 3);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(combo->itemText(i), Options.lastSKKCallNumbers.at(i));
    QCOMPARE(second.number(), QString()); // none is meant before it is chosen
}

void TestSendDialog::formerListIsNoWiderThanTheScreen()
{
    Options.lastSKKCallNumbers = QStringList{repeated("123456789", 200).join(',')};
    Options.saveWindowPos = false;
    const Sending sending(SKK);
    const int screen = QGuiApplication::primaryScreen()->availableSize().width();
    QVERIFY(sending.dialog->width() <= screen);
    const int zeros = 16 * sending.line()->fontMetrics().horizontalAdvance('0');
    sending.dialog->resize(1, 1); // by the frame's edge
    QVERIFY(sending.line()->width() >= zeros);
}

void TestSendDialog::leavingChangesNothing_data()
{
    QTest::addColumn<QString>("way");
    row("button", "button");
    row("Esc", "Esc");
    row("cross", "cross");
}

void TestSendDialog::leavingChangesNothing()
{
    QFETCH(QString, way);
    Options.lastSKKCallNumbers = QStringList{"2", "1"};
    const Sending sending(SKK);
    sending.type("123456");
    if (way == "button")
        sending.click("cancel");
    else if (way == "Esc")
        sending.key(Qt::Key_Escape);
    else
        sending.dialog->close();
    QVERIFY(!sending.dialog->isVisible());
    QCOMPARE(sending.dialog->result(), 0);
    QCOMPARE(sending.dialog->order.numbers, QStringList());
    QCOMPARE(Options.lastSKKCallNumbers, (QStringList{"2", "1"}));
}

void TestSendDialog::enterSends_data()
{
    QTest::addColumn<QString>("focus");
    for (const char *name : {"text", "number", "cks", "sendTime", "guaranteed", "toQueue", "send"})
        row(name, QString(name));
}

void TestSendDialog::enterSends()
{
    QFETCH(QString, focus);
    connectByHand();
    Options.enableProtectedSend = true;
    const Sending sending(SKK);
    sending.find<QWidget>(qPrintable(focus))->setFocus();
    sending.key(Qt::Key_Return);
    QVERIFY(sending.dialog->isVisible()); // no number
    sending.dialog->setNumber("123456");
    sending.key(Qt::Key_Return);
    QCOMPARE(sending.dialog->result(), 1);
    QCOMPARE(sending.dialog->order.numbers, QStringList{"123456"});
}

void TestSendDialog::tabGoesThroughTheFields_data()
{
    QTest::addColumn<int>("procedure");
    QTest::addColumn<QString>("order");
    // The field of the time goes through day, month, year, hour and minute by itself. Of the radio
    // buttons one is reached, the other one from there by the arrows.
    row("centre", int(CKS), "send cancel text send");
    row("switched", int(SKK),
        "number abonents abonentLists cks sendTime sendTime sendTime sendTime sendTime guaranteed send "
        "cancel text toLine number");
    row("direct", int(Direct),
        "send cancel text toLine sendTime sendTime sendTime sendTime sendTime guaranteed send");
}

void TestSendDialog::tabGoesThroughTheFields()
{
    QFETCH(int, procedure);
    QFETCH(QString, order);
    connectByHand();
    Options.enableProtectedSend = true;
    Options.abonents = {{"А", "1", "123456", ""}};
    Options.abonentLists = {{"А", {"123456", "234567"}, ""}};
    const Sending sending(procedure);
    sending.dialog->setNumber("123456");
    QStringList seen{sending.focus()};
    for (int i = order.count(' '); i > 0; --i) {
        sending.key(Qt::Key_Tab);
        seen << sending.focus();
    }
    QCOMPARE(seen.join(' '), order);
    seen = QStringList{sending.focus()};
    for (int i = order.count(' '); i > 0; --i) {
        sending.key(Qt::Key_Backtab, Qt::ShiftModifier);
        seen.prepend(sending.focus());
    }
    QCOMPARE(seen.join(' '), order);
}

void TestSendDialog::everythingHasItsRoom_data()
{
    QTest::addColumn<int>("procedure");
    QTest::addColumn<int>("zoom");
    for (const int procedure : {int(CKS), int(SKK), int(Direct)})
        for (const int zoom : {1, 2})
            QTest::addRow("%d at %d00 %%", procedure, zoom) << procedure << zoom;
}

void TestSendDialog::everythingHasItsRoom()
{
    QFETCH(int, procedure);
    QFETCH(int, zoom);
    const LargeLetters letters(zoom);
    connectByHand();
    Options.enableProtectedSend = true;
    Options.saveWindowPos = false;
    Options.abonents = {{"А", "1", "123456", ""}};
    Options.abonentLists = {{"А", {"123456", "234567"}, ""}};
    const Sending sending(procedure);
    expectRoom(*sending.dialog);
}

QTEST_MAIN(TestSendDialog)
#include "test_send_dialog.moc"
