#pragma once

namespace orin::app {

// Exit statuses of every program and every command.
inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;
inline constexpr int kWrongUsage = 2;  // or an expression that cannot be compiled

}  // namespace orin::app
