#include "scc/SccTimecode.h"

#include <cstdio>

namespace captionformats::scc {

namespace {

constexpr std::int64_t kFramesPerMinuteDropFrame = 30 * 60 - 2;
constexpr std::int64_t kFramesPerTenMinutesDropFrame = 10 * kFramesPerMinuteDropFrame + 2;

// The two-digit number at `at` (the text holds two bytes there), or -1.
int TwoDigits(std::string_view text, std::size_t at) {
    const auto tens = static_cast<unsigned>(text[at] - '0');
    const auto units = static_cast<unsigned>(text[at + 1] - '0');
    return tens <= 9 && units <= 9 ? static_cast<int>(tens * 10 + units) : -1;
}

} // namespace

std::optional<ParsedTimecode> ParseTimecode(std::string_view text) {
    if (text.size() != 11 || text[2] != ':' || text[5] != ':') {
        return std::nullopt;
    }
    const char separator = text[8];
    if (separator != ':' && separator != ';' && separator != '.' && separator != ',') {
        return std::nullopt;
    }
    const int hours = TwoDigits(text, 0);
    const int minutes = TwoDigits(text, 3);
    const int seconds = TwoDigits(text, 6);
    const int frames = TwoDigits(text, 9);
    if ((hours | minutes | seconds | frames) < 0 || minutes > 59 || seconds > 59 || frames > 29) {
        return std::nullopt;
    }
    ParsedTimecode parsed;
    parsed.dropFrame = separator != ':';
    const std::int64_t totalMinutes = hours * 60LL + minutes;
    if (parsed.dropFrame) {
        if (seconds == 0 && frames < 2 && minutes % 10 != 0) {
            return std::nullopt;
        }
        parsed.frame =
            (totalMinutes * 60 + seconds) * 30 + frames - 2 * (totalMinutes - totalMinutes / 10);
    } else {
        parsed.frame = (totalMinutes * 60 + seconds) * 30 + frames;
    }
    return parsed;
}

std::string FormatTimecode(std::int64_t frame, bool dropFrame) {
    std::int64_t labelFrame = frame < 0 ? 0 : frame;
    if (dropFrame) {
        const std::int64_t tens = labelFrame / kFramesPerTenMinutesDropFrame;
        const std::int64_t rest = labelFrame % kFramesPerTenMinutesDropFrame;
        labelFrame += 18 * tens;
        if (rest > 1) {
            labelFrame += 2 * ((rest - 2) / kFramesPerMinuteDropFrame);
        }
    }
    char text[32];
    std::snprintf(text, sizeof text, "%02lld:%02lld:%02lld%c%02lld",
                  static_cast<long long>(labelFrame / (30 * 3600)),
                  static_cast<long long>(labelFrame / (30 * 60) % 60),
                  static_cast<long long>(labelFrame / 30 % 60), dropFrame ? ';' : ':',
                  static_cast<long long>(labelFrame % 30));
    return text;
}

zelmediatypes::TickTime TimeOfFrame(std::int64_t frame) {
    return kFrameDuration * frame;
}

std::int64_t FrameAtTime(zelmediatypes::TickTime time) {
    if (time < zelmediatypes::kTime_Zero) {
        return 0;
    }
    return time.GetTicks() / kFrameDuration.GetTicks();
}

} // namespace captionformats::scc
