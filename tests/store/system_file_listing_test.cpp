#include "store/system_file_listing.h"

#include <gtest/gtest.h>

#include "support/store_builder.h"

namespace orin::store {
namespace {

TEST(SystemFileListing, RowsAreTheRecordsOfTheFile) {
  support::StoreBuilder builder("system_file_listing");
  const StockStore store = builder.Days(support::Weekdays("2020/01/06", 2)).Stock("A").Open();
  const auto master = ListSystemFile(store.Location().system_directory / "orin.sys");
  ASSERT_TRUE(master);
  ASSERT_EQ(master->size(), 2U);
  EXPECT_EQ(master->front().Text(0, 0), "20200107");
  EXPECT_EQ(master->back().FindRow("A"), 0U);
  EXPECT_EQ(master->back().Text(0, 0), "2");
  const auto other = ListSystemFile(store.Location().system_directory / "orin.txt");
  ASSERT_FALSE(other);
  EXPECT_EQ(other.error().message, "orin.txtはシステムファイルではありません。");
}

}  // namespace
}  // namespace orin::store
