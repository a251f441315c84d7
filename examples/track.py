#!/usr/bin/env python3
"""Tracks the partials of a WAV or AIFF file and writes them as a Lisp partials list:

    track.py SOUND [LIST] [LOWEST]

LIST is SOUND with the ending .pt where it is left out. LOWEST, in Hz, is the lowest pitch to be
told apart, 100 where it is left out: half of it takes a window of twice the length. A second of
sound takes a few seconds. Needs nothing but Python.
"""

import cmath
import math
import os
import struct
import sys

HOP = 0.01          # seconds from point to point
QUIETEST = -70.0    # dB, below full scale: what is quieter is no partial
DEPTH = 60.0        # dB, below the loudest peak of the same moment
FARTHEST = 0.03     # of its frequency, that a partial may move from point to point
GAPS = 2            # moments that a partial may be missing
FEWEST = 6          # points that a partial needs


def chunks(data, order):
    """Names and contents of the parts of a WAV ("<") or AIFF (">") file."""
    at = 12
    while at + 8 <= len(data):
        name, size = struct.unpack_from(order + "4sI", data, at)
        yield name, data[at + 8 : at + 8 + size]
        at += 8 + size + size % 2


def numbers(data, bits, order):
    """Whole numbers of 16, 24 or 32 bits, as -1 to 1."""
    size = bits // 8
    byte_order = "little" if order == "<" else "big"
    scale = 2.0 ** (1 - bits)
    return [
        int.from_bytes(data[at : at + size], byte_order, signed=True) * scale
        for at in range(0, len(data) - size + 1, size)
    ]


def read_sound(path):
    """The sample rate, and the mean of all channels."""
    with open(path, "rb") as file:
        data = file.read()
    if data[:4] == b"RIFF":
        parts = dict(chunks(data, "<"))
        form, channels, rate, _, _, bits = struct.unpack_from("<HHIIHH", parts[b"fmt "])
        if form == 3 or bits not in (16, 24, 32):
            sys.exit("track.py: only whole numbers of 16, 24 or 32 bits are read")
        samples = numbers(parts[b"data"], bits, "<")
    elif data[:4] == b"FORM" and data[8:12] == b"AIFF":
        parts = dict(chunks(data, ">"))
        channels, _, bits, exponent, mantissa = struct.unpack_from(">hIhHQ", parts[b"COMM"])
        rate = mantissa * 2.0 ** (exponent - 16383 - 63)
        samples = numbers(data[data.index(b"SSND") + 16 :], bits, ">")
    else:
        sys.exit("track.py: neither WAV nor AIFF; sox or ffmpeg turn other files into WAV")
    mono = [sum(samples[i : i + channels]) / channels for i in range(0, len(samples), channels)]
    return rate, mono


def transform(values, turns):
    """The Fourier transform of 2^n values; `turns` holds the factors of each size."""
    n = len(values)
    if n == 1:
        return values
    even = transform(values[0::2], turns)
    odd = [a * b for a, b in zip(transform(values[1::2], turns), turns[n])]
    return [a + b for a, b in zip(even, odd)] + [a - b for a, b in zip(even, odd)]


class Analysis:
    """Finds the peaks of the spectrum at one moment after another."""

    def __init__(self, rate, sound, lowest):
        self.rate, self.sound = rate, sound
        length = int(5 * rate / lowest)
        self.size = 1 << (2 * length - 1).bit_length()
        # Blackman-Harris: what a loud sinusoid leaks lies 92 dB below it, under every floor.
        terms = (0.35875, -0.48829, 0.14128, -0.01168)
        self.window = [
            sum(a * math.cos(2 * math.pi * k * i / length) for k, a in enumerate(terms))
            for i in range(length)
        ]
        self.turns, n = {}, 2
        while n <= self.size:
            self.turns[n] = [cmath.exp(-2j * math.pi * k / n) for k in range(n // 2)]
            n *= 2

    def levels(self, time):
        """dB of each bin, a sinusoid of amplitude 1 having 0."""
        start = int(time * self.rate) - len(self.window) // 2
        values = [
            self.sound[start + i] * w if 0 <= start + i < len(self.sound) else 0.0
            for i, w in enumerate(self.window)
        ]
        values += [0.0] * (self.size - len(values))
        scale = 2.0 / sum(self.window)
        bins = transform(values, self.turns)[: self.size // 2]
        return [20 * math.log10(abs(b) * scale + 1e-9) for b in bins]

    def peaks(self, time):
        """(frequency, level) of each, the loudest first."""
        db = self.levels(time)
        floor = max(QUIETEST, max(db) - DEPTH)
        found = []
        for k in range(2, len(db) - 1):
            if db[k] > floor and db[k - 1] < db[k] >= db[k + 1]:
                left, right = db[k - 1] - db[k], db[k + 1] - db[k]
                place = 0.5 * (left - right) / (left + right)
                level = db[k] - 0.25 * (left - right) * place
                found.append(((k + place) * self.rate / self.size, level))
        return sorted(found, key=lambda peak: -peak[1])


def track(analysis, seconds):
    """Partials as lists of (time, frequency, level)."""
    done, running = [], []
    for moment in range(int(seconds / HOP) + 1):
        time = moment * HOP
        for freq, level in analysis.peaks(time):
            free = [p for p in running if p[-1][0] < time]
            near = min(free, key=lambda p: abs(p[-1][1] - freq), default=None)
            if near is not None and abs(near[-1][1] - freq) < FARTHEST * freq:
                near.append((time, freq, level))
            else:
                running.append([(time, freq, level)])
        ended = [p for p in running if p[-1][0] < time - (GAPS + 0.5) * HOP]
        running = [p for p in running if p[-1][0] >= time - (GAPS + 0.5) * HOP]
        done += ended
    return [p for p in done + running if len(p) >= FEWEST]


def main():
    if not 2 <= len(sys.argv) <= 4:
        sys.exit(__doc__)
    source = sys.argv[1]
    target = sys.argv[2] if len(sys.argv) > 2 else os.path.splitext(source)[0] + ".pt"
    lowest = float(sys.argv[3]) if len(sys.argv) > 3 else 100.0
    rate, sound = read_sound(source)
    partials = track(Analysis(rate, sound, lowest), len(sound) / rate)
    if not partials:
        sys.exit("track.py: nothing in it is loud and long enough for a partial")
    with open(target, "x") as file:
        file.write(f"( PARTIALS {len(partials)}\n")
        for partial in partials:
            file.write(f"( POINTS {len(partial)}\n")
            for point in partial:
                file.write("%9.3f %9.3f %9.3f\n" % point)
            file.write(")\n")
        file.write(")\n")
    print(f"{len(partials)} partials: {target}")


try:
    main()
except OSError as fault:
    sys.exit(f"track.py: {fault}")
