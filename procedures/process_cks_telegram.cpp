// The storing, printing and forwarding of a numbered telegram.

#include "procedures/process_cks.h"

#include "app/clock.h"
#include "app/journal_words.h"
#include "app/options.h"
#include "app/state.h"
#include "app/whole_file.h"
#include "procedures/telegram_files.h"
#include "records/file_attr.h"
#include "text/utils.h"

#include <QDir>

namespace
{
/// What the header of a telegram gives to the name of its file.
struct Header {
    QString category;
    QString timePart = QStringLiteral("000");
};

/// A telegram is never refused for its header: where no form fits, the time part stays "000". The category
/// is common to the three forms and keeps what a failed attempt has left in it: a header whose figures fit
/// none of them still gives its category.
Header readHeader(const QString &body)
{
    constexpr int TimeAt = 3; // of "ddhhmm", the last three figures
    Header header;
    int day = 0;
    int words = 0;
    QString digits;
    if (CUtils::testTemplate(QStringLiteral("%.3A%2d %6D %d"), body, &header.category, &day, &digits,
                             &words) == 4) {
        header.timePart = digits.mid(TimeAt, 3);
        return header;
    }
    QString date;
    QString time;
    if (CUtils::testTemplate(QStringLiteral("%.3A%3D %3D %d"), body, &header.category, &date, &time,
                             &words) == 4) {
        header.timePart = time;
        return header;
    }
    int index = 0;
    int sameIndex = 0;
    digits.clear();
    // The last number must remain unread: a header with it is none of this form.
    if (CUtils::testTemplate(QStringLiteral("%.3A%3d=%3d %2d %6D %d"), body, &header.category, &index,
                             &sameIndex, &day, &digits, &words) == 5 &&
        index == sameIndex)
        header.timePart = digits.mid(TimeAt, 3);
    return header;
}

/// \a body from behind its header's ")\r\n" to its last character that is neither blank nor a mark.
QString withoutHeader(const QString &body)
{
    const QString headerEnd = QStringLiteral(")\r\n");
    int from = body.indexOf(headerEnd);
    if (from >= 0) {
        from += headerEnd.size();
        while (from < body.size() && body.at(from).isSpace())
            ++from;
    } else {
        from = 0;
    }
    int to = body.size();
    while (to > from && (body.at(to - 1).isSpace() || CUtils::isRegister(body.at(to - 1))))
        --to;
    return body.mid(from, to - from);
}

/// Writes the telegram as a new queue file for another index; the path, or nothing if that failed.
QString forward(const QString &body, const QString &letter)
{
    constexpr int IndexLength = 6;
    if (Options.redirectInputTlg.size() != IndexLength)
        return QString();
    const QString path = queuePath(Time.yyyyMMdd + letter + CUtils::StringNNN(State.EditorN + 1));
    const QString text = QStringLiteral("П") + Options.redirectInputTlg + QStringLiteral("\r\n") +
                         (Options.redirectInputTlgNoHeader ? withoutHeader(body) : body);
    if (!replaceWholeFile(path, text.toUtf8()))
        return QString();
    ++State.EditorN;
    State.Save(); // a restart must not give the name of a waiting file again
    return path;
}
} // namespace

void CProcessCKS::ProcessTlg(int number, const QString &body, const QString &head, const QString &tail)
{
    if (number != State.PK_in + 1) {
        noteEvent(JournalWords::CountersDiffer, ProtocolError);
        if (!State.manualMode)
            SendKG(Stop);
        return;
    }
    storeTelegram(number, body, head + body + tail);
    if (printsReceived(Options.autoPrintMode))
        printTelegram(head + body + tail);
}

void CProcessCKS::storeTelegram(int number, const QString &body, const QString &whole)
{
    const Header header = readHeader(body);
    const QString directory = State.pathInp_forDate(Time.date);
    QDir().mkdir(directory);
    announce(Options.soundOTlgFile, Options.soundOTlgType);
    const QString letter = CUtils::categoryLetter(header.category);
    const QString path = directory + QDir::separator() + Time.yyyyMMdd + letter + header.timePart +
                         QLatin1Char('.') + CUtils::StringNNN(number);
    const QString text = storedForm(whole);
    if (!replaceWholeFile(path, text.toUtf8())) {
        // The counter stays, so the centre's repetition of this number will be taken.
        noteEvent(JournalWords::NotSaved + shownName(path));
        return;
    }
    State.incInp();
    if (Options.markNewFilesInInp)
        CFileAttr(path).setNew();
    QString line = JournalWords::Saved + shownName(path);
    const QString forwarded = forward(body, letter);
    if (!forwarded.isEmpty())
        line += JournalWords::SavedForwarded + forwarded;
    noteEvent(line);
}
