#pragma once

#include <QScrollArea>
#include <optional>
#include <span>
#include <vector>

#include "settings/ui/settings_row.h"

namespace orin::settings {

/// A scrolling page of entries below their headings.
class SettingsPage final : public QScrollArea {
  Q_OBJECT

 public:
  /// `shows_groups`: the entries are of several groups, whose titles stand above them.
  SettingsPage(SettingsDraft& draft, const EditorContext& context,
               std::span<const EntryPlace> places, bool shows_groups);

  /// Adds rows below those there are.
  void Add(std::span<const EntryPlace> places);
  /// A line below the rows.
  void AddNote(QWidget* note);
  [[nodiscard]] size_t Rows() const { return rows_.size(); }
  /// Shows the draft as it now is.
  void Refresh();
  /// The entry whose editor the widget belongs to.
  [[nodiscard]] std::optional<EntryPlace> PlaceOf(const QWidget* widget) const;
  /// Puts the focus into the entry's editor and scrolls to it.
  void GoTo(EntryPlace place);

 Q_SIGNALS:
  void Changed(size_t group);

 private:
  void AddHeadings(EntryPlace place);
  void AddTitle(const QString& text, int more_points);

  SettingsDraft& draft_;
  EditorContext context_;
  bool shows_groups_;
  QWidget* content_;
  QGridLayout* grid_;
  std::vector<SettingRow*> rows_;
};

}  // namespace orin::settings
