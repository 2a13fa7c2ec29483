#pragma once

#include "link/line_chunk.h"

#include <QMutex>
#include <QString>

/// A text shared by two threads; \a text is touched only under \a mutex, held for the copy alone.
struct CMutexString {
    QString text;
    mutable QMutex mutex;

    /// Assigns under the mutex; the stored text owns its data.
    void mSet(const QString &value);
    /// A copy taken under the mutex.
    [[nodiscard]] QString mGet() const;
    /// Takes the whole text under the mutex and leaves it empty.
    [[nodiscard]] QString mTake();
    [[nodiscard]] bool mIsEmpty() const;
    /// Appends under the mutex.
    void mAppend(const QString &more);
};

/// A text that one thread fills and another takes from its head. While it has operator's parts, \a text is
/// changed by the calls of this class alone, or emptied.
struct CTlgString : CMutexString {
    QString unused; ///< kept in the object's layout; no operation reads it
    COperatorParts operatorParts;

    // The caller of these holds the mutex.

    /// Returns the first \a n characters (all if there are fewer) and removes them.
    [[nodiscard]] QString getDataAndClear(int n);
    /// The same, and whose text they are.
    [[nodiscard]] LineChunk takeChunk(int n);
    /// Returns the first \a n characters (all if there are fewer), which stay until dropHeld().
    [[nodiscard]] LineChunk holdHead(int n);
    /// Removes what is still there of the characters that holdHead() returned.
    void dropHeld();

    // These hold the mutex themselves, and tell the operator's parts of the change.

    /// Assigns a procedure's text.
    void mSet(const QString &value);
    void mAppend(const QString &more);
    /// Appends what the operator sends by hand, its line ends as "<" and ">".
    void mAppendOperators(const QString &more);
    /// Takes the whole text and leaves it empty.
    [[nodiscard]] QString mTake();

private:
    int m_held = 0; // characters at the head that holdHead() has returned and nobody has taken since
};
