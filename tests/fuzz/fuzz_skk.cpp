// A line that says anything at any moment of a dialled connection.

#include "app/options.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "tests/fuzz/fuzz.h"
#include "tests/procedures/skk_desk.h"

namespace
{
struct Counters {
    int telegramsIn = State.PK_in;
    int telegramsOut = State.PK_out;
    int incoming = State.SKK_in;
    int outgoing = State.SKK_out;
};

int countOf(const QString &text, std::initializer_list<const char *> forms)
{
    int count = 0;
    for (const char *form : forms)
        count += text.count(QString::fromUtf8(form));
    return count;
}

void checkState()
{
    Fuzz::check(State.callDirection >= 0 && State.callDirection <= 2, "direction");
    Fuzz::check(State.callState >= 0 && State.callState <= 6 && State.callState != 3, "state of the call");
    Fuzz::check(State.AutoModeState >= 0 && State.AutoModeState <= 17, "state of the automatic send");
    Fuzz::check(State.AutoModeWaitTimer >= 0 && State.AutoModeWaitTimer <= 80, "timer of the automatic send");
    Fuzz::check(State.waitTimeAfterCallEstablished >= 0 && State.waitTimeAfterCallEstablished <= 80,
                "watchdog");
    Fuzz::check(State.CKS_in == 0 && State.CKS_out == 0, "the centre's counters are none of this procedure");
    Fuzz::check(State.fileInProgress || State.currentFile.isEmpty(), "a name without a file");
}

/// What one piece may count: no more than its forms, and those that waited in the buffer, allow.
void checkCounted(const Counters &before, const QString &text)
{
    const int ends = countOf(text, {"НННН  "});
    Fuzz::check(State.PK_in >= before.telegramsIn && State.PK_in - before.telegramsIn <= ends,
                "telegrams received");
    const int opened = countOf(text, {"#\r\n", "\r\n#", "#*"});
    const int anyText = Options.noCheckAOText ? 1 : 0;
    Fuzz::check(State.PK_out - before.telegramsOut <= opened + anyText, "telegrams sent");
    const int hangUps = countOf(text, {"@H", "!>ОТБОЙ", "!>СИГНАЛ", "\r\n&"}) + ends + opened;
    Fuzz::check(State.SKK_in - before.incoming <= hangUps, "incoming connections");
    Fuzz::check(State.SKK_out - before.outgoing <= hangUps, "outgoing connections");
}

void receive(const SkkDesk &desk, const QString &text)
{
    constexpr int MostNoise = 256;
    const Counters before;
    const QString whole = ProcessSKK.receiveBuffer + text;
    const bool mayWait = Options.TcpMode || State.callState != 0;
    ProcessSKK.processReceive(text);
    Fuzz::check(whole.endsWith(ProcessSKK.receiveBuffer), "the buffer loses only its head");
    Fuzz::check(mayWait || State.callState != 0 || State.callDirection != 0 ||
                    ProcessSKK.receiveBuffer.size() <= MostNoise,
                "noise is bounded");
    Fuzz::check(desk.sent().size() <= 60 * (whole.size() + 1), "what is sent is bounded");
    checkCounted(before, whole);
}

void toggle(bool &option)
{
    option = !option;
}

void setUp(const SkkDesk &desk, QChar command)
{
    switch (command.unicode()) {
    case 'i': ProcessSKK.setCallDirection(1); break;
    case 'o': ProcessSKK.setCallDirection(2); break;
    case 's': desk.automatic(5, 9); break;
    case 'S': desk.automatic(14, 9); break;
    case 'c': desk.automatic(5, 9, true); break;
    case 'C': desk.automatic(14, 9, true); break;
    case '7': State.AutoModeWaitAA = 7; break;
    case '8': State.AutoModeWaitAA = 8; break;
    case '9': State.AutoModeWaitAA = 9; break;
    case 'd': ProcessSKK.callNumber(QStringLiteral("123456")); break;
    case 'D':
        Options.tlgSig = 2;
        ProcessSKK.callNumber(QStringLiteral("123456"));
        break;
    default: break;
    }
}

void act(const SkkDesk &desk, QChar command)
{
    switch (command.unicode()) {
    case 't': desk.tick(); break;
    case 'a': desk.autoTick(); break;
    case 'q': State.secondsSinceRx += 3; break;
    case 'h': ProcessSKK.clearSKKConnection(); break;
    case 'm': ProcessSKK.clearAutoMode(); break;
    case 'x': toggle(Options.TcpMode); break;
    case 'k': toggle(Options.noCheckAOText); break;
    case 'l': toggle(Options.noCheckAOAbonent); break;
    case 'p': Options.SKKTiming[0].Pause_Before_Send_AA = 3; break;
    case 'e': Options.timeFormat.clear(); break;
    case 'f': Options.timeFormat = QStringLiteral("hh.mm"); break;
    default:
        if (command >= u'0' && command <= u'5')
            Options.CKS_Type = command.digitValue();
        else
            setUp(desk, command);
    }
    (void)desk.sent();
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const SkkDesk desk;
    for (const Fuzz::Step &step : Fuzz::session(data, size)) {
        receive(desk, step.text);
        checkState();
        act(desk, step.command);
        checkState();
    }
    return 0;
}
