#include "ui/window/search_run.h"

#include "ui/dialogs/search_progress_dialog.h"

namespace
{
constexpr int Slice = 20;        ///< milliseconds of search between two looks at the events
constexpr int DelayOfBox = 1000; ///< milliseconds
} // namespace

CSearchRun::CSearchRun(QWidget *window, CTableViewModel_SearchResult &found)
    : QObject(window), m_window(window), m_found(found)
{
    m_next.setInterval(0);
    m_delay.setInterval(DelayOfBox);
    m_delay.setSingleShot(true);
    connect(&m_next, &QTimer::timeout, this, &CSearchRun::step);
    connect(&m_delay, &QTimer::timeout, this, &CSearchRun::showBox);
}

void CSearchRun::start(const CTelegramSearch::Request &request)
{
    stop();
    m_search.emplace(request);
    m_outcome = Running;
    m_delay.start();
    m_next.start();
    step();
}

void CSearchRun::stop()
{
    if (m_search)
        end(Cancelled);
}

void CSearchRun::step()
{
    if (!m_search->next(Slice, m_found))
        return end(Whole);
    if (m_box)
        m_box->showProgress(m_search->daysDone(), m_search->dayCount(), m_found.rowCount());
    emit progressed();
}

void CSearchRun::end(Outcome outcome)
{
    m_next.stop();
    m_delay.stop();
    m_search.reset();
    m_outcome = outcome;
    closeBox();
    emit progressed();
}

// The window is barred while the box is there: what is searched cannot be changed, and nothing else waits.
void CSearchRun::showBox()
{
    m_box = new CSearchProgressDialog(m_window);
    connect(m_box, &QDialog::finished, this, &CSearchRun::stop);
    m_box->showProgress(m_search->daysDone(), m_search->dayCount(), m_found.rowCount());
    m_box->open();
}

void CSearchRun::closeBox()
{
    if (!m_box)
        return;
    m_box->disconnect(this);
    m_box->close();
    m_box->deleteLater();
    m_box = nullptr;
}
