#include "base/csv.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orin::base {
namespace {

TEST(Csv, FieldsWrittenAreReadBack) {
  const std::vector<std::string> fields = {"AAPL", "", "A \"B\", C", "1,234", "終値", "\""};
  std::string line;
  for (const std::string& field : fields) line += (line.empty() ? "" : ",") + CsvField(field);
  EXPECT_EQ(line, "AAPL,,\"A \"\"B\"\", C\",\"1,234\",終値,\"\"\"\"");
  EXPECT_EQ(CsvFields(line), fields);
}

TEST(Csv, AQuoteThatNeverEndsTakesTheRestOfTheLine) {
  EXPECT_THAT(CsvFields("a,\"b,c"), testing::ElementsAre("a", "b,c"));
  EXPECT_THAT(CsvFields(""), testing::ElementsAre(""));
}

}  // namespace
}  // namespace orin::base
