#pragma once

#include <cstdint>

namespace captionformats::stl {

// The block sizes of Tech 3264 and the teletext page our positions use.
inline constexpr std::size_t kGsiSize = 1024;
inline constexpr std::size_t kTtiSize = 128;
inline constexpr std::size_t kTextFieldOffset = 16;
inline constexpr std::size_t kTextFieldSize = kTtiSize - kTextFieldOffset;
inline constexpr int kTeletextRows = 23;
inline constexpr int kTeletextColumns = 40;

// Extension block numbers and cumulative status values.
inline constexpr std::uint8_t kLastExtensionBlock = 0xFF;
inline constexpr std::uint8_t kUserDataBlock = 0xFE;

// Justification codes.
inline constexpr std::uint8_t kJustifyUnchanged = 0;
inline constexpr std::uint8_t kJustifyLeft = 1;
inline constexpr std::uint8_t kJustifyCentre = 2;
inline constexpr std::uint8_t kJustifyRight = 3;

} // namespace captionformats::stl
