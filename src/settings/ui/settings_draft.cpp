#include "settings/ui/settings_draft.h"

#include <utility>

#include "analysis/condition_text.h"
#include "analysis/note_sentence.h"
#include "analysis/program.h"
#include "base/profile_file.h"

namespace orin::settings {

namespace {

std::string KindCaution(SettingKind kind, const analysis::Program& program) {
  if (kind == SettingKind::kCondition && program.IsValue()) {
    return "大小を比べる条件ではなく、値の式です。";
  }
  if (kind == SettingKind::kExpression && !program.IsValue()) {
    return "値の式ではなく、大小を比べる条件です。";
  }
  return {};
}

std::string ExpressionCaution(SettingKind kind, const std::string& text) {
  if (analysis::TrimAllBlanks(text).empty()) return {};
  const auto program = analysis::BuildProgram(text);
  if (!program) return analysis::NoteSentence(program.error());
  if (!program->Notes().empty()) return analysis::NoteSentence(program->Notes().front());
  return KindCaution(kind, *program);
}

bool IsExpression(SettingKind kind) {
  return kind == SettingKind::kCondition || kind == SettingKind::kExpression;
}

/// A text too large for the compiler is no expression at all.
base::Status CheckExpression(const std::string& text) {
  const auto program = analysis::BuildProgram(text);
  if (!program) return base::Fail(analysis::NoteSentence(program.error()));
  return {};
}

}  // namespace

SettingsDraft::SettingsDraft(Settings current, SettingsPlaces places)
    : groups_(SettingsCatalogue()),
      places_(std::move(places)),
      saved_(current),
      current_(std::move(current)) {}

const SettingEntry& SettingsDraft::Entry(EntryPlace place) const {
  return groups_[place.group].entries[place.entry];
}

std::string SettingsDraft::TextOf(EntryPlace place) const {
  const auto refusal = refusals_.find(place);
  return refusal != refusals_.end() ? refusal->second.text : Entry(place).text(current_);
}

void SettingsDraft::Assign(EntryPlace place, const std::string& text) {
  const SettingEntry& entry = Entry(place);
  base::Status status = IsExpression(entry.kind) ? CheckExpression(text) : base::Status();
  if (status) status = entry.assign(current_, text);
  if (status) {
    refusals_.erase(place);
  } else {
    refusals_[place] = {text, status.error().message};
  }
}

std::string SettingsDraft::ProblemOf(EntryPlace place) const {
  const auto refusal = refusals_.find(place);
  return refusal != refusals_.end() ? refusal->second.sentence : std::string();
}

std::string SettingsDraft::CautionOf(EntryPlace place) const {
  const SettingKind kind = Entry(place).kind;
  if (!IsExpression(kind) || refusals_.contains(place)) return {};
  return ExpressionCaution(kind, TextOf(place));
}

std::optional<EntryPlace> SettingsDraft::FirstProblem() const {
  if (refusals_.empty()) return std::nullopt;
  return refusals_.begin()->first;
}

bool SettingsDraft::HasProblem(size_t group) const {
  const auto first = refusals_.lower_bound({group, 0});
  return first != refusals_.end() && first->first.group == group;
}

std::string SettingsDraft::ResetText(EntryPlace place) const {
  const SettingEntry& entry = Entry(place);
  const std::string text = entry.default_text(places_);
  if (entry.section != "Bus") return text;
  base::ProfileFile profile;
  WriteBusDefaults(profile, places_);
  return std::string(profile.Get(entry.section, entry.key, text));
}

bool SettingsDraft::IsValueOf(EntryPlace place, const std::string& text) const {
  const SettingEntry& entry = Entry(place);
  // "0.20" and "0.2" are one value: the text is read and written before it is compared.
  Settings settings = current_;
  return entry.assign(settings, text) && entry.text(settings) == entry.text(current_);
}

bool SettingsDraft::IsDefault(EntryPlace place) const {
  if (refusals_.contains(place)) return false;
  return IsValueOf(place, Entry(place).default_text(places_)) ||
         (Entry(place).section == "Bus" && IsValueOf(place, ResetText(place)));
}

void SettingsDraft::Reset(EntryPlace place) { Assign(place, Entry(place).default_text(places_)); }

void SettingsDraft::ResetGroup(size_t group) {
  for (size_t i = 0; i < groups_[group].entries.size(); ++i) {
    Assign({group, i}, ResetText({group, i}));
  }
}

void SettingsDraft::ResetAll() {
  for (size_t group = 0; group < groups_.size(); ++group) ResetGroup(group);
}

bool SettingsDraft::IsChanged() const { return !refusals_.empty() || current_ != saved_; }

}  // namespace orin::settings
