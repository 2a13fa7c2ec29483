#include "ui/dialogs/options/switched_options.h"

#include "text/filters.h"
#include "ui/dialogs/options/option_faults.h"
#include "ui/widgets/spin_box_limits.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

namespace
{
constexpr int LongestPause = 999; // seconds

const QStringList SKK_timeFormats = {QStringLiteral("Настраиваемый"), QStringLiteral("<> #hh.mm"),
                                     QStringLiteral("<>#dd hh mm")};

/// What an entry of the timing means to the operator.
QString labelOf(const QString &key)
{
    struct Row {
        const char *key, *label;
    };
    static const Row rows[] = {
        {"Pause_Before_Ask_Who", "Пауза перед запросом «кто там»"},
        {"Pause_Before_Ask_Who2", "Пауза перед повторным запросом"},
        {"Wait_AA", "Ожидание автоответа"},
        {"Pause_Before_Send_File", "Пауза перед передачей файла"},
        {"Pause_Before_Send_AA", "Пауза перед своим автоответом"},
        {"Pause_Before_Send_Answer_AA", "Пауза перед ответом на запрос"},
        {"Idle_Time_Before_HangUp", "Отбой при молчании"},
    };
    for (const Row &row : rows)
        if (key == QLatin1String(row.key))
            return QString::fromUtf8(row.label);
    return key;
}
} // namespace

CSwitchedOptions::CSwitchedOptions()
{
    addOwnAnswerback();
    addCentre();
    addStationTime();
    addSending();
    addTiming();
}

void CSwitchedOptions::addOwnAnswerback()
{
    answerback = add(Line{"AO", "Свой автоответ", &COptions::AO, 64, "6 цифр номера и название"});
    connect(answerback, &QLineEdit::textChanged, this, &CSwitchedOptions::slotAOChanged);
    connect(answerback, &QLineEdit::editingFinished, this, &CSwitchedOptions::slotAOEditingFinished);
}

void CSwitchedOptions::addCentre()
{
    beginGroup(QStringLiteral("Центр"));
    add(Line{"indexCKS", "Номер выхода на ЦКС", &COptions::indexCKS, 32});
    centreType = add(Choice{"CKS_Type", "Тип", &COptions::CKS_Type, "Doral|СТИН|СТИН-кАО|ТТ-СОФТ|Нестандарт",
                            "По нему узнается длинный автоответ центра"});
    lengthCustom = add(
        Flag{"CKS_LongAOLengthCustom", "Своя длина длинного автоответа", &COptions::CKS_LongAOLengthCustom});
    length = add(
        Number{"CKS_LongAOLength", "Длина длинного автоответа, знаков", &COptions::CKS_LongAOLength, 0, 255});
    add(Flag{"SKK_noSendCKSAOAfterSendFile", "После файла не передавать центру свой автоответ",
             &COptions::SKK_noSendCKSAOAfterSendFile});
    connect(centreType, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &CSwitchedOptions::SKK_CKS_TypeChanged);
    connect(lengthCustom, &QCheckBox::toggled, this, &CSwitchedOptions::SKK_CKS_LongAOLengthCustomChanged);
}

void CSwitchedOptions::addStationTime()
{
    beginGroup(QStringLiteral("Время станции"));
    stationTime = add(Flag{"stationTimeAfterConnect", "Станция передает время после соединения",
                           &COptions::stationTimeAfterConnect,
                           "Без него соединение считается состоявшимся по молчанию станции"});
    timeFormats = newList("timeFormats", SKK_timeFormats, QString());
    addRow(QStringLiteral("Формат времени"), {timeFormats});
    timeFormat =
        add(Line{"timeFormat", "Вид", &COptions::timeFormat, 64,
                 "«<» возврат каретки, «>» перевод строки, d, h и m цифры, прочее само себя", timeFormFault});
    add(Number{"waitErrorReactionAfterConnect", "Ждать отказа после соединения, с",
               &COptions::waitErrorReactionAfterConnect, 0, LongestPause, "Затем соединение состоялось"});
    connect(stationTime, &QCheckBox::toggled, this, &CSwitchedOptions::slotCheckBox_stationTimeAfterConnect);
    connect(timeFormats, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &CSwitchedOptions::slotComboBox_SKKtimeFormatIndexChanged);
}

void CSwitchedOptions::addSending()
{
    beginGroup(QStringLiteral("Передача и прием"));
    add(Number{"sendTrys", "Попыток передачи", &COptions::sendTrys, 1, 99});
    addAll<Flag>({
        {"sendAskAOAfterTlgText", "Запрашивать автоответ центра после телеграммы",
         &COptions::sendAskAOAfterTlgText},
        {"afterConnectAskAO", "Запрашивать автоответ после соединения", &COptions::afterConnectAskAO},
        {"noCheckAOAbonent", "Не проверять номер абонента в автоответе", &COptions::noCheckAOAbonent},
        {"noCheckAOText", "Не проверять текст автоответа", &COptions::noCheckAOText},
    });
}

void CSwitchedOptions::addTiming()
{
    QGroupBox *box = beginGroup(QStringLiteral("Времена, с: абонент и центр"));
    box->setToolTip(QStringLiteral("Слева для вызовов абонентов, справа для вызовов центра"));
    for (const TimingSetting &setting : timingSettings())
        addRow(labelOf(QString::fromLatin1(setting.key)),
               {newTiming(setting, SubscriberTiming), newTiming(setting, CentreTiming)});
}

QSpinBox *CSwitchedOptions::newTiming(const TimingSetting &setting, int row)
{
    auto *box = new QSpinBox_Limits(0, 0, LongestPause);
    box->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(setting.key)).arg(row));
    box->setToolTip(row == SubscriberTiming ? QStringLiteral("Абонент") : QStringLiteral("Центр"));
    bind(box, faceOf(box),
         {[row, entry = setting.entry] { return QVariant(Options.SKKTiming[row].*entry); },
          [row, entry = setting.entry](const QVariant &value) {
              Options.SKKTiming[row].*entry = value.toInt();
          },
          {}});
    return box;
}

// What is in force is shown, also if the type would not offer it.
void CSwitchedOptions::loaded()
{
    lengthCustom->setEnabled(centreType->currentIndex() != CentreDoral &&
                             centreType->currentIndex() != CentreOther);
    length->setEnabled(lengthCustom->isChecked());
    const int known = SKK_timeFormats.indexOf(timeFormat->text(), 1);
    timeFormats->setCurrentIndex(qMax(0, known));
    timeFormat->setReadOnly(known > 0);
    slotCheckBox_stationTimeAfterConnect(stationTime->isChecked());
    slotAOChanged(answerback->text());
}

void CSwitchedOptions::SKK_CKS_TypeChanged(int type)
{
    lengthCustom->setEnabled(type != CentreDoral && type != CentreOther);
    if (type == CentreDoral)
        lengthCustom->setChecked(false);
    if (type == CentreOther) {
        lengthCustom->setChecked(true);
        length->setValue(COptions::longAOLength(CentreOther));
    }
    SKK_CKS_LongAOLengthCustomChanged();
}

void CSwitchedOptions::SKK_CKS_LongAOLengthCustomChanged()
{
    length->setEnabled(lengthCustom->isChecked());
    if (!lengthCustom->isChecked() && centreType->currentIndex() >= 0)
        length->setValue(COptions::longAOLength(centreType->currentIndex()));
}

void CSwitchedOptions::slotCheckBox_stationTimeAfterConnect(bool on)
{
    timeFormats->setEnabled(on);
    timeFormat->setEnabled(on);
}

void CSwitchedOptions::slotComboBox_SKKtimeFormatIndexChanged(int index)
{
    timeFormat->setReadOnly(index != 0);
    if (index > 0)
        timeFormat->setText(SKK_timeFormats.at(index));
}

void CSwitchedOptions::slotAOChanged(const QString &text)
{
    const QString fault = answerbackFault(text);
    note(answerback, fault);
    paintText(answerback, fault.isEmpty() ? Qt::black : Qt::red);
}

void CSwitchedOptions::slotAOEditingFinished()
{
    answerback->setText(QStringClearNonMTK2(answerback->text()));
}
