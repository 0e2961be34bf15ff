#pragma once

#include <cstdint>
#include <optional>

#include "app/orin_cli/command.h"
#include "base/date.h"
#include "base/ordinal.h"
#include "base/result.h"
#include "store/stock_store.h"

namespace orin::app {

/// The settings and the store they name. Problems met in loading go to standard error.
struct OpenedStore {
  shell::Settings settings;
  store::StockStore store;
};

base::Result<OpenedStore> OpenStore(const Session& session, store::Access access,
                                    std::optional<int16_t> first_file = std::nullopt);

/// The stock of a code as typed; the sentence names it where the master lacks it.
base::Result<const store::StockRecord*> FindStock(const store::StockStore& store,
                                                  const std::string& code);

/// The day of a date as typed; the newest stored day for an empty text.
base::Result<base::DayIndex> FindDay(const store::StockStore& store, const std::string& date);

}  // namespace orin::app
