#pragma once

#include <QString>

class QSound;

/// Player of the signal sounds, one at a time. Main thread. The entry point stops it before the
/// application object goes.
class CSound
{
public:
    enum Type { Silent = 0, Once = 1, Loop = 2 };

    CSound() = default;
    ~CSound() = default;
    CSound(const CSound &) = delete;
    CSound &operator=(const CSound &) = delete;

    /// Stops what plays, then plays \a file: type 0 not at all, 1 once, 2 in a loop until stop(). A file
    /// that is missing, torn or no sound plays nothing.
    void play(QString file, int type);
    void stop();
    /// Name of the file that is playing, as it was given to play(); empty once it has ended.
    [[nodiscard]] QString playingFileName() const;

private:
    QSound *m_sound = nullptr;
};

extern CSound sound;
