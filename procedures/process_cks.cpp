// The terminal's forms, the work of each second and the sending of queue files.

#include "procedures/process_cks.h"

#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "procedures/telegram_files.h"
#include "records/send_model.h"
#include "text/marks.h"
#include "text/utils.h"

namespace
{
constexpr int LastHour = 23;
constexpr int QuietMinute = 55; ///< of the last hour: the centre renumbers around midnight
} // namespace

void CProcessCKS::SendKG(int code)
{
    switch (code) {
    case ReceiptRequest:
        State.askReceiptCountdown = 0;
        askReceipt();
        return;
    case Receipt:
        SendTlgText(serviceMessage(receiptWords(State.PK_in)));
        State.sendReceiptCountdown = 0;
        return;
    case Stop: SendTlgText(serviceMessage(QStringLiteral("СТОП"))); return;
    case Text: SendTlgText(serviceMessage(QStringLiteral("ТЕКСТ"))); return;
    case ConfirmationR: return; // the dialog sends it: it needs the telegram's number and the operator's name
    default: return;
    }
}

QString CProcessCKS::serviceMessage(const QString &words)
{
    return QLatin1Char('|') + Marks::Start + QStringLiteral("КС ") + words + QLatin1Char(' ') + Marks::End;
}

/// \a received telegrams of the centre have come to us.
QString CProcessCKS::receiptWords(int received)
{
    const QString figures = CUtils::StringNNN(received);
    return QStringLiteral("ВАШ ") + figures + QLatin1Char('=') + figures;
}

void CProcessCKS::askReceipt()
{
    SendTlgText(QStringLiteral("|ЗЗ "));
    State.askSent = true;
}

void CProcessCKS::timeCheck1sec()
{
    constexpr int QuietSeconds = 3; // both countdowns stand still while the line talks
    constexpr int CheckEachSeconds = 5;
    if (!State.dayChangeQuiet && Time.time.hour() == LastHour && Time.time.minute() > QuietMinute)
        State.dayChangeQuiet = true;
    if (State.secondsSinceRx >= QuietSeconds) {
        if (State.askReceiptCountdown != 0 && TlgThread.linkUp()) {
            if (--State.askReceiptCountdown == 0 && State.stopCountdown == 0)
                askReceipt();
        } else if (State.sendReceiptCountdown != 0) {
            // Falls without a link too, and then its receipt is lost: the centre will ask again.
            if (--State.sendReceiptCountdown == 0 && State.stopCountdown == 0 && TlgThread.linkUp())
                SendKG(Receipt);
        }
    }
    if (receiveChunks != 0 || State.secondsSinceRx % CheckEachSeconds == 0) {
        receiveChunks = 0;
        checkReceive();
    }
}

void CProcessCKS::checkQuietTime()
{
    const int hour = Time.time.hour();
    const int minute = Time.time.minute();
    if ((hour == LastHour && minute >= QuietMinute) || (hour == 0 && minute == 0))
        return;
    State.dayChangeQuiet = false;
    SendKG(ReceiptRequest);
}

void CProcessCKS::clearOut()
{
    forgetUnsent();
}

void CProcessCKS::checkForSendNewTlg(CTableViewModelItem_Send &item)
{
    if (State.PK_out != State.CKS_in) {
        noteEvent(QStringLiteral("Расхождение счетчиков, отправка  ") + shownName(item.fileName) +
                  QStringLiteral(" отменена"));
        State.askReceiptCountdown = RequestSoon;
        State.setAutomatic(false);
        return;
    }
    if (item.bad)
        return;
    State.currentFile = item.fileName;
    const std::optional<QString> text = openQueueFile();
    if (!text)
        return;
    // The number is spent before a character has gone out, so that no number is used twice after a crash.
    const QString telegram = QLatin1Char('|') + Marks::Start + CUtils::StringNNN(State.incOut()) +
                             QLatin1Char(' ') + *text + QLatin1Char(' ') + Marks::End;
    SendTlgText(telegram);
    State.fileInProgress = true;
    if (printsSent(Options.autoPrintMode))
        printTelegram(telegram);
}
