#include "store/price_format.h"

#include "base/coding.h"

namespace orin::store {

base::Bar DecodeBar(const char* entry, base::Date date) {
  return base::Bar{date,
                   base::GetCurrency(entry + bar_offset::kOpen),
                   base::GetCurrency(entry + bar_offset::kHigh),
                   base::GetCurrency(entry + bar_offset::kLow),
                   base::GetCurrency(entry + bar_offset::kClose),
                   base::GetCurrency(entry + bar_offset::kVolume)};
}

void EncodeBar(const base::Bar& bar, char* entry) {
  // Readers take a day without data by its volume, but prices left in it would be impossible bars.
  const base::Bar stored = bar.HasData() ? bar : base::Bar();
  base::PutCurrency(entry + bar_offset::kOpen, stored.open);
  base::PutCurrency(entry + bar_offset::kHigh, stored.high);
  base::PutCurrency(entry + bar_offset::kLow, stored.low);
  base::PutCurrency(entry + bar_offset::kClose, stored.close);
  base::PutCurrency(entry + bar_offset::kVolume, stored.volume);
}

std::string NoDataEntries(size_t count) {
  std::string entries(count * kBarLength, '\0');
  for (size_t i = 0; i < count; ++i) EncodeBar(base::Bar(), entries.data() + i * kBarLength);
  return entries;
}

std::string EncodeDateEntry(base::Date date) {
  std::string entry(kDateEntryLength, '\0');
  base::PutDouble(entry.data(), date.Serial());
  return entry;
}

std::optional<base::Date> DecodeDateEntry(const char* entry) {
  const double stored = base::GetDouble(entry);
  // Date::FromFile takes 0 for 1899-12-30 as well; here it means that the slot is unused.
  if (stored == 0) return base::Date();
  return base::Date::FromFile(stored);
}

CreditBalance DecodeCreditBalance(const char* entry) {
  return CreditBalance{base::GetCurrency(entry), base::GetCurrency(entry + 8)};
}

void EncodeCreditBalance(const CreditBalance& balance, char* entry) {
  base::PutCurrency(entry, balance.sell);
  base::PutCurrency(entry + 8, balance.buy);
}

IntradayBar DecodeIntradayBar(const char* entry) {
  const auto seconds = static_cast<int32_t>(base::GetUint32(entry));
  return IntradayBar{seconds, DecodeBar(entry + 4, base::Date())};
}

void EncodeIntradayBar(const IntradayBar& bar, char* entry) {
  base::PutUint32(entry, static_cast<uint32_t>(bar.seconds));
  EncodeBar(bar.bar, entry + 4);
}

}  // namespace orin::store
