#pragma once

#include "link/tcp_stream.h"
#include "records/send_model.h"
#include "tests/support/desk.h"
#include "ui/window/receiver.h"

#include <QByteArray>
#include <QMap>
#include <QString>

#include <memory>

/// A workstation at the end of a TCP line: its stream, its receiver, its queue and the seconds of a
/// procedure, as the window puts them together, but without window, threads and socket, so that thousands
/// begin in a second. After each step the rules that hold in any procedure are looked at.
class PeerDesk
{
public:
    /// Noon of a day in automatic mode, nothing stored, the line down. \a procedure is a Procedure.
    explicit PeerDesk(int procedure);

    // The line
    void connect();
    void hangUp(); ///< either end, or a silence
    /// The peer's bytes, in one read or, with \a singly, one by one.
    void hear(const QByteArray &bytes, bool singly);
    void agreeKey();

    // The operator
    void queue(bool toCentre); ///< one more telegram in the outgoing directory
    void setAutomatic(bool on);
    void hangUpByHand();

    void tick(int seconds);
    /// Each telegram is where it belongs, whole, once, and under its number.
    void checkBooks() const;

private:
    void beginTick();
    void linkSecond();
    void scanIfDue();
    void countIdle();
    void dispatch();
    void dispatchCentre();
    void dispatchSwitched();
    void dispatchDirect();
    void offer();
    void takeNews();
    void send();
    void takeSent();
    void checkState();
    void checkAccepted();
    void checkQueued(const QString &name, const QByteArray &content) const;
    void checkStored() const;
    void checkCounters() const;

    const Desk m_desk;
    CReceiver m_receiver;
    std::unique_ptr<CTcpStream> m_stream;
    QList<CTableViewModelItem_Send> m_rows; ///< of the last scan, those that can be sent
    QMap<QString, QByteArray> m_queued;     ///< what stands in each telegram of the queue, by its name
    QString m_wire;                         ///< all that went
    QString m_underWay;                     ///< the telegram on its way after the last step
    QString m_hungUp;   ///< the telegram of which the operator has dropped the rest from the line
    qint64 m_heard = 0; ///< bytes
};
