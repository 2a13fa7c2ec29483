#pragma once

#include <QtGlobal>

class QSerialPort;

/// One exchange with the boot loader: sends \a length bytes of \a command and takes the answer, two bytes,
/// into \a reply, whose room is \a replySize. What stands before the answer's first byte is skipped. True if
/// the answer is the good one; false without an answer in time too.
[[nodiscard]] bool SerialIO(QSerialPort &port, const unsigned char *command, int length, unsigned char *reply,
                            int replySize);

/// The commands of a boot loader, each true if it has been carried out.
namespace BootLoader
{
/// Sends the command for getting in step and drops what comes.
void sendSync(QSerialPort &port);
[[nodiscard]] bool getSync(QSerialPort &port);
[[nodiscard]] bool enterProgramming(QSerialPort &port);
/// Tells where the next block goes; \a address counts bytes and is even.
[[nodiscard]] bool loadAddress(QSerialPort &port, quint32 address);
/// Programs a block of \a count bytes, 65535 at most, into the flash.
[[nodiscard]] bool programPage(QSerialPort &port, const unsigned char *data, quint32 count);
[[nodiscard]] bool leaveProgramming(QSerialPort &port);
} // namespace BootLoader
