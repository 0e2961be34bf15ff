#pragma once

#include "indicators/indicator.h"

namespace orin::indicators {

// Routines of the table of indicators. Parameters in brackets, n alone where there are none; O, H,
// L, C, V are open, high, low, close, volume, C' the close of the bar before. Where nothing else is
// said a bar without data is left out, and there is no value where the first bar has none.

// Exponential averages of the closes. They start at the mean of the first n bars with data, and
// have no value before the last of these; then each bar with data moves them by 2 / (n + 1) of the
// way to its close. A bar without data keeps the value of the bar before it.
void ExponentialAverage(const ColumnTask& task);
/// [s, l] The average over s less the one over l; needs both.
void AverageConvergence(const ColumnTask& task);

/// (1 - 6 Σd² / (m (m² - 1))) × 100 to four decimals over the m bars with data among n, d the
/// rank of a bar by date less that by close; equal closes share their mean rank. Needs m >= 2.
void RankCorrelation(const ColumnTask& task);

// About the mean of the closes of n bars, to four decimals, halves to even.
/// √(Σ C² / m - (Σ C / m)²) over the m bars with data. No value where a close × n is beyond
/// the range of Currency.
void StandardDeviation(const ColumnTask& task);
/// [n, k] The mean plus k standard deviations.
void BollingerBand(const ColumnTask& task);
/// [n, r] The mean plus r per cent of it.
void DeviationBand(const ColumnTask& task);

// Lines of balance: (HH + LL) / 2 over n bars, halves to even. HH and LL as the range helpers
// find them, so that only a span wholly without data has no value.
void BalanceLine(const ColumnTask& task);
/// [b, c, s] (HH + LL of b bars + HH + LL of c bars) / 4 at the bar s - 1 before the examined one.
void LeadingSpan1(const ColumnTask& task);
/// [s, n] The line over n bars at the bar s - 1 before the examined one.
void LeadingSpan2(const ColumnTask& task);

// Sums over n bars. The last four look at the bar before each, which needs data too; the first
// such bar is then the one that is tested.
/// Σ (H - O)
void StrongEnergy(const ColumnTask& task);
/// Σ (O - L)
void WeakEnergy(const ColumnTask& task);
/// Σ (H - C')
void StrongPopularity(const ColumnTask& task);
/// Σ (C' - L)
void WeakPopularity(const ColumnTask& task);
/// Σ max(H - M', 0), M' = (H + L + C) / 3 of the bar before; one division, halves to even.
void PlusEnergy(const ColumnTask& task);
/// Σ max(M' - L, 0)
void MinusEnergy(const ColumnTask& task);

/// V / (Σ V / count) × 100 over n bars, to four decimals; needs data at the examined bar and
/// Σ V <> 0.
void VolumeShare(const ColumnTask& task);
/// Σ of the above, each over n bars, over n bars. Those without a value are left out, but not the
/// first.
void VolumeShareSum(const ColumnTask& task);

/// [a, m] Mean over m bars of A, the mean over a bars of (H + L + C) / 3; each mean to four
/// decimals, halves to even, over bars with data alone.
void MeanPrice(const ColumnTask& task);

}  // namespace orin::indicators
