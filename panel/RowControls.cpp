#include "RowControls.h"

#include "CaptionEdit.h"
#include "CaptionsPane.h"
#include "RowFont.h"
#include "RowGeometry.h"
#include "zelui/ui/UI_NodeManager.h"

namespace HandlerCaptions {

RowControlPool::~RowControlPool() {
    for (RowControls& controls : kept_) {
        Destroy(controls);
    }
}

RowControls RowControlPool::Take() {
    if (!kept_.empty()) {
        RowControls controls = std::move(kept_.back());
        kept_.pop_back();
        return controls;
    }
    RowControls controls;
    const UIF::TimecodeInfo info = pane_.GetRowTimecodeInfo();
    const UIF::Rect bounds{0, 0, row_geometry::kTimeControlWidthPx, row_geometry::kLineHeightPx};
    controls.inTime = std::make_unique<UIF::HotTimecodeControl>();
    controls.outTime = std::make_unique<UIF::HotTimecodeControl>();
    controls.inTime->Create(pane_, bounds, {}, info, 0);
    controls.outTime->Create(pane_, bounds, {}, info, RowControls::kOutTimeFlag);
    for (UIF::HotTimecodeControl* control : {controls.inTime.get(), controls.outTime.get()}) {
        control->SetWantsKeyboardFocusFromAdvance(false);
        control->Hide();
    }
    controls.text.reset(new CaptionEdit(pane_));
    ApplyRowFont(*controls.text);
    // The control tells whichever row it shows at the time.
    CaptionEdit* text = controls.text.get();
    controls.text->NotifyWhenChanged([text](const auto&) { text->RowTextChanged(); });
    controls.text->SetVisible(false);
    pane_.AddControl(*controls.text);
    controls.text->SetDisabled(false);
    return controls;
}

void RowControlPool::Give(RowControls controls) {
    if (controls) {
        kept_.push_back(std::move(controls));
    }
}

void RowControlPool::Destroy(RowControls& controls) {
    if (controls.text) {
        if (zelui::ui::UI_NodeManager* manager = zelui::ui::UI_NodeManager::Get()) {
            manager->RemoveKeyboardEventFilterNode(controls.text.get());
        }
        controls.text->SetVisible(false);
        controls.text.reset();
    }
    for (auto* control : {&controls.inTime, &controls.outTime}) {
        if (*control) {
            (*control)->Destroy();
            control->reset();
        }
    }
}

} // namespace HandlerCaptions
