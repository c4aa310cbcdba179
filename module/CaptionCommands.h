#pragma once

#include "UIF/Command.h"

#include <array>

namespace UIF {
class ShortcutManager;
}

namespace HandlerCaptions {

// The panel's keyboard commands. The ids between 32002 and 32010 are unused on
// purpose: the toolbar dispatches on these numbers.
inline constexpr UIF::CommandID kCommand_JustifyLeft = 32000;
inline constexpr UIF::CommandID kCommand_JustifyCenter = 32001;
inline constexpr UIF::CommandID kCommand_JustifyRight = 32002;
inline constexpr UIF::CommandID kCommand_Italicize = 32010;
inline constexpr UIF::CommandID kCommand_Underline = 32011;
inline constexpr UIF::CommandID kCommand_MusicNote = 32012;
inline constexpr UIF::CommandID kCommand_BackgroundColor = 32013;
inline constexpr UIF::CommandID kCommand_TextColor = 32014;
inline constexpr UIF::CommandID kCommand_Bold = 32015;
inline constexpr UIF::CommandID kCommand_EdgeColor = 32016;

// The keyboard-shortcut context of the panel.
inline constexpr const char* kCaptionsCommandContext = "captions";
inline constexpr const char* kCaptionsCommandContextTitle =
    "$$$/Corvala/Handlers/Captions/CaptionsPanel=Captions Panel";

struct CaptionCommand {
    const char* name;
    UIF::CommandID id;
};

// In the order the shortcuts list shows them.
inline constexpr std::array<CaptionCommand, 10> kCaptionCommands = {{
    {"cmd.captions.justify.left", kCommand_JustifyLeft},
    {"cmd.captions.justify.center", kCommand_JustifyCenter},
    {"cmd.captions.justify.right", kCommand_JustifyRight},
    {"cmd.captions.italicize", kCommand_Italicize},
    {"cmd.captions.underline", kCommand_Underline},
    {"cmd.captions.musicnote", kCommand_MusicNote},
    {"cmd.captions.background.color", kCommand_BackgroundColor},
    {"cmd.captions.text.color", kCommand_TextColor},
    {"cmd.captions.bold", kCommand_Bold},
    {"cmd.captions.edge.color", kCommand_EdgeColor},
}};

// Declares the "captions" context and its commands (no default keys); the
// shortcut manager runs it whenever it builds its tables.
void DeclareCaptionCommands(UIF::ShortcutManager* manager);

} // namespace HandlerCaptions
