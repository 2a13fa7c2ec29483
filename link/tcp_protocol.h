#pragma once

#include <QtGlobal>

/// The bytes and figures of the TCP links. Everything else on the wire is CORVA text, in which "@" begins a
/// control command.
namespace TcpProtocol
{
constexpr char KeepAlive = 0x16;          ///< SYN, answered with itself
constexpr quint8 WindowMask = 0xF0;       ///< the bits that tell a window report
constexpr quint8 WindowReport = 0xB0;     ///< 0xB0..0xBF: the low 4 bits, doubled, are granted characters
constexpr quint8 WindowValue = 0x0F;      ///< the bits that hold the grant
constexpr char WindowAnswer = char(0xBF); ///< answer to a report; from the server also its poll
constexpr char CommandMark = '@';         ///< begins a control command
constexpr int FlowReportLength = 4;       ///< "@" digit digit "*"
constexpr int FullChunk = 32;             ///< characters of a chunk while nothing narrows it
constexpr int UnsentBytesLimit = 8;       ///< bytes in the socket that hold the next chunk back

constexpr int ShortestKey = 2; ///< bytes; with fewer a link stays plain

constexpr int ConnectMs = 3000;
constexpr int ListenStepMs = 1000;
constexpr int ReadMs = 10;
constexpr int SeedMs = 500;         ///< what the peer has for its seed
constexpr int DisconnectMs = 30000; ///< what a closing server socket has for its last bytes
constexpr int StoppingMs = 300;     ///< the same while the program ends

constexpr int ClientPause = 10; ///< seconds from a lost connection to the next attempt
constexpr int ServerPause = 5;
constexpr int ListenPause = 60;  ///< seconds after a failure to listen
constexpr int BackoffStep = 60;  ///< seconds by which the client's wait grows
constexpr int BackoffLimit = 10; ///< steps

constexpr qint64 ReadSlice = 64LL * 1024; ///< bytes that one pass reads at most
constexpr int UntakenLimit = 1024 * 1024; ///< characters in recvBuffer that stop the reading
constexpr qint64 UnreadAnswers = 4096;    ///< bytes in the socket that stop the reading
} // namespace TcpProtocol
