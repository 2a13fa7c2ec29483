// A board with a processor and its boot loader behind a serial port, for tests of loading:
//   avr_board BOOT-LOADER.hex PROCESSOR
// It prints one line per event: "port: NAME", "opened", "closed", "pin: N" at the N-th change of PB5 since
// the reset, "dumped: PATH", "crashed"; and takes commands on its standard input: "reset", "dump PATH",
// "quit".
//
// The serial port has no DTR, so opening it stands for the reset that DTR makes on a board. The time that the
// program spends on moving DTR does not count: the loader, once it listens, stands still until a byte comes.

#include "tests/firmware/avr_chip.h"
#include "tools/linesim/console/command_reader.h"
#include "tools/linesim/console/event_log.h"
#include "tools/linesim/serial/pseudo_terminal.h"

#include <QCoreApplication>
#include <QFile>
#include <QTimer>

namespace
{
constexpr int SliceMs = 5;
constexpr quint64 StartCycles = 2400000;  // 150 ms: the loader has shown its light and listens
constexpr quint64 HurryCycles = 48000000; // 3 s after a reset by hand, in which a loader gives up waiting
constexpr quint64 SliceCycles = 20000;    // at 4 MHz while nothing is said: that leaves the machine to others
} // namespace

class Board : public QObject
{
    Q_OBJECT

public:
    explicit Board(const QString &processor) : m_chip(processor) {}

    [[nodiscard]] bool start(const QString &bootLoader)
    {
        connect(&m_terminal, &PseudoTerminal::opened, this, &Board::takeOpening);
        connect(&m_terminal, &PseudoTerminal::closed, this, &Board::takeClosing);
        connect(&m_terminal, &PseudoTerminal::received, this, &Board::takeBytes);
        connect(&m_timer, &QTimer::timeout, this, &Board::slice);
        if (!m_chip.load(bootLoader) || !m_terminal.plug())
            return false;
        m_log.event(QStringLiteral("port"), m_terminal.portName());
        m_timer.start(SliceMs);
        return true;
    }

    void run(const QString &command)
    {
        if (command == QLatin1String("reset"))
            reset();
        else if (command == QLatin1String("quit"))
            emit quit();
        else if (command.startsWith(QLatin1String("dump ")))
            dump(command.mid(5));
        else
            m_log.event(QStringLiteral("error"), command);
    }

signals:
    void quit();

private:
    void reset()
    {
        m_chip.reset();
        m_state = Running;
        m_timer.start(0);
    }

    void takeOpening()
    {
        m_log.event(QStringLiteral("opened"));
        reset();
        m_state = Starting;
    }

    void takeClosing()
    {
        m_log.event(QStringLiteral("closed"));
        m_state = Running;
        m_timer.start(0);
    }

    void takeBytes(const QByteArray &bytes)
    {
        m_state = Running;
        m_chip.feed(bytes);
        m_timer.start(0);
    }

    void slice()
    {
        if (m_state == Starting && m_chip.age() > StartCycles)
            return m_timer.stop();
        const bool hurried =
            m_terminal.isOpen() ? m_state == Starting || m_chip.isTalking() : m_chip.age() < HurryCycles;
        const bool alive = m_chip.run(SliceCycles);
        m_terminal.write(m_chip.takeOutput());
        for (const quint64 cycles : m_chip.takePinTimes())
            m_log.event(QStringLiteral("pin"), QString::number(cycles));
        if (alive)
            return m_timer.start(hurried ? 0 : SliceMs);
        m_log.event(QStringLiteral("crashed"));
        m_timer.stop();
    }

    void dump(const QString &path)
    {
        QFile file(path);
        const QByteArray flash = m_chip.flash();
        if (file.open(QIODevice::WriteOnly) && file.write(flash) == flash.size() && file.flush())
            m_log.event(QStringLiteral("dumped"), path);
    }

    EventLog m_log;
    AvrChip m_chip;
    PseudoTerminal m_terminal;
    QTimer m_timer;
    enum { Running, Starting } m_state = Running; // Starting: up to where the loader listens, and no further
};

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    Board board(QCoreApplication::arguments().value(2));
    CommandReader reader;
    QObject::connect(&reader, &CommandReader::command, &board, &Board::run);
    QObject::connect(&board, &Board::quit, qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    if (!board.start(QCoreApplication::arguments().value(1)))
        return 2;
    return QCoreApplication::exec();
}

#include "avr_board.moc"
