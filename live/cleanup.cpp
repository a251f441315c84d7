#include "live/cleanup.h"

#include "live/audio_unit.h"
#include "live/live.h"
#include "live/midi.h"

void cleanupAudioMIDI() {
    close_output_unit(&fplayer.unit);
    disposeNFMIDI(&wgen);
    close_output_unit(&gen.unit);
    close_output_unit(&wgen.unit);
    close_output_unit(&zgen.unit);
}
