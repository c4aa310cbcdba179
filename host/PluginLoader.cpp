#include "PluginLoader.h"

#include "HSL/Handler.h"
#include "HSL/Ids.h"
#include "HSL/PluginExport.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <set>

namespace host {
namespace {

using SDKVersionFunction = std::uint32_t (*)();

std::vector<std::filesystem::path> LibrariesIn(const std::string& folder) {
    std::vector<std::filesystem::path> libraries;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        if (entry.path().extension() == ".so" && !entry.is_directory()) {
            libraries.push_back(entry.path());
        }
    }
    std::sort(libraries.begin(), libraries.end());
    return libraries;
}

template <typename T>
std::vector<T> Added(const std::vector<T>& before, const std::vector<T>& after) {
    std::vector<T> added;
    for (const T& id : after) {
        if (std::find(before.begin(), before.end(), id) == before.end()) {
            added.push_back(id);
        }
    }
    return added;
}

// Takes back what a refused library registered while it was loaded.
void WithdrawRegistrations(const std::vector<zelcore::UTF16String>& moduleIDs,
                           const std::vector<zelcore::UTF16String>& handlerIDs) {
    for (const auto& id : moduleIDs) {
        HSL::Module::UnregisterFactory(id);
    }
    for (const auto& id : handlerIDs) {
        HSL::Handler::UnregisterFactory(id);
    }
}

// Loads one library into the set; returns the problem, or an empty string.
std::string LoadLibrary(const std::filesystem::path& path, PluginSet& plugins) {
    const auto modulesBefore = HSL::Module::GetRegisteredModuleIDs();
    const auto handlersBefore = HSL::Handler::GetRegisteredHandlerIDs();
    // RTLD_NOW: an unresolved symbol fails here, not at some later call.
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        const char* why = dlerror();
        return why ? why : "the library could not be opened";
    }
    const auto newModules = Added(modulesBefore, HSL::Module::GetRegisteredModuleIDs());
    const auto newHandlers = Added(handlersBefore, HSL::Handler::GetRegisteredHandlerIDs());
    auto refuse = [&](std::string problem) {
        WithdrawRegistrations(newModules, newHandlers);
        return problem;
    };
    auto sdkVersion =
        reinterpret_cast<SDKVersionFunction>(dlsym(library, CORVALA_PLUGIN_SDK_VERSION_SYMBOL));
    if (!sdkVersion) {
        return refuse(std::string("not a Corvala plug-in: it does not export ") +
                      CORVALA_PLUGIN_SDK_VERSION_SYMBOL);
    }
    if (const std::uint32_t version = sdkVersion(); version != HSL::kSDKVersion) {
        return refuse("built for SDK version " + std::to_string(version) + ", the host has " +
                      std::to_string(HSL::kSDKVersion));
    }
    if (newModules.empty()) {
        return refuse("it registered no module factory");
    }
    const zelcore::UTF16String modulePath = zelcore::ToUTF16(path.string());
    std::vector<std::unique_ptr<HSL::Module>> modules;
    for (const auto& id : newModules) {
        std::unique_ptr<HSL::Module> module;
        try {
            module.reset(HSL::Module::FindFactory(id)(modulePath));
        } catch (const std::exception& error) {
            return refuse("its module '" + zelcore::ToUTF8(id) + "' failed: " + error.what());
        }
        if (!module) {
            return refuse("its module '" + zelcore::ToUTF8(id) + "' could not be made");
        }
        modules.push_back(std::move(module));
    }
    for (auto& module : modules) {
        plugins.modules.push_back(std::move(module));
    }
    plugins.loadedLibraryPaths.push_back(path.string());
    return {};
}

} // namespace

PluginSet LoadPlugins(const std::vector<std::string>& folders) {
    PluginSet plugins;
    std::set<std::string> loadedFileNames;
    for (const std::string& folder : folders) {
        for (const std::filesystem::path& path : LibrariesIn(folder)) {
            if (!loadedFileNames.insert(path.filename().string()).second) {
                continue;
            }
            if (std::string problem = LoadLibrary(path, plugins); !problem.empty()) {
                plugins.failures.push_back({path.string(), std::move(problem)});
            }
        }
    }
    return plugins;
}

} // namespace host
