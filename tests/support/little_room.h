#pragma once

class QTcpServer;

/// The machine of those that \a server accepts has room for some hundred bytes more than the program there
/// reads.
void giveLittleRoom(const QTcpServer &server);
