// Lines on record, played back to the workstation: it must do on each what it did when the record was made,
// to the byte, and leave the same files. The records stand in tests/e2e/records; with VELDA_MAKE_RECORDS=DIR
// the test makes them anew there, from the simulated far ends, instead of playing them. A busy machine asks
// for things at other moments than the record has them: one of a few rounds is the same.

#include "tests/e2e/line_program.h"
#include "tests/e2e/station.h"
#include "tests/support/rounds.h"

#include <QtTest>

class TestE2eRecord : public QObject
{
    Q_OBJECT

private slots:
    void directLink();
    void centreThatCalls();
    void dialledCallThroughAnAdapter();
};

namespace
{
const QString tenfold = QStringLiteral("@2026-07-31 12:00:00 x10");

/// The words of a command line; a "~" is a blank within one.
QStringList words(const QString &text)
{
    return text.split(QLatin1Char(' ')).replaceInStrings(QStringLiteral("~"), QStringLiteral(" "));
}

/// Where records are made; empty if they are to be played.
QString makingDirectory()
{
    return qEnvironmentVariable("VELDA_MAKE_RECORDS");
}

/// A station that has a record's far end on its line: the replay or, where a record is being made, a tap with
/// a simulated far end behind it.
class RecordedLine
{
public:
    explicit RecordedLine(const QString &name) : m_name(name) { station.fakeTime(tenfold); }

    /// The workstation calls \a kind, a far end with its options; both ask for life as often as a run is
    /// long.
    void callTo(const QString &kind)
    {
        if (makingDirectory().isEmpty()) {
            startReplay({QStringLiteral("--listen"), QStringLiteral("0"), QStringLiteral("--ignore"),
                         QStringLiteral("16")});
        } else {
            m_farEnd = std::make_unique<LineProgram>(words(kind + QStringLiteral(" --listen 0")), tenfold);
            startTap({QStringLiteral("--listen"), QStringLiteral("0"), QStringLiteral("--to"),
                      QStringLiteral("127.0.0.1:") + m_farEnd->waitFor(QStringLiteral("listening: "))});
        }
        station.callTo(m_line->waitFor(QStringLiteral("listening: ")).toUShort());
    }

    /// \a kind calls the workstation, which listens by now and asks for life by its own clock: those bytes
    /// and their answers come as often as a run is long.
    void beCalledBy(const QString &kind, quint16 port)
    {
        const QString to = QStringLiteral("127.0.0.1:%1").arg(port);
        if (makingDirectory().isEmpty())
            return startReplay(
                {QStringLiteral("--connect"), to, QStringLiteral("--ignore"), QStringLiteral("16BF")});
        startTap({QStringLiteral("--listen"), QStringLiteral("0"), QStringLiteral("--workstation-listens"),
                  QStringLiteral("--to"), to});
        m_farEnd = std::make_unique<LineProgram>(words(kind + QStringLiteral(" --connect 127.0.0.1:") +
                                                       m_line->waitFor(QStringLiteral("listening: "))),
                                                 tenfold);
    }

    /// \a kind is behind an adapter, whose statuses are asked for and answered as often as a run is long.
    void useAdapter(const QString &adapter, const QString &kind)
    {
        const QString port = m_directory.filePath(QStringLiteral("port"));
        if (makingDirectory().isEmpty()) {
            startReplay({QStringLiteral("--port"), port, QStringLiteral("--ignore"), QStringLiteral("693F")});
        } else {
            const QString device = m_directory.filePath(QStringLiteral("adapter"));
            m_farEnd = std::make_unique<LineProgram>(
                words(adapter) + QStringList{QStringLiteral("--port"), device} + words(kind), tenfold);
            (void)m_farEnd->waitFor(QStringLiteral("port: "));
            startTap({QStringLiteral("--device"), device, QStringLiteral("--port"), port});
        }
        station.useAdapter(m_line->waitFor(QStringLiteral("port: ")));
    }

    /// What the centre has to send when a record is made, by "--send".
    QString telegrams(const QStringList &texts)
    {
        const QString path = m_directory.filePath(QStringLiteral("telegrams"));
        for (const QString &text : texts) {
            QFile file(path + QStringLiteral("/%1").arg(++m_telegrams));
            if (!QDir().mkpath(path) || !file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
                qFatal("cannot write %s", qPrintable(file.fileName()));
        }
        return path;
    }

    /// Whether the queue gets empty.
    [[nodiscard]] bool allIsSent() const
    {
        return comesTrue(
            [this] { return station.names(QStringLiteral("out"), QStringLiteral("*u*")).isEmpty(); });
    }

    /// Whether the far end of a record says at its end that all was the same.
    [[nodiscard]] bool isSame()
    {
        if (makingDirectory().isEmpty())
            m_same = m_line->waitForEnd(60) && m_line->lines.last() == "same:" && m_line->endedWith(0);
        else
            m_same = m_line->quit() && m_farEnd->quit();
        return m_same;
    }

    ~RecordedLine()
    {
        if (!m_same)
            qWarning("%s\n---\n%s", qPrintable(station.journal().join(QLatin1Char('\n'))),
                     qPrintable(m_line->lines.join(QLatin1Char('\n'))));
    }
    RecordedLine(const RecordedLine &) = delete;
    RecordedLine &operator=(const RecordedLine &) = delete;

    Station station;

private:
    void startReplay(const QStringList &line)
    {
        m_line =
            std::make_unique<LineProgram>(QStringList{QStringLiteral("replay"), QStringLiteral("--record"),
                                                      QStringLiteral(RECORDS_DIRECTORY "/") + m_name} +
                                          line);
    }
    void startTap(const QStringList &line)
    {
        m_line = std::make_unique<LineProgram>(QStringList{QStringLiteral("tap"), QStringLiteral("--record"),
                                                           makingDirectory() + QLatin1Char('/') + m_name} +
                                               line);
    }

    QString m_name;
    QTemporaryDir m_directory;
    int m_telegrams = 0;
    std::unique_ptr<LineProgram> m_farEnd;
    std::unique_ptr<LineProgram> m_line;
    bool m_same = false;
};

} // namespace

void TestE2eRecord::directLink()
{
    QVERIFY(onceInAFew([] {
        RecordedLine line(QStringLiteral("direct.record"));
        const QStringList both = {telegram(QStringLiteral("ВХОДЯЩАЯ 1"), 400),
                                  telegram(QStringLiteral("ВХОДЯЩАЯ 2"))};
        line.callTo(QStringLiteral("peer --confirm --window-pause 0 --send ") + line.telegrams(both));
        line.station.write(QStringLiteral("out/20200101u001.200101_000000"),
                           telegram(QStringLiteral("ИСХОДЯЩАЯ 1"), 400).toUtf8());
        line.station.write(QStringLiteral("out/20200101u002.200101_000001"),
                           telegram(QStringLiteral("ИСХОДЯЩАЯ 2")).toUtf8());
        line.station.start();
        return comesTrue([&] { return line.station.received() == both; }) && line.allIsSent() &&
               line.station.end() && line.isSame();
    }));
}

void TestE2eRecord::centreThatCalls()
{
    QVERIFY(onceInAFew([] {
        const quint16 port = freePort();
        RecordedLine line(QStringLiteral("centre.record"));
        line.station.listenOn(port);
        line.station.set(QStringLiteral("CONNECT/processMode"), QStringLiteral("0"));
        line.station.start();
        if (!comesTrue([&] { return line.station.logged(QStringLiteral("Ожидание подключения")); }))
            return false;
        const QString telegrams = line.telegrams({QStringLiteral("П01 000001 12\r\nВХОДЯЩАЯ 1\r\n"),
                                                  QStringLiteral("П01 000002 12\r\nВХОДЯЩАЯ 2\r\n")});
        line.beCalledBy(QStringLiteral("centre --retry 600000 --send ") + telegrams, port);
        if (!comesTrue([&] { return line.station.received().size() == 2; }))
            return false;
        // One thing after the other: whether a telegram or a receipt comes first is a matter of chance.
        for (int i = 1; i <= 3; ++i)
            line.station.write(
                QStringLiteral("out/20260731u%1").arg(i, 3, 10, QLatin1Char('0')),
                QStringLiteral("П%1\r\nИСХОДЯЩАЯ %1\r\n").arg(i, 6, 10, QLatin1Char('0')).toUtf8());
        return line.allIsSent() && line.station.end() && line.isSame();
    }));
}

/// How many characters the adapter has room for when the workstation looks is a matter of time too.
void TestE2eRecord::dialledCallThroughAnAdapter()
{
    QVERIFY(onceInAFew([] {
        RecordedLine line(QStringLiteral("dialled.record"));
        line.useAdapter(
            QStringLiteral("adapter --firmware new --baud 200"),
            QStringLiteral("switch --terminal-ao 654321~ЗНАМЯ --subscriber 112233:112233~|ЗАРЯ:"));
        line.station.set(QStringLiteral("CONNECT/processMode"), QStringLiteral("1"));
        line.station.set(QStringLiteral("DORAL/AO"), QStringLiteral("654321 ЗНАМЯ"));
        const QString name = QStringLiteral("out/20260731u001");
        const QByteArray text = "ЗЦЗЦ П001\r\nТЕКСТ=\r\nНННН  \r\n";
        line.station.write(name, text);
        line.station.write(name + QStringLiteral(".dat"), "112233|S|01.01.2020 00:00|u|1|N|");
        line.station.start();
        const auto sent = [&] { return line.station.read(QStringLiteral("out/20260731/20260731u001.000")); };
        return comesTrue([&] { return sent() == text; }) && line.station.end() && line.isSame();
    }));
}

QTEST_GUILESS_MAIN(TestE2eRecord)
#include "test_e2e_record.moc"
