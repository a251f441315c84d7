// synth/syn.h -- the renderers: the partials of the store become fBuffer, with a peak of 0.7.
// Two are at work: synsumWT for all partials, synssumWT for the selected stretches. The others
// are earlier stages of the same idea. All block the window thread until they are done.
#pragma once

#include <cstdint>

/// One worker's part of a render.
struct WorkerArgument {
    int32_t index; // the worker's number, from 0
    int32_t count; // number of workers
};

extern int32_t nThreads; // not used
extern int32_t numCPU;   // not used

/// How many workers a render has: the processors that this process may run on. Below 1 nothing
/// is rendered.
extern int32_t (*worker_count)();

/// Renders all partials by workers, then acts on `mode`, of which the low 16 bits count: 88
/// writes an AIFF file, 881 a raw float file and an AIFF file, 900 plays; any other leaves the
/// buffer ready. `name` is a path without extension in 256 bytes that the writer extends; it may
/// be null where nothing is written. fBuffer stays for the player.
void synsumWT(int32_t mode, char *name);

/// The same for the selected stretches, without a word on the console.
void synssumWT(int32_t mode, char *name);

/// The same as synsumWT, but an earlier buffer is left alone and the new one is freed at once.
void synsumWTC(int32_t mode, char *name);

// Bodies of the workers, each given its WorkerArgument: they add a stripe to fBuffW[index] and
// return a 32-bit 1 on the heap. synWTC does what synWT does.
void *synWT(void *argument);
void *synsWT(void *argument);
void *synWTC(void *argument);

// On the caller's thread: the buffer is played from `start` (seconds) and freed at once. An
// earlier fBuffer is left to its holder.
void syn(float start, float seconds);    // all partials
void syns(float start, float seconds);   // selected stretches
void synsum(float start, float seconds); // even and odd partials apart, then summed
void synch();                            // all partials, over the whole sound
void synsumT();                          // as synsum over the whole sound, by two threads

/// Adds the even-numbered or the odd-numbered partials to buffer[0..frames).
void synL(float *buffer, int64_t frames);
void synR(float *buffer, int64_t frames);

// The same as thread bodies, into fBuffL and fBuffR; they return a 32-bit 1 on the heap.
void *synLT(void *argument);
void *synRT(void *argument);
