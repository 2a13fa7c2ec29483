#include "ui/pages/shown_text.h"

#include "app/ordinary_file.h"
#include "procedures/telegram_files.h"
#include "text/mtk2.h"

#include <algorithm>

namespace
{
// More bytes than the longest text can have, so that a longer one is seen to be too long.
constexpr qint64 BytesToRead = 3 * LongestShown + 16;

/// Whether a text view begins a paragraph behind \a c. Each of them costs as much as a line of text.
bool endsParagraph(QChar c)
{
    return c == QLatin1Char('\n') || c == QLatin1Char('\r') || c == QChar::ParagraphSeparator;
}

bool fits(const QString &text)
{
    constexpr auto MostEnds = 2LL * MostShownLines; // a usual line end has two characters
    return text.size() <= LongestShown && std::count_if(text.begin(), text.end(), endsParagraph) <= MostEnds;
}

ShownText unreadable(const QString &path)
{
    noteEvent(QStringLiteral("Невозможно прочитать файл ") + shownName(path), ProtocolError);
    return {QString(), QStringLiteral("Невозможно прочитать файл")};
}
} // namespace

ShownText readShownText(const QString &path)
{
    QFile file(path);
    if (!openOrdinary(file, QIODevice::ReadOnly))
        return unreadable(path);
    const QByteArray bytes = file.read(BytesToRead);
    if (file.error() != QFileDevice::NoError)
        return unreadable(path);
    QString text = QString::fromUtf8(bytes.constData());
    // What is no telegram for the line is none here, even if its first bytes could be shown.
    if (!fits(text) || file.size() > LargestTelegramFile)
        return {QString(), QStringLiteral("Файл слишком велик, текст не показан")};
    unmaskNationalLanguage(text);
    return {text, QString()};
}
