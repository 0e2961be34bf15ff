#pragma once

#include <string>

#include "analysis/condition.h"

namespace orin::analysis {

/// The note as the user reads it: "12文字目：…", or the message alone where it has no place.
inline std::string NoteSentence(const Note& note) {
  if (note.position == 0) return note.message;
  return std::to_string(note.position) + "文字目：" + note.message;
}

}  // namespace orin::analysis
