#pragma once

#include "RecoveryPrompt.h"
#include "zelcaptioning/StreamFormat.h"

#include <optional>
#include <string>
#include <vector>

namespace host {

// What the command line asks the host to do at start.
struct LaunchOptions {
    enum class ProjectSource { kNewProject, kDemoProject, kProjectFile };

    ProjectSource projectSource = ProjectSource::kNewProject;
    std::string projectPath; // kProjectFile only
    // Render the main window to this PNG and exit; empty to run interactively.
    std::string screenshotPath;
    // A panel to open at start, by its short name ("captions").
    std::string panelName;
    // A master clip to select at start, by its name.
    std::string clipName;
    // Unsaved changes of the project found at start (--recover, --discard-recovery).
    RecoveryRequest recovery = RecoveryRequest::kAsk;
    // Save the project to this path once it is open (and recovered); empty for none.
    std::string saveAsPath;
    // A caption stream of that clip to open at start; none when not asked.
    zelcaptioning::StreamFormat streamFormat = zelcaptioning::kStreamFormat_None;
};

struct CommandLineParse {
    std::optional<LaunchOptions> options; // empty for --help and for errors
    bool helpRequested = false;
    std::string error; // one line, naming the argument; empty unless the line is wrong
};

// Reads the arguments after the program name. Qt's own options (e.g. -platform)
// are taken out by QApplication before this sees them.
CommandLineParse ParseCommandLine(const std::vector<std::string>& arguments);

// The usage text printed for --help and after an error.
std::string UsageText();

} // namespace host
