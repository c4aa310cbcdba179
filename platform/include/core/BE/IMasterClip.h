#pragma once

#include "BE/ICaptioningStream.h"
#include "BE/IProjectItem.h"
#include "BE/MasterClipSettings.h"
#include "KSL/InterfaceRef.h"
#include "zelcaptioning/StreamFormat.h"

#include <cstddef>

namespace BE {

class IBin;

// A master clip: its media and picture facts, and at most one caption stream
// per stream format. Its station (KSL::IStation) carries the messages about
// its streams and media.
class IMasterClip : public IProjectItem {
public:
    static constexpr const char* kInterfaceID = "{2D4C6B8A-1E3F-4A5B-9C7D-8E0F1A2B3C04}";

    virtual MasterClipSettings GetSettings() const = 0;

    // The bin holding the clip; empty once it has been removed from the project.
    virtual KSL::InterfaceRef<IBin> GetBin() const = 0;

    // Streams in ascending format order.
    virtual std::size_t GetCaptioningStreamCount() const = 0;
    virtual KSL::InterfaceRef<ICaptioningStream> GetCaptioningStream(std::size_t index) const = 0;
    virtual KSL::InterfaceRef<ICaptioningStream>
    FindCaptioningStream(zelcaptioning::StreamFormat format) const = 0;
};

} // namespace BE
