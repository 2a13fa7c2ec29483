// Sounds are listened to and stopped on their page.

#include "app/clock.h"
#include "tests/support/row.h"
#include "tests/support/sound_server.h"
#include "tests/ui/dialogs/options/option_room.h"
#include "ui/sound.h"

#include <QToolButton>

class TestOptionsSounds : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup() { sound.stop(); }
    void buttonPlaysAndStops();
    void buttonComesBackWhenTheSoundHasEnded();
    void secondButtonStopsTheFirstSound();
    void loopedSoundGoesOn();
    void whatStopsTheSound_data();
    void whatStopsTheSound();
    void fileThatIsNoSoundIsMarked();
    void chosenFileIsRelativeToTheData();

private:
    SoundServer m_server;
};

namespace
{
const QString Play = "Слушать", Stop = "Стоп";

class SoundRoom : public OptionRoom
{
public:
    SoundRoom()
    {
        for (const char *name : {"raketa", "category", "input"})
            if (!QDir().mkpath("sound") || !QFile::copy(QStringLiteral(VELDA_SOUND_DIR "/%1.wav").arg(name),
                                                        QStringLiteral("sound/%1.wav").arg(name)))
                qFatal("no sound %s", name);
        open();
        showTab("Звуки");
    }
    [[nodiscard]] QToolButton *button(const char *name) const { return find<QToolButton>(name); }
    void press(const char *name) const { QTest::mouseClick(button(name), Qt::LeftButton); }
};

void tick()
{
    emit Time.signal_1sec();
}
} // namespace

void TestOptionsSounds::initTestCase()
{
    QVERIFY2(m_server.start(), qPrintable(m_server.error));
}

void TestOptionsSounds::buttonPlaysAndStops()
{
    const SoundRoom room;
    room.press("soundCTlgPlay");
    QCOMPARE(sound.playingFileName(), "sound/category.wav");
    QCOMPARE(room.button("soundCTlgPlay")->text(), Stop);
    room.press("soundCTlgPlay");
    QCOMPARE(sound.playingFileName(), QString());
    QCOMPARE(room.button("soundCTlgPlay")->text(), Play);
}

void TestOptionsSounds::buttonComesBackWhenTheSoundHasEnded()
{
    const SoundRoom room;
    room.press("soundCTlgPlay");
    tick();
    QCOMPARE(room.button("soundCTlgPlay")->text(), Stop);
    const auto ended = [] { return sound.playingFileName().isEmpty(); };
    QTRY_VERIFY_WITH_TIMEOUT(ended(), 60000);
    QCOMPARE(room.button("soundCTlgPlay")->text(), Stop);
    tick();
    QCOMPARE(room.button("soundCTlgPlay")->text(), Play);
}

void TestOptionsSounds::secondButtonStopsTheFirstSound()
{
    const SoundRoom room;
    room.press("soundCTlgPlay");
    room.press("soundOTlgPlay"); // also one that is off
    QCOMPARE(sound.playingFileName(), "sound/input.wav");
    QCOMPARE(room.button("soundCTlgPlay")->text(), Play);
    QCOMPARE(room.button("soundOTlgPlay")->text(), Stop);
}

void TestOptionsSounds::loopedSoundGoesOn()
{
    const SoundRoom room;
    room.press("soundRTlgPlay");
    QTest::qWait(3000); // longer than the file
    tick();
    QCOMPARE(sound.playingFileName(), "sound/raketa.wav");
    QCOMPARE(room.button("soundRTlgPlay")->text(), Stop);
}

void TestOptionsSounds::whatStopsTheSound_data()
{
    QTest::addColumn<QString>("way");
    for (const char *way : {"another page", "cancel", "apply", "Esc", "cross"})
        row(way, QString::fromLatin1(way));
}

void TestOptionsSounds::whatStopsTheSound()
{
    QFETCH(QString, way);
    const SoundRoom room;
    room.press("soundRTlgPlay");
    QCOMPARE(sound.playingFileName(), "sound/raketa.wav");
    if (way == "another page")
        room.showTab("Редактор");
    else if (way == "Esc")
        QTest::keyClick(room.dialog.get(), Qt::Key_Escape);
    else if (way == "cross")
        room.dialog->close();
    else
        QTest::mouseClick(room.find<QPushButton>(qPrintable(way)), Qt::LeftButton);
    QCOMPARE(sound.playingFileName(), QString());
    tick();
    QCOMPARE(room.button("soundRTlgPlay")->text(), Play);
}

void TestOptionsSounds::fileThatIsNoSoundIsMarked()
{
    const SoundRoom room;
    room.desk.write("no.wav", "no sound");
    room.line("soundOTlgFile")->setText("no.wav");
    QCOMPARE(room.reason("soundOTlgFile"), QString());
    room.press("soundOTlgPlay");
    QCOMPARE(room.reason("soundOTlgFile"), "Этот файл не проигрывается");
    QCOMPARE(room.button("soundOTlgPlay")->text(), Play);
}

void TestOptionsSounds::chosenFileIsRelativeToTheData()
{
    const SoundRoom room;
    const auto former = pickFileHandler;
    pickFileHandler = [&room](QWidget *, const QString &, const QString &) {
        return room.desk.path("sound/input.wav");
    };
    room.press("soundDisconnectBrowse");
    pickFileHandler = [](QWidget *, const QString &, const QString &) { return QString(); };
    room.press("soundCTlgBrowse");
    pickFileHandler = former;
    QCOMPARE(room.line("soundDisconnectFile")->text(), "sound/input.wav");
    QCOMPARE(room.line("soundCTlgFile")->text(), "sound/category.wav");
}

QTEST_MAIN(TestOptionsSounds)
#include "test_options_sounds.moc"
