#pragma once

#include <QKeyEvent>

#include <string>

namespace UIF {
class ShortcutManager;
}

namespace platform::ui {

// The shortcut manager when one exists, without creating it.
UIF::ShortcutManager* ExistingShortcutManager();

// Portable key text in its one canonical spelling ("Ctrl+Shift+B"); empty
// when the text names no key.
std::string CanonicalKeyText(const std::string& keyText);

// Sends the command bound to the pressed key in a context of the focused
// command chain (nearest first, then "global"). Returns whether a command was
// obeyed; a key that sends nothing goes on to the focused widget.
bool DispatchShortcut(const QKeyEvent& event);

} // namespace platform::ui
