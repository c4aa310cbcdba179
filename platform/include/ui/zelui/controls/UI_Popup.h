#pragma once

#include "zelui/controls/UI_ControlView.h"

#include <cstdint>

namespace zelui::controls {

// A drop-down list of text items; its value is the index of the chosen item
// (-1 while it has none). Choosing an item notifies a change.
class UI_Popup : public UI_ControlView {
public:
    UI_Popup();

    void AddItem(const zelcore::UTF16String& text);
    void RemoveAllItems();
    std::int32_t GetItemCount() const;
    zelcore::UTF16String GetItemText(std::int32_t index) const;

    std::int32_t GetValue() const;
    // Out-of-range indices choose nothing (-1). Does not notify.
    void SetValue(std::int32_t index);
    // The chosen item's text, empty when none is chosen.
    zelcore::UTF16String GetValueString() const;

    // With the check style the open list marks the chosen item with a check.
    void SetItemCheckStyle(bool checkStyle);
    bool GetItemCheckStyle() const;

private:
    bool checkStyle_ = false;
};

} // namespace zelui::controls
