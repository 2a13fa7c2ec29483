#pragma once

#include <QString>

#include <optional>

class CFileInfo;

/// Puts \a text, in upper case, as a new telegram of this workstation into the outgoing directory, behind its
/// \a record, if it has one: a scan sees all of it or nothing. Its name is today, the letter of \a category
/// and the number of the day, State.EditorN + 1, which State keeps from then on, saved. A number under which
/// something stands there already, in whatever state, is passed over. Returns the name; nothing, with one
/// journal line, if the telegram could not be written, and the number is then not used up.
[[nodiscard]] std::optional<QString> queueTelegram(const QString &category, const QString &text,
                                                   const CFileInfo *record = nullptr);
