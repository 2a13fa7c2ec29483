// Any file as the side-car of a telegram, beside a plain reader of its line.

#include "app/clock.h"
#include "records/file_info.h"
#include "tests/fuzz/fuzz.h"
#include "tests/support/desk.h"

#include <QStringList>

namespace
{
QByteArray firstLine(const QByteArray &content)
{
    QByteArray line = content.left(content.indexOf('\n') < 0 ? content.size() : content.indexOf('\n'));
    line = line.contains('\0') ? line.left(line.indexOf('\0')) : line;
    while (line.endsWith('\r'))
        line.chop(1);
    return line;
}

/// The toolkit's own reading of the time; it also takes signs and figures of other scripts.
void checkTime(const QDateTime &time, const QString &text)
{
    bool plain = text.size() == 16;
    for (const QChar c : text)
        plain = plain && c < u'\x7f' && c != u'+' && c != u'-' && (c != u' ' || text.count(c) == 1);
    const QDateTime other = QDateTime::fromString(text, CTime::formatDD_MM_YYYY_HH_MM);
    if (plain)
        Fuzz::check(time.isValid() == other.isValid() && (!time.isValid() || time == other),
                    "time of sending");
}

void checkFields(const CFileInfo &info, const QStringList &fields)
{
    Fuzz::check(info.number == fields.value(0), "number");
    Fuzz::check(info.toCKS == (fields.value(1) == QLatin1String("C")), "kind");
    Fuzz::check(info.trys == fields.value(4).toInt(), "tries");
    Fuzz::check(info.bad == (fields.value(5) == QLatin1String("B")), "mark of failure");
    Fuzz::check(info.resultText == (fields.size() == 7 ? fields.at(6) : QString()), "text of the failure");
    checkTime(info.sendTime, fields.value(2));
}

void checkSame(const CFileInfo &one, const CFileInfo &other)
{
    Fuzz::check(one.number == other.number && one.toCKS == other.toCKS && one.trys == other.trys &&
                    one.bad == other.bad && one.resultText == other.resultText &&
                    one.sendTime.isValid() == other.sendTime.isValid() &&
                    (!one.sendTime.isValid() || one.sendTime == other.sendTime),
                "a record that was written reads as the same");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    constexpr size_t Longest = 1 << 14; // of a line the reader takes four times as much
    static const Desk desk;
    const QByteArray content(reinterpret_cast<const char *>(data), int(qMin(size, Longest)));
    desk.write(QStringLiteral("telegram.dat"), content);
    CFileInfo info;
    Fuzz::check(info.Load(desk.path(QStringLiteral("telegram"))), "a record is there");
    checkFields(info, QString::fromUtf8(firstLine(content)).split(u'|'));
    if (info.number.startsWith(QChar::ByteOrderMark)) // taken for the file's own
        return 0;
    Fuzz::check(info.Save(desk.path(QStringLiteral("telegram"))), "a record is written");
    CFileInfo again;
    Fuzz::check(again.Load(desk.path(QStringLiteral("telegram"))), "a record is there again");
    checkSame(info, again);
    return 0;
}
