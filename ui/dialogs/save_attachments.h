#pragma once

#include <QString>

class QWidget;

/// Lets the operator save the files that are enclosed in the received \a text, one after the other, each
/// under a name that is safe; one that arrived distorted is named instead. Main thread.
void saveAttachments(QWidget *parent, const QString &text);
