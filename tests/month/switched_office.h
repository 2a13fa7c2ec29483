#pragma once

#include "tests/e2e/switch_end.h"
#include "tests/month/office.h"

/// An office on a switched network: files to subscribers, and calls from one, each with a telegram.
class SwitchedOffice : public Office
{
public:
    explicit SwitchedOffice(SteppedTime &time);

    void tend() override;
    [[nodiscard]] bool isOver() const override;

protected:
    void giveIncoming(const QString &mark) override { m_waiting << mark; }
    void giveOutgoing(int number, const QString &mark) override;
    [[nodiscard]] int arrived(const QString &mark) const override;
    [[nodiscard]] const QStringList &log() const override { return m_network.lines; }

private:
    enum Call { Under, Missed, Over };
    [[nodiscard]] Call lastCall() const;

    SwitchEnd m_network;
    QStringList m_waiting; // telegrams that the caller has still to send
    int m_calls = 0;       // made
};
