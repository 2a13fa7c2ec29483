#include "ui/dialogs/options/colour_button.h"

#include <QColorDialog>
#include <QIcon>
#include <QPixmap>

namespace
{
QColor pickColour(QWidget *parent, const QString &title, const QColor &present)
{
    return QColorDialog::getColor(present, parent, title);
}
} // namespace

std::function<QColor(QWidget *, const QString &, const QColor &)> pickColourHandler = pickColour;

CColourButton::CColourButton(const char *name, const QString &title, QWidget *parent)
    : QToolButton(parent), m_title(title)
{
    setObjectName(QString::fromLatin1(name));
    setToolTip(title);
    setFocusPolicy(Qt::StrongFocus);
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    connect(this, &QToolButton::clicked, this, &CColourButton::choose);
}

void CColourButton::setColour(const QString &colour)
{
    m_colour = colour;
    QPixmap swatch(iconSize());
    swatch.fill(QColor(colour));
    setIcon(QIcon(swatch));
    setText(colour);
}

void CColourButton::choose()
{
    const QColor chosen = pickColourHandler(this, m_title, QColor(m_colour));
    if (chosen.isValid())
        setColour(chosen.name());
}
