#include "ui/pages/editor_page.h"

#include "ui/widgets/layouts.h"
#include "ui/widgets/line_edit_blocked.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextOption>

namespace
{
template <class Control> Control *named(Control *control, const char *name)
{
    control->setObjectName(QString::fromLatin1(name));
    return control;
}

QPushButton *newPerforatorButton(const QString &text, const char *name)
{
    auto *button = named(new QPushButton(text), name);
    button->setEnabled(false);
    return button;
}

QWidget *newRow(const QString &title, std::initializer_list<QWidget *> fields)
{
    auto *row = new QWidget;
    auto *line = new QHBoxLayout0(row);
    line->addWidget(new QLabel(title));
    for (QWidget *field : fields)
        line->addWidget(field);
    return row;
}
} // namespace

CEditorPage::CEditorPage(QWidget *parent)
    : QWidget(parent),
      cryptoMode(named(new QCheckBox(QStringLiteral("Режим криптограммы")), "editorCryptoMode")),
      text(named(new QPlainTextEdit, "editorText")), from(named(new QLineEdit, "editorFrom")),
      pScript(named(new QLineEdit, "editorPScript")), fKassa(named(new QLineEdit, "editorFKassa")),
      fFrom(named(new QLineEdit, "editorFFrom")), wordsCount(named(new QLineEditBlocked, "editorWordsCount")),
      operators(named(new QComboBox, "editorOperator")),
      rowFrom(newRow(QStringLiteral("Заголовок"), {from, new QLabel(QStringLiteral(" Слов")), wordsCount})),
      rowPScript(newRow(QStringLiteral("Подпись"), {pScript})),
      rowFKassa(newRow(QStringLiteral(" Кассовый "), {fKassa})),
      rowFFrom(newRow(QStringLiteral(" Откуда "), {fFrom})),
      toPerforator(newPerforatorButton(QStringLiteral("Вывести на ПЛ"), "editorToPerforatorButton")),
      fromPerforator(newPerforatorButton(QStringLiteral("Ввести с ПЛ"), "editorFromPerforatorButton"))
{
    setObjectName(QStringLiteral("tabEditor"));
    text->setTabChangesFocus(true);
    // Breaking a long run of letters anywhere would take seconds: the time grows with the square of its
    // length.
    text->setWordWrapMode(QTextOption::WordWrap);
    placeRows();
}

void CEditorPage::placeRows()
{
    auto *buttons = new QHBoxLayout0;
    buttons->addWidget(toPerforator);
    buttons->addWidget(fromPerforator);
    buttons->addStretch();
    auto *rows = new QVBoxLayoutMS(this);
    rows->addWidget(cryptoMode, 0, Qt::AlignLeft);
    for (QWidget *row : {rowFrom, rowFKassa, rowFFrom})
        rows->addWidget(row);
    rows->addWidget(text, 1);
    rows->addWidget(rowPScript);
    rows->addWidget(operators, 0, Qt::AlignLeft);
    rows->addLayout(buttons);
}
