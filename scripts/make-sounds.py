#!/usr/bin/env python3
"""Makes the default signal sounds sound/*.wav: 16 bit, mono, 22050 samples a second.

The results are kept in the tree; a build does not need this. The same run gives the same bytes.
"""
import math
import pathlib
import struct
import wave

RATE = 22050
FOLDER = pathlib.Path(__file__).resolve().parent.parent / "sound"


def tone(frequency, seconds, overtones, attack=0.005, decay=None):
    """A tone of harmonics (their strengths by number); it fades with time constant `decay`, if given."""
    count = round(seconds * RATE)
    samples = []
    for i in range(count):
        t = i / RATE
        value = sum(strength * math.sin(2 * math.pi * frequency * (n + 1) * t)
                    for n, strength in enumerate(overtones)) / sum(overtones)
        edge = min(1.0, t / attack, (seconds - t) / attack)
        samples.append(value * edge * (math.exp(-t / decay) if decay else 1.0))
    return samples


def silence(seconds):
    return [0.0] * round(seconds * RATE)


def mixed(*voices):
    """Voices as (start in seconds, samples), laid over each other."""
    total = [0.0] * max(round(start * RATE) + len(samples) for start, samples in voices)
    for start, samples in voices:
        offset = round(start * RATE)
        for i, value in enumerate(samples):
            total[offset + i] += value
    return total


def raketa():
    """An urgent alarm of two alternating tones with a pause, made to be looped."""
    reedy = [1.0, 0.0, 0.5, 0.0, 0.3]
    pair = tone(988, 0.16, reedy) + tone(740, 0.16, reedy)
    return pair * 4 + silence(0.4)


def category():
    """A chime of two bell tones, the second lower."""
    bell = [1.0, 0.35, 0.15]
    return mixed((0.0, tone(784, 0.9, bell, decay=0.28)), (0.35, tone(587, 1.1, bell, decay=0.35)))


def input_ping():
    """A short soft ping."""
    return tone(1175, 0.3, [1.0, 0.2], decay=0.07)


def write(name, samples, volume):
    peak = max(abs(value) for value in samples)
    frames = b"".join(struct.pack("<h", round(value / peak * volume * 32767)) for value in samples)
    with wave.open(str(FOLDER / name), "wb") as file:
        file.setnchannels(1)
        file.setsampwidth(2)
        file.setframerate(RATE)
        file.writeframes(frames)


if __name__ == "__main__":
    FOLDER.mkdir(exist_ok=True)
    write("raketa.wav", raketa(), 0.9)
    write("category.wav", category(), 0.7)
    write("input.wav", input_ping(), 0.4)
