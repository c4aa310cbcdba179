#pragma once

#include "zelui/controls/UI_InteractiveControlView.h"

namespace zelui::controls {

// A one-line search field with a clear button. Each edit by the user is an
// intermediate interactive change; Return, and emptying the field (as its
// clear button does), make a final interactive change and a change. Activating it
// (kControlRequest_Activate) gives it the focus with its text selected.
class UI_SearchBox : public UI_InteractiveControlView {
public:
    UI_SearchBox();

    zelcore::UTF16String GetText() const;
    // Sets the text without notifying.
    void SetText(const zelcore::UTF16String& text);

    bool HandleControlRequest(ControlRequest request) override;
};

} // namespace zelui::controls
