#include "tools/linesim/nerva/nerva_config.h"

#include "tools/linesim/console/event_log.h"

namespace
{
struct Key {
    const char *name;
    const char *factory;
    int place; ///< among those that can be written, from 1; 0 cannot
    bool isText;
};

// In the order of the reply.
const Key keys[] = {
    {"v", "2", 0, false},
    {"ver", "260601", 0, false},
    {"mac", "02:00:00:00:00:01", 1, true},
    {"eth_spd", "4", 2, false},
    {"local_ip", "192.168.0.20", 3, true},
    {"gw", "192.168.0.1", 5, true},
    {"netmask", "255.255.255.0", 4, true},
    {"local_port", "5674", 6, false},
    {"tlg_baud", "", 9, false}, // of the line
    {"tlg_type", "1", 8, false},
    {"ip_mode", "0", 10, false},
    {"tcp_timeout", "30", 11, false},
    {"sys_mode", "0", 7, false},
    {"remote_ip", "192.168.0.30", 12, true},
    {"remote_port", "5675", 13, false},
    {"remote2_ip", "192.168.0.31", 14, true},
    {"remote2_port", "5676", 15, false},
    {"http_mode", "1", 17, false},
    {"http_port", "80", 16, false},
    {"http_access", "192.168.0.0/255.255.255.0", 18, true},
    {"sn", "", 19, true},
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
