#pragma once

#include "zelcore/UTF16String.h"
#include "zelui/ui/UI_Color.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace zelui::controls {

class UI_ControlView;

enum UI_MenuItemFlags : std::uint32_t {
    kMenuItem_Plain = 0,
    kMenuItem_Checked = 1,
    kMenuItem_Disabled = 2,
    kMenuItem_Separator = 4,
};

struct UI_MenuItem {
    zelcore::UTF16String text; // a localisation key or plain text
    std::uint32_t flags = kMenuItem_Plain;
    // A patch of this colour before the text.
    std::optional<ui::UI_Color> swatch;
};

// Shows the menu under the control and waits for the user's choice. Returns
// the index of the chosen item, or -1 when the menu was dismissed.
std::int32_t UI_DoPopupMenu(const std::vector<UI_MenuItem>& items, const UI_ControlView& anchor);

} // namespace zelui::controls
