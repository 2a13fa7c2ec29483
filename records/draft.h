#pragma once

#include "text/telegram_form.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// A telegram that is being written, as the editor holds it.
struct Draft {
    int form = MessageForm;  ///< TelegramForm
    bool cryptoMode = false; ///< line ends stand among the groups of a cipher
    /// The text with LF. Words and times only where they are the operator's own; the others are counted anew.
    TelegramFields fields;
};
[[nodiscard]] bool operator==(const Draft &one, const Draft &other);
[[nodiscard]] inline bool operator!=(const Draft &one, const Draft &other)
{
    return !(one == other);
}

/// \a draft as the content of a file.
[[nodiscard]] QByteArray contentOf(const Draft &draft);
/// The draft of a file's \a content; nothing if that is none, or damaged.
[[nodiscard]] std::optional<Draft> draftOf(const QByteArray &content);
