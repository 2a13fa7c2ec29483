#pragma once

#include "tools/linesim/centre/terminal_reader.h"

#include <QDateTime>
#include <QHash>
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
    enum Channel {
        Closed,
        Asked,     ///< "ОТКРОЙТЕ СВЯЗЬ" is said, the terminal's receipt is due
        Open,      ///< telegrams go either way
        Confirming ///< the terminal's confirmation of a telegram is due
    };

    struct Settings {
        QString channelName = QStringLiteral("АБВ123/4");
        bool stamps = true;      ///< the time "hhmm" behind each end mark
        QString note;            ///< behind each telegram, see centreNote(); "" for none
        int header = 0;          ///< form put in front of each telegram, 1 to 3; 0 none, 4 in turn
        bool registers = false;  ///< marks the changes of register, as a 5-bit line does
        int clockOffMinutes = 0; ///< by which the stamps are ahead of the owner's time; negative is behind
        /// What the terminal begins till then may have crossed the closing: it reads one message a second,
        /// and one without a line end behind it after five seconds of silence.
        int crossingSeconds = 20;
    };

    CentreDesk(const Settings &settings, EventLog &log);

    void setTime(const QDateTime &now); ///< also turns the day
    /// When the message that will be taken next began: one that was on its way as the channel closed is no
    /// breach.
    void setMessageStart(const QDateTime &moment) { m_messageStart = moment; }
    void take(const TerminalMessage &message);
    void lineLost(); ///< the connection is gone: what was under way is void
    void lineBack(); ///< a channel that the loss has closed is to open again
    /// Runs one command of the clerk's own table; false if it is none of his.
    [[nodiscard]] bool run(const QString &name, const QString &argument);

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
    void giveReceipt(const QString &words); ///< "ВАШ nnn НАШ nnn ПОСЛЕДНИЕ " with \a words
    void askToConfirm();                    ///< "ПОДТВЕРДИТЕ ПРИЕМ Р " for the last telegram
    void acceptLast();                      ///< "Р n ПРИНЯТА": the terminal's last telegram
    void waitForOpening();                  ///< "ЖДУ ОТКРЫТИЯ СВЯЗИ"
    /// \a count telegrams are to be had by other means: "ОБРАЩАЙТЕСЬ В КСС ЗА ТЛГ nnn-nnn".
    void referElsewhere(int count);

    // Faults, each once for every call
    /// From now on free text is the operator's talk, no breach.
    void talk() { m_talks = true; }
    void loseReceipt() { ++m_receiptsToLose; }
    /// The terminal's next telegram: "ИСКАЖЕНИЕ n ВАШ m", "ИСКАЖЕНИЯ n" if \a form is "plural", "ИСКАЖЕНИЯ"
    /// if it is "bare".
    void distort(const QString &form = QString());
    void refuse() { ++m_toRefuse; } ///< the terminal's next telegram: "ТЕЛЕГРАММА НЕ ПРИНЯТА"
    void wrongNumber() { ++m_wrongNumbers; }
    void repeatNext() { ++m_toRepeat; } ///< the next telegram goes twice under its number
    void interrupt() { ++m_toInterrupt; }

    Settings settings; ///< may change while the clerk works

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
    [[nodiscard]] bool isQuietAt(const QDateTime &moment) const;
    void takeRequest();
    void takeReceipt(int figure);
    void takeTelegram(const TerminalMessage &message);
    void takeConfirmation(const TerminalMessage &message);
    void takeStop();
    void takeRefused(const TerminalMessage &message);
    void judgeTelegram(const TerminalMessage &message);
    void answerRequest();
    void say(const QString &text);
    void sendNumbered(int number, const QString &text);
    void turnDay();
    void setChannel(Channel channel);
    [[nodiscard]] bool mayTransmit() const;
    [[nodiscard]] QString stamp() const;

    EventLog &m_log;
    QDateTime m_now;
    QDateTime m_messageStart;
    QDateTime m_leftOpen; // when the channel was last no longer open
    QDateTime m_repeated; // when telegrams were last sent again
    Channel m_channel = Closed;
    bool m_receiptOwed = false; // a telegram has come and no receipt has gone
    bool m_renumberDue = false; // the day has turned, the terminal does not know yet
    bool m_talks = false;
    bool m_quiet = false;     // around midnight
    QDateTime m_renumbered;   // last
    bool m_lost = false;      // the line went while the channel was not closed
    int m_awaitedFigure = -1; // of the answer to a renumbering; -1 none
    int m_confirmNumber = -1;
    QHash<int, int> m_askedFor; // number of a telegram to confirm, how often that was asked
    QStringList m_toDistort;    // forms of the message
    int m_receiptsToLose = 0, m_toRefuse = 0, m_wrongNumbers = 0, m_toRepeat = 0, m_toInterrupt = 0;
    int m_stopsExpected = 0;
    QVector<QString> m_sentToday; // what bore the numbers 1 and on
};
