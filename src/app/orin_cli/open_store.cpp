#include "app/orin_cli/open_store.h"

#include <algorithm>
#include <utility>

#include "analysis/evaluation.h"
#include "base/file_system.h"
#include "shell/store_places.h"

namespace orin::app {

base::Result<OpenedStore> OpenForChange(const Session& session) {
  auto settings = settings::LoadSettings(session.places);
  if (!settings) return base::Forward(settings);
  auto store = store::StockStore::Open(shell::LocateStore(settings->bus, session.places),
                                       {store::Access::kWrite, {}}, base::NativeFileSystem());
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

std::optional<store::StockCode> FindSecondStock(const store::StockStore& store,
                                                const std::string& code, Answer& answer) {
  if (code.empty()) return std::nullopt;
  const auto parsed = store::StockCode::Parse(code);
  if (!parsed) {
    answer.Tell("第二銘柄コードの" + parsed.error().message);
    return std::nullopt;
  }
  const std::string problem = analysis::UnknownSecondStock(store, *parsed);
  if (problem.empty()) return *parsed;
  answer.Tell(problem);
  return std::nullopt;
}

namespace {

base::Result<base::Date> ParseDate(const std::string& text) {
  const auto parsed = base::Date::Parse(text);
  if (!parsed) return base::Fail("「" + text + "」は日付（yyyy/mm/dd）ではありません。");
  return *parsed;
}

std::string StoredDays(const store::Calendar& days) {
  return "有効な日付は " + days.Days().front().ToText() + "～" + days.Days().back().ToText() +
         " の取引日です";
}

base::Status RefuseNoDays(const store::Calendar& days) {
  if (days.Count() == 0) return base::Fail("株価データがまだありません。");
  return {};
}

}  // namespace

base::Result<base::DayIndex> FindDay(const store::StockStore& store, const std::string& date) {
  const store::Calendar& days = store.Days();
  if (const auto refused = RefuseNoDays(days); !refused) return base::Forward(refused);
  if (date.empty()) return days.Last();
  const auto parsed = ParseDate(date);
  if (!parsed) return base::Forward(parsed);
  const base::DayIndex day = days.Find(*parsed);
  if (!day.IsNone()) return day;
  return base::Fail(parsed->ToText() + " の株価データがありません（" + StoredDays(days) + "）。");
}

base::Result<base::DayRange> FindDays(const store::StockStore& store, const std::string& from,
                                      const std::string& to) {
  const store::Calendar& days = store.Days();
  if (const auto refused = RefuseNoDays(days); !refused) return base::Forward(refused);
  const auto first = from.empty() ? days.Days().front() : ParseDate(from);
  if (!first) return base::Forward(first);
  const auto last = to.empty() ? days.Days().back() : ParseDate(to);
  if (!last) return base::Forward(last);
  if (*last < *first) {
    return base::Fail("最初の日付 " + first->ToText() + " が最後の日付 " + last->ToText() +
                      " より後です。");
  }
  const auto begin = std::lower_bound(days.Days().begin(), days.Days().end(), *first);
  const auto end = std::upper_bound(days.Days().begin(), days.Days().end(), *last);
  if (begin >= end) {
    return base::Fail(first->ToText() + " から " + last->ToText() + " までの取引日がありません（" +
                      StoredDays(days) + "）。");
  }
  const auto number = [&days](auto place) {
    return base::DayIndex(static_cast<int32_t>(place - days.Days().begin()));
  };
  return base::DayRange{number(begin + 1), number(end)};
}

}  // namespace orin::app
