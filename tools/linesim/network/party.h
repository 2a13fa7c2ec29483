#pragma once

#include "tools/linesim/network/network_forms.h"
#include "tools/linesim/network/subscriber.h"
#include "tools/linesim/network/switch_reader.h"

#include <QObject>
#include <QSet>

#include <functional>

class EventLog;

/// The party at the far end of a connection: it answers and asks who is there, hears text, and behaves by its
/// habits. It knows no line and no clock: the owner tells the time.
class Party : public QObject
{
    Q_OBJECT

public:
    struct Settings {
        NetworkForms::CentreForm centre;
        QString telegram = QStringLiteral("001 СЛУЖБА\r\nВХОДЯЩАЯ ТЕЛЕГРАММА ВНУТРИ СОЕДИНЕНИЯ=\r\n");
        int answerSeconds = 1; ///< from a question to the answerback
        int patience = 30;     ///< seconds for the terminal's answerback
    };

    Party(const Settings &settings, EventLog &log);

    /// A connection with the terminal, in which it is \a who. What was due in the one before is void.
    void begin(const Subscriber &who, const Habits &habits);
    void end();                             ///< the connection is over
    void hear(const SwitchItem &item);      ///< what the line itself deals with it passes over
    void setTime(qint64 ms) { m_now = ms; } ///< since the epoch
    void tick();                            ///< does what is due

    void perform(Deed::What what); ///< at once
    /// What a party sends as its telegram from now on, without its marks.
    void setTelegram(const QString &text) { m_settings.telegram = text; }

signals:
    void say(const QString &text); ///< with register marks
    void hangUp();                 ///< it wants the connection to end; the owner calls end()

private:
    struct Due {
        qint64 at = 0;
        std::function<void()> act;
    };

    void after(double seconds, const std::function<void()> &act);
    void reach(Deed::When moment);
    void hearQuestion();
    void hearText(const QString &text);
    void answer(Habits::Answer how, bool last);
    void answerIn(double seconds, const QString &text);
    void sayTelegram(const QString &before);
    void noteText();
    void ask();
    [[nodiscard]] QString ownAnswerback(bool last) const;
    [[nodiscard]] QString foreignAnswerback(bool last) const;

    Settings m_settings;
    EventLog &m_log;
    Subscriber m_who;
    Habits m_habits;
    qint64 m_now = 0;
    QVector<Due> m_agenda;
    QSet<int> m_reached; // moments, each of which comes once
    QString m_text;      // the terminal's, since its last question behind a text
    qint64 m_asked = -1; // when the terminal was asked and has not answered; -1 never
    int m_answerbacks = 0;
    bool m_answering = false;
    bool m_muted = false;
};
