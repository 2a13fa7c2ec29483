// What becomes of received text while guaranteed transfer is on: frames are taken out, all else goes on.

#include "link/tlg_thread.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"

#include <QRandomGenerator>
#include <QtTest>

class TestGuaranteedScan : public QObject
{
    Q_OBJECT

private slots:
    void init() { resetGlobals(); }
    void textPassesOutsideTheMode();
    void scanGivesTextAndKeepsRest_data();
    void scanGivesTextAndKeepsRest();
    void scanIsTheSameCharacterByCharacter_data();
    void scanIsTheSameCharacterByCharacter();
    void incompleteFrameWaitsForTheNextChunk();
    void frameOutOfTurnWaitsUntilTextFollows();
    void loneMarkWaitsForTheNextChunk();
    void acknowledgementWaitsOneChunkThenPasses();
    void commandDoesNotWaitBehindAnAcknowledgement();
    void eventIsCountedOnlyWithText();
    void switchingOffLeavesTheRestUnread();
    void floodOfMarksIsBoundedAndNotLost_data();
    void floodOfMarksIsBoundedAndNotLost();
    void noiseNeitherHangsNorGrows();
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}

struct Receiver {
    Receiver() { thread.startProtectedMode(); }
    QString take(const char *text) { return take(qs(text)); }
    QString take(const QString &text)
    {
        thread.addToReceive(text);
        return thread.recvBuffer.mTake();
    }
    CTlgThread thread;
};
} // namespace

void TestGuaranteedScan::textPassesOutsideTheMode()
{
    Receiver receiver;
    receiver.thread.stopProtectedMode();
    QCOMPARE(receiver.take("&#Э3&E"), qs("&#Э3&E"));
    QCOMPARE(receiver.take("&"), qs("&"));
}

// "&#Э3&E" is a good frame with the payload "E&E", "&#'3&E" its repeat, "&#,3&E" has a wrong CRC.
void TestGuaranteedScan::scanGivesTextAndKeepsRest_data()
{
    QTest::addColumn<QString>("received");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("kept");
    const auto row = [](const char *name, const char *received, const char *text, const char *kept) {
        ::row(name, qs(received), qs(text), qs(kept));
    };
    row("plain text", "|ПРИВЕТ#123", "|ПРИВЕТ#123", "");
    row("letter after the mark", "&ABC", "&ABC", "");
    row("mark after the mark", "&&ABC", "&&ABC", "");
    row("good frame", "&#Э3&E", "E&E", "");
    row("good frame in text", "ДО&#Э3&EПОСЛЕ", "ДОE&EПОСЛЕ", "");
    row("two good frames", "&#Э3&E&#Э3&E", "E&EE&E", "");
    row("repeat", "&#'3&E", "", "");
    row("repeat in text", "ДО&#'3&EПОСЛЕ", "ДОПОСЛЕ", "");
    row("incomplete frame", "ДО&#Э3&", "ДО", "&#Э3&");
    row("lone mark", "ДО&", "ДО", "&");
    row("mark and one character", "ДО&A", "ДО", "&A");
    row("acknowledgement", "ДО&|ABC", "ДО", "&|ABC");
    row("wrong CRC", "&#,3&EПОСЛЕ", "ПОСЛЕ", "");
    row("wrong CRC before a good frame", "&#,3&E&#Э3&E", "E&E", "");
    row("wrong CRC that runs into a good frame", "&#,8&EE&#Э3&EПОСЛЕ", "E&EПОСЛЕ", "");
    row("length 26", "&#ЭШПОСЛЕ", "ПОСЛЕ", "");
    row("length 0", "&#Э|ПОСЛЕ", "ПОСЛЕ", "");
    row("text that looks like marks", "&#3333333", "33333", "");
    row("frame out of turn in text", "&#63&EПОСЛЕ", "ПОСЛЕ", "");
    row("command inside a frame", "&#Э3@H", "&#Э3@H", "");
    row("command after the mark", "&@H", "&@H", "");
    row("noise inside a frame", "&#Э3;&E", "&#Э3;", "&E");
}

void TestGuaranteedScan::scanGivesTextAndKeepsRest()
{
    QFETCH(QString, received);
    QFETCH(QString, text);
    QFETCH(QString, kept);
    Receiver receiver;
    QCOMPARE(receiver.take(received), text);
    QCOMPARE(receiver.thread.frameIn, kept);
    QVERIFY(receiver.thread.framePayload.isEmpty());
}

void TestGuaranteedScan::scanIsTheSameCharacterByCharacter_data()
{
    scanGivesTextAndKeepsRest_data();
}

void TestGuaranteedScan::scanIsTheSameCharacterByCharacter()
{
    QFETCH(QString, received);
    QFETCH(QString, text);
    QFETCH(QString, kept);
    // In pieces an acknowledgement has waited long enough by its third character.
    const bool acknowledgement = received.contains(QLatin1String("&|"));
    Receiver receiver;
    QString taken;
    for (const QChar c : received)
        taken += receiver.take(QString(c));
    if (acknowledgement)
        QCOMPARE(taken, received);
    else
        QCOMPARE(taken, text);
    QVERIFY(receiver.thread.frameIn == kept || acknowledgement);
}

void TestGuaranteedScan::incompleteFrameWaitsForTheNextChunk()
{
    Receiver receiver;
    QCOMPARE(receiver.take("ДО&#Э"), qs("ДО"));
    QCOMPARE(receiver.take("3&"), QString());
    QCOMPARE(receiver.take("EПОСЛЕ"), qs("E&EПОСЛЕ"));
    QVERIFY(receiver.thread.frameIn.isEmpty());
}

void TestGuaranteedScan::frameOutOfTurnWaitsUntilTextFollows()
{
    Receiver receiver;
    QCOMPARE(receiver.take("&#63&E"), QString());
    QCOMPARE(receiver.thread.frameIn, qs("&#63&E"));
    receiver.thread.rxSequence = 1; // its turn has come
    QCOMPARE(receiver.take(""), qs("E&E"));
    receiver.thread.rxSequence = 0;
    QCOMPARE(receiver.take("&#63&E"), QString());
    QCOMPARE(receiver.take("А"), qs("А"));
    QVERIFY(receiver.thread.frameIn.isEmpty());
}

void TestGuaranteedScan::loneMarkWaitsForTheNextChunk()
{
    Receiver receiver;
    QCOMPARE(receiver.take("&"), QString());
    QCOMPARE(receiver.take("A"), QString());
    QCOMPARE(receiver.take("B"), qs("&AB"));
}

void TestGuaranteedScan::acknowledgementWaitsOneChunkThenPasses()
{
    Receiver receiver;
    QCOMPARE(receiver.take("&|ABC"), QString());
    QCOMPARE(receiver.thread.frameIn, qs("&|ABC"));
    QCOMPARE(receiver.take("D&|E"), qs("&|ABCD"));
    QCOMPARE(receiver.take("F"), qs("&|EF"));
}

void TestGuaranteedScan::commandDoesNotWaitBehindAnAcknowledgement()
{
    Receiver receiver;
    QCOMPARE(receiver.take("&|AB@H"), qs("&|AB@H"));
}

void TestGuaranteedScan::eventIsCountedOnlyWithText()
{
    Receiver receiver;
    receiver.thread.addToReceive(qs("&#Э"));
    QCOMPARE(receiver.thread.receivedEvents.load(), 0);
    receiver.thread.addToReceive(qs("3&E"));
    QCOMPARE(receiver.thread.receivedEvents.load(), 1);
    receiver.thread.addToReceive(qs("&#'3&E")); // a repeat brings nothing
    QCOMPARE(receiver.thread.receivedEvents.load(), 1);
}

void TestGuaranteedScan::switchingOffLeavesTheRestUnread()
{
    Receiver receiver;
    QCOMPARE(receiver.take("А&#Э"), qs("А"));
    receiver.thread.stopProtectedMode();
    QCOMPARE(receiver.take("Б"), qs("Б"));
    QCOMPARE(receiver.thread.frameIn, qs("&#Э"));
}

void TestGuaranteedScan::floodOfMarksIsBoundedAndNotLost_data()
{
    QTest::addColumn<QString>("pattern");
    row("marks", qs("&"));
    row("acknowledgements", qs("&|"));
    row("marks with letters", qs("&A"));
    row("marks with noise", qs("&#;"));
}

void TestGuaranteedScan::floodOfMarksIsBoundedAndNotLost()
{
    QFETCH(QString, pattern);
    const QString chunk = pattern.repeated(20000);
    Receiver receiver;
    QString taken;
    for (int i = 0; i < 10; ++i) {
        taken += receiver.take(chunk);
        QVERIFY(receiver.thread.frameIn.size() <= chunk.size());
    }
    taken += receiver.take("КОНЕЦ");
    QCOMPARE(taken.size(), chunk.size() * 10 + 5);
    QVERIFY(taken == chunk.repeated(10) + qs("КОНЕЦ"));
}

void TestGuaranteedScan::noiseNeitherHangsNorGrows()
{
    const QString alphabet = qs("&#|@3ЭEШ,;H\r\n А");
    QRandomGenerator random(20260731);
    Receiver receiver;
    for (int i = 0; i < 200; ++i) {
        QString noise;
        for (int j = 0; j < 5000; ++j)
            noise += alphabet[static_cast<int>(random.bounded(quint32(alphabet.size())))];
        receiver.take(noise);
        QVERIFY(receiver.thread.frameIn.size() < 5040);
    }
    receiver.take(QString(64, QLatin1Char('A'))); // what is left open as a frame ends here,
    receiver.take("A");                           // and what has to wait for a chunk has done so
    QCOMPARE(receiver.take("|ПРИВЕТ"), qs("|ПРИВЕТ"));
}

QTEST_GUILESS_MAIN(TestGuaranteedScan)
#include "test_guaranteed_scan.moc"
