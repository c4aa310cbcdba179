#pragma once

#include "KSL/ImmutableString.h"
#include "UIF/Command.h"
#include "zelcore/UTF16String.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace UIF {

class ShortcutManager;

// A set of keyboard commands that apply while one kind of panel has the
// focus (a CommandHandler in the focused chain names it with
// GetCommandContextName), or everywhere for the "global" context.
class CommandContext {
public:
    struct DeclaredCommand {
        std::string name;
        CommandID id = 0;
        std::int32_t kind = 0;
        zelcore::UTF16String description;
        std::string defaultKey; // portable key text such as "Ctrl+Shift+B"; empty for none
        bool bindingLocked = false;
    };

    const std::string& GetName() const { return name_; }
    // Localised.
    const zelcore::UTF16String& GetDisplayName() const { return displayName_; }

    // Declares (or re-declares, keeping the user's binding) a command of the
    // context. defaultKey is the key text bound until the user binds another,
    // null for none. A locked binding cannot be changed by the user.
    void DeclareCommand(const std::string& commandName, CommandID id, std::int32_t kind,
                        const zelcore::UTF16String& description,
                        const KSL::ImmutableString& defaultKey, bool bindingLocked);

    const std::vector<DeclaredCommand>& GetCommands() const { return commands_; }
    const DeclaredCommand* FindCommand(const std::string& commandName) const;

private:
    friend class ShortcutManager;
    CommandContext(std::string name, zelcore::UTF16String displayName);

    std::string name_;
    zelcore::UTF16String displayName_;
    std::vector<DeclaredCommand> commands_;
};

// A row of the keyboard-shortcuts list.
struct ShortcutEntry {
    std::string contextName;
    zelcore::UTF16String contextDisplayName;
    std::string commandName;
    CommandID commandID = 0;
    zelcore::UTF16String description;
    std::string boundKey; // portable key text; empty when unbound
    bool bindingLocked = false;
};

enum BindResult : std::int32_t {
    kBind_Done = 0,
    kBind_UnknownCommand = 1,
    kBind_Locked = 2,
    kBind_InvalidKey = 3,
};

// Keyboard shortcuts (singleton). Modules register functions that declare
// their contexts and commands; the host runs them whenever it builds its
// shortcut tables. Keys the user binds are sent as commands through the
// focused command chain (after the keyboard filter nodes of
// zelui::ui::UI_NodeManager have seen them), asking FindCommandStatus first.
class ShortcutManager {
public:
    using ContextDeclarer = void (*)(ShortcutManager*);

    static ShortcutManager* Instance();
    // Forgets every context, declarer and binding (between tests).
    static void DestroyInstance();

    ShortcutManager(const ShortcutManager&) = delete;
    ShortcutManager& operator=(const ShortcutManager&) = delete;
    ~ShortcutManager();

    // Runs the declarer now and again at every BuildShortcutTables.
    void RegisterCommandContext(ContextDeclarer declarer);
    void BuildShortcutTables();

    // Null when no context of that name exists; "global" always exists.
    CommandContext* GetContext(const std::string& name);
    // Creates the context, or returns the existing one (its display name updated).
    CommandContext* AddContext(const std::string& name, const zelcore::UTF16String& displayName);

    // Contexts in the order they were added, commands in declaration order.
    std::vector<ShortcutEntry> GetShortcutList() const;

    // Binds portable key text ("Ctrl+B", "F5") to the command, replacing its
    // binding; an empty key unbinds it.
    BindResult BindKey(const std::string& contextName, const std::string& commandName,
                       const std::string& key);
    std::string GetBoundKey(const std::string& contextName, const std::string& commandName) const;

    // The command bound to the key in the context, or 0.
    CommandID FindBoundCommand(const std::string& contextName, const std::string& key) const;

private:
    ShortcutManager();

    std::vector<ContextDeclarer> declarers_;
    std::vector<std::unique_ptr<CommandContext>> contexts_;
    // User bindings by (context, command); they win over declared defaults.
    std::map<std::pair<std::string, std::string>, std::string> userBindings_;
};

} // namespace UIF
