#pragma once

#include <QSyntaxHighlighter>
#include <QTextDocument>

namespace orin::screening {

/// Colours the words of a condition; braces and the operators in them by their depth. The colours
/// suit the ground, light or dark.
class ConditionHighlighter final : public QSyntaxHighlighter {
  Q_OBJECT

 public:
  explicit ConditionHighlighter(QTextDocument* document);

  void SetDark(bool is_dark);
  /// Whether the line before the block ends within a comment.
  static bool BeginsInComment(const QTextBlock& block);

 protected:
  void highlightBlock(const QString& text) override;

 private:
  bool is_dark_ = false;
};

}  // namespace orin::screening
