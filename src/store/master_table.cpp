#include "store/master_table.h"

#include <string>

namespace orin::store {

base::Table EmptyMasterTable() {
  base::Table table;
  table.columns = {base::WholeColumn("レコード"), base::CodeColumn()};
  for (const char* heading :
       {"銘柄レコード", "上場コード", "種別コード", "業種コード", "銘柄ランク"}) {
    table.columns.push_back(base::WholeColumn(heading));
  }
  table.columns.push_back(base::TextColumn("銘柄名"));
  return table;
}

void AddMasterRow(base::Table& table, int32_t record, const StockRecord& stock) {
  table.rows.push_back({int64_t{record}, std::string(stock.code.Text()),
                        int64_t{stock.slot.Value()}, int64_t{stock.listing}, int64_t{stock.kind},
                        int64_t{stock.sector}, int64_t{stock.rank}, stock.name});
}

}  // namespace orin::store
