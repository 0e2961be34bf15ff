#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "base/cp932.h"
#include "shell/start_up.h"
#include "store/file_names.h"
#include "support/answered_screen.h"
#include "support/scratch_directory.h"
#include "support/store_builder.h"
#include "support/test_files.h"

namespace orin::shell {

/// The bytes of a marker of a program that runs.
inline const std::string kInUse = "\xff\xff";

inline constexpr const char* kSystemStatus = "システム情報を読み込み中です。";
inline constexpr const char* kTradeStatus = "取引明細情報を読み込み中です。";
inline constexpr const char* kRankingStatus = "ランキング情報を読み込み中です。";
inline constexpr const char* kRamStatus = "ＲＡＭディスクにファイルをコピー中です。";
inline constexpr const char* kMissingMaster =
    "初期設定ファイルで指定した場所にorin.sysがありません。\n初期設定ファイルを変更しますか？";
inline constexpr const char* kMissingIndex =
    "初期設定ファイルで指定した場所にorin.indがありません。\n初期設定ファイルを変更しますか？";

/// A program directory and a settings directory of the running test's own, and a store of ^DJI
/// and two more stocks over three days that orin.ini names.
class ProgramHome {
 public:
  ProgramHome() : builder_("store") {
    std::filesystem::create_directories(Program());
    std::filesystem::create_directories(places_.settings_file.parent_path());
    builder_.Days(support::Weekdays("2020/01/06", 3))
        .Stock("AAPL", {support::FlatBar(10), support::FlatBar(11), support::FlatBar(12)})
        .Stock("^DJI", {support::FlatBar(100), support::FlatBar(101), support::FlatBar(102)})
        .Stock("BRK.B", {support::FlatBar(20)});
    builder_.Build();
    WriteSettings();
  }

  /// orin.ini with the store's directories and further keys of section Bus.
  void WriteSettings(std::string_view bus_keys = "") { WriteSettings(Store(), bus_keys); }
  void WriteSettings(const store::StoreLocation& store, std::string_view bus_keys = "") {
    support::PutFile(places_.settings_file,
                     "[Bus]\r\nsystem_dir=" + store.system_directory.string() +
                         "\r\ndatasave_dir=" + store.data_directory.string() + "\r\n" +
                         std::string(bus_keys));
  }

  std::unique_ptr<ProgramState> Start(base::FileSystem& files = base::NativeFileSystem()) {
    return StartUp(places_, files, screen_);
  }

  [[nodiscard]] const settings::SettingsPlaces& Places() const { return places_; }
  [[nodiscard]] std::filesystem::path Program() const { return places_.program_directory; }
  [[nodiscard]] std::filesystem::path SettingsDirectory() const {
    return places_.settings_file.parent_path();
  }
  [[nodiscard]] const store::StoreLocation& Store() const { return builder_.Location(); }
  [[nodiscard]] std::filesystem::path System() const { return Store().system_directory; }
  [[nodiscard]] std::filesystem::path operator/(const std::filesystem::path& name) const {
    return root_ / name;
  }
  support::AnsweredScreen& Screen() { return screen_; }
  [[nodiscard]] std::string Log() const {
    return base::DecodeCp932(support::Bytes(Program() / "orinerr.txt"));
  }

 private:
  support::ScratchDirectory root_;
  settings::SettingsPlaces places_{root_ / "program", root_ / "user" / "orin.ini"};
  support::StoreBuilder builder_;
  support::AnsweredScreen screen_;
};

}  // namespace orin::shell
