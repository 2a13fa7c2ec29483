#include "ui/dialogs/options/link_options.h"

#include "link/utils_ports.h"
#include "ui/dialogs/fw_update_dialog.h"
#include "ui/dialogs/nerva_config_dialog.h"
#include "ui/dialogs/options/option_faults.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QToolButton>

namespace
{
const QStringList Speeds = {QStringLiteral("50"), QStringLiteral("100"), QStringLiteral("200")};
const QString LineAdapters = QStringLiteral("13"), Perforators = QStringLiteral("2"); // first figures
constexpr int PerforatorSpeeds = 15; // for which the command to the adapter has room

/// The serial numbers of the adapters that are there, of the classes \a kinds.
QStringList serialsOf(const QString &kinds)
{
    QStringList serials;
    for (const SerialPort &port : serialPorts())
        if (!port.serial.isEmpty() && kinds.contains(port.serial.at(0)))
            serials << shortSerial(port.serial);
    serials.removeDuplicates();
    return serials;
}

QStringList perforatorSpeeds()
{
    QStringList speeds;
    for (int i = 1; i <= PerforatorSpeeds; ++i)
        speeds << QString::number(i);
    return speeds;
}
} // namespace

CLinkOptions::CLinkOptions()
    : procedure(add({"processMode", "Тип подключения", &COptions::processModeConfigured, "ЦКС|СКК|ПС",
                     "Процедура обмена; после смены программа запускается заново"}))
{
    buildTcp();
    buildAdapter();
    buildPerforator();
    connect(tcp, &QGroupBox::toggled, this, &CLinkOptions::slotConnectTypeChangedToTcp);
    connect(adapter, &QGroupBox::toggled, this, &CLinkOptions::slotConnectTypeChangedToCOM);
}

void CLinkOptions::buildTcp()
{
    tcp = beginGroup(QStringLiteral("TcpIp"));
    tcp->setObjectName(QStringLiteral("TcpMode"));
    tcp->setCheckable(true);
    bind(tcp, faceOf(tcp), settingOf(&COptions::TcpMode));

    address = new QLineEdit;
    address->setObjectName(QStringLiteral("Host"));
    address->setMaxLength(255);
    address->setToolTip(QStringLiteral("С «S:» впереди эта сторона ждет вызова с адреса"));
    addRow(QStringLiteral("Адрес"), {address});
    bind(address, faceOf(address),
         {[] { return (Options.AsTspSrv ? QStringLiteral("S:") : QString()) + Options.Host; },
          [](const QVariant &value) { Options.setAddress(value.toString()); },
          {&COptions::Host, &COptions::AsTspSrv}});
    watch(address, addressFault);
    port = add(Number{"Port", "Порт", &COptions::Port, 1, 65535});
    add(Number{"TimeOut", "Контроль связи, с", &COptions::TimeOut, 1, 3600,
               "Секунды молчания, после которых соединение считается потерянным"});

    keyUsed = new QCheckBox(QStringLiteral("Идентификация канала "));
    keyUsed->setObjectName(QStringLiteral("keyUsed"));
    keyUsed->setToolTip(QStringLiteral("Ключ канала ЦКС, пары шестнадцатеричных цифр"));
    key = new QLineEdit;
    key->setObjectName(QStringLiteral("key"));
    key->setMaxLength(510); // 255 bytes
    addRow(keyUsed);
    addRow(QStringLiteral("Ключ"), {key});
    bind(key,
         {[this] { return keyUsed->isChecked() ? key->text() : QString(); },
          [this](const QVariant &value) {
              key->setText(value.toString());
              keyUsed->setChecked(!value.toString().isEmpty());
          }},
         settingOf(&COptions::key));
    watch(key, keyFault);
    connect(keyUsed, &QCheckBox::toggled, this, &CLinkOptions::useCKSKey);
}

void CLinkOptions::buildAdapter()
{
    adapter = beginGroup(QStringLiteral("Адаптер"));
    adapter->setObjectName(QStringLiteral("adapter"));
    adapter->setCheckable(true);
    adapterSN = newOpenList("TRELO_SN", QStringLiteral("Серийный номер: первые 8 знаков"));
    adapterKind = new QLabel;
    adapterKind->setObjectName(QStringLiteral("adapterKind"));
    configure = newButton(QStringLiteral("adapterConfigure"), QStringLiteral("Настройка"),
                          QStringLiteral("Параметры самого адаптера"), [this] { adapterCfgClick(); });
    addRow(QStringLiteral("Серийный номер"), {adapterSN, adapterKind, configure});
    bind(adapterSN, textOf(adapterSN), settingOf(&COptions::TRELO_SN));
    connect(adapterSN, &QComboBox::currentTextChanged, this, &CLinkOptions::adapterTreloSNChanged);
    add(Flag{"autodetectPortTrelo", "Искать адаптер", &COptions::autodetectPortTrelo,
             "Если адаптера с этим номером нет, берется другой"});
    baud = newList("tlgBaud", Speeds, QStringLiteral("В СКК всегда 50"));
    addRow(QStringLiteral("Скорость линии, бод"), {baud});
    bind(baud,
         {[this] { return baud->currentIndex() < 0 ? QVariant() : QVariant(baud->currentText().toInt()); },
          [this](const QVariant &value) { baud->setCurrentIndex(baud->findText(value.toString())); }},
         settingOf(&COptions::tlgBaud));
    add(Choice{"tlgSig", "Сигнализация", &COptions::tlgSig, "A-2 (Код)|B-0 (Пульс)|A-2 (Код, программно)",
               "Как набирается номер в СКК"});
}

void CLinkOptions::buildPerforator()
{
    perforator = beginGroup(QStringLiteral("Перфоратор"));
    perforator->setObjectName(QStringLiteral("usePrf"));
    perforator->setCheckable(true);
    bind(perforator, faceOf(perforator), settingOf(&COptions::usePrf));
    perforatorSN = newOpenList("SOREL_SN", QStringLiteral("Серийный номер: первые 8 знаков"));
    addRow(QStringLiteral("Серийный номер"), {perforatorSN});
    bind(perforatorSN, textOf(perforatorSN), settingOf(&COptions::SOREL_SN));
    add(Flag{"autodetectPortSorel", "Искать адаптер", &COptions::autodetectPortSorel,
             "Если адаптера с этим номером нет, берется другой"});
    perforatorSpeed = newList("prfBaudIndex", perforatorSpeeds(),
                              QStringLiteral("Ступень скорости перфорации, какой ее знает адаптер"));
    addRow(QStringLiteral("Скорость"), {perforatorSpeed});
    bind(perforatorSpeed, indexOf(perforatorSpeed), settingOf(&COptions::prfBaudIndex));
}

void CLinkOptions::loaded()
{
    adapter->setChecked(!tcp->isChecked());
    updateAdaptersInfo();
    adapterTreloSNChanged(adapterSN->currentText());
    useCKSKey(keyUsed->isChecked());
}

void CLinkOptions::slotConnectTypeChangedToTcp(bool on)
{
    adapter->setChecked(!on);
}

void CLinkOptions::slotConnectTypeChangedToCOM(bool on)
{
    tcp->setChecked(!on);
}

void CLinkOptions::adapterTreloSNChanged(const QString &serial)
{
    const QChar kind = serial.isEmpty() ? QChar() : serial.at(0);
    const bool ethernet = kind == QLatin1Char('3');
    adapterKind->setText(kind == QLatin1Char('1') ? QStringLiteral("Trelo")
                         : ethernet               ? QStringLiteral("Nerva")
                                                  : QStringLiteral("Trelo?"));
    configure->setVisible(ethernet);
}

void CLinkOptions::updateAdaptersInfo()
{
    refill(adapterSN, serialsOf(LineAdapters));
    refill(perforatorSN, serialsOf(Perforators));
}

void CLinkOptions::adapterCfgClick()
{
    const QString serial = adapterSN->currentText();
    if (serial.startsWith(QLatin1Char('3')))
        CNervaConfigDialog(this, serial).exec();
}

void CLinkOptions::openAdapterConfiguration()
{
    if (adapter->isChecked())
        adapterCfgClick();
}

void CLinkOptions::openFirmware()
{
    if (adapterSN->count() != 0)
        CFWUpdateDialog(this).exec();
}

void CLinkOptions::useCKSKey(bool used)
{
    key->setEnabled(used);
}
