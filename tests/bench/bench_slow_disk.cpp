#include "app/clock.h"
#include "app/state.h"
#include "link/tlg_thread.h"
#include "records/protocol.h"
#include "tests/ui/window/station.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <cstdio>

// What a telegram costs on a disk that takes its time: how often the workstation waits for one to be there
// for good, and that its second waits no longer than the disk does. disk_calls.cpp in front of the system's
// library counts the syncs and makes each of them take longer.

namespace
{
constexpr int SyncMs = 200;
constexpr int Telegrams = 5;
constexpr int LongestSeconds = 400; ///< of a telegram

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

bool row(const QByteArray &what, double figure, double bar)
{
    const bool ok = figure <= bar;
    std::printf("bench: %s | %.2f | bar <= %.2f | %s\n", what.constData(), figure, bar, ok ? "ok" : "MISSED");
    return ok;
}

/// A procedure's line with a far end of few words, and what the disk takes of the window's time meanwhile.
class Line
{
public:
    Line(int processMode, const char *name)
        : m_name(name), m_station(processMode, useTcp), m_disk(m_station.desk)
    {
        m_station.setLinkUp(true);
        m_station.tick(); // the journal is there
    }
    virtual ~Line() = default;
    Line(const Line &) = delete;
    Line &operator=(const Line &) = delete;

    /// Syncs of a telegram each way, and the longest wait for anything but them.
    bool measure(double barIn, double barOut)
    {
        const double in = syncsOf("inp", [this] { receiveOne(); });
        const double out = syncsOf("out", [this] { sendOne(); });
        const double beyond = m_disk.longestBeyond() / SyncMs;
        bool ok = row(what("syncs of a received telegram"), in, barIn) && in > 0;
        ok = row(what("syncs of a sent telegram"), out, barOut) && out > 0 && ok;
        return row(what("wait beyond the disk's own, in syncs of 200 ms"), beyond, 0.25) && ok;
    }

protected:
    virtual void receiveOne() = 0;
    virtual void sendOne() = 0;

    void receive(const QString &text)
    {
        m_disk.take([&] { m_station.receive(text); });
        m_disk.take([] { QCoreApplication::processEvents(); }); // what a turn has left
    }
    void tick()
    {
        m_disk.take([this] { m_station.tick(); });
    }
    /// What the workstation has for the line now goes out.
    QString takeSent()
    {
        const QString text = TlgThread.sendBuffer.mTake();
        if (!text.isEmpty())
            m_disk.take([&] { m_station.reportSent(text); });
        return text;
    }
    /// A file of the queue, by its number of the day, with \a end behind its name.
    QString queue(int number, const char *end, const QByteArray &text)
    {
        const QString name = QStringLiteral("out/20260731u%1").arg(number, 3, 10, QLatin1Char('0')) + end;
        m_station.desk.write(name, text);
        return name;
    }
    [[nodiscard]] const Desk &desk() const { return m_station.desk; }

private:
    static void useTcp() { Options.TcpMode = true; }
    [[nodiscard]] QByteArray what(const char *figure) const { return m_name + QByteArray(": ") + figure; }

    /// Of one telegram of those that stand in \a directory then, beside other files; 0 if not all went
    /// through.
    template <class Telegram> double syncsOf(const char *directory, Telegram one)
    {
        const int before = m_disk.syncs();
        for (int i = 0; i < Telegrams; ++i)
            one();
        const QStringList stored = m_station.desk.names(QString::fromLatin1(directory) + "/20260731");
        const bool all = stored.filter(QRegularExpression(QStringLiteral("^2026"))).size() == Telegrams;
        return all ? double(m_disk.syncs() - before) / Telegrams : 0;
    }

    const QByteArray m_name;
    Station m_station;
    Disk m_disk;
};

class DirectLine : public Line
{
public:
    DirectLine() : Line(Direct, "direct link") {}

protected:
    void receiveOne() override
    {
        receive(QStringLiteral("ЗЦЗЦ 1\r\nПРИВЕТ\r\nНННН  "));
        tick();
    }
    void sendOne() override
    {
        (void)queue(++m_sent, ".260101_000000", "ЗЦЗЦ ТЕКСТ НННН  ");
        for (int second = 0; second < LongestSeconds && !State.fileInProgress; ++second)
            tick();
        (void)takeSent();
        tick();
    }

private:
    int m_sent = 0;
};

/// The centre's channel is open, and it answers at once.
class CentreLine : public Line
{
public:
    CentreLine() : Line(CKS, "centre") { State.setTlgMode(ModeOpen); }

protected:
    void receiveOne() override
    {
        receive(QStringLiteral("ЗЦЗЦ %1 ПРИВЕТ\r\n\r\nНННН  1200\r\n")
                    .arg(++m_received, 3, 10, QLatin1Char('0')));
        for (int second = 0; second < 5; ++second)
            tick();
    }
    void sendOne() override
    {
        const QString name = queue(++m_sent, "", "П123456\r\nТЕКСТ=\r\n");
        for (int second = 0; second < LongestSeconds && QFile::exists(desk().path(name)); ++second) {
            tick();
            if (takeSent().contains(QStringLiteral("|ЗЗ ")))
                receive(QStringLiteral("ЗЦЗЦ ВАШ %1 НАШ %2 ПОСЛЕДНИЕ СВЯЗЬ ОТКРЫТА АБВ123/4 НННН  1200\r\n")
                            .arg(m_sent, 3, 10, QLatin1Char('0'))
                            .arg(m_received, 3, 10, QLatin1Char('0')));
        }
    }

private:
    int m_received = 0, m_sent = 0;
};

/// A call each telegram, in and out; the transcripts of the connections are theirs, too.
class SwitchedLine : public Line
{
public:
    SwitchedLine() : Line(SKK, "dialled") { Options.AO = QStringLiteral("777777 ДЕСК"); }

protected:
    void receiveOne() override
    {
        for (const char *piece : {"@C", "ЗЦЗЦ 001\r\nПРИВЕТ\r\nНННН  \r\n", "@H"}) {
            receive(QString::fromUtf8(piece));
            pass(10);
        }
    }
    void sendOne() override
    {
        const QString name = queue(++m_sent, ".dat", "123456|S|01.01.2020 00:00|u|3|N|").chopped(4);
        desk().write(name, "ЗЦЗЦ 001\r\nТЕКСТ\r\nНННН  \r\n");
        TlgThread.allSent = true;
        for (int second = 0; second < LongestSeconds && !isOver(name); ++second) {
            tick();
            const QString text = takeSent();
            if (text.contains(QStringLiteral("@N")))
                receive(QStringLiteral("@E\r\n #12.00"));
            else if (text.contains(QStringLiteral("#*")))
                receive(QStringLiteral("#\r\n123456 АБОНЕНТ    "));
        }
    }

private:
    void pass(int seconds)
    {
        for (int second = 0; second < seconds; ++second) {
            tick();
            (void)takeSent();
        }
    }
    [[nodiscard]] bool isOver(const QString &name) const
    {
        return !QFile::exists(desk().path(name)) && State.callDirection == NoDirection;
    }
    int m_sent = 0;
};
} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    bool ok = DirectLine().measure(6, 6);
    ok = CentreLine().measure(6, 6) && ok;
    ok = SwitchedLine().measure(4, 8) && ok;
    return ok ? 0 : 1;
}
