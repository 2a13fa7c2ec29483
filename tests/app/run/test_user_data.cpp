#include "app/run/user_data.h"

#include "tests/support/desk.h"
#include "tests/support/full_disk.h"
#include "tests/support/read_only.h"
#include "tests/support/row.h"

#include <QtTest>

#include <sys/stat.h>

/// Where an installed program keeps its data, and what it puts there.
class TestUserData : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void shareBesideBinMakesAnInstallation_data();
    void shareBesideBinMakesAnInstallation();
    void variableOfTheDesktopNamesTheDirectory_data();
    void variableOfTheDesktopNamesTheDirectory();

    void firstStartCopiesSoundsAndLinksTheManual();
    void soundsThatMayOnlyBeReadAreTheOperatorsAsCopies();
    void laterStartsLeaveWhatIsThere();
    void soundsAreWholeAfterAStartThatWasKilled();
    void manualOfALaterVersionIsLinked();
    void manualThatMovedIsLinkedAnew();
    void manualOfTheOperatorStays();
    void withoutAManualThereIsNoFolder();
    void fullDiskIsToldAndLeavesNoHalf();
    void directoryWithoutRightsIsTold();

private:
    QByteArray m_formerDataHome;
};

namespace
{
const QString Manual = QStringLiteral("docs/Velda. Руководство пользователя.pdf");

/// A desk, and outside its data directory what an installation shares.
struct InstalledDesk : Desk {
    InstalledDesk()
    {
        share("sound/input.wav", "RIFF one");
        share("sound/raketa.wav", "RIFF two");
    }
    [[nodiscard]] QString shared(const QString &name = QString()) const
    {
        return m_shared.path() + "/share/velda/" + name;
    }
    void share(const QString &name, const QByteArray &content) const
    {
        QVERIFY(QDir().mkpath(QFileInfo(shared(name)).path()));
        QFile file(shared(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), qint64(content.size()));
    }
    /// As it is with an installation: a temporary directory is its owner's alone.
    void letEverybodyRead() const { chmod(QFile::encodeName(m_shared.path()).constData(), 0755); }
    void start() const { furnishDataDirectory(shared()); }

private:
    QTemporaryDir m_shared;
};

QStringList failures(const Desk &desk)
{
    return desk.journal().filter(QStringLiteral("Нет записи"));
}
} // namespace

void TestUserData::init()
{
    m_formerDataHome = qgetenv("XDG_DATA_HOME");
}

void TestUserData::cleanup()
{
    qputenv("XDG_DATA_HOME", m_formerDataHome);
}

void TestUserData::shareBesideBinMakesAnInstallation_data()
{
    QTest::addColumn<QString>("made");
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("shared");
    row("in bin of an installation", "usr/share/velda/sound", "usr/bin", "usr/share/velda");
    row("with a separator at its end", "usr/share/velda/sound", "usr/bin/", "usr/share/velda");
    row("built, the sounds beside it", "build/bin/sound", "build/bin", "");
    row("no sounds in share", "usr/share/velda", "usr/bin", "");
    row("beside nothing", "usr/bin", "usr/bin", "");
}

void TestUserData::shareBesideBinMakesAnInstallation()
{
    QFETCH(QString, made);
    QFETCH(QString, program);
    QFETCH(QString, shared);
    const Desk desk;
    QVERIFY(QDir(desk.path()).mkpath(made) && QDir(desk.path()).mkpath(program));
    QCOMPARE(sharedDirectory(desk.path(program)), shared.isEmpty() ? QString() : desk.path(shared));
}

void TestUserData::variableOfTheDesktopNamesTheDirectory_data()
{
    QTest::addColumn<QByteArray>("variable");
    QTest::addColumn<QString>("directory");
    const QString usual = QDir::homePath() + "/.local/share/velda";
    row("not set", QByteArray(), usual);
    row("a path", QByteArray("/srv/data"), "/srv/data/velda");
    row("a separator at its end", QByteArray("/srv/data/"), "/srv/data/velda");
    row("Russian letters", QByteArray("/srv/данные дня"), "/srv/данные дня/velda");
    row("not a whole path", QByteArray("data"), usual);
}

void TestUserData::variableOfTheDesktopNamesTheDirectory()
{
    QFETCH(QByteArray, variable);
    QFETCH(QString, directory);
    qputenv("XDG_DATA_HOME", variable);
    QCOMPARE(userDataDirectory(), directory);
}

void TestUserData::firstStartCopiesSoundsAndLinksTheManual()
{
    const InstalledDesk desk;
    desk.share(Manual, "%PDF");
    desk.start();
    QCOMPARE(desk.names("sound"), QStringList({"input.wav", "raketa.wav"}));
    QCOMPARE(desk.read("sound/input.wav"), QByteArray("RIFF one"));
    QVERIFY(!QFileInfo(desk.path("sound/input.wav")).isSymLink());
    QCOMPARE(QFile::symLinkTarget(desk.path(Manual)), desk.shared(Manual));
    QVERIFY(failures(desk).isEmpty());
}

void TestUserData::soundsThatMayOnlyBeReadAreTheOperatorsAsCopies()
{
    const InstalledDesk desk;
    QVERIFY(QFile::setPermissions(desk.shared("sound/input.wav"), QFile::ReadOwner | QFile::ReadGroup));
    desk.start();
    QVERIFY(QFile::permissions(desk.path("sound/input.wav")) & QFile::WriteOwner);
}

void TestUserData::laterStartsLeaveWhatIsThere()
{
    const InstalledDesk desk;
    desk.start();
    desk.write("sound/input.wav", "another");
    QVERIFY(QFile::remove(desk.path("sound/raketa.wav")));
    desk.start();
    QCOMPARE(desk.names("sound"), QStringList("input.wav"));
    QCOMPARE(desk.read("sound/input.wav"), QByteArray("another"));
}

void TestUserData::soundsAreWholeAfterAStartThatWasKilled()
{
    const InstalledDesk desk;
    desk.write("sound.velda-part/input.wav", "RI"); // as the killed start left it
    desk.start();
    QCOMPARE(desk.names("sound"), QStringList({"input.wav", "raketa.wav"}));
    QCOMPARE(desk.read("sound/input.wav"), QByteArray("RIFF one"));
    QVERIFY(!QFile::exists(desk.path("sound.velda-part")));
}

void TestUserData::manualOfALaterVersionIsLinked()
{
    const InstalledDesk desk;
    desk.start();
    QVERIFY(!QFile::exists(desk.path("docs")));
    desk.share(Manual, "%PDF");
    desk.start();
    QCOMPARE(desk.read(Manual), QByteArray("%PDF"));
}

void TestUserData::manualThatMovedIsLinkedAnew()
{
    const InstalledDesk desk;
    desk.share(Manual, "%PDF");
    QVERIFY(QDir(desk.path()).mkdir("docs"));
    QVERIFY(QFile::link(desk.path("gone.pdf"), desk.path(Manual)));
    desk.start();
    QCOMPARE(QFile::symLinkTarget(desk.path(Manual)), desk.shared(Manual));
}

void TestUserData::manualOfTheOperatorStays()
{
    const InstalledDesk desk;
    desk.share(Manual, "%PDF");
    desk.write(Manual, "own");
    desk.start();
    QCOMPARE(desk.read(Manual), QByteArray("own"));
    QCOMPARE(desk.names("docs"), QStringList("Velda. Руководство пользователя.pdf"));
}

void TestUserData::withoutAManualThereIsNoFolder()
{
    const InstalledDesk desk;
    desk.share("docs/readme.txt", "");
    desk.start();
    QVERIFY(!QFile::exists(desk.path("docs")));
}

void TestUserData::fullDiskIsToldAndLeavesNoHalf()
{
    const InstalledDesk desk;
    {
        const FullDisk full(4); // the sounds are longer
        desk.start();
    }
    QVERIFY(!QFile::exists(desk.path("sound")));
    QVERIFY(!QFile::exists(desk.path("sound.velda-part")));
    QCOMPARE(failures(desk), QStringList("412:00:00 Нет записи в каталог данных: sound"));
}

void TestUserData::directoryWithoutRightsIsTold()
{
    const InstalledDesk desk;
    desk.share(Manual, "%PDF");
    desk.letEverybodyRead();
    {
        const ReadOnly data(desk, QString());
        desk.start();
    }
    QCOMPARE(failures(desk), QStringList({"412:00:00 Нет записи в каталог данных: sound",
                                          "412:00:00 Нет записи в каталог данных: " + Manual}));
}

QTEST_MAIN(TestUserData)
#include "test_user_data.moc"
