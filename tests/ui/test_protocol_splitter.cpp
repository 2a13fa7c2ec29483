#include "ui/protocol_splitter.h"

#include <QtTest>

namespace
{
// Digits 1..5 behind a backslash stand for type marks.
QString line(QString text)
{
    for (int kind = 1; kind < 10; ++kind)
        text.replace(QStringLiteral("\\%1").arg(kind), QString(QChar(kind)));
    return text;
}

QStringList lines(const QStringList &texts)
{
    QStringList result;
    for (const QString &text : texts)
        result << line(text);
    return result;
}

QString shown(const QStringList &texts)
{
    QString result = texts.join(QStringLiteral(" / "));
    for (int kind = 1; kind < 10; ++kind)
        result.replace(QChar(kind), QStringLiteral("\\%1").arg(kind));
    return result;
}

CProtocolSplitter::Rules rules(bool split, bool showInfo, int width)
{
    CProtocolSplitter::Rules result;
    result.split = split;
    result.showInfo = showInfo;
    result.widthLimit = width;
    return result;
}
} // namespace

class TestProtocolSplitter : public QObject
{
    Q_OBJECT

private slots:
    void journalIsCutAnew_data()
    {
        QTest::addColumn<QStringList>("journal");
        QTest::addColumn<bool>("split");
        QTest::addColumn<bool>("showInfo");
        QTest::addColumn<int>("width");
        QTest::addColumn<QString>("received");
        QTest::addColumn<QString>("sent");

        QTest::newRow("no lines") << QStringList() << false << false << 0 << ""
                                  << "";
        QTest::newRow("information is dropped") << QStringList{"\\1ABC<>", "\\312:00:00 X", "\\2DEF<>", ""}
                                                << false << false << 0 << "\\1ABC<> / \\2DEF<>"
                                                << "";
        QTest::newRow("an error stays and ends the information")
            << QStringList{"\\3X", "\\4Y"} << false << false << 0 << "\\4Y"
            << "";
        QTest::newRow("the information lasts over marks above 5")
            << QStringList{"\\3X\\6Y\\8Z", "\\1A"} << false << false << 0 << "\\1A"
            << "";
        QTest::newRow("a line that information has cut becomes one")
            << QStringList{"\\1AB", "\\3X", "\\1CD<>"} << false << false << 0 << "\\1ABCD<>"
            << "";
        QTest::newRow("behind an error the text goes on")
            << QStringList{"\\1AB", "\\4X", "\\1CD<>"} << false << false << 0 << "\\1AB\\4X\\1CD<>"
            << "";
        QTest::newRow("types that change in a line keep their marks")
            << QStringList{"\\1AB\\2CD<>"} << false << false << 0 << "\\1AB\\2CD<>"
            << "";
        QTest::newRow("text before any mark is of the reserved type")
            << QStringList{"AB>"} << false << false << 0 << "\\5AB>"
            << "";
        QTest::newRow("a line feed inside a line is skipped")
            << QStringList{"\\1A\nB>"} << false << false << 0 << "\\1AB>"
            << "";
        QTest::newRow("a line end in the middle begins a fresh line")
            << QStringList{"\\1A>B>"} << false << false << 0 << "\\1A> / \\1B>"
            << "";
        QTest::newRow("the width breaks a line")
            << QStringList{"\\1ABCDEFG"} << false << false << 3 << "\\1ABC / \\1DEF / \\1G"
            << "";
        QTest::newRow("marks of registers take no width")
            << QStringList{"\\1|A#B&C\"<>D"} << false << false << 3 << "\\1|A#B&C\"<> / \\1D"
            << "";
        QTest::newRow("the end of a full line stays with it")
            << QStringList{"\\1ABC<>", "\\1D"} << false << false << 3 << "\\1ABC<> / \\1D"
            << "";
        QTest::newRow("a line that the journal has broken is one again")
            << QStringList{"\\1ABC", "\\1DE>"} << false << false << 0 << "\\1ABCDE>"
            << "";
        QTest::newRow("parted by direction")
            << QStringList{"\\1AB<>", "\\2CD<>", "\\1EF<>"} << true << true << 0 << "\\1AB<> / \\1EF<>"
            << "\\2CD<>";
        QTest::newRow("parted, a line of both directions")
            << QStringList{"\\1AB\\2CD\\1EF<>", "\\2GH<>"} << true << true << 0 << "\\1ABEF<>"
            << "\\2CDGH<>";
        QTest::newRow("parted, neither half has events")
            << QStringList{"\\1A>", "\\3X", "\\4Y", "\\5Z", "\\2B>"} << true << true << 0 << "\\1A>"
            << "\\2B>";
        QTest::newRow("parted without information")
            << QStringList{"\\1A", "\\3X", "\\1B>"} << true << false << 0 << "\\1AB>"
            << "";
        QTest::newRow("parted and broken by the width")
            << QStringList{"\\1ABCD\\2EFGH"} << true << true << 2 << "\\1AB / \\1CD"
            << "\\2EF / \\2GH";
    }
    void journalIsCutAnew()
    {
        QFETCH(QStringList, journal);
        QFETCH(bool, split);
        QFETCH(bool, showInfo);
        QFETCH(int, width);
        QFETCH(QString, received);
        QFETCH(QString, sent);
        CProtocolSplitter splitter;
        splitter.restart(rules(split, showInfo, width));
        splitter.take(lines(journal));
        QCOMPARE(shown(splitter.received()), received);
        QCOMPARE(shown(splitter.sent()), sent);
    }

    void growthCharacterByCharacterGivesTheSame_data() { journalIsCutAnew_data(); }
    void growthCharacterByCharacterGivesTheSame()
    {
        QFETCH(QStringList, journal);
        QFETCH(bool, split);
        QFETCH(bool, showInfo);
        QFETCH(int, width);
        QFETCH(QString, received);
        QFETCH(QString, sent);
        CProtocolSplitter splitter;
        splitter.restart(rules(split, showInfo, width));
        QStringList growing;
        for (const QString &text : lines(journal)) {
            growing << QString();
            splitter.take(growing);
            for (const QChar c : text) {
                growing.last() += c;
                splitter.take(growing);
            }
        }
        QCOMPARE(shown(splitter.received()), received);
        QCOMPARE(shown(splitter.sent()), sent);
    }

    void anotherJournalBeginsFromItsStart_data()
    {
        QTest::addColumn<QStringList>("second");
        QTest::newRow("shorter list") << QStringList{"\\1X>"};
        QTest::newRow("empty list") << QStringList();
        QTest::newRow("shorter last line") << QStringList{"\\1A>", "\\1B>", "\\1"};
        QTest::newRow("other first line") << QStringList{"\\1Y>", "\\1B>", "\\1CCC>", "\\1D>"};
    }
    void anotherJournalBeginsFromItsStart()
    {
        QFETCH(QStringList, second);
        CProtocolSplitter splitter, fresh;
        splitter.restart(rules(false, false, 0));
        fresh.restart(rules(false, false, 0));
        splitter.take(lines({"\\1A>", "\\1B>", "\\1CC"}));
        QCOMPARE(splitter.received().size(), 3);
        splitter.take(lines(second));
        fresh.take(lines(second));
        QCOMPARE(splitter.received(), fresh.received());
    }

    void anotherJournalIsCutByTheSameRules()
    {
        CProtocolSplitter splitter;
        splitter.restart(rules(true, true, 2));
        splitter.take(lines({"\\1ABC>", "\\2D>"}));
        splitter.take(lines({"\\2XYZ>"}));
        QVERIFY(splitter.rules() == rules(true, true, 2));
        QCOMPARE(shown(splitter.received()), QString());
        QCOMPARE(shown(splitter.sent()), QString("\\2XY / \\2Z>"));
    }

    void restartForgetsEverything()
    {
        CProtocolSplitter splitter;
        splitter.restart(rules(true, true, 0));
        splitter.take(lines({"\\1A>", "\\2B"}));
        splitter.restart(rules(false, true, 5));
        QVERIFY(splitter.received().isEmpty());
        QVERIFY(splitter.sent().isEmpty());
        QVERIFY(splitter.rules() == rules(false, true, 5));
        QVERIFY(!(splitter.rules() == rules(false, true, 6)));
    }
};

QTEST_GUILESS_MAIN(TestProtocolSplitter)
#include "test_protocol_splitter.moc"
