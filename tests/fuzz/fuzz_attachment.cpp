// Telegrams with enclosed files of any form; the input is also the name and the content of a file to enclose.

#include "tests/fuzz/fuzz.h"
#include "text/attachments.h"

namespace
{
constexpr int LongestName = 100;

void checkName(const QString &given)
{
    const QString name = safeFileName(given);
    Fuzz::check(!name.isEmpty(), "a file has a name");
    Fuzz::check(name.size() <= LongestName + 1 && name.toUtf8().size() <= 2 * LongestName + 1,
                "a name that disks take");
    for (const QChar c : name)
        Fuzz::check(c >= u' ' && !QStringLiteral("<>:\"/\\|?*").contains(c), "no forbidden character");
    Fuzz::check(!name.startsWith(u'.') && !name.startsWith(u'~') && !name.endsWith(u'.'), "a plain name");
    if (name.size() <= LongestName && name.toUtf8().size() <= 2 * LongestName)
        Fuzz::check(safeFileName(name) == name, "a safe name stays");
}

void checkFound(const QString &text)
{
    int bytes = 0;
    const QVector<Attachment> found = attachmentsOf(text);
    for (const Attachment &one : found) {
        Fuzz::check(!one.name.isEmpty(), "an enclosed file has a name");
        bytes += one.data.size() + 1;
        checkName(one.name);
    }
    Fuzz::check(2 * bytes <= text.size(), "no more bytes than half the characters");
    Fuzz::check(found.isEmpty() || hasAttachment(text), "a text with a file is known as one");
}

/// As the line brings it, with the marks of its registers.
QString received(QString block)
{
    block.replace(QStringLiteral("-&FILE-###"), QStringLiteral("-&FILE#-###"));
    return block.replace(QStringLiteral("###-&FILE-"), QStringLiteral("###-&FILE#-"));
}

void checkEnclosed(const QString &name, const QByteArray &data)
{
    const QByteArray bytes = attachmentName(name);
    if (bytes.size() < ShortestAttachmentName || bytes.contains('\0'))
        return;
    const QString text = received(attachmentBlock(name, data));
    const QVector<Attachment> found = attachmentsOf(text + text);
    Fuzz::check(found.size() == 2, "each enclosed file is found");
    for (const Attachment &one : found)
        Fuzz::check(one.crcOk && one.data == data && one.name == QString::fromLocal8Bit(bytes),
                    "what was enclosed is found as it was");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QVector<Fuzz::Step> steps = Fuzz::session(data, size);
    QString whole;
    for (const Fuzz::Step &step : steps) {
        whole += step.text;
        checkName(step.text);
    }
    checkFound(whole);
    checkEnclosed(steps.first().text.left(LongestName),
                  QByteArray(reinterpret_cast<const char *>(data), int(qMin<size_t>(size, 1 << 14))));
    return 0;
}
