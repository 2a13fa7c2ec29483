#include "app/options.h"
#include "app/state.h"
#include "procedures/process_skk.h"
#include "tests/support/row.h"
#include "tests/ui/window/station.h"
#include "ui/form_main.h"
#include "ui/roll/protocol_widget.h"

#include <QAction>
#include <QtTest>

class TestFormMainMode : public QObject
{
    Q_OBJECT

private slots:
    void centreModeSetsLabelAndButtons_data();
    void centreModeSetsLabelAndButtons();
    void switchedModeSetsLabel_data();
    void switchedModeSetsLabel();
    void connectionSetsButtonsOfSwitchedChannel();
    void directButtonsAreAlwaysOn();
    void allButtonsStayOnWithNoLock();
    void changedLabelIsJournalled();
    void lineOfTheLabelWaitsForTheEndOfText();
    void changeOfModeAsksForAScanInTwoSeconds();
    void procedureTellsTheWindow();
    void manualModeOpensOptionsAndButtons();
    void automaticModeClosesOptionsAndHidesButtons();
    void clickOnModeFlipsIt();
    void flippedModeBringsTheJournalToItsEnd();
    void modeChangesAreJournalled();
};

namespace
{
const char *const centreButtons[] = {"buttonKG0", "buttonKG1", "buttonKG2", "buttonKG4", "buttonKG5"};
const char *const switchedButtons[] = {"buttonAccept",   "buttonCall",       "buttonWho",  "buttonAO",
                                       "buttonSendFile", "buttonSendString", "buttonBell", "buttonHangup"};
const char *const directButtons[] = {"buttonSendFile", "buttonSendString", "buttonSendText"};

/// "+" for each button that works, link aside.
template <class Names> QString working(const Station &station, const Names &names)
{
    QString on;
    for (const char *name : names) {
        QPushButton *button = station.button(name);
        on += button->isEnabledTo(button->parentWidget()) ? QLatin1Char('+') : QLatin1Char('-');
    }
    return on;
}
} // namespace

void TestFormMainMode::centreModeSetsLabelAndButtons_data()
{
    QTest::addColumn<int>("tlgMode");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("on"); // КГ0 КГ1 КГ2 КГ4 КГ5
    row("0", 0, "--", "+----");
    row("1", 1, "БД", "+----");
    row("2", 2, "БА", "++--+");
    row("3", 3, "РБ", "+-+--");
    row("4", 4, "БВ", "+----");
    row("5", 5, "БР", "--++-");
    row("6", 6, "?", "-----");
    row("-1", -1, "?", "-----");
}

void TestFormMainMode::centreModeSetsLabelAndButtons()
{
    QFETCH(int, tlgMode);
    Station station(CKS);
    State.setTlgMode(5); // no row of the table leaves it as it was
    State.setTlgMode(tlgMode);
    QTEST(station.shown("labelTlgMode"), "label");
    QTEST(working(station, centreButtons), "on");
}

void TestFormMainMode::switchedModeSetsLabel_data()
{
    QTest::addColumn<int>("tlgMode");
    QTest::addColumn<QString>("label");
    row("0", 0, "--");
    row("1", 1, "БД");
    row("2", 2, "БА");
    row("3", 3, "РБ");
    row("4", 4, "--");
    row("5", 5, "--");
    row("9", 9, "--");
}

void TestFormMainMode::switchedModeSetsLabel()
{
    QFETCH(int, tlgMode);
    Station station(SKK);
    State.setTlgMode(tlgMode);
    QTEST(station.shown("labelTlgMode"), "label");
}

void TestFormMainMode::connectionSetsButtonsOfSwitchedChannel()
{
    Station station(SKK);
    QCOMPARE(working(station, switchedButtons), QStringLiteral("++-----+"));
    State.connectionActive = true;
    station.form->slotSetTlgModeInterface();
    QCOMPARE(working(station, switchedButtons), QStringLiteral("+-++++++"));
    State.connectionActive = false;
    station.form->slotSetTlgModeInterface();
    QCOMPARE(working(station, switchedButtons), QStringLiteral("++-----+"));
}

void TestFormMainMode::directButtonsAreAlwaysOn()
{
    Station station(Direct);
    for (int mode = 0; mode < 6; ++mode) {
        State.setTlgMode(mode);
        QCOMPARE(working(station, directButtons), QStringLiteral("+++"));
        QCOMPARE(station.shown("labelTlgMode"), QStringLiteral("--"));
    }
}

void TestFormMainMode::allButtonsStayOnWithNoLock()
{
    Station centre(CKS, [] { Options.noLockButtonInProtocol = true; });
    for (int mode = 0; mode < 7; ++mode) {
        State.setTlgMode(mode);
        QCOMPARE(working(centre, centreButtons), QStringLiteral("+++++"));
    }
    centre.form.reset();
    Station switched(SKK, [] { Options.noLockButtonInProtocol = true; });
    for (const bool active : {true, false}) {
        State.connectionActive = active;
        switched.form->slotSetTlgModeInterface();
        QCOMPARE(working(switched, switchedButtons), QStringLiteral("++++++++"));
    }
}

void TestFormMainMode::changedLabelIsJournalled()
{
    Station station(CKS);
    QCOMPARE(station.news(),
             (QStringList{QStringLiteral("312:00:00 Запуск"), QStringLiteral("312:00:00 Состояние --")}));
    State.setTlgMode(3);
    State.setTlgMode(3);
    State.setTlgMode(9);
    QCOMPARE(station.news(), (QStringList{QStringLiteral("312:00:00 Состояние РБ"),
                                          QStringLiteral("312:00:00 Состояние ?")}));
}

void TestFormMainMode::lineOfTheLabelWaitsForTheEndOfText()
{
    Station station(CKS);
    (void)station.news();
    station.receive(QStringLiteral("АБ"));
    State.setTlgMode(3);
    QCOMPARE(station.news(), QStringList{QStringLiteral("1АБ")});
    station.receive(QStringLiteral("\n"));
    QVERIFY(station.news().contains(QStringLiteral("312:00:00 Состояние РБ")));
}

void TestFormMainMode::changeOfModeAsksForAScanInTwoSeconds()
{
    for (const int mode : {CKS, SKK, Direct}) {
        Station station(mode);
        QCOMPARE(State.scanCountdown, 2); // the construction
        State.scanCountdown = 0;
        State.setTlgMode(0); // the label stays
        QCOMPARE(State.scanCountdown, 2);
    }
}

void TestFormMainMode::procedureTellsTheWindow()
{
    Station station(SKK);
    State.tlgMode = 3;
    State.connectionActive = true;
    emit ProcessSKK.updateTlgModeInterface();
    QCOMPARE(station.shown("labelTlgMode"), QStringLiteral("РБ"));
    QCOMPARE(working(station, switchedButtons), QStringLiteral("+-++++++"));
}

void TestFormMainMode::manualModeOpensOptionsAndButtons()
{
    for (const int mode : {CKS, SKK, Direct}) {
        Station station(mode);
        State.setAutomatic(true);
        State.setAutomatic(false);
        QVERIFY(station.find<QAction>("actionOptions")->isEnabled());
        QCOMPARE(station.shown("labelAutomatic"), QStringLiteral(" РУЧНОЙ "));
        QCOMPARE(station.colour("labelAutomatic"), QColor(Qt::yellow));
        QVERIFY(!station.find<QWidget>("modeFrame")->isHidden());
    }
}

void TestFormMainMode::automaticModeClosesOptionsAndHidesButtons()
{
    for (const int mode : {CKS, SKK, Direct}) {
        Station station(mode);
        QCOMPARE(station.shown("labelAutomatic"), QStringLiteral("---"));
        State.setAutomatic(true);
        QVERIFY(!station.find<QAction>("actionOptions")->isEnabled());
        QCOMPARE(station.shown("labelAutomatic"), QStringLiteral(" АВТОМАТ "));
        QCOMPARE(station.colour("labelAutomatic"), QColor(Qt::green));
        QVERIFY(station.find<QWidget>("modeFrame")->isHidden());
    }
}

void TestFormMainMode::clickOnModeFlipsIt()
{
    Station station(Direct);
    auto *label = station.find<QWidget>("labelAutomatic");
    QTest::mouseClick(label, Qt::LeftButton);
    QVERIFY(State.manualMode);
    QCOMPARE(State.scanCountdown, 3);
    QTest::mouseClick(label, Qt::LeftButton);
    QVERIFY(!State.manualMode);
}

void TestFormMainMode::flippedModeBringsTheJournalToItsEnd()
{
    Station station(Direct);
    station.form->protocolWidget->setDate(QDate(2026, 7, 30));
    QVERIFY(!station.form->protocolWidget->isLastString());
    station.form->toggleAutomaticMode();
    QVERIFY(station.form->protocolWidget->isLastString());
    QCOMPARE(station.form->protocolWidget->date(), QDate(2026, 7, 31));
}

void TestFormMainMode::modeChangesAreJournalled()
{
    Station station(CKS);
    (void)station.news();
    station.form->toggleAutomaticMode();
    QCOMPARE(station.news(), QStringList{QStringLiteral("312:00:00 Установлен РУЧНОЙ режим")});
    State.tlgMode = 2;
    station.form->toggleAutomaticMode();
    QCOMPARE(station.news(), QStringList{QStringLiteral("312:00:00 Установлен АВТОМАТИЧЕСКИЙ режим")});
    QCOMPARE(State.askReceiptCountdown, 3);
}

QTEST_MAIN(TestFormMainMode)
#include "test_form_main_mode.moc"
