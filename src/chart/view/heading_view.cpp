#include "chart/readout.h"
#include "chart/text_width.h"
#include "chart/view/views.h"

namespace orin::chart {

namespace {

constexpr double kSampleLength = 1.6;  // times the letters' height

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
  AddLegend(context.chart, plot);
}

void Heading::AddLegend(const Chart& chart, const Plot& plot) {
  std::vector<Line> samples;
  if (const auto* time = std::get_if<TimePlot>(&plot.content)) {
    for (const auto* lines : {&time->lines, &time->underlay}) {
      for (size_t i = 0; i < lines->size(); ++i) {
        const bool is_curve = (*lines)[i].form == LineForm::kLine;
        samples.push_back({SeriesInk((*lines)[i].color, SeriesNumber(*lines, i)),
                           is_curve ? style_.line : 0,
                           {}});
      }
    }
  }
  const std::vector<ReadoutEntry> entries = Legend(chart, plot);
  for (size_t i = 0; i < entries.size(); ++i) {
    const bool has_sample = i < samples.size() && samples[i].width > 0;
    Add(TextOf(entries[i]), entries[i].color, has_sample ? &samples[i] : nullptr);
  }
}

void Heading::Add(std::string text, base::Color color, const Line* sample) {
  const double room = sample == nullptr ? 0 : style_.text * kSampleLength + style_.gap / 2.0;
  const double width = TextWidth(text) * style_.text + room;
  // What does not fit behind its neighbours begins a row; blanks in front are for neighbours.
  if (x_ > 0 && x_ + width > width_) {
    ++rows_;
    x_ = 0;
  }
  if (x_ == 0) text.erase(0, text.find_first_not_of(' '));
  const double y = (rows_ - 0.5) * style_.row;
  if (sample != nullptr) {
    samples_.push_back(*sample);
    samples_.back().points = {{x_, y}, {x_ + style_.text * kSampleLength, y}};
  }
  labels_.push_back({TextInk(color), {x_ + room, y}, Align::kLeft, style_.text, std::move(text)});
  x_ += width + style_.gap * 1.5;
}

void Heading::Draw(int32_t left, int32_t top, std::vector<DrawItem>& items) const {
  for (Line sample : samples_) {
    for (Point& point : sample.points) point = {point.x + left, point.y + top};
    if (sample.points.front().y < top + Height()) items.emplace_back(std::move(sample));
  }
  for (Label label : labels_) {
    if (label.at.y > Height()) continue;
    label.at.x += left;
    label.at.y += top;
    items.emplace_back(std::move(label));
  }
}

}  // namespace orin::chart
