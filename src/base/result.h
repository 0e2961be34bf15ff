#pragma once

#include <string>
#include <tl/expected.hpp>
#include <utility>

namespace orin::base {

/// Broken machinery: a file that cannot be read, a full disk, a value that no setting allows.
struct Error {
  /// One whole Japanese sentence for the user that names the file or the value.
  std::string message;
};

template <typename T>
using Result = tl::expected<T, Error>;
using Status = Result<void>;

/// `return Fail("…がありません。");` in any function that returns a Result.
inline tl::unexpected<Error> Fail(std::string message) {
  return tl::unexpected<Error>(Error{std::move(message)});
}

/// Hands the failure of one Result on as the failure of another.
template <typename T>
tl::unexpected<Error> Forward(const Result<T>& failed) {
  return tl::unexpected<Error>(failed.error());
}

}  // namespace orin::base
