#include "ShortcutEdits.h"

#include "QtText.h"

#include <QKeySequence>
#include <QStringList>

namespace host {
namespace {

// The same key, however it was written.
std::string Normalized(const std::string& key) {
    return QKeySequence::fromString(QString::fromStdString(key), QKeySequence::PortableText)
        .toString(QKeySequence::PortableText)
        .toStdString();
}

} // namespace

QString ReadableCommandName(const UIF::ShortcutEntry& entry) {
    if (!entry.description.empty()) {
        return ToQString(entry.description);
    }
    QString name = QString::fromStdString(entry.commandName);
    for (const QString& prefix :
         {QStringLiteral("cmd."), QString::fromStdString(entry.contextName) + QLatin1Char('.')}) {
        if (name.startsWith(prefix)) {
            name.remove(0, prefix.size());
        }
    }
    QStringList words = name.split(QLatin1Char('.'), Qt::SkipEmptyParts);
    for (QString& word : words) {
        word[0] = word[0].toUpper();
    }
    return words.join(QLatin1Char(' '));
}

ShortcutEdits::ShortcutEdits() {
    UIF::ShortcutManager& manager = *UIF::ShortcutManager::Instance();
    manager.BuildShortcutTables();
    for (UIF::ShortcutEntry& entry : manager.GetShortcutList()) {
        const UIF::CommandContext* context = manager.GetContext(entry.contextName);
        const UIF::CommandContext::DeclaredCommand* declared =
            context ? context->FindCommand(entry.commandName) : nullptr;
        Row row{entry, ReadableCommandName(entry), declared ? declared->defaultKey : std::string(),
                entry.boundKey};
        rows_.push_back(std::move(row));
    }
}

void ShortcutEdits::SetKey(std::size_t row, const std::string& key) {
    if (row < rows_.size() && !rows_[row].entry.bindingLocked) {
        rows_[row].key = key.empty() ? std::string() : Normalized(key);
    }
}

void ShortcutEdits::ResetToDefaults() {
    for (Row& row : rows_) {
        if (!row.entry.bindingLocked) {
            row.key = row.defaultKey;
        }
    }
}

std::vector<std::size_t> ShortcutEdits::ClashesOf(std::size_t row) const {
    std::vector<std::size_t> clashes;
    const Row& asked = rows_.at(row);
    if (asked.key.empty()) {
        return clashes;
    }
    const std::string key = Normalized(asked.key);
    for (std::size_t other = 0; other < rows_.size(); ++other) {
        if (other != row && rows_[other].entry.contextName == asked.entry.contextName &&
            !rows_[other].key.empty() && Normalized(rows_[other].key) == key) {
            clashes.push_back(other);
        }
    }
    return clashes;
}

bool ShortcutEdits::HasClashes() const {
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        if (!ClashesOf(row).empty()) {
            return true;
        }
    }
    return false;
}

void ShortcutEdits::Apply() const {
    UIF::ShortcutManager& manager = *UIF::ShortcutManager::Instance();
    for (const Row& row : rows_) {
        if (row.key != row.entry.boundKey) {
            manager.BindKey(row.entry.contextName, row.entry.commandName, row.key);
        }
    }
}

} // namespace host
