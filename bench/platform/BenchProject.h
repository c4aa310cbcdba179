#pragma once

#include "BE/IProject.h"
#include "KSL/InterfaceRef.h"
#include "zelcaptioning/StreamFormat.h"

#include <cstddef>
#include <cstdint>

namespace platform_bench {

// A project with one clip whose CEA-608 stream holds `captionCount` one-line
// captions, one a second, each 0.9 s long; its undo history is empty.
struct StreamProject {
    KSL::InterfaceRef<BE::IProject> project;
    KSL::InterfaceRef<BE::ICaptioningStream> stream;
};
StreamProject MakeStreamProject(std::size_t captionCount);

// Adds such a clip, 1920 x 1080 at 29.97 fps, to the project; returns its
// stream. Each caption has `linesPerCaption` lines standing on the bottom row.
KSL::InterfaceRef<BE::ICaptioningStream>
AddCaptionedClip(const KSL::InterfaceRef<BE::IProject>& project, std::size_t captionCount,
                 std::int32_t linesPerCaption = 1,
                 zelcaptioning::StreamFormat format = zelcaptioning::kStreamFormat_CEA608);

} // namespace platform_bench
