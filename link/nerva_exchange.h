#pragma once

#include <QByteArray>
#include <QObject>
#include <QSerialPort>
#include <QString>
#include <QTimer>

/// The exchange with an Ethernet adapter about its configuration, over the port of its serial number, which
/// nobody else may have open. Every wait is a count of ticks, and each operation returns at once: its end is
/// the signal finished(). Main thread.
class CNervaExchange : public QObject
{
    Q_OBJECT

public:
    enum Clock {
        OwnClock, ///< ticks by itself
        ToldClock ///< the owner calls tick()
    };
    static constexpr int TickMs = 100;

    explicit CNervaExchange(const QString &serial, Clock clock = OwnClock, QObject *parent = nullptr);
    /// Closes a port that is still open; the adapter is told so.
    ~CNervaExchange() override;

    /// Asks for the configuration, which comes by received(). Nothing happens while an operation runs.
    void read();
    /// Writes \a text, in braces; with \a store the adapter keeps it and restarts. Likewise.
    void write(const QByteArray &text, bool store);
    /// Ends what read() has begun, or write() before it has written.
    void cancel();
    /// Tells the adapter that it is over and closes the port a second later: the signal closed(), at once if
    /// none is open.
    void leave();
    void closePort(); ///< at once, without a word to the adapter

    [[nodiscard]] bool isOpen() const { return m_port.isOpen(); }
    [[nodiscard]] bool isBusy() const { return m_step != Idle; }

    void tick(); ///< a tenth of a second has passed

    static constexpr int LongestReply = 64 * 1024; ///< bytes; what is longer is no configuration

signals:
    void note(const QString &line);         ///< for the operator's log
    void progress(int tenths);              ///< of the reading under way, 0 to 10
    void received(const QByteArray &reply); ///< all that has come up to the end of a text
    void written();                         ///< the text has gone out
    void finished();                        ///< of read() and write(), however they end
    void closed();                          ///< after leave()

private:
    enum Step {
        Idle,
        Starting,  // the port has been opened: the device starts
        Listening, // what it says before it is asked is dropped
        Asked,
        Writing,
        Leaving
    };

    [[nodiscard]] bool openPort();
    void begin();
    void wait(Step step, int ticks);
    void waitIsOver();
    void ask();
    void replyIsLate();
    void takeInput();
    void put();
    void noteWritten();
    void portFailed();
    void fail(const QString &line);
    void finish();
    void tellProgress();

    const QString m_serial;
    const Clock m_clock;
    QString m_name; // of the port, as it was found
    QSerialPort m_port;
    QTimer m_timer;
    Step m_step = Idle;
    int m_ticks = 0;      // left of the step
    int m_startTicks = 0; // left until the device has started
    int m_passed = 0;     // of the reading
    int m_timeOuts = 0;
    bool m_reading = false;
    QByteArray m_text; // to be written
    bool m_store = false;
    QByteArray m_reply;
};
