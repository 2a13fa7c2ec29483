// The cable of the simulated adapters, with the serial port class of the workstation at its other end.

#include "tests/support/serial_ports.h"
#include "tools/linesim/serial/pseudo_terminal.h"

#include <QFile>
#include <QSerialPort>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

class TestLinesimTerminal : public QObject
{
    Q_OBJECT

private slots:
    void bytesOfEveryValuePassBothWays();
    void openingIsTold();
    void closingIsToldAfterTheLastByte();
    void whatIsWrittenWithoutAProgramIsLost();
    void whatWasNotReadIsGoneAtTheNextOpening();
    void unpluggingTakesThePortAway();
    void pluggingAgainGivesThePortItsNameBack();
    void aLinkOverAnotherFileIsRefused();
    void aLinkLeftBehindIsReplaced();
};

namespace
{
QByteArray everyByte()
{
    QByteArray bytes;
    for (int value = 0; value < 256; ++value)
        bytes += char(value);
    return bytes;
}

struct Port : QSerialPort {
    explicit Port(const PseudoTerminal &terminal)
    {
        setPortName(terminal.portName());
        setBaudRate(QSerialPort::Baud9600);
    }
    [[nodiscard]] QByteArray got()
    {
        bytes += readAll();
        return bytes;
    }
    QByteArray bytes;
};

struct Gathered : QByteArray {
    explicit Gathered(PseudoTerminal &terminal)
    {
        QObject::connect(&terminal, &PseudoTerminal::received, &terminal,
                         [this](const QByteArray &bytes) { append(bytes); });
    }
};
} // namespace

void TestLinesimTerminal::bytesOfEveryValuePassBothWays()
{
    PseudoTerminal terminal;
    QVERIFY(terminal.plug());
    const Gathered gathered(terminal);
    Port port(terminal);
    QVERIFY(opens(port));
    QTRY_VERIFY(terminal.isOpen());
    port.write(everyByte());
    QTRY_COMPARE(QByteArray(gathered), everyByte());
    terminal.write(everyByte());
    QTRY_COMPARE(port.got(), everyByte());
}

void TestLinesimTerminal::openingIsTold()
{
    PseudoTerminal terminal;
    QVERIFY(terminal.plug());
    QSignalSpy opened(&terminal, &PseudoTerminal::opened);
    QTest::qWait(50);
    QCOMPARE(opened.count(), 0);
    QVERIFY(!terminal.isOpen());
    Port port(terminal);
    QVERIFY(opens(port));
    QTRY_COMPARE(opened.count(), 1);
}

void TestLinesimTerminal::closingIsToldAfterTheLastByte()
{
    PseudoTerminal terminal;
    QVERIFY(terminal.plug());
    const Gathered gathered(terminal);
    QByteArray atClosing;
    QSignalSpy closed(&terminal, &PseudoTerminal::closed);
    connect(&terminal, &PseudoTerminal::closed, this, [&] { atClosing = gathered; });
    Port port(terminal);
    QVERIFY(opens(port));
    QTRY_VERIFY(terminal.isOpen());
    port.write("\x01\x60");
    port.flush();
    port.close();
    QTRY_COMPARE(closed.count(), 1);
    QCOMPARE(atClosing, QByteArray("\x01\x60"));
    QVERIFY(!terminal.isOpen());
}

void TestLinesimTerminal::whatIsWrittenWithoutAProgramIsLost()
{
    PseudoTerminal terminal;
    QVERIFY(terminal.plug());
    terminal.write("early");
    Port port(terminal);
    QVERIFY(opens(port));
    QTRY_VERIFY(terminal.isOpen());
    terminal.write("in time");
    QTRY_COMPARE(port.got(), QByteArray("in time"));
}

void TestLinesimTerminal::whatWasNotReadIsGoneAtTheNextOpening()
{
    PseudoTerminal terminal;
    QVERIFY(terminal.plug());
    {
        Port port(terminal);
        QVERIFY(opens(port));
        QTRY_VERIFY(terminal.isOpen());
        terminal.write("unread");
    }
    QTRY_VERIFY(!terminal.isOpen());
    Port port(terminal);
    QVERIFY(opens(port));
    QTRY_VERIFY(terminal.isOpen());
    terminal.write("new");
    QTRY_COMPARE(port.got(), QByteArray("new"));
}

void TestLinesimTerminal::unpluggingTakesThePortAway()
{
    PseudoTerminal terminal;
    QVERIFY(terminal.plug());
    QSignalSpy closed(&terminal, &PseudoTerminal::closed);
    Port port(terminal);
    QVERIFY(opens(port));
    QTRY_VERIFY(terminal.isOpen());
    terminal.unplug();
    QVERIFY(!terminal.isPlugged());
    QVERIFY(terminal.portName().isEmpty());
    QTRY_VERIFY(port.error() != QSerialPort::NoError);
    QCOMPARE(closed.count(), 0);
}

void TestLinesimTerminal::pluggingAgainGivesThePortItsNameBack()
{
    const QTemporaryDir directory;
    const QString link = directory.filePath(QStringLiteral("adapter"));
    PseudoTerminal terminal(link);
    QVERIFY(terminal.plug());
    QCOMPARE(terminal.portName(), link);
    terminal.unplug();
    QVERIFY(!QFile::exists(link));
    QVERIFY(terminal.plug());
    QCOMPARE(terminal.portName(), link);
    Port port(terminal);
    QVERIFY(opens(port));
    QTRY_VERIFY(terminal.isOpen());
}

void TestLinesimTerminal::aLinkOverAnotherFileIsRefused()
{
    const QTemporaryDir directory;
    QFile file(directory.filePath(QStringLiteral("file")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    PseudoTerminal terminal(file.fileName());
    QVERIFY(!terminal.plug());
    QVERIFY(!terminal.isPlugged());
    QVERIFY(file.exists());
}

void TestLinesimTerminal::aLinkLeftBehindIsReplaced()
{
    const QTemporaryDir directory;
    const QString link = directory.filePath(QStringLiteral("adapter"));
    QVERIFY(QFile::link(QStringLiteral("/dev/pts/none"), link));
    PseudoTerminal terminal(link);
    QVERIFY(terminal.plug());
    Port port(terminal);
    QVERIFY(opens(port));
}

QTEST_GUILESS_MAIN(TestLinesimTerminal)
#include "test_linesim_terminal.moc"
