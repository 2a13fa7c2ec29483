#include "text/attachments.h"

#include "text/encodings.h"
#include "text/utils.h"

#include <QRegularExpression>
#include <QStringList>

namespace
{
// As they arrive: the line puts the marks of its registers into what the far end has written.
const QString BlockBegin = QStringLiteral("-&FILE#-###");
const QString BlockEnd = QStringLiteral("###-&FILE#-");
constexpr int NameOffset = 9;     // of the name, which the coding lets begin with marks
constexpr int NameEndOffset = 19; // of the first place where the mark behind the name is looked for

QString decodedName(const QString &coded)
{
    const QByteArray bytes = ByteArrayFromMTKCoding(coded);
    return QString::fromLocal8Bit(bytes.constData()); // up to the first zero byte
}

/// Position of the end of the block that begins at or behind \a from, -1 if it is the last one.
int takeBlock(const QString &text, int from, QVector<Attachment> &attachments)
{
    const int begin = text.indexOf(BlockBegin, from);
    const int end = begin < 0 ? -1 : text.indexOf(BlockEnd, begin + NameOffset);
    const int nameEnd = end < 0 ? -1 : text.indexOf(QLatin1Char('#'), begin + NameEndOffset);
    if (nameEnd < 0 || nameEnd >= end)
        return -1;
    Attachment attachment;
    attachment.name = decodedName(text.mid(begin + NameOffset, nameEnd - begin - NameOffset));
    attachment.data = ByteArrayFromMTKCoding(text.mid(nameEnd + 1, end - nameEnd - 1));
    if (attachment.name.isEmpty() || attachment.data.isEmpty())
        return -1;
    const auto check = uchar(attachment.data.back());
    attachment.data.chop(1);
    attachment.crcOk = CUtils::CRC8(attachment.data) == check;
    attachments << attachment;
    return end;
}

// Names of files

constexpr int LongestName = 100;     // characters
constexpr int LongestNameUtf8 = 200; // bytes: disks take 255, with what is put behind it while it is written
constexpr int LongestSuffix = 16;    // characters, with its dot

/// True for what no name shall hold: control characters, those that are not seen, and halves of characters.
bool isUnseen(QChar c)
{
    switch (c.category()) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Other_PrivateUse:
    case QChar::Other_NotAssigned:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph: return true;
    default: return false;
    }
}

/// What stands behind the last separator and the letter of a drive.
QString bareName(const QString &name)
{
    const QString last =
        name.mid(qMax(name.lastIndexOf(QLatin1Char('/')), name.lastIndexOf(QLatin1Char('\\'))) + 1);
    static const QRegularExpression drive(QStringLiteral("^\\s*[A-Za-z]:"));
    return QString(last).remove(drive);
}

QString withoutForbidden(const QString &name)
{
    static const QString forbidden = QStringLiteral("<>:\"/\\|?*");
    QString allowed;
    for (const QChar c : name) {
        if (isUnseen(c))
            continue;
        const bool bad = forbidden.contains(c) || c == QChar::ReplacementCharacter;
        allowed += bad ? QLatin1Char('_') : c.isSpace() ? QLatin1Char(' ') : c;
    }
    return allowed;
}

/// Without dots and blanks around it: one system hides what begins with a dot, the other takes off those at
/// the end. A "~" at the beginning means a user's directory.
QString trimmedName(const QString &whole)
{
    const auto around = [](QChar c) { return c == QLatin1Char('.') || c.isSpace(); };
    int begin = 0, end = whole.size();
    while (begin < end && around(whole.at(begin)))
        ++begin;
    while (end > begin && around(whole.at(end - 1)))
        --end;
    QString name = whole.mid(begin, end - begin);
    if (name.startsWith(QLatin1Char('~')))
        name[0] = QLatin1Char('_');
    return name;
}

/// True if a system takes \a name, with whatever suffix, for one of its devices.
bool isDevice(const QString &name)
{
    static const QRegularExpression device(
        QStringLiteral(
            "^(CON|PRN|AUX|NUL|CONIN\\$|CONOUT\\$|CLOCK\\$|(COM|LPT)[0-9\u00B9\u00B2\u00B3])\\s*(\\.|$)"),
        QRegularExpression::CaseInsensitiveOption);
    return device.match(name).hasMatch();
}

bool isTooLong(const QString &name)
{
    return name.size() > LongestName || name.toUtf8().size() > LongestNameUtf8;
}

/// The suffix stays, as it tells what the file is.
QString shortened(const QString &name)
{
    if (!isTooLong(name))
        return name;
    const int dot = name.lastIndexOf(QLatin1Char('.'));
    const QString suffix = dot > 0 && name.size() - dot <= LongestSuffix ? name.mid(dot) : QString();
    QString stem = name.left(qMin(LongestName, name.size() - suffix.size()));
    while (isTooLong(stem + suffix))
        stem.chop(1);
    return trimmedName(stem) + suffix;
}
} // namespace

QVector<Attachment> attachmentsOf(const QString &text)
{
    QVector<Attachment> attachments;
    for (int from = 0; from >= 0;)
        from = takeBlock(text, from, attachments);
    return attachments;
}

QByteArray attachmentName(const QString &name)
{
    return name.toLocal8Bit();
}

QString attachmentBlock(const QString &name, const QByteArray &data)
{
    const QByteArray checked = data + char(CUtils::CRC8(data));
    return QStringLiteral("\r\n-&FILE-###") + ByteArrayToMTKCoding(attachmentName(name)) + u'#' +
           ByteArrayToMTKCoding(checked) + QStringLiteral("###-&FILE-\r\n");
}

bool hasAttachment(const QString &text)
{
    return text.contains(QStringLiteral("-&FILE#-#")) && text.contains(QStringLiteral("#-&FILE#-"));
}

QString safeFileName(const QString &name)
{
    const QString safe = shortened(trimmedName(withoutForbidden(bareName(name))));
    if (safe.isEmpty())
        return QStringLiteral("вложение");
    return isDevice(safe) ? QLatin1Char('_') + safe : safe;
}
