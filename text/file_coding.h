#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

/// How the text of a file that other programs are to read is coded. Unlike the encodings of the line and of
/// printers these are the whole code pages, with small letters.
enum class FileCoding { UTF8, CP866, CP1251 };

/// A text as the bytes of a file.
struct CodedText {
    QByteArray bytes;   ///< with "?" for each character that the coding lacks
    QVector<uint> lost; ///< the code points that it lacks, each once, in their order
    int lostCount = 0;  ///< how often they stand in the text
};
[[nodiscard]] CodedText codedText(const QString &text, FileCoding coding);

/// "UTF-8", "CP866" or "CP1251".
[[nodiscard]] QString nameOf(FileCoding coding);

/// Whether \a bytes are UTF-8 from the first to the last, as plain ASCII is, too.
[[nodiscard]] bool isUtf8(const QByteArray &bytes);
