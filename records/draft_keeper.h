#pragma once

#include "records/draft.h"

#include <QThreadPool>

#include <atomic>

/// Keeps what is being written in a file of the data directory, for the next start after a kill or an end.
/// The file is replaced whole, on a thread of its own, as a slow disk may take seconds. Main thread.
class CDraftKeeper
{
public:
    /// The file lies in the current directory, whatever that will be later.
    CDraftKeeper();
    ~CDraftKeeper();
    CDraftKeeper(const CDraftKeeper &) = delete;
    CDraftKeeper &operator=(const CDraftKeeper &) = delete;

    /// What a former run has left; nothing if there is no such file, or if it is damaged.
    [[nodiscard]] std::optional<Draft> load() const;
    /// Takes \a now for what need not be kept: it is in the file, or nothing has been written yet.
    void settle(const Draft &now);
    /// Has \a now written, unless it is what was kept or settled last. False while the last one is still
    /// under way; it is to be offered again.
    bool offer(const Draft &now);
    /// Removes the file; \a now is settled.
    void discard(const Draft &now);
    /// Waits for what is under way, then for \a now.
    void finish(const Draft &now);

    /// Whether the last writing or removal that has ended failed. It is done anew with the next offer.
    [[nodiscard]] bool isFailing() const { return m_failed; }
    /// How often a writing or removal has failed behind one that had not. Whoever tells each outage once
    /// compares this number: isFailing() may be over and begin anew between two looks.
    [[nodiscard]] int outages() const { return m_outages; }
    [[nodiscard]] bool isBusy() const { return m_busy; }

    static const QString fileName; ///< "velda_draft.json"

private:
    void end(bool done);

    const QString m_path;
    std::optional<Draft> m_settled; ///< written, or need not be
    bool m_undiscarded = false;     ///< the file could not be removed
    QThreadPool m_writer;
    std::atomic<bool> m_busy{false}, m_failed{false};
    std::atomic<int> m_outages{0};
};
