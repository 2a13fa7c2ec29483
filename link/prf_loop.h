#pragma once

#include <QByteArray>

class CPrfThread;
class QSerialPort;

/// One connection of the perforator thread, from the opened port until the thread is to drop it.
class CPrfLoop
{
public:
    CPrfLoop(CPrfThread &thread, QSerialPort &port, int baudIndex);
    void run();

private:
    [[nodiscard]] bool running() const;
    void pass();
    [[nodiscard]] QByteArray read();
    void take(const QByteArray &bytes);
    void deliver(const QByteArray &codes);
    void sendCommands();
    void punchPiece();
    void write(const QByteArray &bytes);

    CPrfThread &m_thread;
    QSerialPort &m_port;
    const QByteArray m_modeByte;
    int m_receiveRegister = 0;
    int m_sendRegister = 0;
    int m_room = 0; ///< codes that the adapter can take; unknown before the first status
};
