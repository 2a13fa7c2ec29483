#pragma once

#include <QString>

class QWidget;

/// The operator's hand in a scene.
namespace Hand
{
void openTab(QWidget *page);
void close(QWidget *dialog);
void setManual(bool manual);
/// Chooses the editor's form of that name and fills it in.
void write(const QString &form);
/// Opens the options, in manual mode.
QWidget *openOptions();
/// Takes the page so counted; the dialog stays open.
void takeOption(QWidget *options, int page, const QString &name);
} // namespace Hand
