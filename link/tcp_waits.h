#pragma once

#include "app/relaxed.h"

class QTcpSocket;

/// Waits of the link thread for a socket that a stop cuts short: \a stop is looked at ten times a second, so
/// that the program's end needs no force. Qt's own waits cannot be left.

/// Waits until \a socket, which is connecting, is connected; false after \a milliseconds, with the socket's
/// error as QTcpSocket::waitForConnected() sets it, and on a stop.
[[nodiscard]] bool waitUntilConnected(QTcpSocket &socket, int milliseconds, const Relaxed<bool> &stop);
/// Gives \a socket, which is closing, \a milliseconds to send what it holds; with a stop no more than
/// \a stoppingMilliseconds from there.
void waitUntilDisconnected(QTcpSocket &socket, int milliseconds, int stoppingMilliseconds,
                           const Relaxed<bool> &stop);
