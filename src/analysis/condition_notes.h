#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "analysis/condition.h"
#include "analysis/condition_text.h"

namespace orin::analysis {

/// A text full of faults gets this many notes and no more.
inline constexpr size_t kMaximumNotes = 100;

/// Unless there are that many, or the same note stands there already.
void AddNote(std::vector<Note>& notes, size_t position, std::string message);

/// Notes every word that its writer may take for something else than it is: a keyword in a mix of
/// cases that is none, a Not, and letters that stand for operators within the system. `text` has
/// no comments any more, but its braces still. An item name in half-width capitals, which would
/// read as operators, gets one note; its call is added to `explained`.
void NoteDoubtfulWords(TextView text, std::vector<Note>& notes, std::vector<Stretch>& explained);

}  // namespace orin::analysis
