// The port of an Ethernet adapter between the link thread and the dialog that configures the adapter.

#include "app/ask.h"
#include "tests/ui/dialogs/nerva_room.h"

class TestNervaConfigLink : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void linkIsPausedUntilTheDialogCloses_data();
    void linkIsPausedUntilTheDialogCloses();
    void linkComesBackWhenTheDialogIsDestroyed();
    void buttonsWaitForTheLinkThread();
    void closingTellsTheAdapterAndTakesASecond();
    void secondCloseChangesNothing();
    void closingInTheMiddleOfAWrite();
    void closedByTheProgramWhileItIsRead();
    void unpluggedWhileReadGivesThePortBack();
    void unpluggedAtRestGivesThePortBack();
    void withoutAdapterTheLogTellsIt();
    void runningLinkIsBackOnItsLine();
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}

void endLink()
{
    TlgThread.stopThread();
    (void)TlgThread.wait(PatienceMs);
}
} // namespace

void TestNervaConfigLink::cleanup()
{
    endLink();
}

void TestNervaConfigLink::linkIsPausedUntilTheDialogCloses_data()
{
    QTest::addColumn<QString>("way");
    for (const char *way : {"button", "Esc", "cross"})
        QTest::newRow(way) << qs(way);
}

void TestNervaConfigLink::linkIsPausedUntilTheDialogCloses()
{
    QFETCH(QString, way);
    const NervaRoom room;
    QVERIFY(TlgThread.paused && TlgThread.restartRequested);
    TlgThread.restartRequested = false;
    if (way == "button")
        room.press("cancel");
    else if (way == "Esc")
        QTest::keyClick(room.dialog.get(), Qt::Key_Escape);
    else
        room.dialog->close();
    QVERIFY(!room.dialog->isVisible());
    QVERIFY(!TlgThread.paused && TlgThread.restartRequested);
}

void TestNervaConfigLink::linkComesBackWhenTheDialogIsDestroyed()
{
    NervaRoom room;
    QVERIFY(room.read());
    TlgThread.restartRequested = false;
    room.dialog.reset();
    QVERIFY(!TlgThread.paused && TlgThread.restartRequested);
    QTRY_COMPARE(room.events("closed").size(), 1);
    QCOMPARE(room.events("violation"), QStringList());
    room.dialog = std::make_unique<CNervaConfigDialog>(nullptr, "30000001"); // for the room's own end
}

void TestNervaConfigLink::buttonsWaitForTheLinkThread()
{
    const NervaRoom room;
    for (const bool connected : {true, false}) {
        TlgThread.connected = connected;
        TlgThread.setState("Nerva (30000001): Порт закрыт");
        for (const char *name : {"read", "write", "upgrade"})
            QCOMPARE(room.button(name)->isEnabled(), !connected);
    }
    TlgThread.paused = false;
    room.dialog->slotTlgThreadState();
    QVERIFY(!room.button("read")->isEnabled());
    QVERIFY(room.button("cancel")->isEnabled());
}

void TestNervaConfigLink::closingTellsTheAdapterAndTakesASecond()
{
    const NervaRoom room;
    QVERIFY(room.read());
    QElapsedTimer timer;
    timer.start();
    room.dialog->close();
    QVERIFY(room.dialog->isVisible());
    QVERIFY(TlgThread.paused);
    for (const char *name : {"read", "write", "cancel", "sys_mode", "store"})
        QVERIFY(!room.find<QWidget>(name)->isEnabled());
    QTRY_VERIFY(!room.dialog->isVisible());
    QVERIFY(timer.elapsed() >= 900);
    QVERIFY(!TlgThread.paused);
    QTRY_COMPARE(room.events("closed").size(), 1);
    QCOMPARE(room.events("left"), QStringList("left:"));
    QCOMPARE(room.events("violation"), QStringList());
}

void TestNervaConfigLink::secondCloseChangesNothing()
{
    const NervaRoom room;
    QVERIFY(room.read());
    room.dialog->close();
    QTest::keyClick(room.dialog.get(), Qt::Key_Escape);
    room.dialog->close();
    QVERIFY(room.dialog->isVisible());
    QTRY_VERIFY(!room.dialog->isVisible());
    QTRY_COMPARE(room.events("closed").size(), 1);
    QCOMPARE(room.events("violation"), QStringList());
}

void TestNervaConfigLink::closingInTheMiddleOfAWrite()
{
    const NervaRoom room;
    room.press("write"); // two seconds until it goes
    QVERIFY(!room.button("write")->isEnabled());
    QVERIFY(room.leave());
    QVERIFY(!TlgThread.paused);
    QCOMPARE(room.events("written"), QStringList());
    QCOMPARE(room.events("violation"), QStringList());
}

void TestNervaConfigLink::closedByTheProgramWhileItIsRead()
{
    const NervaRoom room(NervaFault::Silent);
    room.press("read");
    QTRY_VERIFY(!room.events("asked").isEmpty());
    room.dialog->close();
    QTRY_VERIFY(!room.dialog->isVisible());
    QVERIFY(room.progress() == nullptr);
    QCOMPARE(room.logged().last(), qs("read canceled"));
    QTRY_COMPARE(room.events("closed").size(), 1);
    QCOMPARE(room.events("violation"), QStringList());
    QVERIFY(!TlgThread.paused);
}

void TestNervaConfigLink::unpluggedWhileReadGivesThePortBack()
{
    const NervaRoom room(NervaFault::Unplug);
    QVERIFY(room.read());
    QCOMPARE(room.logged().last(), qs("read failed"));
    QCOMPARE(room.field("mac"), QString());
    QVERIFY(room.button("read")->isEnabled());
    room.adapter->run("fault", "none");
    room.adapter->run("plug", QString());
    qputenv("VELDA_PORTS", "30000001=" + room.adapter->place().toLocal8Bit());
    QVERIFY(room.read());
    QCOMPARE(room.field("mac"), qs("02:00:00:00:00:01"));
    QVERIFY(room.leave());
    QVERIFY(!TlgThread.paused);
}

void TestNervaConfigLink::unpluggedAtRestGivesThePortBack()
{
    const NervaRoom room;
    QVERIFY(room.read());
    room.adapter->run("unplug", QString());
    QTRY_VERIFY(room.logged().last().startsWith("Error port "));
    room.press("cancel"); // there is nobody to be told
    QVERIFY(!room.dialog->isVisible());
    QVERIFY(!TlgThread.paused);
}

void TestNervaConfigLink::withoutAdapterTheLogTellsIt()
{
    const NervaRoom room;
    qunsetenv("VELDA_PORTS");
    QVERIFY(room.read());
    QCOMPARE(room.logged(), (QStringList{"*** Read", "-- Error no device"}));
    QVERIFY(room.write());
    QCOMPARE(room.logged().mid(2), (QStringList{"*** make json string", "-- Error no device"}));
    room.press("cancel");
    QVERIFY(!room.dialog->isVisible());
}

// The whole way: the line works, the dialog takes the adapter, changes it, and the line works again.
void TestNervaConfigLink::runningLinkIsBackOnItsLine()
{
    NervaRoom room;
    room.dialog->close();
    QStringList heard;
    QObject::connect(room.adapter.get(), &FarLine::text, room.adapter.get(),
                     [&](const QString &text) { heard << text; });
    QVERIFY(TlgThread.setTrelo("30000001", 200, false));
    TlgThread.start();
    QTRY_VERIFY(room.adapter->isReady());
    room.dialog = std::make_unique<CNervaConfigDialog>(nullptr, "30000001");
    QVERIFY(!room.button("read")->isEnabled());
    room.dialog->open();
    QTRY_VERIFY(room.button("read")->isEnabled());
    QCOMPARE(room.events("closed").size(), 1);
    QVERIFY(room.read());
    room.type("gw", "10.0.0.1");
    QVERIFY(room.write());
    QVERIFY(room.read());
    QCOMPARE(room.field("gw"), qs("10.0.0.1"));
    room.press("cancel");
    QTRY_VERIFY(!room.dialog->isVisible());
    QTRY_VERIFY(room.adapter->isReady());
    QCOMPARE(TlgThread.stateText.mGet().left(16), qs("Nerva (30000001)"));
    TlgThread.sendBuffer.mAppend("ПРИВЕТ");
    QTRY_VERIFY(heard.join(QString()).endsWith("ПРИВЕТ"));
    room.adapter->sendText("ОТВЕТ");
    QTRY_VERIFY(TlgThread.recvBuffer.mGet().contains("ОТВЕТ"));
    endLink();
    QTRY_COMPARE(room.events("closed").size(), 3);
    QCOMPARE(room.events("violation"), QStringList());
}

QTEST_MAIN(TestNervaConfigLink)
#include "test_nerva_config_link.moc"
