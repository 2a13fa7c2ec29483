// A centre that says anything at any moment.

#include "app/options.h"
#include "app/state.h"
#include "tests/fuzz/fuzz.h"
#include "tests/procedures/cks_desk.h"
#include "text/utils.h"

namespace
{
struct Counters {
    int in = State.PK_in;
    int out = State.PK_out;
    int centreIn = State.CKS_in;
    int centreOut = State.CKS_out;
};

/// One message at most has been taken, so each counter has changed once at most, and by its own form:
/// \a heard is the text that was there, without register marks.
void checkCounted(const Counters &before, const QString &heard)
{
    const auto said = [&heard](const char *form) { return heard.contains(QString::fromUtf8(form)); };
    const bool renumbered = said("СМЕНА НУМЕРАЦИИ ПРИН ");
    const bool corrected = said("ОБРАЩАЙТЕСЬ В КСС ЗА ");
    const bool isMessage = CUtils::indexOfZCZC(heard) >= 0 && CUtils::indexOfNNNN(heard) >= 0;
    Fuzz::check(State.PK_in == before.in || (isMessage && State.PK_in == (before.in + 1) % 1000) ||
                    (renumbered && State.PK_in == 0) || corrected,
                "telegrams received");
    Fuzz::check(State.PK_out == before.out || (renumbered && State.PK_out == 0), "telegrams sent");
    Fuzz::check(State.CKS_in == before.centreIn || (isMessage && said("ВАШ ")),
                "our telegrams at the centre");
    Fuzz::check(State.CKS_out == before.centreOut || (isMessage && said("ВАШ ")), "the centre's telegrams");
    Fuzz::check(State.SKK_in == 0 && State.SKK_out == 0, "connections are none of this procedure");
}

void tick()
{
    constexpr int MostNoise = 256;
    const Counters before;
    const QString held = ProcessCKS.receiveBuffer;
    const bool looks = ProcessCKS.receiveChunks != 0 || State.secondsSinceRx % 5 == 0;
    ProcessCKS.timeCheck1sec();
    checkCounted(before, CUtils::removeRegisters(held));
    Fuzz::check(held.endsWith(ProcessCKS.receiveBuffer), "the buffer loses only its head");
    const bool waits = CUtils::indexOfZCZC(held) >= 0;
    Fuzz::check(!looks || waits || ProcessCKS.receiveBuffer.size() <= MostNoise, "noise is bounded");
    Fuzz::check(State.tlgMode >= 0 && State.tlgMode <= 5, "mode of the channel");
    Fuzz::check(State.fileInProgress || State.currentFile.isEmpty(), "a name without a file");
}

void act(const CksDesk &desk, QChar command)
{
    switch (command.unicode()) {
    case 't': State.secondsSinceRx = 1; return tick();
    case 's': // five seconds of silence
        for (int i = 0; i < 5; ++i) {
            ++State.secondsSinceRx;
            tick();
        }
        return;
    case 'o': State.tlgMode = 3; return;
    case 'm': State.manualMode = true; return;
    case 'a': State.manualMode = false; return;
    case 'f': return desk.inTransit();
    case 'w': Options.waitNote = 1; return;
    case 'v': Options.waitNote = 0; return;
    case 'p':
        State.PK_in = 999;
        State.PK_out = 0;
        return;
    case 'y':
        State.prevPK_in = 35;
        State.prevPK_out = 12;
        return;
    default: return;
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const CksDesk desk;
    for (const Fuzz::Step &step : Fuzz::session(data, size)) {
        if (!step.text.isEmpty())
            ProcessCKS.processReceive(step.text);
        act(desk, step.command);
        (void)desk.sent();
    }
    tick();
    return 0;
}
