#include "app/state.h"

#include "app/clock.h"
#include "app/ini_file.h"
#include "app/journal_words.h"
#include "app/options.h"
#include "records/protocol.h"

#include <QDir>
#include <QSettings>

namespace
{
constexpr int CounterModulus = 1000;
constexpr int ScanAfterSwitch = 3;     // ticks from a change to automatic or manual to the next scan
constexpr int RequestAfterSwitch = 3;  // ticks from the change to automatic to the receipt request
constexpr int LargestCounter = 999999; // no day reaches it

int modeOfWord(const QString &word)
{
    struct Row {
        const char *word;
        TlgMode mode;
    };
    static const Row rows[] = {
        {"БА", ModeAsked},       {"ОТКРОЙТЕ", ModeAsked},     {"ОТКРЫТИЯ", ModeAsked},
        {"РБ", ModeOpen},        {"ОТКРЫТА", ModeOpen},       {"БД", ModeClosed},
        {"ЗАКРЫТА", ModeClosed}, {"БВ", ModeNoticeOfClosing}, {"БР", ModeConfirming},
    };
    for (const Row &row : rows)
        if (word == QString::fromUtf8(row.word))
            return row.mode;
    return ModeUnknown;
}

/// A figure of the file. One that no day can reach is damage, and counts as missing.
int readCounter(const QSettings &file, const char *key)
{
    const int figure = file.value(QLatin1String(key), 0).toInt();
    return figure >= 0 && figure <= LargestCounter ? figure : 0;
}
} // namespace

CState::CState() = default;

void CState::setTlgMode(const QString &word)
{
    setTlgMode(modeOfWord(word));
}

void CState::setTlgMode(int mode)
{
    tlgModeSeconds = 0;
    tlgMode = mode;
    emit tlgModeChanged();
}

void CState::setAutomatic(bool on)
{
    if (!on) {
        if (!manualMode)
            Log.addCacheServiceString(JournalWords::Manual, ProtocolInfo, true);
        manualMode = true;
    } else {
        if (manualMode)
            Log.addCacheServiceString(JournalWords::Automatic, ProtocolInfo, true);
        if (Options.processMode == CKS && tlgMode != ModeOpen)
            askReceiptCountdown = RequestAfterSwitch;
        manualMode = false;
    }
    scanCountdown = ScanAfterSwitch;
    emit automaticChanged();
}

void CState::setChannelName(const QString &name)
{
    if (channelName == name)
        return;
    channelName = name;
    emit titlesChanged();
}

void CState::setCallDirection(int direction)
{
    if (callDirection == direction)
        return;
    callDirection = direction;
    // The mode is written past setTlgMode: its age goes on, and the window learns of it with the rest of the
    // call, by the procedure's signal.
    if (direction == Outgoing) {
        ++SKK_out;
        tlgMode = ModeOpen;
    } else {
        tlgMode = ModeAsked;
    }
}

void CState::closeSoon()
{
    stopCountdown = tlgMode == ModeOpen ? TicksToCloseOpen : TicksToClose;
}

QString CState::pathInp() const
{
    return Options.pathInp;
}

QString CState::pathOut() const
{
    return Options.pathOut;
}

QString CState::pathPrt() const
{
    return Options.pathPrt;
}

QString CState::pathShablons() const
{
    return Options.pathShablons;
}

QString CState::pathInp_forDate(const QDate &date) const
{
    return pathInp() + QDir::separator() + date.toString(QStringLiteral("yyyyMMdd"));
}

QString CState::pathOut_forDate(const QDate &date) const
{
    return pathOut() + QDir::separator() + date.toString(QStringLiteral("yyyyMMdd"));
}

QString CState::pathOut_currentDate() const
{
    return pathOut() + QDir::separator() + Time.yyyyMMdd;
}

int CState::incInp()
{
    PK_in = (PK_in + 1) % CounterModulus;
    Save();
    return PK_in;
}

int CState::incOut()
{
    PK_out = (PK_out + 1) % CounterModulus;
    Save();
    return PK_out;
}

void CState::Load()
{
    readIni(Options.stateFileName, [this](QSettings &file) {
        file.beginGroup(QStringLiteral("STATE"));
        YYYYMMDD = file.value(QStringLiteral("YYYYMMDD"), QStringLiteral("00000000")).toString();
        manualMode = !file.value(QStringLiteral("automatic"), false).toBool();
        CKS_in = readCounter(file, "CKS_in");
        CKS_out = readCounter(file, "CKS_out");
        SKK_in = readCounter(file, "SKK_in");
        SKK_out = readCounter(file, "SKK_out");
        PK_in = readCounter(file, "PK_in");
        PK_out = readCounter(file, "PK_out");
        EditorN = readCounter(file, "EditorN");
    });
}

void CState::Save()
{
    rewriteIni(Options.stateFileName, [this](QSettings &file) {
        file.beginGroup(QStringLiteral("STATE"));
        file.setValue(QStringLiteral("YYYYMMDD"), YYYYMMDD);
        file.setValue(QStringLiteral("automatic"), !manualMode);
        file.setValue(QStringLiteral("CKS_in"), CKS_in);
        file.setValue(QStringLiteral("CKS_out"), CKS_out);
        file.setValue(QStringLiteral("SKK_in"), SKK_in);
        file.setValue(QStringLiteral("SKK_out"), SKK_out);
        file.setValue(QStringLiteral("PK_in"), PK_in);
        file.setValue(QStringLiteral("PK_out"), PK_out);
        file.setValue(QStringLiteral("EditorN"), EditorN);
        file.endGroup();
    });
}

void CState::newDay()
{
    if (YYYYMMDD != Time.yyyyMMdd) {
        Save();
        YYYYMMDD = Time.yyyyMMdd;
        prevPK_in = PK_in;
        prevPK_out = PK_out;
        prevCKS_in = CKS_in;
        prevCKS_out = CKS_out;
    }
    CKS_in = CKS_out = SKK_in = SKK_out = PK_in = PK_out = EditorN = 0;
    makeDayDirectories();
    Save();
}

void CState::makeDayDirectories()
{
    QDir dir;
    dir.mkdir(pathInp() + QDir::separator() + Time.yyyyMMdd);
    dir.mkdir(pathOut() + QDir::separator() + Time.yyyyMMdd);
}
