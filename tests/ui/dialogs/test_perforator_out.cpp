// The dialog that punches, over a simulated perforator.

#include "tests/support/rounds.h"
#include "tests/ui/dialogs/punch_room.h"
#include "ui/dialogs/perforator_out_dialog.h"

#include <QProgressBar>
#include <QTextEdit>

class TestPerforatorOut : public QObject
{
    Q_OBJECT

private slots:
    void textsAreTheOperators();
    void buttonsWaitForTheAdapter();
    void telegramIsPunched();
    void enterStarts();
    void enterPressesTheButtonInFocus();
    void enterBehindTheStartDoesNotStop();
    void progressFollowsThePunch();
    void skipPunchesOneBlank();
    void skip10PunchesExactlyTen();
    void stopHalfWayLeavesTheRest();
    void stoppedTextIsPunchedAgainFromItsBeginning();
    void startSetsTheProgressBack();
    void progressEndsFullBehindBlankTape();
    void textCannotBeStartedTwice();
    void emptyTextLeavesTheSkips();
    void eachRunHasItsOwnText();
    void portIsHeldWhileTheDialogIsOpen_data();
    void portIsHeldWhileTheDialogIsOpen();
    void closedDialogLetsTheTextRunOut();
    void unpluggedAdapterLeavesTheDialogUsable();
    void geometryIsKept_data();
    void geometryIsKept();
    void geometryIsRestored();
};

namespace
{
const QByteArrayList controls{"start", "stop", "skip", "skip10"};

QString qs(const char *text)
{
    return QString::fromUtf8(text);
}

int progress(const QDialog &dialog)
{
    return dialog.findChild<QProgressBar *>()->value();
}

void print(CPerforatorOutDialog &dialog, const QString &text, const std::function<void()> &act)
{
    Dialog::inside(
        dialog, [&] { dialog.Print(text); }, act);
}

void slowPunch(PerforatorOptions &options)
{
    options.speed = 100;
}
} // namespace

void TestPerforatorOut::textsAreTheOperators()
{
    const PunchRoom room;
    CPerforatorOutDialog dialog;
    QCOMPARE(dialog.windowTitle(), qs("Вывод на перфоратор"));
    QCOMPARE(
        Dialog::buttonTexts(dialog),
        QStringList({qs("Пуск"), qs("Пробить текст на ленте"), qs("Стоп"), qs("Не пробивать остаток текста"),
                     qs("Пропуск 1"), qs("Продвинуть ленту на один знак «|»"), qs("Пропуск 10"),
                     qs("Продвинуть ленту на десять знаков «|»"), qs("Закрыть")}));
}

void TestPerforatorOut::buttonsWaitForTheAdapter()
{
    PunchRoom room;
    room.unplug();
    const CPerforatorOutDialog dialog;
    QTRY_COMPARE(Dialog::state(dialog), qs("Sorel (20000001):  Нет устройства"));
    QCOMPARE(Dialog::enabledOf(dialog, controls), QByteArrayList());
    QVERIFY(Dialog::enabled(dialog, "close"));
    room.plug();
    PrfThread.Activate();
    QTRY_COMPARE(Dialog::enabledOf(dialog, controls), controls);
    QCOMPARE(Dialog::state(dialog), qs("Sorel (20000001): Соединено "));
}

void TestPerforatorOut::telegramIsPunched()
{
    const PunchRoom room;
    CPerforatorOutDialog dialog;
    const QString telegram = qs("|ЗЦЗЦ 1\r\nПРИВЕТ<>НННН");
    print(dialog, telegram, [&] {
        auto *edit = dialog.findChild<QTextEdit *>();
        QVERIFY(edit->isReadOnly());
        QCOMPARE(edit->toPlainText(), qs("|ЗЦЗЦ 1\nПРИВЕТ<>НННН"));
        Dialog::press(dialog, "start");
        QTRY_COMPARE(room.codes().toHex(), QByteArray("00110e110e"     // ЗЦЗЦ
                                                      "041b170802"     // 1
                                                      "00160a06130110" // ПРИВЕТ
                                                      "0802"
                                                      "0c0c0c0c"));
        QTRY_COMPARE(progress(dialog), telegram.size());
    });
    QCOMPARE(room.breaches(), QStringList());
}

void TestPerforatorOut::enterStarts()
{
    const PunchRoom room;
    CPerforatorOutDialog dialog;
    print(dialog, qs("ABC"), [&] {
        QTest::keyClick(&dialog, Qt::Key_Return);
        QTRY_COMPARE(room.codes().toHex(), QByteArray("03190e"));
    });
}

void TestPerforatorOut::enterPressesTheButtonInFocus()
{
    const PunchRoom room;
    CPerforatorOutDialog dialog;
    print(dialog, qs("ABC"), [&] {
        QTest::keyClick(Dialog::focused(dialog, "skip"), Qt::Key_Return);
        QTRY_COMPARE(room.codes().toHex(), QByteArray("00"));
        QTest::keyClick(Dialog::focused(dialog, "close"), Qt::Key_Return);
        QVERIFY(!dialog.isVisible());
    });
    QTRY_VERIFY(room.saw(qs("closed:")));
    QCOMPARE(room.codes().toHex(), QByteArray("00"));
}

void TestPerforatorOut::enterBehindTheStartDoesNotStop()
{
    PunchRoom room;
    room.perforator.run(qs("jam"));
    CPerforatorOutDialog dialog;
    print(dialog, qs("ABC"), [&] {
        (void)Dialog::focused(dialog, "start");
        for (int i = 0; i < 2; ++i)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(PrfThread.waitingLength(), 3);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QVERIFY(Dialog::button(dialog, "stop")->hasFocus());
        room.perforator.run(qs("unjam"));
        QTRY_COMPARE(room.codes().toHex(), QByteArray("03190e"));
    });
}

void TestPerforatorOut::progressFollowsThePunch()
{
    const PunchRoom room(slowPunch);
    CPerforatorOutDialog dialog;
    print(dialog, QString(60, QLatin1Char('A')), [&] {
        auto *bar = dialog.findChild<QProgressBar *>();
        QCOMPARE(bar->minimum(), 0);
        QCOMPARE(bar->maximum(), 60);
        QCOMPARE(bar->value(), 0);
        QCOMPARE(bar->text(), qs("0 из 60"));
        QVector<int> shown;
        QObject::connect(bar, &QProgressBar::valueChanged, bar, [&](int value) { shown << value; });
        int rounds = 0;
        QVERIFY(onceInAFew([&] { // a window that is held up shows fewer steps
            Dialog::press(dialog, "start");
            shown.clear(); // the bar goes back when the text is punched again
            ++rounds;
            return comesTrue([&] { return bar->value() == 60; }) && shown.size() > 3;
        }));
        QVERIFY(std::is_sorted(shown.begin(), shown.end()));
        QTRY_COMPARE(room.codes(), QByteArray(60 * rounds, 3));
    });
    QCOMPARE(room.breaches(), QStringList());
}

void TestPerforatorOut::skipPunchesOneBlank()
{
    const PunchRoom room;
    CPerforatorOutDialog dialog;
    print(dialog, qs("A"), [&] {
        Dialog::press(dialog, "skip");
        QTRY_COMPARE(room.codes().toHex(), QByteArray("00"));
        Dialog::press(dialog, "skip");
        QTRY_COMPARE(room.codes().toHex(), QByteArray("0000"));
        QVERIFY(progress(dialog) <= 1);
    });
}

void TestPerforatorOut::skip10PunchesExactlyTen()
{
    const PunchRoom room;
    CPerforatorOutDialog dialog;
    print(dialog, qs("A"), [&] {
        Dialog::press(dialog, "skip10");
        QTRY_COMPARE(PrfThread.waitingLength(), 0);
        QCOMPARE(PrfThread.sentLength(), 10);
        Dialog::press(dialog, "skip"); // a mark behind them
        QTRY_COMPARE(room.codes().toHex(), QByteArray("00").repeated(11));
        Dialog::press(dialog, "start");
        QTRY_COMPARE(room.codes().toHex(), QByteArray("00").repeated(11) + "1f03");
    });
}

void TestPerforatorOut::stopHalfWayLeavesTheRest()
{
    PunchRoom room(slowPunch);
    CPerforatorOutDialog dialog;
    print(dialog, QString(500, QLatin1Char('A')), [&] {
        Dialog::press(dialog, "start");
        QTRY_VERIFY(progress(dialog) > 0);
        Dialog::press(dialog, "stop");
        QCOMPARE(PrfThread.waitingLength(), 0);
        const int sent = PrfThread.sentLength();
        QVERIFY(sent < 500);
        QTRY_COMPARE(room.codes(), QByteArray(sent, 3));
        Dialog::press(dialog, "skip"); // the connection stays
        QTRY_COMPARE(room.codes(), QByteArray(sent, 3) + '\0');
    });
    QCOMPARE(room.breaches(), QStringList());
}

void TestPerforatorOut::stoppedTextIsPunchedAgainFromItsBeginning()
{
    PunchRoom room(slowPunch);
    CPerforatorOutDialog dialog;
    print(dialog, qs("ABC") + QString(60, QLatin1Char('E')), [&] {
        Dialog::press(dialog, "start");
        QTRY_VERIFY(progress(dialog) > 0);
        Dialog::press(dialog, "stop");
        const int sent = PrfThread.sentLength();
        Dialog::press(dialog, "start");
        QTRY_COMPARE(progress(dialog), 63);
        QTRY_COMPARE(PrfThread.sentLength(), 63); // without what went before the stop
        QTRY_COMPARE(room.codes().size(), sent + 63);
        QCOMPARE(room.codes().right(63).left(4).toHex(), QByteArray("03190e01"));
    });
}

void TestPerforatorOut::startSetsTheProgressBack()
{
    PunchRoom room;
    CPerforatorOutDialog dialog;
    print(dialog, qs("ABC"), [&] {
        Dialog::press(dialog, "start");
        QTRY_COMPARE(progress(dialog), 3);
        Dialog::press(dialog, "start");
        QCOMPARE(progress(dialog), 0);
        QTRY_COMPARE(progress(dialog), 3);
    });
}

void TestPerforatorOut::progressEndsFullBehindBlankTape()
{
    PunchRoom room;
    room.perforator.run(qs("jam"));
    CPerforatorOutDialog dialog;
    print(dialog, qs("ABCDE"), [&] {
        Dialog::press(dialog, "skip10");
        Dialog::press(dialog, "start");
        room.perforator.run(qs("unjam"));
        QTRY_COMPARE(PrfThread.waitingLength(), 0);
        QTRY_COMPARE(progress(dialog), 5);
        QTRY_COMPARE(room.codes().toHex(), QByteArray("00").repeated(10) + "1f03190e0901");
    });
}

void TestPerforatorOut::textCannotBeStartedTwice()
{
    PunchRoom room;
    room.perforator.run(qs("jam"));
    CPerforatorOutDialog dialog;
    print(dialog, qs("ABC"), [&] {
        QTest::keyClick(&dialog, Qt::Key_Return);
        QTest::keyClick(&dialog, Qt::Key_Return);
        Dialog::press(dialog, "start");
        QCOMPARE(PrfThread.waitingLength(), 3);
        QVERIFY(!Dialog::enabled(dialog, "start"));
        room.perforator.run(qs("unjam"));
        QTRY_VERIFY(Dialog::enabled(dialog, "start"));
        QTRY_COMPARE(room.codes().toHex(), QByteArray("03190e"));
    });
}

void TestPerforatorOut::emptyTextLeavesTheSkips()
{
    const PunchRoom room;
    CPerforatorOutDialog dialog;
    print(dialog, QString(), [&] {
        QVERIFY(!dialog.findChild<QProgressBar *>()->isVisible());
        Dialog::press(dialog, "skip");
        QTRY_COMPARE(room.codes().toHex(), QByteArray("00"));
    });
}

void TestPerforatorOut::eachRunHasItsOwnText()
{
    const PunchRoom room;
    CPerforatorOutDialog dialog;
    print(dialog, qs("AAAA"), [&] {
        Dialog::press(dialog, "start");
        QTRY_COMPARE(progress(dialog), 4);
    });
    PrfThread.Activate(); // as a fresh dialog does
    print(dialog, qs("EE"), [&] {
        QCOMPARE(dialog.text, qs("EE"));
        QCOMPARE(progress(dialog), 0);
        Dialog::press(dialog, "start");
        QTRY_COMPARE(room.codes().right(2).toHex(), QByteArray("0101"));
    });
}

void TestPerforatorOut::portIsHeldWhileTheDialogIsOpen_data()
{
    Dialog::addWaysToClose();
}

void TestPerforatorOut::portIsHeldWhileTheDialogIsOpen()
{
    QFETCH(const QString, way);
    const PunchRoom room;
    QVERIFY(!room.saw(qs("opened:")));
    CPerforatorOutDialog dialog;
    print(dialog, qs("A"), [&] {
        QVERIFY(room.saw(qs("opened:")));
        Dialog::closeBy(way, dialog);
        QVERIFY(PrfThread.paused);
    });
    QTRY_COMPARE(room.lines.last(), qs("closed:"));
    QTRY_COMPARE(PrfThread.state(), qs("Sorel (20000001): Ожидание"));
}

void TestPerforatorOut::closedDialogLetsTheTextRunOut()
{
    PunchRoom room;
    room.perforator.run(qs("jam"));
    CPerforatorOutDialog dialog;
    print(dialog, QString(80, QLatin1Char('A')), [&] { Dialog::press(dialog, "start"); });
    QCOMPARE(PrfThread.waitingLength(), 80);
    room.perforator.run(qs("unjam"));
    QTRY_COMPARE(room.codes(), QByteArray(80, 3));
    QTRY_VERIFY(room.saw(qs("closed:")));
    QCOMPARE(room.breaches(), QStringList());
}

void TestPerforatorOut::unpluggedAdapterLeavesTheDialogUsable()
{
    PunchRoom room(slowPunch);
    CPerforatorOutDialog dialog;
    print(dialog, QString(500, QLatin1Char('A')), [&] {
        Dialog::press(dialog, "start");
        QTRY_VERIFY(progress(dialog) > 0);
        room.perforator.run(qs("unplug"));
        QVERIFY(PrfThread.waitingLength() > 0);
        Dialog::press(dialog, "stop");
        QCOMPARE(PrfThread.waitingLength(), 0);
        Dialog::press(dialog, "close");
    });
    QTRY_VERIFY(!PrfThread.connected);
}

void TestPerforatorOut::geometryIsKept_data()
{
    Dialog::addWaysToClose();
}

void TestPerforatorOut::geometryIsKept()
{
    QFETCH(const QString, way);
    const PunchRoom room;
    CPerforatorOutDialog dialog;
    print(dialog, qs("A"), [&] {
        dialog.setGeometry(30, 50, 700, 500);
        Dialog::closeBy(way, dialog);
    });
    QCOMPARE(Options.geometryPerforatorOut, QRect(30, 50, 700, 500));
    QVERIFY(Options.geometryPerforatorIn.isEmpty());
}

void TestPerforatorOut::geometryIsRestored()
{
    const PunchRoom room;
    Options.geometryPerforatorOut = QRect(40, 60, 710, 510);
    CPerforatorOutDialog dialog;
    print(dialog, qs("A"), [&] { QCOMPARE(dialog.geometry(), QRect(40, 60, 710, 510)); });
}

QTEST_MAIN(TestPerforatorOut)
#include "test_perforator_out.moc"
