#pragma once

#include "tests/e2e/far_end.h"
#include "tests/e2e/station.h"

/// A workstation of the direct procedure on the simulated adapter of a far end, both under one clock at
/// fivefold speed.
class AdapterStation : public Station
{
public:
    explicit AdapterStation(const FarEnd &farEnd);
    /// Shows what both ends have noted if the test has failed.
    ~AdapterStation() override;

    void queue(const QString &text) const; ///< as the file queueName()
    /// Whether the journal has all of \a text as sent: an adapter with echo reports the last characters when
    /// the far end has long had them and the file has been moved.
    [[nodiscard]] bool hasSent(const QString &text) const;
    /// Times that the program was ready to take what the line brings.
    [[nodiscard]] int connections() const;

    /// The adapter of a far end, of the generation "old" or "new".
    [[nodiscard]] static FarEnd::Adapter adapterOf(const QString &firmware, const QStringList &more = {});
    [[nodiscard]] static QString queueName();
    /// Rows of both generations.
    static void generations();

private:
    const FarEnd &m_farEnd;
};

/// Both leave with status 0, and the far end blames nothing; the workstation's books agree unless they are
/// \a torn.
void verifyOrderlyEnd(Station &station, FarEnd &farEnd, bool torn = false);
