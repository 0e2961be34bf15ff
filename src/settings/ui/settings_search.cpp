#include "settings/ui/settings_search.h"

#include <QStringList>
#include <algorithm>

#include "widgets/qt_text.h"

namespace orin::settings {

namespace {

QString Folded(const QString& text) {
  return text.normalized(QString::NormalizationForm_KC).toCaseFolded();
}

QString SearchedText(const SettingsGroup& group, const SettingEntry& entry) {
  const QStringList texts = {widgets::Text(entry.label), widgets::Text(entry.key),
                             widgets::Text(entry.explanation), widgets::Text(entry.heading),
                             widgets::Text(group.title)};
  return Folded(texts.join('\n'));
}

}  // namespace

std::vector<EntryPlace> FindSettings(std::span<const SettingsGroup> groups, const QString& text) {
  const QStringList words = Folded(text).simplified().split(' ', Qt::SkipEmptyParts);
  std::vector<EntryPlace> places;
  if (words.empty()) return places;
  for (size_t group = 0; group < groups.size(); ++group) {
    for (size_t i = 0; i < groups[group].entries.size(); ++i) {
      const QString searched = SearchedText(groups[group], groups[group].entries[i]);
      const auto is_in = [&searched](const QString& word) { return searched.contains(word); };
      if (std::ranges::all_of(words, is_in)) places.push_back({group, i});
    }
  }
  return places;
}

}  // namespace orin::settings
