#pragma once

#include "BE/IProjectItem.h"
#include "BE/SequenceSettings.h"

namespace BE {

// A sequence of the project. Changes go through IProject::SetSequenceSettings.
class ISequence : public IProjectItem {
public:
    static constexpr const char* kInterfaceID = "{5E0A8E7B-0C2B-4F49-8E6B-2B7E4C3D9A02}";

    virtual SequenceSettings GetSettings() const = 0;
};

} // namespace BE
