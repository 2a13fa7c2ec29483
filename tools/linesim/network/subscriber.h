#pragma once

#include <QString>
#include <QVector>

#include <optional>

/// What a party does by itself at a moment of a connection, once.
struct Deed {
    enum What { Ask, HangUp, OwnAnswerback, Telegram, Check, Crypt, Say };
    enum When {
        Connected,     ///< the connection is there
        Question,      ///< the terminal asks for the first time
        Answerback,    ///< the terminal has answered for the first time
        Text,          ///< its text begins
        End,           ///< its text has ended
        LastQuestion,  ///< it asks for the first time behind a text
        LastAnswerback ///< it has answered for the second time
    };
    What what = Ask;
    When when = Connected;
    int seconds = 0; ///< later
};

/// How one call to a party goes.
struct Habits {
    /// How a question is answered.
    enum Answer {
        Right,
        Wrong,    ///< as somebody else
        Cut,      ///< in two pieces, with a pause between
        Half,     ///< the first piece alone
        Telegram, ///< a telegram in its place, and the answerback behind it
        None
    };
    QString result;       ///< the network's word; empty puts the call through
    QString sign;         ///< how success shows: "stamp", "df", "ask", "silence"; empty is the switch's way
    int seconds = 2;      ///< from the number to the result
    Answer first = Right; ///< before the terminal's text
    Answer last = Right;  ///< behind it
    QVector<Deed> deeds;
};

/// A party that can be called. Its calls go by its habits in turn, the last of them for ever.
struct Subscriber {
    QString number;
    QString answerback; ///< the text behind the opening; "ЦКС" for the exit to the centre
    QVector<Habits> habits;
    int calls = 0; ///< so far

    [[nodiscard]] bool isCentre() const { return answerback == QStringLiteral("ЦКС"); }
    [[nodiscard]] Habits nextHabits();
};

/// Words such as "busy", "sign=df", "seconds=9", "first=none", "last=cut", "ask@connect+5", "hang@text".
/// Empty, with the word at fault in \a wrong, if one is not understood.
[[nodiscard]] std::optional<Habits> parseHabits(const QString &words, QString &wrong);
/// One line a party: "NUMBER:ANSWERBACK:HABITS/HABITS...", the habits optional. Empty lines and those that
/// begin with ";" tell nothing.
[[nodiscard]] std::optional<QVector<Subscriber>> parseSubscribers(const QString &text, QString &wrong);
