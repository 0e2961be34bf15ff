#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orin::analysis {

enum class OperatorKind : uint8_t {
  kFunction,
  kPower,
  kMultiply,
  kDivide,
  kIntegerDivide,
  kMod,
  kAdd,
  kSubtract,
};

/// Braces deeper than this give the operators inside them no code.
inline constexpr size_t kDeepestCode = 3;

/// The codes of one operator outside braces and inside one, two and three pairs of them.
struct OperatorRow {
  OperatorKind kind;
  std::array<std::string_view, kDeepestCode + 1> codes;
};

/// In the order of OperatorKind. A code is as long as the operator it stands for. Multiply
/// skips "M", which would read as the start of a Mod.
inline constexpr std::array<OperatorRow, 8> kOperatorRows = {{
    {OperatorKind::kFunction, {"?", "P", "Q", "R"}},
    {OperatorKind::kPower, {"^", "B", "C", "D"}},
    {OperatorKind::kMultiply, {"*", "K", "L", "N"}},
    {OperatorKind::kDivide, {"/", "W", "X", "Y"}},
    {OperatorKind::kIntegerDivide, {"\\", "E", "F", "G"}},
    {OperatorKind::kMod, {"Mod", "mOD", "mOd", "moD"}},
    {OperatorKind::kAdd, {"+", "T", "U", "V"}},
    {OperatorKind::kSubtract, {"-", "H", "I", "J"}},
}};

/// The spellings of keywords; any other mix of cases is none.
using KeywordForms = std::array<std::string_view, 3>;
inline constexpr KeywordForms kModForms = {"mod", "MOD", "Mod"};
inline constexpr KeywordForms kAndForms = {"and", "AND", "And"};
inline constexpr KeywordForms kOrForms = {"or", "OR", "Or"};
inline constexpr KeywordForms kNotForms = {"not", "NOT", "Not"};

/// Whether `text` begins with one of the forms.
bool StartsWithKeyword(std::string_view text, const KeywordForms& forms);

/// The first byte at or after `from` where one of the forms begins; npos where there is no such.
size_t FindKeyword(std::string_view text, const KeywordForms& forms, size_t from);

struct OperatorCode {
  OperatorKind kind;
  uint8_t depth;   // 0 to kDeepestCode
  uint8_t length;  // bytes of the code
};

/// The operator code of any depth that `text` begins with; a Mod before any single letter.
std::optional<OperatorCode> OperatorAt(std::string_view text);

/// `text` with each code of braces as the operator it stands for, Mod as "Mod".
std::string AsTyped(std::string_view text);

/// Which outcomes of a comparison make the relation true, as a set of bits: 1 less, 2 equal,
/// 4 greater.
enum class Relation : uint8_t {
  kLess = 1,
  kEqual = 2,
  kLessOrEqual = 3,
  kGreater = 4,
  kNotEqual = 5,
  kGreaterOrEqual = 6,
};

struct RelationCode {
  Relation relation;
  uint8_t length;
};

/// The relational operator that `text` begins with, the longer one where two fit.
std::optional<RelationCode> RelationAt(std::string_view text);

/// Whether `before` ends in one of the date and time keywords whose own syntax a "-" directly
/// after them belongs to.
bool EndsWithDayKeyword(std::string_view before);

}  // namespace orin::analysis
