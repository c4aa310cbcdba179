#include "zelmediatypes/TickTime.h"

#include "zelmediatypes/FrameRate.h"

#include <ios>
#include <ostream>

namespace zelmediatypes {

TickTime TickTime::AlignToFrame(const FrameRate& frameRate) const {
    return AlignToFrame(frameRate.FrameDuration());
}

std::ostream& operator<<(std::ostream& os, TickTime time) {
    if (time == kTime_Max) {
        return os << "kTime_Max";
    }
    if (time == kTime_Min) {
        return os << "kTime_Min";
    }
    const auto seconds =
        static_cast<double>(time.GetTicks()) / static_cast<double>(kTicksPerSecond);
    const std::streamsize oldPrecision = os.precision(12);
    os << time.GetTicks() << " ticks (" << seconds << " s)";
    os.precision(oldPrecision);
    return os;
}

} // namespace zelmediatypes
