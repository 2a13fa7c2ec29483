// Settings changed in the window of the finished program while telegrams wait and come.

#include "tests/e2e/adapter_station.h"
#include "tests/support/free_port.h"

#include <QDir>
#include <QLockFile>
#include <QtTest>

#include <csignal>

class TestE2eOptions : public QObject
{
    Q_OBJECT

private slots:
    void everyRoadToTheLineIsTakenInTurnAndNothingIsLost();
    void anotherProcedureStartsTheProgramAnew();
};

namespace
{
const QString orders = QStringLiteral("orders");

/// A workstation whose operator changes the settings.
class ChangingStation : public AdapterStation
{
public:
    explicit ChangingStation(const FarEnd &adapter) : AdapterStation(adapter)
    {
        set(QStringLiteral("CONNECT/TcpMode"), QStringLiteral("true"));
        operate(QStringLiteral("OPERATOR_SETS"), orders);
    }

    /// The operator sees the orders whole: a file that is being written is none yet.
    void change(const QStringList &settings)
    {
        write(QStringLiteral("new"), settings.join(QLatin1Char('\n')).toUtf8());
        QVERIFY(QFile::rename(path(QStringLiteral("new")), path(orders)));
    }
    void queueNext(const QString &text)
    {
        const QString name = QStringLiteral("out/20200101u%1.200101_000000");
        write(name.arg(++m_queued, 3, 10, QLatin1Char('0')), (QStringLiteral("\r\n") + text).toUtf8());
    }
    [[nodiscard]] bool queueIsEmpty() const
    {
        return names(QStringLiteral("out"), QStringLiteral("*u???.*")).isEmpty();
    }
    [[nodiscard]] int applied() const { return lines.count(QStringLiteral("set")); }
    [[nodiscard]] qint64 running() const
    {
        qint64 id = 0;
        QString host, application;
        QLockFile lock(path(QStringLiteral("velda.lck")));
        return lock.getLockInfo(&id, &host, &application) ? id : 0;
    }

private:
    int m_queued = 0;
};

/// Letters, as a figure 4 without its register mark is as good as another letter.
QChar letterOf(int number)
{
    return QStringLiteral("АБВГДЕ").at(number - 1);
}

QString outgoing(int number)
{
    return telegram(QStringLiteral("ИСХОДЯЩАЯ %1\r\nТЕКСТ").arg(letterOf(number)));
}

QString incoming(int number)
{
    return telegram(QStringLiteral("ВХОДЯЩАЯ %1\r\nТЕКСТ").arg(letterOf(number)));
}

void sendTo(FarEnd &end, int number)
{
    end.send(QStringLiteral("\r\n") + incoming(number) + QStringLiteral("\r\n"));
}

QStringList incomingTo(int last)
{
    QStringList texts;
    for (int i = 1; i <= last; ++i)
        texts << incoming(i);
    return texts;
}
} // namespace

// What is queued at the moment of the change goes by the old road or the new one, once.
void TestE2eOptions::everyRoadToTheLineIsTakenInTurnAndNothingIsLost()
{
    FarEnd called;
    FarEnd behindAdapter({}, AdapterStation::adapterOf(QStringLiteral("new")));
    ChangingStation station(behindAdapter);
    station.callTo(called.port);
    station.queueNext(outgoing(1));
    sendTo(called, 1);
    station.start();
    QTRY_COMPARE_WITH_TIMEOUT(called.telegrams(), QStringList(outgoing(1)), 60000);
    QTRY_COMPARE_WITH_TIMEOUT(station.received(), incomingTo(1), 60000);

    const quint16 port = freePort();
    station.queueNext(outgoing(2));
    station.queueNext(outgoing(3));
    station.change({QStringLiteral("Host=S:127.0.0.1"), QStringLiteral("Port=%1").arg(port)});
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral("Ожидание подключения")), 60000);
    FarEnd calling(port, {});
    sendTo(calling, 2);
    QTRY_COMPARE_WITH_TIMEOUT(called.telegrams().size() + calling.telegrams().size(), 3, 60000);
    QTRY_COMPARE_WITH_TIMEOUT(station.received(), incomingTo(2), 60000);

    sendTo(behindAdapter, 3);
    station.queueNext(outgoing(4));
    const QString serial = behindAdapter.ports.section(QLatin1Char('='), 0, 0);
    station.change({QStringLiteral("TcpMode=false"), QStringLiteral("TRELO_SN=") + serial,
                    QStringLiteral("tlgBaud=200")});
    QTRY_COMPARE_WITH_TIMEOUT(station.received(), incomingTo(3), 60000);
    station.queueNext(outgoing(5));
    QTRY_VERIFY_WITH_TIMEOUT(behindAdapter.telegrams().contains(outgoing(5)), 60000);

    station.queueNext(outgoing(6));
    station.change({QStringLiteral("TcpMode=true"), QStringLiteral("Host=127.0.0.1"),
                    QStringLiteral("Port=%1").arg(called.port)});
    sendTo(called, 4);
    QTRY_COMPARE_WITH_TIMEOUT(station.received(), incomingTo(4), 60000);
    QTRY_VERIFY_WITH_TIMEOUT(station.queueIsEmpty(), 60000);
    QCOMPARE(station.applied(), 3);
    QVERIFY(station.end());
    QStringList arrived = called.telegrams() + calling.telegrams() + behindAdapter.telegrams();
    arrived.sort();
    QStringList expected;
    for (int i = 1; i <= 6; ++i)
        expected << outgoing(i);
    QCOMPARE(arrived, expected);
    QCOMPARE(station.tree(QStringLiteral("out")).size(), 6);
}

// The new process is told no data directory: it works on that of the program.
void TestE2eOptions::anotherProcedureStartsTheProgramAnew()
{
    FarEnd farEnd;
    FarEnd behindAdapter({}, AdapterStation::adapterOf(QStringLiteral("new")));
    ChangingStation station(behindAdapter);
    station.callTo(farEnd.port);
    station.set(QStringLiteral("CONNECT/processMode"), QStringLiteral("1"));
    station.bringProgram();
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral(": Соединено ")), 60000);
    const qint64 first = station.running();
    station.queueNext(outgoing(1));
    station.change({QStringLiteral("processMode=ПС")});
    QTRY_VERIFY_WITH_TIMEOUT(station.running() != 0 && station.running() != first, 60000);
    const qint64 second = station.running();
    QVERIFY(station.waitForEnd(60) && station.endedWith(0));
    QTRY_COMPARE_WITH_TIMEOUT(farEnd.telegrams(), QStringList(outgoing(1)), 60000);
    QVERIFY(station.logged(QStringLiteral("Запуск ------------ СКК ")));
    QVERIFY(station.logged(QStringLiteral("Запуск ------------ ПС ")));
    QVERIFY(station.read(QStringLiteral("velda.ini")).contains("\nprocessMode=2\n"));
    ::kill(static_cast<pid_t>(second), SIGTERM);
    QTRY_COMPARE_WITH_TIMEOUT(station.running(), qint64(0), 60000);
}

QTEST_GUILESS_MAIN(TestE2eOptions)
#include "test_e2e_options.moc"
