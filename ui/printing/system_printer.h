#pragma once

#include <QString>
#include <QStringList>

class QPrinter;

/// Lays \a text out in \a font (the text of QFont::toString; the application's font if it is none) and prints
/// it. False if the printer is no device that can print, or reports an error. On any thread.
[[nodiscard]] bool printDocument(QPrinter &printer, const QString &text, const QString &font);

/// Prints to the printer \a name of the operating system, or to its default printer if the name is empty;
/// a name that is not known is never replaced by another printer. \a text and \a font as above. Returns the
/// journal lines of a failure, none if all is well. On any thread.
[[nodiscard]] QStringList printToSystem(const QString &name, const QString &text, const QString &font);
