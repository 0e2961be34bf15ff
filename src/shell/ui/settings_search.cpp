#include "shell/ui/settings_search.h"

#include <QStringList>
#include <algorithm>

#include "shell/ui/qt_text.h"

namespace orin::shell {

namespace {

QString Folded(const QString& text) {
  return text.normalized(QString::NormalizationForm_KC).toCaseFolded();
}

QString SearchedText(const SettingsGroup& group, const SettingEntry& entry) {
  const QStringList texts = {Text(entry.label), Text(entry.key), Text(entry.explanation),
                             Text(entry.heading), Text(group.title)};
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

}  // namespace orin::shell
