#pragma once

#include <QByteArray>
#include <QRandomGenerator>
#include <QString>

/// Numbers and bytes of any value, the same from the same seed: whatever a simulated device or far end does
/// by chance.
class Noise
{
public:
    explicit Noise(quint32 seed) : m_random(seed) {}
    /// One whose seed nobody knows.
    [[nodiscard]] static Noise drawn() { return Noise(QRandomGenerator::global()->generate()); }

    [[nodiscard]] int below(int bound) { return m_random.bounded(bound); } ///< 0 to \a bound - 1
    [[nodiscard]] quint8 byte() { return quint8(below(256)); }
    [[nodiscard]] QByteArray bytes(int count); ///< none for a negative count

private:
    QRandomGenerator m_random;
};

/// The bytes that a command asks for by "COUNT SEED"; without a seed it is 0.
[[nodiscard]] QByteArray noiseOf(const QString &countAndSeed);
