#include "records/draft_keeper.h"

#include "app/ordinary_file.h"
#include "app/whole_file.h"

#include <QFile>
#include <QFileInfo>

namespace
{
constexpr qint64 Largest = 128LL * 1024 * 1024; // bytes; several times what an editor can be worked with
}

const QString CDraftKeeper::fileName = QStringLiteral("velda_draft.json");

CDraftKeeper::CDraftKeeper() : m_path(QFileInfo(fileName).absoluteFilePath())
{
    m_writer.setMaxThreadCount(1);
}

CDraftKeeper::~CDraftKeeper()
{
    m_writer.waitForDone();
}

std::optional<Draft> CDraftKeeper::load() const
{
    const std::optional<QByteArray> content = readOrdinary(m_path, Largest);
    return content ? draftOf(*content) : std::nullopt;
}

void CDraftKeeper::settle(const Draft &now)
{
    m_settled = now;
}

bool CDraftKeeper::offer(const Draft &now)
{
    if (m_busy)
        return false;
    const bool isSettled = m_settled && now == *m_settled;
    if (isSettled && m_undiscarded)
        discard(now);
    if (isSettled && (m_undiscarded || !m_failed))
        return true;
    m_undiscarded = false;
    m_settled = now;
    m_busy = true;
    m_writer.start([this, now] {
        end(replaceWholeFile(m_path, contentOf(now)));
        m_busy = false;
    });
    return true;
}

void CDraftKeeper::discard(const Draft &now)
{
    m_writer.waitForDone();
    m_settled = now;
    // Where nothing can be removed, nothing must come back at least.
    m_undiscarded =
        QFileInfo(m_path).isFile() && !QFile::remove(m_path) && !replaceWholeFile(m_path, QByteArray());
    end(!m_undiscarded);
}

/// On the writer's thread, or on the main one while the writer rests.
void CDraftKeeper::end(bool done)
{
    if (!done && !m_failed)
        ++m_outages;
    m_failed = !done;
}

void CDraftKeeper::finish(const Draft &now)
{
    m_writer.waitForDone();
    (void)offer(now);
    m_writer.waitForDone();
}
