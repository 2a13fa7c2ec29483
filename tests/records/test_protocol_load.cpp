#include "app/options.h"
#include "tests/records/journal_file.h"
#include "tests/support/row.h"

#include <QSignalSpy>

/// What is read back of the journal, and how the day goes on from there.
class TestProtocolLoad : public QObject
{
    Q_OBJECT

private slots:
    void saveAfterLoadContinuesTheFile_data() { twoModes(); }
    void saveAfterLoadContinuesTheFile();
    void saveAfterLoadContinuesWhateverLoadTrimmed_data();
    void saveAfterLoadContinuesWhateverLoadTrimmed();
    void endOfTheRunContinuesWhateverLoadTrimmed_data() { twoModes(); }
    void endOfTheRunContinuesWhateverLoadTrimmed();
    void textThatGoesOnWithAnEndedLineReplacesTheFile();
    void readBackItHasOneEmptyLastLineAtMost();
    void loadReadsWhatWasNotFlushedYet();
    void loadTrimsItsLines_data();
    void loadTrimsItsLines();
    void loadEmptiesTheListIfThereIsNoFile();
    void loadReportsChangedOnce();
    void loadKeepsTheWaitingServiceLine();
    void marksComeBackWithTheText();
};

void TestProtocolLoad::saveAfterLoadContinuesTheFile()
{
    QFETCH(bool, keepOpen);
    Desk desk;
    Options.protocolFileNoClose = keepOpen;
    desk.write(Today, "\1АБ>\n\3Событие\n");
    const quint64 first = node(desk);
    Log.Load();
    QCOMPARE(Log.lines, QStringList({text("\1АБ>"), text("\3Событие")}));
    Log.addServiceString(text("Запуск"), ProtocolInfo);
    saveAndFlush();
    QCOMPARE(desk.read(Today), QByteArray("\1АБ>\n\3Событие\n\3Запуск\n"));
    QCOMPARE(node(desk), first);
}

void TestProtocolLoad::saveAfterLoadContinuesWhateverLoadTrimmed_data()
{
    QTest::addColumn<bool>("keepOpen");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("between"); // the file's content and the new line
    for (const bool keepOpen : {false, true}) {
        const char *mode = keepOpen ? "kept open" : "closed";
        QTest::addRow("%s, a blank at a line's end", mode)
            << keepOpen << QByteArray("\00312:00:00 Соединено \n") << QByteArray();
        QTest::addRow("%s, blanks and a carriage return", mode)
            << keepOpen << QByteArray("\1A \r\n\1B\n") << QByteArray();
        QTest::addRow("%s, torn behind a blank", mode)
            << keepOpen << QByteArray("\1A \n\1B ") << QByteArray("\n");
        QTest::addRow("%s, torn in a letter", mode)
            << keepOpen << QByteArray("\1A \n\1Б").left(6) << QByteArray("\n");
        QTest::addRow("%s, zeros", mode) << keepOpen << QByteArray("\1A\0B\n", 5) << QByteArray();
    }
}

void TestProtocolLoad::saveAfterLoadContinuesWhateverLoadTrimmed()
{
    QFETCH(bool, keepOpen);
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, between);
    Desk desk;
    Options.protocolFileNoClose = keepOpen;
    desk.write(Today, content);
    const quint64 first = node(desk);
    Log.Load();
    Log.addServiceString(text("Запуск"), ProtocolInfo);
    saveAndFlush();
    QCOMPARE(desk.read(Today), content + between + "\3Запуск\n");
    Log.add(text("А\n"), ProtocolSent);
    saveAndFlush();
    QCOMPARE(desk.read(Today), content + between + "\3Запуск\n\2А>\n");
    QCOMPARE(node(desk), first); // no room was needed for a second copy
}

void TestProtocolLoad::endOfTheRunContinuesWhateverLoadTrimmed()
{
    QFETCH(bool, keepOpen);
    Desk desk;
    Options.protocolFileNoClose = keepOpen;
    desk.write(Today, "\1A \r\n\1B\n");
    const quint64 first = node(desk);
    Log.Load();
    Log.addServiceString(text("Соединено "), ProtocolInfo);
    Log.addServiceString(text("Выход"), ProtocolInfo);
    Log.rewriteAll = true;
    Log.Save();
    QVERIFY(!Log.rewriteAll);
    QCOMPARE(desk.read(Today), QByteArray("\1A \r\n\1B\n\3Соединено \n\3Выход\n"));
    QCOMPARE(node(desk), first);
}

void TestProtocolLoad::textThatGoesOnWithAnEndedLineReplacesTheFile()
{
    Desk desk;
    desk.write(Today, "\1A \n\1B\n");
    Log.Load();
    Log.add("C", ProtocolReceived);
    QCOMPARE(desk.read(Today), QByteArray("\1A\n\1BC"));
}

void TestProtocolLoad::readBackItHasOneEmptyLastLineAtMost()
{
    Desk desk;
    Log.lines = QStringList{"\1A>", ""};
    Log.Save();
    QCOMPARE(CProtocol::readLines(Log.fileName), QStringList({"\1A>"}));
    Log.lines << QString();
    Log.Save();
    QCOMPARE(CProtocol::readLines(Log.fileName), QStringList({"\1A>", ""}));
}

void TestProtocolLoad::loadReadsWhatWasNotFlushedYet()
{
    Desk desk;
    Options.protocolFileNoClose = true;
    Log.add(text("АБВ"), ProtocolSent);
    Log.Load();
    QCOMPARE(Log.lines, QStringList{text("\2АБВ")});
}

void TestProtocolLoad::loadTrimsItsLines_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("lines");
    row("empty file", QByteArray(""), QStringList());
    row("blank lines", QByteArray("\n \n\1A\n\n\1B"), QStringList{"", "", "\1A", "", "\1B"});
    row("white space at both ends", QByteArray(" \1A B \t\r\n"), QStringList{"\1A B"});
    row("white space within", QByteArray("\1A  B \t C\n"), QStringList{"\1A  B \t C"});
    row("a mark 9 is white space", QByteArray("\tA\n"), QStringList{"A"});
    row("up to the first zero byte", QByteArray("\1A\0B\n\1C\n\0\0", 10), QStringList{"\1A", "\1C", ""});
    row("not UTF-8", QByteArray("\1A\xFF\n\1B\n"), QStringList{QString("\1A") + QChar(0xFFFD), "\1B"});
    row("no line feed at the end", QByteArray("\1A\n\1B"), QStringList{"\1A", "\1B"});
    row("line feed at the end", QByteArray("\1A\n\1B\n"), QStringList{"\1A", "\1B"});
}

void TestProtocolLoad::loadTrimsItsLines()
{
    QFETCH(QByteArray, content);
    QFETCH(QStringList, lines);
    Desk desk;
    writeFromOutside(desk, content);
    Log.lines = QStringList{"old"};
    Log.Load();
    QCOMPARE(Log.lines, lines);
    Log.Save();
    QCOMPARE(desk.read(Today), content); // counts as written
}

void TestProtocolLoad::loadEmptiesTheListIfThereIsNoFile()
{
    Desk desk;
    Log.lines = QStringList{"old"};
    Log.Load();
    QVERIFY(Log.lines.isEmpty());
    QVERIFY(desk.names("prt").isEmpty());
}

void TestProtocolLoad::loadReportsChangedOnce()
{
    Desk desk;
    QSignalSpy changed(&Log, &CProtocol::Changed);
    QSignalSpy newLine(&Log, &CProtocol::NewLine);
    Log.Load();
    QCOMPARE(changed.count(), 1);
    QCOMPARE(newLine.count(), 0);
}

void TestProtocolLoad::loadKeepsTheWaitingServiceLine()
{
    Desk desk;
    Log.add(text("А"), ProtocolReceived);
    Log.addCacheServiceString(text("Событие"), ProtocolInfo, true);
    Log.Load();
    QCOMPARE(Log.cachedType, ProtocolInfo);
    QCOMPARE(Log.cachedText, text("12:00:00 Событие"));
}

void TestProtocolLoad::marksComeBackWithTheText()
{
    Desk desk;
    Log.add(text("|АБ"), ProtocolReceived);
    Log.add(text("#12\n"), ProtocolSent);
    Log.Load();
    QCOMPARE(Log.lines, QStringList{text("\1|АБ\2#12>")});
}

QTEST_GUILESS_MAIN(TestProtocolLoad)
#include "test_protocol_load.moc"
