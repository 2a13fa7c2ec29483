// Chapter of FormMain: what is typed into the editor is in a file of the data directory a second later, and
// comes back with the next start, after a kill as after an end in order.

#include "app/options.h"
#include "records/protocol.h"
#include "ui/form_main.h"
#include "ui/pages/editor_page.h"
#include "ui/widgets/line_edit_blocked.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPlainTextEdit>
#include <QSignalBlocker>

#include <iterator>

namespace
{
bool isTemplate(const QString &words)
{
    return words.contains(QLatin1Char('$'));
}

/// What the operator has put there; empty if the program counts.
QString ownOf(const QLineEditBlocked &field)
{
    const bool own = !field.isReadOnly() && Options.editorAllowManualChangeWordsCountAndTime;
    return own || isTemplate(field.text()) ? field.text() : QString();
}

void restoreOwn(QLineEditBlocked *field, const QString &own)
{
    if (own.isEmpty())
        return;
    field->setBlocked(isTemplate(own));
    field->setText(own);
}

void restoreForm(QComboBox *forms, int form)
{
    if (form < 0 || form >= int(std::size(Options.interfaceModes)))
        return;
    const int place = forms->findText(Options.interfaceModes[form].name);
    if (place >= 0)
        forms->setCurrentIndex(place);
}

/// Shown or not: another form may show them.
void restoreLines(const CEditorPage &page, const TelegramFields &fields)
{
    page.category->setCurrentText(fields.category); // which sets the room for the index
    page.series->setCurrentIndex(fields.secondSeries ? 1 : 0);
    const struct {
        QLineEdit *line;
        const QString &text;
    } lines[] = {
        {page.index, fields.index},  {page.from, fields.header},       {page.marks, fields.marks},
        {page.fKassa, fields.kassa}, {page.address, fields.address},   {page.fTo, fields.to},
        {page.fFrom, fields.from},   {page.pScript, fields.signature},
    };
    for (const auto &row : lines)
        row.line->setText(row.text);
    restoreOwn(page.wordsCount, fields.headerWords);
    restoreOwn(page.time, fields.headerTime);
    restoreOwn(page.fWordsCount, fields.fromWords);
    restoreOwn(page.fTime, fields.fromTime);
}

/// Where no cipher can be written any more, it becomes a plain text.
void restoreText(const CEditorPage &page, const Draft &draft)
{
    {
        const QSignalBlocker quiet(page.cryptoMode); // the text has its line ends already
        page.cryptoMode->setChecked(draft.cryptoMode);
    }
    page.text->setPlainText(draft.fields.text);
    if (!page.cryptoMode->isEnabled())
        page.cryptoMode->setChecked(false);
    page.text->moveCursor(QTextCursor::End);
}
} // namespace

void FormMain::watchDraft()
{
    const Draft atFirst = editorDraft();
    if (const std::optional<Draft> left = m_draft.load(); left && *left != atFirst)
        restoreDraft(*left);
    m_draft.settle(editorDraft());
    const auto touch = [this] { m_draftTouched = true; };
    for (const QLineEdit *line : editorPage->findChildren<QLineEdit *>())
        connect(line, &QLineEdit::textChanged, this, touch);
    for (const QComboBox *choice : editorPage->findChildren<QComboBox *>())
        connect(choice, &QComboBox::currentTextChanged, this, touch);
    connect(editorPage->cryptoMode, &QCheckBox::toggled, this, touch);
    connect(editorPage->text, &QPlainTextEdit::textChanged, this, touch);
}

void FormMain::restoreDraft(const Draft &draft)
{
    restoreForm(editorPage->form, draft.form);
    restoreLines(*editorPage, draft.fields);
    restoreText(*editorPage, draft);
    Log.addCacheServiceString(QStringLiteral("В редакторе восстановлен черновик телеграммы"), ProtocolInfo,
                              true);
}

Draft FormMain::editorDraft() const
{
    Draft draft;
    draft.form = Options.editorInterfaceMode;
    draft.cryptoMode = editorPage->cryptoMode->isChecked();
    draft.fields = editorPage->fields();
    draft.fields.headerWords = ownOf(*editorPage->wordsCount);
    draft.fields.headerTime = ownOf(*editorPage->time);
    draft.fields.fromWords = ownOf(*editorPage->fWordsCount);
    draft.fields.fromTime = ownOf(*editorPage->fTime);
    return draft;
}

void FormMain::keepDraft()
{
    const int outages = m_draft.outages(); // once, as another may begin meanwhile
    if (outages != m_draftOutagesTold)
        Log.addCacheServiceString(QStringLiteral("Черновик редактора не записывается на диск"), ProtocolError,
                                  true);
    m_draftOutagesTold = outages;
    if ((m_draftTouched || m_draft.isFailing()) && m_draft.offer(editorDraft()))
        m_draftTouched = false;
}

void FormMain::editorDraftDone()
{
    m_draft.discard(editorDraft());
    m_draftTouched = false;
}
