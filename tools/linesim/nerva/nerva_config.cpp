#include "tools/linesim/nerva/nerva_config.h"

#include "tools/linesim/console/event_log.h"

namespace
{
struct Key {
    const char *name;
    bool isText;
    const char *factory;
    int place; ///< among those that can be written, from 1; 0 cannot
};

// In the order of the reply.
const Key keys[] = {
    {"v", false, "2", 0},
    {"ver", false, "260601", 0},
    {"mac", true, "02:00:00:00:00:01", 1},
    {"eth_spd", false, "4", 2},
    {"local_ip", true, "192.168.0.20", 3},
    {"gw", true, "192.168.0.1", 5},
    {"netmask", true, "255.255.255.0", 4},
    {"local_port", false, "5674", 6},
    {"tlg_baud", false, "", 9}, // of the line
    {"tlg_type", false, "1", 8},
    {"ip_mode", false, "0", 10},
    {"tcp_timeout", false, "30", 11},
    {"sys_mode", false, "0", 7},
    {"remote_ip", true, "192.168.0.30", 12},
    {"remote_port", false, "5675", 13},
    {"remote2_ip", true, "192.168.0.31", 14},
    {"remote2_port", false, "5676", 15},
    {"http_mode", false, "1", 17},
    {"http_port", false, "80", 16},
    {"http_access", true, "192.168.0.0/255.255.255.0", 18},
    {"sn", true, "", 19},
};
constexpr int KeyCount = int(sizeof keys / sizeof keys[0]);
constexpr int Megabyte = 1'000'000;

int keyOf(const QString &name)
{
    for (int key = 0; key < KeyCount; ++key)
        if (name == QLatin1String(keys[key].name))
            return key;
    return -1;
}

bool isNumber(const QByteArray &text)
{
    bool ok = false;
    text.toUInt(&ok);
    return ok;
}

/// The value of a field, without its quotes; null if it has not the form of its key.
QByteArray unquoted(const Key &key, const QByteArray &value)
{
    const bool quoted = value.size() >= 2 && value.startsWith('"') && value.endsWith('"');
    if (key.isText)
        return quoted ? value.mid(1, value.size() - 2) : QByteArray();
    return isNumber(value) ? value : QByteArray();
}

QByteArray fieldOf(const Key &key, QByteArray value, NervaFault fault)
{
    const QByteArray name = key.name;
    if (fault == NervaFault::Mac16 && name == "mac")
        value.chop(1);
    if (fault == NervaFault::Eth7 && name == "eth_spd")
        value = "7";
    const bool wrong = fault == NervaFault::WrongKind && key.place > 0;
    if (wrong)
        value = key.isText ? "17" : "ten";
    return name + ':' + (key.isText != wrong ? '"' + value + '"' : value);
}
} // namespace

NervaConfig::NervaConfig(const QString &serial, int baud, EventLog &log) : m_log(log)
{
    for (const Key &key : keys)
        m_working << QLatin1String(key.factory);
    m_working[keyOf(QStringLiteral("tlg_baud"))] = QString::number(baud);
    m_working[keyOf(QStringLiteral("sn"))] = serial;
    m_stored = m_working;
}

bool NervaConfig::set(const QString &key, const QString &value)
{
    const int place = keyOf(key);
    if (place < 0)
        return false;
    m_working[place] = m_stored[place] = value;
    return true;
}

QString NervaConfig::value(const QString &key) const
{
    return m_working.value(keyOf(key));
}

QString NervaConfig::stored(const QString &key) const
{
    return m_stored.value(keyOf(key));
}

QByteArray NervaConfig::textOf(const Values &values, NervaFault fault)
{
    QList<QByteArray> fields;
    for (int key = 0; key < KeyCount; ++key)
        fields << fieldOf(keys[key], values.at(key).toLatin1(), fault);
    if (fault == NervaFault::Megabyte)
        fields.prepend("rest:\"" + QByteArray(Megabyte, 'x') + '"');
    const QByteArray text = '{' + fields.join(',');
    return fault == NervaFault::NoEnd ? text : text + '}';
}

QByteArray NervaConfig::text(NervaFault fault)
{
    m_told = m_working;
    return textOf(m_working, fault);
}

void NervaConfig::show() const
{
    m_log.event(QStringLiteral("working"), QString::fromLatin1(textOf(m_working, NervaFault::None)));
    m_log.event(QStringLiteral("kept"), QString::fromLatin1(textOf(m_stored, NervaFault::None)));
}

void NervaConfig::write(const QByteArray &text, bool store)
{
    m_log.event(QStringLiteral("written"), QString::fromLatin1(text));
    const QByteArray inner = text.mid(1, text.size() - 2);
    int former = 0;
    if (!inner.isEmpty())
        for (const QByteArray &field : inner.split(','))
            writeField(field, former);
    if (!store)
        return;
    m_stored = m_working;
    m_log.event(QStringLiteral("stored"));
}

/// \a former is the place of the field in front.
void NervaConfig::writeField(const QByteArray &field, int &former)
{
    const int colon = field.indexOf(':');
    const int key = keyOf(QString::fromLatin1(field.left(colon)));
    const QString shown = QString::fromLatin1(field);
    if (colon < 0 || key < 0 || keys[key].place == 0)
        return m_log.violation(QStringLiteral("no key to be written: ") + shown);
    const QByteArray value = unquoted(keys[key], field.mid(colon + 1));
    if (value.isNull())
        return m_log.violation(QStringLiteral("not the form of its key: ") + shown);
    if (keys[key].place <= former)
        m_log.violation(QStringLiteral("out of order: ") + shown);
    former = keys[key].place;
    if (!m_told.isEmpty() && m_told.at(key) == QString::fromLatin1(value))
        m_log.violation(QStringLiteral("not changed: ") + shown);
    m_working[key] = QString::fromLatin1(value);
}

void NervaConfig::restart()
{
    m_working = m_stored;
    m_told.clear();
    m_log.event(QStringLiteral("restarted"));
}

void NervaConfig::forgetTold()
{
    m_told.clear();
}
