#pragma once

#include "BE/IProject.h"
#include "KSL/InterfaceRef.h"

#include <cstddef>

namespace platform_bench {

// A project with one clip whose CEA-608 stream holds `captionCount` one-line
// captions, one a second, each 0.9 s long; its undo history is empty.
struct StreamProject {
    KSL::InterfaceRef<BE::IProject> project;
    KSL::InterfaceRef<BE::ICaptioningStream> stream;
};
StreamProject MakeStreamProject(std::size_t captionCount);

// Adds such a clip, 1920 x 1080 at 29.97 fps, to the project; returns its stream.
KSL::InterfaceRef<BE::ICaptioningStream>
AddCaptionedClip(const KSL::InterfaceRef<BE::IProject>& project, std::size_t captionCount);

} // namespace platform_bench
