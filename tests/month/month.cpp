// Thirty days of a busy office at speed, in one life of the workstation: year's end twice, a leap day, both
// changes of daylight saving, steps of the workstation's clock, old files removed. Each day has its busy hour
// and its midnight; the hours between are stepped over. See office.h.
//   month PROCEDURE [DAYS | week]
// "direct", "centre", "switched"; with DAYS only the first so many, with "week" seven, and how long the ticks
// lasted is judged instead of what grows. The zone is that of the environment.

#include "tests/e2e/process_memory.h"
#include "tests/month/office.h"

#include <QCoreApplication>
#include <QDir>
#include <QtTest>

#include <algorithm>
#include <cstdio>
#include <functional>

namespace
{
constexpr int Speed = 40;
constexpr qint64 StepMs = 40000; ///< of a clock that was behind
constexpr int LookMs = 100;
constexpr int PatientMs = 120000; ///< for what takes some seconds on a free machine
constexpr int FewestTicks = 100;  ///< of a day that is looked at
constexpr int BusyTelegrams = 12; ///< each way, in two parts
constexpr double MostGrowth = 1.02;
constexpr double TickBarUs = 50000;
constexpr double MostTickGrowth = 1.5; ///< a busy machine alone makes some tens of percent

void say(const QString &line)
{
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

/// The days, with gaps.
QVector<QDate> allDays()
{
    struct Row {
        QDate first;
        int count;
    };
    const Row rows[] = {{QDate(2027, 12, 29), 7}, // year's end
                        {QDate(2028, 2, 26), 6},  // leap day
                        {QDate(2028, 3, 24), 5},  // to daylight saving on the 26th
                        {QDate(2028, 10, 26), 6}, // from it on the 29th
                        {QDate(2028, 12, 28), 6}};
    QVector<QDate> days;
    for (const Row &row : rows)
        for (int i = 0; i < row.count; ++i)
            days << row.first.addDays(i);
    return days;
}

/// Whether daylight saving begins or ends on \a day.
bool changesHour(const QDate &day)
{
    return QDateTime(day, QTime(0, 0)).offsetFromUtc() !=
           QDateTime(day.addDays(1), QTime(0, 0)).offsetFromUtc();
}

int medianOf(QVector<int> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

int openFiles(qint64 process)
{
    return QDir(QStringLiteral("/proc/%1/fd").arg(process))
        .entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System)
        .size();
}

class Month
{
public:
    Month(const QString &procedure, const QVector<QDate> &days)
        : m_name(procedure), m_days(days), m_time(QDateTime(days.first(), QTime(9, 50)), Speed),
          m_office(Office::of(procedure, m_time))
    {
    }

    /// Lives the days for the sake of their ticks alone.
    bool runForTicks()
    {
        liveAll();
        return m_wrong == 0 && ticksAreShort();
    }

    bool run()
    {
        liveAll();
        if (m_wrong == 0)
            judgeMemory();
        if (m_wrong == 0)
            judgeTicks();
        return m_wrong == 0;
    }

private:
    /// What a day leaves.
    struct Trace {
        qint64 kilobytes = 0;
        int files = 0;
    };

    void liveAll()
    {
        m_office->start();
        for (int i = 0; i < m_days.size() && m_wrong == 0; ++i)
            live(m_days.at(i), i);
        if (m_wrong == 0 && !m_office->station.leave(60))
            blame({QStringLiteral("no orderly end")});
    }

    void live(const QDate &day, int index)
    {
        m_time.stepTo(QDateTime(day, changesHour(day) ? QTime(0, 20) : QTime(9, 58)));
        waitFor([&] { return isTurned(day); }, "the day has not come");
        m_office->beginDay();
        passBusyHour(index);
        if (changesHour(day)) { // both changes come at one o'clock of universal time
            m_time.stepTo(QDateTime(day, QTime(0, 59), Qt::UTC));
            passBusyHour(index);
        }
        m_time.stepTo(QDateTime(day, QTime(23, 54)));
        m_office->handIn(2);
        waitFor([&] { return isTurned(day.addDays(1)) && m_office->hasTurned() && m_office->isOver(); },
                "no midnight");
        blame(m_office->wrong());
        blame(m_office->wrongBooks(day));
        waitFor([&] { return unremoved(day.addDays(1)).isEmpty(); }, "old files are not removed");
        remember(day);
    }

    /// In its midst the clock of some days is set forward, and back at its end.
    void passBusyHour(int index)
    {
        const qint64 step = index % 3 == 1 ? StepMs : 0;
        for (const qint64 ms : {step, -step}) {
            m_office->handIn(BusyTelegrams / 2);
            waitFor([&] { return m_office->isOver(); }, "the telegrams do not come through");
            m_time.stepWorkstation(ms);
        }
    }

    [[nodiscard]] bool isTurned(const QDate &day) const
    {
        return m_office->station.state(QStringLiteral("YYYYMMDD")) ==
               day.toString(QStringLiteral("yyyyMMdd"));
    }

    void waitFor(const std::function<bool()> &over, const char *otherwise)
    {
        QElapsedTimer since;
        since.start();
        while (m_wrong == 0 && !over()) {
            if (since.elapsed() > PatientMs || !m_office->station.isRunning())
                return blame(QStringList{QLatin1String(otherwise)} + m_office->wrong());
            m_office->tend();
            QTest::qWait(LookMs);
        }
    }

    /// Of files that are as old as may be; journals stay a day longer.
    [[nodiscard]] QStringList unremoved(const QDate &today) const
    {
        QStringList old;
        const QString limit = today.addDays(-Office::KeptDays).toString(QStringLiteral("yyyyMMdd"));
        for (const char *place : {"inp", "out"})
            for (const QString &name :
                 m_office->station.names(QLatin1String(place), QStringLiteral("????????")))
                if (name <= limit)
                    old << QStringLiteral("not removed: %1/%2").arg(QLatin1String(place), name);
        for (const QString &name : m_office->station.names(QStringLiteral("prt")))
            if (name.left(8) < limit)
                old << QStringLiteral("not removed: prt/") + name;
        return old;
    }

    void remember(const QDate &day)
    {
        const qint64 process = m_office->station.process.processId();
        m_traces << Trace{residentKilobytes(process), openFiles(process)};
        const QStringList ticks = m_office->station.lines.filter(QStringLiteral("ticks: "));
        say(QStringLiteral("%1: %2 kB, %3 files, %4")
                .arg(day.toString(Qt::ISODate))
                .arg(m_traces.last().kilobytes)
                .arg(m_traces.last().files)
                .arg(ticks.isEmpty() ? QString() : ticks.last()));
    }

    /// All of them but one in a thousand.
    [[nodiscard]] bool ticksAreShort() const
    {
        const QStringList lasted = m_office->station.lines.filter(QStringLiteral("lasted: "));
        if (lasted.isEmpty())
            return false;
        const QStringList figures = lasted.last().split(QLatin1Char(' '));
        const double part = figures.value(2).toDouble() / TickBarUs;
        say(QStringLiteral("%1 ticks, longest %2 ms")
                .arg(figures.value(1))
                .arg(figures.value(3).toInt() / 1000));
        say(QStringLiteral("bench: %1: tick of a busy week, 99.9th percentile to 50 ms | %2 | bar <= 1 | %3")
                .arg(m_name)
                .arg(part, 0, 'f', 3)
                .arg(part <= 1 ? QStringLiteral("ok") : QStringLiteral("MISSED")));
        return part <= 1;
    }

    /// The last day in comparison with the second.
    void judgeMemory()
    {
        if (m_traces.size() < 3)
            return;
        const Trace &second = m_traces.at(1), &last = m_traces.last();
        say(QStringLiteral("memory: %1, files: %2 to %3")
                .arg(double(last.kilobytes) / double(second.kilobytes), 0, 'f', 3)
                .arg(second.files)
                .arg(last.files));
        if (double(last.kilobytes) > MostGrowth * double(second.kilobytes) && !isSanitized())
            blame({QStringLiteral("the memory grows")});
        if (last.files > second.files)
            blame({QStringLiteral("open files become more")});
    }

    /// The ticks of the last third of the days in comparison with those of the first, each by its median.
    void judgeTicks()
    {
        QVector<int> means;
        for (const QString &line : m_office->station.lines.filter(QStringLiteral("ticks: ")))
            if (line.section(QLatin1Char(' '), 2, 2).toInt() >= FewestTicks)
                means << line.section(QLatin1Char(' '), 3, 3).toInt();
        const int third = means.size() / 3;
        if (third == 0)
            return;
        const int first = medianOf(means.mid(0, third)), last = medianOf(means.mid(means.size() - third));
        say(QStringLiteral("ticks: %1 us, then %2 us").arg(first).arg(last));
        if (last > MostTickGrowth * first)
            blame({QStringLiteral("the ticks take longer and longer")});
    }

    void blame(const QStringList &wrong)
    {
        for (const QString &line : wrong)
            say(QStringLiteral("wrong: ") + line);
        if (m_wrong == 0 && !wrong.isEmpty())
            say(m_office->progress());
        m_wrong += wrong.size();
    }

    const QString m_name;
    const QVector<QDate> m_days;
    SteppedTime m_time;
    std::unique_ptr<Office> m_office;
    QVector<Trace> m_traces;
    int m_wrong = 0;
};
} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments().mid(1);
    const QVector<QDate> days = allDays();
    const bool week = words.value(1) == QLatin1String("week");
    const int count = week ? 7 : words.size() > 1 ? words.at(1).toInt() : days.size();
    if (!QStringList{"direct", "centre", "switched"}.contains(words.value(0)) || count < 1)
        return 2;
    Month month(words.first(), days.mid(0, count));
    return (week ? month.runForTicks() : month.run()) ? 0 : 1;
}
