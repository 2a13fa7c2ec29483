#pragma once

#include <QObject>
#include <QString>

#include <memory>

/// Reads commands from standard input, one a line in UTF-8, on a thread of its own. The end of the input
/// ends nothing. One object per process.
class CommandReader : public QObject
{
    Q_OBJECT

public:
    CommandReader();
    ~CommandReader() override;

signals:
    void command(const QString &line);

private:
    struct Channel;
    std::shared_ptr<Channel> m_channel;
};
