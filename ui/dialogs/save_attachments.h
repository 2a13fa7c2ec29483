#pragma once

#include <QString>

class QWidget;

/// Lets the operator save the files that are enclosed in the received \a text, one after the other, each
/// under a name that is safe; one that arrived distorted is named instead. After ten
/// he is asked whether to go on. Main thread.
void saveAttachments(QWidget *parent, const QString &text);
