#pragma once

#include <QFont>
#include <QObject>

class QComboBox;
class QSpinBox;

/// The controls for the family and the size of a font. What else belongs to it, such as its weight, stays as
/// it was given. Main thread.
class CFontChoice : public QObject
{
    Q_OBJECT

public:
    /// \a name is that of the list; that of the size has "Size" behind it. \a list takes any text.
    CFontChoice(const QString &name, QComboBox *list);

    [[nodiscard]] QFont chosen() const;
    void setChosen(const QFont &font);

    QComboBox *family;
    QSpinBox *size; ///< points

private:
    QFont m_given;
};
