#pragma once

#include "zelcore/UTF16String.h"

#include <vector>

namespace HSL {

// A loaded plug-in's module object, made by the factory the library registers
// when it is loaded; the host keeps it until it unloads the library.
class Module {
public:
    // Makes the module of a library at `modulePath`; null when it cannot.
    using Factory = Module* (*)(const zelcore::UTF16String& modulePath);

    explicit Module(const zelcore::UTF16String& modulePath);
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;
    virtual ~Module();

    const zelcore::UTF16String& GetModulePath() const { return modulePath_; }

    // Registers the factory under the module id, replacing an earlier one.
    static void RegisterFactory(const zelcore::UTF16String& moduleID, Factory factory);
    static void UnregisterFactory(const zelcore::UTF16String& moduleID);
    // The factory registered under the id, or null.
    static Factory FindFactory(const zelcore::UTF16String& moduleID);
    static std::vector<zelcore::UTF16String> GetRegisteredModuleIDs();

private:
    zelcore::UTF16String modulePath_;
};

} // namespace HSL
