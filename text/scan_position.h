#pragma once

#include <QtGlobal>

#include <atomic>

/// How far a text has been looked at, so that the next look begins there. It survives nothing but an append:
/// the text (CGrowingText, CJournalLines) takes a new number, lastCut(), with every other change of itself,
/// and a position that was reached before is void, as it is in any other text. The thread of the text.
class CScanPosition
{
public:
    /// True if the text has been looked at and has only grown since.
    template <class Text> [[nodiscard]] bool holds(const Text &text) const
    {
        return m_cut == text.lastCut() && !beginAnew;
    }
    /// Where to begin: the place reached, 0 if the position does not hold.
    template <class Text> [[nodiscard]] int in(const Text &text) const { return holds(text) ? m_at : 0; }
    /// The text, as it is now, has been looked at up to \a at.
    template <class Text> void reach(const Text &text, int at)
    {
        m_cut = text.lastCut();
        m_at = at;
    }
    void forget() { *this = CScanPosition(); }

    /// A number that no text has had. Any thread.
    [[nodiscard]] static quint64 nextCut()
    {
        static std::atomic<quint64> last{0};
        return ++last;
    }

    /// No position holds: each look begins at the start. What comes of it must be the same; the tests
    /// compare.
    static inline bool beginAnew = false;

private:
    quint64 m_cut = 0; ///< of the text when it was looked at; 0: never
    int m_at = 0;
};
