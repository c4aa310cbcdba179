#include "UIF/SubView.h"

#include "views/ViewImpl.h"

#include <algorithm>

namespace UIF {

SubView::SubView(Commander* commander)
    : ViewBase(commander) {}

SubView::~SubView() {
    if (parentView_) {
        std::erase(parentView_->GetImpl().subViews, this);
    }
}

} // namespace UIF
