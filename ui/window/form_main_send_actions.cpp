// Chapter of FormMain: what the operator does with the selected file of the queue.

#include "app/clock.h"
#include "app/options.h"
#include "procedures/queue_file.h"
#include "procedures/telegram_files.h"
#include "ui/dialogs/abonent_number_dialog.h"
#include "ui/form_main.h"
#include "ui/pages/send_page.h"
#include "ui/widgets/file_table.h"

#include <QPushButton>

void FormMain::sendDeleteFile()
{
    const QString path = sendSelectedPath();
    if (path.isEmpty())
        return;
    if (sendPage->remove->hasFocus()) // which it loses: the next key must not press another button
        (sendBadPath.isEmpty() ? sendPage->tableSend : sendPage->tableSendBad)->setFocus();
    removeQueueFile(path);
    scanDir();
}

void FormMain::sendReSendFile()
{
    const QString path = sendSelectedPath();
    if (path.isEmpty())
        return;
    if (Options.processMode == CKS) {
        const QString restored = restoreFailedFile(path);
        if (!restored.isEmpty()) {
            sendBadPath.clear();
            sendPath = restored;
        }
    } else if (Options.processMode == SKK) {
        changeQueueRecord(path, [](CFileInfo &record) {
            record.trys = Options.sendTrys;
            record.sendTime = Time.dateTime;
        });
    }
    scanDir();
}

void FormMain::sendPauseFile()
{
    const QString path = sendSelectedPath();
    if (path.isEmpty())
        return;
    changeQueueRecord(path, [](CFileInfo &record) { record.trys = 0; });
    scanDir();
}

// The dialog's loop lets the line go on: what may be changed before may be under way after it.
void FormMain::slotSendChangeAbonentNumber()
{
    const QString path = sendSelectedPath();
    if (path.isEmpty() || recordsAreLocked() || isUnderWay(path))
        return;
    CFileInfo former;
    (void)former.Load(path);
    CAbonentNumberDialog dialog(this);
    if (dialog.exec(former.number, QStringLiteral("Номер абонента")) != QDialog::Accepted)
        return;
    if (recordsAreLocked() || isUnderWay(path))
        return noteEvent(QStringLiteral("Идет передача, номер абонента не изменен: ") + shownName(path),
                         ProtocolError);
    QString number = dialog.number;
    number.remove(QLatin1Char('|')); // which parts the fields of the record
    changeQueueRecord(path, [&number](CFileInfo &record) { record.number = number; });
    scanDir();
}

void FormMain::slotSendResetSendTime()
{
    const QString path = sendSelectedPath();
    if (path.isEmpty() || recordsAreLocked())
        return;
    changeQueueRecord(path, [](CFileInfo &record) { record.sendTime = Time.dateTime; });
    scanDir();
}
