#pragma once

#include <QString>

/// The account of what the workstation may send. Windows go out and text comes back on two directions of
/// one stream, so what the workstation has seen is known only by a fence: the answer to a keep-alive tells
/// that it has read all that went out before that keep-alive.
class WindowLedger
{
public:
    void granted(int characters); ///< a window went out
    /// A flow report went out: the workstation's next piece holds at most \a characters.
    void limited(int characters);
    void fenceSent();     ///< a keep-alive went out
    void fenceAnswered(); ///< and was answered
    /// Text of \a characters came, or a control command of that length, which is never cut. Returns the
    /// breach in words, empty if there is none.
    [[nodiscard]] QString take(int characters, bool isCommand = false);
    /// Nothing is judged any more on this connection, as after noise that may have held windows.
    void suspend();

    int budget = 0;        ///< characters granted and not yet come
    bool enforced = false; ///< the workstation is known to have heard this end

private:
    bool m_suspended = false;
    int m_lastGrant = 0;
    int m_beforeFence = 0; // the one window that can still be in force when the fence is answered
    int m_afterFence = 0;  // granted since the fence went out
    int m_flowLimit = -1;  // waits for the next fence
};
