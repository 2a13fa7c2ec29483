#pragma once

#include <QWidget>

/// The one window of the workstation, and the heart of its timing: slot_on_1sec is the main loop.
class FormMain : public QWidget
{
    Q_OBJECT

public:
    explicit FormMain(QWidget *parent = nullptr);

public slots:
    void slot_on_1sec();
};

extern FormMain *mainWindow; ///< null until the entry point has made the window
