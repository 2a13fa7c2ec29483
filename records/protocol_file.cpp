// The journal's file. A day's list reaches megabytes while each Save() has a few characters to add, so what
// the last Save() left is remembered and only the rest is written. If the list has done anything but grow, or
// the file is not what was left, the whole file is compared with the whole list.

#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "records/protocol.h"
#include "records/whole_file.h"

#include <QDir>
#include <QFileInfo>

namespace
{
constexpr QIODevice::OpenMode AtEnd = QIODevice::WriteOnly | QIODevice::Append;

bool appendBytes(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(AtEnd) && file.write(bytes) == bytes.size() && file.flush();
}

/// True if the file is missing, or an ordinary one that holds the head of \a whole; its size is \a size.
bool holdsHead(const QString &path, const QByteArray &whole, qint64 &size)
{
    const QFileInfo present(path);
    size = present.size();
    if (!present.exists())
        return true;
    QFile file(path);
    if (!present.isFile() || size > whole.size() || !file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray held = file.readAll();
    return held.size() == size && whole.startsWith(held);
}

/// A torn line may hold zeros: it ends at the first.
QString lineText(const QByteArray &bytes)
{
    return QString::fromUtf8(bytes.constData()).trimmed();
}
} // namespace

QString CProtocol::pathForDate(const QDate &date)
{
    return State.pathPrt() + QDir::separator() + date.toString(QStringLiteral("yyyyMMdd")) +
           QStringLiteral(".prt");
}

QStringList CProtocol::readLines(const QString &path)
{
    QStringList read;
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return read;
    while (!file.atEnd())
        read << lineText(file.readLine());
    return read;
}

void CProtocol::setFileDate(const QDate &date)
{
    fileName = pathForDate(date);
}

void CProtocol::Load()
{
    closeFile(); // what it has not flushed yet is to be read, too
    setFileDate(Time.date);
    lines = readLines(fileName);
    m_written = Written();
    emit Changed();
}

void CProtocol::Save()
{
    const bool keepOpen = Options.protocolFileNoClose;
    const bool whole = rewriteAll;
    if (file.isOpen() && flushRequested)
        file.flush();
    if (!keepOpen || whole || file.fileName() != fileName || (flushRequested && !diskAsWritten()))
        closeFile();

    if (bringUpToDate())
        rewriteAll = false;
    else
        m_written = Written(); // the next Save() looks at the file anew

    if (!keepOpen || whole || m_written.path.isEmpty())
        closeFile();
    else if (flushRequested && !file.flush())
        closeFile();
    if (keepOpen)
        flushRequested = false;
}

void CProtocol::flush()
{
    if (file.isOpen())
        (void)file.flush();
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

/// Makes the file equal to the list, whatever it holds.
bool CProtocol::matchFile()
{
    if (!QFileInfo(QFileInfo(fileName).path()).isDir())
        return false; // a drive that is gone: not worth joining a day for each character
    const QByteArray whole = lines.join(QLatin1Char('\n')).toUtf8();
    qint64 present = 0;
    const bool done = holdsHead(fileName, whole, present) ? appendBytes(fileName, whole.mid(int(present)))
                                                          : replaceWholeFile(fileName, whole);
    if (done) {
        m_written = Written();
        noteWritten(whole.size());
        noteStamp();
    }
    return done;
}

bool CProtocol::appendNew()
{
    const QByteArray fresh = newBytes();
    if (!file.isOpen()) {
        if (fresh.isEmpty() && !Options.protocolFileNoClose)
            return true;
        file.setFileName(fileName);
        if (!file.open(AtEnd))
            return false;
    }
    if (file.write(fresh) != fresh.size())
        return false;
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
    return bytes;
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
    // Half of a surrogate pair was written as a replacement.
    return chars == 0 || chars == line.size() || !line.at(chars - 1).isHighSurrogate();
}

/// Whether the file is what was left there. One that is kept open has no settled time of change.
bool CProtocol::diskAsWritten() const
{
    const QFileInfo present(m_written.path);
    return m_written.path == fileName && present.isFile() && present.size() == m_written.bytes &&
           (file.isOpen() || present.lastModified() == m_written.stamp);
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
