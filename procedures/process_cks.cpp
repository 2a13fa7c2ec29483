// The terminal's forms, the work of each second and the sending of queue files.

#include "procedures/process_cks.h"

#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "procedures/telegram_files.h"
#include "records/send_model.h"
#include "text/utils.h"

void CProcessCKS::SendKG(int code)
{
    switch (code) {
    case 0:
        State.askReceiptCountdown = 0;
        askReceipt();
        return;
    case 1: {
        const QString figures = CUtils::StringNNN(State.PK_in);
        SendTlgText(QStringLiteral("|ЗЦЗЦ КС ВАШ ") + figures + QLatin1Char('=') + figures +
                    QStringLiteral(" НННН  "));
        State.sendReceiptCountdown = 0;
        return;
    }
    case 2: SendTlgText(QStringLiteral("|ЗЦЗЦ КС СТОП НННН  ")); return;
    case 5: SendTlgText(QStringLiteral("|ЗЦЗЦ КС ТЕКСТ НННН  ")); return;
    default: return; // the button of code 4 sends nothing, and that is meant
    }
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
    if (!State.dayChangeQuiet && Time.time.hour() == 23 && Time.time.minute() > 55)
        State.dayChangeQuiet = true;
    if (State.secondsSinceRx >= QuietSeconds) {
        if (State.askReceiptCountdown != 0 && TlgThread.linkUp()) {
            if (--State.askReceiptCountdown == 0 && State.stopCountdown == 0)
                askReceipt();
        } else if (State.sendReceiptCountdown != 0) {
            // Falls without a link too, and then its receipt is lost: the centre will ask again.
            if (--State.sendReceiptCountdown == 0 && State.stopCountdown == 0 && TlgThread.linkUp())
                SendKG(1);
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
    if ((hour == 23 && minute >= 55) || (hour == 0 && minute == 0))
        return;
    State.dayChangeQuiet = false;
    SendKG(0);
}

void CProcessCKS::clearOut()
{
    (void)TlgThread.sendBuffer.mTake();
}

void CProcessCKS::checkForSendNewTlg(CTableViewModelItem_Send &item)
{
    if (State.PK_out != State.CKS_in) {
        noteEvent(QStringLiteral("Расхождение счетчиков, отправка  ") + shownName(item.fileName) +
                  QStringLiteral(" отменена"));
        State.askReceiptCountdown = 2;
        State.setAutomatic(false);
        return;
    }
    if (item.bad)
        return;
    State.currentFile = item.fileName;
    noteEvent(QStringLiteral("Отправка файла: ") + shownName(State.currentFile));
    const std::optional<QString> text = readTelegram(queuePath(State.currentFile));
    if (!text) {
        noteEvent(QStringLiteral("Невозможно прочитать файл"), ProtocolError);
        State.currentFile.clear();
        return;
    }
    // The number is spent before a character has gone out, so that no number is used twice after a crash.
    const QString telegram = QStringLiteral("|ЗЦЗЦ ") + CUtils::StringNNN(State.incOut()) + QLatin1Char(' ') +
                             *text + QStringLiteral(" НННН  ");
    SendTlgText(telegram);
    State.fileInProgress = true;
    if (printsSent(Options.autoPrintMode))
        printTelegram(telegram);
}
