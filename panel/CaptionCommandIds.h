#pragma once

#include "UIF/Command.h"

namespace HandlerCaptions {

// The panel's commands, sent by its toolbar buttons and by the keys a person
// binds to them. The ids between 32002 and 32010 are unused on purpose: the
// toolbar dispatches on these numbers.
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

} // namespace HandlerCaptions
