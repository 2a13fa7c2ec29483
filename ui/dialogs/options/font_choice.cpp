#include "ui/dialogs/options/font_choice.h"

#include "ui/widgets/spin_box_limits.h"

#include <QComboBox>
#include <QFontDatabase>

namespace
{
constexpr int SmallestPoints = 4, LargestPoints = 96;
}

CFontChoice::CFontChoice(const QString &name, QComboBox *list)
    : QObject(list), family(list), size(new QSpinBox_Limits(SmallestPoints, SmallestPoints, LargestPoints))
{
    family->addItems(QFontDatabase().families());
    size->setObjectName(name + QStringLiteral("Size"));
    size->setToolTip(QStringLiteral("Размер в пунктах"));
}

QFont CFontChoice::chosen() const
{
    QFont font = m_given;
    if (!family->currentText().isEmpty())
        font.setFamily(family->currentText());
    font.setPointSize(size->value());
    return font;
}

void CFontChoice::setChosen(const QFont &font)
{
    m_given = font;
    family->setEditText(font.family());
    size->setValue(font.pointSize());
}
