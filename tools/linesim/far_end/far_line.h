#pragma once

#include <QObject>
#include <QString>

/// What carries the text between a far end and the workstation, for one connection after another. The far
/// ends know this and not whether it is TCP or an adapter.
class FarLine : public QObject
{
    Q_OBJECT

public:
    static constexpr int TickMs = 50;

    [[nodiscard]] virtual bool start() = 0; ///< false, with an event, if it cannot be had
    virtual void tick() = 0;                ///< every TickMs
    virtual void finish() {}                ///< the far end is about to end: the last word in the log
    /// Where the workstation finds it: the TCP port that it listens on, the path of a serial port.
    [[nodiscard]] virtual QString place() const = 0;

    /// Text that is sent now reaches the workstation's procedure.
    [[nodiscard]] virtual bool isReady() const = 0;
    /// The workstation's text comes as it is transmitted, not as it was written.
    [[nodiscard]] virtual bool comesInPieces() const { return false; }
    /// How \a text of the workstation arrives, if it begins with a register mark.
    [[nodiscard]] virtual QString asHeard(const QString &text) const { return text; }
    virtual void sendText(const QString &text) = 0;    ///< behind what is on its way
    virtual void sendRaw(const QByteArray &bytes) = 0; ///< as they are, whatever they mean
    virtual void close() = 0;                          ///< once all has gone
    virtual void drop() = 0;                           ///< at once

    /// How long the workstation may pause in the middle of a message, by doing of this line.
    [[nodiscard]] virtual int longestPauseMs() const = 0;

    /// Runs one of the line's own commands; false if it is none of them.
    [[nodiscard]] virtual bool run(const QString &name, const QString &argument) = 0;

signals:
    void connected();
    void disconnected();
    void bytes(const QByteArray &bytes); ///< of the workstation, as they came
    void text(const QString &text);      ///< of the workstation, decoded, cut anywhere
};
