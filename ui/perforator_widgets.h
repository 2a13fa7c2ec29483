#pragma once

#include <QString>

class QDialog;
class QLabel;
class QPushButton;
class QTextEdit;

// What the two dialogs of the perforator are built from.

/// Shows the state of the perforator, named "state".
[[nodiscard]] QLabel *newPerforatorState();
/// Shows the text of a tape, which cannot be edited; named "text".
[[nodiscard]] QTextEdit *newTapeText();
/// A button that Enter presses only while it is the default one.
[[nodiscard]] QPushButton *newDialogButton(const char *name, const QString &text);
/// Makes \a dialog wide enough for a line of a telegram in its tape text, as far as the screen allows.
void setRoomySize(QDialog *dialog);
