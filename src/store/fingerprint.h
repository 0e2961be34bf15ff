#pragma once

#include <string>

#include "store/store_location.h"

namespace orin::store {

/// Which files the store has and, of each, its inode, its length and when it was changed last; of
/// orin.sys the header as well. Two that are equal mean that nothing was changed in between,
/// committed or not. Trend lines and orin.rnk, a copy of orinm000.rnk, do not count: whoever shows
/// the store writes them.
std::string FingerprintOf(const StoreLocation& location);

/// The same, taken so that every later change gives another one. A file that is changed twice
/// within one tick of the system's clock shows the time of the first change still, so this waits
/// for the tick after the last change to pass: some milliseconds, and only right after a change.
std::string SettledFingerprintOf(const StoreLocation& location);

}  // namespace orin::store
