#include "zelmediatypes/FrameRate.h"

#include <ostream>

namespace zelmediatypes {

std::ostream& operator<<(std::ostream& os, const FrameRate& rate) {
    os << rate.FramesPerSecondNumerator();
    if (rate.FramesPerSecondDenominator() != 1) {
        os << '/' << rate.FramesPerSecondDenominator();
    }
    return os << " fps";
}

} // namespace zelmediatypes
