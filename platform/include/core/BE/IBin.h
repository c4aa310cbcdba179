#pragma once

#include "BE/IMasterClip.h"
#include "BE/IProjectItem.h"
#include "BE/ISequence.h"
#include "KSL/InterfaceRef.h"

#include <cstddef>

namespace BE {

// A bin of the project: its master clips and sequences, each in the order added.
class IBin : public IProjectItem {
public:
    static constexpr const char* kInterfaceID = "{7A9C1E3B-5D2F-4B6A-8C0E-1F3A5B7C9D05}";

    virtual std::size_t GetMasterClipCount() const = 0;
    virtual KSL::InterfaceRef<IMasterClip> GetMasterClip(std::size_t index) const = 0;
    virtual std::size_t GetSequenceCount() const = 0;
    virtual KSL::InterfaceRef<ISequence> GetSequence(std::size_t index) const = 0;
};

} // namespace BE
