#pragma once

#include <QLineEdit>

/// A line of limited length, just wide enough for its longest text in figures and for the text that it begins
/// with. The width is that of the font at its construction.
class QLineEdit_Limits : public QLineEdit
{
    Q_OBJECT

public:
    /// \a text is cut to \a maxLength characters.
    QLineEdit_Limits(const QString &text, int maxLength, QWidget *parent = nullptr);
};
