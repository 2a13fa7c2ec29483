// The dialog by which a received telegram is forwarded: fields by procedure, what may go, and what it leaves.

#include "app/clock.h"
#include "app/options.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"
#include "tests/ui/dialogs/forward.h"

#include <QDateTimeEdit>
#include <QLabel>
#include <QPlainTextEdit>
#include <QtTest>

#include <memory>

namespace
{
QStringList labels(const QDialog &dialog)
{
    QStringList texts;
    for (const QLabel *label : dialog.findChildren<QLabel *>())
        texts << label->text();
    texts.removeAll(QString());
    return texts;
}

void withIndex()
{
    QTest::addColumn<int>("procedure");
    row("centre", int(CKS));
    row("direct", int(Direct));
}

void all()
{
    withIndex();
    row("switched", int(SKK));
}
} // namespace

class TestReSendDialog : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_desk = std::make_unique<Desk>(); }
    void cleanup() { m_desk.reset(); }

    void titleTextAndButtons_data() { all(); }
    void titleTextAndButtons();
    void fieldsOfACentreAndOfADirectLink_data() { withIndex(); }
    void fieldsOfACentreAndOfADirectLink();
    void fieldsOfSwitchedChannels();

    void centreGetsCategoryAndIndex();
    void directLinkNeedsNoIndex();
    void switchedChannelGetsNumberAndTime();
    void numbersStandOnceAndSorted_data();
    void numbersStandOnceAndSorted();
    void numbersRepeatedAppearOnceAtTheNextOpening();
    void leavingChangesNothing_data();
    void leavingChangesNothing();

private:
    std::unique_ptr<Desk> m_desk;
};

void TestReSendDialog::titleTextAndButtons()
{
    QFETCH(int, procedure);
    const Forward forward(procedure);
    QCOMPARE(forward.dialog->windowTitle(), QString("Пересылка телеграммы"));
    const auto *text = forward.find<QPlainTextEdit>("text");
    QCOMPARE(text->toPlainText(), QString("ЗЦЗЦ 001\nПРИВЕТ\nНННН  "));
    QVERIFY(text->isReadOnly());
    QCOMPARE(forward.button("forward")->text(), QString("Переслать"));
    QCOMPARE(forward.button("cancel")->text(), QString("Отменить"));
    QCOMPARE(forward.dialog->text, Telegram);
}

void TestReSendDialog::fieldsOfACentreAndOfADirectLink()
{
    QFETCH(int, procedure);
    Options.CategoryList = "П,ПЦ,С";
    Options.lastCKSCallNumbers = QStringList{"111111", "222222"};
    Options.lastSKKCallNumbers = QStringList{"333333"};
    const Forward forward(procedure);
    QCOMPARE(labels(*forward.dialog).mid(0, 2), (QStringList{"Категория:", "Индекс:"}));
    QCOMPARE(items(forward.combo("category")), (QStringList{"П", "ПЦ", "С"}));
    QCOMPARE(forward.combo("category")->currentText(), QString("П"));
    QVERIFY(!forward.combo("category")->isEditable());
    QCOMPARE(items(forward.combo("index")), (QStringList{"111111", "222222"}));
    QCOMPARE(forward.combo("index")->currentText(), QString()); // none is meant before it is chosen
    QCOMPARE(forward.combo("index")->lineEdit()->placeholderText(), QString("000000"));
    QVERIFY(forward.combo("number") == nullptr);
    QVERIFY(forward.find<QDateTimeEdit>("sendTime") == nullptr);
    QCOMPARE(forward.focus(), QString("index"));
}

void TestReSendDialog::fieldsOfSwitchedChannels()
{
    Options.lastCKSCallNumbers = QStringList{"111111"};
    Options.lastSKKCallNumbers = QStringList{"333333", "444444"};
    const Forward forward(SKK);
    QCOMPARE(labels(*forward.dialog).mid(0, 2), (QStringList{"Номер:", "Время отправки:"}));
    QCOMPARE(items(forward.combo("number")), (QStringList{"333333", "444444"}));
    QCOMPARE(forward.combo("number")->currentText(), QString());
    const auto *time = forward.find<QDateTimeEdit>("sendTime");
    QCOMPARE(time->text(), QString("31.07.2026 12:00"));
    QVERIFY(forward.combo("category") == nullptr);
    QVERIFY(forward.combo("index") == nullptr);
    QCOMPARE(forward.focus(), QString("number"));
}

void TestReSendDialog::centreGetsCategoryAndIndex()
{
    Options.CategoryList = "П,С";
    const Forward forward(CKS);
    forward.combo("category")->setFocus();
    forward.key(Qt::Key_Down);
    forward.combo("index")->setFocus();
    forward.type("123456");
    forward.click("forward");
    QCOMPARE(forward.dialog->result(), 1);
    QCOMPARE(forward.dialog->category, QString("С"));
    QCOMPARE(forward.dialog->index, QString("123456"));
    QCOMPARE(forward.dialog->number, QString());
    QVERIFY(!forward.dialog->sendTime.isValid());
    QCOMPARE(Options.lastCKSCallNumbers, QStringList{"123456"});
    QCOMPARE(Options.lastSKKCallNumbers, QStringList());
}

void TestReSendDialog::directLinkNeedsNoIndex()
{
    const Forward forward(Direct);
    QVERIFY(forward.mayGo());
    QCOMPARE(forward.fault(), QString());
    forward.key(Qt::Key_Return);
    QCOMPARE(forward.dialog->result(), 1);
    QCOMPARE(forward.dialog->category, QString("П"));
    QCOMPARE(forward.dialog->index, QString());
    QCOMPARE(Options.lastCKSCallNumbers, QStringList()); // none is no number
}

void TestReSendDialog::switchedChannelGetsNumberAndTime()
{
    const Forward forward(SKK);
    forward.type("123456");
    auto *time = forward.find<QDateTimeEdit>("sendTime");
    time->setFocus();
    time->setSelectedSection(QDateTimeEdit::MinuteSection);
    forward.key(Qt::Key_Up);
    forward.key(Qt::Key_Return);
    QCOMPARE(forward.dialog->result(), 1);
    QCOMPARE(forward.dialog->number, QString("123456"));
    QCOMPARE(forward.dialog->sendTime, QDateTime(QDate(2026, 7, 31), QTime(12, 1)));
    QCOMPARE(forward.dialog->category + forward.dialog->index, QString());
    QCOMPARE(Options.lastSKKCallNumbers, QStringList{"123456"});
    QCOMPARE(Options.lastCKSCallNumbers, QStringList());
}

void TestReSendDialog::numbersStandOnceAndSorted_data()
{
    QTest::addColumn<int>("procedure");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QStringList>("kept");
    for (const int procedure : {int(CKS), int(SKK), int(Direct)}) {
        QTest::addRow("new in %d", procedure)
            << procedure << "200000" << QStringList{"100000", "200000", "300000"};
        QTest::addRow("known in %d", procedure) << procedure << "300000" << QStringList{"100000", "300000"};
    }
}

void TestReSendDialog::numbersStandOnceAndSorted()
{
    QFETCH(int, procedure);
    QFETCH(QString, typed);
    QStringList &numbers = procedure == SKK ? Options.lastSKKCallNumbers : Options.lastCKSCallNumbers;
    QStringList &others = procedure == SKK ? Options.lastCKSCallNumbers : Options.lastSKKCallNumbers;
    numbers = QStringList{"300000", "100000", "300000"};
    others = QStringList{"2", "1"};
    const Forward forward(procedure);
    forward.type(typed);
    forward.click("forward");
    QTEST(numbers, "kept");
    QCOMPARE(others, (QStringList{"2", "1"}));
}

void TestReSendDialog::numbersRepeatedAppearOnceAtTheNextOpening()
{
    Options.lastSKKCallNumbers = QStringList{"300000", "300000"};
    const Forward first(SKK);
    first.type("300000");
    first.click("forward");
    const Forward second(SKK);
    QCOMPARE(items(second.combo("number")), QStringList{"300000"});
}

void TestReSendDialog::leavingChangesNothing_data()
{
    QTest::addColumn<QString>("way");
    row("button", "button");
    row("Esc", "Esc");
    row("cross", "cross");
}

void TestReSendDialog::leavingChangesNothing()
{
    QFETCH(QString, way);
    Options.lastSKKCallNumbers = QStringList{"2", "1"};
    const Forward forward(SKK);
    forward.type("123456");
    if (way == "button")
        forward.click("cancel");
    else if (way == "Esc") {
        forward.key(Qt::Key_Escape); // no list is open
    } else
        forward.dialog->close();
    QVERIFY(!forward.dialog->isVisible());
    QCOMPARE(forward.dialog->result(), 0);
    QCOMPARE(forward.dialog->number, QString());
    QCOMPARE(Options.lastSKKCallNumbers, (QStringList{"2", "1"}));
}

QTEST_MAIN(TestReSendDialog)
#include "test_re_send_dialog.moc"
