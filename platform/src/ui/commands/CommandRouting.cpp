#include "UIF/CommandRouting.h"

#include "commands/CommandChain.h"
#include "views/ViewImpl.h"
#include "zelui/ui/UI_NodeManager.h"

#include <QApplication>
#include <QWidget>

#include <algorithm>

namespace platform::ui {

std::vector<UIF::CommandHandler*> CommandChain(UIF::Commander* start) {
    std::vector<UIF::CommandHandler*> chain;
    auto add = [&chain](UIF::CommandHandler* handler) {
        if (std::find(chain.begin(), chain.end(), handler) == chain.end()) {
            chain.push_back(handler);
        }
    };
    for (UIF::Commander* commander = start; commander; commander = commander->GetSuperCommander()) {
        add(commander);
        for (UIF::CommandHandler* handler : commander->GetAttachedCommandHandlers()) {
            add(handler);
        }
    }
    UIF::Commander* application = UIF::ApplicationCommander();
    if (application && std::find(chain.begin(), chain.end(), application) == chain.end()) {
        for (UIF::CommandHandler* handler : CommandChain(application)) {
            add(handler);
        }
    }
    return chain;
}

} // namespace platform::ui

namespace UIF {

Commander* FocusedCommander() {
    for (QWidget* widget = QApplication::focusWidget(); widget; widget = widget->parentWidget()) {
        if (ViewBase* view = platform::ui::ViewOfWidget(widget)) {
            return view;
        }
    }
    return ApplicationCommander();
}

CommandStatus FindCommandStatus(CommandID id, Commander* start) {
    const zelui::ui::UI_NodeManager* nodes = zelui::ui::UI_NodeManager::Get();
    const bool menusDisabled = nodes && nodes->HasModalWindow();
    for (CommandHandler* handler : platform::ui::CommandChain(start ? start : FocusedCommander())) {
        CommandStatus status;
        const bool answered =
            menusDisabled ? handler->UpdateCommandForDisableMenuAppStatus(id, status.enabled)
                          : handler->FindCommandStatus(id, status.enabled, status.checked,
                                                       status.mark, status.text);
        if (answered) {
            status.handled = true;
            return status;
        }
    }
    return CommandStatus();
}

bool SendCommand(CommandID id, Commander* start) {
    Commander* from = start ? start : FocusedCommander();
    const CommandStatus status = FindCommandStatus(id, from);
    const zelui::ui::UI_NodeManager* nodes = zelui::ui::UI_NodeManager::Get();
    // Unanswered commands take the host's default status: enabled, unless a
    // modal window has disabled the menus.
    const bool enabled = status.handled ? status.enabled : !(nodes && nodes->HasModalWindow());
    if (!enabled) {
        return false;
    }
    const Command command(id);
    for (CommandHandler* handler : platform::ui::CommandChain(from)) {
        if (handler->ObeyCommand(command)) {
            return true;
        }
    }
    return false;
}

} // namespace UIF
