#pragma once

#include <optional>
#include <string>

#include "app/orin_cli/answer.h"
#include "app/orin_cli/command.h"
#include "base/date.h"
#include "base/ordinal.h"
#include "base/result.h"
#include "store/stock_code.h"
#include "store/stock_store.h"

namespace orin::app {

/// The settings and the store they name, open for a change. Problems met in loading go to standard
/// error.
struct OpenedStore {
  settings::Settings settings;
  store::StockStore store;
};

base::Result<OpenedStore> OpenForChange(const Session& session);

/// The stock of a code as typed; the sentence names it where the master lacks it.
base::Result<const store::StockRecord*> FindStock(const store::StockStore& store,
                                                  const std::string& code);

/// The second stock of a code as typed; nullopt for an empty text and, with a sentence in the
/// answer, for a code that no stock has.
std::optional<store::StockCode> FindSecondStock(const store::StockStore& store,
                                                const std::string& code, Answer& answer);

/// The day of a date as typed; the newest stored day for an empty text.
base::Result<base::DayIndex> FindDay(const store::StockStore& store, const std::string& date);

/// The trading days, at least one, from one date to another as typed, neither of which has to be a
/// trading day; an empty text is the first or the newest stored day.
base::Result<base::DayRange> FindDays(const store::StockStore& store, const std::string& from,
                                      const std::string& to);

}  // namespace orin::app
