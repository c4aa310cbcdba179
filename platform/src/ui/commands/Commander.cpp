#include "UIF/Command.h"

#include "workspace/WorkspaceImpl.h"

#include <algorithm>

namespace UIF {

bool CommandHandler::FindCommandStatus(CommandID, bool&, bool&, bool&, zelcore::UTF16String&) {
    return false;
}

bool CommandHandler::UpdateCommandForDisableMenuAppStatus(CommandID, bool&) {
    return false;
}

bool CommandHandler::ObeyCommand(const Command&) {
    return false;
}

const char* CommandHandler::GetCommandContextName() const {
    return "";
}

Commander::Commander(Commander* superCommander)
    : superCommander_(superCommander) {}

Commander::~Commander() = default;

void Commander::AttachCommandHandler(CommandHandler* handler) {
    if (handler && std::find(attachedHandlers_.begin(), attachedHandlers_.end(), handler) ==
                       attachedHandlers_.end()) {
        attachedHandlers_.push_back(handler);
    }
}

void Commander::DetachCommandHandler(CommandHandler* handler) {
    std::erase(attachedHandlers_, handler);
}

Commander* ApplicationCommander() {
    Workspace* workspace = Workspace::Instance();
    return workspace ? &workspace->GetImpl().applicationCommander : nullptr;
}

} // namespace UIF
