#include "ui/pages/shown_text.h"

#include "app/ordinary_file.h"
#include "procedures/telegram_files.h"
#include "text/mtk2.h"

namespace
{
const QString TooLarge = QStringLiteral("Файл слишком велик, текст не показан");
const QString LineTooLong = QStringLiteral("Слишком длинная строка, текст не показан");

// More bytes than the longest text can have, so that a longer one is seen to be too long.
constexpr qint64 BytesToRead = 3 * LongestShown + 16;

/// Whether a text view begins a line behind \a c: the two figures are those that it takes for itself.
bool endsLine(QChar c)
{
    return c == QLatin1Char('\n') || c == QLatin1Char('\r') || c == QChar::ParagraphSeparator ||
           c == QChar(0xfdd0) || c == QChar(0xfdd1);
}

struct Shape {
    int lines = 1; ///< CR LF makes two, one of them empty
    int thai = 0;  ///< the most letters of that script in a line
};

Shape shapeOf(const QString &text)
{
    Shape shape;
    int thai = 0;
    for (const QChar c : text) {
        if (endsLine(c)) {
            ++shape.lines;
            thai = 0;
        } else if (c.script() == QChar::Script_Thai) {
            shape.thai = qMax(shape.thai, ++thai);
        }
    }
    return shape;
}

/// Why \a text cannot be laid out within a tick; nothing if it can.
QString troubleOf(const QString &text)
{
    const Shape shape = shapeOf(text);
    if (text.size() > LongestShown || shape.lines > 2 * MostShownLines + 1)
        return TooLarge;
    return shape.thai > MostThaiInLine ? LineTooLong : QString();
}

/// The text that begins with \a bytes and goes on in \a file, which may grow.
QString wholeText(const QByteArray &bytes, QFile &file)
{
    const QByteArray rest = file.read(LargestTelegramFile);
    return QString::fromUtf8((bytes + rest).constData());
}

ShownText unreadable(const QString &path)
{
    noteEvent(QStringLiteral("Невозможно прочитать файл ") + shownName(path), ProtocolError);
    return {QString(), QStringLiteral("Невозможно прочитать файл"), QString()};
}
} // namespace

ShownText readShownText(const QString &path)
{
    QFile file(path);
    if (!openOrdinary(file, QIODevice::ReadOnly))
        return unreadable(path);
    // What is no telegram for the line is none here, even if its first bytes could be shown.
    const bool isTelegram = file.size() <= LargestTelegramFile;
    const QByteArray bytes = file.read(isTelegram ? BytesToRead : 0);
    if (file.error() != QFileDevice::NoError)
        return unreadable(path);
    QString text = QString::fromUtf8(bytes.constData());
    const QString trouble = isTelegram ? troubleOf(text) : TooLarge;
    if (!trouble.isEmpty())
        return {QString(), trouble, isTelegram ? wholeText(bytes, file) : QString()};
    unmaskNationalLanguage(text);
    return {text, QString(), QString()};
}
