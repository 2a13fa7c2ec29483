#pragma once

#include "tools/linesim/console/command_table.h"
#include "tools/linesim/console/commanded.h"
#include "tools/linesim/console/scenario.h"
#include "tools/linesim/far_end/far_end_options.h"
#include "tools/linesim/far_end/far_line.h"
#include "tools/linesim/far_end/telegram_store.h"

#include <QDateTime>
#include <QTimer>

#include <memory>

/// Who is at the far end of a line: what all of them do alike. It runs commands, each on its occasion, and
/// keeps what comes.
class FarEnd : public Commanded
{
    Q_OBJECT

public:
    [[nodiscard]] bool start(); ///< false, with an event, if there is no line or no scenario
    [[nodiscard]] QString place() const { return m_line->place(); } ///< see FarLine

protected:
    FarEnd(const FarEndOptions &options, EventLog &log);

    /// Its own commands are those of the far end, runHere(), and of its line.
    [[nodiscard]] bool runOwn(const QString &name, const QString &argument) final;
    /// Runs a command of this kind of far end; false if it is none of its own.
    [[nodiscard]] virtual bool runHere(const QString &name, const QString &argument) = 0;
    void finish() final;
    virtual void takeConnection() = 0; ///< the line is there; it may not be ready yet
    virtual void takeLoss() {}         ///< and gone
    /// Text of the workstation, cut anywhere. What is to be kept goes to m_store from here.
    virtual void takeText(const QString &text) = 0;
    virtual void tick(const QDateTime &now) = 0; ///< every FarLine::TickMs, with or without a connection
    virtual void sayFigures() {}                 ///< the event at the end

    const std::unique_ptr<FarLine> m_line;
    TelegramStore m_store;

private:
    void onConnected();
    void onTick();

    QVector<QPair<int, QString>> m_timed;
    QString m_scenarioFile;
    Scenario m_scenario;
    QTimer m_timer;
};
