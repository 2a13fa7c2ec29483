#include "app/clock.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "tests/ui/window/station.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>

// What a telegram costs on a disk that takes its time: how often the workstation waits for one to be there
// for good, and that its second waits no longer than the disk does. disk_calls.cpp in front of the system's
// library counts the syncs and makes each of them take longer.

namespace
{
constexpr int SyncMs = 200;
constexpr int Telegrams = 5;

/// The syncs below the data directory, and the time that the window's work has taken.
class Disk
{
public:
    explicit Disk(const Desk &desk)
    {
        qputenv("DISK_LOG", m_log.toUtf8());
        qputenv("DISK_SYNC_MS", QByteArray::number(SyncMs));
        qputenv("DISK_ROOT", QDir(desk.path()).canonicalPath().toUtf8());
    }
    ~Disk() { qunsetenv("DISK_ROOT"); }
    Disk(const Disk &) = delete;
    Disk &operator=(const Disk &) = delete;

    template <class Work> void take(Work work)
    {
        const int before = syncs();
        QElapsedTimer timer;
        timer.start();
        work();
        const auto taken = double(timer.nsecsElapsed()) / 1e6;
        const double disk = double(syncs() - before) * SyncMs;
        m_longestBeyond = std::max(m_longestBeyond, taken - disk);
    }
    [[nodiscard]] int syncs() const
    {
        QFile file(m_log);
        return file.open(QIODevice::ReadOnly) ? file.readAll().count("sync ") : 0;
    }
    /// Milliseconds that a piece of work took beyond what the disk did.
    [[nodiscard]] double longestBeyond() const { return m_longestBeyond; }

private:
    QTemporaryDir m_outside;
    const QString m_log = QDir(m_outside.path()).filePath(QStringLiteral("calls"));
    double m_longestBeyond = 0;
};

bool row(const char *what, double figure, double bar)
{
    const bool ok = figure <= bar;
    std::printf("bench: %s | %.2f | bar <= %.2f | %s\n", what, figure, bar, ok ? "ok" : "MISSED");
    return ok;
}

void receiveOne(Station &station, Disk &disk)
{
    disk.take([&] { station.receive(QStringLiteral("ЗЦЗЦ 1\r\nПРИВЕТ\r\nНННН  ")); });
    disk.take([] { QCoreApplication::processEvents(); }); // what a turn has left
    disk.take([&] { station.tick(); });
}

void sendOne(Station &station, Disk &disk)
{
    static int number = 0;
    station.desk.write(QStringLiteral("out/20260731u%1.260101_000000").arg(++number, 3, 10, QLatin1Char('0')),
                       "ЗЦЗЦ ТЕКСТ НННН  ");
    for (int second = 0; second < 60 && !State.fileInProgress; ++second)
        disk.take([&] { station.tick(); });
    disk.take([&] { station.reportSent(TlgThread.sendBuffer.mTake()); });
    disk.take([&] { station.tick(); });
}

/// Syncs of one telegram on the direct link; 0 if none went through.
template <class Telegram> double syncsOf(Station &station, Disk &disk, const char *directory, Telegram one)
{
    const int before = disk.syncs();
    for (int i = 0; i < Telegrams; ++i)
        one(station, disk);
    const bool all = station.desk.names(QString::fromLatin1(directory) + "/20260731").size() == Telegrams;
    return all ? double(disk.syncs() - before) / Telegrams : 0;
}
} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    Station station(Direct);
    station.setLinkUp(true);
    Disk disk(station.desk);
    const double in = syncsOf(station, disk, "inp", receiveOne);
    const double out = syncsOf(station, disk, "out", sendOne);
    bool ok = in > 0 && out > 0;
    ok = row("direct link: syncs of a received telegram", in, 6) && ok;
    ok = row("direct link: syncs of a sent telegram", out, 6) && ok;
    ok = row("direct link: wait beyond the disk's own, in syncs of 200 ms", disk.longestBeyond() / SyncMs,
             0.25) &&
         ok;
    return ok ? 0 : 1;
}
