#pragma once

#include <QtGlobal>

/// A TCP port that nobody listens on, for this process alone until its end: no other call, here or in another
/// test program, gets it, and the system gives it to no outgoing connection. Ends the process if there is
/// none.
[[nodiscard]] quint16 freePort();
