#include "ProjectItemEdits.h"

#include "KSL/Exception.h"
#include "QtText.h"

namespace host::ProjectItemEdits {

bool CanRename(const BE::IProjectItem& item) {
    return item.GetItemKind() != BE::ProjectItemKind::kCaptioningStream;
}

bool Rename(BE::IProject& project, const KSL::InterfaceRef<BE::IProjectItem>& item,
            const QString& name) {
    const QString trimmed = name.trimmed();
    if (!item || !CanRename(*item) || trimmed.isEmpty()) {
        return false;
    }
    project.RenameItem(item, ToUTF16(trimmed), BE::UndoMode::kAsUndoStep);
    return true;
}

bool CanDelete(const BE::IProjectItem& item) {
    return item.GetItemKind() != BE::ProjectItemKind::kBin;
}

bool Delete(BE::IProject& project, const KSL::InterfaceRef<BE::IProjectItem>& item) {
    if (!item) {
        return false;
    }
    switch (item->GetItemKind()) {
    case BE::ProjectItemKind::kMasterClip:
        project.RemoveMasterClip(item.QueryInterface<BE::IMasterClip>(), BE::UndoMode::kAsUndoStep);
        return true;
    case BE::ProjectItemKind::kCaptioningStream:
        project.RemoveCaptioningStream(item.QueryInterface<BE::ICaptioningStream>(),
                                       BE::UndoMode::kAsUndoStep);
        return true;
    case BE::ProjectItemKind::kSequence:
        project.RemoveSequence(item.QueryInterface<BE::ISequence>(), BE::UndoMode::kAsUndoStep);
        return true;
    case BE::ProjectItemKind::kBin:
        break;
    }
    return false;
}

} // namespace host::ProjectItemEdits
