#include "app/options.h"
#include "app/state.h"
#include "tests/support/full_disk.h"
#include "tests/support/no_ordinary_file.h"
#include "tests/support/row.h"

#include <QSettings>
#include <QtTest>

/// velda_state.ini: what it holds, when it is written, and what a damaged one or a failed write does.
class TestStateFile : public QObject
{
    Q_OBJECT

private slots:
    void missingFileGivesTheDefaults();
    void saveWritesOneSection();
    void loadReadsEveryKey();
    void automaticIsTheInverseOfManual();
    void previousDayIsNotInTheFile();
    void incSaves();
    void callCountersReachTheFileWithTheNextSave();
    void nameOfTheFileIsThatOfTheOptions();

    void damagedFileGivesTheDefaults_data();
    void damagedFileGivesTheDefaults();
    void figureNoDayCanReachIsTakenForDamage_data();
    void figureNoDayCanReachIsTakenForDamage();
    void countersFromADamagedFileCount();
    void fullDiskLeavesTheOldFile_data();
    void fullDiskLeavesTheOldFile();
    void unwritableDirectoryIsNoHarm();
    void draftOfAKilledProcessIsNoHarm();
    void specialFileIsNeitherReadNorReplaced_data() { specialFiles(); }
    void specialFileIsNeitherReadNorReplaced();
};

namespace
{
constexpr const char *StateFile = "velda_state.ini";

QString figures()
{
    return QStringLiteral("%1 %2 CKS %3 %4 SKK %5 %6 PK %7 %8 N %9")
        .arg(State.YYYYMMDD)
        .arg(State.manualMode ? "manual" : "automatic")
        .arg(State.CKS_in)
        .arg(State.CKS_out)
        .arg(State.SKK_in)
        .arg(State.SKK_out)
        .arg(State.PK_in)
        .arg(State.PK_out)
        .arg(State.EditorN);
}

const QString Defaults = QStringLiteral("00000000 manual CKS 0 0 SKK 0 0 PK 0 0 N 0");

void fillState()
{
    State.CKS_in = 1;
    State.CKS_out = 2;
    State.SKK_in = 3;
    State.SKK_out = 4;
    State.PK_in = 5;
    State.PK_out = 6;
    State.EditorN = 7;
}

const QByteArray Filled = "[STATE]\nCKS_in=1\nCKS_out=2\nEditorN=7\nPK_in=5\nPK_out=6\nSKK_in=3\nSKK_out=4\n"
                          "YYYYMMDD=20260731\nautomatic=true\n";
} // namespace

void TestStateFile::missingFileGivesTheDefaults()
{
    const Desk desk;
    fillState();
    State.Load();
    QCOMPARE(figures(), Defaults);
    QVERIFY(!QFile::exists(desk.path(StateFile)));
}

void TestStateFile::saveWritesOneSection()
{
    const Desk desk;
    fillState();
    State.Save();
    QCOMPARE(desk.readText(StateFile), Filled);
    QCOMPARE(desk.names(".", "velda*"), QStringList(StateFile));
}

void TestStateFile::loadReadsEveryKey()
{
    const Desk desk;
    desk.write(StateFile,
               "[STATE]\nYYYYMMDD=20251231\nautomatic=true\nCKS_in=11\nCKS_out=12\nSKK_in=13\nSKK_out=14\n"
               "PK_in=15\nPK_out=16\nEditorN=17\n");
    State.Load();
    QCOMPARE(figures(), QStringLiteral("20251231 automatic CKS 11 12 SKK 13 14 PK 15 16 N 17"));
}

void TestStateFile::automaticIsTheInverseOfManual()
{
    const Desk desk;
    State.manualMode = true;
    State.Save();
    QVERIFY(desk.readText(StateFile).contains("\nautomatic=false\n"));
    State.manualMode = false;
    State.Load();
    QVERIFY(State.manualMode);
}

void TestStateFile::previousDayIsNotInTheFile()
{
    const Desk desk;
    State.prevPK_in = State.prevPK_out = State.prevCKS_in = State.prevCKS_out = 77;
    State.Save();
    QVERIFY(!desk.readText(StateFile).contains("77"));
    QVERIFY(!desk.readText(StateFile).contains("prev"));
}

void TestStateFile::incSaves()
{
    const Desk desk;
    State.PK_in = 41;
    State.PK_out = 998;
    State.incInp();
    QVERIFY(desk.readText(StateFile).contains("\nPK_in=42\n"));
    State.incOut();
    QVERIFY(desk.readText(StateFile).contains("\nPK_out=999\n"));
    State.incOut();
    QVERIFY(desk.readText(StateFile).contains("\nPK_out=0\n"));
}

void TestStateFile::callCountersReachTheFileWithTheNextSave()
{
    const Desk desk;
    State.Save();
    State.setCallDirection(2);
    QVERIFY(desk.readText(StateFile).contains("\nSKK_out=0\n"));
    State.incInp();
    QVERIFY(desk.readText(StateFile).contains("\nSKK_out=1\n"));
}

void TestStateFile::nameOfTheFileIsThatOfTheOptions()
{
    const Desk desk;
    Options.stateFileName = QStringLiteral("other.ini");
    fillState();
    State.Save();
    QCOMPARE(desk.read("other.ini"), Filled);
}

void TestStateFile::damagedFileGivesTheDefaults_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("expected");
    QByteArray noise;
    quint32 seed = 99;
    for (int i = 0; i < 65536; ++i) {
        seed = seed * 1664525U + 1013904223U;
        noise += char(seed >> 24);
    }
    row("empty", QByteArray(), Defaults);
    row("noise", noise, Defaults);
    row("zeros", QByteArray(512, '\0'), Defaults);
    row("another section", QByteArray("[OTHER]\nPK_in=5\n"), Defaults);
    row("no section", QByteArray("PK_in=5\n"), Defaults);
    row("torn in a key", QByteArray("[STATE]\nCKS_in=1\nCKS_o"),
        "00000000 manual CKS 1 0 SKK 0 0 PK 0 0 N 0");
    row("torn in a date", QByteArray("[STATE]\nPK_in=5\nYYYYMMDD=2026"),
        "2026 manual CKS 0 0 SKK 0 0 PK 5 0 N 0");
    row("words for figures", QByteArray("[STATE]\nPK_in=abc\nPK_out=\nautomatic=false\n"), Defaults);
    row("lists for words", QByteArray("[STATE]\nYYYYMMDD=2026, 07\nPK_in=1, 2\n"),
        " manual CKS 0 0 SKK 0 0 PK 0 0 N 0");
}

void TestStateFile::damagedFileGivesTheDefaults()
{
    QFETCH(QByteArray, content);
    const Desk desk;
    fillState();
    desk.write(StateFile, content);
    State.Load();
    QTEST(figures(), "expected");
    fillState();
    State.manualMode = false;
    State.YYYYMMDD = QStringLiteral("20260731");
    State.Save(); // whatever stood there, the figures are to be read next time
    State.CKS_in = 0;
    State.Load();
    QCOMPARE(figures(), QStringLiteral("20260731 automatic CKS 1 2 SKK 3 4 PK 5 6 N 7"));
}

void TestStateFile::figureNoDayCanReachIsTakenForDamage_data()
{
    QTest::addColumn<QByteArray>("figure");
    QTest::addColumn<int>("read");
    row("last of a day", QByteArray("999"), 999);
    row("greatest taken", QByteArray("999999"), 999999);
    row("beyond", QByteArray("1000000"), 0);
    row("greatest number", QByteArray("2147483647"), 0);
    row("least number", QByteArray("-2147483648"), 0);
    row("below zero", QByteArray("-1"), 0);
}

void TestStateFile::figureNoDayCanReachIsTakenForDamage()
{
    QFETCH(QByteArray, figure);
    QFETCH(int, read);
    const Desk desk;
    QByteArray content = "[STATE]\n";
    for (const char *key : {"CKS_in", "CKS_out", "SKK_in", "SKK_out", "PK_in", "PK_out", "EditorN"})
        content += QByteArray(key) + '=' + figure + '\n';
    desk.write(StateFile, content);
    State.Load();
    QCOMPARE(figures(), QStringLiteral("00000000 manual CKS %1 %1 SKK %1 %1 PK %1 %1 N %1").arg(read));
}

void TestStateFile::countersFromADamagedFileCount()
{
    const Desk desk;
    desk.write(StateFile, "[STATE]\nPK_in=2147483647\nPK_out=-5\nSKK_out=2147483647\n");
    State.Load();
    QCOMPARE(State.incInp(), 1);
    QCOMPARE(State.incOut(), 1);
    State.setCallDirection(2);
    QCOMPARE(State.SKK_out, 1);
}

void TestStateFile::fullDiskLeavesTheOldFile_data()
{
    QTest::addColumn<int>("room");
    row("nothing can be written", 0);
    row("half can be written", 60);
    row("all but a byte can be written", Filled.size() - 1);
}

void TestStateFile::fullDiskLeavesTheOldFile()
{
    QFETCH(int, room);
    const Desk desk;
    fillState();
    State.Save();
    QCOMPARE(desk.readText(StateFile), Filled);
    State.CKS_in = 9;
    {
        const FullDisk disk{qint64(room)};
        State.Save();
    }
    QCOMPARE(desk.readText(StateFile), Filled);
    State.Save(); // there is room again
    QVERIFY(desk.readText(StateFile).contains("\nCKS_in=9\n"));
    QCOMPARE(desk.names(".", "velda*"), QStringList(StateFile));
}

void TestStateFile::unwritableDirectoryIsNoHarm()
{
    const Desk desk;
    Options.stateFileName = QStringLiteral("no/such/directory/state.ini");
    State.PK_in = 3;
    QCOMPARE(State.incInp(), 4);
    State.Load();
    QCOMPARE(figures(), Defaults);
}

void TestStateFile::draftOfAKilledProcessIsNoHarm()
{
    const Desk desk;
    fillState();
    desk.write("velda_state.ini.new", "[STATE]\nPK_in=77\nforeign=1\n");
    State.Load();
    QCOMPARE(State.PK_in, 0);
    fillState();
    State.manualMode = false;
    State.YYYYMMDD = QStringLiteral("20260731");
    State.Save();
    QCOMPARE(desk.readText(StateFile), Filled);
}

void TestStateFile::specialFileIsNeitherReadNorReplaced()
{
    QFETCH(SpecialFile, kind);
    const Desk desk;
    place(desk, kind, StateFile);
    fillState();
    State.Load();
    QCOMPARE(figures(), Defaults);
    State.Save();
    QVERIFY(stands(desk, kind, StateFile));
    QCOMPARE(desk.names(".", "velda_state.ini.*"), QStringList());
}

QTEST_MAIN(TestStateFile)
#include "test_state_file.moc"
