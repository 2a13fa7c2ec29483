#include "tools/linesim/nerva/nerva_options.h"

#include "tools/linesim/far_end/far_end_options.h"
#include "tools/linesim/nerva/nerva_line.h"

namespace
{
constexpr int SerialLength = 8;

const FarEndOption table[] = {
    {"set", "KEY=VALUE", "a value of its configuration"},
    {"fault", "NAME", "when asked for it: silent, torn, no-end, mac16, eth7, wrong-kind, megabyte or unplug"},
    {"start", "MS", "behind the opening of the port, in which it is not to be configured (1500)"},
};
} // namespace

void addNervaOptions(QCommandLineParser &parser)
{
    addOptions(parser, table);
}

bool readNervaOptions(const QCommandLineParser &parser, AdapterLine::Settings &line)
{
    NervaSettings nerva;
    for (const QString &value : parser.values(QStringLiteral("set")))
        nerva.values.append({value.section(QLatin1Char('='), 0, 0), value.section(QLatin1Char('='), 1)});
    const QString fault = parser.value(QStringLiteral("fault"));
    const bool known = fault.isEmpty() || NervaLine::readFault(fault, nerva.fault);
    if (!known || !readNumber(parser, "start", nerva.startMs))
        return false;
    if (!parser.isSet(QStringLiteral("serial")))
        line.serial = QStringLiteral("30000001");
    line.nerva = nerva;
    return line.serial.size() == SerialLength && line.serial.startsWith(QLatin1Char('3'));
}
