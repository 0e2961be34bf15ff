#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

#include "store/file_names.h"
#include "store/store_check.h"
#include "support/store_builder.h"
#include "support/test_files.h"

namespace orin::store {
namespace {

namespace fs = std::filesystem;
using orin::support::FlatBar;
using orin::support::StoreBuilder;
using orin::support::Weekdays;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// A store of a full price file whose files have upper-case names.
class LetterCase : public ::testing::Test {
 protected:
  void SetUp() override {
    builder_.Days(Weekdays("2020/01/06", 100)).Stock("AAA", {FlatBar(10)}).Build();
    support::RenameToUpperCase(Where().system_directory);
    support::RenameToUpperCase(Where().data_directory);
  }

  [[nodiscard]] const StoreLocation& Where() const { return builder_.Location(); }
  base::Result<StockStore> Open(Access access) const {
    return StockStore::Open(Where(), {access, {}}, base::NativeFileSystem());
  }
  [[nodiscard]] std::vector<std::string> Findings() const {
    base::SilentProgress progress;
    return CheckStore(Where(), progress).value();
  }
  [[nodiscard]] std::set<std::string> Names() const {
    std::set<std::string> names;
    for (const auto& directory : {Where().system_directory, Where().data_directory}) {
      for (const auto& entry : fs::directory_iterator(directory)) {
        if (entry.is_regular_file()) names.insert(entry.path().filename().string());
      }
    }
    return names;
  }

  StoreBuilder builder_{"letter_case"};
};

TEST_F(LetterCase, StoreOfUpperCaseNamesOpensChecksCleanAndIsNotMadeTwice) {
  const auto reader = Open(Access::kRead);
  ASSERT_TRUE(reader) << reader.error().message;
  EXPECT_THAT(reader->Problems(), IsEmpty());
  EXPECT_EQ(reader->Days().Count(), 100);
  EXPECT_FALSE(reader->HasChangedOnDisk());
  EXPECT_THAT(Findings(), IsEmpty());
  EXPECT_FALSE(StockStore::Create(Where(), base::NativeFileSystem()));
}

TEST_F(LetterCase, ReplacedFilesKeepTheirNamesAndNewOnesHaveTheUsual) {
  const std::set<std::string> before = Names();
  const auto reader = Open(Access::kRead);
  {
    auto store = Open(Access::kWrite);
    ASSERT_TRUE(store) << store.error().message;
    ASSERT_TRUE(store->AppendDay(Weekdays("2020/01/06", 101).back(), {}));
    const std::vector<NewStock> added = {{*StockCode::Parse("BBB"), "B", 2, 1, 800}};
    ASSERT_TRUE(store->AddStocks(added));
  }
  std::set<std::string> expected = before;
  expected.insert({"orin002.dat", "orinc002.dat"});
  EXPECT_EQ(Names(), expected);
  EXPECT_TRUE(reader->HasChangedOnDisk());
  EXPECT_THAT(Findings(), IsEmpty());
  EXPECT_EQ(Open(Access::kRead)->Days().Count(), 101);
}

TEST_F(LetterCase, ExactNameGoesFirstAndCheckNamesTheOther) {
  const fs::path other = Where().data_directory / "ORIN001.DAT";
  fs::copy_file(other, Where().data_directory / "orin001.dat");
  fs::resize_file(other, 0);
  const auto store = Open(Access::kRead);
  ASSERT_TRUE(store) << store.error().message;
  EXPECT_EQ(store->Days().Count(), 100);
  EXPECT_THAT(Findings(), ElementsAre(HasSubstr("ORIN001.DAT」は、大文字と小文字だけが")));
}

TEST_F(LetterCase, LeftoversOfAnyCaseAreRemoved) {
  for (const std::string name : {"ORIN.SYS.tmp", "ORIN.IND.TMP"}) {
    fs::copy_file(Where().system_directory / "ORIN.SYS", Where().system_directory / name);
  }
  const std::set<std::string> with = Names();
  ASSERT_TRUE(Open(Access::kWrite));
  EXPECT_EQ(Names().size(), with.size() - 2);
}

}  // namespace
}  // namespace orin::store
