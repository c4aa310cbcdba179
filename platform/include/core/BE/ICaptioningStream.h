#pragma once

#include "BE/IProjectItem.h"
#include "KSL/InterfaceRef.h"
#include "zelcaptioning/Caption.h"
#include "zelcaptioning/StreamFormat.h"

#include <boost/intrusive_ptr.hpp>

#include <cstddef>
#include <optional>

namespace BE {

class IMasterClip;

// The captions of one format of a master clip, in begin-time order; captions
// with equal begin times keep the order they were first added in, even when
// one is retimed away and back, or removed and restored by undo. The captions
// handed out are the stream's own objects: change them only through
// MZ::Captioning, which records the change and announces it.
class ICaptioningStream : public IProjectItem {
public:
    static constexpr const char* kInterfaceID = "{9B7E2F14-6A3C-4D8E-B1F0-7C5A2E9D3B03}";

    virtual zelcaptioning::StreamFormat GetStreamFormat() const = 0;

    // The character grid of a closed-caption format; 0 for open captions.
    virtual int GetGridRowCount() const = 0;
    virtual int GetGridColumnCount() const = 0;

    // The clip the stream belongs to; empty once it has been removed from it.
    virtual KSL::InterfaceRef<IMasterClip> GetMasterClip() const = 0;

    virtual std::size_t GetCaptionCount() const = 0;
    virtual boost::intrusive_ptr<zelcaptioning::Caption> GetCaption(std::size_t index) const = 0;

    // The index of that caption object in the stream. Costs O(log n) when the
    // caption's begin time is the one it was stored with.
    virtual std::optional<std::size_t>
    FindCaptionIndex(const zelcaptioning::Caption* caption) const = 0;
};

} // namespace BE
