#pragma once

#include <QLineEdit>

/// A line for at most \a maxLength characters, just wide enough for them and for the text that it begins
/// with.
class QLineEdit_Limits : public QLineEdit
{
    Q_OBJECT

public:
    QLineEdit_Limits(const QString &text, int maxLength, QWidget *parent = nullptr);
};
