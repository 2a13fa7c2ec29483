#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

class CTlgThread;

/// The rules of the adapter link between the bytes of one connection and the texts of the link thread,
/// without the port. Lives for one connection; the link thread owns it.
class CAdapterStream
{
public:
    /// \a prefix begins the state texts. Firmware \a version as a date, 20231111; 0 if unknown.
    CAdapterStream(CTlgThread &thread, const QString &prefix, int version);

    /// Takes the bytes of one read and hands their text on in one piece. After it statusPending tells
    /// whether the mode byte is owed.
    void take(const QByteArray &bytes);
    /// One sending step: takes text within the credit, or one command, off the send buffer and hands its
    /// bytes to \a write, which tells whether they were taken. The send buffer stays locked meanwhile, so
    /// that the operator's clearing of it finds all that has not been written.
    void send(const std::function<bool(const QByteArray &bytes)> &write);

    /// The line mode command for Options.processMode and a speed in baud.
    [[nodiscard]] static char modeByte(int baud);
    /// The version in the reply to AskVersion, which may have other bytes mixed in; -1 while it is not
    /// whole, or for a reply of more than three codes.
    [[nodiscard]] static int versionFrom(const QByteArray &reply);
    /// \a bytes without statuses, echoes and events.
    [[nodiscard]] static QByteArray codesIn(const QByteArray &bytes);

    static constexpr int VersionCodes = 3; ///< of a reply

private:
    void takeByte(quint8 byte);
    void takeCode(quint8 code);
    void takeEcho(quint8 code);
    void takeStatus(quint8 status);
    void takeLineBreak();
    void takeNoSignal();
    [[nodiscard]] bool takeEvent(quint8 byte);
    [[nodiscard]] bool sendText(const std::function<bool(const QByteArray &bytes)> &write);
    [[nodiscard]] bool sendCommand(const std::function<bool(const QByteArray &bytes)> &write);
    [[nodiscard]] static QByteArray commandBytes(const QString &command);

    CTlgThread &m_thread;
    QString m_prefix;
    bool m_echoes;
    int m_rxRegister = 0;
    int m_txRegister = 0;
    int m_echoRegister = 0;
    QString m_gathered; // text of the read being taken
};
