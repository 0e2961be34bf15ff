#include <algorithm>
#include <charconv>
#include <cmath>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/orin_cli/answer.h"
#include "app/orin_cli/open_store.h"
#include "app/orin_cli/picture_file.h"
#include "base/paths.h"
#include "chart/chart.h"
#include "chart/ink_mode.h"
#include "chart/layout.h"
#include "chart/picture_format.h"
#include "chart/plotted_data.h"

namespace orin::app {

namespace {

constexpr double kSmallestScale = 0.5;
constexpr double kLargestScale = 4;
constexpr int32_t kLargestSide = 20'000;  // pixels

struct ChartCommandOptions {
  std::string code;
  store::BarPeriod period = store::BarPeriod::kDay;
  std::string from;
  std::string to;
  chart::ChartOptions chart;
  std::vector<std::string> subs;
  std::string size = "1000x700";
  double scale = 1;
  chart::InkMode ink = chart::InkMode::kColor;
  std::string compare;
  std::string output;
  bool data = false;
};

/// What an option can be, in the order in which the help tells it.
template <typename T>
using Choices = std::vector<std::pair<std::string, T>>;

const Choices<store::BarPeriod> kPeriodChoices = {{"day", store::BarPeriod::kDay},
                                                  {"week", store::BarPeriod::kWeek},
                                                  {"month", store::BarPeriod::kMonth}};
const Choices<chart::PriceStyle> kStyles = {{"candle", chart::PriceStyle::kCandles},
                                            {"bar", chart::PriceStyle::kBars},
                                            {"line", chart::PriceStyle::kCloseLine}};
const Choices<chart::ScaleForm> kScales = {{"linear", chart::ScaleForm::kLinear},
                                           {"log", chart::ScaleForm::kLogarithmic},
                                           {"percent", chart::ScaleForm::kPercent}};
const Choices<chart::VolumePlace> kVolumes = {{"pane", chart::VolumePlace::kPane},
                                              {"overlay", chart::VolumePlace::kOverlay},
                                              {"none", chart::VolumePlace::kNone}};
const Choices<chart::ChartTheme> kThemes = {{"light", chart::ChartTheme::kLight},
                                            {"dark", chart::ChartTheme::kDark}};
const Choices<chart::InkMode> kInks = {{"color", chart::InkMode::kColor},
                                       {"grey", chart::InkMode::kGrey},
                                       {"pattern", chart::InkMode::kPattern}};

/// The sentence of an option's check is empty where the value is right. What is no number compares
/// with nothing: it must be asked whether the value is inside, not whether it is outside.
std::string CheckScale(const std::string& typed) {
  double scale = 0;
  const bool is_inside =
      CLI::detail::lexical_cast(typed, scale) && scale >= kSmallestScale && scale <= kLargestScale;
  return is_inside ? "" : "--scale";
}

/// "1000x700" times the scale.
std::optional<chart::PictureSize> ParseSize(const std::string& text, double scale) {
  const auto number = [](std::string_view digits) -> std::optional<int32_t> {
    int32_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    const bool is_number = error == std::errc() && end == digits.data() + digits.size();
    if (!is_number || value < 1 || value > kLargestSide) return std::nullopt;
    return value;
  };
  const size_t cross = text.find('x');
  if (cross == std::string::npos) return std::nullopt;
  const auto width = number(std::string_view(text).substr(0, cross));
  const auto height = number(std::string_view(text).substr(cross + 1));
  if (!width || !height) return std::nullopt;
  const auto scaled = [scale](int32_t side) {
    return std::max(1, static_cast<int32_t>(std::lround(side * scale)));
  };
  const chart::PictureSize size{scaled(*width), scaled(*height), scale};
  if (!chart::IsPaintable(size.width, size.height)) return std::nullopt;
  return size;
}

/// The sub-charts that were named; the sentence tells the first that cannot be drawn.
base::Result<std::vector<const chart::SubChart*>> FindSubCharts(
    const std::vector<std::string>& names, store::BarPeriod period) {
  std::vector<const chart::SubChart*> found;
  for (const std::string& name : names) {
    const chart::SubChart* sub_chart = chart::FindSubChart(name, period);
    if (sub_chart == nullptr) {
      return base::Fail("サブチャート「" + name +
                        "」はありません。名前は orin-cli chart --list で分かります。");
    }
    if (sub_chart->period && *sub_chart->period != period) {
      return base::Fail("「" + std::string(sub_chart->name) + "」は" +
                        std::string(store::PeriodName(*sub_chart->period)) +
                        "のチャートにだけ表示できます。");
    }
    found.push_back(sub_chart);
  }
  return found;
}

int ListSubCharts() {
  std::cout << "番号,名前,キー\n";
  for (const chart::SubChart& row : chart::SubCharts()) {
    std::cout << row.number << ',' << row.name << ',' << row.key << '\n';
  }
  return kDone;
}

/// The bars from the first date on, or as many as the settings show.
chart::BarRange ViewOf(const ChartCommandOptions& options, chart::ChartSource& source,
                       const settings::Settings& settings, base::Date from) {
  chart::BarRange view = chart::NewestBars(
      source, settings.chart_action, chart::FutureBars(options.chart, settings.chart_display));
  if (!options.from.empty()) view.first = std::min(source.BarOf(from), std::max(1, view.last));
  return view;
}

/// `options` has to outlive the answer.
int AddChart(const StoreReading& reading, ChartCommandOptions& options, chart::PictureSize size,
             Answer& answer) {
  const auto& [settings, store] = reading;
  const auto stock = FindStock(store, options.code);
  if (!stock) return answer.Report(stock.error());
  options.chart.main.shows_comparison = !options.compare.empty();
  // Spread and ratio have a stock to compare with without being told one.
  const store::StockRecord* second = nullptr;
  if (options.chart.main.shows_comparison) {
    const auto compared = FindStock(store, options.compare);
    if (!compared) return answer.Report(compared.error());
    second = *compared;
  } else if (const auto usual = FindStock(store, settings.chart_action.key_second_stock)) {
    second = *usual;
  }
  const auto days = FindDays(store, options.from, options.to);
  if (!days) return answer.Report(days.error());

  chart::ChartSource source(store, **stock, second, settings.chart_action.adjusts_for_splits,
                            options.period, days->last);
  const chart::BarRange view = ViewOf(options, source, settings, store.Days().DateOf(days->first));
  const chart::Chart chart = chart::BuildChart(source, settings, options.chart, view);
  for (const chart::Plot& plot : chart.panes) {
    for (const std::string& note : plot.notes) answer.Tell(plot.title + note);
  }
  if (options.data) answer.Out() << chart::PlottedCsv(chart);
  if (options.output.empty()) return kDone;
  answer.Finally(
      [&options, size, picture = chart::InMode(chart::LayOut(chart, size).picture, options.ink)] {
        const auto saved = SavePicture(picture, size.scale, options.output);
        return saved ? kDone : Report(saved.error());
      });
  return kDone;
}

int DrawChart(const Session& session, ChartCommandOptions options) {
  const auto size = ParseSize(options.size, options.scale);
  if (!size) {
    Tell("--size「" + options.size + "」は 幅x高さ（どちらも１～" + std::to_string(kLargestSide) +
         "、倍率をかけて一億画素まで）ではありません。");
    return kWrongUsage;
  }
  if (!options.output.empty() && !chart::FormatOf(options.output)) {
    Tell("-o「" + options.output + "」の種類は .png、.svg、.pdf のどれかです。");
    return kWrongUsage;
  }
  auto subs = FindSubCharts(options.subs, options.period);
  if (!subs) {
    Tell(subs.error().message);
    return kWrongUsage;
  }
  options.chart.sub_charts = std::move(*subs);

  return AnswerFromStore(session, [&](const StoreReading& reading, Answer& answer) {
    return AddChart(reading, options, *size, answer);
  });
}

/// The option of a choice by name.
template <typename T>
void AddChoice(CLI::App* command, const std::string& name, T& value, const Choices<T>& choices,
               const std::string& help) {
  std::string names;
  for (const auto& [key, unused] : choices) names += (names.empty() ? "" : "|") + key;
  command
      ->add_option_function<std::string>(
          name,
          [&value, &choices](const std::string& typed) {
            value = std::ranges::find(choices, typed, &std::pair<std::string, T>::first)->second;
          },
          help)
      ->check(CLI::IsMember(choices).description(""))
      ->type_name(names);
}

}  // namespace

void AddChartCommand(CLI::App& app, Session& session) {
  const auto options = std::make_shared<ChartCommandOptions>();
  const auto lists = std::make_shared<bool>(false);
  CLI::App* command = app.add_subcommand("chart", "銘柄のチャートを画像に描く");
  command->add_option("CODE", options->code, "銘柄コード（必須）")->type_name("");
  AddChoice(command, "--period", options->period, kPeriodChoices, "日足、週足、月足");
  command->add_option("--from", options->from, "最初の日付 yyyy/mm/dd（省略時は設定の足の数）")
      ->type_name("D");
  command->add_option("--to", options->to, "最後の日付 yyyy/mm/dd（省略時は最新の日）")
      ->type_name("D");
  AddChoice(command, "--main", options->chart.main.style, kStyles,
            "ローソク足、バーチャート、終値の線");
  AddChoice(command, "--axis", options->chart.main.scale, kScales, "ふつう、対数、騰落率の目盛");
  AddChoice(command, "--volume", options->chart.main.volume, kVolumes,
            "出来高を別の枠、重ねて、なし");
  command->add_option("--sub", options->subs, "サブチャートの名前、キーか番号（何度でも）")
      ->type_name("NAME")
      ->allow_extra_args(false);
  command->add_option("--compare", options->compare, "比べて描く銘柄の銘柄コード")
      ->type_name("CODE");
  command->add_option("--size", options->size, "幅x高さ（省略時は 1000x700）")->type_name("WxH");
  command->add_option("--scale", options->scale, "画素の倍率（0.5～4、省略時は 1）")
      ->check(CheckScale)
      ->type_name("S");
  AddChoice(command, "--theme", options->chart.theme, kThemes,
            "白い地、黒い地（省略時は設定の色のまま）");
  AddChoice(command, "--ink", options->ink, kInks, "カラー、灰色、白黒の模様");
  command->add_option("-o", options->output, "描くファイル（.png、.svg、.pdf）")->type_name("FILE");
  command->add_flag("--data", options->data, "描いた値をＣＳＶで表示する");
  command->add_flag("--list", *lists, "サブチャートの一覧を表示する");
  command->callback([&session, options, lists] {
    if (!*lists && options->code.empty()) throw CLI::RequiredError("CODE");
    if (!*lists && options->output.empty() && !options->data) throw CLI::RequiredError("-o");
    // Print is on paper.
    if (options->ink != chart::InkMode::kColor) options->chart.theme = chart::ChartTheme::kLight;
    session.run = [&session, options, lists] {
      return *lists ? ListSubCharts() : DrawChart(session, *options);
    };
  });
}

}  // namespace orin::app
