#include <algorithm>
#include <array>
#include <optional>

#include "analysis/items/item_families.h"

namespace orin::analysis {

using base::DayIndex;
using store::CompanyField;

namespace {

const store::StockRecord* StockOf(const BoundItem& item, const StockContext& context) {
  return item.form == SeriesForm::kSecond ? context.SecondStock() : context.Stock();
}

void PutOnEveryDay(std::optional<base::Currency> value, DayIndex first, DayIndex last,
                   base::ValueColumn& out) {
  for (int32_t day = std::max(first.Value(), 1); day <= last.Value(); ++day) {
    out.Set(static_cast<size_t>(day - first.Value()), value);
  }
}

History CompanyNeeds(const BoundItem&) {
  History needs;
  needs.companies = true;
  return needs;
}

void EvaluateCompany(const BoundItem& item, StockContext& context, DayIndex first, DayIndex last,
                     base::ValueColumn& out) {
  const store::StockRecord* stock = StockOf(item, context);
  if (stock == nullptr || context.Beside() == nullptr) return;
  const CompanyField& field = store::kCompanyFields[static_cast<size_t>(item.entry->number)];
  PutOnEveryDay(context.Beside()->companies.Value(*stock, field), first, last, out);
}

History RankNeeds(const BoundItem&) { return {}; }

void EvaluateRank(const BoundItem& item, StockContext& context, DayIndex first, DayIndex last,
                  base::ValueColumn& out) {
  const store::StockRecord* stock = StockOf(item, context);
  if (stock != nullptr) PutOnEveryDay(base::Currency::FromInt(stock->rank), first, last, out);
}

constexpr ItemFamily kCompanyItems = {ItemFamily::Ending::kOptionalZero, CompanyNeeds,
                                      EvaluateCompany};
constexpr ItemFamily kRankItem = {ItemFamily::Ending::kOptionalZero, RankNeeds, EvaluateRank};

constexpr ItemEntry FieldItem(const CompanyField& field, std::string_view abbreviation = {}) {
  const auto number = static_cast<int32_t>(&field - store::kCompanyFields.data());
  return {field.name, &kCompanyItems, {}, {}, number, NameRule::kPrefixOnly, abbreviation};
}

constexpr ItemEntry Named(std::string_view name, std::string_view abbreviation = {}) {
  return FieldItem(*store::FindCompanyField(name), abbreviation);
}

constexpr ItemEntry kCompanyTable[] = {
    {"銘柄ランク", &kRankItem, {}, {}, 0, NameRule::kPrefixOnly},
    Named("時価総額"),
    Named("発行済株式数"),
    Named("配当利回り"),
    Named("一株配当"),
    Named("株価収益率", "ＰＥＲ"),
    Named("一株利益", "ＥＰＳ"),
    Named("純資産倍率", "ＰＢＲ"),
    Named("一株株主資本", "ＢＰＳ"),
    Named("株主資本比率"),
    Named("株主資本利益率", "ＲＯＥ"),
    Named("総資産利益率", "ＲＯＡ"),
    Named("決算月"),
    Named("売買単位"),
};

// The fields of the financial statements are items one and all.
constexpr bool IsOfStatements(const CompanyField& field) {
  return store::kCompanyFiles[field.file].kind == store::FileKind::kStatements;
}

constexpr auto kStatementCount = static_cast<size_t>(
    std::count_if(store::kCompanyFields.begin(), store::kCompanyFields.end(), IsOfStatements));

constexpr std::array<ItemEntry, kStatementCount> MakeFinancialTable() {
  std::array<ItemEntry, kStatementCount> table{};
  size_t count = 0;
  for (const CompanyField& field : store::kCompanyFields) {
    if (IsOfStatements(field)) table[count++] = FieldItem(field);
  }
  return table;
}

constexpr auto kFinancialTable = MakeFinancialTable();

}  // namespace

std::span<const ItemEntry> CompanyItems() { return kCompanyTable; }

std::span<const ItemEntry> FinancialItems() { return kFinancialTable; }

}  // namespace orin::analysis
