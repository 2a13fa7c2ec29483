#pragma once

#include <QString>

#include <optional>

/// One message of the terminal, as a switching centre reads it.
struct TerminalMessage {
    enum Kind {
        ReceiptRequest, ///< "|ЗЗ "
        Receipt,        ///< "КС ВАШ nnn=nnn", the figure in number
        Stop,           ///< "КС СТОП"
        Text,           ///< "КС ТЕКСТ"
        Confirmation,   ///< "КС Рnnn ПРИН name", the number and the operator's name
        Telegram,       ///< "nnn text"
        Broken,         ///< a message that another one cut short, or that never ended
        Foreign         ///< text of no form
    };
    Kind kind = Foreign;
    int number = -1;
    QString text; ///< telegram, operator's name, or what was not understood
};

/// Cuts the terminal's line into messages, strictly: each form to the letter, nothing but line ends between
/// them.
class TerminalReader
{
public:
    void take(const QString &text);
    /// The next message, if one is complete.
    [[nodiscard]] std::optional<TerminalMessage> next();
    /// The line has been silent for long: what has not ended by now is broken.
    [[nodiscard]] std::optional<TerminalMessage> giveUp();
    /// The line was cut: the rest of what was under way comes without its beginning.
    void expectRest() { m_restExpected = true; }
    [[nodiscard]] bool isInside() const { return !m_pending.isEmpty(); } ///< within a message
    [[nodiscard]] bool isInsideTelegram() const; ///< within a message that has begun as a telegram

private:
    [[nodiscard]] std::optional<TerminalMessage> takeBracketed();
    [[nodiscard]] TerminalMessage takeRequest();
    [[nodiscard]] TerminalMessage takeForeign();

    QString m_pending;
    bool m_restExpected = false;
};
