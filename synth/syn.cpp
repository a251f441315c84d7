// The renderers with one worker per processor.
#include "synth/syn.h"

#include "live/live.h"
#include "live/shared.h"
#include "store/machine.h"
#include "store/settings.h"
#include "store/store.h"
#include "synth/bank.h"
#include "synth/render.h"
#include "synth/sound.h"
#include "synth/sound_files.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

int32_t nThreads = 0;
int32_t numCPU = 0;
int32_t (*worker_count)() = getCPUnum;

namespace {

struct Worker {
    WorkerArgument argument;
    RenderThread thread;
};

void tell_worker(const WorkerArgument &worker) {
    if (dbp != 0) {
        std::printf("Thread#: %d\nNumCPU = %d\n", worker.index, worker.count);
    }
}

/// Runs `count` workers to their end, each with a silent buffer of its own. Returns how many
/// buffers there was memory for.
int32_t run_workers(int32_t count, void *(*body)(void *), int64_t frames) {
    const size_t slots = static_cast<size_t>(std::max<int64_t>(frames + 1, count));
    fBuffW = static_cast<float **>(std::calloc(slots, sizeof(float *)));
    render_frames = frames;
    std::vector<Worker> workers(static_cast<size_t>(count)); // never moves: threads hold addresses
    int32_t running = 0;
    while (fBuffW != nullptr && running < count &&
           (fBuffW[running] = silent_buffer(frames)) != nullptr) {
        Worker &worker = workers[static_cast<size_t>(running)];
        worker.argument = {running, count};
        worker.thread.start(body, &worker.argument);
        ++running;
    }
    for (int32_t k = 0; k < running; ++k) {
        workers[static_cast<size_t>(k)].thread.join();
    }
    if (dbp != 0) {
        std::puts("JOINED");
    }
    return running;
}

constexpr int64_t mix_block = 1024; // frames summed before they are stored where the player reads

/// Sums frames [from, from + frames) of fBuffer and of the workers' buffers, each frame in their
/// order; `peaks` rise to the sums' sizes. By itself so that the compiler makes vectors of it.
void sum_block(int32_t count, int64_t from, int64_t frames, float *sum, float (&peaks)[16]) {
    std::copy(fBuffer + from, fBuffer + from + frames, sum);
    for (int32_t k = 0; k < count; ++k) {
        const float *part = fBuffW[k] + from;
        for (int64_t n = 0; n < frames; ++n) {
            sum[n] += part[n];
        }
    }
    int64_t n = 0;
    for (; n + 16 <= frames; n += 16) {
        for (int64_t i = 0; i < 16; ++i) {
            peaks[i] = peak_with(peaks[i], sum[n + i]);
        }
    }
    for (; n < frames; ++n) {
        peaks[0] = peak_with(peaks[0], sum[n]);
    }
}

/// Sums the workers' buffers into fBuffer in their order. Returns the peak.
float mix(int32_t count, int64_t frames) {
    float peaks[16] = {}, sum[mix_block];
    for (int64_t from = 0; from < frames; from += mix_block) {
        const int64_t here = std::min(mix_block, frames - from);
        sum_block(count, from, here, sum, peaks);
        for (int64_t n = 0; n < here; ++n) {
            poke(fBuffer[from + n], sum[n]);
        }
    }
    return *std::max_element(peaks, peaks + 16);
}

void free_worker_buffers(int32_t count) {
    for (int32_t k = 0; k < count; ++k) {
        std::free(fBuffW[k]);
    }
    std::free(fBuffW);
    fBuffW = nullptr;
}

/// Renders the whole sound into a new fBuffer. With `tell` the factor goes to the live output
/// gain and to the console. Returns the frames.
int64_t render(void *(*body)(void *), bool tell) {
    const int32_t wanted = std::max(worker_count(), 0);
    const int64_t frames = new_sound(whole_rate_frames(sndlen));
    const int32_t count = run_workers(wanted, body, frames);
    const float factor = factor_to_peak(mix(count, frames));
    if (tell) {
        poke(zgen.floatmax, factor);
        std::printf("zgen.floatmax = %f\n", static_cast<double>(factor));
    }
    scale_sound(factor, frames);
    if (dbp != 0) {
        std::puts("SYNTH LIVE:");
    }
    free_worker_buffers(count);
    publish(fbuffersize, frames);
    return frames;
}

/// The last render when nothing plays it, to be freed once it is replaced; one that plays is
/// forgotten.
float *idle_sound() {
    return peek(fplayer.state) == 0 ? fBuffer : nullptr;
}

void act_on(int32_t mode, char *name, int64_t frames) {
    switch (mode & 0xffff) {
    case 88:
        write2soundfile(name, frames);
        break;
    case 881:
        write2rawfloatfile(name, fBuffer, frames);
        write2soundfile(name, frames);
        break;
    case 900:
        play_rendered(sndstart, frames);
        break;
    default:
        break;
    }
}

} // namespace

void *synWT(void *argument) {
    const WorkerArgument &worker = *static_cast<const WorkerArgument *>(argument);
    tell_worker(worker);
    render_stripe(worker.index, worker.count, fBuffW[worker.index], render_frames);
    return finished_flag();
}

void *synWTC(void *argument) {
    return synWT(argument);
}

void *synsWT(void *argument) {
    const WorkerArgument &worker = *static_cast<const WorkerArgument *>(argument);
    tell_worker(worker);
    render_selected_stripe(worker.index, worker.count, true, fBuffW[worker.index], render_frames);
    return finished_flag();
}

void synsumWT(int32_t mode, char *name) {
    std::printf("partials: %d, %f s\n", partials, static_cast<double>(sndlen));
    float *former = idle_sound();
    const int64_t frames = render(synWT, true);
    std::free(former);
    act_on(mode, name, frames);
}

void synssumWT(int32_t mode, char *name) {
    float *former = idle_sound();
    const int64_t frames = render(synsWT, false);
    std::free(former);
    act_on(mode, name, frames);
}

void synsumWTC(int32_t mode, char *name) {
    act_on(mode, name, render(synWTC, true));
    float *sound = fBuffer;
    put_sound(nullptr, 0);
    std::free(sound);
}
