#pragma once

#include "text/scan_position.h"

#include <QString>
#include <QStringList>

/// The lines of a journal. They only grow, by more lines or in the last one; every change goes through here,
/// so the list knows when remembered positions in it end (CScanPosition). Reads like a QStringList.
class CJournalLines
{
public:
    CJournalLines() = default;
    CJournalLines(const CJournalLines &) = delete;
    CJournalLines &operator=(const CJournalLines &) = delete;

    void append(const QString &line) { m_lines.append(line); }
    void extendLast(QChar c) { m_lines.last().append(c); }
    void extendLast(const QString &text) { m_lines.last().append(text); }
    CJournalLines &operator<<(const QString &line);
    /// Exchanges line \a i.
    void replace(int i, const QString &line);
    void clear() { *this = QStringList(); }
    CJournalLines &operator=(const QStringList &lines);

    /// Another number after each change that was no growth.
    [[nodiscard]] quint64 lastCut() const { return m_lastCut; }

    /// The list itself, which stands in the same place as long as the journal does.
    [[nodiscard]] const QStringList &list() const { return m_lines; }
    operator const QStringList &() const { return m_lines; } // NOLINT: reads like the list
    [[nodiscard]] bool operator==(const QStringList &other) const { return m_lines == other; }
    [[nodiscard]] int size() const { return m_lines.size(); }
    [[nodiscard]] bool isEmpty() const { return m_lines.isEmpty(); }
    [[nodiscard]] const QString &at(int i) const { return m_lines.at(i); }
    [[nodiscard]] const QString &operator[](int i) const { return m_lines.at(i); }
    [[nodiscard]] const QString &first() const { return m_lines.first(); }
    [[nodiscard]] const QString &last() const { return m_lines.last(); }
    [[nodiscard]] QStringList mid(int from, int count = -1) const { return m_lines.mid(from, count); }
    [[nodiscard]] QString join(QChar separator) const { return m_lines.join(separator); }
    [[nodiscard]] bool contains(const QString &line) const { return m_lines.contains(line); }
    [[nodiscard]] QStringList filter(const QString &part) const { return m_lines.filter(part); }
    [[nodiscard]] QStringList::const_iterator begin() const { return m_lines.begin(); }
    [[nodiscard]] QStringList::const_iterator end() const { return m_lines.end(); }

private:
    QStringList m_lines;
    quint64 m_lastCut = CScanPosition::nextCut();
};
