#include "tests/e2e/far_end.h"
#include "tests/e2e/station.h"
#include "tests/support/two_machines.h"

#include <QtTest>

#include <csignal>

// The workstation and its peer on two machines: what counts as sent when the cable between them is pulled.
class TestE2eCable : public QObject
{
    Q_OBJECT

public:
    explicit TestE2eCable(const TwoMachines &machines) : m_machines(machines) {}

private slots:
    void cleanup();
    void longFileStaysInTheQueue();
    void shortFileStaysAndGoesOutOnTheNextLink();
    void peerThatDoesNotReadIsNotHungUpOn();

private:
    [[nodiscard]] std::unique_ptr<FarEnd> farEnd() const;
    static void callFar(Station &station, quint16 port);

    const TwoMachines &m_machines;
};

namespace
{
const QString queueName = QStringLiteral("20200101u001.200101_000000");
const QString queueFile = QStringLiteral("out/") + queueName;

/// The highest number among the lines of telegram() in \a text.
int lastLine(const QString &text)
{
    int last = 0;
    const QRegularExpression line(QStringLiteral("СТРОКА (\\d{4})"));
    for (auto found = line.globalMatch(text); found.hasNext();)
        last = qMax(last, found.next().captured(1).toInt());
    return last;
}

/// The file stands among those of some day, and in the queue no more.
bool isFiled(const Station &station)
{
    const QStringList files = station.tree(QStringLiteral("out"));
    return !files.contains(queueName) && !files.filter(queueName).isEmpty();
}
} // namespace

void TestE2eCable::cleanup()
{
    m_machines.plugCable();
}

/// A peer that never speaks, so that nothing but the machine's acknowledgements tells of it.
std::unique_ptr<FarEnd> TestE2eCable::farEnd() const
{
    m_machines.standFar();
    auto end = std::make_unique<FarEnd>(QStringList{QStringLiteral("--address"),
                                                    QString::fromLatin1(TwoMachines::FarAddress),
                                                    QStringLiteral("--silent")});
    m_machines.standNear();
    return end;
}

void TestE2eCable::callFar(Station &station, quint16 port)
{
    station.callTo(port);
    station.set(QStringLiteral("CONNECT/Адрес"), QString::fromLatin1(TwoMachines::FarAddress));
    station.set(QStringLiteral("CONNECT/TimeOut"), QStringLiteral("9")); // 3 of the system's seconds
    station.start();
}

void TestE2eCable::longFileStaysInTheQueue()
{
    const auto far = farEnd();
    Station station;
    station.write(queueFile, telegram(QStringLiteral("ДЛИННАЯ"), 20000).toUtf8());
    callFar(station, far->port);
    QTRY_VERIFY_WITH_TIMEOUT(lastLine(far->text()) >= 5, 30000);
    m_machines.pullCable();
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral(": Ошибка отправки данных")), 40000);
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral(": Соединение закрыто")), 20000);
    QVERIFY(station.tree(QStringLiteral("out")).contains(queueName));
    QVERIFY(station.end());
    const int sent = lastLine(station.journal().join(QLatin1Char('\n'))), arrived = lastLine(far->text());
    QVERIFY2(sent <= arrived + 1, qPrintable(QStringLiteral("%1 sent, %2 came").arg(sent).arg(arrived)));
    QVERIFY2(arrived <= sent + 1, qPrintable(QStringLiteral("%1 sent, %2 came").arg(sent).arg(arrived)));
    QVERIFY(station.tree(QStringLiteral("out")).contains(queueName));
}

// All of it is written at once and nothing of it arrives.
void TestE2eCable::shortFileStaysAndGoesOutOnTheNextLink()
{
    const auto far = farEnd();
    const QString text = telegram(QStringLiteral("КОРОТКАЯ\r\n"));
    QVERIFY(text.size() <= 32);
    Station station;
    callFar(station, far->port);
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral(": Соединено ")), 20000);
    m_machines.pullCable();
    station.write(queueFile, text.toUtf8());
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral(": Соединение закрыто")), 40000);
    QVERIFY(station.logged(QStringLiteral("Отправка файла: ") + queueName));
    QVERIFY(station.logged(QStringLiteral(": Ошибка отправки данных")));
    QVERIFY(!station.logged(QStringLiteral("КОРОТКАЯ")));
    QVERIFY(!isFiled(station));

    m_machines.plugCable();
    far->command(QStringLiteral("drop")); // it has not noticed that its caller is gone
    QTRY_COMPARE_WITH_TIMEOUT(far->telegrams(), QStringList(text), 60000);
    QTRY_VERIFY_WITH_TIMEOUT(isFiled(station), 20000);
    QTRY_COMPARE_WITH_TIMEOUT(station.count(QStringLiteral("КОРОТКАЯ")), 1, 20000);
    QCOMPARE(station.count(QStringLiteral("Отправка файла: ")), 1);
    QVERIFY(station.end());
}

// Its machine answers for it: a stopped program is none that is gone.
void TestE2eCable::peerThatDoesNotReadIsNotHungUpOn()
{
    const auto far = farEnd();
    const QString text = telegram(QStringLiteral("НЕ СПЕША"), 1000);
    Station station;
    callFar(station, far->port);
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral(": Соединено ")), 20000);
    const auto program = static_cast<pid_t>(far->process.processId());
    ::kill(program, SIGSTOP);
    station.write(queueFile, text.toUtf8());
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral("Отправка файла: ")), 20000);
    QTest::qWait(10000); // thrice the time-out
    QVERIFY(!station.logged(QStringLiteral("Ошибка отправки данных")));
    QVERIFY(!station.logged(QStringLiteral("Соединение закрыто")));
    ::kill(program, SIGCONT);
    QTRY_COMPARE_WITH_TIMEOUT(far->telegrams(), QStringList(text), 30000);
    QTRY_VERIFY_WITH_TIMEOUT(isFiled(station), 20000);
    QVERIFY(station.end());
}

int main(int argc, char *argv[])
{
    const TwoMachines machines;
    QCoreApplication app(argc, argv);
    TestE2eCable test(machines);
    return QTest::qExec(&test, argc, argv);
}
#include "test_e2e_cable.moc"
