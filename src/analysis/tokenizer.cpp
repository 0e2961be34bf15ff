#include "analysis/tokenizer.h"

#include "analysis/condition_text.h"

namespace orin::analysis {

namespace {

class Tokenizer {
 public:
  explicit Tokenizer(std::string_view text) : text_(text) {}

  std::vector<Token> Run() {
    size_t parentheses = 0;
    for (size_t i = 0; i < text_.size();) {
      const char c = text_[i];
      if (c == '(') ++parentheses;
      if (c == ')' && parentheses > 0) --parentheses;
      const auto code = parentheses == 0 ? OperatorAt(text_.substr(i)) : std::nullopt;
      if (code && !(c == '-' && EndsWithDayKeyword(text_.substr(0, i)))) {
        AddOperator(i, *code);
        i += code->length;
        operand_begin_ = i;
      } else {
        ++i;
      }
    }
    AddOperand(text_.size());
    return std::move(tokens_);
  }

 private:
  void AddOperator(size_t at, OperatorCode code) {
    const bool absent = TrimAllBlanks(text_.substr(operand_begin_, at - operand_begin_)).empty();
    // A "+" here has nothing on its left, and the absent operand lets it fail.
    const bool sign = absent && code.kind == OperatorKind::kSubtract;
    if (!sign) AddOperand(at);
    tokens_.push_back({sign ? Token::Kind::kSign : Token::Kind::kOperator,
                       text_.substr(at, code.length), PositionOf(at), code});
  }

  void AddOperand(size_t end) {
    const std::string_view operand =
        TrimAllBlanks(text_.substr(operand_begin_, end - operand_begin_));
    const size_t begin = operand.empty() ? end : static_cast<size_t>(operand.data() - text_.data());
    tokens_.push_back({Token::Kind::kOperand, operand, PositionOf(begin), {}});
  }

  // Counts on from the call before: places are asked for in ascending order.
  size_t PositionOf(size_t at) {
    for (; counted_ < text_.size() && counted_ <= at; ++counted_) {
      if (BeginsCharacter(text_[counted_])) ++characters_;
    }
    return characters_;
  }

  std::string_view text_;
  std::vector<Token> tokens_;
  size_t operand_begin_ = 0;
  size_t counted_ = 0;     // bytes
  size_t characters_ = 0;  // that begin in them
};

}  // namespace

std::vector<Token> TokenizeOperand(std::string_view text) { return Tokenizer(text).Run(); }

}  // namespace orin::analysis
