#include "app/orin_cli/settings_page.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "base/csv.h"
#include "base/currency.h"
#include "base/text.h"
#include "settings/settings_catalogue.h"

namespace orin::app {

namespace {

using settings::SettingEntry;
using settings::SettingKind;
using settings::SettingsGroup;

constexpr std::string_view kIntroduction =
    R"(# orin.ini、orinsim.ini、orin.chk（設定）

<!-- orin-cli settings --markdown がプログラムの表から作るページです。手で直さず、作り直してください。 -->

`orin.ini` の場所は `--ini FILE`、省略するとプログラムのディレクトリです。`orinsim.ini` はプログラムのディレクトリ、株価分析グループの
ファイル（ふつう `orin.chk`）は設定 `AnalysisGroupFile` の場所にあります。ファイルもセクションもキーも、なければ既定値になります。
`orin-cli settings` で今の値を一覧にできます。

プログラムのディレクトリに `orinsim.ini` がなく、`orin.ini` のディレクトリにあれば、それをプログラムのディレクトリに写して一度だけ知らせ、元のファイルは
残します。写せない間は元のファイルを読みます。

## 規則

- `[セクション]` の行の下に `キー=値` の行を書きます。セクションとキーの ASCII の大文字と小文字は区別しません。同じものがいくつもあれば、
  初めのセクションの初めのキーです。
- 値の前後の半角の空白とタブを除き、次に、全体を囲む半角の二重引用符を一組だけ除きます。空の値は値であって、文字の設定では既定値になりません。
- `;` で始まる行は注釈です。
- 名前の終わりに空白のあるキー（下の表で引用符の中に書いたもの）は、空白のあるキーを先に、なければ空白のないキーを探します。
- 文字コードはコードページ 932 です。全体が UTF-8 として正しく、三バイト以上の文字を含むファイルは UTF-8 として読み書きします。
- 読めない値と範囲の外の値は既定値になります（`AnalysisSystemFirstFile` の番号だけはそのまま、32ビットを超えるものは最も近い番号で残し、株価分析のときに知らせます）。整数の小数は最も近い整数（半分は偶数）に、率の小数は四桁に丸めます。オン／オフの値は、
  `True` と 0 以外の数がオン、`False` と 0 がオフです。
- 色は青×65536＋緑×256＋赤（それぞれ 0～255）の十進数です。日付は `yyyy/mm/dd`、時刻は `hh:mm:ss` です。
- 書くのは値の変わったまとまり（下の表のセクション）だけで、そのときファイルを読み直し、値の変わる行だけを変えます。注釈、知らない行、
  改行の種類、文字コード、BOM はそのままです。新しいキーはセクションの終わりに、新しいセクションはファイルの終わりに加えます。前後に
  空白のある値と引用符で囲まれた値は、引用符で囲んで書きます。改行を含む値と文字コードにない文字は書けません。
- ファイルは全体を一度に置き換えます。シンボリックリンクなら、その先のファイルを置き換えます。アクセス権は前のファイルのままで、新しく
  作るファイルは、パスワードを含むことがあるので、持ち主だけが読み書きできます。

## パス

区切りは「\」でも「/」でもよく、あるものは大文字と小文字を区別せずに探します。相対パスはプログラムのディレクトリからです。

下の表の P はプログラムのディレクトリ、S は `orin.ini` のあるディレクトリです。セクション `Bus` を既定値に戻すときだけ、`update_file` は
`html\StockHtm.txt` になります。
)";

struct KindText {
  SettingKind kind;
  std::string_view text;
};

constexpr std::array kKindTexts = {
    KindText{SettingKind::kCheck, "1 オン、0 オフ"},
    KindText{SettingKind::kColor, "色"},
    KindText{SettingKind::kText, "文字"},
    KindText{SettingKind::kSecret, "文字（秘密）"},
    KindText{SettingKind::kFile, "ファイル"},
    KindText{SettingKind::kDirectory, "ディレクトリ"},
    KindText{SettingKind::kDate, "日付"},
    KindText{SettingKind::kTime, "時刻"},
    KindText{SettingKind::kStockCode, "銘柄コード、空"},
    KindText{SettingKind::kCondition, "条件式、空"},
    KindText{SettingKind::kExpression, "式、空"},
};

std::string NumberText(double number) {
  return settings::SettingText(base::Currency::FromDouble(number).value_or(base::Currency()));
}

std::string ValuesText(const SettingEntry& entry) {
  std::string text;
  if (entry.kind == SettingKind::kNumber || entry.kind == SettingKind::kRate) {
    text = NumberText(entry.minimum) + "～" + NumberText(entry.maximum);
    return text + (entry.kind == SettingKind::kRate ? "（小数は四桁まで）" : "");
  }
  for (const settings::SettingChoice& choice : entry.choices) {
    text += (text.empty() ? "" : "<br>") + std::string(choice.text);
  }
  for (const KindText& kind : kKindTexts) {
    if (kind.kind == entry.kind) text += kind.text;
  }
  return text;
}

/// As code, in quotes where a blank at an end would be lost.
std::string Code(const std::string& text) {
  if (text.empty()) return "空";
  if (base::TrimBlanks(text) == text) return "`" + text + "`";
  return "`\"" + text + "\"`";
}

std::string EntryRow(const SettingEntry& entry) {
  // Two short directories that no path begins with by chance.
  const settings::SettingsPlaces letters{"P", "S/orin.ini"};
  return "| " + Code(entry.key) + " | " + Code(entry.default_text(letters)) + " | " +
         ValuesText(entry) + " | " + entry.explanation + " |\n";
}

std::string SectionsOf(const SettingsGroup& group) {
  std::vector<std::string> sections;
  for (const SettingEntry& entry : group.entries) {
    const std::string section = "`[" + entry.section + "]`";
    if (std::find(sections.begin(), sections.end(), section) == sections.end()) {
      sections.push_back(section);
    }
  }
  std::string text;
  for (const std::string& section : sections) text += (text.empty() ? "" : "、") + section;
  return text;
}

std::string GroupText(const SettingsGroup& group) {
  std::string text =
      "\n## " + group.title + "\n\n`" + group.file + "` の " + SectionsOf(group) + "\n";
  std::string_view heading;
  for (const SettingEntry& entry : group.entries) {
    if (heading != entry.heading) {
      heading = entry.heading;
      text += "\n### " + entry.heading +
              "\n\n| キー | 既定値 | 値 | 意味 |\n| --- | --- | --- | --- |\n";
    }
    text += EntryRow(entry);
  }
  return text;
}

}  // namespace

std::string SettingsPage() {
  std::string text(kIntroduction);
  for (const SettingsGroup& group : settings::SettingsCatalogue()) text += GroupText(group);
  return text;
}

std::string SettingsCsv(const settings::Settings& settings,
                        const settings::SettingsPlaces& places) {
  std::string text = "ファイル,セクション,キー,値,既定値,名前\n";
  for (const SettingsGroup& group : settings::SettingsCatalogue()) {
    for (const SettingEntry& entry : group.entries) {
      std::string value = entry.text(settings);
      if (entry.kind == SettingKind::kSecret && !value.empty()) value = "********";
      for (const std::string& field :
           {group.file, entry.section, entry.key, value, entry.default_text(places)}) {
        text += base::CsvField(field) + ",";
      }
      text += base::CsvField(entry.heading + "：" + entry.label) + "\n";
    }
  }
  return text;
}

}  // namespace orin::app
