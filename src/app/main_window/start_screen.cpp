#include "app/main_window/start_screen.h"

#include <QCoreApplication>
#include <utility>

#include "settings/ui/settings_form.h"
#include "shell/ui/assistant_form.h"
#include "widgets/qt_text.h"

namespace orin::app {

StartScreen::StartScreen(const settings::SettingsPlaces& places, base::FileSystem& files,
                         base::Messages& messages)
    : places_(places), files_(files), messages_(messages) {}

StartScreen::~StartScreen() = default;

void StartScreen::ShowLogo() {
  // The picture's setting is read with all others later; the logo must not wait for them.
  const auto profile = base::ProfileFile::Load(places_.settings_file);
  const settings::BusSettings bus =
      settings::ReadBus(profile.value_or(base::ProfileFile()), places_);
  logo_ = std::make_unique<shell::logo_Form>(settings::NativeSetting(places_, bus.picture_file));
  logo_->show();
  QCoreApplication::processEvents();
}

void StartScreen::CloseLogo(std::function<void(const QString&)> show) {
  logo_.reset();
  show_ = std::move(show);
}

void StartScreen::ShowStatus(std::string_view status) {
  if (logo_ != nullptr) logo_->ShowStatus(widgets::Text(status));
  if (show_) show_(widgets::Text(status));
}

bool StartScreen::Report(std::string_view stage, int64_t done, int64_t total) {
  if (total > 0) {
    ShowStatus(std::string(stage) + " " + std::to_string(done) + "/" + std::to_string(total));
  }
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  return true;
}

bool StartScreen::EditPaths(settings::Settings& settings) {
  settings::settings_Form form(
      settings, places_, messages_, [this, &settings](const settings::Settings& changed) {
        auto saved = settings::SaveSettings(files_, places_, settings, changed);
        if (saved) settings = changed;
        return saved;
      });
  form.ShowGroup("Bus");
  return form.exec() == QDialog::Accepted;
}

bool StartScreen::OfferMarket(const shell::ProgramState& state) {
  if (logo_ != nullptr) logo_->hide();
  shell::assistant_Form form(state.StoreLocation(), places_, files_, messages_);
  const bool is_made = form.exec() == QDialog::Accepted;
  if (logo_ != nullptr) logo_->show();
  return is_made;
}

}  // namespace orin::app
