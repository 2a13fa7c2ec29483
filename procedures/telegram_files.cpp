#include "procedures/telegram_files.h"

#include "app/journal_words.h"
#include "app/options.h"
#include "app/ordinary_file.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "procedures/process_direct.h"
#include "text/utils.h"
#include "ui/sound.h"

#include <QDir>

namespace
{
constexpr int LongestText = CProcessDirect::ReceiveLimit; // characters; none longer is received
} // namespace

QString queuePath(const QString &name)
{
    return State.pathOut() + QDir::separator() + name;
}

std::optional<QString> readTelegram(const QString &path)
{
    const std::optional<QByteArray> bytes = readOrdinary(path, LargestTelegramFile);
    if (!bytes)
        return std::nullopt;
    QString text = QString::fromUtf8(bytes->constData());
    if (text.size() > LongestText)
        return std::nullopt;
    return text;
}

std::optional<QString> openQueueFile()
{
    noteEvent(JournalWords::Sending + shownName(State.currentFile));
    std::optional<QString> text = readTelegram(queuePath(State.currentFile));
    if (!text) {
        noteEvent(JournalWords::Unreadable, ProtocolError);
        State.currentFile.clear();
    }
    return text;
}

QString storedForm(const QString &text)
{
    return Options.removeRegisterInInputFiles ? CUtils::removeRegistersAndCheck4(text) : text;
}

void announce(const QString &file, int type)
{
    if (type != CSound::Silent && sound.playingFileName().isEmpty())
        sound.play(file, type);
}

void forgetUnsent()
{
    (void)TlgThread.sendBuffer.mTake();
}

bool printsReceived(int autoPrintMode)
{
    return autoPrintMode == PrintReceived || autoPrintMode == PrintBoth;
}

bool printsSent(int autoPrintMode)
{
    return autoPrintMode == PrintSent || autoPrintMode == PrintBoth;
}

void printTelegram(const QString &text)
{
    noteEvent(QStringLiteral("Печать файла"));
    CUtils::printClearText(text);
}

void noteEvent(const QString &text, ProtocolTypes type)
{
    Log.addCacheServiceString(text, type, true);
}
