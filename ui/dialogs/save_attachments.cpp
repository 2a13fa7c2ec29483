#include "ui/dialogs/save_attachments.h"

#include "app/ask.h"
#include "app/whole_file.h"
#include "records/protocol.h"
#include "text/attachments.h"
#include "ui/dialogs/pick_file.h"
#include "ui/dialogs/save_text.h"

namespace
{
const QString Title = QStringLiteral("Сохранение вложения");
constexpr int OfferedInARow = 10;

// A distorted file is the only thing that stops the operator with a box; the journal tells the rest.
void save(QWidget *parent, const Attachment &attachment, const QString &name)
{
    const QString path = pickFileToSave(parent, QStringLiteral("Сохранение файла"), placeToSave(name),
                                        QStringLiteral("Все (*.*)"));
    if (!path.isEmpty() && !replaceWholeFile(path, attachment.data))
        Log.addCacheServiceString(QStringLiteral("Ошибка записи файла ") + shownName(path), ProtocolError,
                                  true);
}

void offer(QWidget *parent, const Attachment &attachment)
{
    const QString name = safeFileName(attachment.name);
    if (attachment.crcOk)
        save(parent, attachment, name);
    else
        tellError(parent, Title, QStringLiteral("Файл ") + name + QStringLiteral(" искажен"));
}

// Each of them is a box that must be answered, and a hostile text may hold thousands.
bool wantsMore(QWidget *parent, int left)
{
    const QString question = QStringLiteral("Осталось вложений: %1. Продолжить?").arg(left);
    return ask(parent, Title, question) == QMessageBox::Yes;
}
} // namespace

void saveAttachments(QWidget *parent, const QString &text)
{
    const QVector<Attachment> attachments = attachmentsOf(text);
    for (int i = 0; i < attachments.size(); ++i) {
        if (i > 0 && i % OfferedInARow == 0 && !wantsMore(parent, attachments.size() - i))
            return;
        offer(parent, attachments.at(i));
    }
}
