#include "indicators/columns.h"

namespace orin::indicators {

using base::Currency;

namespace {

template <typename Price>
void PutPrices(const ColumnTask& task, Price price) {
  for (int32_t t = task.first; t <= task.last; ++t) {
    if (task.bars.HasData(t)) task.sink.Put(t, price(t));
  }
}

}  // namespace

void Open(const ColumnTask& task) {
  PutPrices(task, [&task](int32_t t) { return task.bars.Open(t); });
}

void High(const ColumnTask& task) {
  PutPrices(task, [&task](int32_t t) { return task.bars.High(t); });
}

void Low(const ColumnTask& task) {
  PutPrices(task, [&task](int32_t t) { return task.bars.Low(t); });
}

void Close(const ColumnTask& task) {
  PutPrices(task, [&task](int32_t t) { return task.bars.Close(t); });
}

void Volume(const ColumnTask& task) {
  PutPrices(task, [&task](int32_t t) { return task.bars.Volume(t); });
}

// Days without trade have a date too: conditions on the calendar hold for them as for others.
void SerialDate(const ColumnTask& task) {
  for (int32_t t = task.first; t <= task.last; ++t) {
    task.sink.Put(t, Currency::FromInt(task.bars.DateOf(t).Serial()));
  }
}

void CloseChange(const ColumnTask& task) {
  for (int32_t t = task.first; t <= task.last; ++t) {
    if (!task.bars.HasData(t) || !task.bars.HasData(t - 1)) continue;
    task.sink.Put(t, task.bars.Close(t).Minus(task.bars.Close(t - 1)));
  }
}

}  // namespace orin::indicators
