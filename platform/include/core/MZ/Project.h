#pragma once

#include "BE/IProject.h"
#include "KSL/InterfaceRef.h"

namespace MZ {

// The project the host has open; empty when none is. The host sets it when it
// opens, creates or closes a project (and tests reset it to empty).
KSL::InterfaceRef<BE::IProject> GetProject();
void SetProject(KSL::InterfaceRef<BE::IProject> project);

} // namespace MZ
