#pragma once

#include "zelui/controls/UI_ControlView.h"

namespace zelui::controls {

// A push button with a text; a click notifies a change.
class UI_TextButton : public UI_ControlView {
public:
    explicit UI_TextButton(const zelcore::UTF16String& text);
    void SetText(const zelcore::UTF16String& text);
    zelcore::UTF16String GetText() const;
};

} // namespace zelui::controls
