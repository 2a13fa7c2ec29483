#pragma once

#include "tests/procedures/skk_desk.h"

#include <QMetaType>

/// What comes of an answerback.
enum Fate { Waits, Taken, Refused };
Q_DECLARE_METATYPE(Fate)

/// \a text made up to \a length characters.
inline QString fill(const QString &text, int length)
{
    return text.leftJustified(length, QChar('-'));
}

/// The automatic send waits for an answerback of \a kind in \a state.
inline void await(const SkkDesk &desk, int state, int kind)
{
    desk.automatic(state, 9, kind != SubscriberAA);
    State.AutoModeWaitAA = kind;
}

/// What has come of it, awaited in \a state.
inline Fate fateIn(int state)
{
    if (State.AutoModeState == AutoIdle)
        return Refused;
    return State.AutoModeState == state ? Waits : Taken;
}
