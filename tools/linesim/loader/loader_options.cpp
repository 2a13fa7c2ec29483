#include "tools/linesim/loader/loader_options.h"

#include "tools/linesim/far_end/far_end_options.h"

#include <QCommandLineParser>

#include <cstdio>

namespace
{
const FarEndOption table[] = {
    {"port", "PATH", "the port's path; without it the system's name for it"},
    {"serial", "NUMBER", "the adapter's serial number (10000001)"},
    {"fault", "KIND:STEP[:N]",
     "wrong, silent, unplug or late at sync, enter, address, page or leave, the N-th of them from 0 or each"},
    {"rubbish", "N", "bytes before each answer"},
    {"noise", "SEED", "answers are any bytes"},
};

/// The place of \a word in \a words; -1 if it is none of them.
int place(const QString &word, const QStringList &words)
{
    return words.indexOf(word);
}

bool readFaults(const QCommandLineParser &parser, QVector<LoaderFault> &faults)
{
    for (const QString &value : parser.values(QStringLiteral("fault"))) {
        const std::optional<LoaderFault> fault = readLoaderFault(value);
        if (!fault)
            return false;
        faults.append(*fault);
    }
    return true;
}
} // namespace

std::optional<LoaderFault> readLoaderFault(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char(':'));
    const int kind = place(parts.value(0), {QStringLiteral("wrong"), QStringLiteral("silent"),
                                            QStringLiteral("unplug"), QStringLiteral("late")});
    const int step =
        place(parts.value(1), {QStringLiteral("sync"), QStringLiteral("enter"), QStringLiteral("address"),
                               QStringLiteral("page"), QStringLiteral("leave")});
    LoaderFault fault;
    bool ok = kind >= 0 && step >= 0 && parts.size() <= 3;
    if (ok && parts.size() == 3) {
        fault.nth = parts.at(2).toInt(&ok);
        ok = ok && fault.nth >= 0;
    }
    if (!ok)
        return std::nullopt;
    fault.kind = LoaderFault::Kind(kind);
    fault.step = LoaderFault::Step(step);
    return fault;
}

std::optional<LoaderOptions> readLoaderOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("An adapter's boot loader on a serial port, which takes an image and can fail."));
    addOptions(parser, table);
    parser.addHelpOption();
    LoaderOptions options;
    if (!parseFarEnd(parser, arguments))
        return std::nullopt;
    options.port = parser.value(QStringLiteral("port"));
    if (parser.isSet(QStringLiteral("serial")))
        options.serial = parser.value(QStringLiteral("serial"));
    if (readFaults(parser, options.faults) && readNumber(parser, "rubbish", options.rubbish) &&
        readNumber(parser, "noise", options.noise) && parser.positionalArguments().isEmpty())
        return options;
    std::fputs("the options are not understood\n", stderr);
    return std::nullopt;
}
