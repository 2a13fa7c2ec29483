#pragma once

#include <QtGlobal>

/// The bytes between program and paper-tape adapter, at 9600 baud; every byte stands alone. 0x00..0x1F are
/// codes of MTK-2: to the adapter those to punch, from it those read from tape.
namespace PerforatorProtocol
{
// Program to adapter
constexpr quint8 ModeBase = 0x60; ///< with the speed's index plus 1: 0x61 for the first; answers each status
constexpr char StartRead = 0x51;  ///< start reading tape
constexpr char StopRead = 0x50;   ///< stop reading tape

// Adapter to program
constexpr quint8 KindMask = 0xE0; ///< none of these bits is set in a code; any other byte wants the mode byte
constexpr quint8 StatusKind = 0x20; ///< 0x20..0x3F
constexpr quint8 StatusRoom = 0x1F; ///< codes that the adapter can take now

constexpr int PieceLength = 4;      ///< characters written at once
constexpr int RoomLimit = 4;        ///< room up to which nothing is written; changes of register need it
constexpr int UnsentBytesLimit = 8; ///< bytes in the port that hold the next piece back
} // namespace PerforatorProtocol
