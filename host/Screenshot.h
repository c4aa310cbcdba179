#pragma once

#include <optional>
#include <string>

namespace host {

class HostWindow;

// Shows the main window, waits (10 s at most) until the source monitor has its
// frame and posted work has run, renders the window with its docked panels and
// writes it as a PNG. Returns the problem, or nothing on success.
std::optional<std::string> SaveScreenshot(HostWindow& window, const std::string& pngPathUtf8);

} // namespace host
