#pragma once

#include "indicators/indicator.h"

namespace orin::indicators {

// The routines behind the rows of reversals. Parameters in brackets.

/// [initial, step, maximum; in hundredths] The stop in force at the bar (parabolic.h); at a bar
/// without data that of the bar before. None before the third bar with data.
void ParabolicSar(const ColumnTask& task);

// [n, rate] over the closes of the n bars up to the examined one, as in kagi.h. None
// where the first of the n bars has no data.

/// [n, rate, turn] Price of the turning point `turn`: -1 the newest, -2 the one before it, 0 the
/// extreme of the line under way. None where there are not so many.
void KagiValue(const ColumnTask& task);
/// How often the line turned; 0 where there is none yet.
void KagiTurns(const ColumnTask& task);

}  // namespace orin::indicators
