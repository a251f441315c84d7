#include "live/rt_output.h"

#include "live/mixer.h"

#include <RtAudio.h>
#include <algorithm>
#include <alsa/error.h>
#include <atomic>
#include <cstdarg>
#include <memory>
#include <thread>

namespace {

constexpr RtAudio::Api servers[] = {RtAudio::UNIX_JACK, RtAudio::LINUX_PULSE, RtAudio::LINUX_ALSA};
constexpr unsigned wanted_channels = 2;
constexpr unsigned wanted_buffers = 4;

std::unique_ptr<RtAudio> stream;
unsigned channels = 0;

std::atomic<bool> failed = false;
std::atomic<bool> delivering = false;

constexpr int go_on = 0;
constexpr int abort_stream = 2;

int fill_block(void *out, void *, unsigned frames, double, RtAudioStreamStatus, void *) {
    auto *samples = static_cast<float *>(out);
    delivering.store(true);
    const bool dead = failed.load();
    if (dead) {
        std::fill_n(samples, size_t{frames} * channels, 0.0f);
    } else {
        deliver(samples, frames, channels);
    }
    delivering.store(false);
    return dead ? abort_stream : go_on;
}

/// What a stream reports while it runs: a server has gone, or a device.
void note_failure(RtAudioError::Type, const std::string &) {
    failed = true;
}

/// ALSA tells at length about devices that are not there.
void say_nothing(const char *, int, const char *, int, const char *, ...) {}

bool open_stream(RtAudio &audio) {
    const RtAudio::DeviceInfo device = audio.getDeviceInfo(audio.getDefaultOutputDevice());
    if (!device.probed || device.outputChannels == 0) {
        return false;
    }
    channels = std::min(device.outputChannels, wanted_channels);
    RtAudio::StreamParameters parameters;
    parameters.deviceId = audio.getDefaultOutputDevice();
    parameters.nChannels = channels;
    RtAudio::StreamOptions options;
    options.streamName = "Quillgrove";
    options.numberOfBuffers = wanted_buffers;
    unsigned frames = slice_frames;
    audio.openStream(&parameters, nullptr, RTAUDIO_FLOAT32, device.preferredSampleRate, &frames,
                     fill_block, nullptr, &options, note_failure);
    if (failed || !audio.isStreamOpen()) {
        return false;
    }
    audio.startStream();
    return !failed;
}

/// A server that is not there, or does not want us, is passed over.
std::unique_ptr<RtAudio> open_on(RtAudio::Api server) {
    failed = false;
    try {
        auto audio = std::make_unique<RtAudio>(server);
        audio->showWarnings(false);
        if (audio->getCurrentApi() == server && audio->getDeviceCount() > 0 &&
            open_stream(*audio)) {
            return audio;
        }
    } catch (const RtAudioError &) {
        // as if it were not there
    }
    return nullptr;
}

void end_stream(RtAudio &audio) {
    try {
        if (audio.isStreamRunning()) {
            audio.abortStream();
        }
        if (audio.isStreamOpen()) {
            audio.closeStream();
        }
    } catch (const RtAudioError &) {
        // it has ended by itself
    }
}

} // namespace

double open_rt_output() {
    snd_lib_error_set_handler(say_nothing);
    for (const RtAudio::Api server : servers) {
        stream = open_on(server);
        if (stream != nullptr) {
            return stream->getStreamSampleRate();
        }
    }
    return 0.0;
}

bool rt_output_failed() {
    return failed;
}

void close_rt_output() {
    if (stream != nullptr) {
        end_stream(*stream);
        stream.reset();
    }
}

void abandon_rt_output() {
    failed = true;
    while (delivering.load()) {
        std::this_thread::yield();
    }
    std::thread([remains = stream.release()] {
        end_stream(*remains);
        delete remains;
    }).detach();
}
