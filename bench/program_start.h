#pragma once

#include <filesystem>

namespace orin::bench {

/// The window program beside this one in the build tree; empty where it was not built.
std::filesystem::path WindowProgram();

/// Starts the window program on the market, without a screen, and waits until it has ended by
/// itself as soon as its windows could be used. False where it failed.
bool StartAndClose(const std::filesystem::path& program, const std::filesystem::path& market);

}  // namespace orin::bench
