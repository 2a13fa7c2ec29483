#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

/// Benchmarks judged by ratios. Two machines never agree on a time, but two things measured side by side
/// in one run can be compared anywhere.
namespace Ratio
{
/// One row of the table: how long \a measured takes, as a multiple of \a baseline.
struct Row {
    const char *what;
    const char *measured; ///< name of a benchmark, as in "Name" or "Name/argument"
    const char *baseline; ///< name of another, or null
    double bar;           ///< the greatest ratio that passes
    double seconds = 1.0; ///< stands for the baseline when there is none
};

/// Shows the runs as usual and keeps the least time of each benchmark, the one least disturbed by
/// whatever else the machine does.
class Reporter : public benchmark::ConsoleReporter
{
public:
    Reporter() : ConsoleReporter(OO_None) {}

    void ReportRuns(const std::vector<Run> &runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run &run : runs)
            if (run.run_type == Run::RT_Iteration && !run.error_occurred)
                keep(nameOf(run), totalTime(run) / double(run.iterations));
    }

    /// Seconds of one iteration; negative if the benchmark did not run.
    [[nodiscard]] double secondsOf(const std::string &name) const
    {
        const auto found = m_seconds.find(name);
        return found == m_seconds.end() ? -1.0 : found->second;
    }

private:
    /// Processor time, which other programs disturb less, unless the benchmark asked for the clock's or
    /// measures for itself.
    static double totalTime(const Run &run)
    {
        const bool ofTheThread = run.run_name.time_type.empty();
        return ofTheThread ? run.cpu_accumulated_time : run.real_accumulated_time;
    }
    static std::string nameOf(const Run &run)
    {
        const std::string &arguments = run.run_name.args;
        return run.run_name.function_name + (arguments.empty() ? "" : "/" + arguments);
    }
    void keep(const std::string &name, double seconds)
    {
        const auto [place, isNew] = m_seconds.emplace(name, seconds);
        if (!isNew)
            place->second = std::min(place->second, seconds);
    }

    std::map<std::string, double> m_seconds;
};

/// Prints the line of \a row. False if the bar is missed or something was not measured.
inline bool print(const Row &row, const Reporter &reporter)
{
    const double measured = reporter.secondsOf(row.measured);
    const double baseline = row.baseline ? reporter.secondsOf(row.baseline) : row.seconds;
    const double ratio = measured / baseline;
    const bool passes = measured >= 0 && baseline > 0 && ratio <= row.bar;
    const int digits = ratio < 0.001 ? 7 : 3;
    std::printf("bench: %s | %.*f | bar <= %.3g | %s\n", row.what, digits, ratio, row.bar,
                passes ? "ok" : "MISSED");
    return passes;
}

/// Runs all benchmarks of the program, each several times and mixed, and prints the rows. Returns the exit
/// status: 0 if every bar is kept.
inline int run(int argc, char **argv, const std::vector<Row> &rows)
{
    std::vector<char *> arguments(argv, argv + argc);
    std::string repeated = "--benchmark_repetitions=7";
    std::string mixed = "--benchmark_enable_random_interleaving=true";
    std::string brief = "--benchmark_min_time=0.1";
    arguments.insert(arguments.begin() + 1, {repeated.data(), mixed.data(), brief.data()});
    int count = int(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    Reporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    bool allPass = true;
    for (const Row &row : rows)
        allPass = print(row, reporter) && allPass;
    return allPass ? 0 : 1;
}
} // namespace Ratio
