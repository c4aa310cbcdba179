#include "HostCommandTable.h"

#include "QtText.h"

namespace host {

void HostCommandTable::Add(UIF::CommandID id, Entry entry) {
    entries_[id] = std::move(entry);
}

bool HostCommandTable::FindCommandStatus(UIF::CommandID id, bool& enabled, bool& checked,
                                         bool& mark, zelcore::UTF16String& text) {
    const auto found = entries_.find(id);
    if (found == entries_.end()) {
        return false;
    }
    enabled = found->second.isEnabled();
    checked = false;
    mark = false;
    if (found->second.text) {
        text = ToUTF16(found->second.text());
    }
    return true;
}

bool HostCommandTable::ObeyCommand(const UIF::Command& command) {
    const auto found = entries_.find(command.GetID());
    if (found == entries_.end() || !found->second.isEnabled()) {
        return false;
    }
    found->second.run();
    return true;
}

} // namespace host
