// The adapter is pulled out in the middle of things, and comes back.

#include "tests/e2e/adapter_station.h"

#include <QtTest>

class TestE2eAdapterPulled : public QObject
{
    Q_OBJECT

private slots:
    void pulledOutInTheMiddleOfSending_data() { AdapterStation::generations(); }
    void pulledOutInTheMiddleOfSending();
    void pulledOutInTheMiddleOfReceiving();
    void pulledOutOnTheWayToACentre_data() { AdapterStation::generations(); }
    void pulledOutOnTheWayToACentre();
    void pulledOutInTheMiddleOfACall_data() { AdapterStation::generations(); }
    void pulledOutInTheMiddleOfACall();
};

namespace
{
const QString noPortText = QStringLiteral(" Trelo (10000001):No such file or directory");
constexpr int RoomAtMost = 80; // codes that an adapter may hold when it is pulled out

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

// What the adapter held is lost with it; the rest goes out when it is back, once and in order.
void TestE2eAdapterPulled::pulledOutInTheMiddleOfSending()
{
    QFETCH(QString, firmware);
    FarEnd farEnd({}, AdapterStation::adapterOf(firmware));
    AdapterStation station(farEnd);
    const QString out = telegram(QStringLiteral("ОБОРВАННАЯ"), 900);
    station.queue(out);
    station.start();
    QTRY_VERIFY_WITH_TIMEOUT(farEnd.text().contains(QStringLiteral("СТРОКА 0005")), 60000);
    farEnd.command(QStringLiteral("unplug"));
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(noPortText), PatienceMs);
    QVERIFY(station.logged(QStringLiteral(" Trelo (10000001):Input/output error")));
    QVERIFY(station.tree(QStringLiteral("out")).contains(AdapterStation::queueName()));
    QCOMPARE(station.connections(), 1);
    farEnd.command(QStringLiteral("plug"));
    QTRY_COMPARE_WITH_TIMEOUT(station.connections(), 2, 60000);
    QTRY_VERIFY_WITH_TIMEOUT(farEnd.text().contains(QStringLiteral("НННН")), 60000);
    const QString came = behindFirstMark(farEnd.text());
    const int head = commonHead(came, out);
    QVERIFY2(out.endsWith(came.mid(head).trimmed() + QStringLiteral("  ")), qPrintable(came));
    QVERIFY2(came.size() <= out.size() && came.size() >= out.size() - RoomAtMost, qPrintable(came));
    QTRY_COMPARE_WITH_TIMEOUT(station.tree(QStringLiteral("out")),
                              QStringList(QStringLiteral("20260731/") + AdapterStation::queueName()),
                              PatienceMs);
    QCOMPARE(station.count(QStringLiteral("Отправка файла: ") + AdapterStation::queueName()), 1);
    // What was in the adapter is lost, and where each code comes back the journal lacks it.
    verifyOrderlyEnd(station, farEnd, true);
}

// Neither half is lost: they stand together in what is stored.
void TestE2eAdapterPulled::pulledOutInTheMiddleOfReceiving()
{
    FarEnd farEnd({}, AdapterStation::adapterOf(QStringLiteral("new")));
    AdapterStation station(farEnd);
    const QString in = telegram(QStringLiteral("ОБОРВАННАЯ"), 2000); // of 75 seconds
    farEnd.send(QStringLiteral("\r\n") + in + QStringLiteral("\r\n"));
    station.start();
    QTRY_COMPARE_WITH_TIMEOUT(station.connections(), 1, PatienceMs);
    QTest::qWait(4000); // 20 seconds of it, written down when the line rests
    farEnd.command(QStringLiteral("unplug"));
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(noPortText), PatienceMs);
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
void TestE2eAdapterPulled::pulledOutOnTheWayToACentre()
{
    QFETCH(QString, firmware);
    FarEnd::Adapter adapter = AdapterStation::adapterOf(firmware);
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
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(noPortText), PatienceMs);
    QCOMPARE(station.read(QStringLiteral("out/") + name), text.toUtf8());
    farEnd.command(QStringLiteral("plug"));
    QTRY_COMPARE_WITH_TIMEOUT(station.connections(), 2, 60000);
    QTRY_COMPARE_WITH_TIMEOUT(station.tree(QStringLiteral("out")),
                              QStringList(name + QStringLiteral(".b001")), 60000);
    QCOMPARE(station.read(QStringLiteral("out/") + name + QStringLiteral(".b001")), text.toUtf8());
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(QStringLiteral(" Установлен РУЧНОЙ режим")), PatienceMs);
    const QRegularExpression taken(QStringLiteral("^telegram: [0-9]+ П")); // by the centre
    QCOMPARE(farEnd.lines.filter(taken), QStringList());
    QCOMPARE(farEnd.lines.filter(QStringLiteral("broken: |ЗЦЗЦ 001 П654321")).size(), 1);
}

// The connection ends with the adapter and is kept as far as it came. The file has lost a try and nothing
// else: the next call delivers it.
void TestE2eAdapterPulled::pulledOutInTheMiddleOfACall()
{
    QFETCH(QString, firmware);
    FarEnd::Adapter adapter = AdapterStation::adapterOf(firmware);
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
    QTRY_VERIFY_WITH_TIMEOUT(station.logged(noPortText), PatienceMs);
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
    QTRY_VERIFY_WITH_TIMEOUT(!QFile::exists(station.path(out + QStringLiteral(".dat"))), PatienceMs);
    QVERIFY(!QFile::exists(station.path(out)));
    QTRY_COMPARE_WITH_TIMEOUT(farEnd.lines.filter(QStringLiteral("dialled: ")).size(), 2, PatienceMs);
    QCOMPARE(farEnd.lines.filter(QRegularExpression(QStringLiteral("^got: 112233 ЗЦЗЦ П001.*НННН"))).size(),
             1);
    QVERIFY(!farEnd.lines.filter(QStringLiteral("remains: ")).isEmpty());
    QTRY_COMPARE_WITH_TIMEOUT(station.names(QStringLiteral("out/20260731"), QStringLiteral("s*")).size(), 2,
                              60000);
    verifyOrderlyEnd(station, farEnd);
}

QTEST_GUILESS_MAIN(TestE2eAdapterPulled)
#include "test_e2e_adapter_pulled.moc"
