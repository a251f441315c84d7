#include "envelope/mutate.h"

#include "envelope/lpcf.h"
#include "store/console.h"
#include "store/settings.h"
#include "toolbox/auxmath3d.h"

#include <cstdio>

namespace {

/// Reads the number of a frame until it is another than -1. False where the input ends.
bool ask_for_frame(int32_t &frame) {
    char reply[lpc_text_room];
    for (;;) {
        say("Specify one envelope (-1 = current):\n>\t");
        if (!read_word(reply, sizeof reply)) {
            return false;
        }
        frame = token_integer(reply);
        if (frame != -1) {
            return true;
        }
        Oerror = lpc_null;
        std::puts("NULL array");
    }
}

/// Asks for a file and one of its frames until there is one to read. Null, with the status in
/// Oerror, where the file is none or the input ends.
LpcFrame choose_envelope() {
    for (;;) {
        if (!ask_for_lpc_file()) {
            Oerror = lpc_null;
            return nullptr;
        }
        std::puts("*/");
        if (lpcf_open(afname) < 0) {
            return nullptr;
        }
        const int32_t p = Oerror;
        int32_t frame = 0;
        if (!ask_for_frame(frame)) {
            Oerror = lpc_null;
            return nullptr;
        }
        if (lpcf_pos(frame) != -1.0f) {
            const LpcFrame envelope = lpc_initialize(0, p);
            lpcf_read(envelope, p);
            return envelope;
        }
        Oerror = lpc_beyond;
        std::puts("/*Selection is beyond EOF!*/");
    }
}

/// Stores the envelope's level for each partial.
void take_levels(PartialEval *peval, LpcFrame envelope) {
    const int32_t records = lpc_records(envelope);
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 1; j < records; ++j) {
            if (envelope[j]->freq > peval[i].avgfreq) {
                peval[i].spare2 = static_cast<float>(amp2db(envelope[j]->amp));
                break;
            }
        }
    }
}

void apply_levels(Breakpoint **parray, const PartialEval *peval) {
    for (int32_t i = 0; i < partials; ++i) {
        for (int32_t j = 0; j < npoints[i]; ++j) {
            parray[i][j].amp = parray[i][j].amp + peval[i].spare2 - peval[i].avgamp;
        }
    }
}

} // namespace

int16_t mutstat(Breakpoint **parray, PartialEval *peval, LpcFrame envelope) {
    const bool given = envelope != nullptr;
    if (given) {
        std::puts("//LPC envelope pre-loaded...");
    } else {
        envelope = choose_envelope();
        if (envelope == nullptr) {
            return Oerror;
        }
    }
    take_levels(peval, envelope);
    if (!given) {
        clear_lpc(envelope, lpc_records(envelope));
    }
    say("Apply to the partials? (y/n)\n>\t");
    char reply[lpc_text_room];
    // A number is asked for: "y" counts as 0 and leaves the levels alone.
    if (read_word(reply, sizeof reply) && token_integer(reply) == 1) {
        apply_levels(parray, peval);
    }
    return Oerror;
}
