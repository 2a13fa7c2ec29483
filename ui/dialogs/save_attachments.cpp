#include "ui/dialogs/save_attachments.h"

#include "app/ask.h"
#include "app/whole_file.h"
#include "records/protocol.h"
#include "text/attachments.h"
#include "ui/dialogs/pick_file.h"
#include "ui/dialogs/save_text.h"

namespace
{
// A distorted file is the only thing that stops the operator with a box; the journal tells the rest.
void save(QWidget *parent, const Attachment &attachment, const QString &name)
{
    const QString path = pickFileToSave(parent, QStringLiteral("Сохранение файла"), placeToSave(name),
                                        QStringLiteral("Все (*.*)"));
    if (!path.isEmpty() && !replaceWholeFile(path, attachment.data))
        Log.addCacheServiceString(QStringLiteral("Ошибка записи файла ") + shownName(path), ProtocolError,
                                  true);
}
} // namespace

void saveAttachments(QWidget *parent, const QString &text)
{
    for (const Attachment &attachment : attachmentsOf(text)) {
        const QString name = safeFileName(attachment.name);
        if (attachment.crcOk)
            save(parent, attachment, name);
        else
            tellError(parent, QStringLiteral("Сохранение вложения"),
                      QStringLiteral("Файл ") + name + QStringLiteral(" искажен"));
    }
}
