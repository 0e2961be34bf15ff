#pragma once

#include <QTreeWidget>
#include <filesystem>
#include <string>
#include <vector>

#include "settings/analysis_group.h"
#include "shell/analysis_group_files.h"

namespace orin::screening {

/// The seven analysis files of a group: a row each with its tick, title, file, date, market and
/// what the last run found; below a row what its writer should know.
class GroupList final : public QTreeWidget {
  Q_OBJECT

 public:
  explicit GroupList(QWidget* owner = nullptr);

  /// Reads the analysis files for what the rows show of them; those that cannot be read show why.
  void ShowGroup(const settings::AnalysisGroup& group, const shell::AnalysisGroupFiles& files);
  /// The place of the current row.
  [[nodiscard]] size_t CurrentEntry() const;
  void SelectEntry(size_t place);
  /// What a run found in the file at the place, with notes below.
  void ShowOutcome(size_t place, const QString& outcome, const std::vector<std::string>& notes);
  void ClearOutcomes();

 Q_SIGNALS:
  void Ticked(int place, bool is_ticked);
  void EntryChanged();
  /// A double click or the return key.
  void EditWanted();

 private:
  void ShowEntry(size_t place, const settings::AnalysisGroupEntry& entry,
                 const std::filesystem::path& file);
  void AddNotes(size_t place, const std::vector<std::string>& notes);

  bool is_filling_ = false;
};

}  // namespace orin::screening
