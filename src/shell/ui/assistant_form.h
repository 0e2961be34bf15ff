#pragma once

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include "acquire/market_setup.h"
#include "base/file_system.h"
#include "base/messages.h"
#include "settings/settings_places.h"
#include "store/store_location.h"

namespace orin::shell {

/// The first start: makes a market from the demo's quotes, an empty one, or one from a directory
/// of CSV files.
class assistant_Form final : public QDialog {
  Q_OBJECT

 public:
  assistant_Form(store::StoreLocation location, settings::SettingsPlaces places,
                 base::FileSystem& files, base::Messages& messages);

 private:
  void ShowChoices();
  void Directory_Click();
  /// Accepts the dialog where the market was made; otherwise it stays, and the reason was shown.
  void Make_Click();
  [[nodiscard]] base::Result<acquire::MarketSource> ChosenSource() const;
  void Tell(const acquire::MarketSummary& summary);

  store::StoreLocation location_;
  settings::SettingsPlaces places_;
  base::FileSystem& files_;
  base::Messages& messages_;
  QRadioButton* demo_;
  QRadioButton* empty_;
  QRadioButton* csv_;
  QLineEdit* directory_;
  QPushButton* browse_button_;
  QPushButton* make_button_;
};

}  // namespace orin::shell
