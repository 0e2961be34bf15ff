// How long a chart takes: 2,500 days with five sub-charts, and a hundred years of days, at
// 1600 x 1000 pixels. Prints a line a figure, parted by tabs: name, ratio to filling the picture
// with one colour, "fill", processor time, "ms". The models are the indicators behind the lines.

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <functional>
#include <iomanip>
#include <iostream>
#include <string>
#include <vector>

#include "base/file_system.h"
#include "base/progress.h"
#include "chart/chart.h"
#include "chart/layout.h"
#include "market_maker.h"
#include "painting/picture_painter.h"
#include "settings/settings.h"
#include "store/stock_store.h"

namespace {

namespace fs = std::filesystem;
using namespace orin;

constexpr int kRounds = 15;
constexpr chart::PictureSize kSize{1600, 1000, 1};
constexpr int32_t kChartDays = 2500;
// A hundred years.
constexpr int32_t kCenturyDays = 26'000;

double ProcessorTime() {
  timespec now = {};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

double MedianTime(const std::function<void()>& work) {
  std::vector<double> times;
  work();  // warms the caches
  for (int round = 0; round < kRounds; ++round) {
    const double start = ProcessorTime();
    work();
    times.push_back(ProcessorTime() - start);
  }
  std::ranges::nth_element(times, times.begin() + kRounds / 2);
  return times[kRounds / 2];
}

chart::ChartOptions FiveSubCharts() {
  chart::ChartOptions options;
  for (const char* key : {"volume", "rsi", "stochastics", "ichimoku", "bollinger"}) {
    options.sub_charts.push_back(chart::FindSubChart(key, store::BarPeriod::kDay));
  }
  return options;
}

bool Measure(const std::string& name, const fs::path& market, int32_t days) {
  const auto store =
      store::StockStore::Open({market, market / "data"}, {}, base::NativeFileSystem());
  if (!store) {
    std::cerr << store.error().message << '\n';
    return false;
  }
  const settings::Settings settings =
      settings::LoadWhatIsReadable({market, market / "orin.ini"}).settings;
  const store::StockRecord& stock = store->Master().Stock(base::MasterRecord(2));
  const store::StockRecord& second = store->Master().Stock(base::MasterRecord(3));
  chart::ChartSource source(*store, stock, &second, true, store::BarPeriod::kDay,
                            store->Days().Last());
  const int32_t count = source.Bars().Count();
  const chart::ChartOptions options = FiveSubCharts();
  const chart::BarRange view{std::max(1, count - days + 1), count,
                             chart::FutureBars(options, settings.chart_display)};
  chart::Chart chart = chart::BuildChart(source, settings, options, view);
  chart::ChartLayout layout = chart::LayOut(chart, kSize);
  QImage image(kSize.width, kSize.height, QImage::Format_RGB32);
  const double fill = MedianTime([&] { image.fill(Qt::black); });
  const auto print = [&](const std::string& part, double time) {
    std::cout << name << part << '\t' << time / fill << "\tfill\t" << time << "\tms\n";
  };
  const double models =
      MedianTime([&] { chart = chart::BuildChart(source, settings, options, view); });
  const double laid_out = MedianTime([&] { layout = chart::LayOut(chart, kSize); });
  const double painted = MedianTime([&] {
    QPainter painter(&image);
    painting::PaintPicture(painter, layout.picture);
  });
  print("", laid_out + painted);
  print(".models", models);
  print(".layout", laid_out);
  print(".paint", painted);
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  const QGuiApplication application(argc, argv);
  if (argc != 2) {
    std::cerr << "計測用の市場のディレクトリを指定して下さい。\n";
    return 2;
  }
  const fs::path market = fs::absolute(argv[1]);
  const fs::path century = market / "century";
  std::error_code ignored;
  fs::remove_all(century, ignored);
  base::SilentProgress progress;
  const auto made = bench::MakeMarket(century, {3, kCenturyDays}, progress);
  if (!made) {
    std::cerr << made.error().message << '\n';
    return 1;
  }
  std::cout << std::fixed << std::setprecision(3);
  const bool is_measured =
      Measure("chart", market, kChartDays) && Measure("century", century, kCenturyDays);
  fs::remove_all(century, ignored);
  return is_measured ? 0 : 1;
}
