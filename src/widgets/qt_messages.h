#pragma once

#include <QWidget>

#include "base/messages.h"

namespace orin::widgets {

/// Real message boxes and dialogs.
class QtMessages final : public base::Messages {
 public:
  base::Answer Show(const base::Message& message) override;
  std::optional<std::filesystem::path> ChooseFile(const base::FileQuestion& question) override;
  std::optional<std::string> AskText(const base::TextQuestion& question) override;
};

/// "株価分析ファイル|*.txt|" as the dialogs of the toolkit want it.
QString DialogFilter(std::string_view filter);

}  // namespace orin::widgets
