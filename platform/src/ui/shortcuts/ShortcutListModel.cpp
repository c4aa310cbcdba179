#include "PlatformHost/HostAccess.h"

#include "UIF/ShortcutManager.h"
#include "input/QtConversions.h"

#include <vector>

namespace platform::ui {
namespace {

enum Column { kContext, kCommand, kDescription, kKey, kColumnCount };

// The rows are read when the model is made and again after each binding, so
// the list shows what the manager holds.
class ShortcutListModel : public QAbstractTableModel {
public:
    ShortcutListModel()
        : entries_(UIF::ShortcutManager::Instance()->GetShortcutList()) {}

    int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : static_cast<int>(entries_.size());
    }
    int columnCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : kColumnCount;
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
            return {};
        }
        switch (section) {
        case kContext:
            return Localized(u"$$$/Corvala/Shortcuts/Context=Panel");
        case kCommand:
            return Localized(u"$$$/Corvala/Shortcuts/Command=Command");
        case kDescription:
            return Localized(u"$$$/Corvala/Shortcuts/Description=Description");
        default:
            return Localized(u"$$$/Corvala/Shortcuts/Key=Shortcut");
        }
    }

    QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole)) {
            return {};
        }
        const UIF::ShortcutEntry& entry = entries_[static_cast<std::size_t>(index.row())];
        switch (index.column()) {
        case kContext:
            return ToQString(zelcore::View(entry.contextDisplayName));
        case kCommand:
            return QString::fromStdString(entry.commandName);
        case kDescription:
            return ToQString(zelcore::View(entry.description));
        default:
            return QKeySequence::fromString(QString::fromStdString(entry.boundKey),
                                            QKeySequence::PortableText)
                .toString(role == Qt::EditRole ? QKeySequence::PortableText
                                               : QKeySequence::NativeText);
        }
    }

    Qt::ItemFlags flags(const QModelIndex& index) const override {
        Qt::ItemFlags flags = QAbstractTableModel::flags(index);
        if (index.isValid() && index.column() == kKey &&
            !entries_[static_cast<std::size_t>(index.row())].bindingLocked) {
            flags |= Qt::ItemIsEditable;
        }
        return flags;
    }

    bool setData(const QModelIndex& index, const QVariant& value, int role) override {
        if (!index.isValid() || index.column() != kKey || role != Qt::EditRole) {
            return false;
        }
        const UIF::ShortcutEntry& entry = entries_[static_cast<std::size_t>(index.row())];
        const UIF::BindResult result = UIF::ShortcutManager::Instance()->BindKey(
            entry.contextName, entry.commandName, value.toString().toStdString());
        if (result != UIF::kBind_Done) {
            return false;
        }
        entries_ = UIF::ShortcutManager::Instance()->GetShortcutList();
        emit dataChanged(this->index(0, kKey), this->index(rowCount({}) - 1, kKey));
        return true;
    }

private:
    std::vector<UIF::ShortcutEntry> entries_;
};

} // namespace

std::unique_ptr<QAbstractTableModel> CreateShortcutListModel() {
    return std::make_unique<ShortcutListModel>();
}

} // namespace platform::ui
