#pragma once

#include "zelcore/UTF16String.h"
#include "zelcore/geom/Rect.h"
#include "zelmediatypes/FrameRate.h"
#include "zelmediatypes/PixelAspectRatio.h"
#include "zelmediatypes/TickTime.h"
#include "zelmediatypes/TimeDisplay.h"

#include <string>

namespace BE {

// Where a master clip's pictures come from. Media files are decoded by the
// platform's media layer; a generated test source draws colour bars with the
// frame's timecode burnt in, so demos and tests need no media file.
struct MediaSource {
    enum class Kind { kFile, kGeneratedTestSource };

    Kind kind = Kind::kGeneratedTestSource;
    std::string filePathUtf8; // kFile only

    friend bool operator==(const MediaSource&, const MediaSource&) = default;
};

// A merged clip joins the media of several clips into one; the captions panel
// leaves such clips alone.
enum class MasterClipKind { kSingle, kMerged };

// Everything a master clip is made of, apart from its caption streams. Every
// clip has a frame rate; 29.97 fps stands until one is given.
struct MasterClipSettings {
    zelcore::UTF16String name;
    MasterClipKind kind = MasterClipKind::kSingle;
    MediaSource media;
    zelcore::geom::RectT<int> frameRect;
    zelmediatypes::FrameRate frameRate = zelmediatypes::kFrameRate_2997;
    zelmediatypes::PixelAspectRatio pixelAspectRatio;
    zelmediatypes::TickTime duration;
    // The video time display the person chose for the clip's source times;
    // kTimeDisplay_Unknown until they choose one, so that the clip's own rate's
    // timecode stands (MZ::MasterClipActions::GetVideoTimeDisplayFormat).
    zelmediatypes::TimeDisplay videoTimeDisplay = zelmediatypes::kTimeDisplay_Unknown;

    friend bool operator==(const MasterClipSettings&, const MasterClipSettings&) = default;
};

} // namespace BE
