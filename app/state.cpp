#include "app/state.h"

#include "app/clock.h"
#include "app/options.h"
#include "records/protocol.h"

#include <QDir>
#include <QSettings>

namespace
{
constexpr int CounterModulus = 1000;
constexpr int ProcedureCKS = 0;
constexpr int ModeOpen = 3;
constexpr int Outgoing = 2;

int modeOfWord(const QString &word)
{
    struct Row {
        const char *word;
        int mode;
    };
    static const Row rows[] = {
        {"БА", 2}, {"ОТКРОЙТЕ", 2}, {"ОТКРЫТИЯ", 2}, {"РБ", 3}, {"ОТКРЫТА", 3},
        {"БД", 1}, {"ЗАКРЫТА", 1},  {"БВ", 4},       {"БР", 5},
    };
    for (const Row &row : rows)
        if (word == QString::fromUtf8(row.word))
            return row.mode;
    return 0;
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
            Log.addCacheServiceString(QStringLiteral("Установлен РУЧНОЙ режим"), ProtocolInfo, true);
        manualMode = true;
    } else {
        if (manualMode)
            Log.addCacheServiceString(QStringLiteral("Установлен АВТОМАТИЧЕСКИЙ режим"), ProtocolInfo, true);
        if (Options.processMode == ProcedureCKS && tlgMode != ModeOpen)
            askReceiptCountdown = 3;
        manualMode = false;
    }
    scanCountdown = 3;
    emit automaticChanged();
}

void CState::setChannelName(const QString &name)
{
    if (channelName == name)
        return;
    channelName = name;
    emit titlesChanged();
}

void CState::setCallDirection(int d)
{
    if (callDirection == d)
        return;
    callDirection = d;
    // The mode is written past setTlgMode on purpose: its age goes on and the window learns of it later.
    if (d == Outgoing) {
        ++SKK_out;
        tlgMode = ModeOpen;
    } else {
        tlgMode = 2;
    }
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
    QSettings file(Options.stateFileName, QSettings::IniFormat);
    file.beginGroup(QStringLiteral("STATE"));
    YYYYMMDD = file.value(QStringLiteral("YYYYMMDD"), QStringLiteral("00000000")).toString();
    manualMode = !file.value(QStringLiteral("automatic"), false).toBool();
    CKS_in = file.value(QStringLiteral("CKS_in"), 0).toInt();
    CKS_out = file.value(QStringLiteral("CKS_out"), 0).toInt();
    SKK_in = file.value(QStringLiteral("SKK_in"), 0).toInt();
    SKK_out = file.value(QStringLiteral("SKK_out"), 0).toInt();
    PK_in = file.value(QStringLiteral("PK_in"), 0).toInt();
    PK_out = file.value(QStringLiteral("PK_out"), 0).toInt();
    EditorN = file.value(QStringLiteral("EditorN"), 0).toInt();
}

void CState::Save()
{
    // QSettings writes an .ini file through a temporary one that replaces it, so a kill leaves either whole.
    QSettings file(Options.stateFileName, QSettings::IniFormat);
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
    file.sync();
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
