#include "link/shared_strings.h"

#include <QMutexLocker>

#include <utility>

void CMutexString::mSet(const QString &value)
{
    const QMutexLocker lock(&mutex);
    text = value;
    text.detach();
}

QString CMutexString::mGet() const
{
    const QMutexLocker lock(&mutex);
    return text;
}

QString CMutexString::mTake()
{
    const QMutexLocker lock(&mutex);
    return std::exchange(text, QString());
}

bool CMutexString::mIsEmpty() const
{
    const QMutexLocker lock(&mutex);
    return text.isEmpty();
}

void CMutexString::mAppend(const QString &more)
{
    const QMutexLocker lock(&mutex);
    text.append(more.constData(), more.size()); // a copy, even into an empty text
}

QString CTlgString::getDataAndClear(int n)
{
    return takeChunk(n).text;
}

LineChunk CTlgString::takeChunk(int n)
{
    if (n <= 0)
        return {};
    m_held = qMax(0, m_held - n);
    operatorParts.limitTo(text.size());
    if (n >= text.size())
        return {std::exchange(text, QString()), std::exchange(operatorParts, COperatorParts())};
    LineChunk chunk{text.left(n), operatorParts.takeHead(n)};
    text.remove(0, n);
    return chunk;
}

LineChunk CTlgString::holdHead(int n)
{
    m_held = qBound(0, n, text.size());
    COperatorParts parts = operatorParts;
    return {text.left(m_held), parts.takeHead(m_held)};
}

void CTlgString::dropHeld()
{
    (void)getDataAndClear(m_held);
}

void CTlgString::mSet(const QString &value)
{
    const QMutexLocker lock(&mutex);
    (void)takeChunk(text.size());
    text = value;
    text.detach();
}

void CTlgString::mAppend(const QString &more)
{
    const QMutexLocker lock(&mutex);
    operatorParts.limitTo(text.size());
    text.append(more.constData(), more.size()); // a copy, even into an empty text
}

void CTlgString::mAppendOperators(const QString &more)
{
    const QMutexLocker lock(&mutex);
    operatorParts.limitTo(text.size());
    operatorParts.add(text.size(), text.size() + more.size());
    text.append(more.constData(), more.size());
}

QString CTlgString::mTake()
{
    const QMutexLocker lock(&mutex);
    return takeChunk(text.size()).text;
}
