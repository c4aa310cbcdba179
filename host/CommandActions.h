#pragma once

#include "UIF/Command.h"

#include <QString>

class QAction;
class QMenu;

namespace host {

// Menu items that send a command along the focused command chain
// (UIF::SendCommand), like the command's shortcut does.
QAction* AddCommandAction(QMenu& menu, UIF::CommandID id, const QString& text);

// Asks the chain for the status of every command item of the menu and its
// submenus: enabled only when a handler answers and enables it, the text the
// handler gives (else the item's own), and the key bound in the "global"
// shortcut context. Menus call it as they open, for the state of that moment.
void RefreshCommandActions(QMenu& menu);

// The command of a command item, or 0.
UIF::CommandID CommandOfAction(const QAction& action);

} // namespace host
