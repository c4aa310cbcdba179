#include "TimeDisplayNames.h"

#include "QtText.h"

#include <array>

namespace host {
namespace {

using namespace zelmediatypes;

constexpr std::array kVideoDisplays{kTimeDisplay_23976Timecode,
                                    kTimeDisplay_24Timecode,
                                    kTimeDisplay_25Timecode,
                                    kTimeDisplay_2997DropTimecode,
                                    kTimeDisplay_2997NonDropTimecode,
                                    kTimeDisplay_30Timecode,
                                    kTimeDisplay_50Timecode,
                                    kTimeDisplay_5994DropTimecode,
                                    kTimeDisplay_5994NonDropTimecode,
                                    kTimeDisplay_60Timecode,
                                    kTimeDisplay_Frames};

constexpr std::array kAudioDisplays{kTimeDisplay_AudioSamples48kHz, kTimeDisplay_Milliseconds};

} // namespace

std::span<const TimeDisplay> VideoTimeDisplays() {
    return kVideoDisplays;
}

std::span<const TimeDisplay> AudioTimeDisplays() {
    return kAudioDisplays;
}

QString TimeDisplayName(TimeDisplay display) {
    switch (display) {
    case kTimeDisplay_23976Timecode:
        return Localized("$$$/Corvala/Host/TimeDisplay/23976=23.976 fps Timecode");
    case kTimeDisplay_24Timecode:
        return Localized("$$$/Corvala/Host/TimeDisplay/24=24 fps Timecode");
    case kTimeDisplay_25Timecode:
        return Localized("$$$/Corvala/Host/TimeDisplay/25=25 fps Timecode");
    case kTimeDisplay_2997DropTimecode:
        return Localized("$$$/Corvala/Host/TimeDisplay/2997Drop=29.97 fps Drop-Frame Timecode");
    case kTimeDisplay_2997NonDropTimecode:
        return Localized(
            "$$$/Corvala/Host/TimeDisplay/2997NonDrop=29.97 fps Non-Drop-Frame Timecode");
    case kTimeDisplay_30Timecode:
        return Localized("$$$/Corvala/Host/TimeDisplay/30=30 fps Timecode");
    case kTimeDisplay_50Timecode:
        return Localized("$$$/Corvala/Host/TimeDisplay/50=50 fps Timecode");
    case kTimeDisplay_5994DropTimecode:
        return Localized("$$$/Corvala/Host/TimeDisplay/5994Drop=59.94 fps Drop-Frame Timecode");
    case kTimeDisplay_5994NonDropTimecode:
        return Localized(
            "$$$/Corvala/Host/TimeDisplay/5994NonDrop=59.94 fps Non-Drop-Frame Timecode");
    case kTimeDisplay_60Timecode:
        return Localized("$$$/Corvala/Host/TimeDisplay/60=60 fps Timecode");
    case kTimeDisplay_Frames:
        return Localized("$$$/Corvala/Host/TimeDisplay/Frames=Frames");
    case kTimeDisplay_AudioSamples48kHz:
        return Localized("$$$/Corvala/Host/TimeDisplay/Samples=Audio Samples (48 kHz)");
    case kTimeDisplay_Milliseconds:
        return Localized("$$$/Corvala/Host/TimeDisplay/Milliseconds=Milliseconds");
    case kTimeDisplay_Unknown:
        break;
    }
    return Localized("$$$/Corvala/Host/TimeDisplay/Unknown=Not Chosen");
}

QString FrameRateText(const FrameRate& rate) {
    QString text = QString::number(static_cast<double>(rate.FramesPerSecondNumerator()) /
                                       static_cast<double>(rate.FramesPerSecondDenominator()),
                                   'f', 3);
    while (text.endsWith(u'0')) {
        text.chop(1);
    }
    if (text.endsWith(u'.')) {
        text.chop(1);
    }
    return text;
}

} // namespace host
