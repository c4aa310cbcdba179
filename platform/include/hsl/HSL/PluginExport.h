#pragma once

#include "HSL/Ids.h"

// The one symbol every plug-in library exports besides its registrations:
// the SDK version it was built against. The host reads it after loading the
// library and before it creates any of the library's modules.
#define CORVALA_PLUGIN_SDK_VERSION_SYMBOL "CorvalaPluginSDKVersion"

#define CORVALA_DECLARE_PLUGIN()                                                                   \
    extern "C" __attribute__((visibility("default"))) std::uint32_t CorvalaPluginSDKVersion() {    \
        return HSL::kSDKVersion;                                                                   \
    }
