#pragma once

#include "zelcore/UTF16String.h"

#include <cstdint>
#include <vector>

namespace UIF {

using CommandID = std::uint32_t;

// The host's standard edit commands, sent by its Edit menu and shortcuts.
inline constexpr CommandID kCommand_Delete = 57632;
inline constexpr CommandID kCommand_Copy = 57634;
inline constexpr CommandID kCommand_Cut = 57635;
inline constexpr CommandID kCommand_Paste = 57637;
inline constexpr CommandID kCommand_SelectAll = 57642;
inline constexpr CommandID kCommand_Undo = 57643;
inline constexpr CommandID kCommand_Redo = 57644;
inline constexpr CommandID kCommand_Find = 11311;

class Command {
public:
    explicit Command(CommandID id)
        : id_(id) {}
    CommandID GetID() const { return id_; }

private:
    CommandID id_;
};

// Answers for commands and carries them out. Every operation returns whether
// this handler handles the command; a handler that does not lets the command
// travel on along the chain (see Commander).
class CommandHandler {
public:
    CommandHandler() = default;
    CommandHandler(const CommandHandler&) = delete;
    CommandHandler& operator=(const CommandHandler&) = delete;
    virtual ~CommandHandler() = default;

    // Asked before a menu item is shown or a shortcut or button runs. A handler
    // that handles the id sets enabled (and may set checked, mark and the menu
    // text) and returns true.
    virtual bool FindCommandStatus(CommandID id, bool& enabled, bool& checked, bool& mark,
                                   zelcore::UTF16String& text);

    // Asked instead of FindCommandStatus while a modal window disables the
    // application's menus: a handler returns true with enabled set to keep one
    // of its commands available there. By default every command is disabled.
    virtual bool UpdateCommandForDisableMenuAppStatus(CommandID id, bool& enabled);

    virtual bool ObeyCommand(const Command& command);

    // The keyboard-shortcut context (ShortcutManager) whose bindings apply
    // while this handler is in the focused chain; empty for none.
    virtual const char* GetCommandContextName() const;
};

// A link of the command chain. A command travels from the commander that has
// the focus through its own handling, then its attached handlers in the order
// they were attached, then its super commander, ending at the application's
// commander (ApplicationCommander). Commanders do not own each other.
class Commander : public CommandHandler {
public:
    explicit Commander(Commander* superCommander);
    ~Commander() override;

    Commander* GetSuperCommander() const { return superCommander_; }

    // The handler is asked after this commander and before its super commander.
    void AttachCommandHandler(CommandHandler* handler);
    void DetachCommandHandler(CommandHandler* handler);
    const std::vector<CommandHandler*>& GetAttachedCommandHandlers() const {
        return attachedHandlers_;
    }

private:
    Commander* superCommander_;
    std::vector<CommandHandler*> attachedHandlers_;
};

// The end of every chain; the host attaches its application-wide handlers here.
Commander* ApplicationCommander();

} // namespace UIF
