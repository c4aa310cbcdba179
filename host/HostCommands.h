#pragma once

#include "UIF/Command.h"
#include "zelcaptioning/StreamFormat.h"

#include <array>
#include <utility>

#include <span>

namespace UIF {
class ShortcutManager;
}

namespace host {

// The host's own commands. The Edit menu also sends the standard edit
// commands of UIF/Command.h.
enum HostCommand : UIF::CommandID {
    kHostCommand_NewProject = 41001,
    kHostCommand_OpenProject = 41002,
    kHostCommand_SaveProject = 41003,
    kHostCommand_SaveProjectAs = 41004,
    kHostCommand_ImportMedia = 41005,
    kHostCommand_CloseClip = 41006,
    kHostCommand_Quit = 41007,
    kHostCommand_ImportCaptions = 41008,
    kHostCommand_ExportCaptions = 41009,
    kHostCommand_NewSequence = 41011,
    kHostCommand_About = 41012,
    kHostCommand_KeyboardShortcuts = 41010,
    kHostCommand_Preferences = 41030,
    kHostCommand_AddCEA608Stream = 41020,
    kHostCommand_AddCEA708Stream = 41021,
    kHostCommand_AddTeletextStream = 41022,
    kHostCommand_AddOpenCaptionStream = 41023,
    kHostCommand_PlaySelectedCaption = 41031,
};

// The commands that add a caption stream of each format to the selected clip.
inline constexpr std::array<std::pair<UIF::CommandID, zelcaptioning::StreamFormat>, 4>
    kCaptionStreamCommands{{
        {kHostCommand_AddCEA608Stream, zelcaptioning::kStreamFormat_CEA608},
        {kHostCommand_AddCEA708Stream, zelcaptioning::kStreamFormat_CEA708},
        {kHostCommand_AddTeletextStream, zelcaptioning::kStreamFormat_Teletext},
        {kHostCommand_AddOpenCaptionStream, zelcaptioning::kStreamFormat_OpenCaptions},
    }};

struct GlobalCommand {
    const char* name;
    UIF::CommandID id;
    const char* description; // localisation key
    const char* defaultKey;  // portable key text; null for none
};

// The commands of the "global" shortcut context, as the keyboard-shortcuts
// dialog lists them.
std::span<const GlobalCommand> GlobalCommands();

// The declarer of the "global" context (UIF::ShortcutManager::RegisterCommandContext).
void DeclareGlobalCommands(UIF::ShortcutManager* manager);

} // namespace host
