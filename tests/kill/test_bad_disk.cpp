#include "app/state.h"
#include "records/protocol.h"
#include "tests/ui/window/station.h"

#include <QDir>
#include <QtTest>

// A disk that refuses files to be opened, as disk_calls.cpp in front of the system's library does it.
class TestBadDisk : public QObject
{
    Q_OBJECT

private slots:
    void journalThatCannotBeOpenedFollowsWithoutAWord_data();
    void journalThatCannotBeOpenedFollowsWithoutAWord();
};

namespace
{
const QString Today = QStringLiteral("prt/20260731.prt");

/// The disk below \a directory is bad while this lives: \a error from the next file on that is opened.
class BadDisk
{
public:
    BadDisk(const QString &directory, const QByteArray &error)
    {
        QFile sign(m_sign);
        QVERIFY(sign.open(QIODevice::WriteOnly));
        qputenv("DISK_BAD", m_sign.toUtf8());
        qputenv("DISK_KIND", "open");
        qputenv("DISK_HOW", error);
        qputenv("DISK_AT", "1"); // of the program's life; from then on the sign alone decides
        qputenv("DISK_ROOT", QDir(directory).canonicalPath().toUtf8());
    }
    ~BadDisk() { qunsetenv("DISK_ROOT"); }
    BadDisk(const BadDisk &) = delete;
    BadDisk &operator=(const BadDisk &) = delete;

private:
    QTemporaryDir m_outside;
    const QString m_sign = QDir(m_outside.path()).filePath(QStringLiteral("bad"));
};
} // namespace

void TestBadDisk::journalThatCannotBeOpenedFollowsWithoutAWord_data()
{
    QTest::addColumn<QByteArray>("error");
    QTest::addColumn<bool>("keepOpen");
    for (const char *error : {"EROFS", "EACCES", "EIO", "ENOSPC"})
        for (const bool keepOpen : {false, true})
            QTest::addRow("%s, %s", error, keepOpen ? "kept open" : "opened each time")
                << QByteArray(error) << keepOpen;
}

void TestBadDisk::journalThatCannotBeOpenedFollowsWithoutAWord()
{
    QFETCH(QByteArray, error);
    QFETCH(bool, keepOpen);
    Station station(Direct);
    State.scanCountdown = 1000;
    Options.protocolFileNoClose = keepOpen;
    for (int outage = 1; outage <= 2; ++outage) {
        {
            const BadDisk bad(station.desk.path(), error);
            Log.addServiceString(QStringLiteral("событие"), ProtocolInfo);
            station.tick(3);
            QVERIFY(!station.desk.read(Today).endsWith("событие\n"));
        }
        station.tick(); // the disk is back, and nothing else comes
        QCOMPARE(station.desk.read(Today), Log.lines.join('\n').toUtf8());
        QVERIFY(Log.lines.filter(QStringLiteral("не записывается")).isEmpty());
        Options.protocolFileNoClose = false; // the next outage meets a file to be opened
        Log.addServiceString(QStringLiteral("иное"), ProtocolInfo);
        Options.protocolFileNoClose = keepOpen;
    }
}

QTEST_MAIN(TestBadDisk)
#include "test_bad_disk.moc"
