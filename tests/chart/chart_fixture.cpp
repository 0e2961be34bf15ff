#include "chart_fixture.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "base/file_system.h"
#include "base/text.h"
#include "store/file_names.h"
#include "store/intraday_files.h"
#include "support/test_files.h"

namespace orin::chart {

namespace {

constexpr double kFarthest = 1.01e6;
constexpr size_t kMostItems = 5'000;

struct DatedBars {
  std::vector<base::Date> dates;
  std::vector<base::Bar> bars;
};

/// A file of the demo market: year/month/day, prices, volume.
DatedBars ReadDemo(const std::string& code, size_t days) {
  const auto bytes = base::ReadFile(support::DemoFile("brand/" + code + ".csv"));
  std::vector<std::string_view> lines = base::SplitLines(*bytes);
  lines.erase(lines.begin());
  std::erase(lines, std::string_view());
  DatedBars read;
  for (size_t i = lines.size() - std::min(days, lines.size()); i < lines.size(); ++i) {
    const auto cells = *base::SplitByDelimiter(lines[i], ",");
    const auto price = [&](size_t cell) { return *base::Currency::Parse(cells[cell]); };
    read.dates.push_back(support::Day(cells[0]));
    read.bars.push_back({{}, price(1), price(2), price(3), price(4), price(5)});
  }
  return read;
}

class Describer {
 public:
  explicit Describer(std::ostream& out) : out_(out) {}

  void operator()(const Boxes& item) {
    Begin("boxes", item.ink);
    for (const Rect& rect : item.rects) Add(rect);
  }
  void operator()(const Frames& item) {
    Begin("frames", item.ink);
    for (const Rect& rect : item.rects) Add(rect);
  }
  void operator()(const Line& item) {
    Begin("line", item.ink);
    Add(item.points);
  }
  void operator()(const Surface& item) {
    Begin("surface", item.ink);
    Add(item.points);
  }
  void operator()(const Marks& item) {
    Begin("marks", item.ink);
    out_ << ' ' << static_cast<int>(item.shape) << ' ' << Rounded(item.radius);
    Add(item.points);
  }
  void operator()(const Label& item) {
    Begin("label", item.ink);
    out_ << ' ' << static_cast<int>(item.align);
    Add({item.at});
    out_ << ' ' << item.text;
  }
  void operator()(const Clip& item) {
    out_ << "clip";
    Add(item.rect);
  }

 private:
  static double Rounded(double value) { return std::round(value * 10) / 10; }
  void Begin(const char* name, const Ink& ink) {
    out_ << name << ' ' << ink.color.Number() << '/' << static_cast<int>(ink.role) << '/'
         << static_cast<int>(ink.number) << '/' << static_cast<int>(ink.alpha);
  }
  void Add(const Rect& rect) {
    out_ << ' ' << rect.left << ',' << rect.top << '+' << rect.width << 'x' << rect.height;
  }
  void Add(const std::vector<Point>& points) {
    for (const Point& point : points) out_ << ' ' << Rounded(point.x) << ',' << Rounded(point.y);
  }

  std::ostream& out_;
};

struct Prober {
  std::string problem;

  void Check(double x, double y) {
    if (std::abs(x) <= kFarthest && std::abs(y) <= kFarthest) return;
    problem = "a point at " + std::to_string(x) + ", " + std::to_string(y);
  }
  void Check(const std::vector<Rect>& rects) {
    for (const Rect& rect : rects) {
      Check(rect.left, rect.top);
      Check(rect.width, rect.height);
    }
  }
  void Check(const std::vector<Point>& points) {
    for (const Point& point : points) Check(point.x, point.y);
  }
  void operator()(const Boxes& item) { Check(item.rects); }
  void operator()(const Frames& item) { Check(item.rects); }
  void operator()(const Line& item) { Check(item.points); }
  void operator()(const Surface& item) { Check(item.points); }
  void operator()(const Marks& item) { Check(item.points); }
  void operator()(const Label& item) {
    Check(item.at.x, item.at.y);
    if (item.text.empty()) problem = "a label without text";
  }
  void operator()(const Clip& item) { Check(std::vector{item.rect}); }
};

}  // namespace

settings::Settings DefaultSettings() {
  return settings::LoadWhatIsReadable({"/nowhere", "/nowhere/orin.ini"}).settings;
}

store::StockStore RealMarket(std::string_view directory_name, size_t days) {
  support::StoreBuilder builder(directory_name);
  const std::vector<base::Date> dates = ReadDemo("^DJI", days).dates;
  builder.Days(dates);
  for (const char* code : {"^DJI", "AAPL", "BA"}) builder.Stock(code, ReadDemo(code, days).bars);
  store::StockStore store = builder.Open();
  const auto slot = store.Master().Stock(base::MasterRecord(3)).slot.Value();
  std::vector<std::vector<store::IntradayBar>> slots(static_cast<size_t>(slot - 1));
  for (int i = 0; i < 12; ++i) {
    const double open = 310 + i % 5;
    slots.back().push_back(
        {34200 + 300 * i, support::BarOf(open, open + 2, open - 1, open + 1 - i % 3, 1000 * i)});
  }
  std::ofstream(store::PathOf(store.Location(), {store::FileKind::kIntraday, 1}), std::ios::binary)
      << store::EncodeIntradayFile(dates.back(), slots);
  return store;
}

store::StockStore MadeMarket(std::string_view directory_name, std::vector<base::Bar> stock,
                             std::vector<base::Bar> second) {
  support::StoreBuilder builder(directory_name);
  const size_t days = std::max<size_t>({1, stock.size(), second.size()});
  builder.Days(support::Weekdays("2020/01/06", days));
  builder.Stock("^DJI", std::vector<base::Bar>(days, support::FlatBar(28000)));
  builder.Stock("SECOND", std::move(second));
  builder.Stock("STOCK", std::move(stock));
  return builder.Open();
}

std::vector<const SubChart*> SubChartsOf(store::BarPeriod period) {
  std::vector<const SubChart*> charts;
  for (const SubChart& chart : SubCharts()) {
    if (!chart.period || *chart.period == period) charts.push_back(&chart);
  }
  return charts;
}

std::string Described(const DrawList& picture) {
  std::ostringstream out;
  out << picture.width << 'x' << picture.height << '\n';
  Describer describer(out);
  for (const DrawItem& item : picture.items) {
    std::visit(describer, item);
    out << '\n';
  }
  return out.str();
}

std::string ProblemOf(const DrawList& picture) {
  if (picture.items.size() > kMostItems) {
    return std::to_string(picture.items.size()) + " items";
  }
  Prober prober;
  for (const DrawItem& item : picture.items) std::visit(prober, item);
  return prober.problem;
}

}  // namespace orin::chart
