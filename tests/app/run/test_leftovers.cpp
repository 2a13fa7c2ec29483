#include "app/options.h"
#include "app/run/leftovers.h"
#include "tests/support/desk.h"
#include "tests/support/possible_name.h"
#include "tests/support/row.h"

#include <QtTest>

/// The sweep of what killed processes have left.
class TestLeftovers : public QObject
{
    Q_OBJECT

private slots:
    void temporaryFileGoes_data();
    void temporaryFileGoes();
    void fileOfOthersStays_data();
    void fileOfOthersStays();
    void directoryAndLinkOfSuchANameStay();
    void foldersElsewhereAreSweptToo();
    void recordOfASentTelegramGoes();
    void recordThatMayBeWaitedForStays_data();
    void recordThatMayBeWaitedForStays();
};

void TestLeftovers::temporaryFileGoes_data()
{
    QTest::addColumn<QString>("name");
    const auto row = [](const char *name) { ::row(name, QString::fromUtf8(name)); };
    row("velda.ini.velda-0123abcd");
    row("velda_state.ini.velda-0123abcd");
    row("velda_state.ini.velda-0123abcd.lock");
    row("velda_state.ini.velda-0123abcd.qWeRty");
    row("velda_draft.json.velda-0123abcd");
    row("prt/20260731.prt.velda-ffffffff");
    row("inp/20260731/20260731_120000.velda-0123abcd");
    row("inp/20260730/20260730u1ч0.012.velda-0123abcd");
    row("out/20260731/s120000.velda-0123abcd");
    row("out/20260731u001.velda-0123abcd");
    row("out/20260731u001.dat.velda-0123abcd");
    row("out/.dat.velda-0123abcd");
    // of former versions
    row("velda.ini.AbCdEf");
    row("velda.ini.new");
    row("velda_state.ini.new.lock");
    row("velda_state.ini.new.qWeRty");
    row("velda_state.ini.qwertY");
    row("prt/20260731.prt.QWERTy");
    row("inp/20260731/20260731_120000.AbCdEf");
    row("inp/20260731/20260731u1ч0.012.AbCdEf");
    row("inp/20260731/s120000.AbCdEf");
    row("out/20260731/s120000.AbCdEf");
    row("out/20260731u001.dat.AbCdEf");
    row("out/20260731u001.b1.dat.AbCdEf");
    row("out/20260731g001.260731_120000.dat.AbCdEf");
    row("out/.dat.AbCdEf");
}

void TestLeftovers::temporaryFileGoes()
{
    QFETCH(QString, name);
    const Desk desk;
    desk.write(name, "content");
    sweepLeftovers();
    QVERIFY(!QFile::exists(desk.path(name)));
}

void TestLeftovers::fileOfOthersStays_data()
{
    QTest::addColumn<QString>("name");
    const auto row = [](const char *name) { ::row(name, QString::fromUtf8(name)); };
    row("velda.ini");
    row("velda_state.ini");
    row("velda.lck");
    row("velda.ini.backup");
    row("velda.ini.Backup");
    row("velda.ini.BACKUP");
    row("velda.ini.old");
    row("veldaxini.AbCdEf");
    row("my velda.ini.AbCdEf");
    row("velda.ini.velda-0123");
    row("notes.AbCdEf");
    row("prt/20260731.prt");
    row("prt/20260731.prt.saved");
    row("prt/notes.prt.AbCdEf");
    row("inp/notes.AbCdEf");
    row("inp/20260731/20260731_120000");
    row("inp/20260731/20260731u1ч0.012");
    row("inp/20260731/20260731_120000.corrected");
    row("inp/20260731/notes.AbCdEf");
    row("inp/archive/20260731_120000.AbCdEf");
    row("out/20260731u001");
    row("out/20260731u001.dat");
    row("out/20260731u001.AbCdEf");
    row("out/20260731u001.260731_120000");
    row("out/report.AbCdEf");
    row("out/report.dat.AbCdEf");
    row("out/20260731/20260731u001.AbCdEf");
}

void TestLeftovers::fileOfOthersStays()
{
    QFETCH(QString, name);
    const Desk desk;
    desk.write(name, "content");
    sweepLeftovers();
    QCOMPARE(desk.read(name), QByteArray("content"));
}

void TestLeftovers::directoryAndLinkOfSuchANameStay()
{
    const Desk desk;
    desk.write("velda.ini.velda-00000000/a", "content");
    desk.write("target", "content");
    QVERIFY(QFile::link(desk.path("target"), desk.path("velda.ini.velda-11111111")));
    sweepLeftovers();
    QCOMPARE(desk.read("velda.ini.velda-00000000/a"), QByteArray("content"));
    QCOMPARE(desk.read("velda.ini.velda-11111111"), QByteArray("content"));
}

void TestLeftovers::foldersElsewhereAreSweptToo()
{
    const Desk desk;
    Options.pathInp = desk.path("received");
    Options.stateFileName = QStringLiteral("counters/state.ini");
    desk.write("received/20260731/s120000.velda-0123abcd", "content");
    desk.write("counters/state.ini.velda-0123abcd", "content");
    sweepLeftovers();
    QVERIFY(desk.names("received/20260731").isEmpty());
    QVERIFY(desk.names("counters").isEmpty());
}

void TestLeftovers::recordOfASentTelegramGoes()
{
    const Desk desk;
    desk.write("out/20260731u001.dat", "record");
    desk.write("out/20260801/20260731u001.007", "telegram"); // the day had turned
    desk.write("out/20260731u002", "telegram");
    desk.write("out/20260731u002.dat", "record");
    sweepLeftovers();
    QCOMPARE(desk.names("out"), QStringList({"20260731u002", "20260731u002.dat", "20260801"}));
    QCOMPARE(desk.names("out/20260801"), QStringList("20260731u001.007"));
}

void TestLeftovers::recordThatMayBeWaitedForStays_data()
{
    QTest::addColumn<QString>("record");
    QTest::addColumn<QString>("other"); // file
    row("nothing of its name", "out/20260731u001.dat", "out/20260731/20260731u002.001");
    row("signs of a mask in its name", possibleName("out/20260731u0*1.dat"), "out/20260731/20260731u001.001");
    row("its telegram waits", "out/20260731u001.dat", "out/20260731u001");
    row("a name that only begins so", "out/20260731u001.dat", "out/20260731/20260731u0011.001");
    row("no number behind it", "out/20260731u001.dat", "out/20260731/20260731u001.txt");
    row("in a directory that is no day's", "out/20260731u001.dat", "out/2026/20260731u001.001");
    row("a name of nobody's", "out/.dat", "out/20260731/.001");
    row("of a telegram set aside", "out/20260731u001.b01.dat", "out/20260731/20260731u001.001");
}

void TestLeftovers::recordThatMayBeWaitedForStays()
{
    QFETCH(QString, record);
    QFETCH(QString, other);
    const Desk desk;
    desk.write(record, "record");
    desk.write(other, "telegram");
    sweepLeftovers();
    QCOMPARE(desk.read(record), QByteArray("record"));
    QCOMPARE(desk.read(other), QByteArray("telegram"));
}

QTEST_GUILESS_MAIN(TestLeftovers)
#include "test_leftovers.moc"
