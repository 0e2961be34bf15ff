#pragma once

#include <array>
#include <string>

#include "store/record_list.h"

namespace orin::store {

// The list files of the system directory. Texts are code page 932.

/// orin.swk, the stocks the user has selected to work with, and orin.cwk, those to compare with.
struct ListedCode {
  StockCode code;

  bool operator==(const ListedCode&) const = default;
};

inline constexpr std::array kListedCodeFields = {
    RecordField<ListedCode>{"銘柄コード", 0, 8, &ListedCode::code},
};
inline constexpr RecordFormat<ListedCode> kSelectionFormat = {"ORINSWK1", 16, kListedCodeFields};
inline constexpr RecordFormat<ListedCode> kComparisonFormat = {"ORINCWK1", 16, kListedCodeFields};

/// orin.per: a stock of the user's personal list.
struct PersonalStock {
  StockCode code;
  base::Date since;      // none: not known
  base::Currency price;  // when it was put on the list; 0: not known
  std::string memo;

  bool operator==(const PersonalStock&) const = default;
};

inline constexpr std::array kPersonalFields = {
    RecordField<PersonalStock>{"銘柄コード", 0, 8, &PersonalStock::code},
    RecordField<PersonalStock>{"登録日", 8, 8, &PersonalStock::since},
    RecordField<PersonalStock>{"登録時の株価", 16, 8, &PersonalStock::price},
    RecordField<PersonalStock>{"メモ", 24, 40, &PersonalStock::memo, FieldRule::kCut},
};
inline constexpr RecordFormat<PersonalStock> kPersonalFormat = {"ORINPER1", 64, kPersonalFields};

/// A file used lately, the newest first: in orin.ser lists of stocks to step through, in orin.com
/// lists of comparison stocks, in orin.ana analysis files.
struct RecentFile {
  std::string path;  // as a path setting
  std::string title;

  bool operator==(const RecentFile&) const = default;
};

inline constexpr std::array kRecentFields = {
    RecordField<RecentFile>{"ファイル", 0, 260, &RecentFile::path, FieldRule::kRequired},
    RecordField<RecentFile>{"タイトル", 260, 60, &RecentFile::title, FieldRule::kCut},
};
inline constexpr RecordFormat<RecentFile> kRecentSeriesFormat = {"ORINSER1", 320, kRecentFields};
inline constexpr RecordFormat<RecentFile> kRecentComparisonFormat = {"ORINCOM1", 320,
                                                                     kRecentFields};
inline constexpr RecordFormat<RecentFile> kRecentAnalysisFormat = {"ORINANA1", 320, kRecentFields};

/// orin.fee: what a broker takes for a trade worth `from` or more, until a step of the same
/// broker with a higher `from`. The steps of a broker follow each other.
struct FeeStep {
  std::string broker;
  base::Currency from;
  base::Currency percent;  // of the value of the trade
  base::Currency fixed;    // added to it

  bool operator==(const FeeStep&) const = default;
};

/// The broker where there is no orin.fee.
inline constexpr std::string_view kDefaultBroker = "ＸＸ証券";

inline constexpr std::array kFeeFields = {
    RecordField<FeeStep>{"証券会社", 0, 32, &FeeStep::broker, FieldRule::kRequired},
    RecordField<FeeStep>{"約定代金", 32, 8, &FeeStep::from},
    RecordField<FeeStep>{"手数料率", 40, 8, &FeeStep::percent},
    RecordField<FeeStep>{"固定手数料", 48, 8, &FeeStep::fixed},
};
inline constexpr RecordFormat<FeeStep> kFeeFormat = {"ORINFEE1", 56, kFeeFields};

/// orin.trn: an entry of the trade journal.
struct Trade {
  base::Date date;
  StockCode code;
  TradeSide side = TradeSide::kBuy;
  base::Currency price;  // of one share
  base::Currency shares;
  base::Currency fee;
  base::Currency tax;
  std::string broker;
  std::string memo;

  bool operator==(const Trade&) const = default;
};

inline constexpr std::array kTradeFields = {
    RecordField<Trade>{"日付", 0, 8, &Trade::date, FieldRule::kRequired},
    RecordField<Trade>{"銘柄コード", 8, 8, &Trade::code},
    RecordField<Trade>{"売買", 16, 2, &Trade::side},
    RecordField<Trade>{"単価", 24, 8, &Trade::price},
    RecordField<Trade>{"株数", 32, 8, &Trade::shares},
    RecordField<Trade>{"手数料", 40, 8, &Trade::fee},
    RecordField<Trade>{"税金", 48, 8, &Trade::tax},
    RecordField<Trade>{"証券会社", 56, 32, &Trade::broker},
    RecordField<Trade>{"メモ", 88, 40, &Trade::memo, FieldRule::kCut},
};
inline constexpr RecordFormat<Trade> kTradeFormat = {"ORINTRN1", 128, kTradeFields};

static_assert(kSelectionFormat.IsSound() && kComparisonFormat.IsSound() &&
              kPersonalFormat.IsSound() && kRecentSeriesFormat.IsSound() &&
              kRecentComparisonFormat.IsSound() && kRecentAnalysisFormat.IsSound() &&
              kFeeFormat.IsSound() && kTradeFormat.IsSound());

}  // namespace orin::store
