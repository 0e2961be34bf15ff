#pragma once

#include <string_view>
#include <tl/expected.hpp>
#include <vector>

#include "analysis/condition.h"
#include "analysis/condition_text.h"

namespace orin::analysis {

// The splits that the compiler makes. Each takes time linear in the text, and fails with the
// place where there is one piece too many. The views hold as long as the text they came from.

template <typename T>
using Split = tl::expected<T, Note>;

/// The pieces between double quotes; at most 1000.
Split<std::vector<TextView>> SplitQuotes(TextView text);

/// The Or-terms, at most 100, and the And-terms of one of them, at most 100. The keywords need no
/// blanks around them.
Split<std::vector<TextView>> SplitOr(TextView text);
Split<std::vector<TextView>> SplitAnd(TextView text);

/// Operand, relational operator, operand, ...; at most 10 pieces. The last piece is an operand,
/// empty where the text ends in an operator.
Split<std::vector<TextView>> SplitRelation(TextView text);

/// Runs of half-width blanks become one, those at the ends vanish; then the same with full-width
/// blanks. At most 1000 pieces between the blanks of a kind, empty ones included.
Split<ConditionText> CollapseSpaces(TextView text);

/// Without each `delimiter`; at most 10000 pieces between them.
Split<ConditionText> RemoveAll(TextView text, char delimiter);

/// The byte at which the first Not of `text` begins; npos where it has none.
size_t FindNot(std::string_view text);

}  // namespace orin::analysis
