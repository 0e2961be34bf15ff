#include "app/orin_cli/answer.h"

#include <iostream>

#include "shell/store_places.h"
#include "store/consistent_reading.h"

namespace orin::app {

int Answer::Report(const base::Error& error) {
  Tell(error.message);
  return kFailed;
}

int Answer::Give(int status) const {
  for (const std::string& sentence : told_) app::Tell(sentence);
  std::cout << out_.view();
  return last_step_ ? last_step_() : status;
}

int AnswerFromStore(const Session& session,
                    const std::function<int(const StoreReading&, Answer&)>& work,
                    std::optional<int16_t> first_file) {
  const auto settings = settings::LoadSettings(session.places);
  if (!settings) return Report(settings.error());
  std::optional<Answer> answer;
  int status = kDone;
  const auto store = store::ReadConsistently(
      shell::LocateStore(settings->bus, session.places), {store::Access::kRead, first_file},
      base::NativeFileSystem(), [&](const store::StockStore& opened) {
        answer.emplace();
        for (const std::string& problem : opened.Problems()) answer->Tell(problem);
        status = work({*settings, opened}, *answer);
      });
  return store ? answer->Give(status) : Report(store.error());
}

}  // namespace orin::app
