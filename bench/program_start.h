#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace orin::bench {

/// The window program beside this one in the build tree; empty where it was not built.
std::filesystem::path WindowProgram();

/// Starts the window program on the market, without a screen, and waits until it has ended by
/// itself as soon as its windows could be used. False where it failed.
bool StartAndClose(const std::filesystem::path& program, const std::filesystem::path& market);

/// What the window program did while it ran seven conditions over a market, in milliseconds.
struct WindowRun {
  double longest_gap = 0;  // between two events it handled
  double whole = 0;
  double longest_key = 0;  // in a condition of 100,000 characters
};
/// Has it run by a program beside this one. Nothing where that was not built or failed.
std::optional<WindowRun> RunConditionsInWindow(const std::filesystem::path& market);

/// Has charts of the market drawn by a program beside this one; the lines it printed. Empty where
/// that was not built or failed.
std::string MeasureCharts(const std::filesystem::path& market);

}  // namespace orin::bench
