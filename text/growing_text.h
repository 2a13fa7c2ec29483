#pragma once

#include "text/scan_position.h"

#include <QString>

/// A text that is gathered at its end and consumed from its head. Every change goes through it, so it knows
/// when remembered positions in it end (CScanPosition). Reads like a QString.
class CGrowingText
{
public:
    CGrowingText() = default;
    CGrowingText(const CGrowingText &) = delete;
    CGrowingText &operator=(const CGrowingText &) = delete;

    void append(const QString &more) { m_text += more; }
    /// Removes the first \a count characters; none is no cut.
    void removeHead(int count);
    /// Keeps the last \a count characters.
    void keepTail(int count) { removeHead(m_text.size() - count); }
    void clear() { *this = QString(); }
    CGrowingText &operator=(const QString &text);

    /// Another number after each change that was no append.
    [[nodiscard]] quint64 lastCut() const { return m_lastCut; }

    operator const QString &() const { return m_text; } // NOLINT: reads like the text
    [[nodiscard]] bool operator==(const QString &other) const { return m_text == other; }
    [[nodiscard]] int size() const { return m_text.size(); }
    [[nodiscard]] bool isEmpty() const { return m_text.isEmpty(); }
    [[nodiscard]] QChar at(int i) const { return m_text.at(i); }
    [[nodiscard]] QString left(int count) const { return m_text.left(count); }
    [[nodiscard]] QString mid(int from, int count = -1) const { return m_text.mid(from, count); }
    [[nodiscard]] QStringRef midRef(int from, int count) const { return m_text.midRef(from, count); }
    [[nodiscard]] int indexOf(QChar c, int from = 0) const { return m_text.indexOf(c, from); }
    [[nodiscard]] int indexOf(const QString &form, int from = 0) const { return m_text.indexOf(form, from); }

private:
    QString m_text;
    quint64 m_lastCut = CScanPosition::nextCut();
};
