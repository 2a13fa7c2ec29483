#include "journal_file.h"

#include "app/ordinary_file.h"
#include "text/file_coding.h"

#include <QFileInfo>

namespace
{
constexpr qint64 LargestJournal = 1LL << 30; // bytes
constexpr ushort MarkLimit = 10;             // a character below it is a type mark
constexpr int TimeLength = 8;                // of "hh:mm:ss"

QVector<CJournalLine::Piece> piecesOf(const QString &line)
{
    QVector<CJournalLine::Piece> pieces;
    int from = 0;
    ProtocolTypes type = ProtocolNone;
    const auto close = [&](int to) {
        if (to > from)
            pieces.append({type, line.mid(from, to - from)});
    };
    for (int i = 0; i < line.size(); ++i) {
        if (line.at(i).unicode() >= MarkLimit)
            continue;
        close(i);
        type = ProtocolTypes(line.at(i).unicode());
        from = i + 1;
    }
    close(line.size());
    return pieces;
}
} // namespace

bool CJournalLine::isService() const
{
    if (pieces.size() != 1 || (pieces[0].type != ProtocolInfo && pieces[0].type != ProtocolError))
        return false;
    const QString &text = pieces[0].text;
    return text.size() > TimeLength && text.at(TimeLength) == QLatin1Char(' ') && time().isValid();
}

QTime CJournalLine::time() const
{
    return QTime::fromString(pieces[0].text.left(TimeLength), QStringLiteral("hh:mm:ss"));
}

QString CJournalLine::words() const
{
    return pieces[0].text.mid(TimeLength + 1);
}

CJournalFile::CJournalFile(const QString &path, const QDate &day)
    : date(day), name(QFileInfo(path).fileName()), exists(QFileInfo::exists(path))
{
    if (const std::optional<QByteArray> content = readOrdinary(path, LargestJournal)) {
        isRead = true;
        takeContent(*content);
    }
}

void CJournalFile::takeContent(const QByteArray &content)
{
    int number = 0;
    int from = 0;
    while (from < content.size()) {
        const int end = content.indexOf('\n', from);
        const int to = end < 0 ? content.size() : end;
        takeLine(content.mid(from, to - from), ++number, end < 0);
        from = to + 1;
    }
    endsOpen = !content.isEmpty() && !content.endsWith('\n');
}

void CJournalFile::takeLine(const QByteArray &bytes, int number, bool isLast)
{
    // The program reads a line up to its first zero, and no line has one. The last may be half written.
    const int zero = bytes.indexOf('\0');
    if (zero >= 0 || (!isLast && !isUtf8(bytes)))
        damaged << number;
    QString text = QString::fromUtf8(zero < 0 ? bytes : bytes.left(zero));
    while (text.endsWith(QLatin1Char('\r')))
        text.chop(1);
    lines.append({number, piecesOf(text)});
}
