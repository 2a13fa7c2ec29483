#include "tools/linesim/loader/loader.h"

#include "tools/linesim/console/run_until_quit.h"

#include <QTimer>

namespace
{
using Step = LoaderFault::Step;

constexpr char EndMark = 0x20;
constexpr char FlashMemory = 0x46;
constexpr int PageHead = 4;       // command, count, memory
constexpr int LateMs = 130;       // the other end waits for 100 ms
constexpr int GreatestPage = 256; // of the devices of this family
const QByteArray Good = QByteArrayLiteral("\x14\x10");
const QByteArray Failed = QByteArrayLiteral("\x14\x11");
const QByteArray NotInStep = QByteArrayLiteral("\x15");

struct Form {
    char first;
    int length; // with the end mark, without data
    Step step;
};

const Form forms[] = {
    {0x30, 2, LoaderFault::Sync},    {0x50, 2, LoaderFault::Enter}, {0x51, 2, LoaderFault::Leave},
    {0x55, 4, LoaderFault::Address}, {0x64, 5, LoaderFault::Page},
};

const Form *formOf(const QByteArray &bytes)
{
    for (const Form &form : forms)
        if (!bytes.isEmpty() && bytes.at(0) == form.first)
            return &form;
    return nullptr;
}

int pageCount(const QByteArray &command)
{
    return 256 * quint8(command.at(1)) + quint8(command.at(2));
}

QString shown(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toHex(' '));
}
} // namespace

Loader::Loader(const LoaderOptions &options, EventLog &log)
    : m_options(options), m_log(log), m_terminal(options.port), m_random(unsigned(qMax(0, options.noise)))
{
    connect(&m_terminal, &PseudoTerminal::opened, this, &Loader::takeOpening);
    connect(&m_terminal, &PseudoTerminal::closed, this, [this] { m_log.event(QStringLiteral("closed")); });
    connect(&m_terminal, &PseudoTerminal::received, this, &Loader::takeBytes);
}

bool Loader::start()
{
    if (!m_terminal.plug())
        return false;
    m_log.event(QStringLiteral("port"), m_options.serial + QLatin1Char('=') + m_terminal.portName());
    return true;
}

void Loader::run(const QString &command)
{
    const std::optional<LoaderFault> fault = readLoaderFault(command.section(QLatin1Char(' '), 1));
    if (command == QLatin1String("plug"))
        (void)start();
    else if (command == QLatin1String("unplug"))
        unplug();
    else if (command == QLatin1String("quit"))
        emit quit();
    else if (command.startsWith(QLatin1String("fault ")) && fault)
        m_options.faults.append(*fault);
    else
        m_log.event(QStringLiteral("error"), command);
}

/// Whoever opens the port resets the device.
void Loader::takeOpening()
{
    m_buffer.clear();
    std::fill(std::begin(m_counts), std::end(m_counts), 0);
    m_entered = m_address = false;
    m_log.event(QStringLiteral("opened"));
}

void Loader::takeBytes(const QByteArray &bytes)
{
    m_buffer += bytes;
    while (m_terminal.isPlugged()) {
        const QByteArray command = takeCommand();
        if (command.isEmpty())
            return;
        m_log.event(QStringLiteral("command"), shown(command));
        const Form *form = formOf(command);
        if (form == nullptr || !command.endsWith(EndMark)) {
            m_log.violation(QStringLiteral("no command"));
            m_terminal.write(NotInStep);
            continue;
        }
        examine(command, form->step);
        answer(form->step);
    }
}

/// The command at the head of the buffer, or a single byte that begins none; empty until it is whole.
QByteArray Loader::takeCommand()
{
    const Form *form = formOf(m_buffer);
    int length = form != nullptr ? form->length : 1;
    if (m_buffer.size() >= PageHead && form != nullptr && form->step == LoaderFault::Page)
        length += pageCount(m_buffer);
    if (m_buffer.size() < length)
        return QByteArray();
    QByteArray command = m_buffer.left(length);
    m_buffer.remove(0, length);
    return command;
}

void Loader::examine(const QByteArray &command, Step step)
{
    switch (step) {
    case LoaderFault::Sync: return;
    case LoaderFault::Enter: m_entered = true; return;
    case LoaderFault::Address: m_address = true; break;
    case LoaderFault::Page:
        if (!m_address || command.at(3) != FlashMemory || pageCount(command) > GreatestPage)
            m_log.violation(QStringLiteral("page without address, of another memory or too long"));
        m_address = false;
        break;
    case LoaderFault::Leave: break;
    }
    if (!m_entered)
        m_log.violation(QStringLiteral("not in programming mode"));
    if (step == LoaderFault::Leave)
        m_entered = false;
}

void Loader::answer(Step step)
{
    const int nth = m_counts[step]++;
    for (const LoaderFault &fault : qAsConst(m_options.faults)) {
        if (fault.step != step || (fault.nth >= 0 && fault.nth != nth))
            continue;
        switch (fault.kind) {
        case LoaderFault::Wrong: m_terminal.write(Failed); return;
        case LoaderFault::Silent: return;
        case LoaderFault::Unplug: // not under the terminal, which is telling of the command
            QMetaObject::invokeMethod(this, &Loader::unplug, Qt::QueuedConnection);
            return;
        case LoaderFault::Late: QTimer::singleShot(LateMs, this, [this] { m_terminal.write(Good); }); return;
        }
    }
    m_terminal.write(m_options.noise >= 0 ? anyBytes() : rubbish() + Good);
}

void Loader::unplug()
{
    m_terminal.unplug();
    m_log.event(QStringLiteral("unplugged"));
}

/// Often the good answer, so that the other side gets on to all its steps.
QByteArray Loader::anyBytes()
{
    QByteArray bytes;
    for (auto left = m_random() % 6; left > 0; --left)
        bytes += char(m_random() % 256);
    return m_random() % 16 == 0 ? bytes : bytes + Good;
}

/// Bytes of every value but the one that begins an answer.
QByteArray Loader::rubbish()
{
    QByteArray bytes;
    while (bytes.size() < m_options.rubbish) {
        const char byte = char(m_random() % 256);
        if (byte != Good.at(0))
            bytes += byte;
    }
    return bytes;
}

int runLoader(const QStringList &arguments)
{
    return runEnd<Loader>(readLoaderOptions(arguments));
}
