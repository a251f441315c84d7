#include "live/oscillators.h"

#include "live/oscillator_kernels.h"

OscillatorForm oscillator_form = OscillatorForm::best;

void sum_block(const OscillatorBlock &block, uint32_t frames, float *sum) {
    if (oscillator_form == OscillatorForm::best && oscillators_have_vectors()) {
        sum_block_in_vectors(block, frames, sum);
    } else {
        sum_block_plain(block, frames, sum);
    }
}

const char *oscillator_vectors() {
    return oscillator_vector_kind();
}
