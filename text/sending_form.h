#pragma once

#include <QString>

/// A telegram of the editor as the line procedure wants it, and what the operator is asked before it goes.
/// Any thread.
struct SendingForm {
    QString title; ///< of the dialog
    QString text;  ///< between the marks that the procedure needs
    // On switched channels
    QString number;             ///< to propose; may be empty
    bool centreOffered = false; ///< the telegram may go through the centre
    bool centreChosen = false;
};

/// The form for Options.processMode of \a text, which the editor has composed. \a hasCategory tells whether
/// it begins with a category and an index, as the centre wants it.
[[nodiscard]] SendingForm sendingForm(const QString &text, bool hasCategory);
