#include "app/options.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"
#include "text/sending_form.h"

/// What the line procedure makes of a telegram of the editor.
class TestSendingForm : public QObject
{
    Q_OBJECT

private slots:
    void centreGetsTheTextAsItIs_data();
    void centreGetsTheTextAsItIs();
    void directLinkGetsItBetweenMarks();
    void switchedChannelGetsATelegramBetweenMarks();
    void centresOwnNumberIsProposedIfItIsLongEnough_data();
    void centresOwnNumberIsProposedIfItIsLongEnough();
    void switchedChannelGetsATextAsItIs_data();
    void switchedChannelGetsATextAsItIs();
};

void TestSendingForm::centreGetsTheTextAsItIs_data()
{
    QTest::addColumn<bool>("hasCategory");
    row("with a category", true);
    row("without", false);
}

void TestSendingForm::centreGetsTheTextAsItIs()
{
    QFETCH(bool, hasCategory);
    const Desk desk;
    Options.processMode = CKS;
    Options.indexCKS = "654321";
    const SendingForm form = sendingForm("П123456\r\n", hasCategory);
    QCOMPARE(form.title, "Отправка телеграммы");
    QCOMPARE(form.text, "П123456\r\n");
    QCOMPARE(form.number, QString());
    QVERIFY(!form.centreOffered);
}

void TestSendingForm::directLinkGetsItBetweenMarks()
{
    const Desk desk;
    Options.processMode = Direct;
    const SendingForm form = sendingForm("ПРИВЕТ", false);
    QCOMPARE(form.title, "Отправка сообщения");
    QCOMPARE(form.text, "ЗЦЗЦ \r\nПРИВЕТ\r\nНННН  ");
}

void TestSendingForm::switchedChannelGetsATelegramBetweenMarks()
{
    const Desk desk;
    Options.processMode = SKK;
    const SendingForm form = sendingForm("П123456\r\n", true);
    QCOMPARE(form.title, "Отправка телеграммы");
    QCOMPARE(form.text, "ЗЦЗЦ П123456\r\nНННН  ");
    QVERIFY(form.centreOffered);
    QVERIFY(form.centreChosen);
}

void TestSendingForm::centresOwnNumberIsProposedIfItIsLongEnough_data()
{
    QTest::addColumn<QString>("index");
    QTest::addColumn<QString>("proposed");
    row("none", "", "");
    row("five digits", "12345", "");
    row("six digits", "123456", "123456");
    row("nine digits", "123456789", "123456789");
}

void TestSendingForm::centresOwnNumberIsProposedIfItIsLongEnough()
{
    QFETCH(QString, index);
    const Desk desk;
    Options.processMode = SKK;
    Options.indexCKS = index;
    QTEST(sendingForm("А", true).number, "proposed");
    QCOMPARE(sendingForm("А", false).number, QString());
}

void TestSendingForm::switchedChannelGetsATextAsItIs_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("centreOffered");
    row("no mark", "ПРИВЕТ", false);
    row("both marks", "ЗЦЗЦ ПРИВЕТ\r\nНННН  ", true);
    row("both marks and more", "А ЗЦЗЦ Б НННН  В", true);
    row("one behind the other", "ЗЦЗЦ НННН  ", true);
    row("the end first", "НННН  ЗЦЗЦ ПРИВЕТ", false);
    row("the end with one blank", "ЗЦЗЦ ПРИВЕТ НННН ", false);
    row("the start without a blank", "ЗЦЗЦ\r\nПРИВЕТ НННН  ", false);
    row("latin marks", "ZCZC ПРИВЕТ NNNN  ", false);
}

void TestSendingForm::switchedChannelGetsATextAsItIs()
{
    QFETCH(QString, text);
    const Desk desk;
    Options.processMode = SKK;
    const SendingForm form = sendingForm(text, false);
    QCOMPARE(form.title, "Отправка текста");
    QCOMPARE(form.text, text);
    QTEST(form.centreOffered, "centreOffered");
    QVERIFY(!form.centreChosen);
}

QTEST_GUILESS_MAIN(TestSendingForm)
#include "test_sending_form.moc"
