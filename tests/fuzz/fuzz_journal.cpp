// Any file as today's journal, beside a plain reader: the program goes on behind it and changes none of it.

#include "app/options.h"
#include "records/protocol.h"
#include "tests/fuzz/fuzz.h"
#include "tests/support/desk.h"

namespace
{
QStringList plainLines(const QByteArray &content)
{
    QStringList lines;
    QList<QByteArray> pieces = content.split('\n');
    if (pieces.last().isEmpty())
        pieces.removeLast();
    for (const QByteArray &piece : pieces)
        lines << QString::fromUtf8(piece.left(piece.contains('\0') ? piece.indexOf('\0') : piece.size()))
                     .trimmed();
    return lines;
}

QStringList trimmed(const QStringList &lines)
{
    QStringList result;
    for (const QString &line : lines)
        result << line.trimmed();
    while (!result.isEmpty() && result.last().isEmpty()) // the line that is to come
        result.removeLast();
    return result;
}

/// The type marks at the ends of a line are no white space, so what stands there is compared as it is.
void checkGrown(const Desk &desk, const QString &name, const QByteArray &before)
{
    Log.Save();
    const QByteArray after = desk.read(name);
    // A last line that reads as blank is filled: the file then is replaced by what was read of it.
    const QStringList held = plainLines(before);
    const bool filled = !held.isEmpty() && held.last().isEmpty();
    if (!filled)
        Fuzz::check(after.startsWith(before), "what the journal had stays");
    Fuzz::check(trimmed(plainLines(after)) == trimmed(Log.lines), "the file reads like the list");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const Desk desk;
    const QByteArray content(reinterpret_cast<const char *>(data), int(size));
    const QString name = Log.fileName;
    desk.write(name, content);
    Log.Load();
    Fuzz::check(Log.lines == plainLines(content), "the lines of the file");
    Log.Save();
    Fuzz::check(desk.read(name) == content, "a journal that was only read is not changed");
    Log.addServiceString(QStringLiteral("Запуск"), ProtocolInfo);
    checkGrown(desk, name, content);
    const QByteArray grown = desk.read(name);
    Log.addServiceString(QStringLiteral("Связь есть"), ProtocolError);
    Log.rewriteAll = true;
    checkGrown(desk, name, grown);
    const QStringList lines = trimmed(Log.lines);
    Log.Load();
    Fuzz::check(trimmed(Log.lines) == lines, "what was written reads as the same");
    return 0;
}
