// Passes short days of each line procedure again and again. In each the workstation dies at another call that
// changes the disk, or such a call fails, once or for a while; see point.h and day.h.
//
//   disk_points
//       all points, one stream for each procedure, kind and manner, until a day ends by itself
//   disk_points WORD...
//       those streams whose names have all these words; "A|B" is one of two
//   disk_points --sample
//       VELDA_DISK_POINTS of them, drawn by VELDA_SEED
//   disk_points --point PROCEDURE KIND NUMBER HOW [lasting]
//
// VELDA_DISK_JOBS days pass beside each other.

#include "tests/kill/day.h"
#include "tests/kill/point.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QEventLoop>
#include <QProcess>
#include <QRandomGenerator>

#include <cstdio>

namespace
{
constexpr int Unreached = 3; ///< the status of a point behind the last one
constexpr int UsualJobs = 8;

int number(const char *variable, int usual)
{
    bool ok = false;
    const int value = qEnvironmentVariableIntValue(variable, &ok);
    return ok ? value : usual;
}

void say(const QString &line)
{
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

int passOne(const Point &point)
{
    const Outcome outcome = pass(point);
    for (const QString &wrong : outcome.wrong)
        say(QStringLiteral("wrong: ") + point.name() + QStringLiteral(": ") + wrong);
    if (point.kind == QLatin1String("none"))
        say(outcome.log);
    if (!outcome.wrong.isEmpty())
        return 1;
    return outcome.reached || point.kind == QLatin1String("none") ? 0 : Unreached;
}

/// The points of one procedure, kind and manner, in order.
struct Stream {
    Point next;
    int expected = 0; ///< as many as a day in peace has; behind them one at a time, to the first that is none
    int running = 0;
    int tries = 0, passed = 0;
    bool ended = false;

    [[nodiscard]] bool isDue() const { return !ended && (next.number <= expected || running == 0); }
};

QVector<Stream> allStreams()
{
    QVector<Stream> streams;
    for (const QString &procedure : Day::procedures())
        for (const QString &kind : callKinds()) {
            for (const QString &how : deathsAt(kind))
                streams.append(Stream{{procedure, kind, 1, how, false}, 0, 0, 0, 0, false});
            // A figure that differs when the day turns is for the telephone.
            for (const QString &how : procedure == QLatin1String("midnight") ? QStringList() : errorsAt(kind))
                for (const bool lasts : {false, true})
                    streams.append(Stream{{procedure, kind, 1, how, lasts}, 0, 0, 0, 0, false});
        }
    return streams;
}

/// Runs points as processes beside each other.
class Runner
{
public:
    explicit Runner(int jobs) : m_jobs(jobs) {}

    /// Runs what \a next gives, until that is nothing, and tells \a take of each status.
    void run(const std::function<bool(Point &, int &)> &next, const std::function<void(int, int)> &take)
    {
        QEventLoop loop;
        const std::function<void()> fill = [&] {
            Point point;
            int from = 0;
            while (m_running < m_jobs && next(point, from))
                begin(point, from, take, fill, loop);
            if (m_running == 0)
                loop.quit();
        };
        fill();
        if (m_running > 0)
            loop.exec();
    }
    [[nodiscard]] bool allRight() const { return m_wrong == 0; }

private:
    void begin(const Point &point, int from, const std::function<void(int, int)> &take,
               const std::function<void()> &fill, QEventLoop &loop)
    {
        auto *process = new QProcess(&loop);
        process->setProcessChannelMode(QProcess::MergedChannels);
        QObject::connect(process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), &loop,
                         [=](int code, QProcess::ExitStatus how) {
                             const int status = how == QProcess::NormalExit ? code : 1;
                             if (status != 0 && status != Unreached) {
                                 ++m_wrong;
                                 say(QStringLiteral("WRONG: ") + point.name() + QLatin1Char('\n') +
                                     QString::fromUtf8(process->readAll()));
                             }
                             process->deleteLater();
                             --m_running;
                             take(from, status);
                             fill();
                         });
        ++m_running;
        process->start(QCoreApplication::applicationFilePath(),
                       QStringList(QStringLiteral("--point")) + point.name().split(QLatin1Char(' ')));
    }

    int m_jobs;
    int m_running = 0;
    int m_wrong = 0;
};

/// How many calls of each kind a day in peace has. \a right becomes false if something was wrong with it,
/// thrice: on a machine that falls behind the line has no peace.
QMap<QString, int> countCalls(const QString &procedure, bool &right)
{
    QMap<QString, int> counts;
    Outcome peace;
    for (int tries = 0; tries < 3 && (tries == 0 || !peace.wrong.isEmpty()); ++tries)
        peace = pass({procedure, QStringLiteral("none"), 0, QStringLiteral("before"), false});
    for (const QString &wrong : qAsConst(peace.wrong))
        say(QStringLiteral("WRONG: in peace: ") + wrong);
    right = right && peace.wrong.isEmpty();
    for (const QString &line : peace.log.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        ++counts[line.section(QLatin1Char(' '), 0, 0)];
    return counts;
}

int runStreams(const QStringList &words)
{
    QVector<Stream> streams = allStreams();
    Runner runner(number("VELDA_DISK_JOBS", UsualJobs));
    const auto isMeant = [&words](const Stream &stream) {
        const QStringList name = stream.next.name().split(QLatin1Char(' '));
        return std::all_of(words.begin(), words.end(), [&](const QString &word) {
            const QStringList either = word.split(QLatin1Char('|'));
            return std::any_of(either.begin(), either.end(),
                               [&name](const QString &one) { return name.contains(one); });
        });
    };
    bool right = true;
    QMap<QString, QMap<QString, int>> counts;
    for (Stream &stream : streams) {
        stream.ended = !isMeant(stream);
        if (!stream.ended && !counts.contains(stream.next.procedure))
            counts[stream.next.procedure] = countCalls(stream.next.procedure, right);
        stream.expected = counts.value(stream.next.procedure).value(stream.next.kind);
    }
    const auto next = [&](Point &point, int &from) {
        for (from = 0; from < streams.size() && !streams.at(from).isDue(); ++from) {
        }
        if (from == streams.size())
            return false;
        point = streams.at(from).next;
        ++streams[from].next.number;
        ++streams[from].running;
        return true;
    };
    const auto take = [&](int from, int status) {
        --streams[from].running;
        ++streams[from].tries;
        if (status == 0)
            ++streams[from].passed;
        streams[from].ended = streams[from].ended || status == Unreached;
        if (status == Unreached)
            --streams[from].tries;
    };
    runner.run(next, take);
    for (Stream &stream : streams)
        if (isMeant(stream) && stream.tries > 0)
            say(QStringLiteral("points: %1 %2 %3%4: %5, passed %6")
                    .arg(stream.next.procedure, stream.next.kind, stream.next.how,
                         stream.next.lasts ? QStringLiteral(" lasting") : QString())
                    .arg(stream.tries)
                    .arg(stream.passed));
    return right && runner.allRight() ? 0 : 1;
}

/// The short days; midnight, which takes longer, is left to the whole run.
bool isOfSample(const Point &point)
{
    return point.procedure != QLatin1String("midnight");
}

int runSample()
{
    const int points = number("VELDA_DISK_POINTS", USUAL_POINTS);
    const auto seed = quint32(number("VELDA_SEED", int(QDateTime::currentSecsSinceEpoch() & 0x7FFFFFFF)));
    say(QStringLiteral("seed: VELDA_SEED=%1").arg(seed));
    QRandomGenerator chance(seed);
    bool right = true;
    QMap<QString, QMap<QString, int>> counts;
    QVector<Stream> streams;
    for (const Stream &stream : allStreams())
        if (isOfSample(stream.next))
            streams << stream;
    for (const Stream &stream : qAsConst(streams))
        if (!counts.contains(stream.next.procedure))
            counts[stream.next.procedure] = countCalls(stream.next.procedure, right);
    Runner runner(number("VELDA_DISK_JOBS", UsualJobs));
    int given = 0, passed = 0, beyond = 0;
    const auto next = [&](Point &point, int &) {
        while (given < points) {
            point = streams.at(chance.bounded(streams.size())).next;
            const int count = counts[point.procedure].value(point.kind);
            if (count == 0)
                continue;
            point.number = 1 + chance.bounded(count);
            ++given;
            return true;
        }
        return false;
    };
    // A day is never the same to the call: a point behind the last of its kind is drawn anew.
    runner.run(next, [&](int, int status) {
        passed += status == 0 ? 1 : 0;
        if (status == Unreached && beyond < points) {
            --given;
            ++beyond;
        }
    });
    say(QStringLiteral("points: %1, passed %2, behind the day's end %3").arg(given).arg(passed).arg(beyond));
    return right && runner.allRight() ? 0 : 1;
}
} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QStringList words = QCoreApplication::arguments().mid(1);
    if (words.value(0) == QLatin1String("--point")) {
        const Point point = Point::of(words.mid(1));
        return point.procedure.isEmpty() ? 2 : passOne(point);
    }
    return words.value(0) == QLatin1String("--sample") ? runSample() : runStreams(words);
}
