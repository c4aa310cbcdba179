#pragma once

#include <cstdint>
#include <numeric>
#include <ostream>
#include <stdexcept>

namespace zelmediatypes {

// The width of a stored pixel relative to its height, as a reduced fraction: 1:1 for square
// pixels, 10:11 for 4:3 NTSC DV. Always positive.
class PixelAspectRatio {
public:
    constexpr PixelAspectRatio() = default;
    // Throws std::invalid_argument unless both terms are positive.
    constexpr PixelAspectRatio(std::int32_t widthTerm, std::int32_t heightTerm) {
        if (widthTerm <= 0 || heightTerm <= 0) {
            throw std::invalid_argument("a pixel aspect ratio needs positive terms");
        }
        const std::int32_t divisor = std::gcd(widthTerm, heightTerm);
        numerator_ = widthTerm / divisor;
        denominator_ = heightTerm / divisor;
    }

    constexpr std::int32_t Numerator() const { return numerator_; }
    constexpr std::int32_t Denominator() const { return denominator_; }
    constexpr bool IsSquare() const { return numerator_ == denominator_; }
    constexpr double ToDouble() const {
        return static_cast<double>(numerator_) / static_cast<double>(denominator_);
    }

    friend constexpr bool operator==(const PixelAspectRatio&, const PixelAspectRatio&) = default;
    friend std::ostream& operator<<(std::ostream& os, const PixelAspectRatio& par) {
        return os << par.numerator_ << ':' << par.denominator_;
    }

private:
    std::int32_t numerator_ = 1;
    std::int32_t denominator_ = 1;
};

} // namespace zelmediatypes
