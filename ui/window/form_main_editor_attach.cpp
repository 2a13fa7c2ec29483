// Chapter of FormMain: files that are enclosed in the editor's text.

#include "app/ask.h"
#include "app/options.h"
#include "app/ordinary_file.h"
#include "records/protocol.h"
#include "text/attachments.h"
#include "text/line_time.h"
#include "ui/dialogs/pick_file.h"
#include "ui/form_main.h"
#include "ui/pages/editor_page.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextCursor>

#include <optional>

namespace
{
constexpr qint64 LargestAttachment = 4LL * 1024 * 1024; ///< bytes; days on the fastest line
constexpr qint64 LongSeconds = 600;                     ///< on the line without a question

const QString Title = QStringLiteral("Включение файла на передачу");

bool agreesToLineTime(QWidget *parent, qint64 characters)
{
    const qint64 seconds = lineSeconds(characters, Options.tlgBaud);
    if (seconds <= LongSeconds)
        return true;
    const QString question =
        QStringLiteral("Для передачи файла со скоростью %1 бод потребуется %2. Добавить вложение?");
    return ask(parent, Title, question.arg(Options.tlgBaud).arg(durationInWords(seconds))) ==
           QMessageBox::Yes;
}

bool agreesToShortName(QWidget *parent, const QString &name)
{
    return attachmentName(name).size() >= ShortestAttachmentName ||
           ask(parent, Title,
               QStringLiteral("Имя файла короче четырех знаков: получатель не сможет его сохранить. "
                              "Добавить вложение?")) == QMessageBox::Yes;
}

/// Behind the text, where the operator neither sees nor types; it can be undone.
void appendText(QPlainTextEdit &editor, const QString &text)
{
    QTextCursor place = editor.textCursor();
    place.setKeepPositionOnInsert(true);
    const int scrolled = editor.verticalScrollBar()->value();
    QTextCursor end(editor.document());
    end.movePosition(QTextCursor::End);
    end.insertText(text);
    place.setKeepPositionOnInsert(false);
    editor.setTextCursor(place);
    editor.verticalScrollBar()->setValue(scrolled);
}
} // namespace

void FormMain::editorAttach()
{
    if (!Options.enableAttachFiles)
        return;
    const QString path = pickFileToOpen(this, Title, QStringLiteral("Все (*.*)"));
    if (path.isEmpty())
        return;
    const std::optional<QByteArray> content = readOrdinary(path, LargestAttachment);
    if (!content) {
        Log.addCacheServiceString(QStringLiteral("Невозможно прочитать файл:") + shownName(path),
                                  ProtocolError, true);
        return;
    }
    const QString name = QFileInfo(path).fileName();
    QString block = attachmentBlock(name, *content);
    if (!agreesToShortName(this, name) || !agreesToLineTime(this, block.size()))
        return;
    const bool cipher = editorPage->cryptoMode->isChecked();
    block.replace(QLatin1Char('\r'), cipher ? QStringLiteral("<") : QString());
    appendText(*editorPage->text, block);
}
