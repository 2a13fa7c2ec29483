#pragma once

#include <QString>
#include <QVector>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// Fuzz targets: each takes any bytes and must neither crash nor break its rules. With libFuzzer they are
/// built as they stand; everywhere else driver.cpp feeds them its corpus and mutations of it.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

namespace Fuzz
{
/// Text of the line and what happens behind it.
struct Step {
    QString text;
    QChar command; ///< null at the end of the input
};

/// Reads an input as a session: UTF-8 text in which "~r" and "~n" are a return and a line feed, and "~"
/// with any other character ends a piece of text, that character being the command.
inline QVector<Step> session(const uint8_t *data, size_t size)
{
    constexpr size_t Longest = 1 << 14;
    const QString input = QString::fromUtf8(reinterpret_cast<const char *>(data), int(qMin(size, Longest)));
    QVector<Step> steps(1);
    for (int i = 0; i < input.size(); ++i) {
        const QChar c = input.at(i);
        if (c != u'~' || i + 1 == input.size()) {
            steps.last().text += c;
            continue;
        }
        const QChar command = input.at(++i);
        if (command == u'r' || command == u'n') {
            steps.last().text += command == u'r' ? u'\r' : u'\n';
            continue;
        }
        steps.last().command = command;
        steps.append(Step());
    }
    return steps;
}

/// Ends the program, as a sanitizer does, if a rule is broken.
inline void check(bool holds, const char *rule)
{
    if (holds)
        return;
    std::fprintf(stderr, "broken: %s\n", rule);
    std::abort();
}
} // namespace Fuzz
