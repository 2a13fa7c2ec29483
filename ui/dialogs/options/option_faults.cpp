#include "ui/dialogs/options/option_faults.h"

#include "text/filters.h"
#include "ui/printing/raw_printer.h"

#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QHostAddress>
#include <QRegularExpression>
#include <QWidget>

#include <algorithm>

namespace
{
const QString ServerMark = QStringLiteral("S:");
constexpr int AnswerbackNumber = 6; // figures of the number, in front
constexpr int AnswerbackLength = 16;

/// Why nothing can be made at \a path; empty if it can.
QString parentFault(const QString &path)
{
    const QFileInfo parent(QFileInfo(path).absolutePath());
    if (!parent.isDir())
        return QStringLiteral("Нет папки ") + QDir::toNativeSeparators(parent.filePath());
    if (!parent.isWritable())
        return QStringLiteral("Нет права на запись в папку ") + QDir::toNativeSeparators(parent.filePath());
    return QString();
}

/// Whether the line can bring what the character of a time form stands for.
bool comesFromLine(QChar c)
{
    return QStringLiteral("<>dhm#&| ").contains(c) || QStringClearNonMTK2(c) == c;
}
} // namespace

QString addressFault(const QString &typed)
{
    const bool server = typed.startsWith(ServerMark) && typed.size() > ServerMark.size();
    const QHostAddress address(server ? typed.mid(ServerMark.size()) : typed);
    return address.isNull() ? QStringLiteral("Не числовой адрес") : QString();
}

QString keyFault(const QString &typed)
{
    static const QRegularExpression pairs(QStringLiteral("^([0-9A-Fa-f]{2})*$"));
    return pairs.match(typed).hasMatch() ? QString()
                                         : QStringLiteral("Не пары шестнадцатеричных цифр (0-9, A-F)");
}

QString folderFault(const QString &typed)
{
    if (typed.isEmpty())
        return QStringLiteral("Папка не указана");
    const QFileInfo folder(typed);
    if (folder.isDir())
        return folder.isWritable() ? QString() : QStringLiteral("Нет права на запись в эту папку");
    if (folder.exists())
        return QStringLiteral("Это не папка, а файл");
    return parentFault(typed);
}

QString offeredFolderFault(const QString &typed)
{
    return typed.isEmpty() || QFileInfo(typed).isDir() ? QString() : QStringLiteral("Нет такой папки");
}

QString fileFault(const QString &typed)
{
    return typed.isEmpty() || QFileInfo(typed).isFile() ? QString() : QStringLiteral("Нет такого файла");
}

QString rawPrinterFault(const QString &typed)
{
    const RawPrinterTarget target = RawPrinterTarget::read(typed);
    if (target.network)
        return target.name.isEmpty() ? QStringLiteral("Нет адреса за «IP:»") : QString();
    if (typed.isEmpty() || QFileInfo::exists(typed))
        return QString();
    return parentFault(typed);
}

QString fontFault(const QString &typed)
{
    return QFontDatabase().families().contains(typed, Qt::CaseInsensitive)
               ? QString()
               : QStringLiteral("Нет такого шрифта, будет похожий");
}

QString timeFormFault(const QString &typed)
{
    const auto *bad = std::find_if_not(typed.begin(), typed.end(), comesFromLine);
    return bad == typed.end() ? QString()
                              : QStringLiteral("Знак «%1» из линии не приходит: время не совпадет").arg(*bad);
}

QString answerbackFault(const QString &typed)
{
    const auto *end = typed.begin() + std::min(AnswerbackNumber, typed.size());
    const bool numbered = typed.size() > AnswerbackLength &&
                          std::all_of(typed.begin(), end, [](QChar c) { return c.isDigit(); });
    return numbered ? QString() : QStringLiteral("Сначала 6 цифр номера, всего больше 16 знаков");
}

void paintText(QWidget *widget, const QColor &colour)
{
    QPalette palette = widget->palette();
    if (palette.color(QPalette::Active, QPalette::Text) == colour)
        return;
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive})
        for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText})
            palette.setColor(group, role, colour);
    widget->setPalette(palette);
}
