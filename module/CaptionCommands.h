#pragma once

#include "CaptionCommandIds.h"
#include "UIF/Command.h"

#include <array>

namespace UIF {
class ShortcutManager;
}

namespace HandlerCaptions {

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
