#include "chart/readout.h"
#include "chart/text_width.h"
#include "chart/view/views.h"

namespace orin::chart {

namespace {

std::string TextOf(const ReadoutEntry& entry) {
  return entry.label + (entry.value.empty() ? "－" : entry.value);
}

/// Of the prices of the newest bar what one asks first.
bool IsAskedFirst(const ReadoutEntry& entry) {
  return entry.label == "終値 " || entry.label.ends_with("比 ");
}

}  // namespace

Heading::Heading(const ViewContext& context, const Plot& plot, int32_t width)
    : style_(context.style), width_(width) {
  const base::Color text = context.TextColor();
  if (context.is_main) {
    Add(context.chart.stock, text);
    Add(context.chart.period, text);
    Add(ViewDates(context.chart), text);
    for (const ReadoutEntry& entry : PriceReadout(context.chart, context.chart.view.last)) {
      if (IsAskedFirst(entry)) Add(TextOf(entry), text);
    }
  }
  if (!plot.title.empty()) Add(plot.title, text);
  if (!plot.subtitle.empty()) Add(plot.subtitle, text);
  for (const ReadoutEntry& caption : plot.captions) Add(TextOf(caption), text);
  for (const ReadoutEntry& entry : Legend(context.chart, plot)) {
    Add(TextOf(entry), entry.color);
  }
}

void Heading::Add(std::string text, base::Color color) {
  const double width = TextWidth(text) * style_.text;
  // What does not fit behind its neighbours begins a row; blanks in front are for neighbours.
  if (x_ > 0 && x_ + width > width_) {
    ++rows_;
    x_ = 0;
  }
  if (x_ == 0) text.erase(0, text.find_first_not_of(' '));
  const double y = (rows_ - 0.5) * style_.row;
  labels_.push_back({TextInk(color), {x_, y}, Align::kLeft, style_.text, std::move(text)});
  x_ += width + style_.gap * 1.5;
}

void Heading::Draw(int32_t left, int32_t top, std::vector<DrawItem>& items) const {
  for (Label label : labels_) {
    label.at.x += left;
    label.at.y += top;
    items.emplace_back(std::move(label));
  }
}

}  // namespace orin::chart
