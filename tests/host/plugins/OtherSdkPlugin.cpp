// A plug-in built against another SDK version: it registers a module factory
// when loaded, which the host must take back without calling it.
#include "HSL/Ids.h"
#include "HSL/Module.h"

#include <cstdint>
#include <cstdlib>

extern "C" __attribute__((visibility("default"))) std::uint32_t CorvalaPluginSDKVersion() {
    return HSL::kSDKVersion + 998;
}

namespace {

HSL::Module* CreateModule(const zelcore::UTF16String&) {
    // Its classes do not match the host's: making its module would be a fault.
    std::abort();
}

const bool kRegistered = [] {
    HSL::Module::RegisterFactory(u"Corvala.Test.OtherSdkModule", CreateModule);
    return true;
}();

} // namespace
