#include "tests/support/sound_server.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <cstdlib>

namespace
{
constexpr int Audible = 300; // of 32767
constexpr int StartMs = 20000;
} // namespace

SoundServer::SoundServer()
{
    // HOME and the runtime directory keep the server from meeting one of the user.
    for (const char *name :
         {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "PULSE_RUNTIME_PATH", "PULSE_STATE_PATH"})
        qputenv(name, m_directory.path().toUtf8());
    qputenv("PULSE_SERVER", "unix:" + m_directory.filePath("sock").toUtf8());
}

SoundServer::~SoundServer()
{
    for (QProcess *process : {&m_recorder, &m_server}) {
        process->terminate();
        if (!process->waitForFinished(5000))
            process->kill();
        process->waitForFinished(1000);
    }
}

bool SoundServer::start()
{
    m_server.setProcessChannelMode(QProcess::MergedChannels);
    m_server.start("pulseaudio",
                   {"-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1", "--disable-shm=yes",
                    "-L", "module-null-sink sink_name=ear", "-L",
                    "module-native-protocol-unix auth-anonymous=1 socket=" + m_directory.filePath("sock")});
    const QDeadlineTimer deadline(StartMs);
    while (!QFile::exists(m_directory.filePath("sock")))
        if (deadline.hasExpired() || m_server.waitForFinished(50)) {
            error = "pulseaudio does not run: " + m_server.readAll();
            return false;
        }
    m_recorder.start("parec", {"--device=ear.monitor", "--raw", "--format=s16le", "--channels=1",
                               "--rate=" + QString::number(Rate), "--latency-msec=20"});
    if (m_recorder.waitForReadyRead(StartMs))
        return true;
    error = "parec (package pulseaudio-utils) records nothing: " + m_recorder.readAllStandardError();
    return false;
}

void SoundServer::forget()
{
    (void)samples();
    m_samples.clear();
}

const QVector<qint16> &SoundServer::samples()
{
    m_recorder.waitForReadyRead(1);
    m_rest += m_recorder.readAllStandardOutput();
    const int count = m_rest.size() / 2;
    for (int i = 0; i < count; ++i)
        m_samples << qFromLittleEndian<qint16>(m_rest.constData() + 2 * i);
    m_rest.remove(0, 2 * count);
    return m_samples;
}

int SoundServer::peak(const QVector<qint16> &samples)
{
    int largest = 0;
    for (const qint16 sample : samples)
        largest = qMax(largest, std::abs(int(sample)));
    return largest;
}

int SoundServer::heardMs(const QVector<qint16> &samples)
{
    int first = -1;
    int last = -1;
    for (int i = 0; i < samples.size(); ++i) {
        if (std::abs(int(samples[i])) < Audible)
            continue;
        first = first < 0 ? i : first;
        last = i;
    }
    return first < 0 ? 0 : (last - first + 1) * 1000 / Rate;
}

int SoundServer::audibleMs(const QVector<qint16> &samples)
{
    const auto audible = [](qint16 sample) { return std::abs(int(sample)) >= Audible; };
    return int(std::count_if(samples.begin(), samples.end(), audible) * 1000 / Rate);
}

int SoundServer::frequency(const QVector<qint16> &samples, int milliseconds)
{
    const int from = qMax(1, samples.size() - milliseconds * Rate / 1000);
    int changes = 0;
    for (int i = from; i < samples.size(); ++i)
        changes += (samples[i - 1] < 0) != (samples[i] < 0) ? 1 : 0;
    return changes * 500 / milliseconds;
}
