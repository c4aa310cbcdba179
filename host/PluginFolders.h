#pragma once

#include <string>
#include <vector>

namespace host {

// The environment variable naming more plug-in folders, separated by ':'.
inline constexpr const char* kPluginPathVariable = "CORVALA_PLUGIN_PATH";

// Where the host looks for plug-ins, in order: the build's plug-in folder (found
// relative to the executable's folder, so a moved build tree still finds it),
// then each folder of CORVALA_PLUGIN_PATH. Empty entries are left out.
std::vector<std::string> PluginFolders(const std::string& executableFolder,
                                       const char* pluginPathVariableValue);

} // namespace host
