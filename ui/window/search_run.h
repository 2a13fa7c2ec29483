#pragma once

#include "records/telegram_search.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <optional>

class CSearchProgressDialog;
class QWidget;

/// A search that goes on between the events of the window, so that line, tick and journal do not wait for it.
/// One that lasts longer than a second gets a box by which the operator can end it; what it has found by then
/// stays. Main thread.
class CSearchRun : public QObject
{
    Q_OBJECT

public:
    enum Outcome { None, Running, Whole, Cancelled };

    /// Both outlive the run or are its parents.
    CSearchRun(QWidget *window, CTableViewModel_SearchResult &found);

    /// Begins to append to the list what \a request asks for. One that is under way is ended before. A short
    /// search is over when the call returns.
    void start(const CTelegramSearch::Request &request);
    void stop(); ///< ends the search as the operator does
    [[nodiscard]] Outcome outcome() const { return m_outcome; }

signals:
    void progressed(); ///< of the list, or of the outcome

private:
    void step();
    void end(Outcome outcome);
    void showBox();
    void closeBox();

    QWidget *m_window;
    CTableViewModel_SearchResult &m_found;
    std::optional<CTelegramSearch> m_search;
    Outcome m_outcome = None;
    QTimer m_next;  ///< the next slice
    QTimer m_delay; ///< until the box is shown
    QPointer<CSearchProgressDialog> m_box;
};
