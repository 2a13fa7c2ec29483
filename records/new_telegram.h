#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>

class CFileInfo;

/// Puts \a text, in upper case, as a new telegram of this workstation into the outgoing directory, behind its
/// \a record, if it has one: a scan sees all of it or nothing. Its name is today, the letter of \a category
/// and the number of the day, State.EditorN + 1, which State keeps from then on, saved. A number under which
/// something stands there already, in whatever state, is passed over. Returns the name; nothing, with one
/// journal line, if the telegram could not be written, and the number is then not used up.
[[nodiscard]] std::optional<QString> queueTelegram(const QString &category, const QString &text,
                                                   const CFileInfo *record = nullptr);

/// How the operator wants a telegram to go that waits in the queue.
struct SendOrder {
    QString category;
    bool guaranteed = false; ///< the letter of the name is "g", whatever the category
    QStringList numbers;     ///< at least one in SKK, where each gets a telegram, as often as it stands here
    bool toCKS = false;      ///< through the centre, in SKK
    QDateTime sendTime;      ///< not before; valid, but of no meaning in CKS
};

struct Queued {
    QStringList names;  ///< of the files, in the order of their numbers
    QStringList unsent; ///< numbers that got none, as the disk failed; in SKK alone
};

/// Queues \a text by \a order as queueTelegram() does, in the manner of the line procedure: for the centre
/// the file alone, on a direct link with the time behind its name, on switched channels a file and its record
/// for each number. The first that cannot be written ends it, with one journal line; those before it stay.
/// Several numbers use up one number of the day more than they have files. The queue is scanned in two ticks.
[[nodiscard]] Queued queueTelegram(const SendOrder &order, const QString &text);
