// "Отправить" of the editor: what each line procedure makes of it, in the queue or on the line.

#include "tests/support/row.h"
#include "tests/ui/window/sending_room.h"
#include "ui/pages/protocol_page.h"

namespace
{
const QString End = "-\n\n\n\n\n\n";
const QString Head = "П123456\r\n|||\r\n\n\n";
constexpr int ToTheScan = 3; // two seconds go by, and the queue is scanned in the next
const char *const SendTime = "sendTime";

void at(const CSendTlgDialog &dialog, const QDateTime &time)
{
    dialog.findChild<QDateTimeEdit *>(SendTime)->setDateTime(time);
}

const QDateTime Tomorrow(QDate(2026, 8, 1), QTime(9, 5));
} // namespace

class TestEditorSend : public QObject
{
    Q_OBJECT

private slots:
    void toTheCentreGoesTheFileAlone();
    void letterFollowsTheCategory_data();
    void letterFollowsTheCategory();
    void guaranteedTelegramHasItsLetter_data();
    void guaranteedTelegramHasItsLetter();
    void toASubscriberGoARecordAndAFile();
    void textGoesToASubscriberAsItStands();
    void textBetweenMarksMayGoThroughTheCentre();
    void eachNumberGetsATelegram();
    void deferredMessageBearsItsTime();
    void messageOfNowGoesIntoTheQueueToo();
    void messageGoesToTheLineAtOnce();
    void telegramGoesToTheConnectionAtOnce();
    void dialogShowsWhatGoes_data();
    void dialogShowsWhatGoes();
    void leavingTheDialogSendsNothing_data();
    void leavingTheDialogSendsNothing();
    void centresNumberIsProposed();
    void numberOfTheDayIsSavedAtOnce();
    void sentTextStaysUntilItIsChanged();
    void sentTextGoesToAnotherIndex();
    void thousandthTelegramOfADayGoes();
    void twoWithinOneSecondHaveTheirNumbers_data();
    void twoWithinOneSecondHaveTheirNumbers();
};

void TestEditorSend::toTheCentreGoesTheFileAlone()
{
    SendingRoom room(CKS, ShortForm);
    room.write("Привет");
    State.EditorN = 16;
    QVERIFY(room.send());
    QCOMPARE(room.queue(), QStringList{"20260731u017"});
    QCOMPARE(room.queued("20260731u017"), Head + "ПРИВЕТ" + End);
    QCOMPARE(State.EditorN, 17);
    QCOMPARE(room.savedNumber(), 17);
    QVERIFY(!room.page.send->isEnabled());
    QCOMPARE(room.rows(), QStringList());
    room.tick(ToTheScan);
    QCOMPARE(room.rows(), QStringList{"20260731u017  1"});
    QVERIFY(room.news().isEmpty());
}

void TestEditorSend::letterFollowsTheCategory_data()
{
    QTest::addColumn<QString>("categories");
    QTest::addColumn<QString>("category");
    QTest::addColumn<QString>("name");
    row("ordinary", "П,Г", "П", "20260731u001");
    row("Cyrillic С has the letter u", "П,С", "С", "20260731u001");
    row("Latin C has the letter q", "П,C", "C", "20260731q001");
    row("Latin C with more behind it", "П,CЦ", "CЦ", "20260731q001");
}

void TestEditorSend::letterFollowsTheCategory()
{
    QFETCH(QString, categories);
    QFETCH(QString, category);
    QFETCH(QString, name);
    SendingRoom room(CKS, ShortForm, [&] { Options.CategoryList = categories; });
    room.write("А Б", category);
    QVERIFY(room.send());
    QCOMPARE(room.queue(), QStringList{name});
    QVERIFY(room.queued(name).startsWith(category + "123456\r\n"));
}

void TestEditorSend::guaranteedTelegramHasItsLetter_data()
{
    QTest::addColumn<int>("procedure");
    QTest::addColumn<bool>("chosen");
    QTest::addColumn<QString>("name");
    row("switched, chosen", int(SKK), true, "20260731g001");
    row("switched, not chosen", int(SKK), false, "20260731u001");
    row("direct, chosen", int(Direct), true, "20260731g001.260801_090500");
    row("direct, not chosen", int(Direct), false, "20260731u001.260801_090500");
}

void TestEditorSend::guaranteedTelegramHasItsLetter()
{
    QFETCH(int, procedure);
    QFETCH(bool, chosen);
    QFETCH(QString, name);
    SendingRoom room(procedure, MessageForm, [] { Options.enableProtectedSend = true; });
    room.write("ПРИВЕТ");
    QVERIFY(room.send([&](CSendTlgDialog &dialog) {
        dialog.findChild<QAbstractButton *>("guaranteed")->setChecked(chosen);
        dialog.setNumber("654321");
        at(dialog, Tomorrow);
        agree(dialog);
    }));
    QCOMPARE(room.queue().constFirst(), name);
}

void TestEditorSend::toASubscriberGoARecordAndAFile()
{
    SendingRoom room(SKK, ShortForm, [] { Options.sendTrys = 5; });
    room.write("Привет");
    QVERIFY(room.send([](CSendTlgDialog &dialog) {
        at(dialog, Tomorrow);
        toNumbers("654321")(dialog);
    }));
    QCOMPARE(room.queue(), (QStringList{"20260731u001", "20260731u001.dat"}));
    QCOMPARE(room.queued("20260731u001"), "ЗЦЗЦ " + Head + "ПРИВЕТ" + End + "НННН  ");
    QCOMPARE(room.queued("20260731u001.dat"), "654321|C|01.08.2026 09:05|u|5|N|");
    QCOMPARE(State.EditorN, 1);
    QCOMPARE(room.savedNumber(), 1);
    QVERIFY(!room.page.send->isEnabled());
    room.tick(ToTheScan);
    QCOMPARE(room.rows(), QStringList{"20260731u001 654321 5"});
}

void TestEditorSend::textGoesToASubscriberAsItStands()
{
    SendingRoom room(SKK, MessageForm);
    room.write("Привет\n1");
    bool centre = true;
    QVERIFY(room.send([&](CSendTlgDialog &dialog) {
        centre = dialog.findChild<QWidget *>("cks")->isVisible();
        toNumbers("654321")(dialog);
    }));
    QVERIFY(!centre);
    QCOMPARE(room.queued("20260731u001"), "ПРИВЕТ\r\n1");
    QCOMPARE(room.queued("20260731u001.dat"), "654321|S|31.07.2026 12:00|u|3|N|");
}

void TestEditorSend::textBetweenMarksMayGoThroughTheCentre()
{
    SendingRoom room(SKK, MessageForm);
    room.write("ЗЦЗЦ ПРИВЕТ\nНННН  ");
    QVERIFY(room.send([](CSendTlgDialog &dialog) {
        auto *cks = dialog.findChild<QAbstractButton *>("cks");
        QVERIFY(cks->isVisible());
        QVERIFY(!cks->isChecked());
        cks->setChecked(true);
        toNumbers("654321")(dialog);
    }));
    QCOMPARE(room.queued("20260731u001"), "ЗЦЗЦ ПРИВЕТ\r\nНННН  ");
    QCOMPARE(room.queued("20260731u001.dat"), "654321|C|31.07.2026 12:00|u|3|N|");
}

// One that stands there twice gets the telegram twice; a list uses up one number more than it has telegrams.
void TestEditorSend::eachNumberGetsATelegram()
{
    SendingRoom room(SKK, ShortForm);
    room.write("Привет");
    State.EditorN = 7;
    QVERIFY(room.send(toNumbers("111111,222222,111111")));
    QCOMPARE(room.queue(), (QStringList{"20260731u008", "20260731u008.dat", "20260731u009",
                                        "20260731u009.dat", "20260731u010", "20260731u010.dat"}));
    for (const char *name : {"20260731u008", "20260731u009", "20260731u010"})
        QCOMPARE(room.queued(name), "ЗЦЗЦ " + Head + "ПРИВЕТ" + End + "НННН  ");
    QCOMPARE(room.queued("20260731u008.dat"), "111111|C|31.07.2026 12:00|u|3|N|");
    QCOMPARE(room.queued("20260731u009.dat"), "222222|C|31.07.2026 12:00|u|3|N|");
    QCOMPARE(room.queued("20260731u010.dat"), "111111|C|31.07.2026 12:00|u|3|N|");
    QCOMPARE(State.EditorN, 11);
    QCOMPARE(room.savedNumber(), 11);
    QVERIFY(!room.page.send->isEnabled());
    room.tick(ToTheScan);
    QCOMPARE(room.rows(),
             (QStringList{"20260731u008 111111 3", "20260731u009 222222 3", "20260731u010 111111 3"}));
}

void TestEditorSend::deferredMessageBearsItsTime()
{
    SendingRoom room(Direct, MessageForm);
    room.write("Привет\n1");
    QVERIFY(room.send([](CSendTlgDialog &dialog) {
        at(dialog, Tomorrow);
        agree(dialog);
    }));
    QCOMPARE(room.queue(), QStringList{"20260731u001.260801_090500"});
    QCOMPARE(room.queued("20260731u001.260801_090500"), "ЗЦЗЦ \r\nПРИВЕТ\r\n1\r\nНННН  ");
    QCOMPARE(State.EditorN, 1);
    QCOMPARE(room.savedNumber(), 1);
    QVERIFY(!room.page.send->isEnabled());
    room.tick(ToTheScan);
    QCOMPARE(room.rows(), QStringList{"20260731u001.260801_090500  0"});
}

void TestEditorSend::messageOfNowGoesIntoTheQueueToo()
{
    SendingRoom room(Direct, MessageForm);
    room.write("ПРИВЕТ");
    QVERIFY(room.send());
    QCOMPARE(room.queue(), QStringList{"20260731u001.260731_120000"});
}

void TestEditorSend::messageGoesToTheLineAtOnce()
{
    SendingRoom room(Direct, MessageForm);
    room.setLinkUp(true);
    room.write("Привет");
    QVERIFY(room.send(toLine));
    QCOMPARE(room.desk.sent(), "ЗЦЗЦ <>ПРИВЕТ<>НННН  ");
    QCOMPARE(room.form->tabWidget->currentWidget(), static_cast<QWidget *>(room.form->protocolPage));
    QCOMPARE(room.queue(), QStringList());
    QCOMPARE(State.EditorN, 0);
    QCOMPARE(room.page.text->toPlainText(), "ПРИВЕТ");
}

void TestEditorSend::telegramGoesToTheConnectionAtOnce()
{
    SendingRoom room(SKK, ShortForm);
    State.manualMode = State.connectionActive = true;
    room.setLinkUp(true);
    room.write("Привет");
    QVERIFY(room.send(toLine));
    QCOMPARE(room.desk.sent(), "ЗЦЗЦ П123456<>|||<>>>ПРИВЕТ->>>>>>НННН  ");
    QCOMPARE(room.form->tabWidget->currentWidget(), static_cast<QWidget *>(&room.page));
    QCOMPARE(room.queue(), QStringList());
    QCOMPARE(State.EditorN, 0);
}

void TestEditorSend::dialogShowsWhatGoes_data()
{
    QTest::addColumn<int>("procedure");
    QTest::addColumn<int>("telegramForm");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");
    row("centre", int(CKS), int(ShortForm), "Отправка телеграммы", "П123456\n|||\n\n\nПРИВЕТ-\n\n\n\n\n\n");
    row("subscriber", int(SKK), int(ShortForm), "Отправка телеграммы",
        "ЗЦЗЦ П123456\n|||\n\n\nПРИВЕТ-\n\n\n\n\n\nНННН  ");
    row("subscriber, text", int(SKK), int(MessageForm), "Отправка текста", "ПРИВЕТ");
    row("direct link", int(Direct), int(MessageForm), "Отправка сообщения", "ЗЦЗЦ \nПРИВЕТ\nНННН  ");
}

void TestEditorSend::dialogShowsWhatGoes()
{
    QFETCH(int, procedure);
    QFETCH(int, telegramForm);
    SendingRoom room(procedure, telegramForm);
    room.write("Привет");
    QString title, text;
    QVERIFY(room.send([&](CSendTlgDialog &dialog) {
        title = dialog.windowTitle();
        text = dialog.findChild<QPlainTextEdit *>()->toPlainText();
    }));
    QTEST(title, "title");
    QTEST(text, "text");
}

void TestEditorSend::leavingTheDialogSendsNothing_data()
{
    QTest::addColumn<int>("procedure");
    QTest::addColumn<bool>("byButton");
    for (const int procedure : {CKS, SKK, Direct})
        for (const bool byButton : {true, false})
            QTest::addRow("procedure %d, %s", procedure, byButton ? "button" : "cross")
                << procedure << byButton;
}

void TestEditorSend::leavingTheDialogSendsNothing()
{
    QFETCH(int, procedure);
    QFETCH(bool, byButton);
    SendingRoom room(procedure, procedure == Direct ? MessageForm : ShortForm);
    room.write("ПРИВЕТ");
    QVERIFY(room.send([byButton](CSendTlgDialog &dialog) {
        if (byButton)
            press(dialog, "cancel");
    }));
    QCOMPARE(room.queue(), QStringList());
    QCOMPARE(State.EditorN, 0);
    QVERIFY(room.page.send->isEnabled());
    QVERIFY(room.desk.sent().isEmpty());
    QVERIFY(room.news().isEmpty());
}

void TestEditorSend::centresNumberIsProposed()
{
    SendingRoom room(SKK, ShortForm, [] { Options.indexCKS = "765432"; });
    room.write("ПРИВЕТ");
    QVERIFY(room.send());
    QCOMPARE(room.queued("20260731u001.dat"), "765432|C|31.07.2026 12:00|u|3|N|");
}

void TestEditorSend::numberOfTheDayIsSavedAtOnce()
{
    SendingRoom room(CKS, ShortForm);
    for (int i = 1; i <= 3; ++i) {
        room.write(QString("ТЕКСТ %1").arg(i));
        QVERIFY(room.send());
        QCOMPARE(room.savedNumber(), i);
    }
    QCOMPARE(room.queue(), (QStringList{"20260731u001", "20260731u002", "20260731u003"}));
}

void TestEditorSend::sentTextStaysUntilItIsChanged()
{
    SendingRoom room(CKS, ShortForm);
    room.write("ПРИВЕТ");
    QVERIFY(!room.form->editorIsSent());
    QVERIFY(room.send());
    QCOMPARE(room.page.text->toPlainText(), "ПРИВЕТ");
    QVERIFY(room.form->editorIsSent());
    QVERIFY(!room.send()); // the button cannot be pressed
    room.form->tabWidget->setCurrentIndex(0);
    room.form->tabWidget->setCurrentWidget(&room.page);
    QVERIFY(!room.page.send->isEnabled());
    QTest::keyClick(room.page.text, Qt::Key_A);
    QVERIFY(room.page.send->isEnabled());
    QTest::keyClick(room.page.text, Qt::Key_Backspace);
    QVERIFY(room.page.send->isEnabled());
    QCOMPARE(room.queue(), QStringList{"20260731u001"});
}

void TestEditorSend::sentTextGoesToAnotherIndex()
{
    SendingRoom room(CKS, ShortForm);
    room.write("ПРИВЕТ");
    QVERIFY(room.send());
    room.page.index->setFocus();
    QTest::keyClick(room.page.index, Qt::Key_Backspace);
    QTest::keyClick(room.page.index, Qt::Key_7);
    QVERIFY(room.send());
    QVERIFY(room.queued("20260731u001").startsWith("П123456\r\n"));
    QVERIFY(room.queued("20260731u002").startsWith("П123457\r\n"));
    QVERIFY(!room.page.send->isEnabled());
}

void TestEditorSend::thousandthTelegramOfADayGoes()
{
    SendingRoom room(CKS, ShortForm);
    State.EditorN = 999;
    room.write("N [");
    QVERIFY(room.send());
    QCOMPARE(room.queue(), QStringList{"20260731u000"});
    QCOMPARE(room.queued("20260731u000"), Head + "N 1000" + End);
    QCOMPARE(State.EditorN, 1000);
    room.write("N [");
    QVERIFY(room.send());
    QCOMPARE(room.queue(), (QStringList{"20260731u000", "20260731u001"}));
    QCOMPARE(room.queued("20260731u001"), Head + "N 1001" + End);
}

void TestEditorSend::twoWithinOneSecondHaveTheirNumbers_data()
{
    QTest::addColumn<int>("procedure");
    QTest::addColumn<QStringList>("names");
    row("centre", int(CKS), QStringList{"20260731u001", "20260731u002"});
    row("switched", int(SKK),
        QStringList{"20260731u001", "20260731u001.dat", "20260731u002", "20260731u002.dat"});
    row("direct", int(Direct), QStringList{"20260731u001.260731_120000", "20260731u002.260731_120000"});
}

void TestEditorSend::twoWithinOneSecondHaveTheirNumbers()
{
    QFETCH(int, procedure);
    SendingRoom room(procedure, procedure == Direct ? MessageForm : ShortForm);
    for (const char *text : {"ПЕРВАЯ", "ВТОРАЯ"}) {
        room.write(text);
        QVERIFY(room.send(toNumbers("654321")));
    }
    QTEST(room.queue(), "names");
    room.tick(ToTheScan);
    QCOMPARE(room.rows().size(), 2);
    const QStringList files = room.queue().filter(QRegularExpression("u00.(\\.26.*)?$"));
    QVERIFY(room.queued(files.at(0)).contains("ПЕРВАЯ"));
    QVERIFY(room.queued(files.at(1)).contains("ВТОРАЯ"));
}

QTEST_MAIN(TestEditorSend)
#include "test_editor_send.moc"
