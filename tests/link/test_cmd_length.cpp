#include "link/tlg_thread.h"
#include "tests/support/row.h"

#include <QtTest>

class TestCmdLength : public QObject
{
    Q_OBJECT

private slots:
    void commandLength_data();
    void commandLength();
    void loopsTakeOperatorKeysAsLoneMark_data();
    void loopsTakeOperatorKeysAsLoneMark();
    void endlessNumberIsNoCommand();
};

void TestCmdLength::commandLength_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("length");
    const auto row = [](const char *text, int length) { ::row(text, QString::fromUtf8(text), length); };
    row("", 0);
    row("A", 0);
    row("A@H", 0);
    row("@", 0);
    row("@C", 2);
    row("@E", 2);
    row("@H", 2);
    row("@L", 2);
    row("@V", 2);
    row("@HABC", 2);
    row("@h", 1);
    row("@Z", 1);
    row("@@", 1);
    row("@*", 1);
    row("@Я", 1);
    row("@٣12*", 1); // a digit above U+00FF in the second place
    row("@é", 1);
    row("@N", 0);
    row("@N123", 0);
    row("@N123@", 6);
    row("@n123@", 6);
    row("@N123@ABC", 6);
    row("@N@", 3);
    row("@NX", 2);
    row("@N+", 0);
    row("@N123+", 0);
    row("@N123+@", 7);
    row("@N123+4", 6);
    row("@N12X", 4);
    row("@N1٣@", 5); // ARABIC-INDIC DIGIT THREE is a decimal digit
    row("@N1²@", 3); // SUPERSCRIPT TWO is none
    row("@1", 0);
    row("@12", 0);
    row("@1*", 0);
    row("@12*", 4);
    row("@07*", 4);
    row("@12*AB", 4);
    row("@1AB", 1);
    row("@12X", 1);
    row("@1**", 1);
    row("@1234", 1);
}

void TestCmdLength::commandLength()
{
    QFETCH(QString, text);
    QFETCH(int, length);
    QCOMPARE(CTlgThread::testCmdLength(text), length);
    const bool operatorKey = text == QLatin1String("@L") || text == QLatin1String("@V");
    QCOMPARE(CTlgThread::loopCmdLength(text), operatorKey ? 1 : length);
}

void TestCmdLength::loopsTakeOperatorKeysAsLoneMark_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : {"@L", "@V", "@LABC", "@V@"})
        row(text, QString::fromUtf8(text));
}

void TestCmdLength::loopsTakeOperatorKeysAsLoneMark()
{
    QFETCH(QString, text);
    QCOMPARE(CTlgThread::testCmdLength(text), 2);
    QCOMPARE(CTlgThread::loopCmdLength(text), 1);
}

void TestCmdLength::endlessNumberIsNoCommand()
{
    const QString longest = QStringLiteral("@N") + QString(1024, QLatin1Char('7'));
    QCOMPARE(CTlgThread::testCmdLength(longest), 0);
    QCOMPARE(CTlgThread::testCmdLength(longest + QStringLiteral("@")), 1027);
    QCOMPARE(CTlgThread::testCmdLength(longest + QStringLiteral("7")), 1);
    QCOMPARE(CTlgThread::loopCmdLength(longest + QStringLiteral("7@")), 1);
}

QTEST_GUILESS_MAIN(TestCmdLength)
#include "test_cmd_length.moc"
