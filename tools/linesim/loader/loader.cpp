#include "tools/linesim/loader/loader.h"

#include "tools/linesim/console/command_table.h"
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
    : SerialDevice(options.serial, options.port, log), m_options(options),
      m_noise(quint32(qMax(0, options.noise)))
{
}

bool Loader::runOwn(const QString &name, const QString &argument)
{
    static const Command<Loader> commands[] = {
        {"fault", [](Loader &loader, const QString &text) { loader.addFault(text); }}, // KIND:STEP[:N]
    };
    return runFrom(commands, *this, name, argument) || SerialDevice::runOwn(name, argument);
}

void Loader::addFault(const QString &text)
{
    if (const std::optional<LoaderFault> fault = readLoaderFault(text))
        m_options.faults.append(*fault);
    else
        m_log.event(QStringLiteral("error"), QStringLiteral("fault ") + text);
}

/// Whoever opens the port resets the device.
void Loader::takeOpening()
{
    m_buffer.clear();
    std::fill(std::begin(m_counts), std::end(m_counts), 0);
    m_entered = m_address = false;
}

void Loader::takeBytes(const QByteArray &bytes)
{
    m_buffer += bytes;
    while (m_port.isPlugged()) {
        const QByteArray command = takeCommand();
        if (command.isEmpty())
            return;
        m_log.event(QStringLiteral("command"), shown(command));
        const Form *form = formOf(command);
        if (form == nullptr || !command.endsWith(EndMark)) {
            m_log.violation(QStringLiteral("no command"));
            m_port.write(NotInStep);
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
        case LoaderFault::Wrong: m_port.write(Failed); return;
        case LoaderFault::Silent: return;
        case LoaderFault::Unplug: // not under the terminal, which is telling of the command
            QTimer::singleShot(0, this, [this] { unplug(); });
            return;
        case LoaderFault::Late: QTimer::singleShot(LateMs, this, [this] { m_port.write(Good); }); return;
        }
    }
    m_port.write(m_options.noise >= 0 ? anyBytes() : rubbish() + Good);
}

/// Often the good answer, so that the other side gets on to all its steps.
QByteArray Loader::anyBytes()
{
    const QByteArray bytes = m_noise.bytes(m_noise.below(6));
    return m_noise.below(16) == 0 ? bytes : bytes + Good;
}

/// Bytes of every value but the one that begins an answer.
QByteArray Loader::rubbish()
{
    QByteArray bytes;
    while (bytes.size() < m_options.rubbish) {
        const char byte = char(m_noise.byte());
        if (byte != Good.at(0))
            bytes += byte;
    }
    return bytes;
}

int runLoader(const QStringList &arguments)
{
    return runEnd<Loader>(readLoaderOptions(arguments));
}
