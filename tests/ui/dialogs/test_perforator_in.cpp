// The dialog that reads tape, over a simulated perforator.

#include "tests/support/row.h"
#include "tests/ui/dialogs/punch_room.h"
#include "ui/dialogs/perforator_in_dialog.h"
#include "ui/dialogs/perforator_out_dialog.h"

#include <QTextEdit>

class TestPerforatorIn : public QObject
{
    Q_OBJECT

private slots:
    void textsAreTheOperators();
    void onlyTheStartWaitsForTheAdapter();
    void startWaitsForTheRestOfAFormerText();
    void tapeIsRead();
    void tapeReadIsTheTapePunched();
    void readingLeavesOnlyTheStop();
    void enterStartsAndStops();
    void stopWhileReadingKeepsWhatWasRead();
    void stopTakesTheLastOfIt();
    void stopWithNothingReadOffersOnlyTheStart();
    void stopOffersTheStartWithoutAnAdapterToo();
    void secondReadingIsAddedToTheFirst();
    void clearForgetsTheText();
    void clearForgetsWhatTheThreadStillHolds();
    void applyGivesTheText();
    void applyTakesTheLastOfIt();
    void otherEndGivesNothing_data();
    void otherEndGivesNothing();
    void closingStopsTheTape();
    void tapeThatNobodyAskedForIsDropped();
    void lineEndsAreShownAsLines();
    void viewStaysAtTheEndOfTheTape();
    void geometryIsKept_data();
    void geometryIsKept();
    void geometryIsRestored();
};

namespace
{
const QByteArrayList controls{"start", "stop", "clear", "apply"};

QString qs(const char *text)
{
    return QString::fromUtf8(text);
}

/// Runs \a act in the dialog; the dialog's result.
int read(CPerforatorInDialog &dialog, const std::function<void()> &act)
{
    int result = -1;
    Dialog::inside(
        dialog, [&] { result = dialog.exec(); }, act);
    return result;
}

QString shown(const QDialog &dialog)
{
    return dialog.findChild<QTextEdit *>()->toPlainText();
}

/// Starts the tape, and stops it once \a text is read.
void readUntil(const CPerforatorInDialog &dialog, const QString &text)
{
    Dialog::press(dialog, "start");
    QTRY_COMPARE(dialog.getData(), text);
    Dialog::press(dialog, "stop");
}

/// A perforator with \a text on the tape in its reader.
std::unique_ptr<PunchRoom> roomWithTape(const QString &text, int speed = 2000)
{
    auto room = std::make_unique<PunchRoom>([speed](PerforatorOptions &options) { options.speed = speed; });
    room->desk.write(qs("tape"), text.toUtf8());
    room->perforator.run(qs("tape ") + room->desk.path(qs("tape")));
    return room;
}
} // namespace

void TestPerforatorIn::textsAreTheOperators()
{
    const PunchRoom room;
    CPerforatorInDialog dialog;
    QCOMPARE(dialog.windowTitle(), qs("Ввод \x63 перфоратора")); // with a Latin letter
    QCOMPARE(Dialog::buttonTexts(dialog),
             QStringList({qs("Старт"), qs("Читать ленту; прочитанное добавляется к тексту"), qs("Стоп"),
                          qs("Очистить"), qs("Принять"), qs("Взять прочитанный текст"), qs("Закрыть")}));
}

void TestPerforatorIn::onlyTheStartWaitsForTheAdapter()
{
    PunchRoom room;
    room.unplug();
    const CPerforatorInDialog dialog;
    QTRY_COMPARE(Dialog::state(dialog), qs("Sorel (20000001):  Нет устройства"));
    QCOMPARE(Dialog::enabledOf(dialog, controls), QByteArrayList());
    QVERIFY(Dialog::enabled(dialog, "close"));
    room.plug();
    PrfThread.Activate();
    QTRY_COMPARE(Dialog::enabledOf(dialog, controls), QByteArrayList({"start"}));
    QCOMPARE(Dialog::state(dialog), qs("Sorel (20000001): Соединено "));
}

void TestPerforatorIn::startWaitsForTheRestOfAFormerText()
{
    const auto room = roomWithTape(qs("|АБ"));
    CPerforatorOutDialog out;
    Dialog::inside(
        out, [&] { out.Print(QString(200, QLatin1Char('A'))); },
        [&] {
            room->perforator.run(qs("jam"));
            Dialog::press(out, "start");
        });
    CPerforatorInDialog dialog;
    QVERIFY(PrfThread.connected && PrfThread.waitingLength() > 0);
    QVERIFY(!Dialog::enabled(dialog, "start"));
    room->perforator.run(qs("unjam"));
    read(dialog, [&] { readUntil(dialog, qs("|АБ")); });
    QCOMPARE(room->breaches(), QStringList());
}

void TestPerforatorIn::tapeIsRead()
{
    const auto room = roomWithTape(qs("ПРИВЕТ 12, АБ"));
    CPerforatorInDialog dialog;
    read(dialog, [&] {
        QTest::keyClick(&dialog, Qt::Key_Return);
        QTRY_COMPARE(dialog.getData(), qs("|ПРИВЕТ #12, |АБ"));
        QCOMPARE(shown(dialog), qs("|ПРИВЕТ #12, |АБ"));
    });
    QCOMPARE(room->breaches(), QStringList());
}

void TestPerforatorIn::tapeReadIsTheTapePunched()
{
    QString telegram = qs("|ЗЦЗЦ #001& LONDON |МОСКВЕ#-5:\r\nТЕКСТ (НОМЕР 12/34) = ЩЮШЭ.<>");
    telegram = telegram.repeated(8) + qs("|НННН  ");
    PunchRoom room;
    CPerforatorOutDialog out;
    Dialog::inside(
        out, [&] { out.Print(telegram); },
        [&] {
            Dialog::press(out, "start");
            QTRY_VERIFY(Dialog::enabled(out, "start"));
        });
    QTRY_VERIFY(room.saw(qs("closed:")));
    QTRY_COMPARE(room.codes().right(7).toHex(), QByteArray("000c0c0c0c0404")); // the punch may go on
    const QByteArray punched = room.codes();
    QVERIFY(punched.size() > telegram.size());

    QVERIFY(QFile::copy(room.desk.path(qs("punched")), room.desk.path(qs("tape"))));
    room.perforator.run(qs("tape-codes ") + room.desk.path(qs("tape")));
    CPerforatorInDialog in;
    read(in, [&] {
        Dialog::press(in, "start");
        QTRY_VERIFY(room.saw(qs("tape ended:")));
        const auto codesRead = [&in] {
            Mtk2::Register state = Mtk2::Latin;
            return Mtk2::encoded(in.getData(), state);
        };
        QTRY_COMPARE(codesRead(), punched);
    });
    QCOMPARE(room.breaches(), QStringList());
}

void TestPerforatorIn::readingLeavesOnlyTheStop()
{
    const auto room = roomWithTape(qs("АБ"));
    CPerforatorInDialog dialog;
    read(dialog, [&] {
        (void)Dialog::focused(dialog, "start");
        Dialog::press(dialog, "start");
        QCOMPARE(Dialog::enabledOf(dialog, controls), QByteArrayList({"stop"}));
        QVERIFY(Dialog::button(dialog, "stop")->hasFocus());
        QTRY_COMPARE(dialog.getData(), qs("|АБ"));
        QCOMPARE(Dialog::enabledOf(dialog, controls), QByteArrayList({"stop"}));
        QTest::keyClick(Dialog::button(dialog, "stop"), Qt::Key_Space);
        QCOMPARE(Dialog::enabledOf(dialog, controls), QByteArrayList({"start", "clear", "apply"}));
        QTRY_VERIFY(room->saw(qs("stopped: 3")));
    });
}

void TestPerforatorIn::enterStartsAndStops()
{
    const auto room = roomWithTape(qs("|А"));
    CPerforatorInDialog dialog;
    const auto pressEnter = [] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return); };
    read(dialog, [&] {
        pressEnter();
        QTRY_COMPARE(dialog.getData(), qs("|А"));
        pressEnter();
        QCOMPARE(Dialog::enabledOf(dialog, controls), QByteArrayList({"start", "clear", "apply"}));
        Dialog::button(dialog, "clear")->setFocus();
        pressEnter();
        QCOMPARE(dialog.getData(), QString());
        pressEnter();
        QCOMPARE(Dialog::enabledOf(dialog, controls), QByteArrayList({"stop"}));
    });
}

void TestPerforatorIn::stopWhileReadingKeepsWhatWasRead()
{
    const auto room = roomWithTape(QString(2000, QLatin1Char('A')), 200);
    CPerforatorInDialog dialog;
    read(dialog, [&] {
        Dialog::press(dialog, "start");
        QTRY_VERIFY(!dialog.getData().isEmpty());
        Dialog::press(dialog, "stop");
        QVERIFY(!dialog.getData().isEmpty());
        QTRY_VERIFY(room->lines.last().startsWith(qs("stopped: ")));
        const int passed = room->lines.last().section(QLatin1Char(' '), 1).toInt();
        QVERIFY(passed < 2000);
        QTRY_COMPARE(dialog.getData(), QString(passed, QLatin1Char('A')));
        QCOMPARE(shown(dialog), dialog.getData());
        QVERIFY(Dialog::enabled(dialog, "apply"));
    });
}

void TestPerforatorIn::stopTakesTheLastOfIt()
{
    const PunchRoom room;
    CPerforatorInDialog dialog;
    dialog.slotStart();
    PrfThread.receivedText = qs("КОНЕЦ");
    dialog.slotStop();
    QCOMPARE(dialog.getData(), qs("КОНЕЦ"));
    QCOMPARE(shown(dialog), qs("КОНЕЦ"));
}

void TestPerforatorIn::stopWithNothingReadOffersOnlyTheStart()
{
    const PunchRoom room;
    CPerforatorInDialog dialog;
    read(dialog, [&] {
        Dialog::press(dialog, "start");
        Dialog::press(dialog, "stop");
        QCOMPARE(Dialog::enabledOf(dialog, controls), QByteArrayList({"start"}));
        QVERIFY(Dialog::button(dialog, "start")->hasFocus());
    });
}

void TestPerforatorIn::stopOffersTheStartWithoutAnAdapterToo()
{
    PunchRoom room;
    room.unplug();
    CPerforatorInDialog dialog;
    QTRY_COMPARE(Dialog::state(dialog), qs("Sorel (20000001):  Нет устройства"));
    dialog.slotStart();
    QCOMPARE(Dialog::enabledOf(dialog, controls), QByteArrayList({"stop"}));
    dialog.slotStop();
    QCOMPARE(Dialog::enabledOf(dialog, controls), QByteArrayList({"start"}));
}

void TestPerforatorIn::secondReadingIsAddedToTheFirst()
{
    const auto room = roomWithTape(qs("|А"));
    CPerforatorInDialog dialog;
    read(dialog, [&] {
        readUntil(dialog, qs("|А"));
        room->perforator.run(qs("rewind"));
        Dialog::press(dialog, "start");
        QTRY_COMPARE(dialog.getData(), qs("|А|А"));
        QCOMPARE(shown(dialog), qs("|А|А"));
    });
}

void TestPerforatorIn::clearForgetsTheText()
{
    const auto room = roomWithTape(qs("|А"));
    CPerforatorInDialog dialog;
    QCOMPARE(read(dialog,
                  [&] {
                      readUntil(dialog, qs("|А"));
                      Dialog::press(dialog, "clear");
                      QCOMPARE(dialog.getData(), QString());
                      QCOMPARE(shown(dialog), QString());
                      QCOMPARE(Dialog::enabledOf(dialog, controls), QByteArrayList({"start"}));
                      room->perforator.run(qs("rewind"));
                      Dialog::press(dialog, "start");
                      QTRY_COMPARE(shown(dialog), qs("|А"));
                  }),
             0);
}

void TestPerforatorIn::clearForgetsWhatTheThreadStillHolds()
{
    const PunchRoom room;
    CPerforatorInDialog dialog;
    PrfThread.receivedText = qs("ОСТАТОК");
    dialog.slotClear();
    dialog.slotOnReceived();
    QCOMPARE(dialog.getData(), QString());
}

void TestPerforatorIn::applyGivesTheText()
{
    const auto room = roomWithTape(qs("|АБВ"));
    CPerforatorInDialog dialog;
    QCOMPARE(read(dialog,
                  [&] {
                      readUntil(dialog, qs("|АБВ"));
                      Dialog::press(dialog, "apply");
                      QVERIFY(!dialog.isVisible());
                  }),
             1);
    QCOMPARE(dialog.getData(), qs("|АБВ"));
    QTRY_COMPARE(room->lines.last(), qs("closed:"));
}

void TestPerforatorIn::applyTakesTheLastOfIt()
{
    const PunchRoom room;
    CPerforatorInDialog dialog;
    dialog.data = qs("НАЧАЛО ");
    PrfThread.receivedText = qs("КОНЕЦ");
    dialog.slotApply();
    QCOMPARE(dialog.result(), 1);
    QCOMPARE(dialog.getData(), qs("НАЧАЛО КОНЕЦ"));
}

void TestPerforatorIn::otherEndGivesNothing_data()
{
    Dialog::addWaysToClose();
}

void TestPerforatorIn::otherEndGivesNothing()
{
    QFETCH(const QString, way);
    const auto room = roomWithTape(qs("|АБВ"));
    CPerforatorInDialog dialog;
    QCOMPARE(read(dialog,
                  [&] {
                      readUntil(dialog, qs("|АБВ"));
                      Dialog::closeBy(way, dialog);
                  }),
             0);
    QVERIFY(PrfThread.paused);
    QTRY_COMPARE(room->lines.last(), qs("closed:"));
}

void TestPerforatorIn::closingStopsTheTape()
{
    const auto room = roomWithTape(QString(2000, QLatin1Char('A')), 200);
    CPerforatorInDialog dialog;
    read(dialog, [&] {
        Dialog::press(dialog, "start");
        QTRY_VERIFY(!dialog.getData().isEmpty());
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    QTRY_COMPARE(room->lines.last(), qs("closed:"));
    QVERIFY(room->lines.at(room->lines.size() - 2).startsWith(qs("stopped: ")));
}

void TestPerforatorIn::tapeThatNobodyAskedForIsDropped()
{
    const PunchRoom room;
    PrfThread.receivedText = qs("СТАРОЕ");
    CPerforatorInDialog dialog;
    dialog.slotOnReceived();
    QCOMPARE(dialog.getData(), QString());
}

void TestPerforatorIn::lineEndsAreShownAsLines()
{
    const PunchRoom room;
    CPerforatorInDialog dialog;
    for (const char *piece : {"РАЗ\r", "\nДВА\r\n", "ТРИ"}) {
        PrfThread.receivedText = qs(piece);
        dialog.slotOnReceived();
    }
    QCOMPARE(shown(dialog), qs("РАЗ\nДВА\nТРИ"));
    QCOMPARE(dialog.getData(), qs("РАЗ\r\nДВА\r\nТРИ"));
}

void TestPerforatorIn::viewStaysAtTheEndOfTheTape()
{
    const PunchRoom room;
    CPerforatorInDialog dialog;
    read(dialog, [&] {
        PrfThread.receivedText = qs("СТРОКА\n").repeated(50);
        dialog.slotOnReceived();
        auto *edit = dialog.findChild<QTextEdit *>();
        const auto endIsSeen = [edit] {
            QTextCursor end(edit->document());
            end.movePosition(QTextCursor::End);
            return edit->viewport()->rect().contains(edit->cursorRect(end));
        };
        edit->moveCursor(QTextCursor::Start); // as a click does
        QVERIFY(!endIsSeen());
        PrfThread.receivedText = qs("ЕЩЕ\n").repeated(50) + qs("КОНЕЦ");
        dialog.slotOnReceived();
        QVERIFY(shown(dialog).startsWith(qs("СТРОКА\n")) && shown(dialog).endsWith(qs("ЕЩЕ\nКОНЕЦ")));
        QVERIFY(endIsSeen());
    });
}

void TestPerforatorIn::geometryIsKept_data()
{
    Dialog::addWaysToClose();
    row("apply", qs("apply"));
}

void TestPerforatorIn::geometryIsKept()
{
    QFETCH(const QString, way);
    const PunchRoom room;
    CPerforatorInDialog dialog;
    read(dialog, [&] {
        dialog.setGeometry(30, 50, 700, 500);
        if (way == qs("apply"))
            dialog.slotApply();
        else
            Dialog::closeBy(way, dialog);
    });
    QCOMPARE(Options.geometryPerforatorIn, QRect(30, 50, 700, 500));
    QVERIFY(Options.geometryPerforatorOut.isEmpty());
}

void TestPerforatorIn::geometryIsRestored()
{
    const PunchRoom room;
    Options.geometryPerforatorIn = QRect(40, 60, 710, 510);
    CPerforatorInDialog dialog;
    read(dialog, [&] { QCOMPARE(dialog.geometry(), QRect(40, 60, 710, 510)); });
}

QTEST_MAIN(TestPerforatorIn)
#include "test_perforator_in.moc"
