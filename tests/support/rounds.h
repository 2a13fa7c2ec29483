#pragma once

/// Whether \a round comes out as in quiet once in a few times. A busy machine may hold up either end of a
/// line for longer than an answer is waited for.
template <class Round> [[nodiscard]] bool onceInAFew(Round round)
{
    constexpr int Rounds = 4;
    for (int i = 0; i < Rounds; ++i)
        if (round())
            return true;
    return false;
}
