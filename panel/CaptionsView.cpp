#include "CaptionsView.h"

#include "UIF/Command.h"

namespace HandlerCaptions {

CaptionsView::CaptionsView(CaptionsHandler* handler, KSL::InterfaceRef<BE::IProject> project)
    : UIF::TabView(UIF::ApplicationCommander())
    , handler_(handler)
    , project_(std::move(project)) {}

CaptionsView::~CaptionsView() = default;

void CaptionsView::ShowTrackItem(const MZ::CaptioningTrackItem& item) {
    shownTrackItem_ = item;
}

void CaptionsView::Destroy(std::uint32_t) {
    UIF::TabView::Destroy(UIF::kTabViewDestroy_CloseFrame);
}

bool CaptionsView::HandleMessage(const KSL::Message&) {
    return false;
}

} // namespace HandlerCaptions
