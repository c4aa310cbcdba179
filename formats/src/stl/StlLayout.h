#pragma once

#include "zelcaptioning/CaptioningColor.h"

#include <array>
#include <cstddef>
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

// The teletext colours by their code: black, red, green, yellow, blue,
// magenta, cyan, white.
inline constexpr std::array<zelcaptioning::CaptioningColor, 8> kTeletextColors{{
    {0, 0, 0, 1},
    {1, 0, 0, 1},
    {0, 1, 0, 1},
    {1, 1, 0, 1},
    {0, 0, 1, 1},
    {1, 0, 1, 1},
    {0, 1, 1, 1},
    {1, 1, 1, 1},
}};

// Justification codes.
inline constexpr std::uint8_t kJustifyUnchanged = 0;
inline constexpr std::uint8_t kJustifyLeft = 1;
inline constexpr std::uint8_t kJustifyCentre = 2;
inline constexpr std::uint8_t kJustifyRight = 3;

} // namespace captionformats::stl
