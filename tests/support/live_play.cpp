#include "tests/support/live_play.h"

#include "live/agnf.h"
#include "live/oscillators.h"
#include "live/pause.h"
#include "live/requests.h"
#include "live/shared.h"
#include "live/zone.h"
#include "synth/sound.h"
#include "tests/support/console.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <map>
#include <optional>

namespace {

constexpr uint32_t block_frames = 512;
constexpr double usual_rate = 44100.0;

std::optional<AudioDouble> audio;
std::map<const void *, std::vector<float>> sounds;
std::vector<uint32_t> pause_log;
std::string operations;
double pending = 0.0; // frames that pauses have let pass beyond whole blocks
void (*real_pause)(uint32_t) = nullptr;

std::vector<float> pass_block(const AudioDouble::Unit &unit, uint32_t frames) {
    std::vector<float> out(frames, 0.0f);
    unit.callback.procedure(unit.callback.context, frames, out.data());
    std::vector<float> &all = sounds[unit.callback.context];
    all.insert(all.end(), out.begin(), out.end());
    return out;
}

int count_of(const std::string &operation) {
    operations += audio->heard();
    int count = 0;
    for (size_t at = 0; (at = operations.find("\n" + operation + "\n", at)) != std::string::npos;
         ++at) {
        ++count;
    }
    return count;
}

void let_blocks_pass(uint32_t microseconds) {
    pause_log.push_back(microseconds);
    pending += microseconds * 1e-6 * audio->rate;
    const int count = static_cast<int>(pending / block_frames);
    pending -= count * static_cast<double>(block_frames);
    run_blocks(count);
}

LiveCandidate *new_candidates() {
    return static_cast<LiveCandidate *>(std::calloc(2148, sizeof(LiveCandidate)));
}

void forget(LiveGenerator &generator) {
    for (float *array : {generator.amp_target, generator.freq_target, generator.amp_now,
                         generator.freq_now, generator.spare1, generator.spare2}) {
        std::free(array);
    }
    std::free(generator.phase);
    std::free(generator.on);
    generator = {};
}

} // namespace

void LivePlayTest::SetUp() {
    PointerTest::SetUp();
    pending = 0.0;
    pause_log.clear();
    sounds.clear();
    operations = "\n";
    audio.emplace();
    real_pause = pause_for;
    pause_for = let_blocks_pass;
    scandidates = nullptr;
    pcandidates = new_candidates();
    qcandidates = new_candidates();
    createAdditiveNFToneUnit(&wgen);
    createAdditiveNFToneUnit1(&zgen);
    makeSin(static_cast<int32_t>(R));
}

void LivePlayTest::TearDown() {
    printed(serve_requests); // what no test has read
    audio.reset();
    pause_for = real_pause;
    forget(wgen);
    forget(zgen);
    std::free(pcandidates);
    std::free(qcandidates);
    pcandidates = qcandidates = nullptr;
    numbOfCands = 0;
    N = 0.0f;
    live_gain = 0.2f;
    STOP = 0;
    std::fill(std::begin(times), std::end(times), 0.0f);
    std::free(makeSin(0));
    Sin = nullptr;
    R = usual_rate;
    oscillator_form = OscillatorForm::best;
    PointerTest::TearDown();
}

AudioDouble &output() {
    return *audio;
}

AudioDouble::Unit &unit_of(const LiveGenerator &generator) {
    return *static_cast<AudioDouble::Unit *>(generator.unit);
}

int starts() {
    return count_of("start");
}

int stops() {
    return count_of("stop");
}

std::vector<float> block_of(const LiveGenerator &generator, uint32_t frames) {
    return pass_block(unit_of(generator), frames);
}

std::vector<float> run_blocks(int count) {
    std::vector<float> sum;
    for (int n = 0; n < count; ++n) {
        std::vector<float> mixed(block_frames, 0.0f);
        for (const AudioDouble::Unit &unit : audio->units) {
            if (peek(unit.started)) {
                const std::vector<float> out = pass_block(unit, block_frames);
                std::transform(out.begin(), out.end(), mixed.begin(), mixed.begin(),
                               std::plus<float>());
            }
        }
        sum.insert(sum.end(), mixed.begin(), mixed.end());
    }
    return sum;
}

const std::vector<float> &heard(const LiveGenerator &generator) {
    return sounds[&generator];
}

const std::vector<uint32_t> &pauses() {
    return pause_log;
}

void set_candidate(LiveCandidate &candidate, float freq, float amp, uint8_t status) {
    candidate.freq = freq;
    candidate.amp = amp;
    candidate.status = status;
}
