#pragma once

#include "zelcore/UTF16String.h"

#include <cstdint>
#include <string>
#include <vector>

namespace UIF {

class TabView;

// Window classes are the kinds of panel the host's Window menu offers; each
// class belongs to the handler that creates its tab views, and lists one or
// more windows (menu entries). The lists live in the workspace.

inline constexpr const char* kCaptionsWindowTypeID = "window.captions";
inline constexpr std::uint32_t kDefaultWindowID = 0;
inline constexpr std::uint32_t kDefaultWindowContextID = 0;

enum WindowClassType : std::int32_t {
    // A dockable panel with one tab view, opened through its handler's creator.
    kWindowClassType_Panel = 1,
};

// Registering a class again replaces its handler and type and keeps its windows.
void AddWindowClass(const std::string& windowTypeID, const zelcore::UTF16String& handlerID,
                    std::int32_t windowClassType);
// A window of a class that is not registered is ignored. The title is a
// localisation key or plain text.
void AddWindow(const std::string& windowTypeID, std::uint32_t windowID,
               const zelcore::UTF16String& title, std::uint32_t windowContextID);
// Removes the class and its windows; open tab views stay open.
void RemoveWindowClass(const std::string& windowTypeID);

struct WindowEntry {
    std::string windowTypeID;
    std::uint32_t windowID = 0;
    zelcore::UTF16String title; // localised
    std::uint32_t windowContextID = 0;
    zelcore::UTF16String handlerID;
};

// The windows for the Window menu, sorted by title.
std::vector<WindowEntry> GetWindowList();

// Opens (or brings to front) the tab view of a listed window through the
// creator registered under its class's handler. Null when there is none.
TabView* OpenWindow(const std::string& windowTypeID, std::uint32_t windowID);

} // namespace UIF
