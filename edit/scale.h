// edit/scale.h -- stretching time, spreading pitch and companding level of selected points, in
// place. Window thread only.
#pragma once

/// Three effects on the selected points, in this order, each skipped at 1:
/// - `stretch`: factor of the intervals that start at a selected point; the partials that hold
///   one keep their distances from the selection's earliest time in proportion, and later points
///   ride along. Below 0.1 in size everything is refused; negative ones wait to be built.
/// - `exponent`: of the ratio between a frequency and the mean of its run.
/// - `compand`: factor, its sign ignored, of the distance in dB from the level of its run.
/// Marks the summaries of stretched partials as selected, uses the points' scratch and leaves it
/// 0, but for a refusal. The caller refreshes the derived ranges.
void newscale(float stretch, float exponent, float compand);
