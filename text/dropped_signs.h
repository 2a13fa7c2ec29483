#pragma once

#include "text/telegram_form.h"

#include <QString>

#include <functional>

/// What the operator is told of text that does not reach the line as he wrote it: each sign once, one beside
/// the other, and of many the first. Signs that cannot be seen are shown by their number. Any thread.

/// The signs of \a text of which \a clear leaves nothing; empty if there are none.
[[nodiscard]] QString droppedSigns(const QString &text, const std::function<QString(const QString &)> &clear);

/// The signs of \a fields that the line will not carry as the rows on show stand. \a crypto tells whether "<"
/// stands for a line end of the text.
[[nodiscard]] QString signsNotCarried(const TelegramFields &fields, const FormRows &shown, bool crypto);
