#include "synth/bank.h"

#include "store/store.h"
#include "synth/plain_bank.h"

BankForm bank_form = BankForm::best;

void render_stripe(int32_t index, int32_t count, float *out, int64_t frames) {
    for (int64_t p = index; p < partials; p += count) {
        plain_partial(static_cast<int32_t>(p), out, frames);
    }
}

void render_selected_stripe(int32_t index, int32_t count, bool look_behind, float *out,
                            int64_t frames) {
    StretchFade fade = {false, look_behind};
    for (int64_t p = index; p < partials; p += count) {
        plain_stretches(static_cast<int32_t>(p), fade, out, frames);
    }
}
