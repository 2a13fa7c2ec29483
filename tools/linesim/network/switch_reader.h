#pragma once

#include <QString>

#include <optional>

/// One thing that a terminal does on a switched line.
struct SwitchItem {
    enum Kind {
        Call,       ///< "@C"
        Number,     ///< "@N" or "@n", digits, "@"; the digits in text
        Seize,      ///< "@E": takes the line, or an incoming call
        HangUp,     ///< "@H"
        Question,   ///< "#*": who is there
        Answerback, ///< the terminal's own
        Muted,      ///< "АО ВЫКЛ": questions are not answered from now on
        Unmuted,    ///< "АО ВКЛ"
        Text,       ///< anything else
        Unknown     ///< a command that there is not
    };
    Kind kind = Text;
    QString text; ///< as it came
};

/// Cuts the terminal's line into its items. What may yet become a form waits for the rest.
class SwitchReader
{
public:
    /// \a answerback is the text that the terminal's own answerback bears.
    explicit SwitchReader(const QString &answerback);

    void take(const QString &text) { m_pending += text; }
    /// The next item, if one is complete.
    [[nodiscard]] std::optional<SwitchItem> next();
    /// The line has been silent: what waits is text, and may be what it is.
    [[nodiscard]] std::optional<SwitchItem> giveUp();
    void forget() { m_pending.clear(); } ///< the rest of what waits will not come
    [[nodiscard]] bool isInside() const { return !m_pending.isEmpty(); } ///< something waits for its rest

private:
    [[nodiscard]] std::optional<SwitchItem> takeCommand();
    [[nodiscard]] SwitchItem cut(SwitchItem::Kind kind, int size);

    QString m_answerback;
    QString m_pending;
};
