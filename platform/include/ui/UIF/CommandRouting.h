#pragma once

#include "UIF/Command.h"
#include "zelcore/UTF16String.h"

namespace UIF {

class Commander;

struct CommandStatus {
    bool handled = false; // some handler of the chain answered for the command
    bool enabled = false;
    bool checked = false;
    bool mark = false;
    zelcore::UTF16String text;
};

// The commander that has the keyboard focus: the nearest view around the
// focused control, or the application's commander when no view has it.
Commander* FocusedCommander();

// Asks the chain from start on (the focused commander when start is null),
// first handler that answers wins. While a modal window is open the
// application's menus are disabled and UpdateCommandForDisableMenuAppStatus
// is asked instead.
CommandStatus FindCommandStatus(CommandID id, Commander* start = nullptr);

// Sends the command along the chain after asking its status: a command that a
// handler reports disabled is not run. Returns whether a handler obeyed it.
bool SendCommand(CommandID id, Commander* start = nullptr);

} // namespace UIF
