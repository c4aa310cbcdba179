#pragma once

#include "KSL/IObject.h"
#include "zelcore/UTF16String.h"

namespace BE {

enum class ProjectItemKind { kBin, kMasterClip, kSequence, kCaptioningStream };

// What bins, master clips, sequences and caption streams have in common. Every
// project item also answers KSL::IStation: it announces its own changes there.
class IProjectItem : public KSL::IObject {
public:
    static constexpr const char* kInterfaceID = "{3C1F0E52-7B7D-4C7E-9A55-0E2D6B1F4A01}";

    virtual ProjectItemKind GetItemKind() const = 0;

    // Bins, clips and sequences are named; a caption stream's name is empty.
    virtual zelcore::UTF16String GetName() const = 0;
};

} // namespace BE
