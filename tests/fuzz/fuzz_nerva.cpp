// An Ethernet adapter's configuration of any bytes, and what is written back of it.

#include "link/nerva_config.h"
#include "tests/fuzz/fuzz.h"

#include <QStringList>

namespace
{
/// An address told in another way.
bool isAddress(const QString &text)
{
    const QStringList figures = text.split(u'.');
    for (const QString &figure : figures) {
        bool plain = !figure.isEmpty() && figure.size() <= 3 && (figure.size() == 1 || figure.at(0) != u'0');
        for (const QChar c : figure)
            plain = plain && c >= u'0' && c <= u'9';
        if (!plain || figure.toInt() > 255)
            return false;
    }
    return figures.size() == 4;
}

bool isSixBytes(QString text)
{
    text.remove(u':').remove(u'-');
    for (const QChar c : qAsConst(text))
        if (!((c >= u'0' && c <= u'9') || (c.toLower() >= u'a' && c.toLower() <= u'f' && c < u'\x80')))
            return false;
    return text.size() == 12;
}

void checkForms(const QString &text)
{
    Fuzz::check(isDottedAddress(text) == isAddress(text), "address");
    Fuzz::check(isMac(text) == isSixBytes(text), "hardware address");
    const QStringList halves = text.split(u'/');
    const bool access = halves.size() == 1
                            ? isAddress(text)
                            : halves.size() == 2 && isAddress(halves[0]) && isAddress(halves[1]);
    Fuzz::check(isAccessAddress(text) == access, "address and mask");
}

bool isPlain(const NervaValues &values)
{
    for (const QString &value : values)
        for (const QChar c : value)
            if (c <= u' ' || c > u'~' || QStringLiteral("\"{},:").contains(c))
                return false;
    return true;
}

bool isWritten(const QByteArray &text, const char *name)
{
    const QByteArray field = name + QByteArrayLiteral(":");
    return text.contains('{' + field) || text.contains(',' + field);
}

void checkWritten(const NervaValues &values)
{
    const NervaChange change = nervaChange(values, NervaValues(), NervaValues());
    Fuzz::check(change.text.isEmpty() != change.refusal.isEmpty(), "a change goes or is refused");
    if (!change.refusal.isEmpty())
        return;
    Fuzz::check(change.text.startsWith('{') && change.text.endsWith('}'), "a text in braces");
    Fuzz::check(nervaChange(values, values, NervaValues()).text == "{}", "no change writes nothing");
    if (isPlain(values))
        Fuzz::check(values[NervaLocalIp].isEmpty() || isWritten(change.text, cfg_name[NervaLocalIp]),
                    "what was changed is written");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray reply(reinterpret_cast<const char *>(data), int(size));
    const NervaValues values = nervaValuesOf(reply);
    for (const QString &value : values) {
        Fuzz::check(value.size() <= reply.size(), "a value stands in the reply");
        checkForms(value);
    }
    (void)needsNervaUpgrade(values);
    checkWritten(values);
    for (const QByteArray &piece : reply.split('"'))
        checkForms(QString::fromUtf8(piece));
    return 0;
}
