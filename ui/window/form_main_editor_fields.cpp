// Chapter of FormMain: the fields of the editor's tab.

#include "app/ask.h"
#include "app/clock.h"
#include "app/options.h"
#include "text/dropped_signs.h"
#include "text/encodings.h"
#include "text/filters.h"
#include "text/telegram_form.h"
#include "text/telegram_index.h"
#include "ui/form_main.h"
#include "ui/pages/editor_page.h"
#include "ui/widgets/line_edit_blocked.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>

namespace
{
const QString TimeForm = QStringLiteral("dd/MM hhmm");
const QString FarTimeForm = QStringLiteral("dd hhmm");

/// Shows \a counted, unless \a field is the operator's at the moment.
void showCounted(QLineEditBlocked *field, const QString &counted)
{
    const bool operators = !field->isReadOnly() && Options.editorAllowManualChangeWordsCountAndTime;
    if (!operators && field->text() != counted)
        field->setText(counted);
}

/// The signs that the fields on show in \a page have lost, each once.
QString lostBy(const QMap<const QWidget *, QString> &fields, const QWidget *page)
{
    QStringList lists;
    for (auto field = fields.cbegin(); field != fields.cend(); ++field)
        if (field.key()->isVisibleTo(page))
            lists << field.value();
    QStringList signs = lists.join(QLatin1Char(' ')).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    signs.removeDuplicates();
    return signs.join(QLatin1Char(' '));
}

QString spellOutAndClear(const QString &text)
{
    return QStringClearForEditorNonMTK2(nonTlgCharReplace(text));
}
} // namespace

void FormMain::connectEditorFields()
{
    for (const QLineEditBlocked *field :
         {editorPage->wordsCount, editorPage->time, editorPage->fWordsCount, editorPage->fTime})
        connect(field, &QLineEditBlocked::blocked, this, &FormMain::editorTextChanged);
    for (const QLineEdit *line :
         {editorPage->from, editorPage->marks, editorPage->address, editorPage->fKassa, editorPage->fTo,
          editorPage->fFrom, editorPage->pScript, editorPage->index})
        connect(line, &QLineEdit::textChanged, this, &FormMain::tellEditorDropped);
    connect(editorPage->text, &QPlainTextEdit::textChanged, this, &FormMain::editorTextChanged);
    connect(editorPage->text, &QWidget::customContextMenuRequested, this, &FormMain::popUpEditorMenu);
    connect(editorPage->category, &QComboBox::currentTextChanged, this, &FormMain::editorCategoryChanged);
    connect(editorPage->index, &QLineEdit::textChanged, this, &FormMain::editorIndexChanged);
    // It comes before the text has changed.
    connect(
        editorPage->index, &QLineEdit::inputRejected, this,
        [this] { noteIndexCut(QStringLiteral("Лишние знаки индекса не приняты")); }, Qt::QueuedConnection);
    connect(editorPage, &CEditorPage::markChosen, this, &FormMain::slotEditorSMarksCustomMenuTriggered);
    connect(editorPage, &CEditorPage::left, this, &FormMain::editorFieldLeft);
    connect(editorPage->clear, &QPushButton::clicked, this, &FormMain::editorClear);
}

void FormMain::editorTextChanged()
{
    const TelegramFields fields = editorPage->fields();
    const FormRows &shown = editorPage->shownRows();
    // The words of a row that is not on show are counted when it is: a long text is walked through for each.
    if (shown[HeaderRow] && !fields.headerWords.contains(QLatin1Char('$')))
        showCounted(editorPage->wordsCount, QString::number(billedWords(fields, shown)));
    showCounted(editorPage->time, Time.dateTime.toString(TimeForm));
    if (shown[FromRow])
        showCounted(editorPage->fWordsCount, internationalWords(fields, shown));
    showCounted(editorPage->fTime, Time.dateTime.toString(FarTimeForm));
    const bool written = !fields.text.isEmpty();
    for (QPushButton *button : {editorPage->clear, editorPage->print, editorPage->save})
        button->setEnabled(written);
    editorPage->send->setEnabled(written && !editorIsSent());
    showEditorDropped(fields);
}

void FormMain::editorFieldLeft(QWidget *field)
{
    const bool spelled =
        field == editorPage->from || field == editorPage->marks || field == editorPage->address;
    if (spelled)
        cleanEditorLine(static_cast<QLineEdit *>(field), spellOutAndClear);
    else if (field == editorPage->pScript)
        cleanEditorLine(editorPage->pScript, QStringClearForEditorNonMTK2);
    editorTextChanged();
}

void FormMain::cleanEditorLine(QLineEdit *line, QString (*clear)(const QString &))
{
    const QString written = line->text();
    const QString removed = droppedSigns(written, clear);
    if (line->isModified() || !removed.isEmpty()) // a template or a draft fills it too
        noteEditorRemoved(line, removed);
    CEditorPage::replaceLine(line, clear(written));
}

/// What \a field has lost stands until it is filled anew: the operator may be some fields further on before
/// he looks.
void FormMain::noteEditorRemoved(const QWidget *field, const QString &signs)
{
    m_editorRemoved[field] = signs;
    tellEditorDropped();
}

void FormMain::noteEditorDropped(const QString &note)
{
    m_editorNote = note;
    tellEditorDropped();
}

/// It stands until the index is changed.
void FormMain::noteIndexCut(const QString &note)
{
    m_indexNote = note;
    tellEditorDropped();
}

void FormMain::tellEditorDropped()
{
    showEditorDropped(editorPage->fields());
}

/// Beside what has been lost, what would be if the telegram went as it stands.
void FormMain::showEditorDropped(const TelegramFields &fields)
{
    const QString signs =
        signsNotCarried(fields, editorPage->shownRows(), editorPage->cryptoMode->isChecked());
    QStringList told{m_editorNote, m_indexNote};
    if (const QString removed = lostBy(m_editorRemoved, editorPage); !removed.isEmpty())
        told << QStringLiteral("Удалены знаки: ") + removed;
    if (!signs.isEmpty())
        told << QStringLiteral("Не передаются знаки: ") + signs;
    told.removeAll(QString());
    editorPage->dropped->setText(told.join(QLatin1Char('\n')));
    editorPage->dropped->setVisible(!told.isEmpty());
}

void FormMain::editorCategoryChanged()
{
    const bool halves = editorPage->category->currentText().contains(QChar(u'Ц'));
    const int length = halves ? LongestTelegramIndexLength : TelegramIndexLength;
    const QString index = editorPage->index->text();
    editorPage->index->setMaxLength(length);
    if (index.size() > length)
        noteIndexCut(QStringLiteral("Индекс был длиннее: ") + index);
    editorPage->index->setPlaceholderText(halves ? QStringLiteral("000=000") : QStringLiteral("000000"));
    showIndexColour();
}

void FormMain::editorIndexChanged()
{
    noteIndexCut(QString());
    showIndexColour();
}

void FormMain::showIndexColour()
{
    const bool complete =
        telegramIndexIsComplete(editorPage->category->currentText(), editorPage->index->text());
    QPalette colours;
    colours.setColor(QPalette::Base, complete ? Qt::white : Qt::yellow);
    colours.setColor(QPalette::Text, Qt::black);
    editorPage->index->setPalette(colours);
    if (complete)
        editorPage->indexFault->clear();
}

void FormMain::editorClear()
{
    editorPage->time->setText(Time.dateTime.toString(TimeForm));
    editorPage->time->setBlocked(true);
    editorPage->wordsCount->setText(QStringLiteral("0"));
    editorPage->wordsCount->setBlocked(true);
    m_editorRemoved.clear();
    noteEditorDropped(QString());
    editorPage->replaceText(QString());
    if (Options.editorEmptyPScriptOnClear)
        CEditorPage::replaceLine(editorPage->pScript, QString());
    editorTextChanged();
    editorDraftDone();
}

void FormMain::slotEditorSMarksCustomMenuTriggered(const QString &mark)
{
    CEditorPage::replaceLine(editorPage->marks, mark);
    editorTextChanged();
}

void FormMain::popUpEditorMenu(const QPoint &point)
{
    QPlainTextEdit *text = editorPage->text;
    const bool selected = text->textCursor().hasSelection();
    QMenu menu;
    menu.setObjectName(QStringLiteral("editorMenu"));
    menu.addAction(QStringLiteral("Транслитерация"), this, &FormMain::slotEditorTransliterate);
    menu.addAction(QStringLiteral("Вырезать"), text, &QPlainTextEdit::cut)->setEnabled(selected);
    menu.addAction(QStringLiteral("Копировать"), text, &QPlainTextEdit::copy)->setEnabled(selected);
    menu.addAction(QStringLiteral("Вставить"), text, &QPlainTextEdit::paste)
        ->setEnabled(!QApplication::clipboard()->text().isEmpty());
    menu.exec(text->viewport()->mapToGlobal(point));
}

void FormMain::slotEditorTransliterate()
{
    if (ask(this, QStringLiteral("Velda|Редактор"), QStringLiteral("Произвести транслитерацию текста?")) !=
        QMessageBox::Yes)
        return;
    editorPage->replaceText(QStringTransliterate(editorPage->text->toPlainText()));
}
