// The dialog that configures an Ethernet adapter, on a simulated one.

#include "app/ask.h"
#include "tests/support/row.h"
#include "tests/ui/dialogs/nerva_room.h"

#include <QGroupBox>

class TestNervaConfigDialog : public QObject
{
    Q_OBJECT

private slots:
    void controlsHaveTheirChoicesAndLimits_data();
    void controlsHaveTheirChoicesAndLimits();
    void labelsAndButtons();
    void nothingIsReadUntilItIsAsked();
    void readShowsWhatTheAdapterHas();
    void readProgressMovesAndCanBeCancelled();
    void escInTheProgressCancels();
    void silentAdapterLeavesTheFormAsItWas_data();
    void silentAdapterLeavesTheFormAsItWas();
    void tornReplyIsAskedForAgain();
    void macOf16CharactersLeavesTheEdit();
    void ethernetSpeed7ShowsAsAuto();
    void valuesOfTheWrongKindAreNotShown();
    void nothingChangedWritesEmptyBraces();
    void changedFieldsAreWrittenAndReadAgain();
    void keptValuesOutlastTheRestart();
    void refusedValueWritesNothing();
    void badAccessAddressIsLeftOut();
    void groupsFollowTheMode_data();
    void groupsFollowTheMode();
    void logKeyTogglesThePane_data();
    void logKeyTogglesThePane();
    void everyControlIsReachedByTab();
    void smallWindowScrollsToEachControl();
    void buttonHasTheKeyboardAgainBehindItsWork();
    void enterStartsNothing();
    void olderFirmwareShowsTheUpgrade_data();
    void olderFirmwareShowsTheUpgrade();
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}
} // namespace

void TestNervaConfigDialog::controlsHaveTheirChoicesAndLimits_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("choices"); // or the highest number
    row("speed of the network", qs("eth_spd"), qs("10H,10D,100H,100D,AUTO"));
    row("direction", qs("sys_mode"), qs("USB-TLG,IP-TLG,USB-IP"));
    row("type", qs("tlg_type"), qs("---,ЦКС,СКК-исх,СКК-вх,Канал"));
    row("speed of the line", qs("tlg_baud"), qs("50,100,200"));
    row("connection", qs("ip_mode"),
        qs("TCP-клиент,TCP-сервер,TCP-сервер (упр.потоком),UDP-Bicom,UDP-поток"));
    for (const char *port : {"local_port", "remote_port", "remote2_port", "http_port"})
        row(port, qs(port), qs("65535"));
    row("time-out", qs("tcp_timeout"), qs("99"));
}

void TestNervaConfigDialog::controlsHaveTheirChoicesAndLimits()
{
    QFETCH(QString, name);
    QFETCH(QString, choices);
    const NervaRoom room;
    if (const auto *number = room.dialog->findChild<QSpinBox *>(name)) {
        QCOMPARE(number->minimum(), 0);
        QCOMPARE(QString::number(number->maximum()), choices);
        return;
    }
    const auto *box = room.dialog->findChild<QComboBox *>(name);
    QStringList items;
    for (int i = 0; i < box->count(); ++i)
        items << box->itemText(i);
    QCOMPARE(items.join(','), choices);
}

void TestNervaConfigDialog::labelsAndButtons()
{
    const NervaRoom room;
    QStringList labels;
    for (const QLabel *label : room.dialog->findChildren<QLabel *>())
        labels << label->text();
    for (const char *label : {" MAC", " Speed", " IP", " MASK", " GW", " Local Port", " Направление передачи",
                              " Тип", " Скорость", " Тип соединения ", " TimeOut", " Remote IP",
                              " Remote IP2", " HTTP Доступ", " разрешенные IP"})
        QVERIFY2(labels.contains(qs(label)), label);
    QCOMPARE(room.button("read")->text(), qs("Прочитать"));
    QCOMPARE(room.button("write")->text(), qs("Записать"));
    QCOMPARE(room.button("upgrade")->text(), qs("Update firmware"));
    QVERIFY(room.button("upgrade")->isHidden());
    QCOMPARE(room.button("cancel")->text(), qs("Отменить"));
    QCOMPARE(room.find<QCheckBox>("store")->text(), qs("Записать в EEPROM и перезапустить"));
    QVERIFY(room.pane()->isReadOnly());
}

void TestNervaConfigDialog::nothingIsReadUntilItIsAsked()
{
    const NervaRoom room;
    QTest::qWait(100);
    QCOMPARE(room.events("opened|connected"), QStringList());
    QCOMPARE(room.pane()->toPlainText(), QString());
}

void TestNervaConfigDialog::readShowsWhatTheAdapterHas()
{
    const NervaRoom room(NervaFault::None, {{"sys_mode", "1"}, {"tlg_baud", "100"}, {"http_mode", "2"}});
    QVERIFY(room.read());
    QString text = factoryText();
    text.replace("sys_mode:0", "sys_mode:1").replace("tlg_baud:200", "tlg_baud:100");
    text.replace("http_mode:1", "http_mode:2");
    QCOMPARE(room.logged(), (QStringList{"*** Read", " Open " + room.adapter->place(), ".", text, "Check"}));
    QCOMPARE(room.choice("sys_mode"), qs("IP-TLG"));
    QCOMPARE(room.field("mac"), qs("02:00:00:00:00:01"));
    QCOMPARE(room.choice("eth_spd"), qs("AUTO"));
    QCOMPARE(room.field("local_ip"), qs("192.168.0.20"));
    QCOMPARE(room.field("netmask"), qs("255.255.255.0"));
    QCOMPARE(room.field("gw"), qs("192.168.0.1"));
    QCOMPARE(room.number("local_port"), 5674);
    QCOMPARE(room.choice("tlg_type"), qs("ЦКС"));
    QCOMPARE(room.choice("tlg_baud"), qs("100"));
    QCOMPARE(room.choice("ip_mode"), qs("TCP-клиент"));
    QCOMPARE(room.number("tcp_timeout"), 30);
    QCOMPARE(room.field("remote_ip"), qs("192.168.0.30"));
    QCOMPARE(room.number("remote_port"), 5675);
    QCOMPARE(room.field("remote2_ip"), qs("192.168.0.31"));
    QCOMPARE(room.number("remote2_port"), 5676);
    QCOMPARE(room.number("http_port"), 80);
    QCOMPARE(room.choice("http_mode"), qs("2"));
    QCOMPARE(room.field("http_access"), qs("192.168.0.0/255.255.255.0"));
    QCOMPARE(room.field("sn"), qs("30000001"));
    QCOMPARE(room.field("ver"), qs("260601"));
    QVERIFY(room.leave());
    QCOMPARE(room.events("violation"), QStringList());
}

void TestNervaConfigDialog::readProgressMovesAndCanBeCancelled()
{
    const NervaRoom room(NervaFault::Silent);
    room.press("read");
    QProgressDialog *box = room.progress();
    QCOMPARE(box->windowTitle(), qs("Read"));
    QCOMPARE(box->minimum(), 0);
    QCOMPARE(box->maximum(), 10);
    QVERIFY(box->isModal());
    QTRY_VERIFY(box->isVisible());
    QTRY_VERIFY(box->value() > 2);
    auto *cancel = box->findChild<QPushButton *>();
    QCOMPARE(cancel->text(), qs("Отменить"));
    QTest::mouseClick(cancel, Qt::LeftButton);
    QVERIFY(room.done());
    QCOMPARE(room.logged().last(), qs("read canceled"));
    QVERIFY(room.dialog->isVisible());
    QVERIFY(room.leave());
    QCOMPARE(room.events("violation"), QStringList());
}

void TestNervaConfigDialog::escInTheProgressCancels()
{
    const NervaRoom room;
    room.press("read");
    QVERIFY(QTest::qWaitForWindowActive(room.progress()));
    QTest::keyClick(room.progress(), Qt::Key_Escape);
    QVERIFY(room.done());
    QCOMPARE(room.logged().last(), qs("read canceled"));
    QCOMPARE(room.field("mac"), QString());
    QVERIFY(room.read());
    QCOMPARE(room.field("mac"), qs("02:00:00:00:00:01"));
    QVERIFY(room.leave());
}

void TestNervaConfigDialog::silentAdapterLeavesTheFormAsItWas_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QStringList>("end");
    const QStringList timeOuts = {".", ".", ".", ".", "read failed"};
    row("silent", qs("silent"), timeOuts);
    row("no end", qs("no-end"), timeOuts);
    row("a megabyte", qs("megabyte"), QStringList{".", "read failed"});
}

void TestNervaConfigDialog::silentAdapterLeavesTheFormAsItWas()
{
    QFETCH(QString, fault);
    QFETCH(QStringList, end);
    const NervaRoom room;
    QVERIFY(room.read());
    room.type("gw", "10.0.0.1");
    room.adapter->run("fault", fault);
    QVERIFY(room.read());
    QCOMPARE(room.logged().mid(room.logged().size() - end.size()), end);
    QCOMPARE(room.field("gw"), qs("10.0.0.1"));
    QCOMPARE(room.field("mac"), qs("02:00:00:00:00:01"));
    QCOMPARE(room.dialog->cfgDataStr[NervaGateway], qs("192.168.0.1"));
    QVERIFY(room.leave());
    QCOMPARE(room.events("violation"), QStringList());
}

void TestNervaConfigDialog::tornReplyIsAskedForAgain()
{
    const NervaRoom room(NervaFault::Torn);
    QVERIFY(room.read());
    QCOMPARE(room.logged().mid(2, 2), (QStringList{".", "."}));
    const QString text = factoryText();
    QCOMPARE(room.logged().mid(4), (QStringList{text.left(text.size() / 2) + text, "Check"}));
    QCOMPARE(room.field("mac"), qs("02:00:00:00:00:01"));
    QCOMPARE(room.field("sn"), qs("30000001"));
    QVERIFY(room.leave());
}

void TestNervaConfigDialog::macOf16CharactersLeavesTheEdit()
{
    const NervaRoom room(NervaFault::Mac16);
    room.type("mac", "AA:BB");
    QVERIFY(room.read());
    QCOMPARE(room.field("mac"), qs("AA:BB"));
    QCOMPARE(room.field("local_ip"), qs("192.168.0.20"));
    QVERIFY(room.write());
    QCOMPARE(room.events("written"), QStringList("written: {}"));
    QVERIFY(room.leave());
    QCOMPARE(room.events("violation"), QStringList());
}

void TestNervaConfigDialog::ethernetSpeed7ShowsAsAuto()
{
    const NervaRoom room(NervaFault::Eth7);
    QVERIFY(room.read());
    QCOMPARE(room.choice("eth_spd"), qs("AUTO"));
    QCOMPARE(room.dialog->cfgDataStr[NervaEthSpeed], qs("7"));
    QVERIFY(room.write());
    QCOMPARE(room.events("written"), QStringList("written: {}"));
    QVERIFY(room.leave());
}

// What they are is not known: nothing is shown, and nothing is written unless it is chosen anew.
void TestNervaConfigDialog::valuesOfTheWrongKindAreNotShown()
{
    const NervaRoom room(NervaFault::WrongKind);
    QVERIFY(room.read());
    for (const char *name : {"eth_spd", "sys_mode", "tlg_type", "tlg_baud", "ip_mode", "http_mode"})
        QCOMPARE(room.choice(name), QString());
    for (const char *name : {"local_port", "remote_port", "tcp_timeout"})
        QCOMPARE(room.number(name), 0);
    QCOMPARE(room.field("mac"), QString());
    QCOMPARE(room.field("gw"), qs("17"));
    QVERIFY(!room.find<QGroupBox>("group1")->isHidden() && !room.find<QGroupBox>("group2")->isHidden());
    QVERIFY(room.write());
    QCOMPARE(room.events("written"), QStringList("written: {sn:\"30000001\"}"));
    QVERIFY(room.leave());
}

void TestNervaConfigDialog::nothingChangedWritesEmptyBraces()
{
    const NervaRoom room;
    QVERIFY(room.read());
    QVERIFY(room.write());
    QCOMPARE(room.logged().mid(5),
             (QStringList{"*** make json string", " *** Write. Use " + room.adapter->place(), "{}",
                          "--- End write cfg"}));
    QCOMPARE(room.button("cancel")->text(), qs("Закрыть"));
    QVERIFY(room.leave());
    QCOMPARE(room.events("written"), QStringList("written: {}"));
    QCOMPARE(room.events("violation"), QStringList());
}

void TestNervaConfigDialog::changedFieldsAreWrittenAndReadAgain()
{
    const NervaRoom room;
    QVERIFY(room.read());
    room.type("gw", "192.168.0.2");
    room.type("mac", "02:00:00:00:00:02");
    QTest::keyClick(room.find<QComboBox>("sys_mode"), Qt::Key_Down);
    room.find<QSpinBox>("remote_port")->setValue(6000);
    QVERIFY(room.write());
    QCOMPARE(
        room.events("written"),
        QStringList("written: {mac:\"02:00:00:00:00:02\",gw:\"192.168.0.2\",sys_mode:1,remote_port:6000}"));
    QCOMPARE(room.events("stored"), QStringList());
    QVERIFY(room.read());
    QCOMPARE(room.dialog->cfgDataStr[NervaGateway], qs("192.168.0.2"));
    QCOMPARE(room.field("gw"), qs("192.168.0.2"));
    QCOMPARE(room.number("remote_port"), 6000);
    QCOMPARE(room.choice("sys_mode"), qs("IP-TLG"));
    QVERIFY(room.leave());
    QCOMPARE(room.events("violation"), QStringList());
}

void TestNervaConfigDialog::keptValuesOutlastTheRestart()
{
    const NervaRoom room;
    QVERIFY(room.read());
    room.type("gw", "192.168.0.2");
    QVERIFY(room.write());
    room.adapter->run("restart", QString());
    QVERIFY(room.read());
    QCOMPARE(room.field("gw"), qs("192.168.0.1"));
    room.type("gw", "192.168.0.3");
    room.find<QCheckBox>("store")->setChecked(true);
    QVERIFY(room.write());
    QTRY_COMPARE(room.events("restarted").size(), 2); // by itself
    QVERIFY(room.read());
    QCOMPARE(room.field("gw"), qs("192.168.0.3"));
    QVERIFY(room.leave());
    QCOMPARE(room.events("violation"), QStringList());
}

void TestNervaConfigDialog::refusedValueWritesNothing()
{
    const NervaRoom room;
    QVERIFY(room.read());
    room.type("gw", "192.168.0.2");
    room.type("netmask", "24");
    QVERIFY(room.write());
    QCOMPARE(room.logged().mid(5), (QStringList{"*** make json string", "Некорректная MASK"}));
    QCOMPARE(room.button("cancel")->text(), qs("Отменить"));
    QVERIFY(room.leave());
    QCOMPARE(room.events("written"), QStringList());
}

void TestNervaConfigDialog::badAccessAddressIsLeftOut()
{
    const NervaRoom room;
    QVERIFY(room.read());
    room.type("http_access", "10.0.0/8");
    QVERIFY(room.write());
    QCOMPARE(room.logged().mid(5),
             (QStringList{"*** make json string", "http_access: no write",
                          " *** Write. Use " + room.adapter->place(), "{}", "--- End write cfg"}));
    room.type("http_access", "10.0.0.1/255.0.0.0");
    QVERIFY(room.write());
    QCOMPARE(room.events("written").last(), qs("written: {http_access:\"10.0.0.1/255.0.0.0\"}"));
    QVERIFY(room.leave());
    QCOMPARE(room.events("violation"), QStringList());
}

void TestNervaConfigDialog::groupsFollowTheMode_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<int>("connection");
    QTest::addColumn<QString>("shown"); // line, connection, remote addresses, time-out
    row("USB-TLG", 0, 0, qs("line"));
    row("IP-TLG, client", 1, 0, qs("line connection remote timeout"));
    row("IP-TLG, server", 1, 1, qs("line connection timeout"));
    row("IP-TLG, server with flow", 1, 2, qs("line connection timeout"));
    row("IP-TLG, UDP-Bicom", 1, 3, qs("line connection remote"));
    row("IP-TLG, UDP", 1, 4, qs("line connection remote"));
    row("USB-IP", 2, 0, qs("connection remote timeout"));
}

void TestNervaConfigDialog::groupsFollowTheMode()
{
    QFETCH(int, direction);
    QFETCH(int, connection);
    QFETCH(QString, shown);
    const NervaRoom room;
    room.find<QComboBox>("sys_mode")->setCurrentIndex(direction);
    room.find<QComboBox>("ip_mode")->setCurrentIndex(connection);
    QStringList found;
    const auto look = [&](const char *name, const char *word) {
        if (room.find<QWidget>(name)->isVisibleTo(room.dialog.get()))
            found << word;
    };
    look("tlg_baud", "line");
    look("ip_mode", "connection");
    look("remote_ip", "remote");
    look("tcp_timeout", "timeout");
    QCOMPARE(found.join(' '), shown);
    QCOMPARE(room.find<QWidget>("remote2_port")->isVisibleTo(room.dialog.get()), shown.contains("remote"));
    for (const char *name : {"mac", "local_port", "http_port", "http_access"})
        QVERIFY(room.find<QWidget>(name)->isVisibleTo(room.dialog.get()));
}

void TestNervaConfigDialog::logKeyTogglesThePane_data()
{
    QTest::addColumn<QString>("focus");
    for (const char *name : {"sys_mode", "mac", "local_port", "log", "store", "read"})
        row(name, qs(name));
}

void TestNervaConfigDialog::logKeyTogglesThePane()
{
    QFETCH(QString, focus);
    const NervaRoom room;
    auto *control = room.dialog->findChild<QWidget *>(focus);
    for (const bool visible : {false, true}) {
        QTest::keyClick(control, Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(room.pane()->isVisible(), visible);
    }
    QTest::keyClick(control, Qt::Key_L, Qt::ControlModifier);
    QVERIFY(room.pane()->isVisible());
}

void TestNervaConfigDialog::everyControlIsReachedByTab()
{
    const NervaRoom room;
    room.find<QComboBox>("sys_mode")->setCurrentIndex(1);
    QVERIFY(QTest::qWaitForWindowActive(room.dialog.get()));
    QStringList reached;
    for (int i = 0; i < 40 && !reached.contains(room.dialog->focusWidget()->objectName()); ++i) {
        reached << room.dialog->focusWidget()->objectName();
        QTest::keyClick(room.dialog->focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(
        reached.join(' '),
        qs("sys_mode tlg_type tlg_baud ip_mode tcp_timeout remote_ip remote_port remote2_ip remote2_port mac "
           "eth_spd local_ip netmask gw local_port http_port http_mode http_access sn ver log store "
           "read write cancel"));
}

void TestNervaConfigDialog::smallWindowScrollsToEachControl()
{
    const NervaRoom room;
    room.find<QComboBox>("sys_mode")->setCurrentIndex(1);
    room.dialog->resize(380, 300);
    QVERIFY(QTest::qWaitForWindowActive(room.dialog.get()));
    for (int i = 0; i < 17; ++i) {
        QWidget *field = room.dialog->focusWidget();
        QTRY_VERIFY2(!field->visibleRegion().isEmpty(), qPrintable(field->objectName()));
        QTest::keyClick(field, Qt::Key_Tab);
    }
    for (const char *name : {"read", "write", "cancel", "store", "log", "sn"})
        QVERIFY(!room.find<QWidget>(name)->visibleRegion().isEmpty());
}

void TestNervaConfigDialog::buttonHasTheKeyboardAgainBehindItsWork()
{
    const NervaRoom room;
    QVERIFY(QTest::qWaitForWindowActive(room.dialog.get()));
    for (const char *name : {"read", "write"}) {
        room.button(name)->setFocus();
        QTest::keyClick(room.button(name), Qt::Key_Space);
        QVERIFY(!room.button(name)->isEnabled());
        QVERIFY(room.done());
        QCOMPARE(room.dialog->focusWidget()->objectName(), qs(name));
    }
    QVERIFY(room.leave());
}

void TestNervaConfigDialog::enterStartsNothing()
{
    const NervaRoom room;
    QTest::keyClick(room.find<QLineEdit>("mac"), Qt::Key_Return);
    QTest::keyClick(room.find<QComboBox>("sys_mode"), Qt::Key_Return);
    QTest::qWait(50);
    QCOMPARE(room.pane()->toPlainText(), QString());
    QVERIFY(room.dialog->isVisible());
}

void TestNervaConfigDialog::olderFirmwareShowsTheUpgrade_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<bool>("shown");
    row("older", qs("260531"), true);
    row("the same", qs("260601"), false);
}

void TestNervaConfigDialog::olderFirmwareShowsTheUpgrade()
{
    QFETCH(QString, version);
    QFETCH(bool, shown);
    const NervaRoom room(NervaFault::None, {{"ver", version}});
    QVERIFY(room.read());
    QCOMPARE(room.button("upgrade")->isVisible(), shown);
    QCOMPARE(room.logged().last(), shown ? qs("need upgrade fw") : qs("Check"));
    QVERIFY(room.leave());
}

QTEST_MAIN(TestNervaConfigDialog)
#include "test_nerva_config_dialog.moc"
