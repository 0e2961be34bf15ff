#include "base/system_error.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <string>

#include "base/file_system.h"

namespace orin::base {

namespace {

struct Reason {
  int number;
  std::string_view text;
};

constexpr std::array kReasons = {
    Reason{ENOSPC, "ディスクに空きがありません"},
    Reason{EDQUOT, "ディスクに空きがありません"},
    Reason{EACCES, "アクセスが許可されていません"},
    Reason{EPERM, "アクセスが許可されていません"},
    Reason{ENOENT, "ファイルまたはディレクトリが見つかりません"},
    Reason{EISDIR, "ファイルではなくディレクトリです"},
    Reason{ENOTDIR, "途中のディレクトリがファイルになっています"},
    Reason{EEXIST, "同じ名前のものがすでにあります"},
    Reason{ENOTEMPTY, "ディレクトリが空ではありません"},
    Reason{EROFS, "読み出し専用のディスクです"},
    Reason{ETXTBSY, "ほかのプログラムが使用中です"},
    Reason{EBUSY, "ほかのプログラムが使用中です"},
    Reason{EIO, "ディスクの読み書きで異常が起きました"},
    Reason{EFAULT, "読み込み中のファイルが短くなりました"},
    Reason{EFBIG, "ファイルが大きすぎます"},
    Reason{ENAMETOOLONG, "名前が長すぎます"},
    Reason{ELOOP, "リンクがたどれません"},
    Reason{EXDEV, "別のディスクには移動できません"},
    Reason{EMFILE, "開いているファイルが多すぎます"},
    Reason{ENFILE, "開いているファイルが多すぎます"},
    Reason{ENOMEM, "メモリが足りません"},
};

std::string ReasonText(int number) {
  const auto* found = std::ranges::find(kReasons, number, &Reason::number);
  if (found != kReasons.end()) return std::string(found->text);
  return "システムのエラー番号" + std::to_string(number);
}

}  // namespace

tl::unexpected<Error> FailSystemCall(const std::filesystem::path& path, std::string_view what,
                                     int number) {
  std::string message = "「" + PathText(path) + "」";
  message += what;
  return Fail(message + "（" + ReasonText(number) + "）。");
}

}  // namespace orin::base
