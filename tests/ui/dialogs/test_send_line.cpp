// Whether a telegram may go on the line at once: by procedure and line, also while the dialog is open.

#include "tests/support/desk.h"
#include "tests/support/row.h"
#include "tests/ui/dialogs/sending.h"

class TestSendLine : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_desk = std::make_unique<Desk>(); }
    void cleanup() { m_desk.reset(); }

    void switchedChannelOffersTheLineInACallByHand_data();
    void switchedChannelOffersTheLineInACallByHand();
    void directLinkOffersTheLineWhenFree_data();
    void directLinkOffersTheLineWhenFree();
    void emptyNumberDoesNotStopSendingToTheLine();
    void choiceDecidesWhetherANumberIsNeeded();
    void linkThatComesUpAllowsTheLine_data();
    void linkThatComesUpAllowsTheLine();
    void linkThatGoesTakesTheLineAway_data();
    void linkThatGoesTakesTheLineAway();
    void callThatEndsTakesTheLineAway();
    void busyLineKeepsTheChoice();
    void linkGoneSinceTheLastSecondSendsNothing_data();
    void linkGoneSinceTheLastSecondSendsNothing();
    void callThatComesLaterChangesNothing();
    void centreNeverAsksForTheLine();

private:
    std::unique_ptr<Desk> m_desk;
};

namespace
{
void withLine()
{
    QTest::addColumn<int>("procedure");
    row("switched", int(SKK));
    row("direct", int(Direct));
}
} // namespace

void TestSendLine::switchedChannelOffersTheLineInACallByHand_data()
{
    QTest::addColumn<bool>("manual");
    QTest::addColumn<bool>("connected");
    QTest::addColumn<bool>("up");
    QTest::addColumn<bool>("offered");
    QTest::addColumn<bool>("enabled");
    row("automatic", false, false, true, false, false);
    row("automatic, in a call", false, true, true, false, false);
    row("by hand, no call", true, false, true, false, false);
    row("by hand, in a call", true, true, true, true, true);
    row("by hand, in a call, link down", true, true, false, true, false);
}

void TestSendLine::switchedChannelOffersTheLineInACallByHand()
{
    QFETCH(bool, manual);
    QFETCH(bool, connected);
    QFETCH(bool, up);
    QFETCH(bool, offered);
    QFETCH(bool, enabled);
    State.manualMode = manual;
    State.connectionActive = connected;
    setLinkUp(up);
    const Sending sending(SKK);
    QCOMPARE(sending.toLine() != nullptr, offered);
    QCOMPARE(sending.toQueue() != nullptr, offered);
    if (!offered)
        return;
    QCOMPARE(sending.toLine()->isEnabled(), enabled);
    QVERIFY(!sending.toLine()->isChecked());
    QVERIFY(sending.toQueue()->isChecked());
}

void TestSendLine::directLinkOffersTheLineWhenFree_data()
{
    QTest::addColumn<bool>("up");
    QTest::addColumn<QString>("buffer");
    QTest::addColumn<bool>("allSent");
    QTest::addColumn<bool>("enabled");
    row("free", true, "", true, true);
    row("down", false, "", true, false);
    row("text waits", true, "А", true, false);
    row("text is going out", true, "", false, false);
}

void TestSendLine::directLinkOffersTheLineWhenFree()
{
    QFETCH(bool, up);
    QFETCH(QString, buffer);
    QFETCH(bool, allSent);
    setLinkUp(up);
    TlgThread.sendBuffer.mAppend(buffer);
    TlgThread.allSent = allSent;
    const Sending sending(Direct);
    QTEST(sending.toLine()->isEnabled(), "enabled");
    QVERIFY(sending.toQueue()->isChecked());
    QVERIFY(sending.maySend());
}

void TestSendLine::emptyNumberDoesNotStopSendingToTheLine()
{
    connectByHand();
    const Sending sending(SKK);
    QVERIFY(!sending.maySend());
    sending.click("toLine");
    QVERIFY(sending.maySend());
    sending.click("send");
    QCOMPARE(sending.dialog->result(), 1);
    QVERIFY(sending.dialog->sendNow);
    QCOMPARE(sending.dialog->order.numbers, QStringList());
    QCOMPARE(Options.lastSKKCallNumbers, QStringList()); // none is no number
}

void TestSendLine::choiceDecidesWhetherANumberIsNeeded()
{
    connectByHand();
    const Sending sending(SKK);
    sending.toQueue()->setFocus();
    sending.key(Qt::Key_Up);
    QVERIFY(sending.toLine()->isChecked());
    QVERIFY(sending.maySend());
    sending.key(Qt::Key_Down);
    QVERIFY(sending.toQueue()->isChecked());
    QVERIFY(!sending.maySend());
    sending.dialog->setNumber("123456");
    QVERIFY(sending.maySend());
    sending.click("send");
    QVERIFY(!sending.dialog->sendNow);
}

void TestSendLine::linkThatComesUpAllowsTheLine_data()
{
    withLine();
}

void TestSendLine::linkThatComesUpAllowsTheLine()
{
    QFETCH(int, procedure);
    connectByHand();
    setLinkUp(false);
    const Sending sending(procedure);
    QVERIFY(!sending.toLine()->isEnabled());
    setLinkUp(true);
    sending.tick();
    QVERIFY(sending.toLine()->isEnabled());
    QVERIFY(sending.toQueue()->isChecked()); // nobody has chosen
    sending.click("toLine");
    sending.click("send");
    QVERIFY(sending.dialog->sendNow);
}

void TestSendLine::linkThatGoesTakesTheLineAway_data()
{
    withLine();
}

void TestSendLine::linkThatGoesTakesTheLineAway()
{
    QFETCH(int, procedure);
    connectByHand();
    const Sending sending(procedure);
    sending.click("toLine");
    setLinkUp(false);
    sending.tick();
    QVERIFY(!sending.toLine()->isEnabled());
    QVERIFY(!sending.toLine()->isChecked());
    QVERIFY(sending.toQueue()->isChecked());
    QCOMPARE(sending.maySend(), procedure == Direct); // a number is missing
    setLinkUp(true);
    sending.tick();
    QVERIFY(sending.toLine()->isEnabled());
    QVERIFY(sending.toQueue()->isChecked()); // as it was shown meanwhile
}

void TestSendLine::callThatEndsTakesTheLineAway()
{
    connectByHand();
    const Sending sending(SKK);
    sending.click("toLine");
    State.connectionActive = false;
    sending.tick();
    QVERIFY(!sending.toLine()->isEnabled());
    QVERIFY(sending.toQueue()->isChecked());
    QVERIFY(!sending.maySend());
}

void TestSendLine::busyLineKeepsTheChoice()
{
    setLinkUp(true);
    const Sending sending(Direct);
    sending.click("toLine");
    TlgThread.sendBuffer.mAppend("А");
    sending.tick();
    QVERIFY(!sending.toLine()->isEnabled());
    QVERIFY(sending.toLine()->isChecked());
    sending.click("send");
    QCOMPARE(sending.dialog->result(), 1);
    QVERIFY(sending.dialog->sendNow);
}

void TestSendLine::linkGoneSinceTheLastSecondSendsNothing_data()
{
    withLine();
}

void TestSendLine::linkGoneSinceTheLastSecondSendsNothing()
{
    QFETCH(int, procedure);
    connectByHand();
    const Sending sending(procedure);
    sending.dialog->setNumber("123456");
    sending.click("toLine");
    setLinkUp(false);
    sending.click("send");
    QVERIFY(sending.dialog->isVisible());
    QVERIFY(sending.toQueue()->isChecked());
    sending.click("send"); // now the operator has seen it
    QCOMPARE(sending.dialog->result(), 1);
    QVERIFY(!sending.dialog->sendNow);
}

void TestSendLine::callThatComesLaterChangesNothing()
{
    State.manualMode = true;
    setLinkUp(true);
    const Sending sending(SKK);
    State.connectionActive = true;
    sending.tick();
    QVERIFY(sending.toLine() == nullptr);
    sending.dialog->setNumber("123456");
    sending.click("send");
    QVERIFY(!sending.dialog->sendNow);
}

void TestSendLine::centreNeverAsksForTheLine()
{
    connectByHand();
    const Sending sending(CKS);
    QVERIFY(sending.toLine() == nullptr);
    setLinkUp(false);
    sending.tick();
    QVERIFY(sending.maySend());
}

QTEST_MAIN(TestSendLine)
#include "test_send_line.moc"
