// How the controls of the options depend on one another.

#include "tests/support/row.h"
#include "tests/ui/dialogs/options/option_room.h"

#include <QToolButton>

class TestOptionsDependencies : public QObject
{
    Q_OBJECT

private slots:
    void pagesStandByProcedureAndAccess_data();
    void pagesStandByProcedureAndAccess();
    void userCodeHidesPagesAndApplyKeepsTheirValues();
    void roadsToTheLineExcludeEachOther();
    void serialNumberTellsTheAdapter_data();
    void serialNumberTellsTheAdapter();
    void adaptersAreListedAfreshOnEnteringTheirPage();
    void chosenAdapterStaysNamedWithoutBeingThere();
    void keyIsOffWithoutItsBox();
    void typeOfTheCentreSetsTheLength_data();
    void typeOfTheCentreSetsTheLength();
    void ownLengthIsShownAsItIsInForce();
    void lengthFollowsTheTypeWithoutTheBox();
    void timeFormIsOffWithoutTheStationsTime();
    void readyTimeFormsCannotBeEdited();
    void loadedTimeFormIsFoundAmongTheReadyOnes_data();
    void loadedTimeFormIsFoundAmongTheReadyOnes();
    void answerbackIsRedUntilItIsOne_data();
    void answerbackIsRedUntilItIsOne();
    void answerbackLosesWhatTheCodeCannotCarry();
    void coloursAreChosenAndReset();
    void cancelledColourStays();
};

void TestOptionsDependencies::pagesStandByProcedureAndAccess_data()
{
    QTest::addColumn<int>("processMode");
    QTest::addColumn<bool>("full");
    QTest::addColumn<QString>("tabs");
    const QString always = "Файлы Печать Оформление Звуки Редактор";
    row("centre", int(CKS), true, "Подключение ЦКС Файлы Печать Запуск Оформление Звуки Редактор Разное");
    row("switched", int(SKK), true, "Подключение СКК Файлы Печать Запуск Оформление Звуки Редактор Разное");
    row("direct", int(Direct), true, "Подключение ПС Файлы Печать Запуск Оформление Звуки Редактор Разное");
    row("no procedure", 3, true, "Подключение Файлы Печать Запуск Оформление Звуки Редактор Разное");
    row("centre, user", int(CKS), false, always);
    row("switched, user", int(SKK), false, always);
}

void TestOptionsDependencies::pagesStandByProcedureAndAccess()
{
    QFETCH(int, processMode);
    QFETCH(bool, full);
    QFETCH(QString, tabs);
    OptionRoom room(processMode);
    room.open(full);
    QCOMPARE(room.dialog->windowTitle(), "Параметры");
    QCOMPARE(room.tabs().join(' '), tabs);
}

void TestOptionsDependencies::userCodeHidesPagesAndApplyKeepsTheirValues()
{
    OptionRoom room(SKK);
    Options.AO = "123456 ПУНКТ СВЯЗИ";
    Options.TZ = 5;
    Options.accessCodeUser = "1";
    Options.accessCodeAdmin = "2";
    Options.checkStopFile = true;
    Options.sendTrys = 7;
    Options.Host = "10.0.0.7";
    Options.Save();
    const QByteArray before = room.desk.read("velda.ini");
    room.open(false);
    room.line("mainTitle")->setText("A");
    room.apply();
    Options.geometryOptions = QRect();
    Options.Save();
    QCOMPARE(room.desk.read("velda.ini"), QByteArray(before).replace("mainTitle=", "mainTitle=A"));
}

void TestOptionsDependencies::roadsToTheLineExcludeEachOther()
{
    OptionRoom room;
    room.open();
    QGroupBox *tcp = room.group("TcpMode"), *adapter = room.group("adapter");
    QVERIFY(tcp->isChecked() && !adapter->isChecked());
    adapter->setChecked(true);
    QVERIFY(!tcp->isChecked() && adapter->isChecked());
    tcp->setChecked(true);
    QVERIFY(tcp->isChecked() && !adapter->isChecked());
    tcp->setChecked(false);
    QVERIFY(!tcp->isChecked() && adapter->isChecked());
}

void TestOptionsDependencies::serialNumberTellsTheAdapter_data()
{
    QTest::addColumn<QString>("serial");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("configured");
    row("line", "10000001", "Trelo", false);
    row("Ethernet", "30000001", "Nerva", true);
    row("perforator", "20000001", "Trelo?", false);
    row("none", "", "Trelo?", false);
}

void TestOptionsDependencies::serialNumberTellsTheAdapter()
{
    QFETCH(QString, serial);
    QFETCH(QString, kind);
    QFETCH(bool, configured);
    OptionRoom room;
    Options.TRELO_SN = serial;
    room.open();
    QCOMPARE(room.find<QLabel>("adapterKind")->text(), kind);
    QCOMPARE(!room.find<QToolButton>("adapterConfigure")->isHidden(), configured);
    room.list("TRELO_SN")->setEditText("0");
    QCOMPARE(room.find<QLabel>("adapterKind")->text(), "Trelo?");
    room.list("TRELO_SN")->setEditText(serial);
    QCOMPARE(room.find<QLabel>("adapterKind")->text(), kind);
}

void TestOptionsDependencies::adaptersAreListedAfreshOnEnteringTheirPage()
{
    OptionRoom room;
    qputenv("VELDA_PORTS", "");
    room.open();
    const QComboBox *line = room.list("TRELO_SN"), *perforator = room.list("SOREL_SN");
    QCOMPARE(line->findText("10000001"), -1);
    qputenv("VELDA_PORTS", "10000001=/dev/a;200000023=/dev/b;30000003=/dev/c;90000009=/dev/d");
    room.showTab("Файлы");
    QCOMPARE(line->findText("10000001"), -1);
    room.showTab("Подключение");
    qunsetenv("VELDA_PORTS");
    QVERIFY(line->findText("10000001") >= 0 && line->findText("30000003") >= 0);
    QCOMPARE(line->findText("20000002"), -1);
    QCOMPARE(line->findText("90000009"), -1);
    QVERIFY(perforator->findText("20000002") >= 0);
    QCOMPARE(perforator->findText("10000001"), -1);
}

void TestOptionsDependencies::chosenAdapterStaysNamedWithoutBeingThere()
{
    OptionRoom room;
    Options.TRELO_SN = "10000007";
    Options.SOREL_SN = "20000007";
    room.open();
    room.showTab("Файлы");
    room.showTab("Подключение");
    QCOMPARE(room.list("TRELO_SN")->currentText(), "10000007");
    QCOMPARE(room.list("SOREL_SN")->currentText(), "20000007");
    QCOMPARE(room.list("TRELO_SN")->findText("10000007"), -1);
}

void TestOptionsDependencies::keyIsOffWithoutItsBox()
{
    OptionRoom room;
    Options.key = "0A0B";
    room.open();
    QVERIFY(room.box("keyUsed")->isChecked());
    QVERIFY(room.line("key")->isEnabled());
    room.box("keyUsed")->setChecked(false);
    QVERIFY(!room.line("key")->isEnabled());
    QCOMPARE(room.line("key")->text(), "0A0B"); // until it is applied
    room.apply();
    QCOMPARE(Options.key, QString());

    room.open();
    QVERIFY(!room.box("keyUsed")->isChecked() && !room.line("key")->isEnabled());
    room.box("keyUsed")->setChecked(true);
    room.line("key")->setText("0C");
    room.apply();
    QCOMPARE(Options.key, "0C");
}

void TestOptionsDependencies::typeOfTheCentreSetsTheLength_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("boxEnabled");
    QTest::addColumn<bool>("checked");
    QTest::addColumn<int>("length");
    row("Doral", 0, false, false, 50);
    row("СТИН", 1, true, false, 48);
    row("СТИН-кАО", 2, true, false, 48);
    row("ТТ-СОФТ", 3, true, false, 58);
    row("Нестандарт", 4, false, true, 60);
}

void TestOptionsDependencies::typeOfTheCentreSetsTheLength()
{
    QFETCH(int, type);
    QFETCH(bool, boxEnabled);
    QFETCH(bool, checked);
    QFETCH(int, length);
    OptionRoom room(SKK);
    Options.CKS_Type = type == 1 ? 2 : 1;
    room.open();
    room.list("CKS_Type")->setCurrentIndex(type);
    QCOMPARE(room.box("CKS_LongAOLengthCustom")->isEnabled(), boxEnabled);
    QCOMPARE(room.box("CKS_LongAOLengthCustom")->isChecked(), checked);
    QCOMPARE(room.number("CKS_LongAOLength")->isEnabled(), checked);
    QCOMPARE(room.number("CKS_LongAOLength")->value(), length);
    room.apply();
    QCOMPARE(Options.CKS_Type, type);
    QCOMPARE(Options.CKS_LongAOLengthCustom, checked);
    QCOMPARE(Options.CKS_LongAOLength, length);
}

void TestOptionsDependencies::ownLengthIsShownAsItIsInForce()
{
    OptionRoom room(SKK);
    Options.CKS_Type = CentreOther;
    Options.CKS_LongAOLengthCustom = true;
    Options.CKS_LongAOLength = 71;
    room.open();
    QCOMPARE(room.number("CKS_LongAOLength")->value(), 71);
    QVERIFY(room.number("CKS_LongAOLength")->isEnabled());
    room.list("CKS_Type")->setCurrentIndex(CentreDoral);
    QCOMPARE(room.number("CKS_LongAOLength")->value(), 50);
    QVERIFY(!room.box("CKS_LongAOLengthCustom")->isChecked());
}

void TestOptionsDependencies::lengthFollowsTheTypeWithoutTheBox()
{
    OptionRoom room(SKK);
    Options.CKS_Type = CentreTTSoft;
    Options.CKS_LongAOLengthCustom = true;
    Options.CKS_LongAOLength = 71;
    room.open();
    room.box("CKS_LongAOLengthCustom")->setChecked(false);
    QCOMPARE(room.number("CKS_LongAOLength")->value(), 58);
    QVERIFY(!room.number("CKS_LongAOLength")->isEnabled());
    room.box("CKS_LongAOLengthCustom")->setChecked(true);
    QVERIFY(room.number("CKS_LongAOLength")->isEnabled());
    QCOMPARE(room.number("CKS_LongAOLength")->value(), 58);
}

void TestOptionsDependencies::timeFormIsOffWithoutTheStationsTime()
{
    OptionRoom room(SKK);
    room.open();
    QVERIFY(room.line("timeFormat")->isEnabled() && room.list("timeFormats")->isEnabled());
    room.box("stationTimeAfterConnect")->setChecked(false);
    QVERIFY(!room.line("timeFormat")->isEnabled() && !room.list("timeFormats")->isEnabled());
}

void TestOptionsDependencies::readyTimeFormsCannotBeEdited()
{
    OptionRoom room(SKK);
    room.open();
    QLineEdit *form = room.line("timeFormat");
    room.list("timeFormats")->setCurrentIndex(2);
    QCOMPARE(form->text(), "<>#dd hh mm");
    QVERIFY(form->isReadOnly());
    room.list("timeFormats")->setCurrentIndex(0);
    QVERIFY(!form->isReadOnly());
    QCOMPARE(form->text(), "<>#dd hh mm");
    room.list("timeFormats")->setCurrentIndex(1);
    QCOMPARE(form->text(), "<> #hh.mm");
}

void TestOptionsDependencies::loadedTimeFormIsFoundAmongTheReadyOnes_data()
{
    QTest::addColumn<QString>("form");
    QTest::addColumn<int>("index");
    row("short", "<> #hh.mm", 1);
    row("long", "<>#dd hh mm", 2);
    row("own", "<>hh-mm", 0);
    row("none", "", 0);
    row("the name of the free entry", "Настраиваемый", 0);
}

void TestOptionsDependencies::loadedTimeFormIsFoundAmongTheReadyOnes()
{
    QFETCH(QString, form);
    QFETCH(int, index);
    OptionRoom room(SKK);
    Options.timeFormat = form;
    room.open();
    QCOMPARE(room.list("timeFormats")->currentIndex(), index);
    QCOMPARE(room.line("timeFormat")->text(), form);
    QCOMPARE(room.line("timeFormat")->isReadOnly(), index != 0);
}

void TestOptionsDependencies::answerbackIsRedUntilItIsOne_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("red");
    row("empty", "", true);
    row("16 characters", "123456 ПУНКТ СВЯ", true);
    row("17 characters", "123456 ПУНКТ СВЯЗ", false);
    row("5 figures", "12345  ПУНКТ СВЯЗИ", true);
    row("figures of other scripts", "١٢٣٤٥٦ ПУНКТ СВЯЗИ", false);
}

void TestOptionsDependencies::answerbackIsRedUntilItIsOne()
{
    QFETCH(QString, text);
    QFETCH(bool, red);
    OptionRoom room(SKK);
    Options.AO = text;
    room.open();
    QLineEdit *answerback = room.line("AO");
    const QColor colour = red ? Qt::red : Qt::black;
    QCOMPARE(OptionRoom::textColour(answerback), colour);
    QCOMPARE(room.reason("AO").isEmpty(), !red);
    answerback->setText(red ? "123456 ПУНКТ СВЯЗИ" : "");
    QVERIFY(OptionRoom::textColour(answerback) != colour);
    answerback->setText(text);
    QCOMPARE(OptionRoom::textColour(answerback), colour);
    room.apply();
    QCOMPARE(Options.AO, text); // it is taken all the same
}

void TestOptionsDependencies::answerbackLosesWhatTheCodeCannotCarry()
{
    OptionRoom room(SKK);
    room.open();
    room.showTab("СКК");
    QVERIFY(QTest::qWaitForWindowActive(room.dialog.get()));
    QLineEdit *answerback = room.line("AO");
    answerback->setFocus();
    QTest::keyClicks(answerback, "123456 abc!");
    QTest::keyClick(answerback, Qt::Key_Tab);
    QTRY_COMPARE(answerback->text(), "123456 ABC");
}

void TestOptionsDependencies::coloursAreChosenAndReset()
{
    OptionRoom room;
    Options.LogColor_Info = "#010203";
    room.open();
    QStringList titles;
    const auto former = pickColourHandler;
    pickColourHandler = [&titles](QWidget *, const QString &title, const QColor &) {
        titles << title;
        return QColor(1, 2, titles.size());
    };
    for (const char *name : {"LogColor_Foreground", "LogColor_RX", "LogColor_TX", "LogColor_Info"})
        room.find<CColourButton>(name)->click();
    pickColourHandler = former;
    QCOMPARE(titles, (QStringList{"Выберите цвет фона", "Выберите цвет приема", "Выберите цвет передачи",
                                  "Выберите цвет информации"}));
    room.apply();
    QCOMPARE(Options.LogColor_Foreground, "#010201");
    QCOMPARE(Options.LogColor_Info, "#010204");

    room.open();
    room.find<QToolButton>("resetColours")->click();
    room.apply();
    QCOMPARE(Options.LogColor_Foreground, "#0000C0");
    QCOMPARE(Options.LogColor_RX, "#F0F0F0");
    QCOMPARE(Options.LogColor_TX, "#F0F000");
    QCOMPARE(Options.LogColor_Info, "#00F000");
}

void TestOptionsDependencies::cancelledColourStays()
{
    OptionRoom room;
    room.open();
    const auto former = pickColourHandler;
    pickColourHandler = [](QWidget *, const QString &, const QColor &) { return QColor(); };
    room.find<CColourButton>("LogColor_RX")->click();
    pickColourHandler = former;
    room.apply();
    QCOMPARE(Options.LogColor_RX, "#F0F0F0");
}

QTEST_MAIN(TestOptionsDependencies)
#include "test_options_dependencies.moc"
