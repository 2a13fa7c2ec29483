#pragma once

#include <QString>

class QWidget;

/// Where the save dialogs of received telegrams begin, with \a name in the field: in
/// Options.pathForSaveInInput, if it is there.
[[nodiscard]] QString placeToSave(const QString &name);

/// Saves \a text in a file of the operator's choice, from placeToSave() on, with
/// \a suggestedName in the field, in one of the three codings. What the coding lacks is told beforehand; the
/// operator may then choose anew. True if it has been written. What could not be written is told in a box and
/// in the journal; the file that was there before is then still there. Main thread.
bool saveTextWithCodepage(QWidget *parent, const QString &text, const QString &suggestedName = QString());
