#include "random_market.h"

#include <algorithm>
#include <vector>

#include "analysis/items/item_catalogue.h"
#include "indicators/indicator.h"

namespace orin::analysis {

using base::Currency;

struct RandomMarket::Temperament {
  int32_t listed_on = 0;      // days before are without data
  int32_t gap_one_in = 8;     // one day in so many is without data
  int32_t quiet_one_in = 10;  // one day in so many has no volume
  int32_t flat_one_in = 0;    // one day in so many repeats the price of the day before
  int64_t divisor = 1;        // prices are quotients by it
  int64_t factor = 1;
};

base::Bar RandomMarket::NextBar(const Temperament& temperament, int32_t day, int64_t& price) {
  base::Bar bar;
  if (day < temperament.listed_on || Below(temperament.gap_one_in) == 0) return bar;
  const bool is_flat = temperament.flat_one_in > 0 && Below(temperament.flat_one_in) == 0;
  if (!is_flat) price = std::max<int64_t>(price + Below(40000) - 20000, 100);
  const auto within = [&](int64_t raw) {
    return Currency::FromRaw(raw * temperament.factor / temperament.divisor);
  };
  const int64_t spread = is_flat ? 0 : price / 20;
  const int64_t low = price - Below(static_cast<int32_t>(spread + 1));
  const int64_t high = price + Below(static_cast<int32_t>(spread + 1));
  bar.open = within(price);
  bar.low = within(low);
  bar.high = within(high);
  bar.close = Below(2) == 0 ? bar.low : bar.high;
  const bool is_quiet = Below(temperament.quiet_one_in) == 0;
  bar.volume = is_quiet ? Currency() : Currency::FromInt(Below(100000));
  return bar;
}

base::BarColumns RandomMarket::Bars(int32_t count) {
  const Temperament temperaments[] = {
      {.gap_one_in = 500},
      {},
      {.listed_on = Below(count)},
      {.gap_one_in = 2},
      {.quiet_one_in = 2},
      {.gap_one_in = 50, .flat_one_in = 2},
      {.gap_one_in = 50, .divisor = 3},
      {.gap_one_in = 50, .factor = 40'000'000},
  };
  const Temperament& temperament =
      temperaments[Below(static_cast<int32_t>(std::size(temperaments)))];
  base::BarColumns bars;
  int32_t serial = 43000 + Below(500);
  int64_t price = 10000 + Below(5000000);
  for (int32_t day = 0; day < count; ++day) {
    serial += Below(12) == 0 ? 3 : 1;
    base::Bar bar = NextBar(temperament, day, price);
    bar.date = base::Date::FromSerial(serial);
    bars.Append(bar);
  }
  return bars;
}

std::string RandomExpression::Condition() {
  std::string text = Relation();
  while (random_.Below(3) != 0) {
    text += random_.OneOf({" And ", "and", " AND ", " Or ", "or", " OR "}) + Relation();
  }
  return text;
}

std::string RandomExpression::Operand(int depth) {
  std::string text = Term(depth);
  while (random_.Below(5) < 2) {
    text += random_.OneOf({" + ", "+", " - ", "-", " * ", "*", "/", " / ", " ^ ", "^", "\\",
                           " Mod ", "mod", " MOD ", " ? ", " - -", "*-"}) +
            Term(depth);
  }
  if (random_.Below(60) == 0) text += random_.OneOf({"+", "{", "}", "H", "mOd", "\"", "- ", "("});
  return text;
}

std::string RandomExpression::Relation() {
  std::string text = Operand(1);
  do {
    text += random_.OneOf({" > ", "<", " >= ", "<=", " = ", "<>"}) + Operand(1);
  } while (random_.Below(6) == 0);
  return text;
}

std::string RandomExpression::Term(int depth) {
  if (random_.Below(3) == 0 && depth < 4) return Sign() + "{" + Operand(depth + 1) + "}";
  if (random_.Below(3) == 0) return Sign() + Number();
  if (random_.Below(8) == 0) return Function() + Term(depth);
  return Sign() + Item();
}

std::string RandomExpression::Sign() { return random_.Below(8) == 0 ? "-" : ""; }

std::string RandomExpression::Number() {
  return random_.OneOf(
      {"0", "1", "2", "3.5", "100", "0.0001", "-0.5", "7.50005", "4000000000", "922337203685477"});
}

std::string RandomExpression::Function() {
  return random_.OneOf({"Ａｂｓ()? ", "Ａｔｎ()? ", "Ｃｏｓ()?", "Ｅｘｐ()? ", "Ｆｉｘ()? ",
                        "Ｉｎｔ()? ", "Ｌｏｇ()?", "Ｓｇｎ()? ", "Ｓｉｎ()? ", "Ｓｑｒ()? ",
                        "Ｔａｎ()? "});
}

std::string RandomExpression::Item() {
  if (of_trades_ && random_.Below(2) == 0) {
    return random_.OneOf({"買い値", "買い値(0)", "売り値", "売り値(0)", "買い日付", "売り日付(0)"});
  }
  if (random_.Below(3) == 0) return AnyItem(8);
  const std::string offset = random_.Below(2) == 0 ? "0" : "-" + std::to_string(random_.Below(6));
  const std::string period = std::to_string(1 + random_.Below(6));
  const std::string form = random_.OneOf({"", "", "", "週間", "月間", "第二銘柄"});
  if (random_.Below(3) == 0) {
    const std::string name =
        random_.OneOf({"移動平均", "最高値", "最安値", "ＲＳＩ", "出来高合計"});
    return form + name + "(" + period + "," + offset + ")";
  }
  const std::string name = random_.OneOf({"始値", "高値", "安値", "終値", "出来高"});
  return form + name + "(" + offset + ")";
}

std::string RandomExpression::AnyItem(int32_t longest) {
  const auto items = ItemCatalogue();
  for (;;) {
    const ItemEntry& entry =
        items[static_cast<size_t>(random_.Below(static_cast<int32_t>(items.size())))];
    const SeriesForm form = kAllForms[static_cast<size_t>(random_.Below(4))];
    if (!entry.HasForm(form) || entry.family->ending != ItemFamily::Ending::kOffset) continue;
    const indicators::Indicator* indicator = indicators::FindIndicator(entry.indicator);
    std::string text = ItemName(entry, form) + "(";
    for (size_t i = 0; i < entry.ParameterCount(); ++i) {
      const int32_t least =
          indicator != nullptr ? std::max(indicator->parameters[i].minimum, -3) : 1;
      const int32_t most = indicator != nullptr
                               ? std::min(indicator->parameters[i].maximum, least + longest)
                               : longest;
      text += std::to_string(least + random_.Below(most - least + 1)) + ",";
    }
    return text + (random_.Below(2) == 0 ? "0)" : "-" + std::to_string(random_.Below(6)) + ")");
  }
}

}  // namespace orin::analysis
