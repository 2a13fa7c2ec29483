// The clerk's commands.

#include "tools/linesim/centre/centre_desk.h"
#include "tools/linesim/centre/centre_texts.h"
#include "tools/linesim/console/command_table.h"
#include "tools/linesim/console/event_log.h"

namespace
{
bool isOn(const QString &argument)
{
    return argument != QLatin1String("off");
}

int headerForm(const QString &argument)
{
    constexpr int InTurn = 4;
    return argument == QLatin1String("turn") ? InTurn : qBound(0, argument.toInt(), InTurn - 1);
}

// One command for each message that a centre may send, those of telegrams aside.
const Command<CentreDesk> messages[] = {
    {"ask", [](CentreDesk &d, const QString &) { d.askForReceiptRequest(); }},
    {"announce-renumber",
     [](CentreDesk &d, const QString &) {
         d.sendService(QStringLiteral("ЗАПРОСИТЕ КВИТАНЦИЮ СМЕНА НУМЕРАЦИИ В 0001"));
     }},
    {"receipt", [](CentreDesk &d, const QString &words) { d.giveReceipt(words); }},
    {"open", [](CentreDesk &d, const QString &) { d.askToOpen(); }},
    {"opened", [](CentreDesk &d, const QString &) { d.declareOpen(); }},
    {"close", [](CentreDesk &d, const QString &) { d.closeChannel(); }},
    {"wait", [](CentreDesk &d, const QString &) { d.waitForOpening(); }},
    {"renumber", [](CentreDesk &d, const QString &) { d.renumber(); }},
    {"elsewhere", [](CentreDesk &d, const QString &count) { d.referElsewhere(qMax(1, count.toInt())); }},
    {"repeat", [](CentreDesk &d, const QString &number) { d.repeatFrom(number.toInt()); }},
    {"repeated", [](CentreDesk &d, const QString &) { d.sendService(QStringLiteral("ПОВТОР ОКОНЧЕН")); }},
    {"accept", [](CentreDesk &d, const QString &) { d.acceptLast(); }},
    {"confirm", [](CentreDesk &d, const QString &) { d.askToConfirm(); }},
    {"taken",
     [](CentreDesk &d, const QString &) { d.sendService(QStringLiteral("ССС ПРИНЯТО %1").arg(d.got)); }},
    {"kg", [](CentreDesk &d, const QString &text) { d.sendService(unescaped(text)); }},
};

const Command<CentreDesk> faults[] = {
    {"lose-receipt", [](CentreDesk &d, const QString &) { d.loseReceipt(); }}, // no ear for the next request
    {"distort", [](CentreDesk &d, const QString &form) { d.distort(form); }},  // the terminal's next telegram
    {"refuse", [](CentreDesk &d, const QString &) { d.refuse(); }},            // likewise
    {"wrong-number", [](CentreDesk &d, const QString &) { d.wrongNumber(); }}, // before the right one
    {"twice", [](CentreDesk &d, const QString &) { d.repeatNext(); }},         // the next telegram
    {"interrupt", [](CentreDesk &d, const QString &) { d.interrupt(); }}, // it breaks off and begins anew
};

const Command<CentreDesk> ways[] = {
    {"header", [](CentreDesk &d, const QString &form) { d.settings.header = headerForm(form); }},
    {"stamps", [](CentreDesk &d, const QString &on) { d.settings.stamps = isOn(on); }},
    {"note", [](CentreDesk &d, const QString &note) { d.settings.note = centreNote(note); }},
    {"registers", [](CentreDesk &d, const QString &on) { d.settings.registers = isOn(on); }},
    {"clock", [](CentreDesk &d, const QString &minutes) { d.settings.clockOffMinutes = minutes.toInt(); }},
};
} // namespace

bool CentreDesk::run(const QString &name, const QString &argument)
{
    return runFrom(messages, *this, name, argument) || runFrom(faults, *this, name, argument) ||
           runFrom(ways, *this, name, argument);
}
