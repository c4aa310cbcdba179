#pragma once

#include "UIF/Command.h"

#include <QString>

#include <functional>
#include <map>

namespace host {

// The host's answers for its commands, at the end of the application's command
// chain: each command is enabled and run by functions of the host window.
class HostCommandTable : public UIF::CommandHandler {
public:
    struct Entry {
        std::function<bool()> isEnabled;
        std::function<void()> run;
        // The menu text while enabled state is asked; null keeps the menu's own text.
        std::function<QString()> text;
    };

    void Add(UIF::CommandID id, Entry entry);

    bool FindCommandStatus(UIF::CommandID id, bool& enabled, bool& checked, bool& mark,
                           zelcore::UTF16String& text) override;
    bool ObeyCommand(const UIF::Command& command) override;

private:
    std::map<UIF::CommandID, Entry> entries_;
};

} // namespace host
