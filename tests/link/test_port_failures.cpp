// A serial port that does not open, falls silent, or goes away in any state of the connection.

#include "tests/link/adapter_port.h"
#include "tests/support/row.h"
#include "tests/support/serial_ports.h"

#include <QFile>
#include <QSerialPort>
#include <QtTest>

class TestPortFailures : public QObject
{
    Q_OBJECT

private slots:
    void portThatDoesNotOpen_data();
    void portThatDoesNotOpen();
    void portHeldByAnotherProgram();
    void secondProgramLeavesTheFirstUndisturbed();
    void thirtySilentSecondsStayAndOneMoreEnds();
    void anyByteEndsTheSilence();
    void unpluggedBeforeTheFirstByte();
    void unpluggedInTheFirstTwoSeconds();
    void unpluggedDuringTheQuestionForTheVersion();
    void unpluggedWithTextWaiting();
    void unpluggedInTheMiddleOfAText();
    void unpluggedWhileTheLineWasBad();
    void linkThreadComesUpAgainByTheOldRules();
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}

const QString Gone = QStringLiteral(":Input/output error");

/// The state of a link whose port has gone from under it.
bool lostWithItsText(AdapterLink &link, const QString &text)
{
    return link.ended() && !link.thread.connected && link.thread.reconnectDelay == 0 &&
           link.thread.reportFailure && link.thread.sendBuffer.mGet() == text;
}
} // namespace

void TestPortFailures::portThatDoesNotOpen_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("error");
    row("directory", "directory", ":Is a directory");
    row("file that is no terminal", "file", ":Inappropriate ioctl for device");
    row("path that is not there", "missing", ":No such file or directory");
}

void TestPortFailures::portThatDoesNotOpen()
{
    QFETCH(QString, kind);
    QFETCH(QString, error);
    const Desk desk;
    QVERIFY(QDir().mkdir(desk.path(qs("directory"))));
    desk.write(qs("file"), QByteArray());
    qputenv("VELDA_PORTS", ("10000001=" + desk.path(kind)).toLocal8Bit());
    Line line;
    QVERIFY(line.thread.setTrelo(qs("10000001"), 50, false));
    const QString prefix = qs("Trelo (10000001)");
    for (int attempt = 0; attempt < 3; ++attempt) {
        line.thread.txCredit = 9;
        line.thread.reconnectDelay = 0;
        line.thread.PortThread();
        QCOMPARE(line.states(), QStringList({prefix + qs(": Подключение"), prefix + error}));
        QCOMPARE(line.thread.txCredit.load(), 0);
        QCOMPARE(line.thread.reconnectDelay.load(), 60);
        QVERIFY(!line.thread.reportFailure);
        QVERIFY(!line.thread.connected);
        QVERIFY(line.thread.needVersion);
    }
    qunsetenv("VELDA_PORTS");
}

void TestPortFailures::portHeldByAnotherProgram()
{
    AdapterLink link;
    QSerialPort holder;
    holder.setPortName(link.adapter.name());
    QVERIFY(opens(holder));
    link.line.once(&CTlgThread::PortThread);
    QVERIFY(link.ended());
    QCOMPARE(link.states(),
             QStringList({qs(": Подключение"),
                          qs(": Доступ запрещен / Проверьте права доступа к ") + link.adapter.name()}));
    QCOMPARE(link.thread.reconnectDelay.load(), 60);
    QVERIFY(!link.thread.reportFailure);
    link.line.once(&CTlgThread::PortThread);
    QVERIFY(link.ended());
    QCOMPARE(link.states().size(), 2);

    holder.close();
    QVERIFY(link.open()); // free again
    QCOMPARE(link.states().size(), 4);
}

void TestPortFailures::secondProgramLeavesTheFirstUndisturbed()
{
    AdapterLink link;
    QVERIFY(link.open());
    link.line.send(qs("EASIU"));
    link.adapter.send("22");
    QTRY_COMPARE(link.adapter.got(), QByteArray("660103"));

    Line second;
    QVERIFY(second.thread.setTrelo(qs("10000001"), 50, false));
    second.send(qs("SSS"));
    second.thread.PortThread();
    QCOMPARE(second.lastState(),
             qs("Trelo (10000001): Доступ запрещен / Проверьте права доступа к ") + link.adapter.name());
    QCOMPARE(second.thread.reconnectDelay.load(), 60);
    QVERIFY(!second.thread.connected);
    QCOMPARE(second.thread.sendBuffer.mGet(), qs("SSS"));

    link.adapter.send("2f03");
    QTRY_COMPARE(link.adapter.got(), QByteArray("66010366050607"));
    QCOMPARE(link.received(), qs("A"));
    QVERIFY(second.thread.recvBuffer.mIsEmpty());
    QCOMPARE(link.states().size(), 3);
}

void TestPortFailures::thirtySilentSecondsStayAndOneMoreEnds()
{
    AdapterLink link;
    QVERIFY(link.open());
    link.line.send(qs("EA"));
    for (int second = 0; second < 30; ++second)
        QVERIFY(link.line.second());
    QVERIFY(link.thread.connected);
    QVERIFY(link.line.second());
    QVERIFY(link.ended());
    QCOMPARE(link.states().mid(3), QStringList(qs(": Адаптер не отвечает")));
    QCOMPARE(link.thread.reconnectDelay.load(), 5);
    QVERIFY(!link.thread.connected);
    QVERIFY(link.thread.reportFailure);
    QCOMPARE(link.thread.sendBuffer.mGet(), qs("EA"));
    QTRY_VERIFY(!link.adapter.isOpen());
    QCOMPARE(link.adapter.got(), QByteArray()); // no farewell to an adapter that is not there
}

void TestPortFailures::anyByteEndsTheSilence()
{
    AdapterLink link;
    QVERIFY(link.open());
    int answered = 0;
    for (const char *byte : {"03", "30", "4f", "ff", "83"}) { // "ff" means nothing, but is a sign of life
        for (int second = 0; second < 30; ++second)
            QVERIFY(link.line.second());
        link.adapter.send(QByteArray(byte) + "20");
        ++answered;
        QTRY_COMPARE(link.adapter.got(), QByteArray("66").repeated(answered));
    }
    for (int second = 0; second < 31; ++second) {
        QVERIFY(link.thread.connected);
        QVERIFY(link.line.second());
    }
    QVERIFY(link.ended());
    QCOMPARE(link.states().last(), qs(": Адаптер не отвечает"));
}

void TestPortFailures::unpluggedBeforeTheFirstByte()
{
    AdapterLink link;
    CPortLoop::waits.firstByteMs = 2000;
    link.line.send(qs("EA"));
    link.begin(true);
    QTRY_VERIFY(link.adapter.isOpen());
    link.adapter.unplug();
    QVERIFY(link.ended());
    QCOMPARE(link.states(), QStringList({qs(": Подключение"), qs(": Адаптер не отвечает")}));
    QCOMPARE(link.thread.reconnectDelay.load(), 30);
    QVERIFY(!link.thread.connected);
    QCOMPARE(link.thread.sendBuffer.mGet(), qs("EA"));
}

void TestPortFailures::unpluggedInTheFirstTwoSeconds()
{
    AdapterLink link;
    CPortLoop::waits.settleMs = 2000;
    link.line.send(qs("EA"));
    link.begin();
    link.adapter.send("3f");
    QTRY_COMPARE(link.adapter.got(), QByteArray("66"));
    link.adapter.unplug();
    QVERIFY(lostWithItsText(link, qs("EA")));
    const QString connected = qs(": Соединено ") + link.adapter.name();
    QCOMPARE(link.states(), QStringList({qs(": Подключение"), connected, connected, Gone}));
}

void TestPortFailures::unpluggedDuringTheQuestionForTheVersion()
{
    AdapterLink link;
    link.line.send(qs("EA"));
    link.begin(true);
    link.adapter.send("3f");
    QTRY_COMPARE(link.adapter.got(), QByteArray("665b"));
    link.adapter.send("170b");
    link.adapter.unplug();
    QVERIFY(lostWithItsText(link, qs("EA")));
    const QString connected = qs(": Соединено ") + link.adapter.name();
    QCOMPARE(link.states(), QStringList({qs(": Подключение"), connected, connected, Gone}));
    QVERIFY(!link.thread.needVersion);
}

void TestPortFailures::unpluggedWithTextWaiting()
{
    for (const char *version : {"170b0a", "170b0b"}) {
        AdapterLink link;
        QVERIFY(link.open(version));
        link.line.send(qs("EASIU"));
        link.adapter.unplug();
        QVERIFY(lostWithItsText(link, qs("EASIU")));
        QCOMPARE(link.states().mid(4), QStringList(Gone));
    }
}

void TestPortFailures::unpluggedInTheMiddleOfAText()
{
    AdapterLink link;
    QVERIFY(link.open("170b0b"));
    link.line.send(qs("EASIUDRJNFCK"));
    link.adapter.send("25");
    QTRY_COMPARE(link.adapter.got(), QByteArray("660103050607"));
    link.adapter.send("8183"); // two of the five are on the line
    QTRY_COMPARE(link.thread.sentLog.mGet(), qs("EA"));
    link.adapter.unplug();
    QVERIFY(lostWithItsText(link, qs("DRJNFCK")));
    QCOMPARE(link.thread.pendingEcho.mGet(), qs("SIU"));
    QVERIFY(!link.thread.allSent);

    link.adapter.plug();
    link.adapter.take();
    QVERIFY(link.open());
    link.adapter.send("2f");
    QTRY_COMPARE(link.adapter.got(), QByteArray("66090a0b0c0d0e0f"));
    link.adapter.send("30");
    QTRY_VERIFY(link.thread.allSent);
    QVERIFY(link.thread.pendingEcho.mIsEmpty());
}

void TestPortFailures::unpluggedWhileTheLineWasBad()
{
    AdapterLink link;
    QVERIFY(link.open());
    link.adapter.send("4f5e");
    QTRY_COMPARE(link.thread.lineError.load(), 3);
    link.adapter.unplug();
    QVERIFY(lostWithItsText(link, QString()));
    QVERIFY(!link.thread.linkUp());
    link.adapter.plug();
    QVERIFY(link.open());
    QVERIFY(link.thread.linkUp());
}

void TestPortFailures::linkThreadComesUpAgainByTheOldRules()
{
    AdapterLink link;
    link.thread.start(QThread::InheritPriority);
    link.adapter.send("30");
    QTRY_COMPARE(link.adapter.got(), QByteArray("665b"));
    link.adapter.send("170b0b");
    QVERIFY(link.shows(4));
    link.line.send(qs("EASIU"));
    link.adapter.send("22");
    QTRY_COMPARE(link.adapter.got(), QByteArray("665b660103"));
    QTRY_COMPARE(link.thread.pendingEcho.mGet(), qs("EA"));
    link.adapter.unplug();
    link.adapter.plug(); // while the link notices, or before
    QVERIFY(link.shows(5));
    link.adapter.take();
    link.adapter.send("30");
    QVERIFY(link.shows(8));
    const QString connected = qs(": Соединено ") + link.adapter.name();
    QCOMPARE(link.states().mid(4), QStringList({Gone, qs(": Подключение"), connected, connected}));
    QTRY_COMPARE(link.adapter.got(), QByteArray("66"));
    link.adapter.send("2f");
    QTRY_COMPARE(link.adapter.got(), QByteArray("6666050607"));
    QTRY_COMPARE(link.thread.sentLog.mGet(), qs("SIU")); // at once, not by an echo
}

QTEST_GUILESS_MAIN(TestPortFailures)
#include "test_port_failures.moc"
