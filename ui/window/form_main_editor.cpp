// Chapter of FormMain: the editor's tab.

#include "app/options.h"
#include "records/protocol.h"
#include "text/dropped_signs.h"
#include "text/filters.h"
#include "text/mtk2.h"
#include "text/telegram_form.h"
#include "ui/form_main.h"
#include "ui/pages/archive_page.h"
#include "ui/pages/editor_page.h"
#include "ui/pages/protocol_page.h"
#include "ui/roll/protocol_widget.h"
#include "ui/widgets/line_edit_blocked.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTabWidget>

#include <algorithm>
#include <iterator>

namespace
{
const QString NoOperator = QStringLiteral("-");

/// Beside the characters of the code a template may hold its marks.
QString clearForEditor(const QString &text)
{
    return QStringClearNonMTK2ConverNLSkipChars(text, QStringLiteral("<[{}$"));
}
} // namespace

QWidget *FormMain::buildEditorPage()
{
    editorPage = new CEditorPage;
    editorPage->from->setText(Options.editorFromString);
    editorPage->pScript->setText(Options.editorPScriptString);
    editorPage->fKassa->setText(Options.editorFKassaString);
    editorPage->fFrom->setText(Options.editorFFromString);
    editorPage->wordsCount->setText(Options.editorWordsCountShablon);
    connect(editorPage->operators, &QComboBox::currentTextChanged, this,
            &FormMain::editorOperatorListChanged);
    editorPage->text->setFont(Options.tlgFont);
    // A text that is stored without register marks cannot bring a cipher back.
    editorPage->cryptoMode->setEnabled(!Options.removeRegisterInInputFiles);
    connect(editorPage->cryptoMode, &QCheckBox::toggled, this, &FormMain::setEditorCryptoMode);
    connect(editorPage->form, &QComboBox::currentTextChanged, this,
            &FormMain::editorComboBoxInterfaceModeChanged);
    editorPage->setCategories(Options.CategoryList.split(QLatin1Char(',')));
    editorPage->setMarks(Options.serviceMarks.split(QLatin1Char('|'), Qt::SkipEmptyParts));
    connectEditorSending();
    connectEditorFields();
    editorCategoryChanged();
    editorTextChanged();
    checkOperatorList();
    connectEditorFiles();
    return editorPage;
}

QString FormMain::getEditorText() const
{
    QString text = editorPage->text->toPlainText();
    if (editorPage->cryptoMode->isChecked())
        text.replace(QLatin1Char('<'), QLatin1Char('\r'));
    else
        text.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
    return text;
}

void FormMain::setEditorText(QString text)
{
    noteEditorRemoved(editorPage->text, droppedSigns(text, clearForEditor));
    text = clearForEditor(text);
    if (editorPage->cryptoMode->isChecked())
        text.replace(QLatin1Char('\r'), QLatin1Char('<'));
    else
        text.remove(QLatin1Char('\r'));
    if (Options.nationalLanguageUse != NoNationalLanguage)
        unmaskNationalLanguage(text);
    editorPage->replaceText(upperMTK2(text));
    editorPage->text->moveCursor(QTextCursor::Start);
}

void FormMain::openInEditor(const QString &text)
{
    setEditorText(text);
    tabWidget->setCurrentWidget(editorPage);
    editorPage->text->setFocus();
}

void FormMain::setEditorCryptoMode()
{
    QString text = editorPage->text->toPlainText();
    if (editorPage->cryptoMode->isChecked())
        text.replace(QLatin1Char('\n'), QStringLiteral("<\n"));
    else
        text.replace(QStringLiteral("<\n"), QStringLiteral("\n"));
    editorPage->replaceText(text);
}

void FormMain::checkEditorInterfaceMode()
{
    const QSignalBlocker quiet(editorPage->form);
    editorPage->form->clear();
    for (const EditorInterfaceMode &mode : Options.interfaceModes)
        if (mode.enabled && (mode.procedures >> Options.processMode & 1) != 0)
            editorPage->form->addItem(mode.name);
    const int stored = Options.editorInterfaceMode;
    const bool known = stored >= 0 && stored < int(std::size(Options.interfaceModes));
    const int place = known ? editorPage->form->findText(Options.interfaceModes[stored].name) : -1;
    if (place < 0)
        Options.editorInterfaceMode = Options.processMode == CKS ? FullForm : MessageForm;
    const QString &name = Options.interfaceModes[Options.editorInterfaceMode].name;
    editorPage->form->setCurrentIndex(editorPage->form->findText(name));
    setEditorInterfaceMode();
}

void FormMain::editorComboBoxInterfaceModeChanged()
{
    const auto *first = std::begin(Options.interfaceModes);
    const auto *end = std::end(Options.interfaceModes);
    const auto *chosen = std::find_if(first, end, [this](const EditorInterfaceMode &mode) {
        return mode.name == editorPage->form->currentText();
    });
    if (chosen != end)
        Options.editorInterfaceMode = int(chosen - first);
    setEditorInterfaceMode();
}

void FormMain::setEditorInterfaceMode()
{
    editorPage->showRows(rowsOfForm(Options.editorInterfaceMode));
    editorTextChanged();
}

void FormMain::setPrfInterface()
{
    for (QWidget *control : {inputPage->toPerforator, editorPage->toPerforator, editorPage->fromPerforator})
        control->setVisible(Options.usePrf);
    for (QWidget *control : {inputPage->saveAttach, editorPage->attach})
        control->setVisible(Options.enableAttachFiles);
    sizeStrip(); // a line more, or less, where the states stand below
}

void FormMain::checkOperatorList()
{
    QComboBox *operators = editorPage->operators;
    actionOperators->setVisible(Options.useOperators);
    const bool shown = Options.useOperators && !Options.listOperators.isEmpty();
    operators->setVisible(shown);
    {
        const QSignalBlocker quiet(operators);
        operators->clear();
        operators->addItem(NoOperator);
        operators->addItems(Options.listOperators);
        operators->setCurrentText(Options.lastOperator);
    }
    if (shown && operators->currentText() != Options.lastOperator) {
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
    const QString name = editorPage->operators->currentText();
    if (name.isEmpty() || name == NoOperator) {
        Log.addCacheServiceString(QStringLiteral("Оператор не указан "), ProtocolInfo, true);
    } else {
        Log.addCacheServiceString(QStringLiteral("Оператор: ") + name, ProtocolInfo, true);
        editorPage->pScript->setText(name);
    }
    Options.lastOperator = name;
}

void FormMain::changedTabWidget(int)
{
    if (tabWidget->currentWidget() == protocolPage)
        protocolWidget->setFocus();
    editorTextChanged();
}
