// The bytes between the program and a boot loader, on the serial port of a simulated device.

#include "link/boot_loader.h"
#include "tests/support/row.h"
#include "tests/support/serial_ports.h"
#include "tools/linesim/serial/pseudo_terminal.h"

#include <QSerialPort>
#include <QtTest>

#include <atomic>
#include <functional>
#include <random>
#include <thread>

class TestBootLoader : public QObject
{
    Q_OBJECT

private slots:
    void eachCommandHasItsBytes_data();
    void eachCommandHasItsBytes();
    void pageCarriesCountAndData_data();
    void pageCarriesCountAndData();
    void syncInAdvanceDropsWhatComes();
    void answerDecides_data();
    void answerDecides();
    void answerInTimeCounts_data();
    void answerInTimeCounts();
    void whatStandsBehindTheAnswerIsLeftForTheNext();
    void replyHoldsTheAnswer();
    void endlessRubbishFails();
    void silenceFailsEachCommand();
    void unpluggedPortFailsEachCommand();
    void anyBytesAreJudgedByTheFirstSyncByte();
};

namespace
{
/// A device's end that has been opened as a serial port.
struct Cable {
    Cable()
    {
        if (!terminal.plug())
            qFatal("no pseudo-terminal");
        QObject::connect(&terminal, &PseudoTerminal::received, &terminal,
                         [this](const QByteArray &bytes) { received += bytes; });
        port.setPortName(terminal.portName());
        if (!opens(port) || !comesTrue([this] { return terminal.isOpen(); }))
            qFatal("the port does not open");
    }

    PseudoTerminal terminal;
    QByteArray received;
    QSerialPort port;
};

/// Bytes that come so long after the former ones.
struct Piece {
    unsigned long afterMs;
    QByteArray bytes;
};

QByteArray bytes(const char *hex)
{
    return QByteArray::fromHex(hex);
}

bool exchange(Cable &cable)
{
    const unsigned char command[] = {0x30, 0x20};
    unsigned char reply[2];
    return SerialIO(cable.port, command, 2, reply, 2);
}

QByteArray countedBytes(int count)
{
    QByteArray data;
    for (int i = 0; i < count; ++i)
        data += char(i * 7 + i / 256);
    return data;
}

bool page(QSerialPort &port, const QByteArray &data)
{
    return BootLoader::programPage(port, reinterpret_cast<const unsigned char *>(data.constData()),
                                   quint32(data.size()));
}
} // namespace

using Command = std::function<bool(QSerialPort &)>;
Q_DECLARE_METATYPE(Command)
Q_DECLARE_METATYPE(Piece)

void TestBootLoader::eachCommandHasItsBytes_data()
{
    QTest::addColumn<Command>("command");
    QTest::addColumn<QByteArray>("sent");
    const auto address = [](quint32 at) {
        return Command([at](QSerialPort &port) { return BootLoader::loadAddress(port, at); });
    };
    row("sync", Command(&BootLoader::getSync), bytes("3020"));
    row("enter", Command(&BootLoader::enterProgramming), bytes("5020"));
    row("leave", Command(&BootLoader::leaveProgramming), bytes("5120"));
    row("address 0", address(0), bytes("55000020"));
    row("address of byte 128", address(128), bytes("55400020"));
    row("address of byte 256", address(256), bytes("55800020"));
    row("address of byte 512", address(512), bytes("55000120"));
    row("address of the last block of 56536", address(56320), bytes("55006e20"));
}

void TestBootLoader::eachCommandHasItsBytes()
{
    QFETCH(Command, command);
    QFETCH(QByteArray, sent);
    Cable cable;
    cable.terminal.write(bytes("1410"));
    QVERIFY(command(cable.port));
    QTRY_COMPARE(cable.received, sent);
    cable.terminal.write(bytes("1411"));
    QVERIFY(!command(cable.port));
    QTRY_COMPARE(cable.received, sent + sent);
}

void TestBootLoader::pageCarriesCountAndData_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QByteArray>("head");
    row("full block of 256", 256, bytes("64010046"));
    row("full block of 128", 128, bytes("64008046"));
    row("last block of 76", 76, bytes("64004c46"));
    row("one byte", 1, bytes("64000146"));
}

void TestBootLoader::pageCarriesCountAndData()
{
    QFETCH(int, count);
    QFETCH(QByteArray, head);
    Cable cable;
    cable.terminal.write(bytes("1410"));
    const QByteArray data = countedBytes(count);
    QVERIFY(page(cable.port, data));
    QTRY_COMPARE(cable.received, head + data + bytes("20"));
}

void TestBootLoader::syncInAdvanceDropsWhatComes()
{
    Cable cable;
    cable.terminal.write(bytes("141014101410"));
    BootLoader::sendSync(cable.port);
    QTRY_COMPARE(cable.received, bytes("3020"));
    QCOMPARE(cable.port.bytesAvailable(), 0);
    QVERIFY(!exchange(cable));
}

void TestBootLoader::answerDecides_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<bool>("good");
    row("good", bytes("1410"), true);
    row("other bytes before it are skipped", bytes("00ff101115421410"), true);
    row("failed", bytes("1411"), false);
    row("no sync byte", bytes("1510"), false);
    row("first sync byte decides", bytes("14141410"), false);
    row("only the sync byte", bytes("14"), false);
    row("nothing", QByteArray(), false);
}

void TestBootLoader::answerDecides()
{
    QFETCH(QByteArray, answer);
    QFETCH(bool, good);
    Cable cable;
    cable.terminal.write(answer);
    QCOMPARE(exchange(cable), good);
    QTRY_COMPARE(cable.received, bytes("3020"));
}

void TestBootLoader::answerInTimeCounts_data()
{
    using Bytes = QVector<Piece>;
    QTest::addColumn<Bytes>("pieces");
    QTest::addColumn<bool>("good");
    row("first byte after 90 ms", Bytes{{90, bytes("1410")}}, true);
    row("first byte after 300 ms", Bytes{{300, bytes("1410")}}, false);
    row("each byte that is skipped is waited for anew",
        Bytes{{60, bytes("99")}, {60, bytes("99")}, {60, bytes("1410")}}, true);
    row("second byte 10 ms after the first", Bytes{{0, bytes("14")}, {10, bytes("10")}}, true);
    row("second byte 90 ms after the first", Bytes{{0, bytes("14")}, {90, bytes("10")}}, false);
}

/// A busy machine may hold up either end, so one round of a few must come out as in quiet.
void TestBootLoader::answerInTimeCounts()
{
    QFETCH(QVector<Piece>, pieces);
    QFETCH(bool, good);
    bool seen = false;
    for (int round = 0; round < 10 && !seen; ++round) {
        Cable cable;
        std::thread far([&] {
            for (const Piece &piece : qAsConst(pieces)) {
                QThread::msleep(piece.afterMs);
                cable.terminal.write(piece.bytes);
            }
        });
        seen = exchange(cable) == good;
        far.join();
    }
    QVERIFY(seen);
}

void TestBootLoader::whatStandsBehindTheAnswerIsLeftForTheNext()
{
    Cable cable;
    cable.terminal.write(bytes("141014101411"));
    QVERIFY(exchange(cable));
    QVERIFY(exchange(cable));
    QVERIFY(!exchange(cable));
}

void TestBootLoader::replyHoldsTheAnswer()
{
    Cable cable;
    cable.terminal.write(bytes("991411"));
    const unsigned char command[] = {0x51, 0x20};
    unsigned char reply[2] = {};
    QVERIFY(!SerialIO(cable.port, command, 2, reply, 2));
    QCOMPARE(int(reply[0]), 0x14);
    QCOMPARE(int(reply[1]), 0x11);
}

void TestBootLoader::endlessRubbishFails()
{
    Cable cable;
    std::atomic<bool> stop = false;
    std::thread talker([&] {
        while (!stop)
            cable.terminal.write(QByteArray(1024, '\x55'));
    });
    const bool good = exchange(cable);
    stop = true;
    cable.port.close();
    talker.join();
    QVERIFY(!good);
}

void TestBootLoader::silenceFailsEachCommand()
{
    Cable cable;
    QVERIFY(!BootLoader::getSync(cable.port));
    QVERIFY(!BootLoader::enterProgramming(cable.port));
    QVERIFY(!BootLoader::loadAddress(cable.port, 0));
    QVERIFY(!page(cable.port, countedBytes(128)));
    QVERIFY(!BootLoader::leaveProgramming(cable.port));
}

void TestBootLoader::unpluggedPortFailsEachCommand()
{
    Cable cable;
    cable.terminal.unplug();
    BootLoader::sendSync(cable.port);
    QVERIFY(!BootLoader::getSync(cable.port));
    QVERIFY(!BootLoader::enterProgramming(cable.port));
    QVERIFY(!BootLoader::loadAddress(cable.port, 0));
    QVERIFY(!page(cable.port, countedBytes(128)));
    QVERIFY(!BootLoader::leaveProgramming(cable.port));
}

void TestBootLoader::anyBytesAreJudgedByTheFirstSyncByte()
{
    std::mt19937 random(20260731);
    for (int round = 0; round < 1000; ++round) {
        QByteArray answer;
        for (auto left = random() % 300; left > 0; --left)
            answer += char(random() % (round % 2 == 0 ? 256 : 24));
        const int sync = answer.indexOf('\x14');
        const bool good = sync >= 0 && sync + 1 < answer.size() && answer.at(sync + 1) == '\x10';
        Cable cable;
        cable.terminal.write(answer);
        QVERIFY2(exchange(cable) == good, answer.toHex().constData());
    }
}

QTEST_GUILESS_MAIN(TestBootLoader)
#include "test_boot_loader.moc"
#include "tests/support/patience.h"
