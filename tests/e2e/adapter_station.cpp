#include "tests/e2e/adapter_station.h"
#include "tests/support/row.h"

#include <QtTest>

namespace
{
const QString clockSetting = QStringLiteral("@2026-07-31 12:00:00 x5");
} // namespace

AdapterStation::AdapterStation(const FarEnd &farEnd) : m_farEnd(farEnd)
{
    useAdapter(farEnd.ports);
    fakeTime(clockSetting);
}

AdapterStation::~AdapterStation()
{
    if (QTest::currentTestFailed())
        qWarning("%s\n---\n%s", qPrintable(journal().join(QLatin1Char('\n'))),
                 qPrintable(m_farEnd.lines.join(QLatin1Char('\n'))));
}

void AdapterStation::queue(const QString &text) const
{
    write(QStringLiteral("out/") + queueName(), QString(QLatin1String("\r\n") + text).toUtf8());
}

bool AdapterStation::hasSent(const QString &text) const
{
    QString sent;
    int type = 0;
    for (const QString &name : names(QStringLiteral("prt"), QStringLiteral("????????.prt"))) {
        for (const QChar c : QString::fromUtf8(read(QStringLiteral("prt/") + name))) {
            if (c.unicode() < 10)
                type = c.unicode();
            else if (type == 2 && !QStringLiteral("\n<>|#&").contains(c))
                sent += c;
        }
    }
    return sent.contains(QString(text).remove(QLatin1Char('\r')).remove(QLatin1Char('\n')));
}

int AdapterStation::connections() const
{
    return m_farEnd.lines.count(QStringLiteral("ready:"));
}

// The workstation has five seconds for its answers, on a machine that is busy with others, and half a second
// for the rest of a word: twenty-five and two and a half under the clock.
FarEnd::Adapter AdapterStation::adapterOf(const QString &firmware, const QStringList &more)
{
    return {firmware, clockSetting,
            QStringList{QStringLiteral("--answer"), QStringLiteral("25000"), QStringLiteral("--word"),
                        QStringLiteral("2500")} +
                more};
}

QString AdapterStation::queueName()
{
    return QStringLiteral("20200101u001.200101_000000");
}

void AdapterStation::generations()
{
    QTest::addColumn<QString>("firmware");
    QTest::addColumn<QString>("version");
    row("without echo", "old", "20231110");
    row("with echo", "new", "20231111");
}

void verifyOrderlyEnd(Station &station, FarEnd &farEnd, bool torn)
{
    QVERIFY(torn ? station.leave() : station.end());
    QTRY_VERIFY(!farEnd.lines.filter(QStringLiteral("closed")).isEmpty());
    QCOMPARE(farEnd.violations(), QStringList());
    QVERIFY(farEnd.quit());
}
