#include "app/options.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"
#include "text/mtk2.h"

#include <QtTest>

/// What Load() and Save() do beyond one key for one field. Files are written and read as bytes.
class TestOptionsRules : public QObject
{
    Q_OBJECT

private slots:
    void processModeDecides_data();
    void processModeDecides();
    void fileWithOnlyCKSModeStartsInCKSAndWritesProcessMode0();
    void processMode3IsAcceptedAndInForce();
    void saveWritesTheConfiguredProcessMode();

    void centreTypeGivesTheLengthOfTheLongAnswerback_data();
    void centreTypeGivesTheLengthOfTheLongAnswerback();
    void customLengthIsRead();
    void lengthIsIgnoredUnlessCustom();

    void emptyFontTextGivesMonospace();
    void fontTextIsApplied();
    void damagedFontTextGivesAUsableFont();
    void fontsAreWrittenAsTheirTexts();

    void editorInterfaceModes10LeavesTheFurtherRows();
    void editorInterfaceModes_data();
    void editorInterfaceModes();
    void editorInterfaceModesAreWrittenAsFiveCharacters();
    void firstStartBeginsWithTheFormOfATelegram();
    void fileWithoutAFormBeginsWithMessages();

    void addressWithPrefixMakesThisSideListen_data();
    void addressWithPrefixMakesThisSideListen();

    void saveSelectsTheCodeTable();
    void loadSelectsTheCodeTable();
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

void TestOptionsRules::processModeDecides_data()
{
    QTest::addColumn<QByteArray>("keys");
    QTest::addColumn<int>("mode");
    row("0", QByteArray("processMode=0"), 0);
    row("1", QByteArray("processMode=1"), 1);
    row("2", QByteArray("processMode=2"), 2);
    row("3", QByteArray("processMode=3"), 3);
    row("0 before CKSMode", QByteArray("processMode=0\nCKSMode=false"), 0);
    row("2 before CKSMode", QByteArray("processMode=2\nCKSMode=true"), 2);
    row("4 gives way", QByteArray("processMode=4"), 1);
    row("4 gives way to CKSMode", QByteArray("processMode=4\nCKSMode=true"), 0);
    row("-1 gives way to CKSMode", QByteArray("processMode=-1\nCKSMode=true"), 0);
    row("CKSMode false", QByteArray("CKSMode=false"), 1);
    row("neither", QByteArray(), 1);
    row("letters are 0", QByteArray("processMode=abc"), 0);
}

void TestOptionsRules::processModeDecides()
{
    QFETCH(QByteArray, keys);
    QFETCH(int, mode);
    const Desk desk;
    desk.write("velda.ini", "[CONNECT]\n" + keys + "\n");
    Options.Load();
    QCOMPARE(Options.processMode, mode);
    QCOMPARE(Options.processModeConfigured, mode);
}

void TestOptionsRules::fileWithOnlyCKSModeStartsInCKSAndWritesProcessMode0()
{
    const Desk desk;
    desk.write("velda.ini", "[CONNECT]\nCKSMode=true\n");
    Options.Load();
    QCOMPARE(Options.processMode, 0);
    Options.Save();
    QCOMPARE(linesOf(desk, "processMode"), QStringList("processMode=0"));
    QCOMPARE(linesOf(desk, "CKSMode"), QStringList("CKSMode=true")); // left in the file as it was
}

void TestOptionsRules::processMode3IsAcceptedAndInForce()
{
    const Desk desk;
    desk.write("velda.ini", "[CONNECT]\nprocessMode=3\nCKSMode=true\n");
    Options.Load();
    QCOMPARE(Options.processMode, 3);
    Options.Save();
    QCOMPARE(linesOf(desk, "processMode"), QStringList("processMode=3"));
}

void TestOptionsRules::saveWritesTheConfiguredProcessMode()
{
    const Desk desk;
    desk.write("velda.ini", "[CONNECT]\nprocessMode=0\n");
    Options.Load();
    Options.processModeConfigured = 2;
    Options.Save();
    QCOMPARE(linesOf(desk, "processMode"), QStringList("processMode=2"));
    QCOMPARE(Options.processMode, 0); // fixed for the run
}

void TestOptionsRules::centreTypeGivesTheLengthOfTheLongAnswerback_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("length");
    row("Doral", 0, 50);
    row("СТИН", 1, 48);
    row("СТИН-кАО", 2, 48);
    row("ТТ-СОФТ", 3, 58);
    row("Нестандарт", 4, 60);
    row("foreign, above", 5, 0);
    row("foreign, below", -1, 0);
}

void TestOptionsRules::centreTypeGivesTheLengthOfTheLongAnswerback()
{
    QFETCH(int, type);
    QFETCH(int, length);
    const Desk desk;
    desk.write("velda.ini", "[DORAL]\nCKS_Type=" + QByteArray::number(type) + "\n");
    Options.Load();
    QCOMPARE(Options.CKS_LongAOLength, length);
    Options.Save();
    QCOMPARE(linesOf(desk, "CKS_LongAOLength"),
             QStringList(QStringLiteral("CKS_LongAOLength=%1").arg(length)));
}

void TestOptionsRules::customLengthIsRead()
{
    const Desk desk;
    desk.write("velda.ini", "[DORAL]\nCKS_Type=3\nCKS_LongAOLengthCustom=true\nCKS_LongAOLength=77\n");
    Options.Load();
    QCOMPARE(Options.CKS_LongAOLength, 77);
    desk.write("velda.ini", "[DORAL]\nCKS_Type=3\nCKS_LongAOLengthCustom=true\n");
    Options.Load();
    QCOMPARE(Options.CKS_LongAOLength, 50);
}

void TestOptionsRules::lengthIsIgnoredUnlessCustom()
{
    const Desk desk;
    desk.write("velda.ini", "[DORAL]\nCKS_Type=3\nCKS_LongAOLength=77\n");
    Options.Load();
    QCOMPARE(Options.CKS_LongAOLength, 58);
}

void TestOptionsRules::emptyFontTextGivesMonospace()
{
    const Desk desk;
    desk.write("velda.ini", "[WINDOW]\nprotocolFont=\n");
    Options.protocolFont = Options.tlgFont = Options.PrinterFont = QFont("Serif", 30);
    Options.Load();
    for (const QFont &font : {Options.protocolFont, Options.tlgFont, Options.PrinterFont}) {
        QCOMPARE(font.family(), QStringLiteral("Monospace"));
        QCOMPARE(font.pointSize(), 12);
        QCOMPARE(font.styleHint(), QFont::Courier);
        QCOMPARE(font.styleStrategy(), QFont::PreferDefault);
    }
}

void TestOptionsRules::fontTextIsApplied()
{
    const Desk desk;
    desk.write("velda.ini", "[WINDOW]\nprotocolFont=\"Serif,17,-1,5,75,1,0,0,0,0\"\n"
                            "tlgFont=\"Sans,9,-1,5,50,0,0,0,0,0\"\n"
                            "[PRINT]\nPrinterFont=\"Fixed,11,-1,5,50,0,1,0,0,0\"\n");
    Options.Load();
    QCOMPARE(Options.protocolFont.family(), QStringLiteral("Serif"));
    QCOMPARE(Options.protocolFont.pointSize(), 17);
    QVERIFY(Options.protocolFont.bold());
    QVERIFY(Options.protocolFont.italic());
    QCOMPARE(Options.tlgFont.family(), QStringLiteral("Sans"));
    QCOMPARE(Options.tlgFont.pointSize(), 9);
    QCOMPARE(Options.PrinterFont.family(), QStringLiteral("Fixed"));
    QVERIFY(Options.PrinterFont.underline());
}

void TestOptionsRules::damagedFontTextGivesAUsableFont()
{
    const Desk desk;
    desk.write("velda.ini", "[WINDOW]\nprotocolFont=\"Serif,17,-1\"\n");
    QTest::ignoreMessage(QtWarningMsg, "QFont::fromString: Invalid description 'Serif,17,-1'");
    Options.Load();
    QCOMPARE(Options.protocolFont.pointSize(), 12);
}

void TestOptionsRules::fontsAreWrittenAsTheirTexts()
{
    const Desk desk;
    Options.Load();
    Options.protocolFont = QFont("Serif", 17);
    Options.Save();
    QCOMPARE(linesOf(desk, "protocolFont"), QStringList("protocolFont=\"Serif,17,-1,5,50,0,0,0,0,0\""));
    QCOMPARE(linesOf(desk, "tlgFont").size(), 1);
    QCOMPARE(linesOf(desk, "PrinterFont").size(), 1);
}

void TestOptionsRules::editorInterfaceModes10LeavesTheFurtherRows()
{
    const Desk desk;
    desk.write("velda.ini", "[EDITOR]\neditorInterfaceModes=10\n");
    Options.Load();
    QVERIFY(Options.interfaceModes[0].enabled);
    QVERIFY(!Options.interfaceModes[1].enabled);
    QVERIFY(Options.interfaceModes[2].enabled);
    QVERIFY(!Options.interfaceModes[3].enabled);
    QVERIFY(!Options.interfaceModes[4].enabled);
}

void TestOptionsRules::editorInterfaceModes_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("enabled");
    row("empty", QByteArray(), "11100");
    row("all off", QByteArray("00000"), "00000");
    row("all on", QByteArray("11111"), "11111");
    row("only 1 enables", QByteArray("2xy31"), "00001");
    row("longer than the rows", QByteArray("000111111"), "00011");
}

void TestOptionsRules::editorInterfaceModes()
{
    QFETCH(QByteArray, value);
    const Desk desk;
    desk.write("velda.ini", "[EDITOR]\neditorInterfaceModes=" + value + "\n");
    Options.Load();
    QString enabled;
    for (const EditorInterfaceMode &mode : Options.interfaceModes)
        enabled += mode.enabled ? '1' : '0';
    QTEST(enabled, "enabled");
}

void TestOptionsRules::editorInterfaceModesAreWrittenAsFiveCharacters()
{
    const Desk desk;
    Options.Load();
    Options.Save();
    QCOMPARE(linesOf(desk, "editorInterfaceModes"), QStringList("editorInterfaceModes=11100"));
    Options.interfaceModes[0].enabled = false;
    Options.interfaceModes[4].enabled = true;
    Options.Save();
    QCOMPARE(linesOf(desk, "editorInterfaceModes"), QStringList("editorInterfaceModes=01101"));
}

void TestOptionsRules::firstStartBeginsWithTheFormOfATelegram()
{
    const Desk desk;
    Options.Load();
    QCOMPARE(Options.editorInterfaceMode, 1);
    Options.editorInterfaceMode = 2;
    Options.Save();
    Options.Load();
    QCOMPARE(Options.editorInterfaceMode, 2);
}

void TestOptionsRules::fileWithoutAFormBeginsWithMessages()
{
    const Desk desk;
    desk.write("velda.ini", "[CONNECT]\nprocessMode=1\n");
    Options.Load();
    QCOMPARE(Options.editorInterfaceMode, 0);
}

void TestOptionsRules::addressWithPrefixMakesThisSideListen_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("host");
    QTest::addColumn<bool>("listens");
    row("with the prefix", "S:10.0.0.5", "10.0.0.5", true);
    row("three characters suffice", "S:1", "1", true);
    row("the prefix alone is stored as it stands", "S:", "S:", false);
    row("without", "10.0.0.5", "10.0.0.5", false);
    row("small letter", "s:10.0.0.5", "s:10.0.0.5", false);
    row("nothing", "", "", false);
}

void TestOptionsRules::addressWithPrefixMakesThisSideListen()
{
    QFETCH(QString, typed);
    QFETCH(QString, host);
    QFETCH(bool, listens);
    const Desk desk;
    Options.AsTspSrv = !listens;
    Options.setAddress(typed);
    QCOMPARE(Options.Host, host);
    QCOMPARE(Options.AsTspSrv, listens);
}

void TestOptionsRules::saveSelectsTheCodeTable()
{
    const Desk desk;
    Options.Load();
    Options.nationalLanguageUse = 2;
    Options.Save();
    QVERIFY(fromMTKcode == fromMTKcode_GEORGIAN);
    Options.nationalLanguageUse = 0;
    Options.Save();
    QVERIFY(fromMTKcode == fromMTKcode_RUSSIAN);
}

void TestOptionsRules::loadSelectsTheCodeTable()
{
    const Desk desk;
    desk.write("velda.ini", "[OTHER]\nnationalLanguageUse=2\n");
    Options.Load();
    QVERIFY(fromMTKcode == fromMTKcode_GEORGIAN);
}

QTEST_MAIN(TestOptionsRules)
#include "test_options_rules.moc"
