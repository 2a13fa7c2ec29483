#pragma once

#include <QObject>
#include <QString>

/// Takes received text from the link thread to the journal and the line procedure, piece by piece: each
/// command of the adapter by itself, and each text between two of them. It works in turns of the event loop
/// that are bounded in time, so that a flood leaves room for the tick. Main thread; a procedure may open a
/// question box, whose event loop lets further news come in while a piece is being taken.
class CReceiver : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Received text waits: begins to take it, unless a turn is due or under way.
    void takeNews();
    /// The window closes: takes what waits by now, however long that lasts. What a far end that never falls
    /// silent sends from here on is left.
    void takeRest();

    /// What a turn may spend; 0 takes one piece in each.
    int receiveMilliseconds = 200;
    bool moreToReceive = false; ///< received text waits for the next turn

signals:
    void resumed(); ///< a further turn begins, with text that had come before

private:
    void takeTurn();
    void takeNextTurn();
    void returnUncut();
    [[nodiscard]] bool fetch(); ///< the next block from the link thread; false if there is nothing
    // Take one piece and return its length; 0: there is none, or none that is whole
    [[nodiscard]] int takePiece();
    [[nodiscard]] int takeCommand();
    [[nodiscard]] int takeText();

    bool m_receiving = false; ///< a piece is being taken further down the stack
    QString m_block;          ///< taken from the link thread and not yet cut apart
};
