#pragma once

#include <QByteArray>
#include <QString>

/// The line's text code, one byte per character: 7-bit characters as they are, but "*" as 05; the Cyrillic
/// capitals А to Я as 80 to 9F. Lower case is folded; what has no byte is left out.
[[nodiscard]] QByteArray toCorva(const QString &text);

/// The text of line bytes. 00 is dropped; a byte that the code does not use, 80 to 9F aside, becomes U+FFFD,
/// so that it shows.
[[nodiscard]] QString fromCorva(const QByteArray &bytes);
