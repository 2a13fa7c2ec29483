#include "ui/dialogs/nerva_form.h"

#include "text/utils.h"
#include "ui/widgets/layouts.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>

namespace
{
constexpr int MacLength = 17;
constexpr int AddressLength = 15;
constexpr int AccessLength = 2 * AddressLength + 1;
constexpr int MostPort = 65535;
constexpr int MostTimeOut = 99;
constexpr int FastestEthernet = 4; // "AUTO", shown for all above

enum Kind {
    Text,
    Number,
    Index, // of the choice
    Choice // the words themselves
};

enum SystemMode { UsbTlg, IpTlg, UsbIp };
enum IpMode { TcpClient, TcpServer, TcpServerWithFlow, UdpBicom, UdpStream };

const char *const groupTitles[] = {"Nerva", "Телеграфная линия", "Соединение", "Ethernet", "HTTP"};
} // namespace

struct CNervaForm::Row {
    NervaKey key;
    Group group;
    Kind kind;
    int most;            ///< a number is at most that; so many characters of a text are on view
    const char *label;   ///< empty: beside the field above
    const char *choices; ///< with "," between them
};

const CNervaForm::Row CNervaForm::rows[] = {
    {NervaSysMode, Device, Index, 0, " Направление передачи", "USB-TLG,IP-TLG,USB-IP"},
    {NervaTlgType, Line, Index, 0, " Тип", "---,ЦКС,СКК-исх,СКК-вх,Канал"},
    {NervaTlgBaud, Line, Choice, 0, " Скорость", "50,100,200"},
    {NervaIpMode, Connection, Index, 0, " Тип соединения ",
     "TCP-клиент,TCP-сервер,TCP-сервер (упр.потоком),UDP-Bicom,UDP-поток"},
    {NervaTcpTimeout, Connection, Number, MostTimeOut, " TimeOut", nullptr},
    {NervaRemoteIp, Connection, Text, AddressLength, " Remote IP", nullptr},
    {NervaRemotePort, Connection, Number, MostPort, "", nullptr},
    {NervaRemote2Ip, Connection, Text, AddressLength, " Remote IP2", nullptr},
    {NervaRemote2Port, Connection, Number, MostPort, "", nullptr},
    {NervaMac, Ethernet, Text, MacLength, " MAC", nullptr},
    {NervaEthSpeed, Ethernet, Index, 0, " Speed", "10H,10D,100H,100D,AUTO"},
    {NervaLocalIp, Ethernet, Text, AddressLength, " IP", nullptr},
    {NervaNetmask, Ethernet, Text, AddressLength, " MASK", nullptr},
    {NervaGateway, Ethernet, Text, AddressLength, " GW", nullptr},
    {NervaLocalPort, Ethernet, Number, MostPort, " Local Port", nullptr},
    {NervaHttpPort, Http, Number, MostPort, " HTTP Доступ", nullptr},
    {NervaHttpMode, Http, Index, 0, "", "0,1,2,3"}, // the adapter's firmware gives them their meaning
    {NervaHttpAccess, Http, Text, AccessLength, " разрешенные IP", nullptr},
};

CNervaForm::CNervaForm(QWidget *parent) : QWidget(parent)
{
    auto *columns = new QHBoxLayout0(this);
    QVBoxLayoutMS *column = nullptr;
    for (int group = 0; group < GroupCount; ++group) {
        if (group == Device || group == Ethernet)
            columns->addLayout(column = newVBoxLayout(), 1);
        auto *box = new QGroupBox1(QString::fromUtf8(groupTitles[group]));
        box->setObjectName(QStringLiteral("group%1").arg(group));
        box->grid->setColumnStretch(1, 1);
        m_groups[size_t(group)] = box;
        column->addWidget(box);
    }
    for (auto *filled : findChildren<QVBoxLayoutMS *>())
        filled->addStretch();
    for (const Row &row : rows)
        addRow(row);
    for (const NervaKey key : {NervaSysMode, NervaIpMode})
        connect(static_cast<QComboBox *>(m_controls[key]), qOverload<int>(&QComboBox::currentIndexChanged),
                this, &CNervaForm::modeIndexChanged);
    m_whole = layout()->sizeHint();
    showGroups();
}

QSize CNervaForm::sizeHint() const
{
    return m_whole;
}

void CNervaForm::addRow(const Row &row)
{
    auto *grid = static_cast<QGroupBox1 *>(m_groups[row.group])->grid;
    QWidget *control = newControl(row);
    control->setObjectName(QLatin1String(cfg_name[row.key]));
    m_controls[row.key] = control;
    if (*row.label == '\0')
        return grid->addWidget(control, grid->rowCount() - 1, 2);
    auto *label = new QLabel(QString::fromUtf8(row.label));
    label->setBuddy(control);
    m_labels[row.key] = label;
    const int line = grid->rowCount();
    grid->addWidget(label, line, 0);
    const bool alone = &row == std::end(rows) - 1 || *(&row + 1)->label != '\0';
    grid->addWidget(control, line, 1, 1, alone ? 2 : 1);
}

QWidget *CNervaForm::newControl(const Row &row) const
{
    switch (row.kind) {
    case Text: {
        auto *edit = new QLineEdit;
        const QMargins margins = edit->textMargins();
        edit->setMinimumWidth(CUtils::txtGUIWidth(row.most, edit->font()) + margins.left() + margins.right());
        return edit;
    }
    case Number: {
        auto *box = new QSpinBox;
        box->setRange(0, row.most);
        return box;
    }
    case Index:
    case Choice: {
        auto *box = new QComboBox;
        box->addItems(QString::fromUtf8(row.choices).split(QLatin1Char(',')));
        return box;
    }
    }
    return nullptr;
}

void CNervaForm::showValues(const NervaValues &values)
{
    for (const Row &row : rows) {
        const QString &value = values[row.key];
        QWidget *control = m_controls[row.key];
        bool isNumber = false;
        const int number = value.toInt(&isNumber);
        switch (row.kind) {
        case Text:
            if (row.key != NervaMac || value.size() == MacLength)
                static_cast<QLineEdit *>(control)->setText(value);
            break;
        case Number: static_cast<QSpinBox *>(control)->setValue(number); break;
        case Index:
            static_cast<QComboBox *>(control)->setCurrentIndex(!isNumber ? -1
                                                               : row.key == NervaEthSpeed
                                                                   ? qMin(number, FastestEthernet)
                                                                   : number);
            break;
        case Choice: {
            auto *box = static_cast<QComboBox *>(control);
            box->setCurrentIndex(box->findText(value));
            break;
        }
        }
    }
}

NervaValues CNervaForm::values() const
{
    NervaValues values;
    for (const Row &row : rows) {
        const QWidget *control = m_controls[row.key];
        QString &value = values[row.key];
        switch (row.kind) {
        case Text: value = static_cast<const QLineEdit *>(control)->text(); break;
        case Number: value = QString::number(static_cast<const QSpinBox *>(control)->value()); break;
        case Index:
            if (index(row.key) >= 0)
                value = QString::number(index(row.key));
            break;
        case Choice: value = static_cast<const QComboBox *>(control)->currentText(); break;
        }
    }
    return values;
}

int CNervaForm::index(NervaKey key) const
{
    return static_cast<const QComboBox *>(m_controls[key])->currentIndex();
}

/// The line's group where text goes over it, the connection's where it goes over the network; both as long
/// as the direction is not known. Whom a server lets in is whoever calls.
void CNervaForm::showGroups()
{
    const int direction = index(NervaSysMode);
    const int connection = index(NervaIpMode);
    m_groups[Line]->setVisible(direction != UsbIp);
    m_groups[Connection]->setVisible(direction != UsbTlg);
    const bool calls = connection != TcpServer && connection != TcpServerWithFlow;
    for (const NervaKey key : {NervaRemoteIp, NervaRemotePort, NervaRemote2Ip, NervaRemote2Port})
        showField(key, calls);
    showField(NervaTcpTimeout, connection != UdpBicom && connection != UdpStream);
}

void CNervaForm::showField(NervaKey key, bool visible)
{
    m_controls[key]->setVisible(visible);
    if (m_labels[key] != nullptr)
        m_labels[key]->setVisible(visible);
}
