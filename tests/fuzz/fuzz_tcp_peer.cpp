// A TCP peer that says any byte in any phase of a procedure: the bytes go through the stream of the link and
// the receiver to the procedure, which has telegrams to send, calls to answer and its seconds to pass.
//
// An input begins with the procedure, "0", "1" or "2". Text goes as the bytes of the line's code, a character
// that it does not have as its low byte: "µ" is a window report, "Ī" the sign "*" of a command. "~" and a
// letter are what happens at this end; they also end a read.

#include "app/options.h"
#include "app/procedure.h"
#include "link/tlg_thread.h"
#include "tests/fuzz/fuzz.h"
#include "tests/fuzz/peer_desk.h"
#include "text/encodings.h"

namespace
{
QByteArray bytesOf(const QString &text)
{
    QByteArray bytes;
    for (const QChar c : text) {
        QString one(c);
        QByteArray code;
        CORVAFromQString(one, code);
        bytes += code.isEmpty() ? QByteArray(1, char(c.unicode() & 0xFF)) : code;
    }
    return bytes;
}

void toggle(bool &option)
{
    option = !option;
}

void setOption(QChar command)
{
    switch (command.unicode()) {
    case 'A': return toggle(Options.noCheckAOText);
    case 'B': return toggle(Options.noCheckAOAbonent);
    case 'E': return toggle(Options.afterConnectAskAO);
    case 'F': return toggle(Options.stationTimeAfterConnect);
    case 'S': return toggle(Options.SendConfirmation);
    case 'W': Options.waitNote = 1 - Options.waitNote; return;
    case 'Y': Options.CKS_Type = (Options.CKS_Type + 1) % 5; return;
    case 'D': Options.tlgSig = SignalCodeByProgram; return;
    case 'P': (void)TlgThread.startProtectedMode(); return;
    case 'p': TlgThread.stopProtectedMode(); return;
    default: return;
    }
}

void act(PeerDesk &desk, QChar command)
{
    switch (command.unicode()) {
    case 'c': return desk.connect();
    case 'x': return desk.hangUp();
    case 'k': return desk.agreeKey();
    case 'q': return desk.queue(false);
    case 'Q': return desk.queue(true);
    case 'a': return desk.setAutomatic(true);
    case 'm': return desk.setAutomatic(false);
    case 'h': return desk.hangUpByHand();
    case 't': return desk.tick(1);
    case '5': return desk.tick(5);
    case 'T': return desk.tick(35); // a silence
    default: return setOption(command);
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    constexpr int MostSteps = 200; // their seconds stay within the day
    const int procedure = size > 0 && data[0] >= '0' && data[0] <= '2' ? data[0] - '0' : CKS;
    PeerDesk desk(procedure);
    bool singly = false;
    QVector<Fuzz::Step> steps = Fuzz::session(data, size).mid(0, MostSteps);
    steps.first().text.remove(0, 1);
    for (const Fuzz::Step &step : qAsConst(steps)) {
        desk.hear(bytesOf(step.text), singly);
        if (step.command == u'b')
            toggle(singly);
        else
            act(desk, step.command);
    }
    desk.checkBooks();
    return 0;
}
