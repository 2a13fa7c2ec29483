#include "ui/sound.h"

#include "ui/wave_check.h"

#include <QSound>

void CSound::play(QString file, int type)
{
    stop();
    if (type == Silent || file.isEmpty() || !isWholeWaveFile(file))
        return;
    m_sound = new QSound(file);
    m_sound->setLoops(type == Loop ? QSound::Infinite : 1);
    m_sound->play();
}

void CSound::stop()
{
    if (m_sound == nullptr)
        return;
    m_sound->stop();
    delete m_sound;
    m_sound = nullptr;
}

QString CSound::playingFileName() const
{
    return m_sound == nullptr || m_sound->isFinished() ? QString() : m_sound->fileName();
}
