#include "MZ/Project.h"

namespace MZ {
namespace {

KSL::InterfaceRef<BE::IProject>& CurrentProject() {
    static KSL::InterfaceRef<BE::IProject> project;
    return project;
}

} // namespace

KSL::InterfaceRef<BE::IProject> GetProject() {
    return CurrentProject();
}

void SetProject(KSL::InterfaceRef<BE::IProject> project) {
    CurrentProject() = std::move(project);
}

} // namespace MZ
