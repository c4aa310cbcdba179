#include "shortcuts/ShortcutDispatch.h"

#include "UIF/CommandRouting.h"
#include "UIF/ShortcutManager.h"
#include "commands/CommandChain.h"

#include <QKeySequence>

#include <algorithm>
#include <cstring>
#include <vector>

namespace platform::ui {

std::string CanonicalKeyText(const std::string& keyText) {
    const QKeySequence sequence =
        QKeySequence::fromString(QString::fromStdString(keyText), QKeySequence::PortableText);
    if (sequence.count() != 1 || sequence[0].key() == Qt::Key_unknown) {
        return {};
    }
    return sequence.toString(QKeySequence::PortableText).toStdString();
}

bool DispatchShortcut(const QKeyEvent& event) {
    UIF::ShortcutManager* manager = ExistingShortcutManager();
    const int key = event.key();
    if (!manager || key == Qt::Key_unknown || key == Qt::Key_Shift || key == Qt::Key_Control ||
        key == Qt::Key_Alt || key == Qt::Key_Meta) {
        return false;
    }
    const Qt::Key bindingKey = key == Qt::Key_Backtab ? Qt::Key_Tab : static_cast<Qt::Key>(key);
    const std::string pressed = QKeySequence(QKeyCombination(event.modifiers(), bindingKey))
                                    .toString(QKeySequence::PortableText)
                                    .toStdString();
    UIF::Commander* focused = UIF::FocusedCommander();
    std::vector<std::string> contexts;
    for (const UIF::CommandHandler* handler : CommandChain(focused)) {
        const char* name = handler->GetCommandContextName();
        if (name && *name && std::find(contexts.begin(), contexts.end(), name) == contexts.end()) {
            contexts.emplace_back(name);
        }
    }
    contexts.emplace_back("global");
    for (const std::string& context : contexts) {
        if (const UIF::CommandID command = manager->FindBoundCommand(context, pressed)) {
            return UIF::SendCommand(command, focused);
        }
    }
    return false;
}

} // namespace platform::ui
