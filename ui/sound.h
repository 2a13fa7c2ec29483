#pragma once

#include <QString>

class QSound;

/// Player of the signal sounds, one at a time. Main thread.
class CSound
{
public:
    CSound() = default;
    ~CSound();
    CSound(const CSound &) = delete;
    CSound &operator=(const CSound &) = delete;

    /// Stops what plays, then plays \a file: type 0 not at all, 1 once, 2 in a loop until stop(). A missing
    /// file plays nothing.
    void play(QString file, int type);
    void stop();
    /// Name of the file last given to play(); empty after stop().
    [[nodiscard]] QString playingFileName() const;

private:
    QSound *m_sound = nullptr;
};

extern CSound sound;
