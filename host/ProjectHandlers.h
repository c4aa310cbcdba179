#pragma once

#include "BE/IProject.h"
#include "HSL/Handler.h"
#include "KSL/InterfaceRef.h"

#include <memory>
#include <string>
#include <vector>

namespace host {

// The plug-ins' handlers of one project: one per registered handler factory,
// each named by its handler id (under that name it creates its tab views). The
// handlers are attached to the application's command chain, so they get the
// commands no view handles, and destroyed (in reverse order) with this object.
class ProjectHandlers {
public:
    // Failures of factories are collected in GetFailures, not thrown.
    explicit ProjectHandlers(const KSL::InterfaceRef<BE::IProject>& project);
    ProjectHandlers(const ProjectHandlers&) = delete;
    ProjectHandlers& operator=(const ProjectHandlers&) = delete;
    ~ProjectHandlers();

    const std::vector<std::unique_ptr<HSL::Handler>>& GetHandlers() const { return handlers_; }
    // "handler id: problem" for each factory that failed.
    const std::vector<std::string>& GetFailures() const { return failures_; }

    // Whether every handler lets the project close now.
    bool AllowClose() const;

private:
    std::vector<std::unique_ptr<HSL::Handler>> handlers_;
    std::vector<std::string> failures_;
};

} // namespace host
