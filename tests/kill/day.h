#pragma once

#include "tests/e2e/station.h"

#include <QElapsedTimer>

#include <memory>

/// A short day of one line procedure, passed at speed: a workstation with an operator, a far end, telegrams
/// both ways. The workstation may die and start again, its disk may fail; people at the far end do what they
/// do then. In the end the books of both sides must agree.
class Day
{
public:
    /// A telegram to the far end: its file in the queue.
    struct Outgoing {
        QString name;
        QString text;
        QString mark; ///< words that no other telegram has
    };

    virtual ~Day() = default;
    Day(const Day &) = delete;
    Day &operator=(const Day &) = delete;

    /// The day of "direct", "centre", "midnight" or "switched", its far end there, its queue full.
    [[nodiscard]] static std::unique_ptr<Day> of(const QString &procedure);
    [[nodiscard]] static QStringList procedures();

    /// Starts the workstation at the day's present time.
    void start();
    /// What people at the far end do; to be called again and again.
    virtual void tend() {}
    /// Everything has come to its place.
    [[nodiscard]] virtual bool isOver() const;
    /// Where things stand, for one who waits in vain.
    [[nodiscard]] virtual QString progress() const;

    /// What is wrong with the files while the workstation is not there. A record of them is kept: the next
    /// look finds the journals grown.
    [[nodiscard]] QStringList tornFiles();
    /// The journals may have lost their ends.
    void forgetJournals() { m_journals.clear(); }
    /// The disk has failed: counters that it did not take are written with the next change or at the end.
    void letCountersLag() { m_countersLag = true; }
    /// What has gone wrong in a day by intention.
    struct Mishaps {
        int count = 0;           ///< deaths of the workstation and failures of its disk
        bool diskFailed = false; ///< it was the disk
        bool lasting = false;    ///< for a while
        bool early = false; ///< before the window's first second, from which on the journal is looked after
        QString call, path; ///< the first that it refused, the path below the data directory
        bool atEnd = false; ///< within the orderly end
        bool powerLost = false; ///< the last lines of the journal are lost with it
    };
    /// What is wrong at the end of the day.
    [[nodiscard]] QStringList wrongBooks(const Mishaps &mishaps);
    /// Milliseconds of the machine's in which \a seconds of the day pass.
    [[nodiscard]] int passing(int seconds) const { return seconds * 1000 / m_speed; }

    Station station;

protected:
    /// The day begins at \a moment, "2026-07-31 12:00:00", and passes \a speed times as fast as any other.
    Day(const QString &moment, int speed);

    [[nodiscard]] QString clock() const; ///< for a program that starts now
    /// Puts \a telegram into the queue as another program does, with \a record if it is not empty.
    void queue(const Outgoing &telegram, const QByteArray &record = QByteArray());

    [[nodiscard]] virtual int arrived(const Outgoing &telegram) const = 0; ///< how often, whole
    /// What became of \a telegrams that were given to the workstation, in the words of the procedure.
    [[nodiscard]] virtual QStringList wrongReceipts() const = 0;
    /// The name that the sent file bears; a pattern.
    [[nodiscard]] virtual QString sentName(const Outgoing &telegram) const { return telegram.name; }

    /// The journal's words for the beginning of its sending.
    [[nodiscard]] virtual QString sendingWords() const { return QStringLiteral("Отправка файла: "); }

    [[nodiscard]] QStringList storedWith(const QString &mark) const; ///< paths below inp
    /// How many telegrams the journal tells of that came and could not be stored.
    [[nodiscard]] int toldUnstored() const;

    [[nodiscard]] bool countersMayLag() const { return m_countersLag; }

    QVector<Outgoing> outgoing;

private:
    [[nodiscard]] QStringList wrongSendings(const Mishaps &mishaps) const;
    [[nodiscard]] int causesToRepeat(const QString &name) const;
    [[nodiscard]] QStringList untold(const Mishaps &mishaps) const;
    [[nodiscard]] QStringList wrongJournals();
    [[nodiscard]] QStringList wrongSettings() const;
    [[nodiscard]] QStringList tornLines(int most) const;
    [[nodiscard]] QStringList leftovers(bool diskFailed) const;
    [[nodiscard]] QStringList queueFiles() const;

    QDateTime m_begin;
    int m_speed;
    bool m_countersLag = false;
    QElapsedTimer m_since;
    QMap<QString, QByteArray> m_journals; ///< as last seen, by name
};
