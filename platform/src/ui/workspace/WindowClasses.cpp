#include "UIF/WindowClasses.h"

#include "UIF/TabView.h"
#include "UIF/Workspace.h"
#include "input/QtConversions.h"
#include "workspace/WorkspaceImpl.h"
#include "zelcore/Localization.h"

#include <algorithm>

namespace UIF {
namespace {

std::map<std::string, platform::ui::WindowClass>* WindowClasses() {
    Workspace* workspace = Workspace::Instance();
    return workspace ? &workspace->GetImpl().windowClasses : nullptr;
}

} // namespace

void AddWindowClass(const std::string& windowTypeID, const zelcore::UTF16String& handlerID,
                    std::int32_t windowClassType) {
    if (auto* classes = WindowClasses()) {
        platform::ui::WindowClass& windowClass = (*classes)[windowTypeID];
        windowClass.handlerID = handlerID;
        windowClass.windowClassType = windowClassType;
    }
}

void AddWindow(const std::string& windowTypeID, std::uint32_t windowID,
               const zelcore::UTF16String& title, std::uint32_t windowContextID) {
    auto* classes = WindowClasses();
    if (!classes) {
        return;
    }
    if (auto found = classes->find(windowTypeID); found != classes->end()) {
        found->second.windows[windowID] = {title, windowContextID};
    }
}

void RemoveWindowClass(const std::string& windowTypeID) {
    if (auto* classes = WindowClasses()) {
        classes->erase(windowTypeID);
    }
}

std::vector<WindowEntry> GetWindowList() {
    std::vector<WindowEntry> entries;
    if (auto* classes = WindowClasses()) {
        for (const auto& [typeID, windowClass] : *classes) {
            for (const auto& [windowID, window] : windowClass.windows) {
                entries.push_back({typeID, windowID, zelcore::Localize(zelcore::View(window.title)),
                                   window.windowContextID, windowClass.handlerID});
            }
        }
    }
    std::stable_sort(
        entries.begin(), entries.end(), [](const WindowEntry& a, const WindowEntry& b) {
            return platform::ui::ToQString(zelcore::View(a.title))
                       .localeAwareCompare(platform::ui::ToQString(zelcore::View(b.title))) < 0;
        });
    return entries;
}

TabView* OpenWindow(const std::string& windowTypeID, std::uint32_t windowID) {
    auto* classes = WindowClasses();
    if (!classes) {
        return nullptr;
    }
    const auto found = classes->find(windowTypeID);
    if (found == classes->end() || !found->second.windows.contains(windowID)) {
        return nullptr;
    }
    TabView* view =
        Workspace::Instance()->CreateOrReanimateTabView(found->second.handlerID, PropertyList());
    if (view) {
        view->BringToFront(true, true);
    }
    return view;
}

} // namespace UIF
