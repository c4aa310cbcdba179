#include "common/CaptionOrder.h"

#include <algorithm>

namespace captionformats {

std::vector<zelcaptioning::CaptionPtr>
SortedByBegin(const std::vector<zelcaptioning::CaptionPtr>& captions) {
    std::vector<zelcaptioning::CaptionPtr> sorted;
    std::copy_if(captions.begin(), captions.end(), std::back_inserter(sorted),
                 [](const zelcaptioning::CaptionPtr& caption) { return caption != nullptr; });
    std::stable_sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) {
        return a->GetBeginTime() < b->GetBeginTime();
    });
    return sorted;
}

} // namespace captionformats
