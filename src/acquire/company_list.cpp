#include "acquire/company_list.h"

#include <algorithm>
#include <tl/expected.hpp>
#include <unordered_set>

#include "base/cp932.h"
#include "base/file_system.h"
#include "base/text.h"

namespace orin::acquire {

namespace {

constexpr std::string_view kCodeColumn = "銘柄コード";
constexpr std::string_view kUnknown = "-";

/// The text of the quoted field whose opening quote `rest` begins with, which is taken off; none
/// where no quote closes it.
std::optional<std::string> TakeQuoted(std::string_view& rest) {
  std::string text;
  for (size_t at = 1; at < rest.size(); ++at) {
    const bool is_quote = rest[at] == '"';
    const bool is_doubled = is_quote && rest.substr(at + 1).starts_with('"');
    if (is_quote && !is_doubled) {
      rest.remove_prefix(at + 1);
      return text;
    }
    text += rest[at];
    if (is_doubled) ++at;
  }
  return std::nullopt;
}

/// Unlike the fields of the quote files, those of a list that a spreadsheet has written may have
/// commas within their quotes. None where a quoted field does not end before a comma.
std::optional<std::vector<std::string>> SplitQuotedFields(std::string_view line) {
  std::vector<std::string> fields;
  for (;;) {
    line = base::TrimBlanks(line);
    if (line.starts_with('"')) {
      auto field = TakeQuoted(line);
      line = base::TrimBlanks(line);
      if (!field || (!line.empty() && line.front() != ',')) return std::nullopt;
      fields.emplace_back(base::TrimBlanks(*field));
    } else {
      const std::string_view field = line.substr(0, line.find(','));
      line.remove_prefix(field.size());
      fields.emplace_back(base::TrimBlanks(field));
    }
    if (line.empty()) return fields;
    line.remove_prefix(1);
  }
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// "1,234,567.8" without its commas; none where they do not part groups of three digits.
std::optional<std::string> WithoutGroups(std::string_view text) {
  const std::string_view whole = text.substr(0, text.find('.'));
  size_t digits = 0;  // since the last comma
  bool has_comma = false;
  std::string number;
  for (const char c : whole) {
    if (c == ',') {
      if (has_comma ? digits != 3 : digits < 1 || digits > 3) return std::nullopt;
      has_comma = true;
      digits = 0;
    } else {
      if (IsDigit(c)) ++digits;
      number += c;
    }
  }
  if (has_comma && digits != 3) return std::nullopt;
  return number + std::string(text.substr(whole.size()));
}

std::optional<base::Currency> ParseValue(std::string_view text) {
  const auto number = WithoutGroups(text);
  return number ? base::Currency::Parse(*number) : std::nullopt;
}

/// Reads line by line into a CompanyList.
class ListReader {
 public:
  ListReader(const store::StockMaster& master, CompanyList& list) : master_(master), list_(list) {}

  void ReadHeading(std::string_view line) {
    const auto names = SplitQuotedFields(line).value_or(std::vector<std::string>());
    columns_.resize(names.size());
    for (size_t i = 0; i < names.size(); ++i) ReadName(i, names[i]);
    const bool has_field =
        std::ranges::any_of(columns_, [](const auto* f) { return f != nullptr; });
    list_.has_heading = code_column_.has_value() && has_field;
    if (list_.has_heading) return;
    // What else is wrong with it does not matter.
    list_.problems = LineProblems();
    list_.problems.Add(1, code_column_ ? "見出しに会社情報の項目がありません"
                                       : "見出しに「銘柄コード」がありません");
  }

  void ReadLine(std::string_view line, int32_t number) {
    ++list_.rows;
    auto fields = SplitQuotedFields(line);
    if (!fields) return list_.problems.Add(number, "項目を囲む「\"」が閉じていません");
    while (fields->size() > columns_.size() && fields->back().empty()) fields->pop_back();
    if (fields->size() != columns_.size()) {
      return list_.problems.Add(number, "項目の数が" + std::to_string(fields->size()) +
                                            "です（見出しは" + std::to_string(columns_.size()) +
                                            "です）");
    }
    const auto stock = FindStock((*fields)[*code_column_]);
    if (!stock) return list_.problems.Add(number, stock.error());
    ++list_.stocks;
    for (size_t i = 0; i < columns_.size(); ++i) {
      if (columns_[i] != nullptr) ReadValue(**stock, *columns_[i], (*fields)[i], number);
    }
  }

 private:
  void ReadName(size_t column, const std::string& name) {
    const store::CompanyField* field = store::FindCompanyField(name);
    const bool is_code = name == kCodeColumn;
    const bool is_known = is_code || field != nullptr;
    const bool is_twice = is_code ? code_column_.has_value()
                                  : field != nullptr && std::ranges::count(columns_, field) > 0;
    if (is_known && !is_twice) {
      columns_[column] = field;
      if (is_code) code_column_ = column;
    } else if (!name.empty()) {
      list_.problems.Add(1, "見出しの" + Quoted(name) +
                                (is_known ? "が前にもあります" : "は会社情報の項目ではありません"));
    }
  }

  tl::expected<const store::StockRecord*, std::string> FindStock(std::string_view text) {
    const auto code = store::StockCode::Parse(text);
    if (!code) return tl::unexpected("銘柄コード" + Quoted(text) + "は使えません");
    const base::MasterRecord record = master_.Find(*code);
    if (record.IsNone()) return tl::unexpected("銘柄コード" + Quoted(text) + "が見つかりません");
    if (!seen_.insert(*code).second) {
      return tl::unexpected("銘柄コード" + Quoted(text) + "の行が前にもあります");
    }
    return &master_.Stock(record);
  }

  void ReadValue(const store::StockRecord& stock, const store::CompanyField& field,
                 std::string_view text, int32_t line) {
    if (text.empty()) return;
    const auto value = text == kUnknown ? std::nullopt : ParseValue(text);
    if (value || text == kUnknown) return list_.values.push_back({&stock, &field, value});
    list_.problems.Add(line,
                       std::string(field.name) + Quoted(text) + "が数値ではないか、大きすぎます");
  }

  const store::StockMaster& master_;
  CompanyList& list_;
  std::vector<const store::CompanyField*> columns_;  // null: left out, or the code
  std::optional<size_t> code_column_;
  std::unordered_set<store::StockCode, store::StockCodeHash> seen_;
};

}  // namespace

CompanyList ParseCompanyList(std::string_view utf8, const store::StockMaster& master) {
  CompanyList list;
  ListReader reader(master, list);
  const auto lines = base::SplitLines(utf8);
  reader.ReadHeading(lines.empty() ? std::string_view() : lines.front());
  for (size_t i = 1; list.has_heading && i < lines.size(); ++i) {
    if (base::TrimBlanks(lines[i]).empty()) continue;
    reader.ReadLine(lines[i], static_cast<int32_t>(i + 1));
  }
  return list;
}

std::string FormatCompanyList(const store::StockMaster& master,
                              const store::CompanyTable& companies) {
  std::string text(kCodeColumn);
  for (const store::CompanyField& field : store::kCompanyFields) {
    text += "," + std::string(field.name);
  }
  text += '\n';
  for (const store::StockRecord& stock : master.Stocks()) {
    std::string line(stock.code.Text());
    bool is_known = false;
    for (const store::CompanyField& field : store::kCompanyFields) {
      const auto value = companies.Value(stock, field);
      is_known = is_known || value;
      line += "," + (value ? value->ToText() : std::string(kUnknown));
    }
    if (is_known) text += line + '\n';
  }
  return text;
}

namespace {

std::vector<std::string> Sentences(const LineProblems& problems, const std::string& file) {
  std::vector<std::string> sentences;
  for (const LineProblem& problem : problems.Kept()) {
    sentences.push_back(file + " " + std::to_string(problem.line) + "行目：" + problem.message +
                        "。");
  }
  if (problems.Further() > 0) {
    sentences.push_back(file + " にはほかに" + std::to_string(problems.Further()) +
                        "件の問題があります。");
  }
  return sentences;
}

}  // namespace

base::Result<CompanySummary> ImportCompanies(store::StockStore& store,
                                             const std::filesystem::path& file) {
  const auto bytes = base::ReadFile(file, kLargestCompanyList);
  if (!bytes) return base::Forward(bytes);
  const CompanyList list = ParseCompanyList(base::DecodeText(*bytes).text, store.Master());
  CompanySummary summary{list.rows, list.stocks, 0, Sentences(list.problems, base::PathText(file))};
  if (!list.has_heading) return base::Fail(summary.problems.front());
  auto companies = store::CompanyTable::Load(store.Location());
  if (!companies) return base::Forward(companies);
  for (const CompanyValue& given : list.values) {
    if (companies->Value(*given.stock, *given.field) == given.value) continue;
    if (companies->Set(*given.stock, *given.field, given.value)) ++summary.values;
  }
  if (summary.values == 0) return summary;
  const base::Status saved = store.SaveCompanies(*companies);
  return saved ? base::Result<CompanySummary>(std::move(summary)) : base::Forward(saved);
}

}  // namespace orin::acquire
