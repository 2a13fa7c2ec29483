#pragma once

#include <QColor>
#include <QString>

class QWidget;

// What is wrong with a value that an operator types: a reason in his words, empty if nothing is. A wrong
// value is marked and taken all the same. Paths are those of the data directory, which is the current one.

/// An address of the TCP link: numeric, and with "S:" in front if this side listens.
[[nodiscard]] QString addressFault(const QString &typed);
/// A key of the channel: pairs of hexadecimal digits.
[[nodiscard]] QString keyFault(const QString &typed);
/// A folder that is there or can be made in one step.
[[nodiscard]] QString folderFault(const QString &typed);
/// A folder that is offered to save in: empty, or there.
[[nodiscard]] QString offeredFolderFault(const QString &typed);
/// A file that is there; empty is no file.
[[nodiscard]] QString fileFault(const QString &typed);
/// The device, file or host of a raw printer.
[[nodiscard]] QString rawPrinterFault(const QString &typed);
/// The family of a font.
[[nodiscard]] QString fontFault(const QString &typed);
/// The form of the station's time, which is looked for in what the line brings.
[[nodiscard]] QString timeFormFault(const QString &typed);
/// The own answerback: 6 figures first, more than 16 characters in all.
[[nodiscard]] QString answerbackFault(const QString &typed);

/// Gives the text of \a widget the colour; its palette is touched only if that changes it.
void paintText(QWidget *widget, const QColor &colour);
