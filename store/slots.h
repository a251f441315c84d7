// store/slots.h -- who owns what in the store: point arrays hold exactly their partial's
// points, per-partial arrays keep spare elements. Every command that adds, drops, lengthens
// or shortens partials goes through here. Window thread only.
#pragma once

#include "store/store.h"

/// A zero-filled array of n points, owned by the caller; n below 1 gives an empty array.
Breakpoint *new_points(int32_t n);

/// A copy of n points, owned by the caller.
Breakpoint *clone_points(const Breakpoint *points, int32_t n);

/// Releases a point array, once no other thread reads it; null is fine.
void free_points(Breakpoint *points);

/// Allocates npoints with `count` + 100 zero-filled elements, dropping the old array.
void allocate_counts(int32_t count);

/// Allocates xarray in the same way.
void allocate_index(int32_t count);

/// Cuts npoints down to exactly `count` elements.
void trim_counts(int32_t count);

/// Cuts parray down to exactly `count` slots; those behind hold nothing by then.
void trim_slots(int32_t count);

/// Allocates parray with exactly `partials` slots, each a zero-filled array of npoints[i].
void allocate_points();

/// Sees to it that what is written into the points of partial i reaches no reader of the published
/// list until the next publication; the array may be another one then.
void own_points(int32_t i);

/// Changes the length of partial i: keeps the common head, zero-fills what is new, and sets
/// npoints[i].
void resize_partial(int32_t i, int32_t n);

/// Makes room for `extra` more partials: parray and npoints grow to partials + extra, the new
/// slots empty. The count itself is the caller's to raise.
void grow_slots(int32_t extra);

/// Gives peval room for `partials` records and the spare ones; new records are zero.
void regrow_peval();

/// The same, but only once the spare records are used up. Runs after `partials` was raised.
void cover_by_peval();

/// Tells that peval was replaced by an array with room for `count` records and the spare ones.
void peval_replaced(int32_t count);

/// Replaces peval by exactly `partials` zero records, none spare.
void allocate_peval_exactly();

/// Moves slot k + 1 to slot k. What stood in slot k is released; slot k + 1 is left null with
/// its count standing, so that nothing is owned twice. Prints the compaction line under
/// `trace`. The phases are the caller's: some edits derive them anew, others keep them.
void move_slot_down(int32_t k, bool trace);

/// Takes partial `part` out: releases its points and closes the gap, so that slot partials - 1
/// is left empty. Prints a line for each moved slot when verbose, and before it the slot's
/// number when `tell_slots` and dbp are set. `partials` and the phases are the caller's.
void take_out_slot(int32_t part, bool tell_slots);

/// Releases the whole store and the per-partial arrays.
void free_store();
