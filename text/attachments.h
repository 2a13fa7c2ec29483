#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

/// A file that was enclosed in a telegram.
struct Attachment {
    QString name;       ///< as the far end gives it, anything but empty; see safeFileName()
    QByteArray data;    ///< without its check byte; may be empty
    bool crcOk = false; ///< the check byte is that of the data
};

/// The files enclosed in a received \a text, in their order, up to the first block that is incomplete or
/// empty. Names of three bytes and less are not found: the name's end is looked for behind the fourth.
[[nodiscard]] QVector<Attachment> attachmentsOf(const QString &text);

/// The block by which a file is enclosed in a text that is written: its bare \a name and its \a data with a
/// check byte behind them, between the marks as they stand before the line puts its registers in.
[[nodiscard]] QString attachmentBlock(const QString &name, const QByteArray &data);

/// A name of fewer bytes is lost on the way: see attachmentsOf().
constexpr int ShortestAttachmentName = 4;
/// Bytes that \a name has in an enclosed file.
[[nodiscard]] QByteArray attachmentName(const QString &name);

/// Whether \a text holds the beginning and the end of an enclosed file.
[[nodiscard]] bool hasAttachment(const QString &text);

/// What of \a name, which comes from the line, may be the name of a file on any system: no directory, drive,
/// device, control character or hidden file, and of a length that disks take. "вложение" if nothing is left.
[[nodiscard]] QString safeFileName(const QString &name);
