#include "app/options.h"
#include "link/adapter_stream.h"
#include "link/tlg_thread.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"

#include <QtTest>

/// Text and commands that an adapter link takes off the send buffer without a byte for them.
class TestAdapterVanishedText : public QObject
{
    Q_OBJECT

private slots:
    void emptiedBufferIsReported_data();
    void emptiedBufferIsReported();
    void nothingIsReportedWithoutText();
    void waitingTextIsNotReported();
};

void TestAdapterVanishedText::emptiedBufferIsReported_data()
{
    QTest::addColumn<QString>("text");

    row("end-of-file sign", "\x1A");
    row("foreign letters", "日本");
    row("command without bytes on a direct link", "@C");
}

void TestAdapterVanishedText::emptiedBufferIsReported()
{
    QFETCH(QString, text);
    const Desk desk;
    Options.processMode = 2;
    CAdapterStream stream(TlgThread, "Порт", 20231111);
    TlgThread.sendBuffer.mAppend(text);
    int writes = 0;
    stream.send([&](const QByteArray &) { return ++writes > 0; });

    QCOMPARE(writes, 0);
    QCOMPARE(TlgThread.sendBuffer.mGet(), "");
    QCOMPARE(TlgThread.sentEvents.load(), 1);
    QCOMPARE(TlgThread.sentLog.mGet(), "");
    QVERIFY(TlgThread.allSent);
}

void TestAdapterVanishedText::nothingIsReportedWithoutText()
{
    const Desk desk;
    CAdapterStream stream(TlgThread, "Порт", 20231111);
    stream.send([](const QByteArray &) { return true; });
    QCOMPARE(TlgThread.sentEvents.load(), 0);
}

void TestAdapterVanishedText::waitingTextIsNotReported()
{
    const Desk desk;
    CAdapterStream stream(TlgThread, "Порт", 20231111);
    TlgThread.txCredit = 0;
    TlgThread.sendBuffer.mAppend("А");
    stream.send([](const QByteArray &) { return true; });
    QCOMPARE(TlgThread.sendBuffer.mGet(), "А");
    QCOMPARE(TlgThread.sentEvents.load(), 0);
}

QTEST_GUILESS_MAIN(TestAdapterVanishedText)
#include "test_adapter_vanished_text.moc"
