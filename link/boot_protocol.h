#pragma once

/// The bytes between program and boot loader: the part in use of STK500 version 1, the public serial protocol
/// of the AVR programmers. A command ends with EndMark and is answered with InSync and Ok.
namespace BootProtocol
{
// Program to loader
constexpr unsigned char GetSync = 0x30;
constexpr unsigned char EnterProgramming = 0x50;
constexpr unsigned char LeaveProgramming = 0x51;
constexpr unsigned char LoadAddress = 0x55; ///< low byte, high byte, in 16-bit words
constexpr unsigned char ProgramPage = 0x64; ///< count, high byte first, FlashMemory, data
constexpr unsigned char FlashMemory = 0x46;
constexpr unsigned char EndMark = 0x20;

// Loader to program
constexpr unsigned char InSync = 0x14;
constexpr unsigned char Ok = 0x10;
} // namespace BootProtocol
