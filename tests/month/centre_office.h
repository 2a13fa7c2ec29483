#pragma once

#include "tests/e2e/far_end.h"
#include "tests/month/office.h"

/// An office at a switching centre, which renumbers after each midnight.
class CentreOffice : public Office
{
public:
    explicit CentreOffice(SteppedTime &time);

    void tend() override;
    [[nodiscard]] bool isOver() const override;
    [[nodiscard]] bool hasTurned() const override;

protected:
    void giveIncoming(const QString &mark) override;
    void giveOutgoing(int number, const QString &mark) override;
    [[nodiscard]] int arrived(const QString &mark) const override;
    [[nodiscard]] const QStringList &log() const override { return m_centre.lines; }

private:
    FarEnd m_centre;
    QElapsedTimer m_sinceFigures;
};
