#pragma once

#include "zelui/ui/UI_Events.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include <cstdint>

namespace platform::ui {

std::uint32_t ToKeyModifiers(Qt::KeyboardModifiers modifiers);

// A press or release as the toolkit describes it.
zelui::ui::UI_KeyboardEvent ToKeyboardEvent(const QKeyEvent& event);

// The key code of a view's KeyDown hook: the character typed, or the negated
// virtual-key number of a key that types none (0 when the key has neither).
std::int32_t ToViewKeyCode(const QKeyEvent& event);

zelui::ui::UI_MouseButton ToMouseButton(Qt::MouseButton button);

} // namespace platform::ui
