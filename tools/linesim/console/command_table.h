#pragma once

#include <QString>

#include <cstddef>

/// A command by its name, and what carries it out. What is behind the name and a blank is its argument.
template <class Actor> struct Command {
    const char *name;
    void (*act)(Actor &actor, const QString &argument);
};

/// Runs the command of \a table that is called \a name; false if it has none.
template <class Actor, std::size_t N>
[[nodiscard]] bool runFrom(const Command<Actor> (&table)[N], Actor &actor, const QString &name,
                           const QString &argument)
{
    for (const Command<Actor> &known : table) {
        if (name != QLatin1String(known.name))
            continue;
        known.act(actor, argument);
        return true;
    }
    return false;
}
