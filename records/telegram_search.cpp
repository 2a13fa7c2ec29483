#include "records/telegram_search.h"

#include "app/state.h"
#include "records/creation_time.h"

#include <QDeadlineTimer>
#include <QDir>

#include <algorithm>
#include <cstring>

namespace
{
constexpr int ReadAtATime = 1 << 18; // bytes; a telegram is far below

int countDays(const QDate &from, const QDate &to)
{
    return from.isValid() && to.isValid() ? int(std::max<qint64>(0, from.daysTo(to) + 1)) : 0;
}
} // namespace

CTelegramSearch::CTelegramSearch(const Request &request)
    : m_request(request), m_matcher(request.text.toUtf8()), m_dayCount(countDays(request.from, request.to))
{
    if (!request.text.isEmpty()) // twice the pattern, so that each reading brings something new
        m_bytes.resize(std::max(ReadAtATime, 2 * m_matcher.pattern().size()));
}

bool CTelegramSearch::next(int milliseconds, CTableViewModel_SearchResult &found)
{
    const QDeadlineTimer deadline(milliseconds);
    do {
        step();
    } while (!isOver() && !deadline.hasExpired());
    found.append(m_found);
    m_found.clear();
    return !isOver();
}

void CTelegramSearch::step()
{
    if (isOver())
        return;
    if (m_file.isOpen())
        readOn();
    else if (m_position < m_files.size())
        lookAt(m_files.at(m_position++));
    else
        listNext();
}

void CTelegramSearch::listNext()
{
    const QDate day = m_request.from.addDays(m_daysDone);
    const int direction = m_direction++;
    if (direction == Incoming && m_request.incoming)
        listDirectory(State.pathInp_forDate(day));
    else if (direction == Outgoing && m_request.outgoing)
        listDirectory(State.pathOut_forDate(day));
    if (direction < DirectionCount)
        return;
    m_direction = Incoming;
    ++m_daysDone;
}

void CTelegramSearch::listDirectory(const QString &path)
{
    m_files = QDir(path).entryInfoList({QStringLiteral("*")}, QDir::Files, QDir::Name);
    m_position = 0;
}

void CTelegramSearch::lookAt(const QFileInfo &file)
{
    if (m_request.text.isEmpty())
        return take(file);
    m_kept = 0;
    if (m_file.open(file))
        readOn();
}

void CTelegramSearch::readOn()
{
    // Read, not mapped into memory: another program may cut the file meanwhile.
    const int room = m_bytes.size() - m_kept;
    const int filled = m_kept + m_file.read(m_bytes.data() + m_kept, room);
    const bool contains = m_matcher.indexIn(m_bytes.constData(), filled) >= 0;
    if (contains)
        take(m_files.at(m_position - 1));
    if (contains || filled < m_bytes.size())
        return m_file.close();
    m_kept = m_matcher.pattern().size() - 1; // a hit may begin there and end in the next reading
    std::memmove(m_bytes.data(), m_bytes.constData() + filled - m_kept, std::size_t(m_kept));
}

void CTelegramSearch::take(const QFileInfo &file)
{
    CTableViewModelItem_SearchResult item;
    item.firstInDirectory = m_position == 1;
    item.date = m_request.from.addDays(m_daysDone);
    item.time = creationTime(file).time();
    item.fileName = file.fileName();
    item.dirPath = file.path();
    m_found << item;
}
