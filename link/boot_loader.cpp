#include "link/boot_loader.h"

#include "link/boot_protocol.h"

#include <QSerialPort>

namespace
{
constexpr int ReplySize = 2;
constexpr int ReplyMs = 100;       // for each byte up to the answer's first
constexpr int SliceMs = 5;         // see waitForBytes()
constexpr int StatusMs = 20;       // for the answer's second
constexpr int MostSkipped = 65536; // a device that talks on and on is no loader and must not hold the program

template <int Length> void write(QSerialPort &port, const unsigned char (&bytes)[Length])
{
    port.write(reinterpret_cast<const char *>(bytes), Length);
}

template <int Length> bool exchange(QSerialPort &port, const unsigned char (&command)[Length])
{
    unsigned char reply[ReplySize];
    return SerialIO(port, command, Length, reply, ReplySize);
}

/// Waits in slices: on a machine that gives the program no time, only one of them passes meanwhile, and an
/// answer that came in time is still found.
bool waitForBytes(QSerialPort &port, int ms)
{
    for (int waited = 0; waited < ms; waited += SliceMs)
        if (port.waitForReadyRead(SliceMs))
            return true;
    return false;
}

bool readByte(QSerialPort &port, int waitMs, unsigned char &byte)
{
    if (port.bytesAvailable() == 0 && !waitForBytes(port, waitMs))
        return false;
    return port.read(reinterpret_cast<char *>(&byte), 1) == 1;
}

unsigned char lowByte(quint32 number)
{
    return static_cast<unsigned char>(number & 0xFF);
}

unsigned char highByte(quint32 number)
{
    return static_cast<unsigned char>((number >> 8) & 0xFF);
}
} // namespace

bool SerialIO(QSerialPort &port, const unsigned char *command, int length, unsigned char *reply,
              int replySize)
{
    Q_ASSERT(replySize >= ReplySize);
    port.write(reinterpret_cast<const char *>(command), length);
    for (int skipped = 0; skipped <= MostSkipped && readByte(port, ReplyMs, reply[0]); ++skipped)
        if (reply[0] == BootProtocol::InSync)
            return readByte(port, StatusMs, reply[1]) && reply[1] == BootProtocol::Ok;
    return false;
}

void BootLoader::sendSync(QSerialPort &port)
{
    write(port, {BootProtocol::GetSync, BootProtocol::EndMark});
    (void)waitForBytes(port, ReplyMs);
    port.readAll();
}

bool BootLoader::getSync(QSerialPort &port)
{
    return exchange(port, {BootProtocol::GetSync, BootProtocol::EndMark});
}

bool BootLoader::enterProgramming(QSerialPort &port)
{
    return exchange(port, {BootProtocol::EnterProgramming, BootProtocol::EndMark});
}

bool BootLoader::loadAddress(QSerialPort &port, quint32 address)
{
    const quint32 word = address / 2;
    return exchange(port, {BootProtocol::LoadAddress, lowByte(word), highByte(word), BootProtocol::EndMark});
}

bool BootLoader::programPage(QSerialPort &port, const unsigned char *data, quint32 count)
{
    write(port, {BootProtocol::ProgramPage, highByte(count), lowByte(count), BootProtocol::FlashMemory});
    port.write(reinterpret_cast<const char *>(data), count);
    return exchange(port, {BootProtocol::EndMark});
}

bool BootLoader::leaveProgramming(QSerialPort &port)
{
    return exchange(port, {BootProtocol::LeaveProgramming, BootProtocol::EndMark});
}
