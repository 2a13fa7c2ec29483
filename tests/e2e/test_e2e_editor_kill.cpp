#include "tests/e2e/far_end.h"
#include "tests/e2e/station.h"
#include "tests/support/row.h"

#include <QRegularExpression>
#include <QSet>
#include <QtTest>

/// A workstation that is killed between the press of "Отправить" and the telegram's place in the queue, at
/// each step of the way: nothing is torn or doubled, no number is used twice, and what is in the queue goes.
class TestE2eEditorKill : public QObject
{
    Q_OBJECT

private slots:
    void centresTelegramIsThereWholeOrNotAtAll();
    void listsTelegramsAreThereWholeOrNotAtAll();
    void whatIsInTheQueueGoesOnce();
};

namespace
{
const QString Types = QStringLiteral("OPERATOR_TYPES"), Numbers = QStringLiteral("OPERATOR_NUMBERS"),
              Kill = QStringLiteral("OPERATOR_KILL");
constexpr int MostSteps = 60;

/// What stands in the queue, by name; half-written drafts bear names that no scan takes.
using Queue = QMap<QString, QByteArray>;

class KilledStation : public Station
{
public:
    explicit KilledStation(int procedure)
    {
        set(QStringLiteral("CONNECT/processMode"), QString::number(procedure));
        set(QStringLiteral("EDITOR/editorInterfaceMode"), QStringLiteral("0"));
        realTime();
    }
    [[nodiscard]] Queue queue() const
    {
        static const QRegularExpression own(QStringLiteral("^\\d{8}u\\d{3}(\\.\\d{6}_\\d{6}|\\.dat)?$"));
        Queue queue;
        for (const QString &name : names(QStringLiteral("out")))
            if (own.match(name).hasMatch())
                queue[name] = read(QStringLiteral("out/") + name);
        return queue;
    }
    /// Has \a text sent; true if the way into the queue was over before the step \a step.
    bool send(const QString &text, int step)
    {
        operate(Types, text);
        operate(Kill, QString::number(step));
        lines.clear();
        start();
        const auto over = [this] { return lines.contains(QStringLiteral("queued")) || !isRunning(); };
        if (!QTest::qWaitFor(over, 60000))
            qFatal("the operator is stuck");
        const bool queued = isRunning();
        kill();
        return queued;
    }
};

QString numberIn(const QString &name)
{
    return name.mid(9, 3);
}

bool isTelegram(const QString &name)
{
    return !name.endsWith(QStringLiteral(".dat"));
}

/// What a kill, or none, has left of one telegram: former files as they were, new ones whole, under numbers
/// that nothing had before.
void verifyStep(const Queue &before, const Queue &after, const QString &text, QSet<QString> &used)
{
    QSet<QString> fresh;
    for (auto file = after.begin(); file != after.end(); ++file) {
        if (before.contains(file.key())) {
            QCOMPARE(file.value(), before.value(file.key()));
            continue;
        }
        QVERIFY2(!used.contains(numberIn(file.key())), qPrintable(file.key()));
        fresh << numberIn(file.key());
        if (isTelegram(file.key()))
            QVERIFY2(QString::fromUtf8(file.value()).contains(text), file.value().constData());
        else
            QVERIFY2(file.value().endsWith("|u|3|N|"), file.value().constData());
    }
    for (auto file = before.begin(); file != before.end(); ++file)
        QVERIFY2(after.contains(file.key()), qPrintable(file.key()));
    used += fresh;
}

/// Sends one telegram for each step at which it can be killed, until one gets through.
void killAtEachStep(KilledStation &station, int fewestSteps)
{
    QSet<QString> used;
    bool queued = false;
    int step = 0;
    while (!queued && step < MostSteps) {
        const Queue before = station.queue();
        ++step;
        queued = station.send(QStringLiteral("ТЕЛЕГРАММА %1 НОМЕР [ КОНЕЦ").arg(step), step);
        verifyStep(before, station.queue(), QStringLiteral("ТЕЛЕГРАММА %1 НОМЕР ").arg(step), used);
        if (QTest::currentTestFailed())
            return;
    }
    QVERIFY(queued);
    QVERIFY2(step > fewestSteps, qPrintable(QString::number(step)));
}

/// The number that a telegram names in its text.
int numberNamed(const QByteArray &text)
{
    return QString::fromUtf8(text)
        .section(QStringLiteral("НОМЕР "), 1)
        .section(QLatin1Char(' '), 0, 0)
        .toInt();
}
} // namespace

void TestE2eEditorKill::centresTelegramIsThereWholeOrNotAtAll()
{
    KilledStation station(0);
    station.set(QStringLiteral("EDITOR/editorInterfaceMode"), QStringLiteral("1"));
    station.operate(QStringLiteral("OPERATOR_INDEX"), QStringLiteral("123456"));
    killAtEachStep(station, 6);
    const Queue queue = station.queue();
    QVERIFY(!queue.isEmpty());
    for (auto file = queue.begin(); file != queue.end(); ++file)
        QCOMPARE(numberNamed(file.value()), numberIn(file.key()).toInt());
}

void TestE2eEditorKill::listsTelegramsAreThereWholeOrNotAtAll()
{
    KilledStation station(1);
    station.operate(Numbers, QStringLiteral("111111,222222,111111"));
    killAtEachStep(station, 24);
    const Queue queue = station.queue();
    for (auto file = queue.begin(); file != queue.end(); ++file)
        if (isTelegram(file.key()))
            QVERIFY2(queue.contains(file.key() + QStringLiteral(".dat")), qPrintable(file.key()));
}

void TestE2eEditorKill::whatIsInTheQueueGoesOnce()
{
    FarEnd farEnd({QStringLiteral("--speed"), QStringLiteral("4000")});
    KilledStation station(2);
    killAtEachStep(station, 6);
    const Queue queue = station.queue();
    QStringList waiting;
    for (const QByteArray &text : queue)
        waiting << QString::fromUtf8(text).trimmed() + QStringLiteral("  ");
    QVERIFY(!waiting.isEmpty());

    station.leaveAlone();
    QVERIFY(QFile::remove(station.path(QStringLiteral("velda.ini"))));
    station.callTo(farEnd.port);
    station.start();
    QTRY_COMPARE_WITH_TIMEOUT(farEnd.telegrams(), waiting, 60000);
    QTRY_VERIFY_WITH_TIMEOUT(station.queue().isEmpty(), 20000);
    QVERIFY(station.end());
    QCOMPARE(farEnd.telegrams(), waiting);
    QCOMPARE(farEnd.violations(), QStringList());
}

QTEST_GUILESS_MAIN(TestE2eEditorKill)
#include "test_e2e_editor_kill.moc"
