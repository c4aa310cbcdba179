#include "UIF/ShortcutManager.h"

#include "shortcuts/ShortcutDispatch.h"
#include "zelcore/Localization.h"
#include "zelui/ui/UI_NodeManager.h"

#include <algorithm>

namespace UIF {
namespace {

std::unique_ptr<ShortcutManager>& TheShortcutManager() {
    static std::unique_ptr<ShortcutManager> manager;
    return manager;
}

constexpr const char* kGlobalContext = "global";

} // namespace

CommandContext::CommandContext(std::string name, zelcore::UTF16String displayName)
    : name_(std::move(name))
    , displayName_(std::move(displayName)) {}

void CommandContext::DeclareCommand(const std::string& commandName, CommandID id, std::int32_t kind,
                                    const zelcore::UTF16String& description,
                                    const KSL::ImmutableString& defaultKey, bool bindingLocked) {
    DeclaredCommand declared{commandName,
                             id,
                             kind,
                             zelcore::Localize(zelcore::View(description)),
                             defaultKey.IsNull() ? std::string()
                                                 : platform::ui::CanonicalKeyText(defaultKey.Str()),
                             bindingLocked};
    auto existing = std::find_if(commands_.begin(), commands_.end(),
                                 [&](const DeclaredCommand& c) { return c.name == commandName; });
    if (existing != commands_.end()) {
        *existing = std::move(declared);
    } else {
        commands_.push_back(std::move(declared));
    }
}

const CommandContext::DeclaredCommand*
CommandContext::FindCommand(const std::string& commandName) const {
    auto found = std::find_if(commands_.begin(), commands_.end(),
                              [&](const DeclaredCommand& c) { return c.name == commandName; });
    return found == commands_.end() ? nullptr : &*found;
}

ShortcutManager::ShortcutManager() {
    contexts_.push_back(std::unique_ptr<CommandContext>(new CommandContext(
        kGlobalContext, zelcore::Localize("$$$/Corvala/Shortcuts/Global=Application"))));
    // Bound keys travel through the node manager's keyboard pipeline.
    zelui::ui::UI_NodeManager::Get();
}

ShortcutManager::~ShortcutManager() = default;

ShortcutManager* ShortcutManager::Instance() {
    std::unique_ptr<ShortcutManager>& manager = TheShortcutManager();
    if (!manager) {
        manager.reset(new ShortcutManager());
    }
    return manager.get();
}

void ShortcutManager::DestroyInstance() {
    TheShortcutManager().reset();
}

void ShortcutManager::RegisterCommandContext(ContextDeclarer declarer) {
    if (declarer) {
        declarers_.push_back(declarer);
        declarer(this);
    }
}

void ShortcutManager::BuildShortcutTables() {
    const std::vector<ContextDeclarer> declarers = declarers_;
    for (ContextDeclarer declarer : declarers) {
        declarer(this);
    }
}

CommandContext* ShortcutManager::GetContext(const std::string& name) {
    for (const auto& context : contexts_) {
        if (context->GetName() == name) {
            return context.get();
        }
    }
    return nullptr;
}

CommandContext* ShortcutManager::AddContext(const std::string& name,
                                            const zelcore::UTF16String& displayName) {
    zelcore::UTF16String localized = zelcore::Localize(zelcore::View(displayName));
    if (CommandContext* existing = GetContext(name)) {
        existing->displayName_ = std::move(localized);
        return existing;
    }
    contexts_.push_back(
        std::unique_ptr<CommandContext>(new CommandContext(name, std::move(localized))));
    return contexts_.back().get();
}

std::vector<ShortcutEntry> ShortcutManager::GetShortcutList() const {
    std::vector<ShortcutEntry> entries;
    for (const auto& context : contexts_) {
        for (const CommandContext::DeclaredCommand& command : context->GetCommands()) {
            entries.push_back({context->GetName(), context->GetDisplayName(), command.name,
                               command.id, command.description,
                               GetBoundKey(context->GetName(), command.name),
                               command.bindingLocked});
        }
    }
    return entries;
}

BindResult ShortcutManager::BindKey(const std::string& contextName, const std::string& commandName,
                                    const std::string& key) {
    CommandContext* context = GetContext(contextName);
    const CommandContext::DeclaredCommand* command =
        context ? context->FindCommand(commandName) : nullptr;
    if (!command) {
        return kBind_UnknownCommand;
    }
    if (command->bindingLocked) {
        return kBind_Locked;
    }
    const std::string canonical = platform::ui::CanonicalKeyText(key);
    if (!key.empty() && canonical.empty()) {
        return kBind_InvalidKey;
    }
    userBindings_[{contextName, commandName}] = canonical;
    return kBind_Done;
}

std::string ShortcutManager::GetBoundKey(const std::string& contextName,
                                         const std::string& commandName) const {
    if (auto bound = userBindings_.find({contextName, commandName}); bound != userBindings_.end()) {
        return bound->second;
    }
    for (const auto& context : contexts_) {
        if (context->GetName() == contextName) {
            const CommandContext::DeclaredCommand* command = context->FindCommand(commandName);
            return command ? command->defaultKey : std::string();
        }
    }
    return {};
}

CommandID ShortcutManager::FindBoundCommand(const std::string& contextName,
                                            const std::string& key) const {
    const std::string canonical = platform::ui::CanonicalKeyText(key);
    if (canonical.empty()) {
        return 0;
    }
    for (const auto& context : contexts_) {
        if (context->GetName() != contextName) {
            continue;
        }
        for (const CommandContext::DeclaredCommand& command : context->GetCommands()) {
            if (GetBoundKey(contextName, command.name) == canonical) {
                return command.id;
            }
        }
    }
    return 0;
}

} // namespace UIF

namespace platform::ui {

UIF::ShortcutManager* ExistingShortcutManager() {
    return UIF::TheShortcutManager().get();
}

} // namespace platform::ui
