#include "tests/cuts/cut_day.h"

#include "tests/cuts/centre_cuts.h"
#include "tests/cuts/switched_cuts.h"

#include <QDateTime>
#include <QDir>
#include <QRegularExpression>

namespace
{
constexpr int Speed = 40;
constexpr int AdapterSpeed = 20; ///< its bytes go one by one
const QDateTime Begin(QDate(2026, 7, 31), QTime(6, 0));
} // namespace

std::unique_ptr<CutDay> CutDay::of(const QString &procedure, const QString &role)
{
    if (procedure == QLatin1String("switched"))
        return std::make_unique<SwitchedCuts>(role);
    return std::make_unique<CentreCuts>(role);
}

QStringList CutDay::procedures()
{
    return {QStringLiteral("centre"), QStringLiteral("switched")};
}

CutDay::CutDay(const QString &role, const QStringList &farEnd, int mostBytes)
    : m_speed(role == QLatin1String("adapter") ? AdapterSpeed : Speed), m_mostBytes(mostBytes)
{
    m_since.start();
    station.set(QStringLiteral("CONNECT/TimeOut"), QStringLiteral("600"));
    station.be(QStringLiteral(ATTENDED_VELDA));
    for (const char *name : {"inp", "out", "prt"})
        QDir().mkpath(station.path(QLatin1String(name)));
    line = std::make_unique<CutLine>(station, role, farEnd, clock());
}

QString CutDay::clock() const
{
    const QDateTime now = Begin.addMSecs(m_since.elapsed() * m_speed + 999);
    return QStringLiteral("@%1 x%2").arg(now.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"))).arg(m_speed);
}

void CutDay::start()
{
    station.fakeTime(clock());
    station.start();
}

void CutDay::queue(const QString &name, const QString &text, const QByteArray &record)
{
    const QString path = QStringLiteral("out/") + name;
    if (!record.isEmpty())
        station.write(path + QStringLiteral(".dat"), record);
    station.write(QStringLiteral("coming/") + name, text.toUtf8());
    if (!QFile::rename(station.path(QStringLiteral("coming/") + name), station.path(path)))
        qFatal("cannot queue %s", qPrintable(name));
}

QStringList CutDay::storedWith(const QString &mark) const
{
    QStringList result;
    for (const QString &name : station.tree(QStringLiteral("inp")))
        if (!QFileInfo(name).fileName().startsWith(QLatin1Char('s')) && // of a connection, with all in it
            QString::fromUtf8(station.read(QStringLiteral("inp/") + name)).contains(mark))
            result << name;
    return result;
}

/// Without the record of no file, which each call to a subscriber leaves, and those of files that have gone:
/// a workstation that had no processor calls once more for one on a list that it has not renewed yet.
QStringList CutDay::queueFiles() const
{
    QStringList names;
    for (const QString &name :
         QDir(station.path(QStringLiteral("out"))).entryList(QDir::Files | QDir::Hidden)) {
        const QString file = name.section(QStringLiteral(".dat"), 0, 0);
        if (!name.endsWith(QStringLiteral(".dat")) || (!file.isEmpty() && sentAs(file).isEmpty()))
            names << name;
    }
    return names;
}

QStringList CutDay::sentAs(const QString &name) const
{
    return station.tree(QStringLiteral("out"))
        .filter(QRegularExpression(QStringLiteral("^\\d{8}/") + name + QStringLiteral("\\.\\d{3}$")));
}

QString CutDay::progress() const
{
    const QString life =
        station.isRunning()
            ? QStringLiteral("the workstation runs")
            : QStringLiteral("the workstation has ended with %1").arg(station.process.exitCode());
    return (QStringList{life} + station.lines + station.tree(QStringLiteral("out")) + line->log() +
            station.journal())
        .join(QLatin1Char('\n'));
}

/// The adapter hears no goodbye when it is pulled out, nor an answer to its last status, and through the tap
/// its grants and what is sent on them cross longer than on a cable. On a new connection text goes out before
/// the far end has spoken, and may be read together with what answers its first words.
QStringList CutDay::violations() const
{
    return line->noted(QStringLiteral("violation: "))
        .filter(QRegularExpression(QStringLiteral(
            "^(?!.*(closed without a goodbye|more than granted|were granted|status not answered))")));
}
