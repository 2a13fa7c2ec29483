// Feeds a fuzz target its corpus and mutations of it, always the same ones:
//   program corpus-directory [runs | long [runs]]
// "long" is as many as VELDA_FUZZ_RUNS says, without it the runs given or ten million, by the seed
// VELDA_FUZZ_SEED. What made it die is left in the working directory, to be looked into by
//   program --input fuzz.input
// and of a long series also in the corpus as found_*, where each run repeats it.

#include "tests/fuzz/fuzz.h"

#include <QFileInfo>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <random>
#include <string>
#include <vector>

// Of a sanitizer's runtime, if there is one.
extern "C" __attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)());

namespace
{
using Input = std::string;

Input underWay;
std::string keptAs;        ///< absolute: a session has a working directory of its own
std::string corpusOfFound; ///< where a long series keeps it, too

void keep(const std::string &path)
{
    std::ofstream(path, std::ios::binary) << underWay << '\n'; // the file's own end
    std::fprintf(stderr, "the input is in %s\n", path.c_str());
}

void keepInput()
{
    keep(keptAs);
    if (!corpusOfFound.empty())
        keep(corpusOfFound + "/found_" + std::to_string(std::hash<Input>()(underWay)));
}

void dieOf(int signal)
{
    keepInput();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void keepInputAtDeath()
{
    keptAs = (std::filesystem::current_path() / "fuzz.input").string();
    if (__sanitizer_set_death_callback != nullptr)
        __sanitizer_set_death_callback(keepInput);
    else
        std::signal(SIGSEGV, dieOf);
    std::signal(SIGABRT, dieOf);
}

/// A session stores files: in memory they wear out no disk. With a zone of its own the process looks at that
/// of the system once, not at each file's time.
void workInMemory()
{
    qputenv("TZ", ":/etc/localtime");
    const QString memory = QStringLiteral("/dev/shm");
    if (QFileInfo(memory).isWritable())
        qputenv("TMPDIR", memory.toLocal8Bit());
}

Input readFile(const std::filesystem::path &path)
{
    std::ifstream file(path, std::ios::binary);
    Input input{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (!input.empty() && input.back() == '\n') // the file's own end
        input.pop_back();
    return input;
}

/// The files of \a directory in the order of their names, without the line feed at their end.
std::vector<Input> readCorpus(const std::filesystem::path &directory)
{
    std::vector<std::filesystem::path> paths;
    for (const auto &entry : std::filesystem::directory_iterator(directory))
        paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    std::vector<Input> corpus;
    for (const auto &path : paths)
        corpus.push_back(readFile(path));
    return corpus;
}

class Mutator
{
public:
    Mutator(const std::vector<Input> &corpus, unsigned long seed) : m_corpus(corpus), m_random(seed) {}

    Input next()
    {
        Input input = any();
        for (size_t left = 1 + below(6); left > 0; --left)
            change(input);
        return input;
    }

private:
    size_t below(size_t limit) { return limit == 0 ? 0 : size_t(m_random() % limit); }
    const Input &any() { return m_corpus[below(m_corpus.size())]; }

    /// A piece of some input of the corpus: forms and their halves.
    Input piece()
    {
        const Input &from = any();
        const size_t at = below(from.size());
        return from.substr(at, 1 + below(60));
    }

    void change(Input &input)
    {
        const size_t at = below(input.size() + 1);
        switch (below(6)) {
        case 0: input.insert(at, piece()); break;
        case 1: input.erase(at, 1 + below(30)); break;
        case 2: input.insert(at, input.substr(below(input.size() + 1), 1 + below(200))); break;
        case 3: input.insert(at, 1, char(below(256))); break;
        case 4: input = input.substr(0, at) + any(); break;
        default:
            if (at < input.size())
                input[at] = char(below(256));
        }
    }

    const std::vector<Input> &m_corpus;
    std::mt19937 m_random;
};

void run(const Input &input)
{
    underWay = input;
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(input.data()), input.size());
}

long ofEnvironment(const char *name, long otherwise)
{
    const char *text = std::getenv(name);
    return text == nullptr ? otherwise : std::atol(text);
}

/// Executions and their rate, told on the way, each hundred thousand and each minute of a slow target, and at
/// the end.
class Count
{
public:
    void run(const Input &input)
    {
        constexpr long Told = 100000;
        ::run(input);
        if (++m_done % Told == 0 || Clock::now() - m_told > std::chrono::minutes(1))
            tell();
    }

    void tell()
    {
        m_told = Clock::now();
        const std::chrono::duration<double> passed = m_told - m_begin;
        std::printf("%ld executions, %.0f a second\n", m_done, double(m_done) / passed.count());
        std::fflush(stdout); // whoever follows a series of days
    }

private:
    using Clock = std::chrono::steady_clock;

    const Clock::time_point m_begin = Clock::now();
    Clock::time_point m_told = m_begin;
    long m_done = 0;
};

/// The corpus, then \a runs mutations of it.
void runAll(const std::vector<Input> &corpus, long runs, long seed)
{
    Count count;
    for (const Input &input : corpus)
        count.run(input);
    Mutator mutator(corpus, static_cast<unsigned long>(seed));
    for (long left = runs; left > 0; --left)
        count.run(mutator.next());
    count.tell();
}
} // namespace

int main(int argc, char **argv)
{
    constexpr long UsualSeed = 20260731;
    workInMemory();
    if (argc == 3 && std::string(argv[1]) == "--input") {
        run(readFile(argv[2]));
        return 0;
    }
    const std::vector<Input> corpus = argc < 2 ? std::vector<Input>() : readCorpus(argv[1]);
    if (corpus.empty()) {
        std::fprintf(stderr, "usage: %s corpus-directory [runs | long [runs]]\n", argv[0]);
        return 1;
    }
    keepInputAtDeath();
    if (argc < 3 || std::string(argv[2]) != "long") {
        runAll(corpus, argc > 2 ? std::atol(argv[2]) : 2000, UsualSeed);
        return 0;
    }
    corpusOfFound = std::filesystem::absolute(argv[1]).string();
    const long runs = argc > 3 ? std::atol(argv[3]) : 10000000;
    runAll(corpus, ofEnvironment("VELDA_FUZZ_RUNS", runs), ofEnvironment("VELDA_FUZZ_SEED", UsualSeed));
    return 0;
}
