#pragma once

#include "BE/IMasterClip.h"
#include "BE/IProjectItem.h"
#include "KSL/InterfaceRef.h"
#include "KSL/Message.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace BE {

// A clip's media and picture facts were replaced (IProject::SetMasterClipSettings).
// On the clip's station.
class MasterClipClipChangedMessage : public KSL::MessageOf<MasterClipClipChangedMessage> {
public:
    static constexpr const char* kTypeName = "BE::MasterClipClipChangedMessage";
    explicit MasterClipClipChangedMessage(KSL::InterfaceRef<IMasterClip> clip)
        : clip_(std::move(clip)) {}

    const KSL::InterfaceRef<IMasterClip>& GetMasterClip() const { return clip_; }

private:
    KSL::InterfaceRef<IMasterClip> clip_;
};

// Properties of project items changed (settings of clips and sequences). On
// MZ::kStation_Info.
class PropertiesChangedMessage : public KSL::MessageOf<PropertiesChangedMessage> {
public:
    static constexpr const char* kTypeName = "BE::PropertiesChangedMessage";
    explicit PropertiesChangedMessage(std::vector<KSL::InterfaceRef<IProjectItem>> items)
        : items_(std::move(items)) {}

    const std::vector<KSL::InterfaceRef<IProjectItem>>& GetItems() const { return items_; }
    bool Concerns(const IProjectItem* item) const {
        return std::any_of(items_.begin(), items_.end(),
                           [item](const auto& changed) { return changed.Get() == item; });
    }

private:
    std::vector<KSL::InterfaceRef<IProjectItem>> items_;
};

enum class ProjectStructureChangeKind { kAdded, kRemoved };

// A bin, master clip or sequence was added to or removed from the project. On
// the project's station.
class ProjectStructureChangedMessage : public KSL::MessageOf<ProjectStructureChangedMessage> {
public:
    static constexpr const char* kTypeName = "BE::ProjectStructureChangedMessage";
    ProjectStructureChangedMessage(KSL::InterfaceRef<IProjectItem> item,
                                   ProjectStructureChangeKind kind)
        : item_(std::move(item))
        , kind_(kind) {}

    const KSL::InterfaceRef<IProjectItem>& GetItem() const { return item_; }
    ProjectStructureChangeKind GetKind() const { return kind_; }

private:
    KSL::InterfaceRef<IProjectItem> item_;
    ProjectStructureChangeKind kind_;
};

// What the project's IUndoHistory answers changed (a step was added, undone or
// redone, or the clean state changed). On the project's station.
class UndoHistoryChangedMessage : public KSL::MessageOf<UndoHistoryChangedMessage> {
public:
    static constexpr const char* kTypeName = "BE::UndoHistoryChangedMessage";
};

} // namespace BE
