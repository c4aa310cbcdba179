#include "CommandActions.h"

#include "HostCommands.h"
#include "QtText.h"
#include "UIF/CommandRouting.h"
#include "UIF/ShortcutManager.h"

#include <QAction>
#include <QMenu>

namespace host {
namespace {

constexpr const char* kCommandProperty = "corvalaCommand";
constexpr const char* kTextProperty = "corvalaText";

QString BoundKeyText(UIF::CommandID id) {
    for (const GlobalCommand& command : GlobalCommands()) {
        if (command.id == id) {
            const std::string key =
                UIF::ShortcutManager::Instance()->GetBoundKey("global", command.name);
            return QString::fromStdString(key);
        }
    }
    return {};
}

} // namespace

QAction* AddCommandAction(QMenu& menu, UIF::CommandID id, const QString& text) {
    QAction* action = menu.addAction(text);
    action->setProperty(kCommandProperty, QVariant::fromValue(id));
    action->setProperty(kTextProperty, text);
    QObject::connect(action, &QAction::triggered, action, [id] { UIF::SendCommand(id); });
    return action;
}

UIF::CommandID CommandOfAction(const QAction& action) {
    return action.property(kCommandProperty).value<UIF::CommandID>();
}

void RefreshCommandActions(QMenu& menu) {
    for (QAction* action : menu.actions()) {
        if (QMenu* submenu = action->menu()) {
            RefreshCommandActions(*submenu);
            continue;
        }
        const UIF::CommandID id = CommandOfAction(*action);
        if (id == 0) {
            continue;
        }
        const UIF::CommandStatus status = UIF::FindCommandStatus(id);
        action->setEnabled(status.handled && status.enabled);
        QString text = status.text.empty() ? action->property(kTextProperty).toString()
                                           : ToQString(status.text);
        if (const QString key = BoundKeyText(id); !key.isEmpty()) {
            // Shown in the menu's shortcut column; the key itself reaches the
            // command through the shortcut manager, not through the menu.
            text += QLatin1Char('\t') + key;
        }
        action->setText(text);
    }
}

} // namespace host
