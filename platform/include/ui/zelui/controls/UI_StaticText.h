#pragma once

#include "zelui/controls/UI_ControlView.h"

namespace zelui::controls {

// A label. The text is a localisation key or plain text.
class UI_StaticText : public UI_ControlView {
public:
    explicit UI_StaticText(const zelcore::UTF16String& text);

    void SetText(const zelcore::UTF16String& text);
    zelcore::UTF16String GetText() const;
    void SetAlignment(ControlAlignment alignment);
};

} // namespace zelui::controls
