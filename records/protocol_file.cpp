// The journal's file. A day's list reaches megabytes while each Save() has a few characters to add, so what
// the last Save() left is remembered and only the rest is written. If the list has done anything but grow, or
// the file is not what was left, the whole file is compared with the whole list. A file that was read counts
// as written as it stands, whatever white space the list has lost of it: a second copy of a day may have no
// room.

#include "app/clock.h"
#include "app/options.h"
#include "app/ordinary_file.h"
#include "app/state.h"
#include "app/whole_file.h"
#include "records/protocol.h"

#include <QDir>
#include <QFileInfo>

#include <optional>
#include <utility>

namespace
{
constexpr QIODevice::OpenMode AtEnd = QIODevice::WriteOnly | QIODevice::Append;
constexpr qint64 Block = 1 << 16; // bytes read at once

/// A torn line may hold zeros: it ends at the first.
QString lineText(const QByteArray &bytes)
{
    return QString::fromUtf8(bytes.constData()).trimmed();
}

bool readsLike(const QByteArray &held, const QString &line)
{
    return held == line.toUtf8() || lineText(held) == line.trimmed();
}

/// What a file lacks of a list.
struct Rest {
    QByteArray bytes;
    bool ended = false; ///< the file ends with the line feed that the list has not come to
};

/// The rest of \a lines behind \a held; nothing if that does not read like their head.
std::optional<Rest> restBehind(const QByteArray &held, const QStringList &lines)
{
    int line = 0, from = 0;
    for (int end = held.indexOf('\n'); end >= 0; end = held.indexOf('\n', from)) {
        if (line >= lines.size() || !readsLike(held.mid(from, end - from), lines.at(line)))
            return std::nullopt;
        ++line;
        from = end + 1;
    }
    const QByteArray cut = held.mid(from);
    if (line == lines.size())
        return cut.isEmpty() ? std::optional(Rest{{}, line > 0}) : std::nullopt;
    const QByteArray whole = lines.at(line).toUtf8();
    if (!whole.startsWith(cut) && !readsLike(cut, lines.at(line)))
        return std::nullopt;
    Rest rest;
    if (whole.startsWith(cut))
        rest.bytes = whole.mid(cut.size());
    for (++line; line < lines.size(); ++line)
        rest.bytes += '\n' + lines.at(line).toUtf8();
    return rest;
}

/// The content of a file; none is as good as an empty one. Nothing if what stands there is no file.
std::optional<QByteArray> heldBy(const QString &path)
{
    QFile file(path);
    if (!QFileInfo::exists(path))
        return QByteArray();
    if (!openOrdinary(file, QIODevice::ReadOnly))
        return std::nullopt;
    return file.readAll();
}

/// Whether \a file is the one at \a path; the toolkit tells its name with slashes on every system.
bool isOfPath(const QFile &file, const QString &path)
{
    return file.fileName() == QDir::fromNativeSeparators(path);
}

/// Appends to \a lines those of \a bytes, each of them ended. Decoded at once: a line feed ends
/// whatever sequence is torn before it, so that each reads as it would alone, also one that begins with a
/// byte order mark.
void appendLines(const QByteArray &bytes, QStringList &lines)
{
    const QString text = QString::fromUtf8(bytes.constData(), bytes.size()); // with its zeros
    for (int from = 0, end = 0; from < text.size(); from = end + 1) {
        end = text.indexOf(QLatin1Char('\n'), from);
        QStringView line = QStringView(text).mid(from, end - from);
        if (from > 0 && line.startsWith(QChar(QChar::ByteOrderMark)))
            line = line.mid(1);
        const auto zero = line.indexOf(QChar(QChar::Null));
        lines << (zero < 0 ? line : line.left(zero)).trimmed().toString();
    }
}

/// The lines from where \a book stands; \a last is how the last one stands there.
QStringList linesOf(QFile &book, QByteArray &last)
{
    QStringList lines;
    QByteArray held; // the beginning of a line
    for (QByteArray block = book.read(Block); !block.isEmpty(); block = book.read(Block)) {
        const int end = block.lastIndexOf('\n') + 1;
        if (end > 0) {
            held += block.left(end);
            appendLines(held, lines);
            last = held.mid(held.lastIndexOf('\n', -2) + 1);
            held.clear();
        }
        held += block.mid(end);
    }
    if (!held.isEmpty()) {
        lines << lineText(held);
        last = held;
    }
    return lines;
}
} // namespace

QString CProtocol::pathForDate(const QDate &date)
{
    return State.pathPrt() + QDir::separator() + date.toString(QStringLiteral("yyyyMMdd")) +
           QStringLiteral(".prt");
}

QStringList CProtocol::readLines(const QString &path)
{
    QFile book(path);
    QByteArray last;
    return openOrdinary(book, QIODevice::ReadOnly) ? linesOf(book, last) : QStringList();
}

void CProtocol::setFileDate(const QDate &date)
{
    fileName = pathForDate(date);
}

void CProtocol::Load()
{
    closeFile(); // what it has not flushed yet is to be read, too
    behind = false;
    setFileDate(Time.date);
    m_written = Written();
    QFile book(fileName);
    if (openOrdinary(book, QIODevice::ReadOnly)) {
        QByteArray last;
        lines = linesOf(book, last);
        noteWritten(book.pos());
        noteStamp();
        m_written.ended = last.endsWith('\n');
        m_written.closed = !lines.isEmpty() && last != lines.last().toUtf8();
    } else {
        lines.clear();
    }
    emit Changed();
}

void CProtocol::Save()
{
    const bool keepOpen = Options.protocolFileNoClose;
    const bool whole = rewriteAll;
    const QString formerError = std::exchange(writeError, QString());
    if (file.isOpen() && flushRequested) {
        // Looked at before: where a file is continued at the place that was its end, what is held back can
        // bring another writer's file to the size that it should have.
        if (!diskHasAllBut(file.bytesToWrite()))
            m_written = Written();
        file.flush();
    }
    if (!keepOpen || whole || !isOfPath(file, fileName) || (flushRequested && !diskAsWritten()))
        closeFile();

    behind = !bringUpToDate();
    if (!behind) {
        rewriteAll = false;
    } else {
        m_written = Written(); // the next Save() looks at the file anew
        if (writeError.isEmpty())
            writeError = formerError; // a disk that takes no bytes does not open files either
    }

    if (!keepOpen || whole || m_written.path.isEmpty())
        closeFile();
    else if (flushRequested && !flushed(file))
        closeFile();
    if (keepOpen)
        flushRequested = false;
}

void CProtocol::flush()
{
    if (file.isOpen())
        (void)flushed(file);
}

/// Looks at a write to \a book, whether it is on the disk.
bool CProtocol::flushed(QFile &book)
{
    if (book.error() == QFileDevice::NoError && book.flush())
        return true;
    writeError = book.errorString();
    return false;
}

bool CProtocol::bringUpToDate()
{
    if (rewriteAll || !listAsWritten() || !(file.isOpen() || diskAsWritten())) {
        closeFile();
        if (!matchFile())
            return false;
    }
    return appendNew();
}

/// Makes the file read like the list, whatever it holds.
bool CProtocol::matchFile()
{
    if (!QFileInfo(QFileInfo(fileName).path()).isDir())
        return false; // a drive that is gone: not worth joining a day for each character
    const std::optional<QByteArray> held = heldBy(fileName);
    const std::optional<Rest> rest = held ? restBehind(*held, lines) : std::nullopt;
    const QByteArray whole = rest ? QByteArray() : lines.join(QLatin1Char('\n')).toUtf8();
    if (rest && !appendToFile(rest->bytes))
        return false;
    if (!rest && !replaceWholeFile(fileName, whole)) {
        if (held)
            writeError = QStringLiteral("файл не заменен");
        return false;
    }
    m_written = Written();
    noteWritten(rest ? held->size() + rest->bytes.size() : whole.size());
    m_written.ended = m_written.closed = rest && rest->ended;
    noteStamp();
    return true;
}

bool CProtocol::appendToFile(const QByteArray &bytes)
{
    QFile book(fileName);
    if (!openOrdinary(book, AtEnd))
        return false;
    book.write(bytes);
    return flushed(book);
}

bool CProtocol::appendNew()
{
    const QByteArray fresh = newBytes();
    if (!file.isOpen()) {
        if (fresh.isEmpty() && !Options.protocolFileNoClose)
            return true;
        file.setFileName(fileName);
        if (!file.open(AtEnd)) // it has just been seen to be an ordinary one
            return false;
    }
    file.write(fresh);
    if (Options.protocolFileNoClose ? file.error() != QFileDevice::NoError : !flushed(file)) {
        writeError = file.errorString();
        return false;
    }
    if (!fresh.isEmpty())
        m_written.ended = m_written.closed = false;
    noteWritten(m_written.bytes + fresh.size());
    return true;
}

QByteArray CProtocol::newBytes() const
{
    if (lines.isEmpty() || !m_written.line.holds(lines))
        return {}; // the whole file has just been compared
    const int last = m_written.line.in(lines);
    QByteArray bytes = lines.at(last).midRef(m_written.chars).toUtf8();
    for (int line = last + 1; line < lines.size(); ++line)
        bytes += '\n' + lines.at(line).toUtf8();
    return m_written.ended ? bytes.mid(1) : bytes;
}

void CProtocol::noteWritten(qint64 bytes)
{
    m_written.path = fileName;
    m_written.line.reach(lines, qMax(0, lines.size() - 1));
    m_written.chars = lines.isEmpty() ? 0 : lines.last().size();
    m_written.bytes = bytes;
}

/// Whether the list still begins with what was written of it.
bool CProtocol::listAsWritten() const
{
    if (m_written.path != fileName || !m_written.line.holds(lines))
        return false;
    if (lines.isEmpty())
        return true;
    const QString &line = lines.at(m_written.line.in(lines));
    const int chars = m_written.chars;
    if (m_written.closed && chars != line.size())
        return false;
    // Half of a surrogate pair was written as a replacement.
    return chars == 0 || chars == line.size() || !line.at(chars - 1).isHighSurrogate();
}

/// Whether the file is what was left there. One that is kept open has no settled time of change.
bool CProtocol::diskAsWritten() const
{
    return m_written.path == fileName && diskHasAllBut(0) &&
           (file.isOpen() || QFileInfo(m_written.path).lastModified() == m_written.stamp);
}

/// Whether the file has the size of what was written, less \a heldBack bytes.
bool CProtocol::diskHasAllBut(qint64 heldBack) const
{
    const QFileInfo present(m_written.path);
    return present.isFile() && present.size() == m_written.bytes - heldBack;
}

void CProtocol::closeFile()
{
    if (!file.isOpen())
        return;
    file.close();
    noteStamp();
}

void CProtocol::noteStamp()
{
    m_written.stamp = QFileInfo(m_written.path).lastModified();
}
