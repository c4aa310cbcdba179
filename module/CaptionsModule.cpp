#include "CaptionsModule.h"

#include "CaptionCommands.h"
#include "CaptionsHandler.h"
#include "HSL/Handler.h"
#include "HSL/Ids.h"
#include "HSL/PluginExport.h"
#include "UIF/ShortcutManager.h"

#include <memory>
#include <new>

CORVALA_DECLARE_PLUGIN()

namespace HandlerCaptions {

CaptionsModule::~CaptionsModule() = default;

HSL::Module* CreateModule(const zelcore::UTF16String& modulePath) {
    std::unique_ptr<CaptionsModule> module(new (std::nothrow) CaptionsModule(modulePath));
    if (!module) {
        return nullptr;
    }
    UIF::ShortcutManager::Instance()->RegisterCommandContext(DeclareCaptionCommands);
    return module.release();
}

namespace {

HSL::Handler* CreateCaptionsHandler(const zelcore::UTF16String& name,
                                    KSL::InterfaceRef<BE::IProject> project) {
    return new (std::nothrow) CaptionsHandler(name, std::move(project));
}

// Registers both factories when the library is loaded, before the host calls
// anything of it.
const bool kRegistered = [] {
    HSL::Module::RegisterFactory(HSL::kCaptionsModuleID, CreateModule);
    HSL::Handler::RegisterFactory(HSL::kCaptionsHandlerID, CreateCaptionsHandler);
    return true;
}();

} // namespace

} // namespace HandlerCaptions
