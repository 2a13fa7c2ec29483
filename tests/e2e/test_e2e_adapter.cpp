// The direct link through a line adapter of either generation, at the pace of the line.

#include "tests/e2e/far_end.h"
#include "tests/e2e/station.h"

#include <QtTest>

class TestE2eAdapter : public QObject
{
    Q_OBJECT

private slots:
    void telegramsGoBothWays_data() { generations(); }
    void telegramsGoBothWays();
    void pulledOutInTheMiddleOfSending_data() { generations(); }
    void pulledOutInTheMiddleOfSending();
    void pulledOutInTheMiddleOfReceiving();
    void pulledOutOnTheWayToACentre_data() { generations(); }
    void pulledOutOnTheWayToACentre();
    void pulledOutInTheMiddleOfACall_data() { generations(); }
    void pulledOutInTheMiddleOfACall();
    void withoutInputSignalTheQueueWaits();
    void brokenLineStopsNeitherEnd();
    void silentAdapterIsTriedAgain();
    void killedProgramFindsThePortAgain();

private:
    static void generations();
};

namespace
{
const QString clockSetting = QStringLiteral("@2026-07-31 12:00:00 x5");
const QString queued = QStringLiteral("20200101u001.200101_000000");
const QString noPortText = QStringLiteral(" Trelo (10000001):No such file or directory");
constexpr int RoomAtMost = 80; // codes that an adapter may hold when it is pulled out

/// The workstation has two seconds for its answers, ten under the clock.
FarEnd::Adapter adapterOf(const QString &firmware, const QStringList &more = {})
{
    return {firmware, clockSetting, QStringList{QStringLiteral("--answer"), QStringLiteral("10000")} + more};
}

/// A workstation on the adapter of \a farEnd.
class AdapterStation : public Station
{
public:
    explicit AdapterStation(const FarEnd &farEnd) : m_farEnd(farEnd)
    {
        useAdapter(farEnd.ports);
        fakeTime(clockSetting);
    }
    void queue(const QString &text) const
    {
        write(QStringLiteral("out/") + queued, QString(QLatin1String("\r\n") + text).toUtf8());
    }
    /// Times that the program was ready to take what the line brings.
    [[nodiscard]] int connections() const { return m_farEnd.lines.count(QStringLiteral("ready:")); }
    /// Shows what both ends have noted if the test has failed.
    ~AdapterStation() override
    {
        if (QTest::currentTestFailed())
            qWarning("%s\n---\n%s", qPrintable(journal().join(QLatin1Char('\n'))),
                     qPrintable(m_farEnd.lines.join(QLatin1Char('\n'))));
    }

private:
    const FarEnd &m_farEnd;
};

void verifyOrderlyEnd(Station &station, FarEnd &farEnd)
{
    QVERIFY(station.end());
    QTRY_VERIFY(!farEnd.lines.filter(QStringLiteral("closed")).isEmpty());
    QCOMPARE(farEnd.violations(), QStringList());
    QVERIFY(farEnd.quit());
}

int commonHead(const QString &a, const QString &b)
{
    int length = 0;
    while (length < qMin(a.size(), b.size()) && a.at(length) == b.at(length))
        ++length;
    return length;
}

QString behindFirstMark(const QString &text)
{
    return text.mid(qMax(0, text.indexOf(QStringLiteral("ЗЦЗЦ "))));
}
} // namespace

void TestE2eAdapter::generations()
{
    QTest::addColumn<QString>("firmware");
    QTest::addColumn<QString>("version");
    QTest::newRow("without echo") << "old"
                                  << "20231110";
    QTest::newRow("with echo") << "new"
                               << "20231111";
}

void TestE2eAdapter::telegramsGoBothWays()
{
    QFETCH(QString, firmware);
    QFETCH(QString, version);
    FarEnd farEnd({}, adapterOf(firmware));
    AdapterStation station(farEnd);
    const QString out = telegram(QStringLiteral("ИСХОДЯЩАЯ 1, 2 И 3\r\nТЕКСТ"), 700);
    const QStringList in = {telegram(QStringLiteral("ВХОДЯЩАЯ 1\r\nТЕКСТ")),
                            telegram(QStringLiteral("ВХОДЯЩАЯ 2"), 500)};
    station.queue(out);
    for (const QString &text : in)
        farEnd.send(QStringLiteral("\r\n") + text + QStringLiteral("\r\n"));
    station.start();
    QTRY_COMPARE_WITH_TIMEOUT(farEnd.telegrams(), QStringList(out), 60000);
    QTRY_COMPARE_WITH_TIMEOUT(station.received(), in, 60000);
    QTRY_COMPARE_WITH_TIMEOUT(station.names(QStringLiteral("out"), QStringLiteral("*u???.*")), QStringList(),
                              10000);
    const QString path = farEnd.ports.section(QLatin1Char('='), 1);
    QVERIFY(station.logged(QStringLiteral(" Trelo (10000001): Соединено ") + path));
    QVERIFY(station.logged(QStringLiteral(" Trelo (10000001): %1 (V %2)").arg(path, version)));
    QCOMPARE(station.tree(QStringLiteral("out")), QStringList(QStringLiteral("20260731/") + queued));
    verifyOrderlyEnd(station, farEnd);
    QCOMPARE(station.state(QStringLiteral("PK_out")), QStringLiteral("1"));
    QCOMPARE(station.state(QStringLiteral("PK_in")), QStringLiteral("2"));
}

// What the adapter held is lost with it; the rest goes out when it is back, once and in order.
void TestE2eAdapter::pulledOutInTheMiddleOfSending()
{
    QFETCH(QString, firmware);
    FarEnd farEnd({}, adapterOf(firmware));
    AdapterStation station(farEnd);
    const QString out = telegram(QStringLiteral("ОБОРВАННАЯ"), 900);
    station.queue(out);
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(farEnd.text().contains(QStringLiteral("СТРОКА 0005")), 60000);
    farEnd.command(QStringLiteral("unplug"));
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(noPortText), 20000);
    QVERIFY(station.logged(QStringLiteral(" Trelo (10000001):Input/output error")));
    QVERIFY(station.tree(QStringLiteral("out")).contains(queued));
    QCOMPARE(station.connections(), 1);
    farEnd.command(QStringLiteral("plug"));
    QTRY_COMPARE_WITH_TIMEOUT(station.connections(), 2, 60000);
    QTRY_VERIFY_WITH_TIMEOUT(farEnd.text().contains(QStringLiteral("НННН")), 60000);
    const QString came = behindFirstMark(farEnd.text());
    const int head = commonHead(came, out);
    QVERIFY2(out.endsWith(came.mid(head).trimmed() + QStringLiteral("  ")), qPrintable(came));
    QVERIFY2(came.size() <= out.size() && came.size() >= out.size() - RoomAtMost, qPrintable(came));
    QTRY_COMPARE_WITH_TIMEOUT(station.tree(QStringLiteral("out")),
                              QStringList(QStringLiteral("20260731/") + queued), 20000);
    QCOMPARE(station.count(QStringLiteral("Отправка файла: ") + queued), 1);
    verifyOrderlyEnd(station, farEnd);
}

// Neither half is lost: they stand together in what is stored.
void TestE2eAdapter::pulledOutInTheMiddleOfReceiving()
{
    FarEnd farEnd({}, adapterOf(QStringLiteral("new")));
    AdapterStation station(farEnd);
    const QString in = telegram(QStringLiteral("ОБОРВАННАЯ"), 2000); // of 75 seconds
    farEnd.send(QStringLiteral("\r\n") + in + QStringLiteral("\r\n"));
    station.start();
    QTRY_COMPARE_WITH_TIMEOUT(station.connections(), 1, 20000);
    QTest::qWait(4000); // 20 seconds of it, written down when the line rests
    farEnd.command(QStringLiteral("unplug"));
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(noPortText), 20000);
    QCOMPARE(station.received(), QStringList());
    farEnd.command(QStringLiteral("plug"));
    QTRY_COMPARE_WITH_TIMEOUT(station.connections(), 2, 60000);
    const QString next = telegram(QStringLiteral("СЛЕДУЮЩАЯ\r\n"));
    farEnd.send(QStringLiteral("\r\n") + next + QStringLiteral("\r\n"));
    QTRY_VERIFY_WITH_TIMEOUT(!station.received().filter(QStringLiteral("СЛЕДУЮЩАЯ")).isEmpty(), 60000);
    const QStringList received = station.received();
    QVERIFY2(received.first().startsWith(in.left(in.indexOf(QStringLiteral("СТРОКА 0002")))),
             qPrintable(received.first()));
    QVERIFY2(received.last().endsWith(next.mid(5)), qPrintable(received.last()));
    verifyOrderlyEnd(station, farEnd);
}

// A centre confirms what it got: the file stays in the queue, set aside for the operator, and is neither lost
// nor taken for sent.
void TestE2eAdapter::pulledOutOnTheWayToACentre()
{
    QFETCH(QString, firmware);
    FarEnd::Adapter adapter = adapterOf(firmware);
    adapter.kind = QStringLiteral("centre");
    FarEnd farEnd({QStringLiteral("--pause"), QStringLiteral("3000")}, adapter);
    AdapterStation station(farEnd);
    station.set(QStringLiteral("CONNECT/processMode"), QStringLiteral("0"));
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral(" Состояние РБ")), 30000);
    const QString name = QStringLiteral("20260731u001");
    QString text = QStringLiteral("П654321\r\n");
    for (int line = 1; line <= 16; ++line)
        text += QStringLiteral("СТРОКА %1 ДЛИННОЙ ТЕЛЕГРАММЫ=\r\n").arg(line, 4, 10, QLatin1Char('0'));
    station.write(QStringLiteral("out/") + name, text.toUtf8());
    QTRY_VERIFY_WITH_TIMEOUT(farEnd.text().contains(QStringLiteral("СТРОКА 0004")), 60000);
    farEnd.command(QStringLiteral("unplug"));
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(noPortText), 20000);
    QCOMPARE(station.read(QStringLiteral("out/") + name), text.toUtf8());
    farEnd.command(QStringLiteral("plug"));
    QTRY_COMPARE_WITH_TIMEOUT(station.connections(), 2, 60000);
    QTRY_COMPARE_WITH_TIMEOUT(station.tree(QStringLiteral("out")),
                              QStringList(name + QStringLiteral(".b001")), 60000);
    QCOMPARE(station.read(QStringLiteral("out/") + name + QStringLiteral(".b001")), text.toUtf8());
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral(" Установлен РУЧНОЙ режим")), 10000);
    const QRegularExpression taken(QStringLiteral("^telegram: [0-9]+ П")); // by the centre
    QCOMPARE(farEnd.lines.filter(taken), QStringList());
    QCOMPARE(farEnd.lines.filter(QStringLiteral("broken: |ЗЦЗЦ 001 П654321")).size(), 1);
}

// The connection ends with the adapter and is kept as far as it came. The file has lost a try and nothing
// else: the next call delivers it.
void TestE2eAdapter::pulledOutInTheMiddleOfACall()
{
    QFETCH(QString, firmware);
    FarEnd::Adapter adapter = adapterOf(firmware);
    adapter.kind = QStringLiteral("switch");
    FarEnd farEnd({QStringLiteral("--terminal-ao"), QStringLiteral("654321 ЗНАМЯ"),
                   QStringLiteral("--subscriber"), QStringLiteral("112233:112233 |ЗАРЯ:"),
                   QStringLiteral("--patience"), QStringLiteral("90")},
                  adapter);
    AdapterStation station(farEnd);
    station.set(QStringLiteral("CONNECT/processMode"), QStringLiteral("1"));
    station.set(QStringLiteral("DORAL/AO"), QStringLiteral("654321 ЗНАМЯ"));
    const QString name = QStringLiteral("20260731u001");
    const QString out = QStringLiteral("out/") + name;
    const QByteArray text =
        "ЗЦЗЦ П001\r\n" + QByteArray("СТРОКА ДЛЯ ОДНОГО АБОНЕНТА=\r\n").repeated(12) + "НННН  \r\n";
    station.write(out, text);
    station.write(out + QStringLiteral(".dat"), "112233|S|01.01.2020 00:00|u|3|N|");
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(farEnd.lines.filter(QStringLiteral("СТРОКА ДЛЯ")).size() >= 2, 60000);
    farEnd.command(QStringLiteral("unplug"));
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(noPortText), 20000);
    QCOMPARE(station.read(out), text);
    QCOMPARE(station.read(out + QStringLiteral(".dat")), QByteArray("112233|S|01.01.2020 00:00|u|2|N|"));
    const QStringList kept = station.names(QStringLiteral("out/20260731"));
    QCOMPARE(kept.size(), 1);
    QVERIFY2(kept.first().startsWith(QLatin1Char('s')), qPrintable(kept.first()));
    const QString transcript =
        QString::fromUtf8(station.read(QStringLiteral("out/20260731/") + kept.first()));
    QVERIFY2(transcript.contains(QStringLiteral("ЗЦЗЦ П001")), qPrintable(transcript));
    QVERIFY2(!transcript.contains(QStringLiteral("НННН")), qPrintable(transcript));

    farEnd.command(QStringLiteral("plug"));
    QTRY_COMPARE_WITH_TIMEOUT(station.read(QStringLiteral("out/20260731/") + name + QStringLiteral(".000")),
                              text, 90000);
    QVERIFY(!QFile::exists(station.path(out)));
    QVERIFY(!QFile::exists(station.path(out + QStringLiteral(".dat"))));
    QCOMPARE(farEnd.lines.filter(QStringLiteral("dialled: ")).size(), 2);
    QCOMPARE(farEnd.lines.filter(QRegularExpression(QStringLiteral("^got: 112233 ЗЦЗЦ П001.*НННН"))).size(),
             1);
    QVERIFY(!farEnd.lines.filter(QStringLiteral("remains: ")).isEmpty());
    QTRY_COMPARE_WITH_TIMEOUT(station.names(QStringLiteral("out/20260731"), QStringLiteral("s*")).size(), 2,
                              60000);
    verifyOrderlyEnd(station, farEnd);
}

void TestE2eAdapter::withoutInputSignalTheQueueWaits()
{
    FarEnd farEnd({}, adapterOf(QStringLiteral("new")));
    AdapterStation station(farEnd);
    station.start();
    QTRY_COMPARE_WITH_TIMEOUT(station.connections(), 1, 20000);
    farEnd.command(QStringLiteral("no-signal"));
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral(" Trelo (10000001): Нет входного сигнала ")),
                             20000);
    const QString out = telegram(QStringLiteral("ЖДЕТ СИГНАЛА\r\n"));
    station.queue(out);
    QTest::qWait(2000); // ten ticks
    QVERIFY(!station.logged(QStringLiteral("Отправка файла")));
    QCOMPARE(farEnd.telegrams(), QStringList());
    farEnd.command(QStringLiteral("signal"));
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral(" Trelo (10000001): Адаптер подключен")), 20000);
    QTRY_COMPARE_WITH_TIMEOUT(farEnd.telegrams(), QStringList(out), 60000);
    QCOMPARE(station.connections(), 1);
    verifyOrderlyEnd(station, farEnd);
}

// A break shows as one "^" in the journal, however long it is.
void TestE2eAdapter::brokenLineStopsNeitherEnd()
{
    FarEnd farEnd({}, adapterOf(QStringLiteral("new")));
    AdapterStation station(farEnd);
    station.start();
    QTRY_COMPARE_WITH_TIMEOUT(station.connections(), 1, 20000);
    farEnd.command(QStringLiteral("text ДО ОБРЫВА"));
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral("ДО ОБРЫВА")), 20000);
    farEnd.command(QStringLiteral("break"));
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral("ДО ОБРЫВА^")), 20000);
    QTest::qWait(1000); // it goes on
    farEnd.command(QStringLiteral("mend"));
    farEnd.command(QStringLiteral("text ПОСЛЕ ОБРЫВА"));
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral("ПОСЛЕ ОБРЫВА")), 20000);
    QCOMPARE(station.journal().join(QString()).count(QLatin1Char('^')), 1);
    QCOMPARE(station.connections(), 1);
    verifyOrderlyEnd(station, farEnd);
}

// Silent at the start it is tried again after 30 seconds, silent later for 31 seconds after 5.
void TestE2eAdapter::silentAdapterIsTriedAgain()
{
    FarEnd farEnd({}, adapterOf(QStringLiteral("new"), {QStringLiteral("--silent")}));
    AdapterStation station(farEnd);
    station.start();
    const QString silent = QStringLiteral(" Trelo (10000001): Адаптер не отвечает");
    QTRY_COMPARE_WITH_TIMEOUT(station.count(silent), 1, 20000);
    QCOMPARE(station.connections(), 0);
    farEnd.command(QStringLiteral("speak"));
    QTRY_COMPARE_WITH_TIMEOUT(station.connections(), 1, 30000);
    farEnd.command(QStringLiteral("silence"));
    QTRY_COMPARE_WITH_TIMEOUT(station.count(silent), 2, 30000);
    farEnd.command(QStringLiteral("speak"));
    QTRY_COMPARE_WITH_TIMEOUT(station.connections(), 2, 30000);
    const QString out = telegram(QStringLiteral("ПОСЛЕ ТИШИНЫ\r\n"));
    station.queue(out);
    QTRY_COMPARE_WITH_TIMEOUT(farEnd.telegrams(), QStringList(out), 60000);
    verifyOrderlyEnd(station, farEnd);
}

// The queue file of a killed program is whole, and goes again from its beginning.
void TestE2eAdapter::killedProgramFindsThePortAgain()
{
    FarEnd farEnd({}, adapterOf(QStringLiteral("new")));
    AdapterStation station(farEnd);
    const QString out = telegram(QStringLiteral("ПЕРЕДАННАЯ ДВАЖДЫ"), 400);
    station.queue(out);
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(farEnd.text().contains(QStringLiteral("СТРОКА 0002")), 60000);
    farEnd.command(QStringLiteral("allow-kill"));
    QTest::qWait(200);
    station.kill();
    QCOMPARE(station.tree(QStringLiteral("out")), QStringList(queued));
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(farEnd.text().endsWith(out), 60000);
    QTRY_COMPARE_WITH_TIMEOUT(station.tree(QStringLiteral("out")),
                              QStringList(QStringLiteral("20260731/") + queued), 20000);
    verifyOrderlyEnd(station, farEnd);
}

QTEST_GUILESS_MAIN(TestE2eAdapter)
#include "test_e2e_adapter.moc"
