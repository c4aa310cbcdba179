#pragma once

class QSettings;

namespace host {

// The person's changes to the keyboard shortcuts, kept in the host settings:
// every command whose key differs from its default, with its key (empty when
// the person took the key away).

// Replaces the saved changes with the shortcut manager's.
void SaveShortcutChanges(QSettings& settings);
// Binds the saved keys of the commands the shortcut manager knows now; keys of
// commands no context declares (a plug-in that is gone) stay saved, unused.
void LoadShortcutChanges(QSettings& settings);

} // namespace host
