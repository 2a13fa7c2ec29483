#pragma once

#include <QString>

class QSound;

/// Player of the signal sounds, one at a time. Main thread. The entry point stops it before the
/// application object goes.
class CSound
{
public:
    enum Type {
        Silent = 0, ///< no sound at all
        Once = 1,
        Loop = 2 ///< again and again until stop()
    };

    CSound() = default;
    ~CSound() = default;
    CSound(const CSound &) = delete;
    CSound &operator=(const CSound &) = delete;

    /// Stops what plays, then plays \a file, a path from the data directory, by \a type, a Type; any other
    /// plays it once. A file that is missing, torn or no sound plays nothing. Returns at once.
    void play(QString file, int type);
    /// Without effect if nothing plays.
    void stop();
    /// Name of the file that is playing, as it was given to play(); empty once it has ended.
    [[nodiscard]] QString playingFileName() const;

private:
    QSound *m_sound = nullptr; ///< the last one, own, until stop(); it may have ended by itself
};

extern CSound sound;
