#pragma once

#include "CommandLine.h"

namespace host {

// Runs the host for the options once the QApplication exists: starts the media
// service, loads the plug-ins, opens the project, and either shows the window
// until it is closed or writes the screenshot. Returns the process's exit code
// (ExitCodes.h). Problems go to stderr; in the window they are shown in message
// boxes too.
int RunApplication(const LaunchOptions& options);

// The example project `--demo` opens.
std::string DemoProjectPath();

} // namespace host
