#pragma once

#include "tests/e2e/far_end.h"
#include "tests/month/office.h"

/// An office on a direct link, each of whose telegrams waits for the confirmation of the one before.
class DirectOffice : public Office
{
public:
    explicit DirectOffice(SteppedTime &time);

    void tend() override;
    [[nodiscard]] bool isOver() const override;

protected:
    void giveIncoming(const QString &mark) override { m_waiting << mark; }
    void giveOutgoing(int number, const QString &mark) override;
    [[nodiscard]] int arrived(const QString &mark) const override;
    [[nodiscard]] const QStringList &log() const override { return m_office.lines; }

private:
    FarEnd m_office;
    QStringList m_waiting; // telegrams that are not sent yet
    int m_given = 0;       // telegrams that are
    QByteArray m_stored;   // the tick at which the last one has been confirmed
};
