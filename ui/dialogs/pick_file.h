#pragma once

#include <QString>

#include <functional>

class QWidget;

/// Lets the operator choose a file to open; empty if he chose none. Every such choice of the program comes
/// through here, so that a test can answer it beforehand. Main thread.
[[nodiscard]] QString pickFileToOpen(QWidget *parent, const QString &title, const QString &filter);

/// What pickFileToOpen() calls. A test puts its own function here and restores the former one.
extern std::function<QString(QWidget *parent, const QString &title, const QString &filter)> pickFileHandler;
