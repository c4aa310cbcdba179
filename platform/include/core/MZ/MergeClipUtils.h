#pragma once

#include "BE/IMasterClip.h"
#include "KSL/InterfaceRef.h"

namespace MZ::MergeClipUtils {

// False for an empty reference.
inline bool IsMergedClip(const KSL::InterfaceRef<BE::IMasterClip>& clip) {
    return clip && clip->GetSettings().kind == BE::MasterClipKind::kMerged;
}

} // namespace MZ::MergeClipUtils
