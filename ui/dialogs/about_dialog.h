#pragma once

#include "ui/dialogs/dialog.h"

/// What the program is, with its version.
class CAboutDialog : public CDialog
{
    Q_OBJECT

public:
    explicit CAboutDialog(QWidget *parent = nullptr);
};
