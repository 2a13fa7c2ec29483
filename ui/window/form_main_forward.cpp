// Chapter of FormMain: a received telegram is sent on.

#include "app/options.h"
#include "records/new_telegram.h"
#include "ui/dialogs/re_send_tlg_dialog.h"
#include "ui/form_main.h"
#include "ui/window/shown_telegram.h"

namespace
{
std::optional<QString> forwardToSubscriber(const CReSendTlgDialog &dialog)
{
    CFileInfo record;
    record.number = dialog.number;
    record.trys = Options.sendTrys;
    record.sendTime = dialog.sendTime;
    return queueTelegram(QString(), dialog.text, &record);
}

// On a direct link the queue lists names with a time of sending alone. This one has none: the telegram lies
// ready in the outgoing directory until someone gives it a time.
std::optional<QString> forwardToCentre(const CReSendTlgDialog &dialog)
{
    return queueTelegram(dialog.category,
                         dialog.category + dialog.index + QStringLiteral("\r\n") + dialog.text);
}
} // namespace

void FormMain::inputForward()
{
    CReSendTlgDialog dialog(shownTelegram(inputShown, *inputPage), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    if (Options.processMode == SKK ? forwardToSubscriber(dialog) : forwardToCentre(dialog))
        scanDir();
}
