#pragma once

#include "indicators/indicator.h"

namespace orin::indicators {

// The routines behind the table of indicators. Parameters in brackets, n the first; H, L, C, V
// are high, low, close, volume, C' the close of the bar before.

// The bar itself; a bar without data has only a date.
void Open(const ColumnTask& task);
void High(const ColumnTask& task);
void Low(const ColumnTask& task);
void Close(const ColumnTask& task);
void Volume(const ColumnTask& task);
/// Days since 1899-12-30.
void SerialDate(const ColumnTask& task);
/// C - C'; needs data at both bars.
void CloseChange(const ColumnTask& task);

// Sums over n bars and what rests on them. Bars without data are left out of sum and count; none
// where the first bar of the span has no data.
void OpenSum(const ColumnTask& task);
void HighSum(const ColumnTask& task);
void LowSum(const ColumnTask& task);
void CloseSum(const ColumnTask& task);
void VolumeSum(const ColumnTask& task);
/// Σ C / count to four decimals, half to even.
void MovingAverage(const ColumnTask& task);
/// Σ V / count, likewise.
void VolumeMovingAverage(const ColumnTask& task);
/// (C - MA) / MA × 100 with MA to four decimals; needs data at the examined bar and MA <> 0.
void DeviationRate(const ColumnTask& task);

// Range helpers over n bars: the price, the volume of the bar that holds it, and how many bars
// ago that bar was. The last two need a bar that holds it, the volume one with data.
void HighestHighValue(const ColumnTask& task);
void HighestHighVolume(const ColumnTask& task);
void HighestHighAge(const ColumnTask& task);
void LowestLowValue(const ColumnTask& task);
void LowestLowVolume(const ColumnTask& task);
void LowestLowAge(const ColumnTask& task);
void HighestCloseValue(const ColumnTask& task);
void LowestCloseValue(const ColumnTask& task);

// Extremes of volumes over n bars; bars without data as in the sums.
void HighestVolume(const ColumnTask& task);
void LowestVolume(const ColumnTask& task);
/// [s, n] of the volume sums over s bars, at each of n bars; a sum that does not exist is left
/// out, and the first one must exist.
void HighestVolumeSum(const ColumnTask& task);
void LowestVolumeSum(const ColumnTask& task);

// Over the n changes C - C' of the span. A change with a bar without data does not count; none
// where the bar before the span has no data.
void VolumeOfRises(const ColumnTask& task);
void VolumeOfFalls(const ColumnTask& task);
void SumOfRises(const ColumnTask& task);
/// The sizes of the falls, a positive sum.
void SumOfFalls(const ColumnTask& task);
void CountOfRises(const ColumnTask& task);
void CountOfFalls(const ColumnTask& task);

/// U / (U + D) × 100, U and D the sums of rises and of falls over n bars, to one decimal. Bars
/// without data are summed like others, but the first of the span must have data.
void Rsi(const ColumnTask& task);
/// R / T × 100 to one decimal over the last n bars with V > 0: T the volume, R that of rises and
/// half that of unchanged closes. None where a bar without data or the start of the series comes
/// before n such bars or the close before them. A bar without data before the n bars
/// has its stored close compared like others.
void VolumeRatio(const ColumnTask& task);

/// (C - LL) / (HH - LL) × 100 to one decimal, HH and LL by the range helpers over n bars.
void StochasticK(const ColumnTask& task);
/// [k, d] Σ (C - LL) / Σ (HH - LL) × 100 to one decimal over d bars, HH and LL over k bars.
void StochasticD(const ColumnTask& task);

/// Σ +DM / Σ TR × 100 over n bars, to four decimals.
void PlusDi(const ColumnTask& task);
/// Σ -DM / Σ TR × 100 over n bars, to four decimals.
void MinusDi(const ColumnTask& task);
/// [m, n] Σ DX / m × 100 over m bars, DX = |+DI - -DI| / |+DI + -DI| to four decimals, DIs over n.
void Adx(const ColumnTask& task);

}  // namespace orin::indicators
