#include "app/options.h"
#include "app/state.h"
#include "tests/support/full_disk.h"
#include "tests/ui/window/archive_room.h"
#include "ui/dialogs/re_send_tlg_dialog.h"

#include <QComboBox>
#include <QDateTimeEdit>
#include <QPlainTextEdit>
#include <QPushButton>

namespace
{
using Fill = std::function<void(QDialog &)>;

/// Selects the telegram and forwards it, \a fill being what the operator writes into the dialog.
void forward(const ArchiveRoom &room, const Fill &fill)
{
    room.click(0);
    inNextDialog([&fill](QDialog &dialog) {
        QVERIFY(qobject_cast<CReSendTlgDialog *>(&dialog));
        fill(dialog);
    });
    ArchiveRoom::click(room.page.forward);
}

void press(QDialog &dialog, const char *button)
{
    QTest::mouseClick(dialog.findChild<QPushButton *>(button), Qt::LeftButton);
}

void toCentre(QDialog &dialog)
{
    dialog.findChild<QComboBox *>("category")->setCurrentText("С");
    QTest::keyClicks(dialog.findChild<QComboBox *>("index"), "123456");
    press(dialog, "forward");
}

void toSubscriber(QDialog &dialog)
{
    QTest::keyClicks(dialog.findChild<QComboBox *>("number"), "654321");
    dialog.findChild<QDateTimeEdit *>("sendTime")->setDateTime(QDateTime(QDate(2026, 8, 1), QTime(9, 5)));
    press(dialog, "forward");
}

QStringList queue(const ArchiveRoom &room)
{
    return room.desk.names("out").filter("20260731u");
}
} // namespace

/// A received telegram is sent on, by each procedure.
class TestInputForward : public QObject
{
    Q_OBJECT

private slots:
    void dialogShowsTheTextOnView();
    void throughACentreIndexStandsInFront();
    void onADirectLinkIndexStandsInFront();
    void toASubscriberRecordHoldsNumberTriesAndTime();
    void refusalQueuesNothing_data();
    void refusalQueuesNothing();
    void queueShowsItAtOnce();
    void numberGoesOnWithEachTelegram();
    void foreignFileOfThatNameStays();
    void failedWriteIsToldAndUsesNoNumber_data();
    void failedWriteIsToldAndUsesNoNumber();
    void nothingIsForwardedWithoutAText();
    void telegramThatGoesWhileTheDialogIsOpenIsForwardedWhole();
};

void TestInputForward::dialogShowsTheTextOnView()
{
    const ArchiveRoom room(CArchivePage::Received);
    room.put("a", "|привет\r\n#1");
    room.refresh();
    QString title, text;
    bool readOnly = false;
    forward(room, [&](QDialog &dialog) {
        title = dialog.windowTitle();
        text = dialog.findChild<QPlainTextEdit *>()->toPlainText();
        readOnly = dialog.findChild<QPlainTextEdit *>()->isReadOnly();
    });
    QCOMPARE(title, "Пересылка телеграммы");
    QCOMPARE(text, "привет\n1");
    QVERIFY(readOnly);
}

void TestInputForward::throughACentreIndexStandsInFront()
{
    const ArchiveRoom room(CArchivePage::Received, CKS);
    room.put("a", "|Привет\r\n#1");
    room.refresh();
    State.EditorN = 16;
    forward(room, toCentre);
    QCOMPARE(queue(room), QStringList{"20260731u017"});
    QCOMPARE(room.desk.read("out/20260731u017"), QByteArray("С123456\r\nПРИВЕТ\r\n1"));
    QCOMPARE(State.EditorN, 17);
    QVERIFY(Options.lastCKSCallNumbers.contains("123456"));
}

// It bears no time of sending, so the queue of the link does not list it.
void TestInputForward::onADirectLinkIndexStandsInFront()
{
    const ArchiveRoom room(CArchivePage::Received, Direct);
    room.put("a", "Привет");
    room.refresh();
    forward(room, toCentre);
    QCOMPARE(queue(room), QStringList{"20260731u001"});
    QCOMPARE(room.desk.read("out/20260731u001"), QByteArray("С123456\r\nПРИВЕТ"));
    QCOMPARE(room.form->modelSend.rowCount(), 0);
}

void TestInputForward::toASubscriberRecordHoldsNumberTriesAndTime()
{
    const ArchiveRoom room(CArchivePage::Received, SKK, [] { Options.sendTrys = 5; });
    room.put("a", "Привет\r\n");
    room.refresh();
    forward(room, toSubscriber);
    QCOMPARE(queue(room), (QStringList{"20260731u001", "20260731u001.dat"}));
    QCOMPARE(room.desk.read("out/20260731u001"), QByteArray("ПРИВЕТ\r\n"));
    QCOMPARE(room.desk.read("out/20260731u001.dat"), QByteArray("654321|S|01.08.2026 09:05|u|5|N|"));
    QVERIFY(Options.lastSKKCallNumbers.contains("654321"));
}

void TestInputForward::refusalQueuesNothing_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("byButton");
    for (const int mode : {CKS, SKK, Direct})
        for (const bool byButton : {true, false})
            QTest::addRow("mode %d, %s", mode, byButton ? "button" : "cross") << mode << byButton;
}

void TestInputForward::refusalQueuesNothing()
{
    QFETCH(int, mode);
    QFETCH(bool, byButton);
    ArchiveRoom room(CArchivePage::Received, mode);
    room.putAndShow({"a"});
    (void)room.news();
    forward(room, [byButton](QDialog &dialog) {
        if (byButton)
            press(dialog, "cancel");
    });
    QCOMPARE(queue(room), QStringList());
    QCOMPARE(State.EditorN, 0);
    QVERIFY(room.news().isEmpty());
}

void TestInputForward::queueShowsItAtOnce()
{
    const ArchiveRoom room(CArchivePage::Received, SKK);
    room.putAndShow({"a"});
    forward(room, toSubscriber);
    QCOMPARE(room.form->modelSend.rowCount(), 1);
    QCOMPARE(room.form->modelSend.at(0).fileName, "20260731u001");
    QCOMPARE(room.form->modelSend.at(0).number, "654321");
}

void TestInputForward::numberGoesOnWithEachTelegram()
{
    const ArchiveRoom room(CArchivePage::Received);
    room.putAndShow({"a"});
    forward(room, toCentre);
    State.EditorN = 0;
    State.Load(); // it was saved before the next tick
    forward(room, toCentre);
    QCOMPARE(queue(room), (QStringList{"20260731u001", "20260731u002"}));
}

void TestInputForward::foreignFileOfThatNameStays()
{
    const ArchiveRoom room(CArchivePage::Received);
    room.putAndShow({"a"});
    room.desk.write("out/20260731u001", "ЧУЖОЕ");
    forward(room, toCentre);
    QCOMPARE(room.desk.read("out/20260731u001"), QByteArray("ЧУЖОЕ"));
    QCOMPARE(room.desk.read("out/20260731u002"), QByteArray("С123456\r\nТЕКСТ A"));
}

void TestInputForward::failedWriteIsToldAndUsesNoNumber_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("space");
    for (const int mode : {CKS, SKK, Direct})
        for (const int space : {0, 40}) // the second lets the record through
            QTest::addRow("mode %d, %d bytes", mode, space) << mode << space;
}

void TestInputForward::failedWriteIsToldAndUsesNoNumber()
{
    QFETCH(int, mode);
    QFETCH(int, space);
    ArchiveRoom room(CArchivePage::Received, mode);
    room.put("a", QByteArray(1000, 'A'));
    room.refresh();
    room.click("a");
    (void)room.news();
    {
        std::unique_ptr<FullDisk> full;
        forward(room, [&](QDialog &dialog) {
            full = std::make_unique<FullDisk>(qint64(space));
            mode == SKK ? toSubscriber(dialog) : toCentre(dialog);
        });
    }
    QCOMPARE(queue(room), QStringList());
    QCOMPARE(State.EditorN, 0);
    const QString told = "Телеграмма не поставлена в очередь, не записан файл out/20260731u001";
    QCOMPARE(room.news().filter(told).size(), 1);
    QCOMPARE(room.desk.read(room.place("a")), QByteArray(1000, 'A'));
    QVERIFY(room.page.forward->isEnabled()); // to be tried again
    forward(room, mode == SKK ? toSubscriber : toCentre);
    QVERIFY(queue(room).contains("20260731u001"));
}

void TestInputForward::nothingIsForwardedWithoutAText()
{
    const ArchiveRoom room(CArchivePage::Received);
    room.put("a", "");
    room.refresh();
    QVERIFY(!room.page.forward->isEnabled());
    room.click("a");
    QVERIFY(!room.page.forward->isEnabled());
}

void TestInputForward::telegramThatGoesWhileTheDialogIsOpenIsForwardedWhole()
{
    ArchiveRoom room(CArchivePage::Received);
    room.putAndShow({"a", "b"});
    forward(room, [&room](QDialog &dialog) {
        QVERIFY(QFile::remove(room.pathOf("a")));
        State.scanCountdown = 0;
        room.tick();
        QCOMPARE(room.rows(), QStringList{"b"});
        toCentre(dialog);
    });
    QCOMPARE(room.desk.read("out/20260731u001"), QByteArray("С123456\r\nТЕКСТ A"));
}

QTEST_MAIN(TestInputForward)
#include "test_input_forward.moc"
