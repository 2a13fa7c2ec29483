#pragma once

#include "link/shared_strings.h"

#include <QStringList>

/// The link's state as the operator sees it, the newest text alone, and every text that it has had for the
/// journal: a text may be there for less time than the main thread needs to look.
struct CStateText : CMutexString {
    /// Assigns under the mutex; the stored text owns its data.
    void mSet(const QString &value);
    /// Takes the texts set since the last call, in order.
    [[nodiscard]] QStringList mTakeNews();

private:
    QStringList m_news;
};
