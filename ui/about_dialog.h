#pragma once

#include <QDialog>

/// What the program is, with its version.
class CAboutDialog : public QDialog
{
    Q_OBJECT

public:
    explicit CAboutDialog(QWidget *parent = nullptr);
};
