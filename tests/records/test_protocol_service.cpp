#include "app/clock.h"
#include "records/protocol.h"
#include "tests/support/desk.h"

#include <QSignalSpy>
#include <QtTest>

namespace
{
// "\1" and so on are the type marks of the list.
QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QStringList list(std::initializer_list<const char *> lines)
{
    QStringList texts;
    for (const char *line : lines)
        texts << text(line);
    return texts;
}
} // namespace

/// Service lines among the line text, and what the journal reports.
class TestProtocolService : public QObject
{
    Q_OBJECT

private slots:
    void serviceStringReplacesAnEmptyLastLine();
    void serviceStringInAnEmptyListIsItsFirstLine();
    void serviceStringCutsARunningLine();
    void uncachedServiceLineGetsTheTime();
    void cachedServiceLineIsWrittenAtOnceBehindAnEmptyLine();
    void cachedServiceLineWaitsForTheEndOfTheReceivedLine();
    void cachedServiceLineWaitsInAnEmptyList();
    void secondCachedServiceLinePushesBothOutCuttingTheLine();
    void uncachedServiceLinePushesTheWaitingOneOutFirst();
    void waitingLineIsNotLetInByALineBreakOfTheLimit();
    void textWithinALineReportsChanged();
    void textThatEndsALineReportsNewLine();
    void textThatTheLimitBreaksReportsNewLine();
    void firstLineReportsChanged();
    void emptyTextReportsChanged();
    void serviceStringReportsNewLine();
    void textThatLetsAWaitingLineInReportsNewLineThenChanged();
    void lineBreakOfTheLimitAndAWaitingLineInOneText();
    void singleCharacterReportsNothing();
};

void TestProtocolService::serviceStringReplacesAnEmptyLastLine()
{
    Desk desk;
    Log.add(text("А\n"), ProtocolReceived);
    Log.addServiceString(text("Событие"), ProtocolInfo);
    QCOMPARE(Log.lines, list({"\1А>", "\3Событие", ""}));
}

void TestProtocolService::serviceStringInAnEmptyListIsItsFirstLine()
{
    Desk desk;
    Log.addServiceString(text("Событие"), ProtocolError);
    QCOMPARE(Log.lines, list({"\4Событие", ""}));
}

void TestProtocolService::serviceStringCutsARunningLine()
{
    Desk desk;
    Log.add(text("АБ"), ProtocolReceived);
    Log.addServiceString(text("Событие"), ProtocolInfo);
    Log.add(text("ВГ"), ProtocolReceived);
    QCOMPARE(Log.lines, list({"\1АБ", "\3Событие", "\1ВГ"}));
}

void TestProtocolService::uncachedServiceLineGetsTheTime()
{
    Desk desk(QTime(7, 5, 9));
    Log.add(text("АБ"), ProtocolReceived);
    Log.addCacheServiceString(text("Событие"), ProtocolInfo, false);
    QCOMPARE(Log.lines, list({"\1АБ", "\00307:05:09 Событие", ""}));
}

void TestProtocolService::cachedServiceLineIsWrittenAtOnceBehindAnEmptyLine()
{
    Desk desk(QTime(7, 5, 9));
    Log.add(text("АБ\n"), ProtocolReceived);
    Log.addCacheServiceString(text("Событие"), ProtocolInfo, true);
    QCOMPARE(Log.lines, list({"\1АБ>", "\00307:05:09 Событие", ""}));
    QCOMPARE(Log.cachedType, ProtocolNone);
}

void TestProtocolService::cachedServiceLineWaitsForTheEndOfTheReceivedLine()
{
    Desk desk(QTime(12, 0, 0));
    Log.add(text("АБ"), ProtocolReceived);
    Log.addCacheServiceString(text("Событие"), ProtocolError, true);
    QCOMPARE(Log.lines, list({"\1АБ"}));
    QCOMPARE(Log.cachedType, ProtocolError);
    QCOMPARE(Log.cachedText, text("12:00:00 Событие"));
    Time.setTo(Time.dateTime.addSecs(65)); // the stamp is that of the asking
    Log.add(text("В\r\nГ"), ProtocolReceived);
    QCOMPARE(Log.lines, list({"\1АБВ<>", "\00412:00:00 Событие", "\1Г"}));
    QCOMPARE(Log.cachedType, ProtocolNone);
}

void TestProtocolService::cachedServiceLineWaitsInAnEmptyList()
{
    Desk desk(QTime(12, 0, 0));
    Log.addCacheServiceString(text("Событие"), ProtocolInfo, true);
    QVERIFY(Log.lines.isEmpty());
    Log.add(text("А\n"), ProtocolReceived);
    QCOMPARE(Log.lines, list({"\1А>", "\00312:00:00 Событие", ""}));
}

void TestProtocolService::secondCachedServiceLinePushesBothOutCuttingTheLine()
{
    Desk desk(QTime(12, 0, 0));
    Log.add(text("АБ"), ProtocolReceived);
    Log.addCacheServiceString(text("Первое"), ProtocolInfo, true);
    Time.setTo(Time.dateTime.addSecs(1));
    Log.addCacheServiceString(text("Второе"), ProtocolError, true);
    Log.add(text("ВГ\n"), ProtocolReceived);
    QCOMPARE(Log.lines, list({"\1АБ", "\00312:00:00 Первое", "\00412:00:01 Второе", "\1ВГ>", ""}));
    QCOMPARE(Log.cachedType, ProtocolNone);
}

void TestProtocolService::uncachedServiceLinePushesTheWaitingOneOutFirst()
{
    Desk desk(QTime(12, 0, 0));
    Log.add(text("АБ"), ProtocolReceived);
    Log.addCacheServiceString(text("Первое"), ProtocolInfo, true);
    Log.addCacheServiceString(text("Второе"), ProtocolInfo, false);
    QCOMPARE(Log.lines, list({"\1АБ", "\00312:00:00 Первое", "\00312:00:00 Второе", ""}));
    QCOMPARE(Log.cachedType, ProtocolNone);
}

void TestProtocolService::waitingLineIsNotLetInByALineBreakOfTheLimit()
{
    Desk desk(QTime(12, 0, 0));
    Log.lineWidthLimit = 2;
    Log.add(QString("ABC"), ProtocolReceived);
    Log.addCacheServiceString(text("Событие"), ProtocolInfo, true);
    Log.add(QString("D\n"), ProtocolReceived);
    QCOMPARE(Log.lines, list({"\1ABC", "\1D>", "\00312:00:00 Событие", ""}));
}

void TestProtocolService::textWithinALineReportsChanged()
{
    Desk desk;
    Log.add(text("А"), ProtocolReceived);
    QSignalSpy changed(&Log, &CProtocol::Changed);
    QSignalSpy newLine(&Log, &CProtocol::NewLine);
    Log.add(text("БВГ"), ProtocolReceived);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(newLine.count(), 0);
}

void TestProtocolService::textThatEndsALineReportsNewLine()
{
    Desk desk;
    QSignalSpy changed(&Log, &CProtocol::Changed);
    QSignalSpy newLine(&Log, &CProtocol::NewLine);
    Log.add(text("А\nБ\nВ"), ProtocolReceived);
    QCOMPARE(changed.count(), 0);
    QCOMPARE(newLine.count(), 1);
    QCOMPARE(Log.newLineCount, 0);
}

void TestProtocolService::textThatTheLimitBreaksReportsNewLine()
{
    Desk desk;
    Log.lineWidthLimit = 1;
    QSignalSpy changed(&Log, &CProtocol::Changed);
    QSignalSpy newLine(&Log, &CProtocol::NewLine);
    Log.add(text("АБВ"), ProtocolReceived);
    QCOMPARE(changed.count(), 0);
    QCOMPARE(newLine.count(), 1);
}

void TestProtocolService::firstLineReportsChanged()
{
    Desk desk;
    QSignalSpy changed(&Log, &CProtocol::Changed);
    QSignalSpy newLine(&Log, &CProtocol::NewLine);
    Log.add(text("А"), ProtocolReceived);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(newLine.count(), 0);
}

void TestProtocolService::emptyTextReportsChanged()
{
    Desk desk;
    QSignalSpy changed(&Log, &CProtocol::Changed);
    Log.add(QString(), ProtocolReceived);
    QCOMPARE(changed.count(), 1);
    QVERIFY(Log.lines.isEmpty());
}

void TestProtocolService::serviceStringReportsNewLine()
{
    Desk desk;
    QSignalSpy changed(&Log, &CProtocol::Changed);
    QSignalSpy newLine(&Log, &CProtocol::NewLine);
    Log.addServiceString(text("Событие"), ProtocolInfo);
    QCOMPARE(changed.count(), 0);
    QCOMPARE(newLine.count(), 1);
}

void TestProtocolService::textThatLetsAWaitingLineInReportsNewLineThenChanged()
{
    Desk desk;
    Log.add(text("А"), ProtocolReceived);
    Log.addCacheServiceString(text("Событие"), ProtocolInfo, true);
    QStringList order;
    QObject context;
    connect(&Log, &CProtocol::Changed, &context, [&] { order << "Changed"; });
    connect(&Log, &CProtocol::NewLine, &context, [&] { order << "NewLine"; });
    Log.add(text("\n"), ProtocolReceived);
    QCOMPARE(order, QStringList({"NewLine", "Changed"}));
}

void TestProtocolService::lineBreakOfTheLimitAndAWaitingLineInOneText()
{
    Desk desk(QTime(12, 0, 0));
    Log.lineWidthLimit = 2;
    Log.add(QString("ABC"), ProtocolReceived);
    Log.addCacheServiceString(text("Событие"), ProtocolInfo, true);
    QStringList reports;
    QObject context;
    connect(&Log, &CProtocol::NewLine, &context, [&] { reports << "NewLine"; });
    connect(&Log, &CProtocol::Changed, &context, [&] { reports << "Changed"; });
    Log.add(QString("DE\n"), ProtocolReceived);
    QCOMPARE(Log.lines, list({"\1ABC", "\1DE>", "\00312:00:00 Событие", ""}));
    // The waiting line reports the lines begun so far, its own and that of the limit.
    QCOMPARE(reports, (QStringList{"NewLine", "Changed"}));
    QCOMPARE(Log.newLineCount, 0);
}

void TestProtocolService::singleCharacterReportsNothing()
{
    Desk desk;
    QSignalSpy changed(&Log, &CProtocol::Changed);
    QSignalSpy newLine(&Log, &CProtocol::NewLine);
    Log.add(QChar('A'), ProtocolReceived);
    Log.add(QChar('\n'), ProtocolReceived);
    QCOMPARE(changed.count(), 0);
    QCOMPARE(newLine.count(), 0);
    QCOMPARE(Log.newLineCount, 1);
    QVERIFY(desk.names("prt").isEmpty());
}

QTEST_GUILESS_MAIN(TestProtocolService)
#include "test_protocol_service.moc"
