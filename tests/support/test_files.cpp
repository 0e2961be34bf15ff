#include "support/test_files.h"

namespace orin::support {

// The source tree's place is compiled into this file alone, so that a compiler cache serves every
// other object file of a clone that lies elsewhere.

std::filesystem::path TestData(std::string_view name) {
  return std::filesystem::path(ORIN_SOURCE_TREE) / "tests/data" / name;
}

std::filesystem::path DemoFile(std::string_view name) {
  return std::filesystem::path(ORIN_SOURCE_TREE) / "demo" / name;
}

std::filesystem::path ManualFile(std::string_view name) {
  return std::filesystem::path(ORIN_SOURCE_TREE) / "docs/manual" / name;
}

}  // namespace orin::support
