#include "tests/support/row.h"
#include "tests/support/sessions.h"
#include "ui/roll/protocol_splitter.h"

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

/// Takes \a texts as a journal of their own.
void take(CProtocolSplitter &splitter, const QStringList &texts)
{
    CJournalLines journal;
    journal = lines(texts);
    splitter.take(journal);
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

        row("no lines", QStringList(), false, false, 0, "", "");
        row("information is dropped", QStringList{"\\1ABC<>", "\\312:00:00 X", "\\2DEF<>", ""}, false, false,
            0, "\\1ABC<> / \\2DEF<>", "");
        row("an error stays and ends the information", QStringList{"\\3X", "\\4Y"}, false, false, 0, "\\4Y",
            "");
        row("the information lasts over marks above 5", QStringList{"\\3X\\6Y\\8Z", "\\1A"}, false, false, 0,
            "\\1A", "");
        row("a line that information has cut becomes one", QStringList{"\\1AB", "\\3X", "\\1CD<>"}, false,
            false, 0, "\\1ABCD<>", "");
        row("behind an error the text goes on", QStringList{"\\1AB", "\\4X", "\\1CD<>"}, false, false, 0,
            "\\1AB\\4X\\1CD<>", "");
        row("types that change in a line keep their marks", QStringList{"\\1AB\\2CD<>"}, false, false, 0,
            "\\1AB\\2CD<>", "");
        row("text before any mark is of the reserved type", QStringList{"AB>"}, false, false, 0, "\\5AB>",
            "");
        row("a line feed inside a line is skipped", QStringList{"\\1A\nB>"}, false, false, 0, "\\1AB>", "");
        row("a line end in the middle begins a fresh line", QStringList{"\\1A>B>"}, false, false, 0,
            "\\1A> / \\1B>", "");
        row("the width breaks a line", QStringList{"\\1ABCDEFG"}, false, false, 3, "\\1ABC / \\1DEF / \\1G",
            "");
        row("marks of registers take no width", QStringList{"\\1|A#B&C\"<>D"}, false, false, 3,
            "\\1|A#B&C\"<> / \\1D", "");
        row("the end of a full line stays with it", QStringList{"\\1ABC<>", "\\1D"}, false, false, 3,
            "\\1ABC<> / \\1D", "");
        row("a line that the journal has broken is one again", QStringList{"\\1ABC", "\\1DE>"}, false, false,
            0, "\\1ABCDE>", "");
        row("parted by direction", QStringList{"\\1AB<>", "\\2CD<>", "\\1EF<>"}, true, true, 0,
            "\\1AB<> / \\1EF<>", "\\2CD<>");
        row("parted, a line of both directions", QStringList{"\\1AB\\2CD\\1EF<>", "\\2GH<>"}, true, true, 0,
            "\\1ABEF<>", "\\2CDGH<>");
        row("parted, neither half has events", QStringList{"\\1A>", "\\3X", "\\4Y", "\\5Z", "\\2B>"}, true,
            true, 0, "\\1A>", "\\2B>");
        row("parted without information", QStringList{"\\1A", "\\3X", "\\1B>"}, true, false, 0, "\\1AB>", "");
        row("parted and broken by the width", QStringList{"\\1ABCD\\2EFGH"}, true, true, 2, "\\1AB / \\1CD",
            "\\2EF / \\2GH");
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
        take(splitter, journal);
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
        CJournalLines growing;
        for (const QString &text : lines(journal)) {
            growing << QString();
            splitter.take(growing);
            for (const QChar c : text) {
                growing.extendLast(c);
                splitter.take(growing);
            }
        }
        QCOMPARE(shown(splitter.received()), received);
        QCOMPARE(shown(splitter.sent()), sent);
    }

    void anotherJournalBeginsFromItsStart_data()
    {
        QTest::addColumn<QStringList>("second");
        row("shorter list", QStringList{"\\1X>"});
        row("empty list", QStringList());
        row("shorter last line", QStringList{"\\1A>", "\\1B>", "\\1"});
        row("other line between", QStringList{"\\1A>", "\\1X>", "\\1CCC"});
        row("other last line", QStringList{"\\1A>", "\\1B>", "\\1XX"});
        row("other first line", QStringList{"\\1Y>", "\\1B>", "\\1CCC>", "\\1D>"});
    }
    void anotherJournalBeginsFromItsStart()
    {
        QFETCH(QStringList, second);
        CProtocolSplitter splitter, fresh;
        splitter.restart(rules(false, false, 0));
        fresh.restart(rules(false, false, 0));
        CJournalLines journal;
        journal = lines({"\\1A>", "\\1B>", "\\1CC"});
        splitter.take(journal);
        QCOMPARE(splitter.received().size(), 3);
        journal = lines(second);
        splitter.take(journal);
        fresh.take(journal);
        QCOMPARE(splitter.received(), fresh.received());
    }

    void anotherJournalIsCutByTheSameRules()
    {
        CProtocolSplitter splitter;
        splitter.restart(rules(true, true, 2));
        take(splitter, {"\\1ABC>", "\\2D>"});
        take(splitter, {"\\2XYZ>"});
        QVERIFY(splitter.rules() == rules(true, true, 2));
        QCOMPARE(shown(splitter.received()), QString());
        QCOMPARE(shown(splitter.sent()), QString("\\2XY / \\2Z>"));
    }

    /// Random journals that grow, and now and then are others, under random rules.
    void growthInAnyStepsEqualsACutFromTheStart()
    {
        const auto make = [](quint32 seed) {
            QRandomGenerator random(seed);
            Session session;
            session.seed = seed;
            const QStringList forms{"A",  "BC", ">",          "\1", "\2", "\3",
                                    "\4", "<>", "12:00:00 X", "#",  "\7", "\n"};
            for (int i = random.bounded(60); i >= 0; --i)
                session.steps.append({Sessions::anyOf(forms, random), random.bounded(30), 0});
            return session;
        };
        const auto run = [](const Session &session, bool naive) {
            const int kind = int(session.seed % 12);
            CJournalLines journal;
            CProtocolSplitter splitter;
            splitter.restart(rules(kind % 2 == 0, kind % 3 == 0, kind / 4 * 2));
            QStringList all;
            for (const Session::Step &step : session.steps) {
                if (step.act == 1)
                    journal = QStringList{step.text, step.text};
                else if (journal.isEmpty() || step.act < 10)
                    journal << step.text;
                else
                    journal.extendLast(step.text);
                if (naive)
                    splitter.restart(splitter.rules());
                splitter.take(journal);
                all << shown(splitter.received()) + " // " + shown(splitter.sent());
            }
            return all;
        };
        const QByteArray difference = Sessions::compare(Sessions::count(3000), make, run);
        QVERIFY2(difference.isEmpty(), difference.constData());
    }

    void restartForgetsEverything()
    {
        CProtocolSplitter splitter;
        splitter.restart(rules(true, true, 0));
        take(splitter, {"\\1A>", "\\2B"});
        splitter.restart(rules(false, true, 5));
        QVERIFY(splitter.received().isEmpty());
        QVERIFY(splitter.sent().isEmpty());
        QVERIFY(splitter.rules() == rules(false, true, 5));
        QVERIFY(!(splitter.rules() == rules(false, true, 6)));
    }
};

QTEST_GUILESS_MAIN(TestProtocolSplitter)
#include "test_protocol_splitter.moc"
