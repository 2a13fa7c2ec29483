// Sending from the editor when the disk, the directory or the line fails.

#include "tests/support/full_disk.h"
#include "tests/support/row.h"
#include "tests/ui/window/sending_room.h"

#include <QDir>

namespace
{
const QString Failure = QStringLiteral("Телеграмма не поставлена в очередь, не записан файл ");

/// Sends by each procedure while the disk has room for files of \a space bytes at most.
void sendOnFullDisk(const SendingRoom &room, int space)
{
    std::unique_ptr<FullDisk> full;
    QVERIFY(room.send([&](CSendTlgDialog &dialog) {
        full = std::make_unique<FullDisk>(space);
        toNumbers("654321")(dialog);
    }));
}

/// A second passes while the dialog is open.
void passSecond()
{
    Time.setTo(Time.dateTime.addSecs(1));
    emit Time.signal_1sec();
}

bool mayGoAtOnce(const CSendTlgDialog &dialog)
{
    return dialog.findChild<QRadioButton *>("toLine")->isEnabled();
}
} // namespace

class TestEditorSendTrouble : public QObject
{
    Q_OBJECT

private slots:
    void failedWriteKeepsTextAndButton_data();
    void failedWriteKeepsTextAndButton();
    void missingDirectoryKeepsTextAndButton_data();
    void missingDirectoryKeepsTextAndButton();
    void listThatIsQueuedInPartNamesTheRest();
    void nameThatIsTakenIsPassedOver();
    void linkThatComesUpAllowsTheLine();
    void linkThatGoesLeavesTheQueue();
    void linkThatGoesUnseenSendsNothing();
    void callThatEndsLeavesTheQueue();
    void dayThatChangesGivesTheNameItsDate();
};

void TestEditorSendTrouble::failedWriteKeepsTextAndButton_data()
{
    QTest::addColumn<int>("procedure");
    QTest::addColumn<int>("space");
    for (const int procedure : {CKS, SKK, Direct})
        for (const int space : {0, 40}) // the second lets a record through
            QTest::addRow("procedure %d, %d bytes", procedure, space) << procedure << space;
}

void TestEditorSendTrouble::failedWriteKeepsTextAndButton()
{
    QFETCH(int, procedure);
    QFETCH(int, space);
    SendingRoom room(procedure, procedure == Direct ? MessageForm : ShortForm);
    const QString text(1000, 'A');
    room.write(text);
    State.EditorN = 4;
    sendOnFullDisk(room, space);
    QCOMPARE(room.queue(), QStringList());
    QCOMPARE(State.EditorN, 4);
    QCOMPARE(room.page.text->toPlainText(), text);
    QVERIFY(room.page.send->isEnabled());
    QCOMPARE(room.page.dropped->text(), QString());
    QCOMPARE(room.news().filter(Failure + "out/20260731u005").size(), 1);
    QVERIFY(room.send(toNumbers("654321")));
    QVERIFY(room.queue().constFirst().startsWith("20260731u005"));
}

void TestEditorSendTrouble::missingDirectoryKeepsTextAndButton_data()
{
    QTest::addColumn<int>("procedure");
    for (const int procedure : {CKS, SKK, Direct})
        QTest::addRow("procedure %d", procedure) << procedure;
}

void TestEditorSendTrouble::missingDirectoryKeepsTextAndButton()
{
    QFETCH(int, procedure);
    SendingRoom room(procedure, procedure == Direct ? MessageForm : ShortForm);
    Options.pathOut = "nowhere";
    room.write("ПРИВЕТ");
    QVERIFY(room.send(toNumbers("654321")));
    QVERIFY(!QDir("nowhere").exists());
    QCOMPARE(State.EditorN, 0);
    QCOMPARE(room.page.text->toPlainText(), "ПРИВЕТ");
    QVERIFY(room.page.send->isEnabled());
    QCOMPARE(room.news().filter(Failure + "nowhere/20260731u001").size(), 1);
}

// The record of the second number is the longer one.
void TestEditorSendTrouble::listThatIsQueuedInPartNamesTheRest()
{
    SendingRoom room(SKK, MessageForm);
    room.write("ПРИВЕТ");
    {
        std::unique_ptr<FullDisk> full;
        QVERIFY(room.send([&](CSendTlgDialog &dialog) {
            full = std::make_unique<FullDisk>(36);
            toNumbers("111111,+222222222222,333333")(dialog);
        }));
    }
    QCOMPARE(room.queue(), (QStringList{"20260731u001", "20260731u001.dat"}));
    QCOMPARE(room.queued("20260731u001.dat"), "111111|S|31.07.2026 12:00|u|3|N|");
    QCOMPARE(State.EditorN, 2);
    QCOMPARE(room.page.text->toPlainText(), "ПРИВЕТ");
    QVERIFY(room.page.send->isEnabled());
    QCOMPARE(room.page.dropped->text(), "Не поставлено в очередь для номеров: +222222222222, 333333");
    QVERIFY(room.send(toNumbers("+222222222222,333333")));
    QCOMPARE(room.queue().filter(".dat"),
             (QStringList{"20260731u001.dat", "20260731u003.dat", "20260731u004.dat"}));
    QVERIFY(!room.page.send->isEnabled());
    QCOMPARE(room.page.dropped->text(), QString());
}

void TestEditorSendTrouble::nameThatIsTakenIsPassedOver()
{
    SendingRoom room(CKS, ShortForm);
    room.desk.write("out/20260731u001", "ЧУЖОЕ");
    room.write("ПРИВЕТ");
    QVERIFY(room.send());
    QCOMPARE(room.queued("20260731u001"), "ЧУЖОЕ");
    QVERIFY(room.queued("20260731u002").contains("ПРИВЕТ"));
    QCOMPARE(State.EditorN, 2);
}

void TestEditorSendTrouble::linkThatComesUpAllowsTheLine()
{
    SendingRoom room(Direct, MessageForm);
    room.write("ПРИВЕТ");
    QVERIFY(room.send([&](CSendTlgDialog &dialog) {
        QVERIFY(!mayGoAtOnce(dialog));
        room.setLinkUp(true);
        passSecond();
        QVERIFY(mayGoAtOnce(dialog));
        toLine(dialog);
    }));
    QCOMPARE(room.desk.sent(), "ЗЦЗЦ <>ПРИВЕТ<>НННН  ");
    QCOMPARE(room.queue(), QStringList());
}

void TestEditorSendTrouble::linkThatGoesLeavesTheQueue()
{
    SendingRoom room(Direct, MessageForm);
    room.setLinkUp(true);
    room.write("ПРИВЕТ");
    QVERIFY(room.send([&](CSendTlgDialog &dialog) {
        dialog.findChild<QRadioButton *>("toLine")->setChecked(true);
        room.setLinkUp(false);
        passSecond();
        QVERIFY(!mayGoAtOnce(dialog));
        agree(dialog);
    }));
    QVERIFY(room.desk.sent().isEmpty());
    QCOMPARE(room.queue(), QStringList{"20260731u001.260731_120000"});
    QCOMPARE(room.form->tabWidget->currentWidget(), static_cast<QWidget *>(&room.page));
}

// The operator sees that the line has gone, and decides anew.
void TestEditorSendTrouble::linkThatGoesUnseenSendsNothing()
{
    SendingRoom room(Direct, MessageForm);
    room.setLinkUp(true);
    room.write("ПРИВЕТ");
    QVERIFY(room.send([&](CSendTlgDialog &dialog) {
        dialog.findChild<QRadioButton *>("toLine")->setChecked(true);
        room.setLinkUp(false);
        agree(dialog);
        QVERIFY(dialog.isVisible());
    }));
    QVERIFY(room.desk.sent().isEmpty());
    QCOMPARE(room.queue(), QStringList());
    QVERIFY(room.page.send->isEnabled());
}

void TestEditorSendTrouble::callThatEndsLeavesTheQueue()
{
    SendingRoom room(SKK, ShortForm);
    State.manualMode = State.connectionActive = true;
    room.setLinkUp(true);
    room.write("ПРИВЕТ");
    QVERIFY(room.send([&](CSendTlgDialog &dialog) {
        dialog.findChild<QRadioButton *>("toLine")->setChecked(true);
        State.connectionActive = false;
        passSecond();
        QVERIFY(!mayGoAtOnce(dialog));
        toNumbers("654321")(dialog);
    }));
    QVERIFY(room.desk.sent().isEmpty());
    QCOMPARE(room.queue(), (QStringList{"20260731u001", "20260731u001.dat"}));
}

void TestEditorSendTrouble::dayThatChangesGivesTheNameItsDate()
{
    SendingRoom room(CKS, ShortForm);
    Time.setTo(QDateTime(QDate(2026, 7, 31), QTime(23, 59, 59)));
    State.newDay();
    State.EditorN = 40;
    room.write("ПРИВЕТ");
    QVERIFY(room.send([&](CSendTlgDialog &dialog) {
        room.tick(2);
        agree(dialog);
    }));
    QCOMPARE(room.desk.names("out").filter("u0"), QStringList{"20260801u001"});
    QCOMPARE(State.EditorN, 1);
}

QTEST_MAIN(TestEditorSendTrouble)
#include "test_editor_send_trouble.moc"
