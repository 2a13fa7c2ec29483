#pragma once

#include <QString>

/// What a program that stands in the folder bin of an installation shares with every user: the folder
/// share/velda beside bin, with the sounds and the manual. Empty for a program that stands by itself and
/// keeps its data beside it.
[[nodiscard]] QString sharedDirectory(const QString &programDirectory);

/// The data directory of an installed program, one for each user: velda in $XDG_DATA_HOME, mostly
/// ~/.local/share/velda.
[[nodiscard]] QString userDataDirectory();

/// Puts into the current data directory what an operator finds there at the first start: his own copy of the
/// sounds of \a shared, all or none, and a link to each manual, so that an upgrade brings its text. What is
/// there already stays; a manual that came with a later version, or moved, is linked at the next start. A
/// failure is one line of the journal for each thing.
void furnishDataDirectory(const QString &shared);
