// The dialogs by which the operator confirms what a centre delivers.

#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "procedures/process_cks.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"
#include "ui/dialogs/confirm_category_dialog.h"
#include "ui/dialogs/confirm_r_dialog.h"
#include "ui/form_main.h"
#include "ui/sound.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTextEdit>
#include <QtTest>

class TestConfirmDialogs : public QObject
{
    Q_OBJECT

private slots:
    void titleLabelsAndButtons();
    void requestOpensTheDialogWithTheLastOperator();
    void confirmationGoesOutWithThreeDigits_data();
    void confirmationGoesOutWithThreeDigits();
    void fieldsAreReadAtThatMoment();
    void refusalSendsNothing();
    void crossSendsNothingAndStopsTheSound();
    void escapeSendsNothingAndStopsTheSound();
    void withoutTimeOutNeverConfirmsByItself();
    void confirmsByItselfAtTheLastTick();
    void nameOfThreeCharactersNeverConfirmsByItself();
    void secondRequestRefillsTheOpenDialog();
    void countdownRestartsWhenShownAnew();
    void categoryDialogIsClosedByAConfirmation();
    void categoryDialogTellsAndCloses();
    void soundsPlayByTheirTypes_data();
    void soundsPlayByTheirTypes();
    void closingDialogsInTheTrayEndsNothing();
};

namespace
{
/// A desk with the window in CKS, past the first tick's start of the link thread, which does not run. The
/// window goes first at the end.
struct WindowDesk : Desk {
    WindowDesk()
    {
        Options.processMode = 0;
        Options.soundRTlgType = 0;
        Options.soundCTlgType = 0;
        Options.lastOperator = QStringLiteral("Иванова");
        for (const char *name : {"raketa.wav", "category.wav"}) {
            QDir().mkpath(path("sound"));
            QFile::copy(QStringLiteral(VELDA_SOUND_DIR "/") + name, path(QStringLiteral("sound/") + name));
        }
        window = std::make_unique<FormMain>();
        window->firstStart = false;
    }
    static QLineEdit *number() { return ConfirmRDialog->findChild<QLineEdit *>("number"); }
    static QLineEdit *operatorName() { return ConfirmRDialog->findChild<QLineEdit *>("operator"); }
    static QPushButton *confirm() { return ConfirmRDialog->findChild<QPushButton *>("confirm"); }
    static QPushButton *cancel() { return ConfirmRDialog->findChild<QPushButton *>("cancel"); }
    static void tick(int times)
    {
        for (int i = 0; i < times; ++i)
            ConfirmRDialog->slotOn_1sec();
    }
    std::unique_ptr<FormMain> window;
};
} // namespace

void TestConfirmDialogs::titleLabelsAndButtons()
{
    const WindowDesk desk;
    ProcessCKS.confirmR(7);
    QCOMPARE(ConfirmRDialog->windowTitle(), QStringLiteral("Подтверждение приема Р"));
    QStringList labels;
    for (const QLabel *label : ConfirmRDialog->findChildren<QLabel *>())
        labels << label->text();
    QCOMPARE(labels, QStringList({"Р", "Оператор"}));
    QCOMPARE(desk.confirm()->text(), QStringLiteral("Подтвердить"));
    QCOMPARE(desk.cancel()->text(), QStringLiteral("Отказаться"));
}

void TestConfirmDialogs::requestOpensTheDialogWithTheLastOperator()
{
    const WindowDesk desk;
    QVERIFY(!ConfirmRDialog);
    ProcessCKS.confirmR(7);
    QVERIFY(ConfirmRDialog->isVisible());
    QCOMPARE(desk.number()->text(), QStringLiteral("7"));
    QCOMPARE(desk.operatorName()->text(), QStringLiteral("Иванова"));
    QCOMPARE(State.tlgMode, 5);
}

void TestConfirmDialogs::confirmationGoesOutWithThreeDigits_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("line");
    row("one digit", 7, "|ЗЦЗЦ КС Р007 ПРИН ИВАНОВА НННН  ");
    row("two digits", 70, "|ЗЦЗЦ КС Р070 ПРИН ИВАНОВА НННН  ");
    row("three digits", 700, "|ЗЦЗЦ КС Р700 ПРИН ИВАНОВА НННН  ");
    row("four digits", 7000, "|ЗЦЗЦ КС Р7000 ПРИН ИВАНОВА НННН  ");
}

void TestConfirmDialogs::confirmationGoesOutWithThreeDigits()
{
    QFETCH(int, number);
    QFETCH(QString, line);
    const WindowDesk desk;
    ProcessCKS.confirmR(number);
    QTest::mousePress(desk.confirm(), Qt::LeftButton); // the press alone, not the click
    QCOMPARE(desk.sent(), line);
    QVERIFY(!ConfirmRDialog->isVisible());
}

void TestConfirmDialogs::fieldsAreReadAtThatMoment()
{
    const WindowDesk desk;
    ProcessCKS.confirmR(7);
    desk.number()->setText("8");
    desk.operatorName()->setText("пе");
    QTest::mousePress(desk.confirm(), Qt::LeftButton);
    QCOMPARE(desk.sent(), QStringLiteral("|ЗЦЗЦ КС Р008 ПРИН ПЕ НННН  "));
}

void TestConfirmDialogs::refusalSendsNothing()
{
    const WindowDesk desk;
    ProcessCKS.confirmR(7);
    QTest::mousePress(desk.cancel(), Qt::LeftButton);
    QVERIFY(!ConfirmRDialog->isVisible());
    QCOMPARE(desk.sent(), QString());
}

void TestConfirmDialogs::crossSendsNothingAndStopsTheSound()
{
    const WindowDesk desk;
    Options.soundRTlgType = 2;
    ProcessCKS.confirmR(7);
    QCOMPARE(sound.playingFileName(), QStringLiteral("sound/raketa.wav"));
    ConfirmRDialog->close();
    QCOMPARE(sound.playingFileName(), QString());
    QCOMPARE(desk.sent(), QString());
}

void TestConfirmDialogs::escapeSendsNothingAndStopsTheSound()
{
    const WindowDesk desk;
    Options.soundRTlgType = 2;
    ProcessCKS.confirmR(7);
    QTest::keyClick(ConfirmRDialog, Qt::Key_Escape);
    QVERIFY(!ConfirmRDialog->isVisible());
    QCOMPARE(sound.playingFileName(), QString());
    QCOMPARE(desk.sent(), QString());
}

void TestConfirmDialogs::withoutTimeOutNeverConfirmsByItself()
{
    const WindowDesk desk;
    ProcessCKS.confirmR(7);
    desk.tick(1000);
    QVERIFY(ConfirmRDialog->isVisible());
    QCOMPARE(desk.confirm()->text(), QStringLiteral("Подтвердить"));
}

void TestConfirmDialogs::confirmsByItselfAtTheLastTick()
{
    const WindowDesk desk;
    Options.autoConfirmRTimeOut = 3;
    Options.lastOperator = QStringLiteral("Лена"); // four characters suffice
    ProcessCKS.confirmR(7);
    emit Time.signal_1sec(); // the dialog hangs on the clock itself
    QCOMPARE(desk.confirm()->text(), QStringLiteral("Подтвердить (2 сек)"));
    desk.tick(1);
    QCOMPARE(desk.confirm()->text(), QStringLiteral("Подтвердить (1 сек)"));
    QCOMPARE(desk.sent(), QString());
    desk.tick(1);
    QCOMPARE(desk.sent(), QStringLiteral("|ЗЦЗЦ КС Р007 ПРИН ЛЕНА НННН  "));
    QVERIFY(!ConfirmRDialog->isVisible());
    desk.tick(5);
    QCOMPARE(desk.sent(), QString());
}

void TestConfirmDialogs::nameOfThreeCharactersNeverConfirmsByItself()
{
    const WindowDesk desk;
    Options.autoConfirmRTimeOut = 2;
    Options.lastOperator = QStringLiteral("Оля");
    ProcessCKS.confirmR(7);
    desk.tick(10);
    QVERIFY(ConfirmRDialog->isVisible());
    QCOMPARE(desk.confirm()->text(), QStringLiteral("Подтвердить"));
    QCOMPARE(ConfirmRDialog->countdown, 2);
}

void TestConfirmDialogs::secondRequestRefillsTheOpenDialog()
{
    const WindowDesk desk;
    Options.autoConfirmRTimeOut = 9;
    ProcessCKS.confirmR(7);
    const CConfirmRDialog *first = ConfirmRDialog;
    desk.tick(4);
    ProcessCKS.confirmR(8);
    QCOMPARE(ConfirmRDialog, first);
    QCOMPARE(desk.number()->text(), QStringLiteral("8"));
    QCOMPARE(ConfirmRDialog->countdown, 5);
}

void TestConfirmDialogs::countdownRestartsWhenShownAnew()
{
    const WindowDesk desk;
    Options.autoConfirmRTimeOut = 9;
    ProcessCKS.confirmR(7);
    desk.tick(4);
    ConfirmRDialog->close();
    ProcessCKS.confirmR(8);
    QCOMPARE(ConfirmRDialog->countdown, 9);
    QCOMPARE(desk.confirm()->text(), QStringLiteral("Подтвердить"));
}

void TestConfirmDialogs::categoryDialogIsClosedByAConfirmation()
{
    const WindowDesk desk;
    ProcessCKS.ProcessKG(QStringLiteral("ПЕРЕДАЕТСЯ КАТЕГОРИЙНАЯ ВНЕ "));
    QVERIFY(ConfirmCategoryDialog->isVisible());
    ProcessCKS.confirmR(7);
    QVERIFY(!ConfirmCategoryDialog->isVisible());
    QVERIFY(ConfirmRDialog->isVisible());
}

void TestConfirmDialogs::categoryDialogTellsAndCloses()
{
    const WindowDesk desk;
    ProcessCKS.ProcessKG(QStringLiteral("ПЕРЕДАЕТСЯ КАТЕГОРИЙНАЯ ВНЕ "));
    QCOMPARE(ConfirmCategoryDialog->windowTitle(),
             QStringLiteral("Подтверждение приема категорийной телеграммы"));
    auto *text = ConfirmCategoryDialog->findChild<QTextEdit *>("text");
    QCOMPARE(text->toPlainText(), QStringLiteral("Принята категорийная телеграммам\n"));
    QVERIFY(!text->isEnabled());
    auto *button = ConfirmCategoryDialog->findChild<QPushButton *>("close");
    QCOMPARE(button->text(), QStringLiteral("Закрыть"));
    button->click();
    QVERIFY(!ConfirmCategoryDialog->isVisible());
    QCOMPARE(desk.sent(), QString());
}

void TestConfirmDialogs::soundsPlayByTheirTypes_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("plays");
    row("silent", 0, false);
    row("once", 1, true);
    row("loop", 2, true);
}

void TestConfirmDialogs::soundsPlayByTheirTypes()
{
    QFETCH(int, type);
    QFETCH(bool, plays);
    const WindowDesk desk;
    Options.soundRTlgType = type;
    Options.soundCTlgType = type;
    emit ProcessCKS.categoryAnnounced();
    QCOMPARE(sound.playingFileName(), plays ? QStringLiteral("sound/category.wav") : QString());
    ConfirmCategoryDialog->close();
    ProcessCKS.confirmR(1);
    QCOMPARE(sound.playingFileName(), plays ? QStringLiteral("sound/raketa.wav") : QString());
    sound.stop();
}

void TestConfirmDialogs::closingDialogsInTheTrayEndsNothing()
{
    const WindowDesk desk;
    bool ended = false;
    connect(qApp, &QCoreApplication::aboutToQuit, this, [&ended] { ended = true; });
    desk.window->hide();
    ProcessCKS.confirmR(7);
    ConfirmRDialog->close();
    QCoreApplication::processEvents();
    QVERIFY(!ended);
}

QTEST_MAIN(TestConfirmDialogs)
#include "test_confirm_dialogs.moc"
