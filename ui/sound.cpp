#include "ui/sound.h"

#include "ui/wave_check.h"

#include <QCoreApplication>
#include <QPointer>
#include <QSound>
#include <QSoundEffect>

namespace
{
/// Holds the connection to the sound server from the first sound to the end of the program. The toolkit
/// closes it with the last sound, its thread too, and opens another for the next: the answer to the former
/// one then comes to the wrong one, or to a sound that is stopped while it opens and does not live to hear
/// it.
void keepConnection()
{
    static QPointer<QSoundEffect> keeper;
    if (keeper.isNull())
        keeper = new QSoundEffect(QCoreApplication::instance());
}
} // namespace

void CSound::play(QString file, int type)
{
    stop();
    if (type == Silent || file.isEmpty() || !isWholeWaveFile(file))
        return;
    keepConnection();
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
