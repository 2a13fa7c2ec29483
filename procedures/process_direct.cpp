#include "procedures/process_direct.h"

#include "app/clock.h"
#include "app/journal_words.h"
#include "app/options.h"
#include "app/state.h"
#include "app/whole_file.h"
#include "link/tlg_thread.h"
#include "procedures/telegram_files.h"
#include "records/send_model.h"
#include "text/marks.h"
#include "text/mtk2.h"
#include "text/utils.h"

#include <QDir>

#include <optional>

namespace
{
constexpr int NoiseLimit = 256; // a buffer without start mark may be so long
constexpr int NoiseKept = 200;

/// A file that the operator wants under guaranteed transfer has "g" as its ninth character.
bool isProtectedName(const QString &name)
{
    return name.size() > 8 && name[8] == QLatin1Char('g');
}
} // namespace

void CProcessDirect::processReceive(QString text)
{
    receiveBuffer.append(text);
    if (!m_sought.holds(receiveBuffer) && !findStart())
        return;
    const int end = findEnd();
    if (end < 0)
        return giveUpEndless();
    const QString telegram = receiveBuffer.left(end + Marks::EndLength);
    // A pair of marks on a single line is talk about marks, not a telegram.
    if (telegram.contains(QLatin1Char('\r')) || telegram.contains(QLatin1Char('\n')))
        takeTelegram(telegram);
    receiveBuffer.removeHead(end + Marks::EndLength);
}

/// Cuts the noise in front of the start mark. False if there is none.
bool CProcessDirect::findStart()
{
    const int start = CUtils::indexOfZCZC(receiveBuffer);
    if (start >= 0)
        receiveBuffer.removeHead(start);
    else if (receiveBuffer.size() > NoiseLimit)
        receiveBuffer.keepTail(NoiseKept);
    return start >= 0;
}

/// Position of the end mark or -1. What an earlier call has searched is not searched again, so that a long
/// telegram that comes in small pieces costs no more than a whole one.
int CProcessDirect::findEnd()
{
    const int from = m_sought.in(receiveBuffer);
    const int end = CUtils::indexOfNNNN(receiveBuffer.mid(from));
    // The last characters may be the first ones of a mark.
    m_sought.reach(receiveBuffer, qMax(0, receiveBuffer.size() - (Marks::EndLength - 1)));
    return end < 0 ? end : from + end;
}

/// Keeps the memory bounded when an end mark never comes: goes on with the next start mark, if the later
/// half of the buffer has one.
void CProcessDirect::giveUpEndless()
{
    if (receiveBuffer.size() <= ReceiveLimit)
        return;
    noteEvent(JournalWords::Endless, ProtocolError);
    receiveBuffer.removeHead(ReceiveLimit / 2);
    (void)findStart();
}

void CProcessDirect::takeTelegram(const QString &telegram)
{
    saveText(telegram);
    // The confirmation tells of the telegram's arrival; it goes out whether or not the file was written.
    if (Options.SendConfirmation)
        SendTlgText(QStringLiteral("\r\n") + Marks::Start + QStringLiteral("СООБЩЕНИЕ ПРИНЯТО ") +
                    Marks::End + Time.hhmm + QStringLiteral("\r\n"));
    if (printsReceived(Options.autoPrintMode))
        printTelegram(telegram);
}

bool CProcessDirect::saveText(QString text)
{
    const QString directory = State.pathInp() + QDir::separator() + Time.yyyyMMdd;
    const QString path = directory + QDir::separator() + Time.yyyyMMdd + QLatin1Char('_') + Time.hhmmss;
    QDir().mkpath(directory);
    text = storedForm(text);
    if (text.isEmpty() || !replaceWholeFile(path, text.toUtf8())) {
        noteEvent(JournalWords::NotSaved + path);
        return false;
    }
    State.incInp();
    noteEvent(JournalWords::Saved + path);
    return true;
}

void CProcessDirect::checkForSendNewTlg(CTableViewModelItem_Send &item)
{
    if (State.fileInProgress)
        return;
    State.currentFile = item.fileName;
    const std::optional<QString> text = openQueueFile();
    if (!text)
        return;
    State.incOut();
    if (Options.enableProtectedSend && isProtectedName(State.currentFile))
        TlgThread.startProtectedMode();
    SendTlgText(*text);
    State.fileInProgress = true;
    if (!text->isEmpty())
        return;
    noteEvent(QStringLiteral("Файл пуст, передавать нечего"));
    fileSended();
    State.scanCountdown = CState::ScanOnNextTick;
}

bool CProcessDirect::fileSended()
{
    // Guaranteed transfer ends whatever the option says by now, so that it never outlives its file.
    if (isProtectedName(State.currentFile))
        TlgThread.stopProtectedMode();
    const QString path = queuePath(State.currentFile);
    if (printsSent(Options.autoPrintMode))
        if (const std::optional<QString> text = readTelegram(path))
            printTelegram(*text);
    // The queue must not run on with a file that cannot leave it: it would go out again and again.
    if (!CUtils::renameFile(path, State.pathOut_currentDate(), State.currentFile, false))
        State.setAutomatic(false);
    State.currentFile.clear();
    State.fileInProgress = false;
    return true;
}

void CProcessDirect::SendTlgText(QString text)
{
    if (text.isEmpty())
        return;
    if (Options.nationalLanguageUse != NoNationalLanguage)
        maskNationalLanguage(text);
    TlgThread.sendBuffer.mAppend(upperMTK2(text));
}
