#pragma once

#include "tools/linesim/centre/centre_desk.h"
#include "tools/linesim/far_end/far_end.h"

#include <optional>

/// How "linesim centre" is to behave.
struct CentreOptions : FarEndOptions {
    CentreDesk::Settings desk;
    QString sendDirectory;  ///< telegrams to send while the channel is open; empty sends none by itself
    int feedPauseMs = 5000; ///< between two telegrams sent by itself
};
/// Reads \a arguments, the first being the subcommand's name. Empty, with the reason on standard error, if
/// they are not understood; "--help" prints the options and ends the process.
[[nodiscard]] std::optional<CentreOptions>
readCentreOptions(const QStringList &arguments,
                  const std::optional<AdapterLine::Settings> &adapter = std::nullopt);

/// A message switching centre: a clerk (CentreDesk) at the far end of the link.
class Centre : public FarEnd
{
    Q_OBJECT

public:
    Centre(const CentreOptions &options, EventLog &log);

private:
    [[nodiscard]] bool runHere(const QString &name, const QString &argument) override;
    void takeConnection() override { m_linkIsNew = true; }
    void takeLoss() override;
    void takeText(const QString &text) override;
    void tick(const QDateTime &now) override;
    void sayFigures() override;
    void takeMessages();
    void giveUp();
    void sendText(const QString &text);
    void feed();

    void addFile(const QString &path);

    /// A telegram that waits for the channel.
    struct Waiting {
        void (CentreDesk::*send)(const QString &text);
        QString text;
    };

    int m_feedPauseMs;
    CentreDesk m_desk;
    TerminalReader m_reader;
    QVector<Waiting> m_feed;
    qint64 m_lastText = 0; // ms since the epoch
    qint64 m_lastFeed = 0;
    bool m_cutNext = false;    // within the next telegram of the terminal
    bool m_cutSending = false; // within the next one to it
    bool m_linkIsNew = false;  // the line is there, the clerk does not know yet
};

/// The subcommand "centre"; see runSubcommand().
[[nodiscard]] int runCentre(const QStringList &arguments,
                            const std::optional<AdapterLine::Settings> &adapter);
