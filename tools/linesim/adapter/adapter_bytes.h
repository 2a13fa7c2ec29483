#pragma once

#include <QtGlobal>

/// What travels between a program and the adapter of its line, one byte each, beside the codes 00 to 1F.
namespace AdapterBytes
{
constexpr quint8 LastCode = 0x1F;

// From the program
constexpr quint8 NumberEnd = 0x40;
constexpr quint8 HangUp = 0x41;
constexpr quint8 NumberBegin = 0x42; // behind one of the two ways of dialling
constexpr quint8 Seize = 0x43;
constexpr quint8 Answer = 0x44;
constexpr quint8 AskVersion = 0x5B;
constexpr quint8 DialPulse = 0x5D;
constexpr quint8 DialCode = 0x5E;
constexpr quint8 Goodbye = 0x60; // it will close the port
constexpr quint8 NoSpeed = 0x64;
constexpr quint8 Speed50 = 0x65;
constexpr quint8 Speed100 = 0x66;
constexpr quint8 Speed200 = 0x67;
constexpr quint8 Switched = 0x69;
constexpr quint8 LastDigit = 0x09;
constexpr quint8 PlusDigit = 0x0B;

// To the program
constexpr quint8 Status = 0x20;  // with the next two
constexpr quint8 Drained = 0x10; // all has been transmitted
constexpr quint8 RoomMask = 0x0F;
constexpr quint8 StatusMask = 0xE0;
constexpr quint8 SayHangUp = 0x41; // events of a call
constexpr quint8 SayCalled = 0x43;
constexpr quint8 SayAnswered = 0x44;
constexpr quint8 SaySignal = 0x45;
constexpr quint8 Break = 0x4F; // again and again while the line is broken
constexpr quint8 NoSignal = 0x5E;
constexpr quint8 Echo = 0x80; // with the code
} // namespace AdapterBytes
