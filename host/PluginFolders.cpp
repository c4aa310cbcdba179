#include "PluginFolders.h"

#include <filesystem>
#include <sstream>

namespace host {

std::vector<std::string> PluginFolders(const std::string& executableFolder,
                                       const char* pluginPathVariableValue) {
    std::vector<std::string> folders;
    // CORVALA_PLUGIN_DIR_FROM_EXECUTABLE is the build's plug-in folder relative to
    // the folder corvala is built into (host/CMakeLists.txt).
    folders.push_back((std::filesystem::path(executableFolder) / CORVALA_PLUGIN_DIR_FROM_EXECUTABLE)
                          .lexically_normal()
                          .string());
    if (pluginPathVariableValue) {
        std::istringstream entries(pluginPathVariableValue);
        for (std::string folder; std::getline(entries, folder, ':');) {
            if (!folder.empty()) {
                folders.push_back(folder);
            }
        }
    }
    return folders;
}

} // namespace host
