#include "tools/linesim/console/event_log.h"
#include "tools/linesim/line/link_end.h"

#include <QtTest>

namespace
{
/// A far end without a socket: what it writes and logs is collected, time passes by wait().
struct FarEnd {
    explicit FarEnd(const LinkEnd::Settings &settings = LinkEnd::Settings())
        : log([this](const QString &line) { lines << line; }), link(settings, log)
    {
        QObject::connect(&link, &LinkEnd::write, [this](const QByteArray &bytes) { written += bytes; });
        QObject::connect(&link, &LinkEnd::text, [this](const QString &piece) { text += piece; });
        link.open();
    }

    void wait(int ms)
    {
        for (int passed = 0; passed < ms; passed += LinkEnd::TickMs)
            link.tick();
    }
    void take(const char *hex) { link.take(QByteArray::fromHex(hex)); }
    QByteArray taken() { return std::exchange(written, QByteArray()).toHex(); }
    [[nodiscard]] QStringList violations() const { return lines.filter(QStringLiteral("violation: ")); }

    QStringList lines;
    EventLog log;
    LinkEnd link;
    QByteArray written;
    QString text;
};

LinkEnd::Settings keyed()
{
    LinkEnd::Settings settings;
    settings.key = QByteArray::fromHex("010203");
    settings.seed = 0x05;
    return settings;
}
} // namespace

class TestLinesimLink : public QObject
{
    Q_OBJECT

private slots:
    void linkBeginsWithKeepAliveAndWindow();
    void nothingIsSaidBeforeTheWorkstationListens();
    void keepAliveIsAnsweredWithItself();
    void answerToOwnKeepAliveIsNotAnswered();
    void keepAliveAfterRawBytesIsNotAnswered();
    void keepAliveGoesByItself();
    void unansweredKeepAliveIsABreach();
    void unansweredWindowIsABreach();
    void textTakenBringsANewWindow();
    void textWithinTheWindowIsNoBreach();
    void textBeyondTheWindowIsABreach();
    void textBeforeTheFirstWindowIsABreach();
    void textBeforeThisEndWasHeardIsNoBreach();
    void windowLeftOverIsForfeitedByTheNext();
    void longCommandFitsAnyWindow();
    void secondWindowWaitsForTheFirstAnswer();
    void strangeWindowAnswerIsABreach();
    void pollOfAListeningWorkstationIsAnswered();
    void oddWindowIsRoundedDown();
    void flowReportLimitsTheNextPiece();
    void silentEndNeitherAnswersNorSends();
    void noiseEndsTheJudging();
    void seedsAgreeOnACipher();
    void earlySeedCounts();
    void missingSeedLeavesTheLinkPlain();
    void keyOfOneByteLeavesTheLinkPlain();
    void cipheredByteThatLooksLikeASignalIsText();
};

void TestLinesimLink::linkBeginsWithKeepAliveAndWindow()
{
    FarEnd end;
    end.wait(500);
    QCOMPARE(end.taken(), QByteArray("16bf"));
    QVERIFY(end.lines.contains(QStringLiteral("granted: 30")));
}

void TestLinesimLink::nothingIsSaidBeforeTheWorkstationListens()
{
    FarEnd end;
    end.wait(450);
    QCOMPARE(end.taken(), QByteArray());
}

void TestLinesimLink::keepAliveIsAnsweredWithItself()
{
    FarEnd end;
    end.wait(500);
    end.take("16bf");
    (void)end.taken();
    end.take("16");
    QCOMPARE(end.taken(), QByteArray("16"));
}

void TestLinesimLink::answerToOwnKeepAliveIsNotAnswered()
{
    FarEnd end;
    end.wait(500);
    (void)end.taken();
    end.take("16bf");
    QCOMPARE(end.taken(), QByteArray());
    QVERIFY(end.lines.contains(QStringLiteral("keep-alive: answered")));
    QVERIFY(end.lines.contains(QStringLiteral("window: answered")));
}

void TestLinesimLink::keepAliveAfterRawBytesIsNotAnswered()
{
    FarEnd end;
    end.wait(3000);
    end.link.sendRaw(QByteArray::fromHex("1616"));
    end.written.clear();
    for (int i = 0; i < 3; ++i)
        end.link.take(QByteArray::fromHex("16"));
    QVERIFY(end.written.count('\x16') == 0);
}

void TestLinesimLink::keepAliveGoesByItself()
{
    FarEnd end;
    end.wait(500);
    end.take("16bf");
    (void)end.taken();
    end.wait(4950);
    QCOMPARE(end.taken(), QByteArray());
    end.wait(50);
    QCOMPARE(end.taken(), QByteArray("16"));
}

void TestLinesimLink::unansweredKeepAliveIsABreach()
{
    FarEnd end;
    end.wait(500);
    end.take("bf");
    end.wait(3000);
    QCOMPARE(end.violations(), QStringList());
    end.wait(50);
    QCOMPARE(end.violations(), QStringList(QStringLiteral("violation: keep-alive not answered in 3000 ms")));
}

void TestLinesimLink::unansweredWindowIsABreach()
{
    FarEnd end;
    end.wait(500);
    end.take("16");
    end.wait(3050);
    QCOMPARE(end.violations(), QStringList(QStringLiteral("violation: window not answered in 3000 ms")));
}

void TestLinesimLink::textTakenBringsANewWindow()
{
    FarEnd end;
    end.wait(500);
    end.take("16bf");
    (void)end.taken();
    end.take("8081");
    QCOMPARE(end.text, QStringLiteral("АБ"));
    end.wait(100);
    QCOMPARE(end.taken(), QByteArray());
    end.wait(50);
    QCOMPARE(end.taken(), QByteArray("bf"));
}

void TestLinesimLink::textWithinTheWindowIsNoBreach()
{
    FarEnd end;
    end.wait(500);
    end.take("16bf");
    end.link.take(QByteArray(30, 'A'));
    QCOMPARE(end.violations(), QStringList());
}

void TestLinesimLink::textBeyondTheWindowIsABreach()
{
    FarEnd end;
    end.wait(500);
    end.take("16bf");
    end.link.take(QByteArray(31, 'A'));
    QCOMPARE(end.violations(), QStringList(QStringLiteral("violation: 31 characters where 30 were granted")));
    QCOMPARE(end.log.violations, 1);
}

void TestLinesimLink::textBeforeTheFirstWindowIsABreach()
{
    LinkEnd::Settings settings;
    settings.grants = false;
    FarEnd end(settings);
    end.wait(500);
    end.take("16");
    end.take("80");
    QCOMPARE(end.violations(), QStringList(QStringLiteral("violation: 1 characters without a window")));
}

void TestLinesimLink::textBeforeThisEndWasHeardIsNoBreach()
{
    FarEnd end;
    end.wait(500);
    end.link.take(QByteArray(64, 'A'));
    QCOMPARE(end.violations(), QStringList());
}

// A window of 30, used by 10 characters, and one of 4 leave 4 once the workstation has seen both.
void TestLinesimLink::windowLeftOverIsForfeitedByTheNext()
{
    LinkEnd::Settings settings;
    settings.grants = false;
    FarEnd end(settings);
    end.wait(500);
    end.take("16");
    end.link.grant(30);
    end.take("bf");
    end.link.take(QByteArray(10, 'A'));
    end.link.grant(4);
    end.link.sendKeepAlive();
    end.take("16bf");
    end.link.take(QByteArray(5, 'A'));
    QCOMPARE(end.violations(), QStringList(QStringLiteral("violation: 5 characters where 4 were granted")));
}

void TestLinesimLink::longCommandFitsAnyWindow()
{
    LinkEnd::Settings settings;
    settings.window = 2;
    FarEnd end(settings);
    end.wait(500);
    end.take("16bf");
    end.link.take("@N1234567@");
    QCOMPARE(end.violations(), QStringList());
}

void TestLinesimLink::secondWindowWaitsForTheFirstAnswer()
{
    FarEnd end;
    end.wait(500);
    (void)end.taken();
    end.link.grant(4);
    QCOMPARE(end.taken(), QByteArray());
    end.take("16bf");
    QCOMPARE(end.taken(), QByteArray("b2"));
}

void TestLinesimLink::strangeWindowAnswerIsABreach()
{
    FarEnd end;
    end.wait(500);
    end.take("16bfbf");
    QCOMPARE(end.violations(), QStringList(QStringLiteral("violation: window answered that was not given")));
}

void TestLinesimLink::pollOfAListeningWorkstationIsAnswered()
{
    LinkEnd::Settings settings;
    settings.serverPolls = true;
    FarEnd end(settings);
    end.wait(500);
    end.take("16bf");
    (void)end.taken();
    end.take("bf");
    QCOMPARE(end.taken(), QByteArray("16"));
    QCOMPARE(end.violations(), QStringList());
}

void TestLinesimLink::oddWindowIsRoundedDown()
{
    LinkEnd::Settings settings;
    settings.grants = false;
    FarEnd end(settings);
    end.wait(500);
    (void)end.taken();
    end.link.grant(7);
    QCOMPARE(end.taken(), QByteArray("b3"));
    QVERIFY(end.lines.contains(QStringLiteral("granted: 6")));
}

void TestLinesimLink::flowReportLimitsTheNextPiece()
{
    FarEnd end;
    end.wait(500);
    end.take("16bf");
    (void)end.taken();
    end.link.sendFlowReport(7);
    QCOMPARE(end.taken(), QByteArray("4030372a16"));
    end.take("16");
    end.link.take("ABCD");
    QCOMPARE(end.violations(), QStringList(QStringLiteral("violation: 4 characters where 3 were granted")));
}

void TestLinesimLink::silentEndNeitherAnswersNorSends()
{
    LinkEnd::Settings settings;
    settings.silent = true;
    FarEnd end(settings);
    end.wait(20000);
    end.take("1680");
    end.wait(1000);
    QCOMPARE(end.taken(), QByteArray());
    QCOMPARE(end.text, QStringLiteral("А"));
    end.link.setSilent(false);
    QCOMPARE(end.taken(), QByteArray("16"));
}

void TestLinesimLink::noiseEndsTheJudging()
{
    FarEnd end;
    end.wait(500);
    end.take("16bf");
    end.link.sendRaw(QByteArray::fromHex("16b0"));
    end.take("16bf");
    end.link.take(QByteArray(200, 'A'));
    QCOMPARE(end.violations(), QStringList());
}

// The block of four leaves the workstation's receiving key at 31 07 0B; with 5 on its second byte, 0C, the
// plain 80 goes as 8C.
void TestLinesimLink::seedsAgreeOnACipher()
{
    FarEnd end(keyed());
    end.wait(500);
    QCOMPARE(end.taken(), QByteArray("05"));
    end.take("04");
    QVERIFY(end.lines.contains(QStringLiteral("cipher: on, seeds sent 05 received 04")));
    QCOMPARE(end.taken(), QByteArray("16bf"));
    end.take("87818287");
    QCOMPARE(end.text, QStringLiteral("АААА"));
    end.link.sendText(QStringLiteral("А"));
    QCOMPARE(end.taken(), QByteArray("8c"));
}

void TestLinesimLink::earlySeedCounts()
{
    FarEnd end(keyed());
    end.take("04");
    QCOMPARE(end.taken(), QByteArray());
    end.wait(500);
    QCOMPARE(end.taken(), QByteArray("0516bf"));
}

void TestLinesimLink::missingSeedLeavesTheLinkPlain()
{
    FarEnd end(keyed());
    end.wait(500 + 2500);
    QVERIFY(end.lines.contains(QStringLiteral("cipher: off, no seed came")));
    QCOMPARE(end.taken(), QByteArray("0516bf"));
}

void TestLinesimLink::keyOfOneByteLeavesTheLinkPlain()
{
    LinkEnd::Settings settings;
    settings.key = QByteArray::fromHex("01");
    FarEnd end(settings);
    end.wait(500);
    QCOMPARE(end.taken(), QByteArray("16bf"));
}

// With both answers in, 16 and BF are bytes of the block.
void TestLinesimLink::cipheredByteThatLooksLikeASignalIsText()
{
    FarEnd end(keyed());
    end.wait(500);
    end.take("0416bf");
    end.take("16bf");
    QVERIFY(end.lines.contains(QStringLiteral("raw: 16bf")));
}

QTEST_APPLESS_MAIN(TestLinesimLink)
#include "test_linesim_link.moc"
