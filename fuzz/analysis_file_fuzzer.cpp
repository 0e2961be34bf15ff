#include <cstdint>
#include <string>
#include <string_view>

#include "base/cp932.h"
#include "fuzz/require.h"
#include "screening/analysis_document.h"
#include "screening/analysis_file.h"

namespace {

using orin::fuzz::Require;

bool HasLineBreak(const std::string& text) { return text.find('\n') != std::string::npos; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string file_name = "分析.txt";
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const auto decoded = orin::base::DecodeText(bytes);
  const auto document = orin::screening::AnalysisDocument::Parse(bytes);
  Require(bytes.empty() || document.BytesWith(document.Fields()) == std::string(bytes),
          "a document without a change is as it was read");
  const auto analysis = orin::screening::ParseAnalysisFile(decoded.text, file_name);
  if (!analysis) {
    Require(analysis.error().message.starts_with(file_name), "a refusal names the file");
    return 0;
  }
  Require(!HasLineBreak(analysis->title) && !HasLineBreak(analysis->condition) &&
              !HasLineBreak(analysis->result_directory),
          "a value has no line break");
  Require(orin::screening::JoinedCondition(document.Fields().condition) == analysis->condition &&
              document.Fields().title == analysis->title,
          "the editor shows what the run reads");
  Require(!analysis->date || !analysis->date->IsNone(), "a date that is given is a day");
  Require(!analysis->second_stock || !analysis->second_stock->Text().empty(),
          "a second stock that is given has a code");
  return 0;
}
