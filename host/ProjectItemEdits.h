#pragma once

#include "BE/IProject.h"
#include "BE/IProjectItem.h"
#include "KSL/InterfaceRef.h"

#include <QString>

// The project panel's edits of single items, each one undo step of the
// project named for what it does.
namespace host::ProjectItemEdits {

// Bins, master clips and sequences have names a person may change.
bool CanRename(const BE::IProjectItem& item);
// False, changing nothing, for an item without a name or a name that is
// empty once its outer spaces are gone.
bool Rename(BE::IProject& project, const KSL::InterfaceRef<BE::IProjectItem>& item,
            const QString& name);

// Master clips, caption streams and sequences can be deleted; bins cannot.
bool CanDelete(const BE::IProjectItem& item);
bool Delete(BE::IProject& project, const KSL::InterfaceRef<BE::IProjectItem>& item);

} // namespace host::ProjectItemEdits
