// The program's own loader against the STK500 boot loader of a real family of boards, on the processor it is
// made for, in simulation.

#include "link/fw_update.h"
#include "tests/firmware/board.h"
#include "tests/support/desk.h"
#include "tests/support/rounds.h"
#include "tests/support/row.h"

#include <QCryptographicHash>
#include <QtTest>

#include <functional>
#include <memory>

class TestFwBoard : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void testImageIsLoadedAndBlinks();
    void suppliedImageIsLoaded_data();
    void suppliedImageIsLoaded();
    void imageOfTheEthernetAdapterGoesInBlocksOf256();

private:
    /// Loads by \a update, which gets the port, on a new desk and into a new board each time.
    bool comesThrough(const std::function<bool(const QString &)> &update);

    std::unique_ptr<Desk> m_desk;
    std::unique_ptr<Board> m_board;
    QByteArray m_before; ///< its flash, not loaded yet
};

namespace
{
constexpr int LoaderAt = 0x7800; // the boot loader's section, the flash's last 2048 bytes
constexpr int PageSize = 128;

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString sum(const QByteArray &bytes)
{
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
}

/// The flash as another program reads it through the boot loader.
QByteArray readBack(const Board &board, const QString &path)
{
    QProcess reader;
    reader.setProcessChannelMode(QProcess::MergedChannels);
    reader.start(QStringLiteral("avrdude"),
                 {QStringLiteral("-c"), QStringLiteral("arduino"), QStringLiteral("-p"),
                  QStringLiteral("m328p"), QStringLiteral("-P"), board.portName(), QStringLiteral("-b"),
                  QStringLiteral("115200"), QStringLiteral("-U"), QStringLiteral("flash:r:%1:r").arg(path)});
    if (!QTest::qWaitFor([&] { return reader.state() == QProcess::NotRunning; }, 60000) ||
        reader.exitCode() != 0)
        qWarning("%s", reader.readAll().constData());
    return contents(path);
}

/// Says what of the flash an image makes up.
void report(const char *name, const QByteArray &image, const QByteArray &flash)
{
    qInfo("%s: %d bytes compared, SHA-256 of the image %s, of the flash %s", name, image.size(),
          qPrintable(sum(image)), qPrintable(sum(flash.left(image.size()))));
}
} // namespace

void TestFwBoard::cleanup()
{
    qunsetenv("VELDA_PORTS");
    m_board.reset();
    m_desk.reset();
}

bool TestFwBoard::comesThrough(const std::function<bool(const QString &)> &update)
{
    return onceInAFew([&] {
        cleanup();
        m_desk = std::make_unique<Desk>();
        m_board = std::make_unique<Board>();
        m_before = m_board->flash();
        return update(m_board->portName());
    });
}

void TestFwBoard::testImageIsLoadedAndBlinks()
{
    QVERIFY(comesThrough(&CFWUpdateThread::testUpdate));
    Board &board = *m_board;
    QCOMPARE(m_before.size(), 32768);
    QCOMPARE(m_before.left(LoaderAt), QByteArray(LoaderAt, '\xff'));
    QCOMPARE(board.openings(), 1);

    const QByteArray image(reinterpret_cast<const char *>(FW_BLINK_DATA), int(FW_BLINK.size));
    QCOMPARE(image.size(), 1070);
    const QByteArray flash = board.flash();
    report("FW_BLINK", image, flash);
    QCOMPARE(flash.left(1070), image);
    QCOMPARE(flash.mid(9 * PageSize), m_before.mid(9 * PageSize)); // behind the last page nothing has changed
    QCOMPARE(m_desk->journal(),
             (QStringList{QStringLiteral("312:00:00 Подготовка к записи firmware ver: 0 size: 1070"),
                          QStringLiteral("312:00:00 Программирование завершено"), QString()}));

    QVERIFY(board.waitForLine("closed:"));
    board.tell(QStringLiteral("reset"));
    // Pin PB5 changes each quarter of a second: 4000000 cycles and the few of the loop round them.
    const auto blinks = [&board] {
        int count = 0;
        for (const QString &cycles : board.details("pin"))
            count += cycles.toInt() > 4000000 && cycles.toInt() < 4000020 ? 1 : 0;
        return count;
    };
    QTRY_VERIFY_WITH_TIMEOUT(blinks() >= 4, 60000);
    QVERIFY(!board.lines.contains(QStringLiteral("crashed:")));

    const QByteArray read = readBack(board, m_desk->path(QStringLiteral("read")));
    QCOMPARE(read.left(1070), image);
}

void TestFwBoard::suppliedImageIsLoaded_data()
{
    QTest::addColumn<QString>("serial");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("size");
    QTest::addColumn<QString>("begins");
    row("line adapter", QStringLiteral("10000001"), QStringLiteral("trelo"), 7244,
        QStringLiteral("312:00:00 Подготовка к записи firmware ver: 250124 size: 7244"));
    row("perforator", QStringLiteral("20000001"), QStringLiteral("sorel"), 5938,
        QStringLiteral("312:00:00 Подготовка к записи firmware ver: 231218 size: 5938"));
}

void TestFwBoard::suppliedImageIsLoaded()
{
    QFETCH(QString, serial);
    QFETCH(QString, name);
    QFETCH(int, size);
    QFETCH(QString, begins);
    QVERIFY(comesThrough([&](const QString &port) {
        qputenv("VELDA_PORTS", (serial + QLatin1Char('=') + port).toLocal8Bit());
        return CFWUpdateThread::update(serial);
    }));

    const QByteArray image = contents(QStringLiteral(IMAGES "/%1.raw").arg(name));
    QCOMPARE(image.size(), size);
    const QByteArray flash = m_board->flash();
    report(qPrintable(name), image, flash);
    QCOMPARE(flash.left(size), image);
    const int pages = (size + PageSize - 1) / PageSize * PageSize;
    QCOMPARE(flash.mid(pages), m_before.mid(pages));
    QCOMPARE(m_desk->journal(),
             (QStringList{begins, QStringLiteral("312:00:00 Программирование завершено"), QString()}));
}

/// It is made for a larger processor than the board has, so it goes to a simulated loader.
void TestFwBoard::imageOfTheEthernetAdapterGoesInBlocksOf256()
{
    std::unique_ptr<Device> device;
    QVERIFY(onceInAFew([&] {
        m_desk.reset();
        m_desk = std::make_unique<Desk>();
        device = std::make_unique<Device>(
            LINESIM_PROGRAM,
            QStringList{QStringLiteral("loader"), QStringLiteral("--serial"), QStringLiteral("30000001")});
        qputenv("VELDA_PORTS", device->details("port").value(0).toLocal8Bit());
        return CFWUpdateThread::update(QStringLiteral("30000001"));
    }));
    const Device &loader = *device;
    QVERIFY(loader.waitForLine("closed:"));
    QCOMPARE(loader.count("violation"), 0);

    QByteArray loaded;
    QList<int> counts;
    QString lastAddress;
    for (const QString &command : loader.details("command")) {
        const QByteArray bytes = QByteArray::fromHex(command.toLatin1());
        if (bytes.startsWith('\x55'))
            lastAddress = command;
        if (!bytes.startsWith('\x64'))
            continue;
        loaded += bytes.mid(4, bytes.size() - 5);
        counts << bytes.size() - 5;
    }
    QCOMPARE(loaded, contents(QStringLiteral(IMAGES "/treloe.raw")));
    QCOMPARE(counts.size(), 221);
    QCOMPARE(counts.count(256), 220);
    QCOMPARE(counts.last(), 216);
    QCOMPARE(lastAddress, QStringLiteral("55 00 6e 20"));
    QCOMPARE(m_desk->journal(),
             (QStringList{QStringLiteral("312:00:00 Подготовка к записи firmware ver: 260601 size: 56536"),
                          QStringLiteral("312:00:00 Программирование завершено"), QString()}));
}

QTEST_MAIN(TestFwBoard)
#include "test_fw_board.moc"
