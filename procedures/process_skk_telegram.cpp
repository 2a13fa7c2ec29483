// Telegrams that come inside a connection.

#include "procedures/process_skk.h"

#include "app/clock.h"
#include "app/journal_words.h"
#include "app/state.h"
#include "app/whole_file.h"
#include "procedures/telegram_files.h"
#include "records/file_attr.h"
#include "text/marks.h"
#include "text/utils.h"

#include <QDir>
#include <QFileInfo>

namespace
{
constexpr int NumbersOfADay = 1000;

QString nameOf(const QString &directory, int number)
{
    return directory + QDir::separator() + Time.yyyyMMdd + QLatin1Char('_') + CUtils::StringNNN(number);
}

/// The number at or behind \a number under which nothing is stored. A process that died has left the counter
/// behind its telegrams, and the next one must not take the place of one of them.
int freeNumber(const QString &directory, int number)
{
    for (int passed = 0; passed < NumbersOfADay; ++passed)
        if (!QFileInfo::exists(nameOf(directory, number + passed)))
            return number + passed;
    return number;
}
} // namespace

/// The telegram stands from \a i up to \a end, both marks included.
void CProcessSKK::takeTelegram(int i, int end)
{
    constexpr int RejectionCut = 6; // characters; the rest of the message is scanned on
    const QString telegram = receiveBuffer.mid(i, end - i);
    if (CUtils::removeRegisters(telegram) ==
        Marks::Start + QStringLiteral("ПРОВЕРЬТЕ СВОЙ АВТООТВЕТ ") + Marks::End) {
        forgetUnsent();
        clearSKKConnection();
        return receiveBuffer.removeHead(i + RejectionCut);
    }
    receiveBuffer.removeHead(end);
    saveTelegram(telegram);
    if (State.ignoreAO)
        setIgnoreAO(false);
}

void CProcessSKK::saveTelegram(const QString &telegram)
{
    noteEvent(JournalWords::Found);
    const QString directory = State.pathInp_forDate(Time.date);
    QDir().mkdir(directory);
    announce(Options.soundOTlgFile, Options.soundOTlgType);
    const int number = freeNumber(directory, State.PK_in);
    const QString name = nameOf(directory, number);
    const QString text = storedForm(telegram);
    if (text.isEmpty() || !replaceWholeFile(name, text.toUtf8()))
        return noteEvent(JournalWords::NotSavedInCall + name, ProtocolError);
    State.PK_in = number + 1; // wraps in the name alone; reaches the disk with the next Save
    if (Options.markNewFilesInInp)
        CFileAttr(name).setNew();
    noteEvent(JournalWords::SavedInCall + name);
}
