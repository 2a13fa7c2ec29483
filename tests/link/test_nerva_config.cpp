// The texts of an Ethernet adapter's configuration: what is read from one, and what of a form is written.

#include "link/nerva_config.h"
#include "tests/support/row.h"

#include <QtTest>

#include <functional>

using Change = std::function<void(NervaValues &)>;
Q_DECLARE_METATYPE(Change)

class TestNervaConfig : public QObject
{
    Q_OBJECT

private slots:
    void keysStandInTheOrderOfTheReply();
    void replyIsReadKeyByKey();
    void valueOfAnotherFormIsEmpty_data();
    void valueOfAnotherFormIsEmpty();
    void restOfAnotherReplyInFrontIsPassedOver();
    void nothingChangedIsEmptyBraces();
    void everyFieldGoesInItsOrder();
    void changedFieldGoesAlone_data();
    void changedFieldGoesAlone();
    void fieldThatTheFormCouldNotShowStays();
    void fieldPutBackDoesNotGo();
    void serialGoesIfAnotherWasRead();
    void refusedValueStopsTheWholeWrite_data();
    void refusedValueStopsTheWholeWrite();
    void macOfSixBytesPasses_data();
    void macOfSixBytesPasses();
    void accessAddress_data();
    void accessAddress();
    void badAccessAddressStaysBehindTheOthers();
    void unchangedValueIsNotJudged();
    void upgrade_data();
    void upgrade();
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}

const QByteArray Reply =
    "{v:2,ver:260601,mac:\"02:00:00:00:00:01\",eth_spd:4,local_ip:\"192.168.0.20\","
    "gw:\"192.168.0.1\",netmask:\"255.255.255.0\",local_port:5674,tlg_baud:50,tlg_type:1,"
    "ip_mode:0,tcp_timeout:30,sys_mode:1,remote_ip:\"192.168.0.30\",remote_port:5675,"
    "remote2_ip:\"192.168.0.31\",remote2_port:5676,http_mode:1,http_port:80,"
    "http_access:\"192.168.0.0/255.255.255.0\",sn:\"30000001\"}";

/// What is written of a form that shows the reply, after \a change.
NervaChange changed(const Change &change)
{
    const NervaValues read = nervaValuesOf(Reply);
    NervaValues form = read;
    change(form);
    return nervaChange(form, read, read);
}
} // namespace

void TestNervaConfig::keysStandInTheOrderOfTheReply()
{
    const char *const expected[] = {
        "v",           "ver",        "mac",          "eth_spd",   "local_ip",    "gw",          "netmask",
        "local_port",  "tlg_baud",   "tlg_type",     "ip_mode",   "tcp_timeout", "sys_mode",    "remote_ip",
        "remote_port", "remote2_ip", "remote2_port", "http_mode", "http_port",   "http_access", "sn"};
    QCOMPARE(int(NervaKeyCount), 21);
    for (int i = 0; i < 21; ++i)
        QCOMPARE(cfg_name[i], expected[i]);
}

void TestNervaConfig::replyIsReadKeyByKey()
{
    const NervaValues values = nervaValuesOf(Reply);
    QCOMPARE(QStringList(values.begin(), values.end()), (QStringList{"2",
                                                                     "260601",
                                                                     "02:00:00:00:00:01",
                                                                     "4",
                                                                     "192.168.0.20",
                                                                     "192.168.0.1",
                                                                     "255.255.255.0",
                                                                     "5674",
                                                                     "50",
                                                                     "1",
                                                                     "0",
                                                                     "30",
                                                                     "1",
                                                                     "192.168.0.30",
                                                                     "5675",
                                                                     "192.168.0.31",
                                                                     "5676",
                                                                     "1",
                                                                     "80",
                                                                     "192.168.0.0/255.255.255.0",
                                                                     "30000001"}));
}

void TestNervaConfig::valueOfAnotherFormIsEmpty_data()
{
    QTest::addColumn<QByteArray>("reply");
    row("key in quotes", QByteArray("{\"mac\":\"02:00:00:00:00:01\"}"));
    row("negative", QByteArray("{mac:-1}"));
    row("literal", QByteArray("{mac:true}"));
    row("list", QByteArray("{mac:[1]}"));
    row("text without its end", QByteArray("{mac:\"02}"));
    row("no colon", QByteArray("{mac 5}"));
    row("behind another letter", QByteArray("{xmac:5}"));
    row("no braces", QByteArray("mac:5"));
    row("nothing", QByteArray());
}

void TestNervaConfig::valueOfAnotherFormIsEmpty()
{
    QFETCH(QByteArray, reply);
    QCOMPARE(nervaValuesOf(reply)[NervaMac], QString());
}

// A reply that has been torn is asked for again, and the line talks until the first question.
void TestNervaConfig::restOfAnotherReplyInFrontIsPassedOver()
{
    QCOMPARE(nervaValuesOf(Reply.left(70) + Reply), nervaValuesOf(Reply));
    QCOMPARE(nervaValuesOf("\x2F\x8F\x05" + Reply + "{v:7"), nervaValuesOf(Reply));
}

void TestNervaConfig::nothingChangedIsEmptyBraces()
{
    const NervaChange change = changed([](NervaValues &) {});
    QCOMPARE(change.text, QByteArray("{}"));
    QCOMPARE(change.refusal, QString());
    QCOMPARE(change.notes, QStringList());
}

void TestNervaConfig::everyFieldGoesInItsOrder()
{
    const NervaValues form = {"9",         "9",        "02:00:00:00:00:02",
                              "1",         "10.0.0.2", "10.0.0.1",
                              "255.0.0.0", "6000",     "200",
                              "2",         "3",        "9",
                              "2",         "10.0.0.3", "6001",
                              "10.0.0.4",  "6002",     "2",
                              "8080",      "10.0.0.5", "30000002"};
    QCOMPARE(nervaChange(form, nervaValuesOf(Reply), nervaValuesOf(Reply)).text,
             QByteArray("{mac:\"02:00:00:00:00:02\",eth_spd:1,local_ip:\"10.0.0.2\",netmask:\"255.0.0.0\","
                        "gw:\"10.0.0.1\",local_port:6000,sys_mode:2,tlg_type:2,tlg_baud:200,ip_mode:3,"
                        "tcp_timeout:9,remote_ip:\"10.0.0.3\",remote_port:6001,remote2_ip:\"10.0.0.4\","
                        "remote2_port:6002,http_port:8080,http_mode:2,http_access:\"10.0.0.5\","
                        "sn:\"30000002\"}"));
}

void TestNervaConfig::changedFieldGoesAlone_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QByteArray>("text");
    row("text", int(NervaGateway), qs("10.0.0.1"), QByteArray("{gw:\"10.0.0.1\"}"));
    row("number", int(NervaLocalPort), qs("65535"), QByteArray("{local_port:65535}"));
    row("number 0", int(NervaRemotePort), qs("0"), QByteArray("{remote_port:0}"));
    row("index", int(NervaSysMode), qs("2"), QByteArray("{sys_mode:2}"));
    row("speed", int(NervaTlgBaud), qs("200"), QByteArray("{tlg_baud:200}"));
}

void TestNervaConfig::changedFieldGoesAlone()
{
    QFETCH(int, key);
    QFETCH(QString, value);
    QFETCH(QByteArray, text);
    QCOMPARE(changed([&](NervaValues &form) { form[size_t(key)] = value; }).text, text);
}

// As it has: a speed of 7 as the fastest, an address of the card of 16 characters not at all.
void TestNervaConfig::fieldThatTheFormCouldNotShowStays()
{
    NervaValues read = nervaValuesOf(Reply);
    NervaValues form = read;
    read[NervaEthSpeed] = "7";
    read[NervaMac] = "02:00:00:00:00:0";
    form[NervaMac].clear();
    QCOMPARE(nervaChange(form, read, form).text, QByteArray("{}"));
}

void TestNervaConfig::fieldPutBackDoesNotGo()
{
    const NervaValues read = nervaValuesOf(Reply);
    NervaValues shown = read;
    shown[NervaEthSpeed] = "2";
    QCOMPARE(nervaChange(read, read, shown).text, QByteArray("{}"));
}

void TestNervaConfig::serialGoesIfAnotherWasRead()
{
    QCOMPARE(changed([](NervaValues &form) { form[NervaSn] = "30000009"; }).text,
             QByteArray("{sn:\"30000009\"}"));
}

void TestNervaConfig::refusedValueStopsTheWholeWrite_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("message");
    row("mac of five bytes", int(NervaMac), qs("02:00:00:00:01"), qs("Некорректный MAC"));
    row("mac of seven bytes", int(NervaMac), qs("02:00:00:00:00:00:01"), qs("Некорректный MAC"));
    row("mac with a letter", int(NervaMac), qs("02:00:00:00:00:0G"), qs("Некорректный MAC"));
    row("mac of eleven digits", int(NervaMac), qs("02:00:00:00:00:1"), qs("Некорректный MAC"));
    row("mac empty", int(NervaMac), QString(), qs("Некорректный MAC"));
    row("local_ip", int(NervaLocalIp), qs("192.168.0.256"), qs("Некорректный IP"));
    row("local_ip of three figures", int(NervaLocalIp), qs("192.168.0"), qs("Некорректный IP"));
    row("remote_ip", int(NervaRemoteIp), qs("::1"), qs("Некорректный IP"));
    row("remote2_ip", int(NervaRemote2Ip), QString(), qs("Некорректный IP"));
    row("netmask", int(NervaNetmask), qs("24"), qs("Некорректная MASK"));
    row("gw", int(NervaGateway), qs("192.168.0.1 "), qs("Некорректный GW"));
    row("gw with a zero in front", int(NervaGateway), qs("010.0.0.1"), qs("Некорректный GW"));
    row("local_port", int(NervaLocalPort), qs("0"), qs("Некорректный PORT"));
}

void TestNervaConfig::refusedValueStopsTheWholeWrite()
{
    QFETCH(int, key);
    QFETCH(QString, value);
    QFETCH(QString, message);
    const NervaChange change = changed([&](NervaValues &form) {
        form[NervaSysMode] = "2";
        form[size_t(key)] = value;
    });
    QCOMPARE(change.refusal, message);
    QCOMPARE(change.text, QByteArray());
}

void TestNervaConfig::macOfSixBytesPasses_data()
{
    QTest::addColumn<QString>("mac");
    row("colons", qs("02:00:00:00:00:fE"));
    row("hyphens", qs("02-00-00-00-00-FE"));
    row("digits alone", qs("0200000000FE"));
}

void TestNervaConfig::macOfSixBytesPasses()
{
    QFETCH(QString, mac);
    QCOMPARE(changed([&](NervaValues &form) { form[NervaMac] = mac; }).text,
             "{mac:\"" + mac.toLatin1() + "\"}");
}

void TestNervaConfig::accessAddress_data()
{
    QTest::addColumn<QString>("access");
    QTest::addColumn<bool>("passes");
    row("address", qs("10.0.0.1"), true);
    row("address and mask", qs("10.0.0.1/255.0.0.0"), true);
    row("half an address", qs("10.0.0/8"), false);
    row("bits", qs("10.0.0.0/8"), false);
    row("nothing", QString(), false);
    row("no mask", qs("10.0.0.1/"), false);
    row("two masks", qs("10.0.0.1/255.0.0.0/255.0.0.0"), false);
}

void TestNervaConfig::accessAddress()
{
    QFETCH(QString, access);
    QFETCH(bool, passes);
    const NervaChange change = changed([&](NervaValues &form) { form[NervaHttpAccess] = access; });
    QCOMPARE(change.text, passes ? "{http_access:\"" + access.toLatin1() + "\"}" : QByteArray("{}"));
    QCOMPARE(change.notes, passes ? QStringList() : QStringList(qs("http_access: no write")));
    QCOMPARE(change.refusal, QString());
}

void TestNervaConfig::badAccessAddressStaysBehindTheOthers()
{
    const NervaChange change = changed([](NervaValues &form) {
        form[NervaHttpPort] = "81";
        form[NervaHttpAccess] = "10.0.0/8";
        form[NervaSn] = "30000002";
    });
    QCOMPARE(change.text, QByteArray("{http_port:81,sn:\"30000002\"}"));
}

void TestNervaConfig::unchangedValueIsNotJudged()
{
    NervaValues read = nervaValuesOf(Reply);
    read[NervaLocalPort] = "0";
    read[NervaRemote2Ip].clear();
    NervaValues form = read;
    form[NervaSysMode] = "0";
    QCOMPARE(nervaChange(form, read, read).text, QByteArray("{sys_mode:0}"));
}

void TestNervaConfig::upgrade_data()
{
    QTest::addColumn<QString>("sn");
    QTest::addColumn<QString>("version");
    QTest::addColumn<bool>("needed");
    row("older", qs("30000001"), qs("260600"), true);
    row("the program's", qs("30000001"), qs("260601"), false);
    row("newer", qs("30000001"), qs("260602"), false);
    row("not told", qs("30000001"), QString(), true);
    row("another class", qs("10000001"), qs("1"), false);
    row("no serial", QString(), qs("1"), false);
}

void TestNervaConfig::upgrade()
{
    QFETCH(QString, sn);
    QFETCH(QString, version);
    QFETCH(bool, needed);
    NervaValues values;
    values[NervaSn] = sn;
    values[NervaVer] = version;
    QCOMPARE(needsNervaUpgrade(values), needed);
}

QTEST_GUILESS_MAIN(TestNervaConfig)
#include "test_nerva_config.moc"
