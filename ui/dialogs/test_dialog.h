#pragma once

#include "ui/dialogs/dialog.h"

/// The test of the line: sends the letters Р and Ы, whose codes are each other's inverse, so that every
/// element of the code changes with each character.
class CTestDialog : public CDialog
{
    Q_OBJECT

public:
    explicit CTestDialog(QWidget *parent = nullptr);

public slots:
    /// Puts one full line of pairs and then short lines of one pair each into the send buffer.
    void startTestRY();
    void startTest();
};
