#include "ui/dialogs/options/editor_options.h"

#include <QCheckBox>
#include <QGroupBox>

CEditorOptions::CEditorOptions()
{
    add(Line{"CategoryList", "Категории телеграмм", &COptions::CategoryList, 255, "Через запятую"});
    addForms();
    endGroup();
    addAll<Flag>({
        {"editorUseShablonFiles", "Использовать шаблоны", &COptions::editorUseShablonFiles,
         "Тексты из папки «Шаблоны»"},
        {"editorEmptyPScriptOnClear", "Очищать и подпись", &COptions::editorEmptyPScriptOnClear,
         "Кнопка «Очистить» убирает и подпись"},
        {"editorAllowManualChangeWordsCountAndTime", "Менять число слов и время вручную",
         &COptions::editorAllowManualChangeWordsCountAndTime},
        {"useOperators", "Выбирать оператора из списка", &COptions::useOperators,
         "Список ведется в меню «Настройки», «Операторы»"},
    });
}

void CEditorOptions::addForms()
{
    beginGroup(QStringLiteral("Виды телеграмм"));
    for (int i = 0; i < int(std::size(Options.interfaceModes)); ++i) {
        auto *box = new QCheckBox(Options.interfaceModes[i].name);
        box->setObjectName(QStringLiteral("interfaceMode%1").arg(i));
        addRow(box);
        bind(box, faceOf(box),
             {[i] { return QVariant(Options.interfaceModes[i].enabled); },
              [i](const QVariant &value) { Options.interfaceModes[i].enabled = value.toBool(); },
              {}});
    }
}
