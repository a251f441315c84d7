// live/audio_unit.h -- output units: each calls a render procedure for blocks of mono frames
// while it is started. The operations go to a back end, which mixes all units into one stream;
// they return 0 or an error code. Main thread, but for start and stop.
#pragma once

#include "live/back_end.h"

#include <cstdint>

/// Sends the operations to another back end; null means the mixing one. Before any unit exists.
void use_back_end(const BackEnd *chosen);

/// The component behind `after` that fits, null when there is none.
void *AudioComponentFindNext(void *after, const ComponentDescription *wanted);
int32_t AudioComponentInstanceNew(void *component, void **unit);
/// The unit is gone when this returns: its procedure neither runs nor will.
int32_t AudioComponentInstanceDispose(void *unit);
int32_t AudioUnitSetProperty(void *unit, uint32_t property, uint32_t scope, uint32_t element,
                             const void *data, uint32_t size);
/// `*size` holds the room at `data` and receives what was filled.
int32_t AudioUnitGetProperty(void *unit, uint32_t property, uint32_t scope, uint32_t element,
                             void *data, uint32_t *size);
int32_t AudioUnitInitialize(void *unit);
int32_t AudioUnitUninitialize(void *unit);

/// Start and stop take effect with the next block. Any thread; also from inside the unit's own
/// procedure, where a stop yields to a start that came in during the block.
int32_t AudioOutputUnitStart(void *unit);
int32_t AudioOutputUnitStop(void *unit);

/// Ends the program with status -1 and a line when `error` is not 0.
void CheckError(int32_t error, const char *operation);

/// What a creation calls its steps when they fail.
struct UnitTexts {
    const char *instance, *callback, *rate, *format, *initialize;
};

/// The texts of the generators.
extern const UnitTexts generator_texts;

/// Creates `*unit` with its procedure and readies it for rendering: sets R to the output's rate
/// and fills streamFormat. Any failure ends the program.
void create_output_unit(void **unit, RenderProc procedure, void *context, const UnitTexts &texts);

/// Uninitialises and disposes a unit and forgets it; a null one is left alone.
void close_output_unit(void **unit);
