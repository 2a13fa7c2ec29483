#pragma once

#include <QColor>
#include <QToolButton>

#include <functional>

/// A button that shows a colour and lets the operator choose another one under \a title. Main thread.
class CColourButton : public QToolButton
{
    Q_OBJECT

public:
    CColourButton(const char *name, const QString &title, QWidget *parent = nullptr);

    [[nodiscard]] QString colour() const { return m_colour; } ///< "#rrggbb", or what it was given
    void setColour(const QString &colour);

private:
    void choose();

    QString m_title;
    QString m_colour;
};

/// Lets the operator choose a colour; invalid if he chose none. A test puts its own function here and
/// restores the former one.
extern std::function<QColor(QWidget *parent, const QString &title, const QColor &present)> pickColourHandler;
