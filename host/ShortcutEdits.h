#pragma once

#include "UIF/ShortcutManager.h"

#include <QString>

#include <cstddef>
#include <string>
#include <vector>

namespace host {

// A command's name as a person reads it: its description, or for a command
// declared without one, its name's words ("cmd.captions.text.color" in the
// "captions" context reads "Text Color").
QString ReadableCommandName(const UIF::ShortcutEntry& entry);

// The keyboard shortcuts as the shortcuts dialog edits them: every command of
// every context with the key it is to have. Nothing reaches the shortcut
// manager before Apply.
class ShortcutEdits {
public:
    struct Row {
        UIF::ShortcutEntry entry;
        QString readableName;
        std::string defaultKey; // portable key text; empty for none
        std::string key;        // as edited; empty for none
    };

    // Reads the commands and keys of the shortcut manager, after rebuilding its
    // tables so that every module's commands are listed.
    ShortcutEdits();

    const std::vector<Row>& GetRows() const { return rows_; }

    // Portable key text ("Ctrl+Shift+B"); empty takes the key away. Locked
    // commands keep theirs.
    void SetKey(std::size_t row, const std::string& key);
    void ResetToDefaults();

    // The other rows of the row's context that have the row's key.
    std::vector<std::size_t> ClashesOf(std::size_t row) const;
    bool HasClashes() const;

    // Binds every changed key in the shortcut manager.
    void Apply() const;

private:
    std::vector<Row> rows_;
};

} // namespace host
