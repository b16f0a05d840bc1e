#!/usr/bin/env python3
"""Makes the three interface sounds as MP3 files: make_sounds.py DIRECTORY

They are computed here from sines and noise and encoded with lame, which "setup.sh sounds" installs.
The program plays "ui-sound" at 1.5 and "vinyl-stop" at 1.6 times the speed, which raises their
pitch as much, so that both are written lower and longer than they are heard.
"""

import math
import os
import random
import subprocess
import sys
import tempfile
import wave

SAMPLE_RATE = 44100
PEAK = 0.7  # of full scale
FADE_SECONDS = 0.012  # at the end, so that nothing clicks


def times(seconds):
    return [index / SAMPLE_RATE for index in range(int(seconds * SAMPLE_RATE))]


def attack(time, seconds):
    """Rises from 0 to 1 along half a cosine."""
    return 0.5 - 0.5 * math.cos(math.pi * min(time / seconds, 1.0))


def bell(frequency, decay):
    """A struck bar: a fundamental and two partials of a marimba, which fade faster."""
    partials = ((1.0, 1.0, 1.0), (3.93, 0.22, 0.35), (9.2, 0.05, 0.15))

    def sound(time):
        if time < 0:
            return 0.0
        return attack(time, 0.004) * sum(
            level * math.exp(-time / (decay * length))
            * math.sin(2 * math.pi * frequency * ratio * time)
            for ratio, level, length in partials)

    return sound


def ui_sound():
    """Two rising notes, a fifth apart: listening."""
    low, high = bell(392.0, 0.13), bell(587.33, 0.17)
    return [low(time) + 0.9 * high(time - 0.11) for time in times(0.58)]


def ui_pop():
    """A drop that falls into water: a short tone that glides up while it fades."""
    samples = []
    phase = 0.0
    for time in times(0.16):
        frequency = 340 + 520 * (1 - math.exp(-time / 0.035))
        phase += 2 * math.pi * frequency / SAMPLE_RATE
        samples.append(attack(time, 0.003) * math.exp(-time / 0.032) * math.sin(phase))
    return samples


def vinyl_stop():
    """A chord on a record that is stopped by hand: its pitch falls to nothing."""
    length = 0.58
    dust = random.Random(7)
    samples = []
    position = 0.0  # seconds on the record
    hiss = 0.0
    for time in times(length):
        speed = max(1 - time / length, 0.0) ** 1.6
        position += speed / SAMPLE_RATE
        chord = sum(math.sin(2 * math.pi * frequency * position)
                    for frequency in (261.63, 329.63, 392.0)) / 3
        hiss += 0.25 * (dust.uniform(-1, 1) - hiss)  # a low pass takes the sharpness
        samples.append(attack(time, 0.006) * (chord * speed ** 0.5 + 0.06 * hiss * speed))
    return samples


def finished(samples):
    """At `PEAK`, with a fade at the end."""
    scale = PEAK / max(abs(sample) for sample in samples)
    fade = int(FADE_SECONDS * SAMPLE_RATE)
    count = len(samples)
    return [sample * scale * min((count - index) / fade, 1.0)
            for index, sample in enumerate(samples)]


def write_mp3(path, samples):
    with tempfile.TemporaryDirectory() as directory:
        plain = os.path.join(directory, "sound.wav")
        with wave.open(plain, "wb") as file:
            file.setnchannels(1)
            file.setsampwidth(2)
            file.setframerate(SAMPLE_RATE)
            file.writeframes(b"".join(
                round(sample * 32767).to_bytes(2, "little", signed=True)
                for sample in finished(samples)))
        subprocess.run(["lame", "--quiet", "-m", "m", "-b", "128", plain, path], check=True)


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: make_sounds.py DIRECTORY")
    for name, sound in (("ui-sound", ui_sound), ("ui-pop", ui_pop), ("vinyl-stop", vinyl_stop)):
        write_mp3(os.path.join(sys.argv[1], name + ".mp3"), sound())


if __name__ == "__main__":
    main()
