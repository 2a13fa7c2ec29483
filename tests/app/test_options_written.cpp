#include "app/options.h"
#include "tests/support/desk.h"
#include "text/mtk2.h"

#include <QtTest>

/// What Save() writes under a condition, under another key than Load() reads, or not at all.
class TestOptionsWritten : public QObject
{
    Q_OBJECT

private slots:
    void addressOfTheDialogIsGoneAfterARestart();
    void inputDialogsPositionIsWrittenOverTheOutputDialogs();
    void positionsAreWrittenOnlyWhileKept();
    void changedTreloSNIsNotWrittenOverTcp();
    void tcpKeysAreNotWrittenOverTheAdapter();
    void perforatorKeysAreWrittenOnlyWithAPerforator();
};

namespace
{
/// The lines of velda.ini that begin with \a key, of whatever section.
QStringList linesOf(const Desk &desk, const QString &key)
{
    return QString::fromLatin1(desk.readText("velda.ini"))
        .split('\n')
        .filter(QRegularExpression("^" + key + "="));
}

QStringList linesOf(const Desk &desk, const char *key)
{
    return linesOf(desk, QString::fromLatin1(key));
}
} // namespace

void TestOptionsWritten::addressOfTheDialogIsGoneAfterARestart()
{
    const Desk desk;
    Options.Load();
    Options.Host = QStringLiteral("10.0.0.1");
    Options.Port = 6000;
    Options.autoPrintMode = 3;
    Options.Save();
    QCOMPARE(linesOf(desk, "Host"), QStringList("Host=10.0.0.1"));
    QCOMPARE(linesOf(desk, "Port"), QStringList("Port=6000"));
    QCOMPARE(linesOf(desk, "CKS_autoPrintMode"), QStringList("CKS_autoPrintMode=3"));

    Options.Load(); // as the next process does
    QCOMPARE(Options.Host, QStringLiteral("127.0.0.1"));
    QCOMPARE(Options.Port, 5674);
    QCOMPARE(Options.autoPrintMode, 0);

    // Keys put into the file by hand decide. They stand there in the escaped form of the Cyrillic words.
    QByteArray content = desk.readText("velda.ini");
    content.replace("[CONNECT]\n", "[CONNECT]\n%U0410%U0434%U0440%U0435%U0441=10.9.9.9\n"
                                   "%U041F%U043E%U0440%U0442=7777\n");
    content.replace("[CORVA]\n", "[CORVA]\nautoPrintMode=2\n");
    desk.write("velda.ini", content);
    Options.Load();
    QCOMPARE(Options.Host, QStringLiteral("10.9.9.9"));
    QCOMPARE(Options.Port, 7777);
    QCOMPARE(Options.autoPrintMode, 2);
}

void TestOptionsWritten::inputDialogsPositionIsWrittenOverTheOutputDialogs()
{
    const Desk desk;
    Options.Load();
    Options.geometryPerforatorOut = QRect(1, 2, 30, 40);
    Options.geometryPerforatorIn = QRect(5, 6, 70, 80);
    Options.Save();
    QCOMPARE(linesOf(desk, "geometryPerforatorOut"), QStringList("geometryPerforatorOut=@Rect(5 6 70 80)"));
    QVERIFY(linesOf(desk, "geometryPerforatorIn").isEmpty());

    desk.write("velda.ini",
               "[WINDOW]\ngeometryPerforatorOut=@Rect(1 2 3 4)\ngeometryPerforatorIn=@Rect(5 6 7 8)\n");
    Options.Load();
    QCOMPARE(Options.geometryPerforatorOut, QRect(1, 2, 3, 4));
    QCOMPARE(Options.geometryPerforatorIn, QRect(5, 6, 7, 8));
}

void TestOptionsWritten::positionsAreWrittenOnlyWhileKept()
{
    const Desk desk;
    Options.Load();
    Options.saveWindowPos = false;
    Options.Save();
    QVERIFY(linesOf(desk, "geometry\\w+").isEmpty());
    QCOMPARE(linesOf(desk, "saveWindowPos"), QStringList("saveWindowPos=false"));

    Options.saveWindowPos = true;
    Options.Save();
    QCOMPARE(linesOf(desk, "geometry\\w+").size(), 7);
    QCOMPARE(linesOf(desk, "geometryMainForm"), QStringList("geometryMainForm=@Rect(0 0 800 600)"));
    QCOMPARE(linesOf(desk, "geometryOptions"), QStringList("geometryOptions=@Rect(0 0 0 0)"));
}

void TestOptionsWritten::changedTreloSNIsNotWrittenOverTcp()
{
    const Desk desk;
    desk.write("velda.ini", "[CONNECT]\nTcpMode=true\nTRELO_SN=old\n");
    Options.Load();
    Options.TRELO_SN = QStringLiteral("new");
    Options.Save();
    QCOMPARE(linesOf(desk, "TRELO_SN"), QStringList("TRELO_SN=old"));
    for (const char *key : {"autodetectPortTrelo", "tlgBaud", "tlgSig"})
        QVERIFY2(linesOf(desk, key).isEmpty(), key);
    for (const char *key : {"Host", "AsTspSrv", "Port", "TimeOut"})
        QVERIFY2(linesOf(desk, key).size() == 1, key);
}

void TestOptionsWritten::tcpKeysAreNotWrittenOverTheAdapter()
{
    const Desk desk;
    desk.write("velda.ini", "[CONNECT]\nTcpMode=false\nTimeOut=99\n");
    Options.Load();
    Options.TimeOut = 5;
    Options.TRELO_SN = QStringLiteral("new");
    Options.Save();
    QCOMPARE(linesOf(desk, "TimeOut"), QStringList("TimeOut=99"));
    for (const char *key : {"Host", "AsTspSrv", "Port"})
        QVERIFY2(linesOf(desk, key).isEmpty(), key);
    QCOMPARE(linesOf(desk, "TRELO_SN"), QStringList("TRELO_SN=new"));
    for (const char *key : {"autodetectPortTrelo", "tlgBaud", "tlgSig"})
        QVERIFY2(linesOf(desk, key).size() == 1, key);
}

void TestOptionsWritten::perforatorKeysAreWrittenOnlyWithAPerforator()
{
    const Desk desk;
    Options.Load();
    Options.SOREL_SN = QStringLiteral("20");
    Options.Save();
    QCOMPARE(linesOf(desk, "usePrf"), QStringList("usePrf=false"));
    for (const char *key : {"SOREL_SN", "autodetectPortSorel", "prfBaudIndex"})
        QVERIFY2(linesOf(desk, key).isEmpty(), key);

    Options.usePrf = true;
    Options.Save();
    QCOMPARE(linesOf(desk, "SOREL_SN"), QStringList("SOREL_SN=20"));
    QCOMPARE(linesOf(desk, "autodetectPortSorel"), QStringList("autodetectPortSorel=false"));
    QCOMPARE(linesOf(desk, "prfBaudIndex"), QStringList("prfBaudIndex=0"));
}

QTEST_MAIN(TestOptionsWritten)
#include "test_options_written.moc"
