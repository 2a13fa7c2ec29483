#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <QVector>

/// A sound server of this test alone, without any device: what is played is recorded from its null sink.
/// PULSE_SERVER names it while it lives. Made before the first sound of the process.
class SoundServer
{
public:
    static constexpr int Rate = 22050;

    SoundServer();
    ~SoundServer();
    SoundServer(const SoundServer &) = delete;
    SoundServer &operator=(const SoundServer &) = delete;

    /// False, with \a error told, if the server or its recorder does not run.
    [[nodiscard]] bool start();
    /// Forgets what has been recorded up to now.
    void forget();
    /// Everything recorded since, mono; without a sound it is a run of zeros.
    [[nodiscard]] const QVector<qint16> &samples();

    /// Largest magnitude.
    [[nodiscard]] static int peak(const QVector<qint16> &samples);
    /// Length in milliseconds of what lies between the first and the last sample that can be heard.
    [[nodiscard]] static int heardMs(const QVector<qint16> &samples);
    /// Length in milliseconds of all that can be heard: a gap, where the machine was too busy to play on,
    /// does not count.
    [[nodiscard]] static int audibleMs(const QVector<qint16> &samples);
    /// Frequency in Hz of the last \a milliseconds, by counting changes of sign.
    [[nodiscard]] static int frequency(const QVector<qint16> &samples, int milliseconds);

    QString error;

private:
    QTemporaryDir m_directory;
    QProcess m_server;
    QProcess m_recorder;
    QByteArray m_rest;
    QVector<qint16> m_samples;
};
