// Chapter of FormMain: what the buttons of the protocol tab do.

#include "app/options.h"
#include "app/ordinary_file.h"
#include "app/state.h"
#include "procedures/process_cks.h"
#include "procedures/process_skk.h"
#include "procedures/telegram_files.h"
#include "records/protocol.h"
#include "text/utils.h"
#include "ui/dialogs/abonent_number_dialog.h"
#include "ui/dialogs/pick_file.h"
#include "ui/dialogs/string_dialog.h"
#include "ui/dialogs/text_dialog.h"
#include "ui/form_main.h"
#include "ui/roll/protocol_widget.h"

#include <optional>

void FormMain::protocolAccept()
{
    TlgSend(QStringLiteral("@E"));
}

void FormMain::protocolHangup()
{
    ProcessSKK.clearSKKConnection();
}

// A call that comes while the dialog is open has the line: a number would go out into it.
void FormMain::protocolCallNumber()
{
    CAbonentNumberDialog dialog(this);
    connect(&ProcessSKK, &CProcessSKK::updateTlgModeInterface, &dialog,
            [&dialog] { dialog.setDialAllowed(!State.connectionActive || Options.noLockButtonInProtocol); });
    if (dialog.exec(lastCallNumber, QStringLiteral("Номер абонента")) != QDialog::Accepted)
        return;
    lastCallNumber = dialog.number;
    ProcessSKK.callNumber(lastCallNumber);
}

void FormMain::protocolSendWho()
{
    ProcessSKK.SendTlgText(QStringLiteral("#*"));
    protocolWidget->slotProtocolDataChanged();
}

void FormMain::protocolSendAO()
{
    ProcessSKK.SendTlgText(QStringLiteral("#<>") + Options.AO);
    protocolWidget->slotProtocolDataChanged();
}

void FormMain::protocolBell()
{
    TlgSend(QString(12, QChar(0x042E)));
}

void FormMain::protocolSendString()
{
    CStringDialog dialog(this);
    if (dialog.exec(QStringLiteral("Строка для передачи")) == QDialog::Accepted)
        TlgSend(dialog.text);
}

void FormMain::protocolSendText()
{
    CTextDialog dialog(this);
    if (dialog.exec(QStringLiteral("Тест для передачи")) == QDialog::Accepted)
        TlgSend(dialog.text);
}

void FormMain::protocolSendFile()
{
    const QString path = pickFileToOpen(this, QStringLiteral("Отправка файла"), QStringLiteral("Все (*.*)"));
    if (path.isEmpty())
        return;
    Log.addCacheServiceString(QStringLiteral("Передача файла:") + shownName(path), ProtocolInfo, true);
    const std::optional<QByteArray> content = readOrdinary(path, LargestTelegramFile);
    if (!content) {
        Log.addCacheServiceString(QStringLiteral("Невозможно прочитать файл:") + shownName(path),
                                  ProtocolError, true);
        return;
    }
    TlgSend(CUtils::CorrectCodePageToUtf8(*content));
}

void FormMain::slotSendKG0()
{
    ProcessCKS.SendKG(CProcessCKS::ReceiptRequest);
}

void FormMain::slotSendKG1()
{
    protocolWidget->reset();
    ProcessCKS.SendKG(CProcessCKS::Receipt);
}

void FormMain::slotSendKG2()
{
    protocolWidget->reset();
    ProcessCKS.SendKG(CProcessCKS::Stop);
}

void FormMain::slotSendKG4()
{
    ProcessCKS.SendKG(CProcessCKS::ConfirmationR);
}

void FormMain::slotSendKG5()
{
    ProcessCKS.SendKG(CProcessCKS::Text);
}
