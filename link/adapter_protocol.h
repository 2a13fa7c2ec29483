#pragma once

#include <QtGlobal>

/// The bytes between program and line adapter, at 9600 baud; every byte stands alone unless said otherwise.
/// 0x00..0x1F are codes of MTK-2 in both directions.
namespace AdapterProtocol
{
// Program to adapter
constexpr char ModeNoSpeed = 0x64;
constexpr char Mode50 = 0x65;
constexpr char Mode100 = 0x66;
constexpr char Mode200 = 0x67;
constexpr char ModeSwitched = 0x69; ///< switched channel, whatever the speed
constexpr char AskVersion = 0x5B;   ///< answered with three codes: year, month, day
constexpr char Lock = 0x5A;         ///< lock the adapter; never by the link, where "@L" is the letter
constexpr char Closing = 0x60;      ///< the program closes the port
constexpr char SeizeLine = 0x43;    ///< "@C"
constexpr char Answer = 0x44;       ///< "@E"
constexpr char HangUp = 0x41;       ///< "@H"
constexpr char DialN = 0x5D;        ///< "@N": DialN, DialBegin, digits, DialEnd
constexpr char Dialn = 0x5E;        ///< "@n": Dialn, DialBegin, digits, DialEnd
constexpr char DialBegin = 0x42;
constexpr char DialEnd = 0x40;
constexpr char DialPlus = 0x0B; ///< "+" among the digits, which travel as their values

// Adapter to program
constexpr quint8 LastCode = 0x1F;
constexpr quint8 CodeMask = 0x1F;
constexpr quint8 EchoFirst = 0x80; ///< 0x80..0x9F: a code just transmitted, from EchoVersion on
constexpr quint8 EchoLast = 0x9F;
constexpr quint8 StatusFirst = 0x20; ///< 0x20..0x3F
constexpr quint8 StatusLast = 0x3F;
constexpr quint8 StatusDrained = 0x10; ///< everything has been transmitted
constexpr quint8 StatusCredit = 0x0F;  ///< characters that the adapter can take now
constexpr quint8 LineBreak = 0x4F;
constexpr quint8 NoInputSignal = 0x5E;
constexpr quint8 Called = 0x43;   ///< "@C", in the switched channel as the next three
constexpr quint8 HungUp = 0x41;   ///< "@H"
constexpr quint8 Answered = 0x44; ///< "@E"
constexpr quint8 EventS = 0x45;   ///< "@S"

constexpr int EchoVersion = 20231111; ///< firmware from this date on echoes what it transmits
constexpr int VersionBase = 20000000;
constexpr int UnsentBytesLimit = 8; ///< bytes in the port that hold the next chunk back
} // namespace AdapterProtocol
