#include "ui/dialogs/options/look_options.h"

#include "ui/dialogs/options/colour_button.h"
#include "ui/dialogs/options/font_choice.h"
#include "ui/dialogs/options/option_faults.h"

#include <QComboBox>
#include <QGroupBox>
#include <QToolButton>

namespace
{
struct ColourRow {
    const char *name, *label, *title, *usual;
    QString COptions::*field;
};

const ColourRow colourRows[] = {
    {"LogColor_Foreground", "Фон", "Выберите цвет фона", "#0000C0", &COptions::LogColor_Foreground},
    {"LogColor_RX", "Прием", "Выберите цвет приема", "#F0F0F0", &COptions::LogColor_RX},
    {"LogColor_TX", "Передача", "Выберите цвет передачи", "#F0F000", &COptions::LogColor_TX},
    {"LogColor_Info", "Информация", "Выберите цвет информации", "#00F000", &COptions::LogColor_Info},
};
} // namespace

CLookOptions::CLookOptions()
{
    add(Line{"mainTitle", "Заголовок окна", &COptions::mainTitle, 255, "Пусто: обычный"});
    add(Flag{"saveWindowPos", "Запоминать место окон", &COptions::saveWindowPos});
    add(Number{"fontSizeCorrect", "Увеличить буквы, пунктов", &COptions::fontSizeCorrect, -6, 48,
               "Во всех окнах; меньше нуля: уменьшить"});
    addColours();
    addFonts();
}

void CLookOptions::addColours()
{
    beginGroup(QStringLiteral("Цвета протокола"));
    for (const ColourRow &row : colourRows) {
        auto *button = new CColourButton(row.name, QString::fromUtf8(row.title));
        addRow(QString::fromUtf8(row.label), {button});
        bind(button,
             {[button] { return QVariant(button->colour()); },
              [button](const QVariant &value) { button->setColour(value.toString()); }},
             settingOf(row.field));
        m_colours << button;
    }
    addRow(newButton(QStringLiteral("resetColours"), QStringLiteral("Сбросить цвета по умолчанию"), QString(),
                     [this] { resetColours(); }));
}

void CLookOptions::resetColours()
{
    for (int i = 0; i < m_colours.size(); ++i)
        m_colours.at(i)->setColour(QString::fromLatin1(colourRows[i].usual));
}

void CLookOptions::addFonts()
{
    beginGroup(QStringLiteral("Шрифты"));
    addFont("protocolFont", QStringLiteral("Протокол"), &COptions::protocolFont);
    addFont("tlgFont", QStringLiteral("Телеграммы"), &COptions::tlgFont);
}
