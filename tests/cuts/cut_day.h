#pragma once

#include "tests/cuts/cut_line.h"

#include <QElapsedTimer>

#include <memory>

/// A day of one line procedure at speed, with an operator at the workstation and telegrams both ways as long
/// as the line breaks. In the end the books of both sides must agree: no telegram lost, none there twice but
/// by the rules of the procedure.
class CutDay
{
public:
    virtual ~CutDay() = default;
    CutDay(const CutDay &) = delete;
    CutDay &operator=(const CutDay &) = delete;

    /// The day of "centre" or "switched", its far end there.
    [[nodiscard]] static std::unique_ptr<CutDay> of(const QString &procedure, const QString &role);
    [[nodiscard]] static QStringList procedures();

    void start(); ///< the workstation
    /// What the operator and people at the far end do, \a busy while new telegrams are handed in; to be
    /// called again and again.
    virtual void tend(bool busy) = 0;
    /// Everything that was handed in has come to its place.
    [[nodiscard]] virtual bool isOver() const = 0;
    /// What is wrong at the end of the day, the workstation having left.
    [[nodiscard]] virtual QStringList wrongBooks() const = 0;
    /// Telegrams of both ways, and how many were there twice by the rules.
    [[nodiscard]] virtual QString figures() const = 0;
    /// Where things stand, for one who waits in vain.
    [[nodiscard]] QString progress() const;

    /// How many bytes pass between two cuts at most; so that some telegrams get through.
    [[nodiscard]] int mostBytes() const { return m_mostBytes; }

    Station station;
    std::unique_ptr<CutLine> line;

protected:
    /// On the line in \a role, with \a farEnd of linesim's at its end.
    CutDay(const QString &role, const QStringList &farEnd, int mostBytes);

    [[nodiscard]] QString clock() const; ///< for a program that starts now
    /// Puts a telegram into the queue as another program does, with \a record if it is not empty.
    void queue(const QString &name, const QString &text, const QByteArray &record = QByteArray());
    [[nodiscard]] QStringList storedWith(const QString &mark) const; ///< paths below inp
    [[nodiscard]] QStringList queueFiles() const;
    /// Paths below out of the file \a name that has left the queue.
    [[nodiscard]] QStringList sentAs(const QString &name) const;
    /// What the far end blames but for the cuts themselves.
    [[nodiscard]] QStringList violations() const;

private:
    QElapsedTimer m_since;
    const int m_speed, m_mostBytes;
};
