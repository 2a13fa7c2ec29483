#pragma once

#include <QString>

/// A command by its name, and what carries it out.
template <class Actor> struct NamedCommand {
    const char *name;
    void (Actor::*act)(const QString &argument);
};

/// Runs the command of \a table that is called \a name; false if it has none.
template <class Actor, class Table>
[[nodiscard]] bool runFrom(const Table &table, Actor &actor, const QString &name, const QString &argument)
{
    for (const NamedCommand<Actor> &known : table) {
        if (name != QLatin1String(known.name))
            continue;
        (actor.*known.act)(argument);
        return true;
    }
    return false;
}
