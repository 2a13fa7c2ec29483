#include "link/state_text.h"

#include <QMutexLocker>

#include <utility>

void CStateText::mSet(const QString &value)
{
    const QMutexLocker lock(&mutex);
    text = value;
    text.detach();
    m_news.append(text);
}

QStringList CStateText::mTakeNews()
{
    const QMutexLocker lock(&mutex);
    return std::exchange(m_news, QStringList());
}
