#include "tools/linesim/console/command_reader.h"

#include <QMutex>
#include <QMutexLocker>

#include <iostream>
#include <string>
#include <thread>

// A thread that waits for input cannot be stopped: it outlives the reader and finds it gone here.
struct CommandReader::Channel {
    QMutex mutex;
    CommandReader *reader = nullptr;
};

CommandReader::CommandReader() : m_channel(std::make_shared<Channel>())
{
    m_channel->reader = this;
    // Its own buffer, so that the waiting thread holds no lock that the process needs at its end.
    std::ios::sync_with_stdio(false);
    std::thread([channel = m_channel] {
        std::string line;
        while (std::getline(std::cin, line)) {
            const QString text = QString::fromUtf8(line.c_str()).trimmed();
            const QMutexLocker locker(&channel->mutex);
            if (!channel->reader)
                return;
            QMetaObject::invokeMethod(
                channel->reader, [reader = channel->reader, text] { emit reader->command(text); },
                Qt::QueuedConnection);
        }
    }).detach();
}

CommandReader::~CommandReader()
{
    const QMutexLocker locker(&m_channel->mutex);
    m_channel->reader = nullptr;
}
