#include "HSL/Handler.h"

#include "UIF/Workspace.h"

#include <algorithm>

namespace HSL {

Handler::Handler(const zelcore::UTF16String& name, KSL::InterfaceRef<BE::IProject> project,
                 const zelcore::UTF16String& handlerID)
    : name_(name)
    , project_(std::move(project))
    , handlerID_(handlerID) {
    if (UIF::Workspace* workspace = UIF::Workspace::Instance()) {
        workspace->RegisterTabViewCreator(name_, this);
    }
}

Handler::~Handler() = default;

bool Handler::AllowClose() {
    return true;
}

bool Handler::OnSelectFindBox() {
    return false;
}

bool Handler::OnSelectNextPanel() {
    return SelectPanel(+1);
}

bool Handler::OnSelectPreviousPanel() {
    return SelectPanel(-1);
}

bool Handler::SelectPanel(int step) {
    UIF::Workspace* workspace = UIF::Workspace::Instance();
    if (!workspace) {
        return false;
    }
    std::vector<UIF::TabView*> open;
    for (UIF::WorkspaceFrame* frame : workspace->GetFrames()) {
        if (UIF::TabView* view = frame->GetTabView(); view && view->IsVisible()) {
            open.push_back(view);
        }
    }
    if (open.size() < 2) {
        return false;
    }
    const auto focused = std::find_if(open.begin(), open.end(),
                                      [](const UIF::TabView* view) { return view->HasFocus(); });
    const auto count = static_cast<std::ptrdiff_t>(open.size());
    const std::ptrdiff_t from =
        focused == open.end() ? (step > 0 ? count - 1 : 0) : focused - open.begin();
    UIF::TabView* target = open[static_cast<std::size_t>(((from + step) % count + count) % count)];
    target->BringToFront(true, true);
    return true;
}

} // namespace HSL
