#include "HSL/Handler.h"
#include "HSL/Ids.h"
#include "HSL/Module.h"

#include <map>

namespace HSL {
namespace {

template <typename Factory> std::map<zelcore::UTF16String, Factory>& Registry() {
    static std::map<zelcore::UTF16String, Factory> registry;
    return registry;
}

template <typename Factory> std::vector<zelcore::UTF16String> Keys() {
    std::vector<zelcore::UTF16String> ids;
    for (const auto& entry : Registry<Factory>()) {
        ids.push_back(entry.first);
    }
    return ids;
}

template <typename Factory> Factory Find(const zelcore::UTF16String& id) {
    const auto& registry = Registry<Factory>();
    const auto it = registry.find(id);
    return it == registry.end() ? nullptr : it->second;
}

} // namespace

const zelcore::UTF16String kCaptionsModuleID = u"Corvala.Captions.Module";
const zelcore::UTF16String kCaptionsHandlerID = u"Corvala.Captions.Handler";

Module::Module(const zelcore::UTF16String& modulePath)
    : modulePath_(modulePath) {}

Module::~Module() = default;

void Module::RegisterFactory(const zelcore::UTF16String& moduleID, Factory factory) {
    Registry<Factory>()[moduleID] = factory;
}

void Module::UnregisterFactory(const zelcore::UTF16String& moduleID) {
    Registry<Factory>().erase(moduleID);
}

Module::Factory Module::FindFactory(const zelcore::UTF16String& moduleID) {
    return Find<Factory>(moduleID);
}

std::vector<zelcore::UTF16String> Module::GetRegisteredModuleIDs() {
    return Keys<Factory>();
}

void Handler::RegisterFactory(const zelcore::UTF16String& handlerID, Factory factory) {
    Registry<Factory>()[handlerID] = factory;
}

void Handler::UnregisterFactory(const zelcore::UTF16String& handlerID) {
    Registry<Factory>().erase(handlerID);
}

Handler::Factory Handler::FindFactory(const zelcore::UTF16String& handlerID) {
    return Find<Factory>(handlerID);
}

std::vector<zelcore::UTF16String> Handler::GetRegisteredHandlerIDs() {
    return Keys<Factory>();
}

} // namespace HSL
