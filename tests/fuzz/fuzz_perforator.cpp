// An adapter that says any byte at any moment, at the other end of a real serial port. "~" and a letter in
// the input are something that happens to the workstation; everything else goes to the port.

#include "link/prf_thread.h"
#include "tests/fuzz/fuzz.h"
#include "tools/linesim/serial/mtk2_code.h"
#include "tools/linesim/serial/pseudo_terminal.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <functional>

namespace
{
constexpr int WaitMs = 10000;
const QString Telegram = QStringLiteral("|ЗЦЗЦ #001 & LONDON |ТЕКСТ 12, А-Б\r\n");

bool waitFor(const std::function<bool()> &condition, int ms = WaitMs)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition() && timer.elapsed() < ms)
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 5);
    return condition();
}

class Session
{
public:
    Session()
    {
        QObject::connect(&m_terminal, &PseudoTerminal::received, &m_terminal,
                         [this](const QByteArray &bytes) { m_got += bytes; });
        plug();
        m_thread.setSorel(QStringLiteral("20000001"), 0, false);
        m_thread.start();
        Fuzz::check(waitFor([this] { return m_terminal.isOpen() && m_got == "\x61"; }), "greeting");
    }
    ~Session()
    {
        m_thread.stopThread();
        Fuzz::check(m_thread.wait(WaitMs), "a stop ends the thread");
        qunsetenv("VELDA_PORTS");
    }
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    void say(char byte)
    {
        const quint8 value = quint8(byte);
        m_terminal.write(QByteArray(1, byte));
        if (value < 0x20)
            m_codes += byte;
        else
            ++m_marked;
        if (value >= 0x20 && value < 0x40)
            m_granted += value > 0x24 ? (value & 0x1F) + 3 : 0; // a piece may outgrow its room by three
    }
    void act(char command)
    {
        switch (command) {
        case 's': return send(Telegram);
        case 'S': return send(Telegram.repeated(20));
        case '|': return send(QStringLiteral("||||||||||"));
        case 'x': return send(QStringLiteral("№^!@№"));
        case 'r': return m_thread.startRead();
        case 'p': return m_thread.stopRead();
        case 't': return pause();
        case 'c': m_thread.clearSend(); break;
        case 'd': m_thread.Deactivate(); break;
        case 'a': m_thread.Activate(); break;
        case 'u':
            m_terminal.unplug();
            plug();
            break;
        default: return say(command);
        }
        m_undisturbed = false; // the texts of two connections are not to be compared
    }
    void finish()
    {
        if (!m_undisturbed)
            return;
        say(0x03);
        say(0x40); // answered when all before it is done
        const int read = m_codes.size();
        Fuzz::check(waitFor([&] { return (m_read += m_thread.getAndClearReceive()).size() >= read; }),
                    "all that is read becomes text");
        Fuzz::check(waitFor([this] { return m_got.count(0x61) > 1; }), "an answer");
        Mtk2::Register state = Mtk2::Latin;
        Fuzz::check(m_read == Mtk2::decoded(m_codes, state), "text read");
        punchAsFarAsItGoes();
        checkGot();
    }

private:
    void plug()
    {
        Fuzz::check(m_terminal.plug(), "a port");
        qputenv("VELDA_PORTS", "20000001=" + m_terminal.portName().toLocal8Bit());
    }
    /// Lets the thread do a pass or two.
    void pause() const
    {
        QThread::msleep(15);
        QCoreApplication::processEvents();
    }
    /// Waits until nothing comes any more. Without an end to the room, all of the text would.
    void punchAsFarAsItGoes()
    {
        for (int before = -1; before != m_got.size();) {
            before = m_got.size();
            (void)waitFor([&] { return m_got.size() > before; }, 40);
        }
    }
    void send(const QString &text)
    {
        m_thread.Send(text);
        m_sent += text;
    }
    void checkGot() const
    {
        QByteArray punched;
        int answers = 0;
        for (const char byte : m_got) {
            if (quint8(byte) < 0x20)
                punched += byte;
            else
                Fuzz::check(byte == 0x61 || byte == 0x51 || byte == 0x50, "a byte with a meaning");
            answers += byte == 0x61 ? 1 : 0;
        }
        Fuzz::check(answers > 1 && answers <= 1 + m_marked, "answers");
        Fuzz::check(punched.size() <= m_granted, "overrun");
        Mtk2::Register state = Mtk2::Latin;
        Fuzz::check(Mtk2::encoded(m_sent, state).startsWith(punched), "text punched");
    }

    PseudoTerminal m_terminal;
    CPrfThread m_thread;
    QByteArray m_got, m_codes;
    QString m_sent, m_read;
    int m_marked = 0;  ///< bytes that want an answer
    int m_granted = 0; ///< codes that may have come at most
    bool m_undisturbed = true;
};
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    constexpr size_t Longest = 2048; // the port takes it at once
    static int argc = 0;
    static QCoreApplication application(argc, nullptr);
    Session session;
    for (size_t i = 0; i < qMin(size, Longest); ++i) {
        if (data[i] == '~' && i + 1 < size)
            session.act(char(data[++i]));
        else
            session.say(char(data[i]));
    }
    session.finish();
    return 0;
}
