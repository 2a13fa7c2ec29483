// Which adapter gets what: images by the serial number, and the lock command. The program of this test
// carries erased flash in the place of the devices' images.

#include "link/fw_update.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"
#include "tools/linesim/serial/pseudo_terminal.h"

#include <QSignalSpy>
#include <QtTest>

#include <memory>

class TestFwSerial : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_desk = std::make_unique<Desk>(); }
    void cleanup();
    void serialThatSelectsNoImageTouchesNoPort_data();
    void serialThatSelectsNoImageTouchesNoPort();
    void serialWithoutPortDoesNothing_data();
    void serialWithoutPortDoesNothing();
    void imageThatTheBuildDoesNotCarryTouchesNoPort_data();
    void imageThatTheBuildDoesNotCarryTouchesNoPort();
    void onlyErasedFlashIsRefused();
    void recordsHaveTheirFigures();
    void lockSendsItsByteTwice_data();
    void lockSendsItsByteTwice();
    void lockWithoutPortDoesNothing();
    void lockOfAPortThatVanishesFails();

private:
    std::unique_ptr<Desk> m_desk;
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}

struct Port {
    explicit Port(const QString &serial)
    {
        if (!terminal.plug())
            qFatal("no pseudo-terminal");
        qputenv("VELDA_PORTS", (serial + QLatin1Char('=') + terminal.portName()).toUtf8());
        QObject::connect(&terminal, &PseudoTerminal::received, &terminal,
                         [this](const QByteArray &bytes) { received += bytes; });
    }
    /// Whether a program has opened it, which shows a little later.
    [[nodiscard]] bool wasOpened()
    {
        return QTest::qWaitFor([this] { return opened.count() > 0; }, 60);
    }

    PseudoTerminal terminal;
    QSignalSpy opened{&terminal, &PseudoTerminal::opened};
    QSignalSpy closed{&terminal, &PseudoTerminal::closed};
    QByteArray received;
};

QStringList figures(const FIRMWARE_DATA &record)
{
    QStringList shown;
    for (const quint32 figure : {record.size, record.startAddress, record.blockSize, record.version})
        shown << QString::number(figure);
    return shown;
}

constexpr auto Refusal = "412:00:00 Эта сборка программы не содержит firmware для устройства";
} // namespace

void TestFwSerial::cleanup()
{
    qunsetenv("VELDA_PORTS");
    m_desk.reset();
}

void TestFwSerial::serialThatSelectsNoImageTouchesNoPort_data()
{
    QTest::addColumn<QString>("serial");
    for (const char *serial : {"40000001", "00000001", "90000001", "A0000001", "Я0000001", "١0000001"})
        row(serial, qs(serial));
    row("U+0131, whose low byte is that of 1", QChar(0x131) + qs("0000001"));
    row("U+FF11, a wide 1", QChar(0xFF11) + qs("0000001"));
}

void TestFwSerial::serialThatSelectsNoImageTouchesNoPort()
{
    QFETCH(QString, serial);
    Port port(serial);
    QVERIFY(!CFWUpdateThread::update(serial));
    QVERIFY(!port.wasOpened());
    QVERIFY(m_desk->journal().isEmpty());
}

void TestFwSerial::serialWithoutPortDoesNothing_data()
{
    QTest::addColumn<QString>("serial");
    row("absent", qs("10000002"));
    row("7 characters", qs("1000000"));
    row("9 characters", qs("100000011"));
    row("empty", QString());
}

void TestFwSerial::serialWithoutPortDoesNothing()
{
    QFETCH(QString, serial);
    Port port(qs("10000001"));
    QVERIFY(!CFWUpdateThread::update(serial));
    QVERIFY(!port.wasOpened());
    QVERIFY(m_desk->journal().isEmpty());
}

void TestFwSerial::imageThatTheBuildDoesNotCarryTouchesNoPort_data()
{
    QTest::addColumn<QString>("serial");
    for (const char *serial : {"10000001", "20000001", "30000001"})
        row(serial, qs(serial));
}

void TestFwSerial::imageThatTheBuildDoesNotCarryTouchesNoPort()
{
    QFETCH(QString, serial);
    Port port(serial);
    QVERIFY(!CFWUpdateThread::update(serial));
    QVERIFY(!CFWUpdateThread::update(port.terminal.portName(), &FW_TRELOU, FW_TRELOU_DATA));
    QVERIFY(!port.wasOpened());
    QCOMPARE(m_desk->journal(), (QStringList{qs(Refusal), qs(Refusal), QString()}));
}

void TestFwSerial::onlyErasedFlashIsRefused()
{
    QVERIFY(!firmwareSupplied);
    const unsigned char own[1] = {0xFF};
    QVERIFY(carriesImage(FW_BLINK_DATA) && carriesImage(own));
    for (const unsigned char *data : {FW_TRELOU_DATA, FW_TRELOE_DATA, FW_SOREL_DATA, FW_TRELO_DATA})
        QVERIFY(!carriesImage(data));
    for (const unsigned char byte : FW_TRELOE_DATA)
        QCOMPARE(int(byte), 0xFF);
}

void TestFwSerial::recordsHaveTheirFigures()
{
    QCOMPARE(figures(FW_TRELOU), (QStringList{qs("28358"), qs("0"), qs("256"), qs("260521")}));
    QCOMPARE(figures(FW_TRELOE), (QStringList{qs("56536"), qs("0"), qs("256"), qs("260601")}));
    QCOMPARE(figures(FW_SOREL), (QStringList{qs("5938"), qs("0"), qs("128"), qs("231218")}));
    QCOMPARE(figures(FW_TRELO), (QStringList{qs("7244"), qs("0"), qs("128"), qs("250124")}));
    QCOMPARE(figures(FW_BLINK), (QStringList{qs("1070"), qs("0"), qs("128"), qs("0")}));
}

void TestFwSerial::lockSendsItsByteTwice_data()
{
    QTest::addColumn<QString>("serial");
    QTest::addColumn<QByteArray>("answer");
    row("silent adapter", qs("10000001"), QByteArray());
    row("adapter that reports its status", qs("20000001"), QByteArray("\x2F\x3F\x14\x10"));
    row("adapter of another class", qs("70000001"), QByteArray());
}

void TestFwSerial::lockSendsItsByteTwice()
{
    QFETCH(QString, serial);
    QFETCH(QByteArray, answer);
    Port port(serial);
    connect(&port.terminal, &PseudoTerminal::opened, &port.terminal, [&] { port.terminal.write(answer); });
    QVERIFY(CFWUpdateThread::lock(serial));
    QTRY_COMPARE(port.closed.count(), 1);
    QCOMPARE(port.received, QByteArray("\x5A\x5A"));
    QCOMPARE(m_desk->journal(), (QStringList{qs("312:00:00 Send lock cmd for ") + serial, QString()}));
}

void TestFwSerial::lockWithoutPortDoesNothing()
{
    Port port(qs("10000001"));
    QVERIFY(!CFWUpdateThread::lock(qs("10000002")));
    QVERIFY(!CFWUpdateThread::lock(QString()));
    QVERIFY(!port.wasOpened());
    qputenv("VELDA_PORTS", ("10000001=" + m_desk->path(qs("none"))).toUtf8());
    QVERIFY(!CFWUpdateThread::lock(qs("10000001")));
    QVERIFY(m_desk->journal().isEmpty());
}

void TestFwSerial::lockOfAPortThatVanishesFails()
{
    Port port(qs("10000001"));
    connect(&port.terminal, &PseudoTerminal::opened, &port.terminal, &PseudoTerminal::unplug);
    QVERIFY(!CFWUpdateThread::lock(qs("10000001")));
    QVERIFY(m_desk->journal().isEmpty());
}

QTEST_MAIN(TestFwSerial)
#include "test_fw_serial.moc"
