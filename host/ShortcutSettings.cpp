#include "ShortcutSettings.h"

#include "UIF/ShortcutManager.h"

#include <QSettings>

namespace host {
namespace {

const QString kShortcutsGroup = QStringLiteral("shortcuts");

std::string DefaultKey(UIF::ShortcutManager& manager, const UIF::ShortcutEntry& entry) {
    const UIF::CommandContext* context = manager.GetContext(entry.contextName);
    const UIF::CommandContext::DeclaredCommand* command =
        context ? context->FindCommand(entry.commandName) : nullptr;
    return command ? command->defaultKey : std::string();
}

} // namespace

void SaveShortcutChanges(QSettings& settings) {
    UIF::ShortcutManager& manager = *UIF::ShortcutManager::Instance();
    // Changes of contexts not declared in this run are kept as they were.
    settings.beginGroup(kShortcutsGroup);
    for (const UIF::ShortcutEntry& entry : manager.GetShortcutList()) {
        const QString key = QStringLiteral("%1/%2").arg(QString::fromStdString(entry.contextName),
                                                        QString::fromStdString(entry.commandName));
        if (entry.boundKey == DefaultKey(manager, entry)) {
            settings.remove(key);
        } else {
            settings.setValue(key, QString::fromStdString(entry.boundKey));
        }
    }
    settings.endGroup();
}

void LoadShortcutChanges(QSettings& settings) {
    UIF::ShortcutManager& manager = *UIF::ShortcutManager::Instance();
    settings.beginGroup(kShortcutsGroup);
    for (const QString& context : settings.childGroups()) {
        settings.beginGroup(context);
        for (const QString& command : settings.childKeys()) {
            manager.BindKey(context.toStdString(), command.toStdString(),
                            settings.value(command).toString().toStdString());
        }
        settings.endGroup();
    }
    settings.endGroup();
}

} // namespace host
