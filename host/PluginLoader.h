#pragma once

#include "HSL/Module.h"

#include <memory>
#include <string>
#include <vector>

namespace host {

// Why a plug-in library could not be used.
struct PluginFailure {
    std::string libraryPath;
    std::string problem;
};

// The plug-ins the host loaded, and the ones it could not.
struct PluginSet {
    // The module of each module factory the libraries registered, in load order.
    std::vector<std::unique_ptr<HSL::Module>> modules;
    std::vector<std::string> loadedLibraryPaths;
    std::vector<PluginFailure> failures;
};

// Loads every shared library (*.so) of the folders, each folder in name order,
// skipping a file name already tried in an earlier folder. A library must export the SDK version
// (HSL/PluginExport.h) equal to HSL::kSDKVersion; then the module factory it registered under each
// new module id is called with the library's path. A library that cannot be opened, has the wrong
// version, registers nothing, or whose module cannot be made is recorded as a failure, its
// registrations are withdrawn, and loading goes on. Missing folders are ignored. Libraries stay
// mapped for the rest of the process, refused ones too: their static initialisers may have left
// pointers into them.
PluginSet LoadPlugins(const std::vector<std::string>& folders);

} // namespace host
