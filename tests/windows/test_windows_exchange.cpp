#include "tests/windows/desk_program.h"

#include <QDate>
#include <QDir>
#include <QtTest>

/// Telegrams between the finished workstation and the simulated far ends, on Windows' own display.
class TestWindowsExchange : public QObject
{
    Q_OBJECT

private slots:
    void directLinkCarriesTelegramsBothWays();
    void centreTakesAndSendsNumberedTelegrams();
};

namespace
{
const QString Mark = QStringLiteral("ЗЦЗЦ ");
const QString End = QStringLiteral("\r\nНННН  ");

QString longText(int lines)
{
    QString text;
    for (int i = 1; i <= lines; ++i)
        text += QStringLiteral("СТРОКА %1 ДЛИННОЙ ТЕЛЕГРАММЫ=\r\n").arg(i, 3, 10, QLatin1Char('0'));
    return text.chopped(2);
}
} // namespace

void TestWindowsExchange::directLinkCarriesTelegramsBothWays()
{
    const QString out = Mark + QStringLiteral("ИСХОДЯЩАЯ\r\n") + longText(40) + End;
    const QString in = Mark + QStringLiteral("ВХОДЯЩАЯ\r\n") + longText(40) + End;
    FarEndProgram farEnd(QStringLiteral("peer"));
    DeskProgram desk(farEnd.port);
    desk.write(QStringLiteral("out/20200101u001.200101_000000"), ("\r\n" + out + "\r\n").toUtf8());
    desk.write(QStringLiteral("incoming"), ("\r\n" + in + "\r\n").toUtf8());
    farEnd.command(QStringLiteral("send ") + desk.path(QStringLiteral("incoming")));
    desk.start();
    QTRY_COMPARE(farEnd.telegrams(), QStringList(out));
    QTRY_COMPARE(desk.received(), QStringList(in));
    const QString day = QDate::currentDate().toString(QStringLiteral("yyyyMMdd"));
    QTRY_COMPARE(desk.names(QStringLiteral("out")), QStringList(day + "/20200101u001.200101_000000"));
    QVERIFY(desk.logged(QStringLiteral("ПЕРЕИМЕНОВАНИЕ out\\20200101u001.200101_000000 В out\\") + day +
                        QStringLiteral("\\20200101u001.200101_000000")));
    QVERIFY(desk.endSession());
    QCOMPARE(farEnd.violations(), QStringList());
    QVERIFY(farEnd.quit());
}

void TestWindowsExchange::centreTakesAndSendsNumberedTelegrams()
{
    const QString day = QDate::currentDate().toString(QStringLiteral("yyyyMMdd"));
    const QString out =
        QStringLiteral("П654321\r\nМОСКВА ИВАНОВУ=\r\n") + longText(20) + QStringLiteral("\r\n");
    const QString in = QStringLiteral("П123 200 40\r\n") + longText(20) + QStringLiteral("\r\n");
    FarEndProgram centre(QStringLiteral("centre"), {QStringLiteral("--pause"), QStringLiteral("3000")});
    DeskProgram desk(centre.port);
    desk.set(QStringLiteral("CONNECT/processMode"), QStringLiteral("0"));
    desk.write(QStringLiteral("out/") + day + QStringLiteral("u001"), out.toUtf8());
    desk.write(QStringLiteral("incoming"), in.toUtf8());
    centre.command(QStringLiteral("send-file ") + desk.path(QStringLiteral("incoming")));
    desk.start();
    QTRY_COMPARE(centre.telegrams(),
                 QStringList(QStringLiteral("ЗЦЗЦ 001 ") + out + QStringLiteral(" НННН  ")));
    QTRY_COMPARE(desk.received().size(), 1);
    const QString stored = QStringLiteral("ЗЦЗЦ 001 ") + in + QStringLiteral("\r\nНННН  ");
    QTRY_COMPARE(desk.received().constFirst().left(stored.size()), stored); // behind it is the time
    QTRY_COMPARE(desk.names(QStringLiteral("out")),
                 QStringList(day + QStringLiteral("/") + day + "u001.001"));
    QVERIFY(desk.endSession());
    QCOMPARE(centre.violations(), QStringList());
    QVERIFY(centre.quit());
}

QTEST_GUILESS_MAIN(TestWindowsExchange)
#include "test_windows_exchange.moc"
