#pragma once

#include <functional>
#include <memory>

#include "shell/start_up.h"
#include "shell/ui/logo_form.h"

namespace orin::shell {

/// Starting up with windows: the logo while the program starts, afterwards the main window's
/// status bar; the settings window for paths; the assistant for the first market.
class StartScreen final : public StartUpScreen {
 public:
  StartScreen(const SettingsPlaces& places, base::FileSystem& files, Messages& messages);
  StartScreen(const StartScreen&) = delete;
  StartScreen& operator=(const StartScreen&) = delete;
  ~StartScreen() override;

  void ShowLogo();
  /// The start is over: status lines go to `show` from now on.
  void CloseLogo(std::function<void(const QString&)> show);

  void ShowStatus(std::string_view status) override;
  [[nodiscard]] bool Report(std::string_view stage, int64_t done, int64_t total) override;
  Messages& Questions() override { return messages_; }
  bool EditPaths(Settings& settings) override;
  bool OfferMarket(const ProgramState& state) override;

 private:
  SettingsPlaces places_;
  base::FileSystem& files_;
  Messages& messages_;
  std::unique_ptr<logo_Form> logo_;
  std::function<void(const QString&)> show_;
};

}  // namespace orin::shell
