#include "CaptionCommands.h"

#include "UIF/ShortcutManager.h"
#include "zelcore/Localization.h"

namespace HandlerCaptions {

void DeclareCaptionCommands(UIF::ShortcutManager* manager) {
    manager->GetContext("global");
    UIF::CommandContext* context = manager->AddContext(
        kCaptionsCommandContext, zelcore::Localize(kCaptionsCommandContextTitle));
    for (const CaptionCommand& command : kCaptionCommands) {
        context->DeclareCommand(command.name, command.id, 0, zelcore::UTF16String(),
                                KSL::ImmutableString(), false);
    }
}

} // namespace HandlerCaptions
