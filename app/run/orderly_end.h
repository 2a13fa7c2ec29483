#pragma once

/// An end that the operating system asks for: SIGTERM, SIGINT (on Windows the console's events) and the end
/// of the user's session. It goes the operator's way, without the question.

/// Starts the countdown of the orderly close, 5 ticks in mode 3 and 2 otherwise; a running one goes on. A
/// dialog that is open then does not hold the end up.
void requestOrderlyEnd();

/// The session ends: requests the end and lets the program run until it is over, so that the session does
/// not take the process away before the line is left.
void endWithSession();

/// Connects the operating system's requests. The application must exist; the event loop need not run yet.
void installOrderlyEnd();

/// The part of installOrderlyEnd() that belongs to one operating system: orderly_end_unix.cpp, _win.cpp.
void installSystemRequests();
