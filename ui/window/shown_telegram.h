#pragma once

#include "ui/pages/shown_text.h"

class CArchivePage;

/// What \a page shows of \a telegram: no commands to the adapter, and no register marks unless they are asked
/// for. Commands of the page act on this, line ends included.
[[nodiscard]] QString shownTelegram(const ShownText &telegram, const CArchivePage &page);
/// Shows that of \a telegram, or why it cannot be shown. If nothing is left nothing can be done with it.
void showTelegram(const ShownText &telegram, CArchivePage &page);
/// Reads the file \a path into \a telegram and shows it from its beginning.
void openTelegram(const QString &path, ShownText &telegram, CArchivePage &page);
