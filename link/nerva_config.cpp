#include "link/nerva_config.h"

#include "link/firmware/images.h"
#include "link/nerva_protocol.h"
#include "text/utils.h"

#include <QHostAddress>

const char *const cfg_name[NervaKeyCount] = {
    "v",           "ver",        "mac",          "eth_spd",   "local_ip",    "gw",          "netmask",
    "local_port",  "tlg_baud",   "tlg_type",     "ip_mode",   "tcp_timeout", "sys_mode",    "remote_ip",
    "remote_port", "remote2_ip", "remote2_port", "http_mode", "http_port",   "http_access", "sn",
};

namespace
{
constexpr int MacBytes = 6;
constexpr int AddressDots = 3;

bool isNotZero(const QString &text)
{
    return text.toInt() != 0;
}

/// A value that can be written, in the order in which they are.
struct Field {
    NervaKey key;
    bool quoted;
    bool (*valid)(const QString &text); ///< null takes all that the form lets through
    const char *message;                ///< refuses the whole text; null leaves out the field alone
};

const Field fields[] = {
    {NervaMac, true, isMac, "Некорректный MAC"},
    {NervaEthSpeed, false, nullptr, nullptr},
    {NervaLocalIp, true, isDottedAddress, "Некорректный IP"},
    {NervaNetmask, true, isDottedAddress, "Некорректная MASK"},
    {NervaGateway, true, isDottedAddress, "Некорректный GW"},
    {NervaLocalPort, false, isNotZero, "Некорректный PORT"},
    {NervaSysMode, false, nullptr, nullptr},
    {NervaTlgType, false, nullptr, nullptr},
    {NervaTlgBaud, false, nullptr, nullptr},
    {NervaIpMode, false, nullptr, nullptr},
    {NervaTcpTimeout, false, nullptr, nullptr},
    {NervaRemoteIp, true, isDottedAddress, "Некорректный IP"},
    {NervaRemotePort, false, nullptr, nullptr},
    {NervaRemote2Ip, true, isDottedAddress, "Некорректный IP"},
    {NervaRemote2Port, false, nullptr, nullptr},
    {NervaHttpPort, false, nullptr, nullptr},
    {NervaHttpMode, false, nullptr, nullptr},
    {NervaHttpAccess, true, isAccessAddress, nullptr},
    {NervaSn, true, nullptr, nullptr},
};

QByteArray written(const Field &field, const QString &value)
{
    const QByteArray quote = field.quoted ? QByteArrayLiteral("\"") : QByteArray();
    return cfg_name[field.key] + QByteArrayLiteral(":") + quote + value.toLatin1() + quote;
}
} // namespace

NervaValues nervaValuesOf(const QByteArray &reply)
{
    const int begin = reply.lastIndexOf(NervaProtocol::TextBegin, reply.indexOf(NervaProtocol::TextEnd));
    QByteArray text = reply.mid(qMax(0, begin));
    NervaValues values;
    for (size_t key = 0; key < NervaKeyCount; ++key)
        values[key] = CUtils::getValueFromJSON(text, cfg_name[key]);
    return values;
}

// One that tells no version is older than those that do.
bool needsNervaUpgrade(const NervaValues &values)
{
    return values[NervaSn].startsWith(QLatin1Char('3')) && values[NervaVer].toUInt() < FW_TRELOE.version;
}

NervaChange nervaChange(const NervaValues &form, const NervaValues &read, const NervaValues &shown)
{
    NervaChange change;
    QList<QByteArray> texts;
    for (const Field &field : fields) {
        const QString &value = form[field.key];
        if (value == read[field.key] || value == shown[field.key])
            continue;
        if (field.valid == nullptr || field.valid(value))
            texts << written(field, value);
        else if (field.message == nullptr)
            change.notes << QStringLiteral("%1: no write").arg(QLatin1String(cfg_name[field.key]));
        else {
            change.refusal = QString::fromUtf8(field.message);
            return change;
        }
    }
    change.text = NervaProtocol::TextBegin + texts.join(',') + NervaProtocol::TextEnd;
    return change;
}

// The toolkit's own reading also takes "10.0.0", "8", "010.0.0.1" and a blank in front, which the adapter
// does not, or takes for another address.
bool isDottedAddress(const QString &text)
{
    bool ok = false;
    const quint32 address = QHostAddress(text).toIPv4Address(&ok);
    return ok && text.count(QLatin1Char('.')) == AddressDots && QHostAddress(address).toString() == text;
}

bool isAccessAddress(const QString &text)
{
    const QStringList halves = text.split(QLatin1Char('/'));
    return halves.size() <= 2 && std::all_of(halves.begin(), halves.end(), isDottedAddress);
}

// The toolkit's own decoding passes over what is no hexadecimal digit.
bool isMac(const QString &text)
{
    QString digits = text;
    digits.remove(QLatin1Char(':')).remove(QLatin1Char('-'));
    const QByteArray bytes = QByteArray::fromHex(digits.toLatin1());
    return bytes.size() == MacBytes && digits.compare(QLatin1String(bytes.toHex()), Qt::CaseInsensitive) == 0;
}
