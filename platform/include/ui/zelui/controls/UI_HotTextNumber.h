#pragma once

#include "zelui/controls/UI_InteractiveControlView.h"

#include <cstdint>
#include <memory>

namespace zelui::controls {

class HotTextNumberEditor;

// A number shown as hot text. Dragging across it scrubs the value (one unit a
// pixel; Shift ten, Control one step of the last decimal place): Begin, one
// Intermediate per value, Final on release. A click opens an inline editor:
// Return or leaving the field ends the edit with a Final change and a change,
// Escape cancels it. Values are kept within the limits and rounded to the
// decimal places.
class UI_HotTextNumber : public UI_InteractiveControlView {
public:
    UI_HotTextNumber();
    ~UI_HotTextNumber() override;

    double GetValue() const { return value_; }
    // Clamps and rounds; does not notify.
    void SetValue(double value);
    void SetMinimum(double minimum);
    void SetMaximum(double maximum);
    double GetMinimum() const { return minimum_; }
    double GetMaximum() const { return maximum_; }
    void SetDecimalPlaces(std::int32_t places);
    std::int32_t GetDecimalPlaces() const { return decimalPlaces_; }

    // The value as shown.
    zelcore::UTF16String GetText() const;
    bool IsEditing() const;

    void UI_Draw(drawbot::Drawbot& drawbot) override;
    bool UI_DoMouseEvent(const ui::UI_MouseEvent& event) override;
    bool UI_DoCursor(const ui::UI_CursorRequest& request) override;

private:
    friend class HotTextNumberEditor;
    double Conform(double value) const;
    void SetValueFromUser(double value, UI_InteractiveChange change);
    void BeginEdit();
    void EndEdit(bool accept);

    double value_ = 0.0;
    double minimum_ = 0.0;
    double maximum_ = 100.0;
    std::int32_t decimalPlaces_ = 0;
    // Scrubbing: where the press was, the value then, and whether it moved.
    float pressX_ = 0.0f;
    double pressValue_ = 0.0;
    bool scrubbing_ = false;
    bool pressed_ = false;
    std::unique_ptr<HotTextNumberEditor> editor_; // while an inline edit is open
};

} // namespace zelui::controls
