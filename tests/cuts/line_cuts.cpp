// Breaks the line of a workstation at random bytes, again and again, in days with a centre and on a switched
// network, the workstation being client or server of a TCP connection or on an adapter; see cut_day.h.
//   line_cuts [--cuts N] [--seed S] [--jobs N] [WORD...]
// makes N cuts in all, by the seed S, in the streams whose names have all these words: "centre", "switched";
// "client", "server", "adapter". VELDA_LINE_CUTS and VELDA_SEED are N and S too.
//   line_cuts --day PROCEDURE ROLE SEED CUTS
// passes one of the days.

#include "tests/cuts/cut_day.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDateTime>
#include <QRandomGenerator>
#include <QtTest>

#include <cstdio>
#include <functional>

namespace
{
constexpr int CutsOfDay = 25;
constexpr int LookMs = 20;
constexpr int StillMs = 240000; ///< without a cut or an end; a few seconds are usual

void say(const QString &line)
{
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

/// One day: its line is cut so often, then it comes to its end in peace.
class Passing
{
public:
    Passing(const QString &procedure, const QString &role, quint32 seed, int cuts)
        : m_chance(seed), m_cuts(cuts), m_day(CutDay::of(procedure, role))
    {
    }

    QStringList run()
    {
        m_day->start();
        m_since.start();
        if (!goesOn([this] { return cut(); }))
            return {QStringLiteral("no cut any more"), m_day->progress()};
        if (!goesOn([this] { return m_day->isOver(); }))
            return QStringList{QStringLiteral("the day does not end")} + m_day->wrongBooks() +
                   QStringList{m_day->progress()};
        QStringList wrong;
        if (!m_day->station.leave(120))
            wrong << QStringLiteral("no orderly end");
        wrong << m_day->wrongBooks();
        (void)m_day->line->quit(); // what it blames is among the wrong ones
        return wrong.isEmpty() ? wrong : wrong + QStringList{m_day->progress()};
    }
    [[nodiscard]] QString figures() const { return m_day->figures(); }

private:
    /// Sets the next cut when the one before has come; true when there is none left.
    bool cut()
    {
        if (m_set > m_day->line->cuts())
            return false;
        if (m_set == m_cuts)
            return true;
        m_day->line->cutAfter(m_chance.bounded(1, m_day->mostBytes()));
        ++m_set;
        m_since.restart();
        return false;
    }
    bool goesOn(const std::function<bool()> &over)
    {
        m_since.restart();
        while (!over()) {
            if (m_since.elapsed() > StillMs || !m_day->station.isRunning())
                return false;
            m_day->tend(m_set < m_cuts || m_day->line->cuts() < m_cuts);
            QTest::qWait(LookMs);
        }
        return true;
    }

    QRandomGenerator m_chance;
    int m_cuts;
    int m_set = 0;
    std::unique_ptr<CutDay> m_day;
    QElapsedTimer m_since;
};

int passOne(const QStringList &words)
{
    Passing day(words.value(0), words.value(1), words.value(2).toUInt(), words.value(3).toInt());
    const QStringList wrong = day.run();
    say(QStringLiteral("%1 %2: %3 cuts, %4")
            .arg(words.value(0), words.value(1), words.value(3), day.figures()));
    for (const QString &line : wrong)
        say(QStringLiteral("wrong: ") + line);
    return wrong.isEmpty() ? 0 : 1;
}

/// Days as processes beside each other.
class Runner
{
public:
    explicit Runner(int jobs) : m_jobs(jobs) {}

    void add(const QStringList &day) { m_waiting << day; }
    /// True if all are right.
    bool run()
    {
        for (int i = 0; i < m_jobs; ++i)
            begin();
        while (m_running > 0)
            QTest::qWait(LookMs);
        return m_wrong == 0;
    }

private:
    void begin()
    {
        if (m_waiting.isEmpty())
            return;
        const QStringList day = m_waiting.takeFirst();
        auto *process = new QProcess(QCoreApplication::instance());
        process->setProcessChannelMode(QProcess::MergedChannels);
        QObject::connect(process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished),
                         [=](int code, QProcess::ExitStatus how) {
                             end(day, QString::fromUtf8(process->readAll()),
                                 code == 0 && how == QProcess::NormalExit);
                             process->deleteLater();
                         });
        ++m_running;
        process->start(QCoreApplication::applicationFilePath(), QStringList(QStringLiteral("--day")) + day);
    }
    void end(const QStringList &day, const QString &output, bool right)
    {
        if (!right) {
            ++m_wrong;
            say(QStringLiteral("WRONG: --day ") + day.join(QLatin1Char(' ')));
        }
        say(output.trimmed());
        --m_running;
        begin();
    }

    int m_jobs;
    int m_running = 0;
    int m_wrong = 0;
    QVector<QStringList> m_waiting;
};

int number(const char *variable, int usual)
{
    bool ok = false;
    const int value = qEnvironmentVariableIntValue(variable, &ok);
    return ok ? value : usual;
}

QVector<QStringList> streams(const QStringList &words)
{
    QVector<QStringList> result;
    for (const QString &role : CutLine::roles())
        for (const QString &procedure : CutDay::procedures())
            if (std::all_of(words.begin(), words.end(),
                            [&](const QString &word) { return word == role || word == procedure; }))
                result << QStringList{procedure, role};
    return result;
}

/// Deals \a cuts out to days of the streams in turn, all streams alike.
void deal(Runner &runner, const QVector<QStringList> &meant, int cuts, QRandomGenerator &chance)
{
    const int most = qBound(1, cuts / meant.size(), CutsOfDay);
    for (int i = 0; cuts > 0; ++i) {
        const int count = qMin(cuts, most);
        runner.add(meant.at(i % meant.size()) +
                   QStringList{QString::number(chance.generate()), QString::number(count)});
        cuts -= count;
    }
}

int runAll(const QCommandLineParser &parser)
{
    const auto set = [&parser](const char *name, int usual) {
        const QString option = QLatin1String(name);
        return parser.isSet(option) ? parser.value(option).toInt() : usual;
    };
    const int cuts = set("cuts", number("VELDA_LINE_CUTS", 1000));
    const int seed = set("seed", number("VELDA_SEED", int(QDateTime::currentSecsSinceEpoch() & 0x7FFFFFFF)));
    const QVector<QStringList> meant = streams(parser.positionalArguments());
    if (meant.isEmpty() || cuts < 1)
        return 2;
    say(QStringLiteral("seed: VELDA_SEED=%1").arg(seed));
    QRandomGenerator chance{quint32(seed)};
    Runner runner(set("jobs", 6));
    deal(runner, meant, cuts, chance);
    const bool right = runner.run();
    say(QStringLiteral("cuts: %1, %2")
            .arg(cuts)
            .arg(right ? QStringLiteral("all right") : QStringLiteral("some WRONG")));
    return right ? 0 : 1;
}
} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments().mid(1);
    if (words.value(0) == QLatin1String("--day"))
        return passOne(words.mid(1));
    QCommandLineParser parser;
    for (const char *name : {"cuts", "seed", "jobs"})
        parser.addOption({QLatin1String(name), QString(), QStringLiteral("N")});
    parser.process(application);
    return runAll(parser);
}
