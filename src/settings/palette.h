#pragma once

namespace orin::settings {

// The standard sixteen colours as the settings files have them, decimal 0x00BBGGRR.
inline constexpr const char* kBlack = "0";
inline constexpr const char* kNavy = "8388608";
inline constexpr const char* kGreen = "32768";
inline constexpr const char* kTeal = "8421376";
inline constexpr const char* kMaroon = "128";
inline constexpr const char* kPurple = "8388736";
inline constexpr const char* kOlive = "32896";
inline constexpr const char* kSilver = "12632256";
inline constexpr const char* kGray = "8421504";
inline constexpr const char* kLightBlue = "16711680";
inline constexpr const char* kLightGreen = "65280";
inline constexpr const char* kLightCyan = "16776960";
inline constexpr const char* kLightRed = "255";
inline constexpr const char* kLightMagenta = "16711935";
inline constexpr const char* kYellow = "65535";
inline constexpr const char* kWhite = "16777215";

}  // namespace orin::settings
