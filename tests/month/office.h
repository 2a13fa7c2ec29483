#pragma once

#include "tests/e2e/station.h"
#include "tests/month/stepped_time.h"

#include <QDate>

#include <memory>

/// A busy office on a line of one procedure: its workstation, which lives all the time, its far end, and the
/// telegrams of one day after the other.
class Office
{
public:
    virtual ~Office() = default;
    Office(const Office &) = delete;
    Office &operator=(const Office &) = delete;

    /// Of "direct", "centre" or "switched".
    [[nodiscard]] static std::unique_ptr<Office> of(const QString &procedure, SteppedTime &time);

    void start();
    /// A new day: what the former one has handed in is looked at no more.
    void beginDay();
    /// Hands in \a count telegrams, each way.
    void handIn(int count);
    virtual void tend() {} ///< what people at the far end do; to be called again and again
    [[nodiscard]] virtual bool isOver() const; ///< everything handed in has come to its place
    /// Whether the far end has turned its day, if it counts days.
    [[nodiscard]] virtual bool hasTurned() const { return true; }
    /// What is wrong with the telegrams of the day, and what the far end blames.
    [[nodiscard]] QStringList wrong() const;
    [[nodiscard]] QString progress() const;
    /// Lines that velda-books has against \a date, but for those that are known.
    [[nodiscard]] QStringList wrongBooks(const QDate &date) const;

    static constexpr int KeptDays = 5; ///< of files and journals

    Station station;

protected:
    Office(SteppedTime &time, int procedure);

    virtual void giveIncoming(const QString &mark) = 0;
    virtual void giveOutgoing(int number, const QString &mark) = 0;
    /// How often the telegram with \a mark has come to the far end.
    [[nodiscard]] virtual int arrived(const QString &mark) const = 0;
    [[nodiscard]] virtual const QStringList &log() const = 0; ///< of the far end

    [[nodiscard]] QStringList logOfDay() const { return log().mid(m_logBegin); }
    [[nodiscard]] QStringList logOfDay(const QString &part) const { return logOfDay().filter(part); }
    void queue(const QString &name, const QString &text, const QByteArray &record = QByteArray());
    [[nodiscard]] int stored(const QString &mark) const; ///< how often, in the days of today
    [[nodiscard]] QString day() const { return m_day; }
    [[nodiscard]] QByteArray lastTick() const { return station.read(QStringLiteral("tick")); }

    SteppedTime &time;
    QStringList incoming, outgoing; ///< marks of the day

private:
    [[nodiscard]] QStringList queueFiles() const;

    QString m_day; // "20280229"
    int m_logBegin = 0;
};

/// \a mark as the text of a telegram, of some lines.
[[nodiscard]] QString textOf(const QString &mark);
/// On one line, as the far ends note it.
[[nodiscard]] QString onOneLine(QString text);
