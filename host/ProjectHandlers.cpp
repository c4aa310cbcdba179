#include "ProjectHandlers.h"

#include "UIF/Command.h"

#include <algorithm>
#include <exception>

namespace host {

ProjectHandlers::ProjectHandlers(const KSL::InterfaceRef<BE::IProject>& project) {
    for (const zelcore::UTF16String& handlerID : HSL::Handler::GetRegisteredHandlerIDs()) {
        const HSL::Handler::Factory factory = HSL::Handler::FindFactory(handlerID);
        try {
            std::unique_ptr<HSL::Handler> handler(factory(handlerID, project));
            if (!handler) {
                failures_.push_back(zelcore::ToUTF8(handlerID) + ": the handler could not be made");
                continue;
            }
            handlers_.push_back(std::move(handler));
        } catch (const std::exception& error) {
            failures_.push_back(zelcore::ToUTF8(handlerID) + ": " + error.what());
        }
    }
    if (UIF::Commander* application = UIF::ApplicationCommander()) {
        for (const auto& handler : handlers_) {
            application->AttachCommandHandler(handler.get());
        }
    }
}

ProjectHandlers::~ProjectHandlers() {
    UIF::Commander* application = UIF::ApplicationCommander();
    while (!handlers_.empty()) {
        if (application) {
            application->DetachCommandHandler(handlers_.back().get());
        }
        handlers_.pop_back();
    }
}

bool ProjectHandlers::AllowClose() const {
    return std::all_of(handlers_.begin(), handlers_.end(),
                       [](const auto& handler) { return handler->AllowClose(); });
}

} // namespace host
