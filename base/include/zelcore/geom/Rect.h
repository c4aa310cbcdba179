#pragma once

#include <algorithm>
#include <ostream>

namespace zelcore::geom {

// An axis-aligned rectangle by its edges; right and bottom are exclusive, so
// the width is right - left. A rectangle with no positive width or height is empty.
template <typename T> struct RectT {
    T left{};
    T top{};
    T right{};
    T bottom{};

    static RectT FromSize(T leftEdge, T topEdge, T width, T height) {
        return {leftEdge, topEdge, leftEdge + width, topEdge + height};
    }

    T Width() const { return right - left; }
    T Height() const { return bottom - top; }
    bool IsEmpty() const { return !(right > left) || !(bottom > top); }
    bool Contains(T x, T y) const { return left <= x && x < right && top <= y && y < bottom; }

    // The smallest rectangle holding both; an empty operand contributes nothing.
    RectT Union(const RectT& other) const {
        if (other.IsEmpty()) {
            return *this;
        }
        if (IsEmpty()) {
            return other;
        }
        return {std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
                std::max(bottom, other.bottom)};
    }

    friend bool operator==(const RectT&, const RectT&) = default;

    friend std::ostream& operator<<(std::ostream& os, const RectT& r) {
        return os << "Rect(" << r.left << ", " << r.top << ", " << r.right << ", " << r.bottom
                  << ")";
    }
};

} // namespace zelcore::geom
