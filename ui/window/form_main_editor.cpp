// Chapter of FormMain: the editor's tab.

#include "app/options.h"
#include "records/protocol.h"
#include "ui/form_main.h"
#include "ui/roll/protocol_widget.h"
#include "ui/widgets/layouts.h"
#include "ui/widgets/line_edit_blocked.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTabWidget>

namespace
{
const QString NoOperator = QStringLiteral("-");

QPushButton *newPerforatorButton(const QString &text, const char *name)
{
    auto *button = new QPushButton(text);
    button->setObjectName(QString::fromLatin1(name));
    button->setEnabled(false);
    return button;
}

/// A row of the form: its title and its fields, shown or hidden together.
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

void FormMain::buildEditorTab()
{
    struct Field {
        QLineEdit *FormMain::*edit;
        QString COptions::*kept;
        const char *name;
    };
    static const Field fields[] = {
        {&FormMain::editorFrom, &COptions::editorFromString, "editorFrom"},
        {&FormMain::editorPScript, &COptions::editorPScriptString, "editorPScript"},
        {&FormMain::editorFKassa, &COptions::editorFKassaString, "editorFKassa"},
        {&FormMain::editorFFrom, &COptions::editorFFromString, "editorFFrom"},
    };
    for (const Field &field : fields) {
        this->*field.edit = new QLineEdit(Options.*field.kept);
        (this->*field.edit)->setObjectName(QString::fromLatin1(field.name));
    }
    editorWordsCount = new QLineEditBlocked(Options.editorWordsCountShablon);
    editorWordsCount->setObjectName(QStringLiteral("editorWordsCount"));
    connect(editorWordsCount, &QLineEditBlocked::blocked, this, &FormMain::editorTextChanged);
    editorOperator = new QComboBox;
    editorOperator->setObjectName(QStringLiteral("editorOperator"));
    connect(editorOperator, &QComboBox::currentTextChanged, this, &FormMain::editorOperatorListChanged);
    placeEditorRows();
    checkOperatorList();
}

void FormMain::placeEditorRows()
{
    editorRowFrom = newRow(QStringLiteral("Заголовок"),
                           {editorFrom, new QLabel(QStringLiteral(" Слов")), editorWordsCount});
    editorRowFKassa = newRow(QStringLiteral(" Кассовый "), {editorFKassa});
    editorRowFFrom = newRow(QStringLiteral(" Откуда "), {editorFFrom});
    editorRowPScript = newRow(QStringLiteral("Подпись"), {editorPScript});
    editorToPerforatorButton =
        newPerforatorButton(QStringLiteral("Вывести на ПЛ"), "editorToPerforatorButton");
    editorFromPerforatorButton =
        newPerforatorButton(QStringLiteral("Ввести с ПЛ"), "editorFromPerforatorButton");

    auto *buttons = new QHBoxLayout0;
    buttons->addWidget(editorToPerforatorButton);
    buttons->addWidget(editorFromPerforatorButton);
    buttons->addStretch();
    auto *rows = new QVBoxLayoutMS(tabEditor);
    for (QWidget *row : {editorRowFrom, editorRowFKassa, editorRowFFrom})
        rows->addWidget(row);
    rows->addStretch();
    rows->addWidget(editorRowPScript);
    rows->addWidget(editorOperator, 0, Qt::AlignLeft);
    rows->addLayout(buttons);
}

void FormMain::setEditorInterfaceMode()
{
    // Rows of the forms: message, telegram, full telegram, international telegram, REX400.
    struct Rows {
        bool from, kassa, fFrom, pScript;
    };
    static const Rows table[] = {
        {false, false, false, false}, {false, false, false, false}, {true, false, false, true},
        {false, true, true, true},    {true, false, false, true},
    };
    const int form = Options.editorInterfaceMode;
    const Rows shown = form >= 0 && size_t(form) < std::size(table) ? table[form] : Rows{};
    editorRowFrom->setVisible(shown.from);
    editorRowFKassa->setVisible(shown.kassa);
    editorRowFFrom->setVisible(shown.fFrom);
    editorRowPScript->setVisible(shown.pScript);
}

void FormMain::setPrfInterface()
{
    for (QWidget *control : {inputToPerforatorButton, editorToPerforatorButton, editorFromPerforatorButton})
        control->setVisible(Options.usePrf);
    sizeStrip(); // a line more, or less, where the states stand below
}

void FormMain::checkOperatorList()
{
    actionOperators->setVisible(Options.useOperators);
    const bool shown = Options.useOperators && !Options.listOperators.isEmpty();
    editorOperator->setVisible(shown);
    {
        const QSignalBlocker quiet(editorOperator);
        editorOperator->clear();
        editorOperator->addItem(NoOperator);
        editorOperator->addItems(Options.listOperators);
        editorOperator->setCurrentText(Options.lastOperator);
    }
    if (shown && editorOperator->currentText() != Options.lastOperator) {
        Log.addCacheServiceString(QStringLiteral("Оператор не указан "), ProtocolInfo, true);
        Options.lastOperator = NoOperator;
    }
}

void FormMain::editorOperatorListChanged()
{
    if (!Options.useOperators) {
        Options.lastOperator.clear();
        return;
    }
    const QString name = editorOperator->currentText();
    if (name.isEmpty() || name == NoOperator) {
        Log.addCacheServiceString(QStringLiteral("Оператор не указан "), ProtocolInfo, true);
    } else {
        Log.addCacheServiceString(QStringLiteral("Оператор: ") + name, ProtocolInfo, true);
        editorPScript->setText(name);
    }
    Options.lastOperator = name;
}

void FormMain::changedTabWidget(int)
{
    if (tabWidget->currentWidget() == tabProtocol)
        protocolWidget->setFocus();
    editorTextChanged();
}

// A telegram's words and time are counted from its text, for which the tab has no field.
void FormMain::editorTextChanged() {}
