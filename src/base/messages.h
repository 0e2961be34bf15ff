#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace orin::base {

/// The caption of messages that belong to no stage of a job.
inline constexpr const char* kProductName = "ミルテ";

/// "ミルテ（株価更新）": the caption of a stage.
std::string StageCaption(const std::string& stage);

enum class Icon { kInformation, kWarning, kError, kQuestion };
enum class Buttons { kOk, kYesNo, kYesNoCancel };
enum class Answer { kOk, kYes, kNo, kCancel };

/// A message or a question. The lines of the text end in "\n".
struct Message {
  std::string caption = kProductName;
  std::string text = {};
  Icon icon = Icon::kInformation;
  Buttons buttons = Buttons::kOk;
  Answer default_answer = Answer::kOk;  // what the return key chooses
};

enum class FileChoice { kOpen, kSave, kDirectory };

/// A question for a file or a directory. The filter has the form "株価分析ファイル|*.txt|", any
/// number of title and pattern pairs; empty: all files.
struct FileQuestion {
  std::string caption = kProductName;
  std::string filter = {};
  std::filesystem::path start = {};  // directory to begin in, or the file first proposed
  FileChoice choice = FileChoice::kOpen;
};

/// A question for a line of text.
struct TextQuestion {
  std::string caption = kProductName;
  std::string text = {};
  std::string default_value = {};
};

/// All questions and messages of the program pass through here; a test answers in the user's
/// place.
class Messages {
 public:
  Messages() = default;
  Messages(const Messages&) = delete;
  Messages& operator=(const Messages&) = delete;
  virtual ~Messages() = default;

  /// kOk for Buttons::kOk however the box was closed; closing a question is kCancel, or kNo where
  /// there is no cancel button.
  virtual Answer Show(const Message& message) = 0;
  /// nullopt: cancelled. Asks before an existing file is chosen for saving.
  virtual std::optional<std::filesystem::path> ChooseFile(const FileQuestion& question) = 0;
  virtual std::optional<std::string> AskText(const TextQuestion& question) = 0;

  void Inform(std::string text, std::string caption = kProductName);
  void Warn(std::string text, std::string caption = kProductName);
  /// Whether the answer was はい.
  bool AskYesNo(std::string text, std::string caption = kProductName,
                Answer default_answer = Answer::kYes);
};

}  // namespace orin::base
