#pragma once

#include "CommandLine.h"

namespace host {

// Runs the host for the options once the QApplication exists: starts the media
// service, loads the plug-ins, opens the project, and either shows the window
// until it is closed or writes the screenshot. Returns the process's exit code
// (ExitCodes.h). Problems go to stderr; in the window they are shown in message
// boxes too.
int RunApplication(const LaunchOptions& options);

class HostWindow;

// The example project `--demo` opens.
std::string DemoProjectPath();

// Opens the project the options name: a project file (which joins the recent
// projects), or a fresh copy of the example project, unsaved so that saving
// asks for a file of its own and never writes the example. Problems go to
// stderr; returns an exit code (ExitCodes.h).
int OpenStartProject(HostWindow& window, const LaunchOptions& options);

} // namespace host
