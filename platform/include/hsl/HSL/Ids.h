#pragma once

#include "zelcore/UTF16String.h"

#include <cstdint>

namespace HSL {

// The version of the host SDK a plug-in was built against. The host loads a
// plug-in only when the version it reports (see PluginExport.h) equals its own:
// the SDK's classes cross the boundary by layout, so any change breaks it.
inline constexpr std::uint32_t kSDKVersion = 1;

// Identifiers under which the captions plug-in registers its factories.
extern const zelcore::UTF16String kCaptionsModuleID;
extern const zelcore::UTF16String kCaptionsHandlerID;

} // namespace HSL
