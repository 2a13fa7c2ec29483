#include "tests/kill/point.h"

#include "tests/kill/day.h"
#include "tests/kill/power_loss.h"

#include <QDir>
#include <QFile>
#include <QtTest>

namespace
{
constexpr int LookMs = 20;
constexpr int DayMs = 300000;  ///< of which some seconds are needed on a free machine
constexpr int BadSeconds = 28; ///< of the day, that a disk stays bad

const QString Start = QStringLiteral(" Запуск ");
const QString Lasting = QStringLiteral("lasting");

QString contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// One passing of a day.
class Passing
{
public:
    explicit Passing(const Point &point);

    Outcome run();

private:
    [[nodiscard]] bool isHit() const { return contentOf(m_log).contains(QStringLiteral("hit ")); }
    /// The disk fails for a while: a program that ended now would lose what it could not write.
    [[nodiscard]] bool isBad() const { return m_point.lasts && isHit() && m_mishaps == 0; }
    /// A life behind a death that has not come to its journal yet is no end of the day: all may have been
    /// done.
    [[nodiscard]] bool isStarting() const
    {
        return m_point.kills() && m_mishaps > 0 && m_day->station.count(Start) <= m_starts;
    }
    [[nodiscard]] QString hitPath() const;
    [[nodiscard]] bool isRefusedStart() const;
    void start();
    void look();
    bool goesOn(const std::function<bool()> &over);
    void takeDeath();
    void mendDisk();
    void audit();
    void leave();

    const Point m_point;
    QTemporaryDir m_directory; // beside the data: what the calls are noted in
    const QString m_log, m_bad, m_record;
    Files m_before; // the workstation
    std::unique_ptr<Day> m_day;
    QElapsedTimer m_sinceHit;
    bool m_early = false; // the disk failed before the window's first second
    int m_mishaps = 0;
    int m_starts = 0; // that the journals tell of as the present life begins
    Outcome m_outcome;
};

Passing::Passing(const Point &point)
    : m_point(point), m_log(m_directory.filePath(QStringLiteral("calls"))),
      m_bad(m_directory.filePath(QStringLiteral("bad"))),
      m_record(m_directory.filePath(QStringLiteral("record"))), m_day(Day::of(point.procedure))
{
    const QString root = QDir(m_day->station.path()).canonicalPath();
    QMap<QString, QString> variables = {
        {QStringLiteral("DISK_ROOT"), root},       {QStringLiteral("DISK_LOG"), m_log},
        {QStringLiteral("DISK_KIND"), point.kind}, {QStringLiteral("DISK_AT"), QString::number(point.number)},
        {QStringLiteral("DISK_HOW"), point.how},   {QStringLiteral("ATTENDED_BAD"), m_bad}};
    if (point.isPowerLoss())
        variables.insert(QStringLiteral("DISK_RECORD"), m_record);
    if (point.lasts) {
        variables.insert(QStringLiteral("DISK_BAD"), m_bad);
        QFile sign(m_bad);
        (void)sign.open(QIODevice::WriteOnly);
    }
    m_day->station.be(QStringLiteral(ATTENDED_VELDA));
    m_day->station.putInFront(QStringLiteral(DISK_CALLS_LIBRARY), variables);
}

void Passing::start()
{
    m_day->start();
}

/// The path of the chosen call below the data directory.
QString Passing::hitPath() const
{
    const QString root = QDir(m_day->station.path()).canonicalPath() + QLatin1Char('/');
    const QString line = contentOf(m_log).section(QStringLiteral("hit "), 1).section(QLatin1Char('\n'), 0, 0);
    return QDir::cleanPath(line.section(QLatin1Char(' '), 1).remove(root));
}

/// The disk has not taken the lock of the data directory, and the program has told of it and left.
bool Passing::isRefusedStart() const
{
    return !m_point.kills() && m_mishaps == 1 && hitPath() == QLatin1String("velda.lck") &&
           m_day->station.endedWith(1);
}

/// The next life is in peace.
void Passing::takeDeath()
{
    if (m_point.kills() || m_mishaps == 0)
        ++m_mishaps;
    if (!isRefusedStart() &&
        (!m_point.kills() || m_mishaps > 1 || m_day->station.process.exitStatus() != QProcess::CrashExit))
        m_outcome.wrong << QStringLiteral("it ended with %1").arg(m_day->station.process.exitCode());
    QFile::remove(m_bad);
    if (m_point.isPowerLoss()) {
        losePower(m_record, m_before, qHash(m_point.name(), 1));
        m_day->forgetJournals();
    }
    m_outcome.wrong << m_day->tornFiles();
    m_day->station.putInFront(QString());
    m_starts = m_day->station.count(Start);
    start();
}

void Passing::mendDisk()
{
    if (m_point.kills() || m_mishaps > 0 || !isHit())
        return;
    if (!m_sinceHit.isValid()) {
        m_sinceHit.start();
        m_day->letCountersLag();
        m_early = !m_day->station.logged(QStringLiteral("Протокол открыт"));
    }
    if (m_point.lasts && m_sinceHit.elapsed() < m_day->passing(BadSeconds))
        return;
    ++m_mishaps;
    QFile::remove(m_bad);
}

void Passing::look()
{
    QTest::qWait(LookMs);
    mendDisk();
    m_day->tend();
}

/// Goes on until \a over. False if that never comes.
bool Passing::goesOn(const std::function<bool()> &over)
{
    QElapsedTimer since;
    since.start();
    while (!over()) {
        if (since.elapsed() > DayMs)
            return false;
        if (!m_day->station.isRunning()) {
            if (m_mishaps > 2)
                return false;
            takeDeath();
        }
        look();
    }
    return true;
}

/// The books of a day in peace agree. After a mishap they may tell of it, of lines that a journal has lost,
/// and wrongBooks() knows what must be there all the same; but they can be read.
void Passing::audit()
{
    QByteArray words;
    const int status = m_day->station.booksStatus(&words);
    if (status < 0 || status > 1)
        m_outcome.wrong << QStringLiteral("the books end with %1: ").arg(status) + QString::fromUtf8(words);
    else if (status == 1 && !isHit())
        m_outcome.wrong << QStringLiteral("the books of a day in peace: ") + QString::fromUtf8(words);
}

/// Ends the workstation in order, once more if it dies of that.
void Passing::leave()
{
    if (!m_day->station.leave(60) && isHit() && m_point.kills() && m_mishaps == 0) {
        takeDeath();
        if (!goesOn([this] { return !isStarting() && m_day->isOver(); }))
            m_outcome.wrong << QStringLiteral("the day does not end anew");
        if (!m_day->station.leave(60))
            m_outcome.wrong << QStringLiteral("no orderly end");
    } else if (m_day->station.isRunning() || !m_day->station.endedWith(0)) {
        m_outcome.wrong << QStringLiteral("no orderly end");
    }
    audit();
}

Outcome Passing::run()
{
    m_day->station.writeSettings();
    m_before = filesBelow(QDir(m_day->station.path()).canonicalPath());
    start();
    if (goesOn([this] { return !isStarting() && m_day->isOver() && !isBad(); }))
        leave();
    else
        m_outcome.wrong << QStringLiteral("the day does not end");
    m_outcome.reached = isHit();
    Day::Mishaps mishaps;
    mishaps.diskFailed = !m_point.kills() && m_outcome.reached;
    mishaps.lasting = mishaps.diskFailed && m_point.lasts;
    mishaps.early = m_early;
    mishaps.call = m_point.kind;
    mishaps.path = hitPath();
    mishaps.atEnd = mishaps.diskFailed && m_mishaps == 0;
    mishaps.powerLost = m_point.isPowerLoss();
    mishaps.count = m_mishaps + (mishaps.atEnd ? 1 : 0);
    m_outcome.wrong << m_day->wrongBooks(mishaps);
    if (!m_outcome.wrong.isEmpty())
        m_outcome.wrong << m_day->progress();
    m_outcome.log = contentOf(m_log);
    return m_outcome;
}
} // namespace

QString Point::name() const
{
    QStringList words = {procedure, kind, QString::number(number), how};
    if (lasts)
        words << Lasting;
    return words.join(QLatin1Char(' '));
}

Point Point::of(const QStringList &words)
{
    Point point;
    if (words.size() < 4 || !Day::procedures().contains(words.at(0)))
        return point;
    point.procedure = words.at(0);
    point.kind = words.at(1);
    point.number = words.at(2).toInt();
    point.how = words.at(3);
    point.lasts = words.value(4) == Lasting;
    return point;
}

QStringList callKinds()
{
    return {QStringLiteral("open"),   QStringLiteral("write"),  QStringLiteral("rename"),
            QStringLiteral("unlink"), QStringLiteral("sync"),   QStringLiteral("mkdir"),
            QStringLiteral("link"),   QStringLiteral("resize"), QStringLiteral("mark")};
}

QStringList deathsAt(const QString &kind)
{
    QStringList deaths = {QStringLiteral("before"), QStringLiteral("after"), QStringLiteral("power")};
    if (kind == QLatin1String("write"))
        deaths << QStringLiteral("half");
    return deaths;
}

QStringList errorsAt(const QString &kind)
{
    QStringList errors = {QStringLiteral("EIO")};
    if (kind != QLatin1String("sync"))
        errors << QStringLiteral("EROFS");
    if (kind != QLatin1String("sync") && kind != QLatin1String("write") && kind != QLatin1String("resize"))
        errors << QStringLiteral("EACCES");
    if (kind != QLatin1String("sync") && kind != QLatin1String("unlink") && kind != QLatin1String("rename"))
        errors << QStringLiteral("ENOSPC");
    return errors;
}

Outcome pass(const Point &point)
{
    return Passing(point).run();
}
