#pragma once

#include "tools/linesim/far_end/far_end.h"
#include "tools/linesim/peer/peer_options.h"

/// The other end of a direct link: it keeps the link alive, gives windows, sends what it has, keeps and
/// confirms what comes. Commands turn it against the workstation.
class Peer : public FarEnd
{
    Q_OBJECT

public:
    Peer(const PeerOptions &options, EventLog &log);

private:
    [[nodiscard]] bool runHere(const QString &name, const QString &argument) override;
    void takeConnection() override;
    void takeText(const QString &text) override;
    void tick(const QDateTime &now) override;
    void confirmWhatWaits();
    void confirm(int number);
    void echo(const QString &telegram);
    void flood(const QString &letters);
    void makeNoise(const QString &countAndSeed);

    bool m_confirms, m_echoes;
    int m_unconfirmed = 0; // telegrams whose confirmation waits
    TelegramFeed m_feed;
};

/// The subcommand "peer"; see runSubcommand().
[[nodiscard]] int runPeer(const QStringList &arguments, const std::optional<AdapterLine::Settings> &adapter);
