#include "app/orin_cli/open_store.h"

#include <utility>

#include "base/file_system.h"
#include "shell/store_places.h"

namespace orin::app {

base::Result<OpenedStore> OpenStore(const Session& session, store::Access access,
                                    std::optional<int16_t> first_file) {
  auto settings = shell::LoadSettings(session.places);
  if (!settings) return base::Forward(settings);
  auto store = store::StockStore::Open(shell::LocateStore(settings->bus, session.places),
                                       {access, first_file}, base::NativeFileSystem());
  if (!store) return base::Forward(store);
  for (const std::string& problem : store->Problems()) Tell(problem);
  return OpenedStore{std::move(*settings), std::move(*store)};
}

base::Result<const store::StockRecord*> FindStock(const store::StockStore& store,
                                                  const std::string& code) {
  const auto parsed = store::StockCode::Parse(code);
  if (!parsed) return base::Forward(parsed);
  const base::MasterRecord record = store.Master().Find(*parsed);
  if (record.IsNone()) {
    return base::Fail("銘柄コードが見つかりません。（" + code + "）");
  }
  return &store.Master().Stock(record);
}

base::Result<base::DayIndex> FindDay(const store::StockStore& store, const std::string& date) {
  const store::Calendar& days = store.Days();
  if (days.Count() == 0) return base::Fail("株価データがまだありません。");
  if (date.empty()) return days.Last();
  const auto parsed = base::Date::Parse(date);
  if (!parsed) return base::Fail("「" + date + "」は日付（yyyy/mm/dd）ではありません。");
  const base::DayIndex day = days.Find(*parsed);
  if (!day.IsNone()) return day;
  return base::Fail(parsed->ToText() + " の株価データがありません（有効な日付は " +
                    days.Days().front().ToText() + "～" + days.Days().back().ToText() +
                    " の取引日です）。");
}

}  // namespace orin::app
