#pragma once

#include "HSL/Module.h"

namespace HandlerCaptions {

// The captions plug-in's module object; it adds nothing to the host's module.
class CaptionsModule : public HSL::Module {
public:
    using HSL::Module::Module;
    ~CaptionsModule() override;
};

// The library's export: makes the module and registers the command-context
// declarer with the shortcut manager. Null when the module cannot be made; an
// exception from the registration frees the module and passes on.
HSL::Module* CreateModule(const zelcore::UTF16String& modulePath);

} // namespace HandlerCaptions
