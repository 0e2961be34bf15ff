#include "figures.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <fcntl.h>
#include <functional>
#include <iomanip>
#include <string_view>
#include <unistd.h>

#include "base/file_system.h"
#include "base/progress.h"
#include "screening/screening_run.h"
#include "store/file_names.h"
#include "store/stock_store.h"

namespace orin::bench {

namespace {

constexpr int kWarmUps = 3;
constexpr int kRuns = 31;

constexpr std::string_view kGoldenCross =
    "移動平均(66,-1) >= 移動平均(22,-1) And  移動平均(66,0) <= 移動平均(22,0) ";
constexpr std::string_view kWeeklyTrend =
    "週間移動平均(13,0) > 週間移動平均(26,0) And 終値(0) > 移動平均(25,0) And ＲＳＩ(14,0) < 70";

double Milliseconds(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
      .count();
}

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

/// Reads the whole file a mebibyte at a time and looks at every byte.
class FileStream {
 public:
  explicit FileStream(const std::filesystem::path& path)
      : descriptor_(open(path.c_str(), O_RDONLY | O_CLOEXEC)), words_(size_t{1} << 17) {}
  FileStream(const FileStream&) = delete;
  FileStream& operator=(const FileStream&) = delete;
  ~FileStream() { close(descriptor_); }

  uint64_t Run() {
    const size_t capacity = words_.size() * sizeof(uint64_t);
    uint64_t sum = 0;
    off_t at = 0;
    for (;;) {
      const ssize_t got = pread(descriptor_, words_.data(), capacity, at);
      if (got <= 0) return sum;
      for (size_t i = 0; i < static_cast<size_t>(got) / sizeof(uint64_t); ++i) sum += words_[i];
      at += got;
    }
  }

 private:
  int descriptor_;
  std::vector<uint64_t> words_;
};

class Bench {
 public:
  Bench(const store::StockStore& store, const std::filesystem::path& last_file)
      : store_(store), stream_(last_file) {}

  double F1() {
    uint64_t sum = 0;
    const double time = Milliseconds([&] { sum = stream_.Run(); });
    seen_ = sum;
    return time;
  }

  double Screen(std::string_view condition) {
    screening::AnalysisFile analysis;
    analysis.condition = std::string(condition);
    base::SilentProgress progress;
    std::vector<std::string> notes;
    return Milliseconds([&] {
      const auto selected =
          screening::Select(store_, analysis, store_.Days().Last(), true, progress, notes);
      seen_ = selected ? selected->size() : 0;
    });
  }

 private:
  const store::StockStore& store_;
  FileStream stream_;
  // The results of the measured work, which the compiler must not drop.
  volatile uint64_t seen_ = 0;
};

void PrintRatio(std::ostream& out, const char* name, Bench& bench, std::string_view condition) {
  std::vector<double> times;
  std::vector<double> ratios;
  for (int run = -kWarmUps; run < kRuns; ++run) {
    const double base_time = bench.F1();
    const double time = bench.Screen(condition);
    if (run < 0) continue;
    times.push_back(time);
    ratios.push_back(time / base_time);
  }
  out << name << "\t" << Median(ratios) << "\tF1\n";
  out << name << ".time\t" << Median(times) << "\tms\n";
}

void PrintF1(std::ostream& out, Bench& bench) {
  std::vector<double> times;
  for (int run = -kWarmUps; run < kRuns; ++run) {
    const double time = bench.F1();
    if (run >= 0) times.push_back(time);
  }
  out << "F1\t" << Median(times) << "\tms\n";
}

struct Figure {
  std::string_view name;
  void (*print)(std::ostream&, Bench&);
};

constexpr Figure kFigures[] = {
    {"F1", PrintF1},
    {"T1", [](std::ostream& out, Bench& bench) { PrintRatio(out, "T1", bench, kGoldenCross); }},
    {"T2", [](std::ostream& out, Bench& bench) { PrintRatio(out, "T2", bench, kWeeklyTrend); }},
};

}  // namespace

base::Status RunFigures(const std::filesystem::path& directory,
                        const std::vector<std::string>& names, std::ostream& out) {
  for (const std::string& name : names) {
    const bool known = std::any_of(std::begin(kFigures), std::end(kFigures),
                                   [&name](const Figure& figure) { return figure.name == name; });
    if (!known) return base::Fail("「" + name + "」という計測値はありません。");
  }
  const store::StoreLocation location{directory, directory / "data"};
  const auto store = store::StockStore::Open(location, {}, base::NativeFileSystem());
  if (!store) return base::Forward(store);
  Bench bench(*store, store::PathOf(location, {store::FileKind::kDaily,
                                               store->Master().Header().current_file}));
  out << std::fixed << std::setprecision(3);
  for (const Figure& figure : kFigures) {
    if (names.empty() || std::find(names.begin(), names.end(), figure.name) != names.end()) {
      figure.print(out, bench);
    }
  }
  return {};
}

}  // namespace orin::bench
