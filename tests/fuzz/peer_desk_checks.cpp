// Chapter of PeerDesk: the rules that hold whatever the peer says.

#include "app/journal_words.h"
#include "app/options.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "procedures/process_cks.h"
#include "procedures/process_direct.h"
#include "procedures/process_skk.h"
#include "records/protocol.h"
#include "tests/fuzz/fuzz.h"
#include "tests/fuzz/peer_desk.h"
#include "text/marks.h"
#include "text/utils.h"

#include <QDir>
#include <QDirIterator>

namespace
{
const QString Today = QStringLiteral("20260731");

const CProcess &procedure()
{
    if (Options.processMode == CKS)
        return ProcessCKS;
    return Options.processMode == SKK ? static_cast<const CProcess &>(ProcessSKK) : ProcessDirect;
}

bool isDayFigure(int figure)
{
    return figure >= 0 && figure < 1000;
}

void checkCall()
{
    Fuzz::check(State.callDirection >= NoDirection && State.callDirection <= Outgoing, "direction");
    Fuzz::check(State.callState >= NoCall && State.callState <= Connected && State.callState != 3,
                "state of the call");
    Fuzz::check(State.AutoModeState >= AutoIdle && State.AutoModeState <= AutoLastPause,
                "state of the automatic send");
    Fuzz::check(State.callDirection == NoDirection || State.connectionActive, "a direction without a call");
    Fuzz::check(State.AutoModeState == AutoIdle || Options.processMode == SKK,
                "calls are of the switched channel");
}

/// The paths that the journal tells behind \a words, also in the line that waits for the running one to end.
QStringList toldBehind(const QString &words)
{
    QStringList paths;
    for (const QString &line : Log.lines.list() + QStringList(Log.cachedText)) {
        const int at = line.indexOf(words);
        if (at >= 0)
            paths << QDir::fromNativeSeparators(line.mid(at + words.size()));
    }
    return paths;
}

QString plain(const QByteArray &content)
{
    return CUtils::removeRegisters(QString::fromUtf8(content));
}

/// From a start mark through an end mark; the centre's note may follow.
void checkWhole(const QByteArray &content)
{
    const QString text = plain(content);
    Fuzz::check(CUtils::indexOfZCZC(text) == 0, "what is stored begins with its mark");
    Fuzz::check(CUtils::indexOfNNNN(text) > 0, "what is stored has its end");
}

/// The files below \a directory, by their paths from there.
QStringList filesBelow(const QString &directory)
{
    QStringList names;
    QDirIterator files(directory, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext())
        names << files.next().mid(directory.size() + 1);
    return names;
}

/// Where a telegram of the queue may have got to, by what stands behind its name there.
bool isPlaceOf(const QString &path, const QString &name)
{
    const QString file = path.section(u'/', -1);
    return file.startsWith(name) && !file.endsWith(QLatin1String(".dat"));
}
} // namespace

void PeerDesk::checkState()
{
    constexpr int MostCommand = CTlgThread::LongestCommand;
    Fuzz::check(State.tlgMode >= ModeUnknown && State.tlgMode <= ModeConfirming, "mode of the channel");
    Fuzz::check(State.fileInProgress || State.currentFile.isEmpty(), "a name without a file");
    Fuzz::check(TlgThread.peerWindow >= 0 && TlgThread.peerWindow <= 30, "window");
    Fuzz::check(TlgThread.txCredit >= 0 && TlgThread.txCredit <= 99, "credit");
    Fuzz::check(!m_stream || m_stream->heldCommand.size() <= MostCommand, "a command ends");
    Fuzz::check(procedure().receiveBuffer.size() <= m_heard, "no more text than bytes");
    checkCall();
    checkCounters();
    checkAccepted();
}

void PeerDesk::checkCounters() const
{
    const bool switched = Options.processMode == SKK; // wraps in the names alone
    for (const int figure : {State.PK_in, State.PK_out})
        Fuzz::check(isDayFigure(figure) || (switched && figure == 1000), "a day's figure");
    if (Options.processMode != CKS)
        Fuzz::check(State.CKS_in == 0 && State.CKS_out == 0, "the centre's figures");
    if (!switched)
        Fuzz::check(State.SKK_in == 0 && State.SKK_out == 0, "the figures of calls");
}

/// A telegram that has just been booked as sent has its number, and its text was on the line.
void PeerDesk::checkAccepted()
{
    const QString former = std::exchange(m_underWay, State.currentFile);
    if (former.isEmpty() || former == m_underWay ||
        m_desk.names(QStringLiteral("out"), former) == QStringList(former))
        return;
    const QStringList booked = m_desk.names(QStringLiteral("out/") + Today, former + u'*');
    if (booked.isEmpty()) // set aside
        return;
    Fuzz::check(booked.size() == 1, "booked once");
    const int begun = State.fileInProgress ? 1 : 0; // the next one, in the same second
    if (Options.processMode == CKS)
        Fuzz::check(State.PK_out == State.CKS_in + begun &&
                        booked.first() == former + u'.' + CUtils::StringNNN(State.CKS_in),
                    "the centre's number");
    else if (former != m_hungUp)
        Fuzz::check(m_wire.contains(QString::fromUtf8(m_queued.value(former))), "what is booked has gone");
}

void PeerDesk::checkBooks() const
{
    for (auto one = m_queued.begin(); one != m_queued.end(); ++one)
        checkQueued(one.key(), one.value());
    checkStored();
    for (const QString &name : filesBelow(m_desk.path()))
        Fuzz::check(!name.contains(QLatin1String(".velda-")), "no draft is left");
    if (Options.processMode == SKK) // saved with the next figure that is
        return;
    const QByteArray saved = m_desk.readText(Options.stateFileName);
    const auto has = [&saved](const char *key, int figure) {
        return saved.contains(QByteArray(key) + '=' + QByteArray::number(figure) + '\n');
    };
    Fuzz::check(saved.isEmpty() ? State.PK_in + State.PK_out == 0
                                : has("PK_in", State.PK_in) && has("PK_out", State.PK_out),
                "the figures outlive the program");
}

void PeerDesk::checkQueued(const QString &name, const QByteArray &content) const
{
    int found = 0;
    for (const QString &path : filesBelow(m_desk.path(QStringLiteral("out")))) {
        if (!isPlaceOf(path, name))
            continue;
        ++found;
        Fuzz::check(m_desk.read(QStringLiteral("out/") + path) == content, "a telegram of the queue is kept");
    }
    Fuzz::check(found == 1, "a telegram of the queue stands in one place");
}

/// What the journal tells as stored is there, and nothing else.
void PeerDesk::checkStored() const
{
    QStringList told = toldBehind(JournalWords::Saved) + toldBehind(JournalWords::SavedInCall);
    for (const QString &path : qAsConst(told))
        checkWhole(m_desk.read(path));
    told += toldBehind(JournalWords::CallSaved);
    for (const QString &name : filesBelow(m_desk.path(QStringLiteral("inp"))))
        Fuzz::check(told.contains(QStringLiteral("inp/") + name), "what is stored is told");
}
