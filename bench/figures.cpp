#include "figures.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <fcntl.h>
#include <fstream>
#include <functional>
#include <iomanip>
#include <iostream>
#include <span>
#include <string_view>
#include <sys/resource.h>
#include <unistd.h>

#include "analysis/evaluation.h"
#include "base/file_system.h"
#include "base/progress.h"
#include "hand_loops.h"
#include "program_start.h"
#include "screening/screening_run.h"
#include "screening/signal_scan.h"
#include "store/file_names.h"
#include "store/price_files.h"
#include "store/stock_store.h"

namespace orin::bench {

namespace {

using base::DayIndex;

constexpr int kRounds = 9;

constexpr std::string_view kGoldenCross =
    "移動平均(66,-1) >= 移動平均(22,-1) And  移動平均(66,0) <= 移動平均(22,0) ";
constexpr std::string_view kFiveTerms =
    "ＲＳＩ(14,0) < 90 And ％Ｋ(5,0) > 20 And ＡＤＸ(14,14,0) > 10 And "
    "終値(0) > 終値最高値(20,-1) And 終値(0) > 移動平均(22,0)";
constexpr std::string_view kColumns[] = {"ＲＳＩ(14,0)", "ＡＤＸ(14,14,0)", "ＭＡＣＤ(5,20,0)"};

/// Processor time of this process, and of the programs it has started, in milliseconds. Other
/// processes do not count in.
double ProcessorTime() {
  timespec now = {};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  rusage started = {};
  getrusage(RUSAGE_CHILDREN, &started);
  const auto milliseconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
  };
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6 +
         milliseconds(started.ru_utime) + milliseconds(started.ru_stime);
}

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

/// Reads files a mebibyte at a time and adds up every word, or the close of every bar.
class FileStream {
 public:
  enum class Sum { kWords, kCloses };

  uint64_t Run(const std::filesystem::path& path, Sum sum) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    const size_t step = sum == Sum::kWords ? 1 : store::kBarLength / sizeof(uint64_t);
    const size_t first = sum == Sum::kWords ? 0 : store::bar_offset::kClose / sizeof(uint64_t);
    // Whole records, so that the closes lie alike in every part.
    const size_t part = kBuffer / store::kDailyRecordLength * store::kDailyRecordLength;
    uint64_t total = 0;
    off_t at = 0;
    for (;;) {
      const ssize_t got = pread(descriptor, words_.data(), part, at);
      if (got <= 0) break;
      const size_t count = static_cast<size_t>(got) / sizeof(uint64_t);
      for (size_t i = first; i < count; i += step) total += words_[i];
      at += got;
    }
    close(descriptor);
    return total;
  }

 private:
  static constexpr size_t kBuffer = size_t{1} << 20;
  std::vector<uint64_t> words_ = std::vector<uint64_t>(kBuffer / sizeof(uint64_t));
};

/// Stops a job after some stocks.
class StopAfter : public base::Progress {
 public:
  explicit StopAfter(int64_t stocks) : stocks_(stocks) {}
  bool Report(std::string_view, int64_t done, int64_t) override { return done < stocks_; }

 private:
  int64_t stocks_;
};

/// The price files as the loops by hand take them.
class MappedMarket {
 public:
  MappedMarket(const store::StockMaster& master, store::PriceFiles prices)
      : prices_(std::move(prices)) {
    for (int32_t file = 0; file < prices_.FileCount(); ++file) {
      const store::DayPlace place = prices_.PlaceOf(file * store::kDaysPerFile);
      files_.push_back(prices_.Bytes(place.file).data());
    }
    for (const store::StockRecord& stock : master.Stocks()) {
      stocks_.push_back(static_cast<size_t>(stock.slot.Value() - 1) * store::kDailyRecordLength);
    }
  }
  [[nodiscard]] HandMarket View() const {
    return {files_.data(), stocks_.data(), stocks_.size(), prices_.DayCount()};
  }

 private:
  store::PriceFiles prices_;
  std::vector<const char*> files_;
  std::vector<size_t> stocks_;
};

/// The measured jobs, all on one market. Each returns what it has found.
class Bench {
 public:
  Bench(const store::StockStore& store, std::vector<std::filesystem::path> files,
        MappedMarket market)
      : store_(store),
        files_(std::move(files)),
        market_(std::move(market)),
        program_(WindowProgram()) {}

  uint64_t StartProgram() {
    if (!StartAndClose(program_, store_.Location().system_directory)) has_failed_ = true;
    return 0;
  }
  /// Whether the window program is there, and ended as it should every time.
  [[nodiscard]] bool CanStartProgram() const { return !program_.empty() && !has_failed_; }

  uint64_t StreamLastFile() { return stream_.Run(files_.back(), FileStream::Sum::kWords); }
  uint64_t SumCloses() {
    uint64_t sum = 0;
    for (const auto& file : files_) sum += stream_.Run(file, FileStream::Sum::kCloses);
    return sum;
  }
  uint64_t Screen(std::string_view condition) {
    screening::AnalysisFile analysis;
    analysis.condition = std::string(condition);
    base::SilentProgress progress;
    std::vector<std::string> notes;
    const auto selected =
        screening::Select(store_, analysis, {store_.Days().Last()}, progress, notes);
    return selected ? selected->size() : 0;
  }
  /// The golden cross on each of the last `days` days of the first `stocks` stocks, counted.
  uint64_t CountSignals(int64_t stocks, int32_t days) {
    const DayIndex last = store_.Days().Last();
    const DayIndex first(std::max(1, last.Value() - days + 1));
    auto evaluation = analysis::Evaluation::OfText(store_, kGoldenCross, {.days = {first, last}});
    StopAfter progress(stocks);
    ptrdiff_t hits = 0;
    static_cast<void>(
        screening::ScanSignals(std::move(*evaluation), screening::MarketChoice::kAll, progress,
                               [&hits](const store::StockRecord&, std::span<const uint8_t> truths) {
                                 hits += std::count(truths.begin(), truths.end(), 1);
                               }));
    return static_cast<uint64_t>(hits);
  }
  /// Columns of three indicators over the whole history of every stock; the sum of their last
  /// values.
  uint64_t ComputeColumns() {
    std::vector<analysis::Program> programs;
    for (const std::string_view text : kColumns) {
      programs.push_back(*analysis::BuildProgram(text));
    }
    auto evaluation = analysis::Evaluation::OfPrograms(
        store_, std::move(programs), {.days = {DayIndex(1), store_.Days().Last()}});
    base::ValueColumn values;
    const auto stocks = store_.Master().Stocks();
    uint64_t sum = 0;
    for (size_t i = 0; i < stocks.size(); ++i) {
      evaluation->LoadNext(stocks, i);
      for (size_t column = 0; column < std::size(kColumns); ++column) {
        evaluation->Values(values, column);
        sum += static_cast<uint64_t>(values.Data()[values.Size() - 1].Raw());
      }
    }
    return sum;
  }
  uint64_t RunByHand(uint64_t (*HandLoops::*job)(const HandMarket&)) {
    return (BestHandLoops().*job)(market_.View());
  }

 private:
  const store::StockStore& store_;
  std::vector<std::filesystem::path> files_;
  MappedMarket market_;
  std::filesystem::path program_;
  bool has_failed_ = false;
  FileStream stream_;
};

constexpr std::string_view kStart = "start";
// Not measured in rounds with the others.
constexpr std::string_view kGap = "gap";
constexpr int kGapRuns = 3;
constexpr std::string_view kChart = "chart";

struct Figure {
  std::string_view name;
  std::string_view unit;  // another figure, measured in the same rounds, or ms
  uint64_t (*run)(Bench&);
  std::string_view by_hand = {};  // the figure that finds the same without the engine
};

constexpr int64_t kAllStocks = 1'000'000;
constexpr int32_t kAllDays = 1'000'000;

constexpr Figure kFigures[] = {
    {"F1", "ms", [](Bench& bench) { return bench.StreamLastFile(); }},
    {"F2", "ms", [](Bench& bench) { return bench.SumCloses(); }},
    {"H1", "F1", [](Bench& bench) { return bench.RunByHand(&HandLoops::golden_crosses_today); }},
    {"H3", "F1", [](Bench& bench) { return bench.RunByHand(&HandLoops::five_terms_today); }},
    {"H2", "F2", [](Bench& bench) { return bench.RunByHand(&HandLoops::golden_crosses); }},
    {"H4", "F2", [](Bench& bench) { return bench.RunByHand(&HandLoops::columns); }},
    {"T1", "F1", [](Bench& bench) { return bench.Screen(kGoldenCross); }, "H1"},
    {"T3", "F1", [](Bench& bench) { return bench.Screen(kFiveTerms); }, "H3"},
    {"T2", "F2", [](Bench& bench) { return bench.CountSignals(kAllStocks, kAllDays); }, "H2"},
    {"T4", "F2", [](Bench& bench) { return bench.ComputeColumns(); }, "H4"},
    // How T2 grows with the stocks and with the days.
    {"T2.1000stocks", "F2", [](Bench& bench) { return bench.CountSignals(1000, kAllDays); }},
    {"T2.2000stocks", "F2", [](Bench& bench) { return bench.CountSignals(2000, kAllDays); }},
    {"T2.4000stocks", "F2", [](Bench& bench) { return bench.CountSignals(4000, kAllDays); }},
    {"T2.250days", "F2", [](Bench& bench) { return bench.CountSignals(kAllStocks, 250); }},
    {"T2.1000days", "F2", [](Bench& bench) { return bench.CountSignals(kAllStocks, 1000); }},
    {kStart, "F2", [](Bench& bench) { return bench.StartProgram(); }},
};
constexpr size_t kCount = std::size(kFigures);

/// kCount for what is no figure of the table, like ms.
size_t FindFigure(std::string_view name) {
  return static_cast<size_t>(std::ranges::find(kFigures, name, &Figure::name) -
                             std::begin(kFigures));
}

/// The times of the figures, a round each and empty where one is not measured, and their results.
struct Measured {
  std::array<std::vector<double>, kCount> times;
  std::array<uint64_t, kCount> found = {};
};

bool IsAsked(std::string_view name, const std::vector<std::string>& names) {
  return names.empty() || std::find(names.begin(), names.end(), name) != names.end();
}

/// The figures to measure: those asked for with those that they are ratios to.
std::array<bool, kCount> FiguresFor(const std::vector<std::string>& names) {
  std::array<bool, kCount> wanted = {};
  const auto want = [&wanted](std::string_view name) {
    const size_t place = FindFigure(name);
    if (place < kCount) wanted.at(place) = true;
  };
  // A figure stands behind those that it is a ratio to.
  for (size_t i = kCount; i-- > 0;) {
    if (IsAsked(kFigures[i].name, names)) wanted.at(i) = true;
    if (!wanted.at(i)) continue;
    want(kFigures[i].unit);
    want(kFigures[i].by_hand);
  }
  return wanted;
}

/// Round after round of all the figures, so that a slow moment of the machine meets them alike.
Measured MeasureRounds(Bench& bench, const std::array<bool, kCount>& wanted) {
  Measured measured;
  for (int round = 0; round <= kRounds; ++round) {
    for (size_t i = 0; i < kCount; ++i) {
      if (!wanted.at(i)) continue;
      if (kFigures[i].name == kStart && !bench.CanStartProgram()) continue;
      const double start = ProcessorTime();
      measured.found.at(i) = kFigures[i].run(bench);
      // The first round warms the caches.
      if (round > 0) measured.times.at(i).push_back(ProcessorTime() - start);
    }
  }
  return measured;
}

/// Fails where the engine and the loops by hand have not found the same: then one of them is wrong.
base::Status CompareWithHand(const Measured& measured) {
  for (size_t i = 0; i < kCount; ++i) {
    const size_t by_hand = FindFigure(kFigures[i].by_hand);
    if (by_hand == kCount || measured.times.at(i).empty()) continue;
    if (measured.found.at(i) == measured.found.at(by_hand)) continue;
    return base::Fail(std::string(kFigures[i].name) + " の結果 " +
                      std::to_string(measured.found.at(i)) + " が " +
                      std::string(kFigures[by_hand].name) + " の結果 " +
                      std::to_string(measured.found.at(by_hand)) + " と違います。");
  }
  return {};
}

void PrintFigures(const Measured& measured, std::ostream& out) {
  for (size_t i = 0; i < kCount; ++i) {
    const Figure& figure = kFigures[i];
    if (measured.times.at(i).empty()) continue;
    const double time = Median(measured.times.at(i));
    const size_t base = FindFigure(figure.unit);
    if (base == kCount) {
      out << figure.name << '\t' << time << "\tms\n";
      continue;
    }
    std::vector<double> ratios;
    for (size_t round = 0; round < measured.times.at(i).size(); ++round) {
      ratios.push_back(measured.times.at(i)[round] / measured.times.at(base)[round]);
    }
    out << figure.name << '\t' << Median(ratios) << '\t' << figure.unit << '\t' << time << "\tms\n";
  }
  for (size_t i = 0; i < kCount; ++i) {
    const Figure& figure = kFigures[i];
    if (figure.by_hand.empty() || measured.times.at(i).empty()) continue;
    const double time = Median(measured.times.at(i));
    out << figure.name << '/' << figure.by_hand << '\t'
        << time / Median(measured.times.at(FindFigure(figure.by_hand))) << '\t' << figure.by_hand
        << '\t' << time << "\tms\n";
  }
}

/// The longest time without events while the window program runs conditions, and the longest that
/// a key takes in a long condition, as parts of the run.
void PrintWindowRun(const std::filesystem::path& market, std::ostream& out) {
  std::vector<WindowRun> runs;
  for (int i = 0; i < kGapRuns; ++i) {
    const auto run = RunConditionsInWindow(market);
    if (!run) {
      std::cerr << "orin-bench-window がないか、失敗したので、" << kGap << " は計れません。\n";
      return;
    }
    runs.push_back(*run);
  }
  const auto print = [&](std::string_view name, double WindowRun::*time) {
    std::vector<double> ratios;
    std::vector<double> times;
    for (const WindowRun& run : runs) {
      ratios.push_back(run.*time / run.whole);
      times.push_back(run.*time);
    }
    out << name << '\t' << Median(ratios) << "\trun\t" << Median(times) << "\tms\n";
  };
  print(kGap, &WindowRun::longest_gap);
  print("key", &WindowRun::longest_key);
}

/// The private memory of the process: what is neither mapped files nor shared.
long PrivateKibibytes() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("RssAnon:")) return std::stol(line.substr(8));
  }
  return 0;
}

}  // namespace

base::Status RunFigures(const std::filesystem::path& directory,
                        const std::vector<std::string>& names, std::ostream& out) {
  for (const std::string& name : names) {
    const bool known = name == kGap || name == kChart || FindFigure(name) < kCount;
    if (!known) return base::Fail("「" + name + "」という計測値はありません。");
  }
  const store::StoreLocation location{directory, directory / "data"};
  const auto store = store::StockStore::Open(location, {}, base::NativeFileSystem());
  if (!store) return base::Forward(store);
  const store::MasterHeader& header = store->Master().Header();
  std::vector<std::filesystem::path> files;
  for (int16_t file = header.first_file; file <= header.current_file; ++file) {
    files.push_back(store::PathOf(location, {store::FileKind::kDaily, file}));
  }
  auto prices = store::PriceFiles::Open(location, store->Master());
  if (!prices) return base::Forward(prices);
  Bench bench(*store, files, MappedMarket(store->Master(), std::move(*prices)));

  const Measured measured = MeasureRounds(bench, FiguresFor(names));
  if (const base::Status same = CompareWithHand(measured); !same) return same;
  if (IsAsked(kStart, names) && !bench.CanStartProgram()) {
    std::cerr << "orin がないか、起動に失敗したので、" << kStart << " は計れません。\n";
  }
  out << std::fixed << std::setprecision(3);
  PrintFigures(measured, out);
  if (IsAsked(kGap, names)) PrintWindowRun(directory, out);
  if (IsAsked(kChart, names)) {
    const std::string lines = MeasureCharts(directory);
    if (lines.empty()) {
      std::cerr << "orin-bench-chart がないか、失敗したので、" << kChart << " は計れません。\n";
    }
    out << lines;
  }
  out << "private memory\t" << static_cast<double>(PrivateKibibytes()) / 1024 << "\tMiB\n";
  return {};
}

}  // namespace orin::bench
