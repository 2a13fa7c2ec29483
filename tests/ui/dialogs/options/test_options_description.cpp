// The description of the options' pages: every setting that an operator edits has one control, which shows it
// and writes it back.

#include "app/options_table.h"
#include "tests/support/row.h"
#include "tests/ui/dialogs/options/option_room.h"

#include <QSet>

class TestOptionsDescription : public QObject
{
    Q_OBJECT

private slots:
    void everySettingHasOneControl();
    void whatTheProgramRemembersItselfHasNone();
    void everyTimingHasItsControl();
    void controlsHaveNamesOfTheirOwn();
    void builtInValuesAreShown();
    void untouchedDialogChangesNothing_data();
    void untouchedDialogChangesNothing();
    void limitsAreAppliedAndComeBack_data();
    void limitsAreAppliedAndComeBack();
    void valueBeyondTheLimitsStaysInForce();
    void languageOfTheFileStays();
    void labelsAreThoseOfTheTrade();
};

namespace
{
/// Keys that other parts of the program keep, or that are for the file alone.
const QSet<QString> notEdited = {
    "ovverrideTreloPort",
    "protocolFileCacheTime",
    "debugMode",
    "lastOpenFilePath",
    "lastSaveFilePath",
    "lastCKSCallNumbers",
    "lastSKKCallNumbers",
    "lastManualCallNumbers",
    "lastOperator",
    "listOperators",
    "ShowRegisters",
    "ShowInfo",
    "ShowCmd",
    "editorInterfaceMode",
    "editorFromString",
    "editorFKassaString",
    "editorFFromString",
    "editorPScriptString",
    "geometryMainForm",
    "geometryPerforatorOut",
    "geometryPerforatorIn",
    "geometryPrintTxt",
    "geometryOptions",
    "geometrySendString",
    "geometrySendTlg",
    "geometryReSendTlg",
    "editorWordsCountShablon",
};

/// What is in force until the program ends, and then read from elsewhere or not at all.
const QSet<QString> notReadBack = {"Host", "Port", "autoPrintMode", "debugInfoToProtocol"};
const QSet<QString> ofTcp = {"Host", "Port", "TimeOut"};
const QSet<QString> ofAdapter = {"TRELO_SN", "autodetectPortTrelo", "tlgBaud", "tlgSig"};

QString nameOf(const COptionPage::Binding &binding)
{
    return binding.control->objectName();
}

int controlsOf(const OptionRoom &room, const SettingField &field)
{
    int count = 0;
    for (const COptionPage::Binding &binding : room.bindings())
        count += int(std::count(binding.setting.fields.begin(), binding.setting.fields.end(), field));
    return count;
}

/// Brings the control to one end of what it takes: numbers, lists and switches to their first or last value,
/// a text to nothing or to as much Russian as it takes.
void bringToLimit(QWidget *control, bool upper)
{
    const QString russian = QStringLiteral("Ёжик №1 «Ы»");
    if (auto *number = qobject_cast<QSpinBox *>(control))
        number->setValue(upper ? number->maximum() : number->minimum());
    else if (auto *box = qobject_cast<QCheckBox *>(control))
        box->setChecked(upper);
    else if (auto *group = qobject_cast<QGroupBox *>(control))
        group->setChecked(upper);
    else if (auto *line = qobject_cast<QLineEdit *>(control))
        line->setText(upper ? russian.repeated(100).left(line->maxLength()) : QString());
    else if (auto *list = qobject_cast<QComboBox *>(control); list != nullptr && list->isEditable())
        list->setEditText(upper ? russian : QString());
    else if (list != nullptr)
        list->setCurrentIndex(upper ? list->count() - 1 : 0);
    else
        qobject_cast<CColourButton *>(control)->setColour(upper ? "#ffffff" : "#000000");
}

QVariant comparable(const QVariant &value)
{
    return value.type() == QVariant::Font ? QVariant(value.value<QFont>().toString()) : value;
}

void compare(const COptionPage::Binding &binding, const QVariant &expected)
{
    if (comparable(binding.setting.value()) != comparable(expected))
        QFAIL(qPrintable(nameOf(binding) + ": " + comparable(binding.setting.value()).toString() +
                         " instead of " + comparable(expected).toString()));
}
} // namespace

void TestOptionsDescription::everySettingHasOneControl()
{
    OptionRoom room;
    room.open();
    for (const SettingSection &section : settingSections())
        for (const Setting &setting : section.settings)
            if (!notEdited.contains(setting.key))
                QVERIFY2(controlsOf(room, setting.field) == 1, setting.key);
    QCOMPARE(controlsOf(room, &COptions::processModeConfigured), 1);
    QCOMPARE(controlsOf(room, &COptions::debugInfoToProtocol), 1);
    for (int i = 0; i < 5; ++i) {
        const auto *form = room.find<QCheckBox>(qPrintable(QStringLiteral("interfaceMode%1").arg(i)));
        QCOMPARE(form->text(), Options.interfaceModes[i].name);
    }
}

void TestOptionsDescription::whatTheProgramRemembersItselfHasNone()
{
    OptionRoom room;
    room.open();
    QSet<QString> met;
    for (const SettingSection &section : settingSections())
        for (const Setting &setting : section.settings)
            if (notEdited.contains(setting.key)) {
                met << setting.key;
                QVERIFY2(controlsOf(room, setting.field) == 0, setting.key);
            }
    QCOMPARE(met, notEdited);
}

void TestOptionsDescription::everyTimingHasItsControl()
{
    OptionRoom room;
    for (int row = 0; row < 2; ++row)
        Options.SKKTiming[row] = {60,       60,       10 + row, 20 + row, 30 + row,
                                  40 + row, 50 + row, 70 + row, 5,        80 + row};
    room.open();
    const QStringList names = {
        "Pause_Before_Ask_Who",   "Pause_Before_Ask_Who2",       "Wait_AA",
        "Pause_Before_Send_AA",   "Pause_Before_Send_Answer_AA", "Pause_Before_Send_File",
        "Idle_Time_Before_HangUp"};
    const int first[] = {10, 20, 30, 40, 50, 70, 80};
    for (int i = 0; i < names.size(); ++i)
        for (int row = 0; row < 2; ++row)
            QCOMPARE(room.number(qPrintable(names[i] + '_' + QString::number(row)))->value(), first[i] + row);
}

void TestOptionsDescription::controlsHaveNamesOfTheirOwn()
{
    OptionRoom room;
    room.open();
    QSet<QString> names;
    for (const COptionPage::Binding &binding : room.bindings()) {
        QVERIFY(!nameOf(binding).isEmpty());
        QVERIFY2(!names.contains(nameOf(binding)), qPrintable(nameOf(binding)));
        names << nameOf(binding);
    }
}

void TestOptionsDescription::builtInValuesAreShown()
{
    OptionRoom room;
    room.open();
    QCOMPARE(room.line("Host")->text(), "127.0.0.1");
    QCOMPARE(room.number("Port")->value(), 5674);
    QVERIFY(room.group("TcpMode")->isChecked());
    QVERIFY(!room.group("usePrf")->isChecked());
    QCOMPARE(room.list("tlgBaud")->currentText(), "50");
    QCOMPARE(room.list("tlgSig")->currentText(), "B-0 (Пульс)");
    QCOMPARE(room.line("timeFormat")->text(), "<> #hh.mm");
    QCOMPARE(room.line("CategoryList")->text(), "П,С");
    QCOMPARE(room.number("keepFilesDays")->value(), 240);
    QCOMPARE(room.list("soundRTlgType")->currentText(), "Проигрывать файл по циклу");
    QCOMPARE(room.line("soundRTlgFile")->text(), "sound/raketa.wav");
}

void TestOptionsDescription::untouchedDialogChangesNothing_data()
{
    QTest::addColumn<int>("processMode");
    row("centre", int(CKS));
    row("direct", int(Direct));
}

void TestOptionsDescription::untouchedDialogChangesNothing()
{
    QFETCH(int, processMode);
    OptionRoom room(processMode);
    Options.Save();
    const QByteArray before = room.desk.read("velda.ini");
    room.open();
    room.apply();
    QCOMPARE(room.dialog->result(), int(QDialog::Accepted));
    Options.geometryOptions = QRect();
    Options.Save();
    QCOMPARE(room.desk.read("velda.ini"), before);
}

void TestOptionsDescription::limitsAreAppliedAndComeBack_data()
{
    QTest::addColumn<bool>("upper");
    QTest::addColumn<bool>("tcp");
    row("lower, TCP", false, true);
    row("lower, adapter", false, false);
    row("upper, TCP", true, true);
    row("upper, adapter", true, false);
}

void TestOptionsDescription::limitsAreAppliedAndComeBack()
{
    QFETCH(bool, upper);
    QFETCH(bool, tcp);
    OptionRoom room;
    room.answers.yes = {true}; // to another procedure
    room.open();
    for (const COptionPage::Binding &binding : room.bindings()) {
        bringToLimit(binding.control, upper);
        if (nameOf(binding) == "key")
            room.box("keyUsed")->setChecked(upper);
    }
    room.group("TcpMode")->setChecked(tcp);
    QMap<QString, QVariant> expected;
    for (const COptionPage::Binding &binding : room.bindings())
        expected[nameOf(binding)] = binding.face.shown();
    QCOMPARE(expected["keepFilesDays"].toInt(), upper ? 9999 : 1);
    QCOMPARE(expected["mainTitle"].toString().size(), upper ? 255 : 0);
    room.apply();
    for (const COptionPage::Binding &binding : room.bindings())
        compare(binding, expected[nameOf(binding)]);

    Options.Save();
    resetGlobals();
    Options.appPath = room.desk.path() + '/';
    Options.Load();
    for (const COptionPage::Binding &binding : room.bindings()) {
        const QString name = nameOf(binding);
        const bool ofPerforator = name == "SOREL_SN" || name.endsWith("Sorel") || name.startsWith("prf");
        if (notReadBack.contains(name) || (tcp ? ofAdapter : ofTcp).contains(name) ||
            (!upper && (ofPerforator || name == "CKS_LongAOLength")))
            continue;
        compare(binding, expected[name]);
    }
}

// A control cannot show it: what an operator has not touched stays as the file has it.
void TestOptionsDescription::valueBeyondTheLimitsStaysInForce()
{
    OptionRoom room;
    Options.keepFilesDays = 100000;
    Options.Port = 0;
    Options.waitNote = 7;
    Options.mainTitle = QString(300, u'Ж');
    room.open();
    QCOMPARE(room.number("keepFilesDays")->value(), 9999);
    QCOMPARE(room.reason("keepFilesDays"), "В силе значение из файла: 100000");
    QCOMPARE(room.list("waitNote")->currentIndex(), -1);
    room.apply();
    QCOMPARE(Options.keepFilesDays, 100000);
    QCOMPARE(Options.Port, 0);
    QCOMPARE(Options.waitNote, 7);
    QCOMPARE(Options.mainTitle, QString(300, u'Ж'));
}

void TestOptionsDescription::languageOfTheFileStays()
{
    OptionRoom room;
    Options.nationalLanguageUse = Armenian;
    room.open();
    QCOMPARE(room.list("nationalLanguageUse")->count(), 3);
    room.apply();
    QCOMPARE(int(Options.nationalLanguageUse), int(Armenian));
}

void TestOptionsDescription::labelsAreThoseOfTheTrade()
{
    OptionRoom room;
    room.open();
    QStringList words;
    for (const QLabel *label : room.dialog->findChildren<QLabel *>())
        words << label->text();
    for (const QCheckBox *box : room.dialog->findChildren<QCheckBox *>())
        words << box->text();
    for (const QGroupBox *group : room.dialog->findChildren<QGroupBox *>())
        words << group->title();
    for (const QComboBox *list : room.dialog->findChildren<QComboBox *>())
        for (int i = 0; i < list->count(); ++i)
            words << list->itemText(i);
    for (const QAbstractButton *button : room.dialog->findChildren<QAbstractButton *>())
        words << button->text();
    for (const char *word : {"Смещение в часах от Москвы",
                             "Кешировать протокол",
                             "Дописывать в конец файла, если файл существует",
                             "Идентификация канала ",
                             "TcpIp",
                             "Адаптер",
                             "Настройка",
                             "Тип",
                             "A-2 (Код)",
                             "B-0 (Пульс)",
                             "A-2 (Код, программно)",
                             "Doral",
                             "СТИН",
                             "СТИН-кАО",
                             "ТТ-СОФТ",
                             "Нестандарт",
                             "Настраиваемый",
                             "<> #hh.mm",
                             "<>#dd hh mm",
                             "Нет",
                             "Вх",
                             "Исх",
                             "Вх-Исх",
                             "CP866",
                             "CP1251",
                             "UTF8",
                             "Без звука",
                             "Проиграть файл",
                             "Проигрывать файл по циклу",
                             "Ракета",
                             "Категорийные",
                             "Остальные телеграммы",
                             "---",
                             "Татарский",
                             "Грузинский",
                             "ЦКС",
                             "СКК",
                             "ПС",
                             "Записывать отладочную информацию в протокол",
                             "Сбросить цвета по умолчанию",
                             "Применить",
                             "Отменить"})
        QVERIFY2(words.contains(word), word);
}

QTEST_MAIN(TestOptionsDescription)
#include "test_options_description.moc"
