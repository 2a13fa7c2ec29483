// The devices of the system itself; nobody listens to them here.

#include "tests/support/sound_server.h"

#include <QAudioDeviceInfo>

SoundServer::SoundServer() = default;
SoundServer::~SoundServer() = default;

bool SoundServer::start()
{
    error = QStringLiteral("Windows has no device for sounds");
    return !QAudioDeviceInfo::defaultOutputDevice().isNull();
}
