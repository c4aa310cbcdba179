#pragma once

#include "zelui/controls/UI_TextEdit.h"

namespace HandlerCaptions {

// Gives a row's text control the wide-coverage Unicode family when the system
// has it (asked once per process), keeping the control's size and style, so
// that captions in any script show without missing glyphs.
void ApplyRowFont(zelui::controls::UI_TextEdit& control);

} // namespace HandlerCaptions
