#pragma once

#include "tools/linesim/terminal_reader.h"

#include <QDateTime>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVector>

class EventLog;

/// The clerk of a switching centre: he opens and closes the channel, counts what goes and comes, gives
/// receipts, and judges the terminal by the procedure. He knows no line and no clock: messages go in by
/// take(), text comes out by the signal send, the owner tells the time.
class CentreDesk : public QObject
{
    Q_OBJECT

public:
    enum Channel { Closed, Asked, Open, Confirming };

    struct Settings {
        QString channelName = QStringLiteral("АБВ123/4");
        bool opensByItself = true; ///< asks to open at the first receipt request
        bool stamps = true;        ///< the time behind each end mark
        QString note;              ///< behind each telegram, "" for none
        int clockOffMinutes = 0;   ///< how far the centre's clock is off
    };

    CentreDesk(const Settings &settings, EventLog &log);

    void setTime(const QDateTime &now); ///< also turns the day
    /// When the message that will be taken next began: one that was on its way as the channel closed is no
    /// breach.
    void setMessageStart(const QDateTime &moment) { m_messageStart = moment; }
    void take(const TerminalMessage &message);
    void lineLost(); ///< the connection is gone: what was under way is void

    // What the centre does by itself
    void askToOpen();            ///< "ОТКРОЙТЕ СВЯЗЬ"
    void declareOpen();          ///< "СВЯЗЬ ОТКРЫТА"
    void closeChannel();         ///< "СВЯЗЬ ЗАКРЫТА"
    void askForReceiptRequest(); ///< "ЗАПРОСИТЕ КВИТАНЦИЮ"
    void sendService(const QString &text);
    void sendTelegram(const QString &text); ///< under the next number
    void sendCategory(const QString &text); ///< announced by "ПЕРЕДАЕТСЯ КАТЕГОРИЙНАЯ "
    void sendR(const QString &text);        ///< followed by "ПОДТВЕРДИТЕ ПРИЕМ Р "
    void repeatFrom(int number);            ///< sends again what bore \a number and all later ones
    void renumber();                        ///< "СМЕНА НУМЕРАЦИИ"

    // Faults, each once for every call
    void loseReceipt() { ++m_receiptsToLose; }
    void distort() { ++m_toDistort; }
    void wrongNumber() { ++m_wrongNumbers; }
    void interrupt() { ++m_toInterrupt; }

    [[nodiscard]] Channel channel() const { return m_channel; }
    [[nodiscard]] bool mayFeed() const { return m_channel == Open && !m_quiet && !m_renumberDue; }
    [[nodiscard]] QString figures() const; ///< "got N sent M old N/M"

    int got = 0;     ///< telegrams of the terminal today
    int sent = 0;    ///< telegrams to the terminal today
    int oldGot = 0;  ///< yesterday's
    int oldSent = 0; ///< yesterday's
    int gotInAll = 0;
    int sentInAll = 0;
    QStringList keptTelegrams; ///< texts of the terminal's telegrams, in order

signals:
    void send(const QString &text);

private:
    void takeRequest();
    void takeReceipt(int figure);
    void takeTelegram(const TerminalMessage &message);
    void takeConfirmation(const TerminalMessage &message);
    void takeStop();
    void giveReceipt();
    void sendNumbered(int number, const QString &text);
    void turnDay();
    void setChannel(Channel channel);
    [[nodiscard]] bool mayTransmit() const;
    [[nodiscard]] QString stamp() const;

    Settings m_settings;
    EventLog &m_log;
    QDateTime m_now;
    QDateTime m_messageStart;
    QDateTime m_leftOpen; // when the channel was last no longer open
    Channel m_channel = Closed;
    bool m_receiptOwed = false; // a telegram has come and no receipt has gone
    bool m_renumberDue = false; // the day has turned, the terminal does not know yet
    bool m_quiet = false;       // around midnight
    int m_awaitedFigure = -1;   // of the answer to a renumbering; -1 none
    int m_confirmNumber = -1;
    int m_receiptsToLose = 0, m_toDistort = 0, m_wrongNumbers = 0, m_toInterrupt = 0;
    int m_stopsExpected = 0;
    QVector<QString> m_sentToday; // what bore the numbers 1 and on
};
