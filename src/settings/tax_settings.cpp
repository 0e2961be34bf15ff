#include "settings/tax_settings.h"

#include "settings/setting_tables.h"

namespace orin::settings {

const KeyTable<TaxSettings>& TaxTable() {
  using Tax = TaxSettings;
  constexpr SettingForm kPercent = Rate(0, 100);
  static const KeyTable<Tax> table{
      "orin.ini",
      "Tax",
      {{"税金",
        {{"取引にかかる税",
          {{"torihiki_zeiritu", &Tax::transaction_tax, "0", kPercent, "取引税率",
            "株式の売却代金にかかる税の率（％、０～１００）です。"},
           {"optiontorihiki_zeiritu", &Tax::option_transaction_tax, "0", kPercent,
            "オプション取引税率", "オプションの取引代金にかかる税の率（％、０～１００）です。"},
           {"syouhi_zeiritu", &Tax::consumption_tax, "5", kPercent, "消費税率",
            "売買手数料にかかる消費税の率（％、０～１００）です。"}}},
         {"利益にかかる税",
          {{"capitalgain_tax", &Tax::taxes_gains, "1", Check(), "売却益への課税",
            "オンにすると、売却益にかかる税を損益の計算に入れます。"},
           {"jyouto_zeiritu", &Tax::capital_gains_tax, "0", kPercent, "譲渡税率",
            "株式の譲渡にかかる税の率（％、０～１００）です。"},
           {"syotoku_zeiritu", &Tax::income_tax, "5", kPercent, "所得税率",
            "売却益にかかる所得税の率（％、０～１００）です。"},
           {"jyumin_zeiritu", &Tax::resident_tax, "5", kPercent, "住民税率",
            "売却益にかかる住民税の率（％、０～１００）です。"}}}}}}};
  return table;
}

TaxSettings ReadTax(const base::ProfileFile& profile) { return ReadGroup(profile, TaxTable()); }

void WriteTax(base::ProfileFile& profile, const TaxSettings& settings) {
  WriteGroup(profile, TaxTable(), settings);
}

}  // namespace orin::settings
