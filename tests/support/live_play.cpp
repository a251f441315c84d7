#include "tests/support/live_play.h"

#include "live/agnf.h"
#include "live/audio_unit.h"
#include "live/oscillators.h"
#include "live/pause.h"
#include "live/requests.h"
#include "live/zone.h"
#include "synth/sound.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <map>

namespace {

constexpr uint32_t block_frames = 512;
constexpr double usual_rate = 44100.0;

std::deque<ScriptedUnit> units; // stay in place
std::map<const void *, std::vector<float>> sounds;
std::vector<uint32_t> pause_log;
int32_t start_error = 0;
double rate = usual_rate;
double pending = 0.0; // frames that pauses have let pass beyond whole blocks
void (*real_pause)(uint32_t) = nullptr;

void *find_next(void *, const ComponentDescription *) {
    return &units;
}

int32_t instance_new(void *, void **unit) {
    units.push_back({});
    *unit = &units.back();
    return 0;
}

int32_t set_property(void *unit, uint32_t property, uint32_t, uint32_t, const void *data,
                     uint32_t) {
    if (property == property_callback) {
        RenderCallback callback;
        std::memcpy(&callback, data, sizeof callback);
        static_cast<ScriptedUnit *>(unit)->procedure = callback.procedure;
        static_cast<ScriptedUnit *>(unit)->context = callback.context;
    }
    return 0;
}

int32_t get_property(void *, uint32_t, uint32_t, uint32_t, void *data, uint32_t *size) {
    std::memcpy(data, &rate, sizeof rate);
    *size = sizeof rate;
    return 0;
}

int32_t accept(void *) {
    return 0;
}

int32_t start(void *unit) {
    ScriptedUnit &scripted = *static_cast<ScriptedUnit *>(unit);
    ++scripted.starts;
    scripted.running = start_error == 0;
    return start_error;
}

int32_t stop_unit(void *unit) {
    ScriptedUnit &scripted = *static_cast<ScriptedUnit *>(unit);
    ++scripted.stops;
    scripted.running = false;
    return 0;
}

const BackEnd scripted = {find_next, instance_new, set_property, get_property, accept,
                          accept,    accept,       start,        stop_unit};

std::vector<float> pass_block(ScriptedUnit &unit, uint32_t frames) {
    std::vector<float> out(frames, 0.0f);
    unit.procedure(unit.context, frames, out.data());
    std::vector<float> &all = sounds[unit.context];
    all.insert(all.end(), out.begin(), out.end());
    return out;
}

void let_blocks_pass(uint32_t microseconds) {
    pause_log.push_back(microseconds);
    pending += microseconds * 1e-6 * rate;
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
    report_rate(usual_rate);
    fail_starts_with(0);
    pending = 0.0;
    pause_log.clear();
    sounds.clear();
    use_back_end(&scripted);
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
    serve_requests();
    use_back_end(nullptr);
    pause_for = real_pause;
    forget(wgen);
    forget(zgen);
    units.clear();
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

ScriptedUnit &unit_of(const LiveGenerator &generator) {
    return *static_cast<ScriptedUnit *>(generator.unit);
}

void fail_starts_with(int32_t error) {
    start_error = error;
}

void report_rate(double new_rate) {
    rate = new_rate;
}

std::vector<float> block_of(const LiveGenerator &generator, uint32_t frames) {
    return pass_block(unit_of(generator), frames);
}

std::vector<float> run_blocks(int count) {
    std::vector<float> sum;
    for (int n = 0; n < count; ++n) {
        std::vector<float> mixed(block_frames, 0.0f);
        for (ScriptedUnit &unit : units) {
            if (unit.running) {
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
