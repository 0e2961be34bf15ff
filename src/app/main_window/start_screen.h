#pragma once

#include <functional>
#include <memory>

#include "shell/start_up.h"
#include "shell/ui/logo_form.h"

namespace orin::app {

/// Starting up with windows: the logo while the program starts, afterwards the main window's
/// status bar; the settings window for paths; the assistant for the first market.
class StartScreen final : public shell::StartUpScreen {
 public:
  StartScreen(const settings::SettingsPlaces& places, base::FileSystem& files,
              base::Messages& messages);
  StartScreen(const StartScreen&) = delete;
  StartScreen& operator=(const StartScreen&) = delete;
  ~StartScreen() override;

  void ShowLogo();
  /// The start is over: status lines go to `show` from now on.
  void CloseLogo(std::function<void(const QString&)> show);

  void ShowStatus(std::string_view status) override;
  [[nodiscard]] bool Report(std::string_view stage, int64_t done, int64_t total) override;
  base::Messages& Questions() override { return messages_; }
  bool EditPaths(settings::Settings& settings) override;
  bool OfferMarket(const shell::ProgramState& state) override;

 private:
  settings::SettingsPlaces places_;
  base::FileSystem& files_;
  base::Messages& messages_;
  std::unique_ptr<shell::logo_Form> logo_;
  std::function<void(const QString&)> show_;
};

}  // namespace orin::app
