#pragma once

#include "zelui/controls/UI_InteractiveControlView.h"

#include <cstdint>

namespace zelui::controls {

enum TextEditFlags : std::uint32_t {
    kTextEdit_SingleLine = 0,
    kTextEdit_MultiLine = 1,
    kTextEdit_ReadOnly = 2,
};

// A font of a text control: family, style name (empty: regular) and size in points.
struct UI_TextFont {
    zelcore::UTF16String family;
    zelcore::UTF16String styleName;
    float sizePoints = 10.0f;

    friend bool operator==(const UI_TextFont&, const UI_TextFont&) = default;
};

// An editable text field with the platform's editing keys, clipboard and
// undo. Its text writes a line break as CR LF: the value and all offsets
// (selection) count a break as two characters.
//
// Each edit by the user notifies an intermediate interactive change and a
// change; when the focus leaves after edits a final interactive change follows.
class UI_TextEdit : public UI_InteractiveControlView {
public:
    UI_TextEdit(std::uint32_t flags, ControlAlignment alignment);
    ~UI_TextEdit() override;

    zelcore::UTF16String GetValue() const;
    // Replaces the text (any of CR LF, LF or CR breaks), clears the undo
    // history and puts the caret at the start. Does not notify.
    void SetValue(const zelcore::UTF16String& text);

    // Offsets in the value; start <= end. SetSelection clamps to the text and
    // takes an end before the start (or -1) as the end of the text.
    void GetSelection(std::int64_t& start, std::int64_t& end) const;
    void SetSelection(std::int64_t start, std::int64_t end);

    UI_TextFont GetFont() const;
    void SetFont(const UI_TextFont& font);

    bool CanDelete() const;
    bool CanCopy() const;
    bool CanCut() const;
    bool CanPaste() const;
    bool CanUndo() const;
    bool CanRedo() const;
    // Each of these changes the text as the user's command would, and notifies.
    void Delete();
    void Copy();
    void Cut();
    void Paste();
    void Undo();
    void Redo();

    // Scrolls so that the start of the text shows; the caret stays.
    void ScrollToBegin();

    // A single-line edit takes no line break from the Return key.
    bool UI_DoKeyboardEvent(const ui::UI_KeyboardEvent& event) override;
    // Ends an edit with the final interactive change when the focus leaves.
    void UI_FocusChanged(UI_FocusChange change) override;

private:
    void UserEdited();

    std::uint32_t flags_;
    bool settingValue_ = false;
    bool editedSinceFocus_ = false;
};

} // namespace zelui::controls
