#pragma once

#include <QWidget>

#include "shell/messages.h"

namespace orin::shell {

/// Real message boxes and dialogs.
class QtMessages final : public Messages {
 public:
  Answer Show(const Message& message) override;
  std::optional<std::filesystem::path> ChooseFile(const FileQuestion& question) override;
  std::optional<std::string> AskText(const TextQuestion& question) override;
};

/// "株価分析ファイル|*.txt|" as the dialogs of the toolkit want it.
QString DialogFilter(std::string_view filter);

}  // namespace orin::shell
