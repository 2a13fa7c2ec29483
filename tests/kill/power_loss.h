#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

/// The files below a directory, by absolute path.
using Files = QMap<QString, QByteArray>;
[[nodiscard]] Files filesBelow(const QString &directory);

/// Leaves of the calls that disk_calls.cpp has kept in \a record what a journalling file system holds after a
/// loss of power, and writes it where the calls have worked, from \a before on. Names are there in the order
/// of the calls, at least up to the last sync, which brings all earlier ones along; of a file whose content
/// was not synced the rest is missing, zero, cut or there, as \a seed draws it.
void losePower(const QString &record, const Files &before, quint32 seed);
