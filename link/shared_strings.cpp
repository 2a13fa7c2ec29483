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
    if (n <= 0)
        return QString();
    m_held = qMax(0, m_held - n);
    if (n >= text.size())
        return std::exchange(text, QString());
    const QString head = text.left(n);
    text.remove(0, n);
    return head;
}

QString CTlgString::holdHead(int n)
{
    m_held = qBound(0, n, text.size());
    return text.left(m_held);
}

void CTlgString::dropHeld()
{
    (void)getDataAndClear(m_held);
}

void CTlgString::mAppend(const QString &more)
{
    const QMutexLocker lock(&mutex);
    text.append(more.constData(), more.size()); // a copy, even into an empty text
}

QString CTlgString::mTake()
{
    const QMutexLocker lock(&mutex);
    return getDataAndClear(text.size());
}

QString CTlgString::mGet() const
{
    const QMutexLocker lock(&mutex);
    return text;
}

bool CTlgString::mIsEmpty() const
{
    const QMutexLocker lock(&mutex);
    return text.isEmpty();
}
