// Tape on its way into text.

#include "tests/link/prf_adapter.h"

class TestPrfRead : public QObject
{
    Q_OBJECT

private slots:
    void codesBecomeTextWithItsMarks();
    void registerStaysFromBatchToBatch();
    void registerStartsAtLatinOnEachConnection();
    void otherBytesLeaveNoText();
    void fetchedTextIsGone();
    void unfetchedTextIsBounded();
    void readingAndPunchingGoTogether();
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}
} // namespace

void TestPrfRead::codesBecomeTextWithItsMarks()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    adapter.send("00110e110e1b17131f0308020400");
    QTRY_COMPARE(run.read().join(QString()), qs("|ЗЦЗЦ#12&A\r\n |"));
}

void TestPrfRead::registerStaysFromBatchToBatch()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    adapter.send("00");
    QTRY_COMPARE(run.read(), QStringList(qs("|")));
    adapter.send("0319");
    QTRY_COMPARE(run.read(), QStringList({qs("|"), qs("АБ")}));
    adapter.send("201b");
    QTRY_COMPARE(run.read().size(), 3);
    adapter.send("17");
    QTRY_COMPARE(run.read().mid(2), QStringList({qs("#"), qs("1")}));
}

void TestPrfRead::registerStartsAtLatinOnEachConnection()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    adapter.send("030003");
    QTRY_COMPARE(run.read().join(QString()), qs("A|А"));
    run.thread.Send(qs("А"));
    adapter.send("3f");
    QCOMPARE(adapter.take(3), QByteArray("610003"));
    run.thread.Deactivate();
    QTRY_COMPARE(adapter.closings, 1);
    run.thread.Activate();
    QCOMPARE(adapter.take(1), QByteArray("61"));
    QTRY_VERIFY(adapter.terminal.isOpen());
    adapter.send("03");
    QTRY_COMPARE(run.read().join(QString()), qs("A|АA"));
    run.thread.Send(qs("А"));
    adapter.send("3f");
    QCOMPARE(adapter.take(3), QByteArray("610003"));
}

void TestPrfRead::otherBytesLeaveNoText()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    QByteArray bytes;
    for (int value = 0x20; value < 0x100; ++value)
        bytes += char(value);
    adapter.send(bytes.toHex());
    QTRY_VERIFY(adapter.got.contains(0x61));
    (void)adapter.settled();
    QCOMPARE(run.read(), QStringList());
    adapter.send("41034203");
    QTRY_COMPARE(run.read().join(QString()), qs("AA"));
}

void TestPrfRead::fetchedTextIsGone()
{
    CPrfThread thread;
    thread.receivedText = qs("АБВ");
    QCOMPARE(thread.getAndClearReceive(), qs("АБВ"));
    QCOMPARE(thread.getAndClearReceive(), QString());
}

void TestPrfRead::unfetchedTextIsBounded()
{
    PrfAdapter adapter;
    CPrfThread thread;
    const int limit = 1024 * 1024;
    thread.receivedText = QString(limit - 2, QLatin1Char('-'));
    QVERIFY(thread.setSorel(qs("20000001"), 0, false));
    ThreadEnd end(thread);
    thread.start();
    QTRY_VERIFY(adapter.terminal.isOpen());
    adapter.send("0301090320");
    QTRY_COMPARE(adapter.got.toHex(), QByteArray("6161"));
    thread.stopThread();
    QVERIFY(end.join(5000));
    QCOMPARE(thread.receivedText.size(), limit);
    QVERIFY(thread.receivedText.endsWith(qs("-AE")));
}

void TestPrfRead::readingAndPunchingGoTogether()
{
    PrfAdapter adapter;
    PrfRun run(adapter);
    run.thread.Send(qs("ABCD"));
    adapter.send("0003"
                 "2a"
                 "19");
    QCOMPARE(adapter.take(5), QByteArray("6103190e09"));
    QTRY_COMPARE(run.read().join(QString()), qs("|АБ"));
}

QTEST_GUILESS_MAIN(TestPrfRead)
#include "test_prf_read.moc"
