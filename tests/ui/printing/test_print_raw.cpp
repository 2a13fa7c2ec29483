#include "app/state.h"
#include "procedures/process_direct.h"
#include "records/protocol.h"
#include "tests/support/free_port.h"
#include "tests/support/row.h"
#include "tests/ui/printing/printer_desk.h"
#include "text/utils.h"
#include "ui/printing/print_queue.h"
#include "ui/printing/raw_printer.h"

#include <QSemaphore>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

namespace
{
/// A network printer on loopback that takes what comes.
class NetworkPrinter
{
public:
    /// At \a port, or at any.
    explicit NetworkPrinter(quint16 port = 0)
    {
        // A given one may be taken at one address and free at the next: all of 127 is loopback.
        quint32 address =
            port == 0 ? 0x7F000001U : 0x7F090101U + (quint32(QCoreApplication::applicationPid()) & 0xFFFFU);
        for (int i = 0; i < 1000 && !server.isListening(); ++i)
            server.listen(QHostAddress(address++), port);
        if (!server.isListening())
            qFatal("cannot listen on port %d", port);
    }
    [[nodiscard]] QString address() const { return server.serverAddress().toString(); }
    [[nodiscard]] QString target() const
    {
        return QString("IP:%1:%2").arg(address(), QString::number(server.serverPort()));
    }
    /// The next job, read up to the printer's close.
    [[nodiscard]] QByteArray job()
    {
        if (!server.hasPendingConnections() && !server.waitForNewConnection(PatienceMs))
            return "no job";
        QTcpSocket *const socket = server.nextPendingConnection();
        QByteArray all;
        while (socket->waitForReadyRead(PatienceMs))
            all += socket->readAll();
        return socket->state() == QTcpSocket::UnconnectedState ? all + socket->readAll() : "not closed";
    }

    QTcpServer server;
};

QByteArray manyLines()
{
    return QByteArray(20 * 1024 * 1024, 'A'); // more than the system's socket buffers hold
}
} // namespace

/// Raw printing, to files and network printers.
class TestPrintRaw : public QObject
{
    Q_OBJECT

private slots:
    void target_data();
    void target();
    void codePage_data();
    void codePage();
    void lineFeeds_data();
    void lineFeeds();
    void clearText_data();
    void clearText();
    void nextJobReplacesTheFile();
    void networkPrinterGetsTheBytes_data();
    void networkPrinterGetsTheBytes();
    void defaultPortIs9100_data();
    void defaultPortIs9100();
    void jobsComeInTheirOrder();
    void refusedConnectionIsJournalled();
    void missingHostIsJournalled();
    void missingDeviceIsJournalled();
    void directoryIsNoDevice();
    void failureTouchesNoFileAndNoCounter();
    void printerThatDropsTheJobIsJournalled();
    void hangingPrinterHoldsUpNobody();
    void programEndsBesideAJobThatIsNoPrint();
    void openJobEndsWithTheProgram();
};

void TestPrintRaw::target_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<bool>("network");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("port");

    row("device", "/dev/usb/lp0", false, "/dev/usb/lp0", 0);
    row("parallel port", "LPT1", false, "LPT1", 0);
    row("name that begins alike", "IPRINT", false, "IPRINT", 0);
    row("nothing", "", false, "", 0);
    row("host", "IP:10.0.0.5", true, "10.0.0.5", 9100);
    row("lower case", "ip:10.0.0.5", true, "10.0.0.5", 9100);
    row("mixed case", "Ip:10.0.0.5:515", true, "10.0.0.5", 515);
    row("port 0", "IP:10.0.0.5:0", true, "10.0.0.5", 9100);
    row("empty port", "IP:10.0.0.5:", true, "10.0.0.5", 9100);
    row("port 1", "IP:10.0.0.5:1", true, "10.0.0.5", 1);
    row("port 65535", "IP:10.0.0.5:65535", true, "10.0.0.5", 65535);
    row("port 65536", "IP:10.0.0.5:65536", true, "10.0.0.5", 9100);
    row("port in letters", "IP:10.0.0.5:raw", true, "10.0.0.5", 9100);
    row("two ports", "IP:10.0.0.5:1:2", true, "10.0.0.5", 9100);
    row("name of a host", "IP:Printer.local:9101", true, "Printer.local", 9101);
    row("blanks", "IP: 10.0.0.5 : 9101 ", true, "10.0.0.5", 9101);
    row("no host", "IP:", true, "", 9100);
}

void TestPrintRaw::target()
{
    QFETCH(QString, option);
    QFETCH(bool, network);
    QFETCH(QString, name);
    QFETCH(int, port);
    const RawPrinterTarget target = RawPrinterTarget::read(option);
    QCOMPARE(target.network, network);
    QCOMPARE(target.name, name);
    QCOMPARE(int(target.port), port);
}

void TestPrintRaw::codePage_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QByteArray>("bytes");

    row("CORVA", 0, QByteArray("\x05\x80\x9F\x8F\r\n1", 7));
    row("Windows-1251", 1, QByteArray("*\xC0\xDF\xCF\r\n1"));
    row("UTF-8", 2, QByteArray("*\xD0\xB0\xD0\xAF\xD0\xBF\r\n1"));
    row("unknown", 7, QByteArray("*\xD0\xB0\xD0\xAF\xD0\xBF\r\n1"));
}

void TestPrintRaw::codePage()
{
    QFETCH(int, page);
    QFETCH(QByteArray, bytes);
    const PrinterDesk desk;
    Options.PrinterCodePage = page;
    CUtils::printText("*аЯп\r\n1");
    QCOMPARE(desk.printed(), bytes);
}

void TestPrintRaw::lineFeeds_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QByteArray>("bytes");

    row("0", 0, QByteArray("A\r\n"));
    row("1", 1, QByteArray("A\r\n\n"));
    row("2", 2, QByteArray("A\r\n\n\n"));
    row("negative", -3, QByteArray("A\r\n"));
    row("absurd", 2147483647, QByteArray("A\r\n") + QByteArray(10000, '\n'));
}

void TestPrintRaw::lineFeeds()
{
    QFETCH(int, count);
    QFETCH(QByteArray, bytes);
    const PrinterDesk desk;
    Options.PrinterRawLFCount = count;
    CUtils::printText("A\r\n");
    QCOMPARE(desk.printed(), bytes);
    QCOMPARE(desk.journal(), QStringList{QString()});
}

void TestPrintRaw::clearText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("clear");

    row("the six marks", "\"|А#1&B<>", "А1B");
    row("commands", "А@HБ@N12@В@12*Г", "АБВГ");
    row("line ends stay", "А\r\nБ", "А\r\nБ");
    row("a mark inside a command", "А@#HБ", "АБ");
}

void TestPrintRaw::clearText()
{
    QFETCH(QString, text);
    QFETCH(QString, clear);
    const PrinterDesk desk;
    CUtils::printClearText(text);
    QCOMPARE(QString::fromUtf8(desk.printed()), clear);
    CUtils::printText(text);
    QCOMPARE(QString::fromUtf8(desk.printed()), text);
}

void TestPrintRaw::nextJobReplacesTheFile()
{
    const PrinterDesk desk;
    CUtils::printText("ПЕРВЫЙ");
    CUtils::printText("2");
    QCOMPARE(desk.printed(), QByteArray("2"));
}

void TestPrintRaw::networkPrinterGetsTheBytes_data()
{
    QTest::addColumn<QString>("prefix");

    row("capitals", "IP:127.0.0.1:");
    row("small letters", "ip:127.0.0.1:");
    row("name", "iP:localhost:");
}

void TestPrintRaw::networkPrinterGetsTheBytes()
{
    QFETCH(QString, prefix);
    NetworkPrinter printer;
    const PrinterDesk desk(prefix + QString::number(printer.server.serverPort()));
    Options.PrinterCodePage = 1;
    Options.PrinterRawLFCount = 2;
    CUtils::printText("Привет\r\n");
    QCOMPARE(printer.job(), QByteArray("\xCF\xD0\xC8\xC2\xC5\xD2\r\n\n\n"));
    QVERIFY(CPrintQueue::instance().waitForIdle(PatienceMs));
    QCOMPARE(desk.journal(), QStringList{QString()});
}

void TestPrintRaw::defaultPortIs9100_data()
{
    QTest::addColumn<QString>("option");

    row("no port", "ip:%1");
    row("port 0", "IP:%1:0");
}

void TestPrintRaw::defaultPortIs9100()
{
    QFETCH(QString, option);
    NetworkPrinter printer(9100);
    const PrinterDesk desk(option.arg(printer.address()));
    CUtils::printText("A");
    QCOMPARE(printer.job(), QByteArray("A"));
}

void TestPrintRaw::jobsComeInTheirOrder()
{
    NetworkPrinter printer;
    const PrinterDesk desk(printer.target());
    for (const char *text : {"1", "2", "3"})
        CUtils::printText(text);
    QCOMPARE(printer.job(), QByteArray("1"));
    QCOMPARE(printer.job(), QByteArray("2"));
    QCOMPARE(printer.job(), QByteArray("3"));
}

void TestPrintRaw::refusedConnectionIsJournalled()
{
    const QString address = QString("127.0.0.1:%1").arg(freePort());
    const PrinterDesk desk("IP:" + address);
    CUtils::printText("A");
    QTRY_COMPARE(desk.journal(), (QStringList{"412:00:00 Error connect to printer " + address,
                                              "412:00:00 Connection refused", QString()}));
}

void TestPrintRaw::missingHostIsJournalled()
{
    const PrinterDesk desk("IP:");
    CUtils::printText("A");
    QTRY_COMPARE(desk.journal(), (QStringList{"412:00:00 Error connect to printer :9100",
                                              "412:00:00 Host not found", QString()}));
}

void TestPrintRaw::missingDeviceIsJournalled()
{
    const PrinterDesk desk("absent/lp0");
    CUtils::printText("A");
    QTRY_COMPARE(desk.journal(), (QStringList{"412:00:00 Error open printer absent/lp0", QString()}));
}

void TestPrintRaw::directoryIsNoDevice()
{
    const PrinterDesk desk("out");
    CUtils::printText("A");
    QTRY_COMPARE(desk.journal(), (QStringList{"412:00:00 Error open printer out", QString()}));
}

void TestPrintRaw::failureTouchesNoFileAndNoCounter()
{
    const PrinterDesk desk("absent/lp0");
    Options.processMode = 2;
    Options.autoPrintMode = 3;
    const QString telegram = "ЗЦЗЦ А\r\nНННН  ";
    ProcessDirect.processReceive(telegram);
    QTRY_COMPARE(desk.journal(), (QStringList{"312:00:00 Файл сохранен:inp/20260731/20260731_120000",
                                              "312:00:00 Печать файла",
                                              "412:00:00 Error open printer absent/lp0", QString()}));
    QCOMPARE(desk.read("inp/20260731/20260731_120000"), telegram.toUtf8());
    QCOMPARE(State.PK_in, 1);
}

void TestPrintRaw::printerThatDropsTheJobIsJournalled()
{
    NetworkPrinter printer;
    const PrinterDesk desk(printer.target());
    CUtils::printText(manyLines());
    QVERIFY(printer.server.waitForNewConnection(PatienceMs));
    printer.server.nextPendingConnection()->abort();
    QTRY_COMPARE(desk.journal(),
                 (QStringList{"412:00:00 Error write to printer " + printer.target().mid(3), QString()}));
}

void TestPrintRaw::hangingPrinterHoldsUpNobody()
{
    NetworkPrinter printer;
    const PrinterDesk desk(printer.target());
    CUtils::printText(manyLines()); // nobody reads it yet
    CUtils::printText("B");
    QVERIFY(!CPrintQueue::instance().waitForIdle(0));
    ProcessDirect.processReceive("ЗЦЗЦ А\r\nНННН  ");
    QCOMPARE(State.PK_in, 1);

    QCOMPARE(printer.job(), manyLines());
    QCOMPARE(printer.job(), QByteArray("B"));
    QVERIFY(CPrintQueue::instance().waitForIdle(PatienceMs));
    QCOMPARE(desk.journal(),
             (QStringList{"312:00:00 Файл сохранен:inp/20260731/20260731_120000", QString()}));
}

void TestPrintRaw::programEndsBesideAJobThatIsNoPrint()
{
    const PrinterDesk desk("printed");
    QSemaphore answer;
    CPrintQueue::instance().post([&answer](const std::atomic<bool> &) {
        answer.acquire();
        return QStringList();
    });
    QMetaObject::invokeMethod(QCoreApplication::instance(), &QCoreApplication::quit, Qt::QueuedConnection);
    QCoreApplication::exec();
    QVERIFY(CPrintQueue::hangs());
    QVERIFY(desk.journal().join(QString()).isEmpty());

    answer.release();
    QVERIFY(CPrintQueue::instance().waitForIdle(PatienceMs));
    CUtils::printText("A"); // the queue takes jobs as before
    QVERIFY(CPrintQueue::instance().waitForIdle(PatienceMs));
    QCOMPARE(desk.readPrinted().left(1), QByteArray("A"));
}

/// Stays the last: the queue takes no job any more.
void TestPrintRaw::openJobEndsWithTheProgram()
{
    NetworkPrinter printer;
    const PrinterDesk desk(printer.target());
    CUtils::printText(manyLines());
    QMetaObject::invokeMethod(QCoreApplication::instance(), &QCoreApplication::quit, Qt::QueuedConnection);
    QCoreApplication::exec();

    QVERIFY(CPrintQueue::instance().isFinished() || CPrintQueue::instance().waitForIdle(PatienceMs));
    QCOMPARE(desk.journal(),
             (QStringList{"412:00:00 Печать прервана",
                          "412:00:00 Error write to printer " + printer.target().mid(3), QString()}));
}

QTEST_GUILESS_MAIN(TestPrintRaw)
#include "test_print_raw.moc"
