#include "CommandLine.h"

#include <string_view>

namespace host {
namespace {

CommandLineParse Error(std::string message) {
    CommandLineParse parse;
    parse.error = std::move(message);
    return parse;
}

} // namespace

CommandLineParse ParseCommandLine(const std::vector<std::string>& arguments) {
    LaunchOptions options;
    bool demoRequested = false;
    std::vector<std::string> projectPaths;
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        const std::string_view argument = arguments[index];
        auto takeValue = [&](std::string& into) {
            if (index + 1 >= arguments.size() || arguments[index + 1].empty()) {
                return false;
            }
            into = arguments[++index];
            return true;
        };
        if (argument == "--help" || argument == "-h") {
            CommandLineParse parse;
            parse.helpRequested = true;
            return parse;
        }
        if (argument == "--demo") {
            demoRequested = true;
        } else if (argument == "--screenshot") {
            if (!takeValue(options.screenshotPath)) {
                return Error("--screenshot needs the path of the PNG file to write");
            }
        } else if (argument == "--panel") {
            if (!takeValue(options.panelName)) {
                return Error("--panel needs the name of a panel, e.g. --panel captions");
            }
        } else if (argument == "--select") {
            if (!takeValue(options.clipName)) {
                return Error("--select needs the name of a master clip");
            }
        } else if (argument.size() > 1 && argument.front() == '-') {
            return Error("unknown option '" + std::string(argument) + "'");
        } else {
            projectPaths.emplace_back(argument);
        }
    }
    if (projectPaths.size() > 1) {
        return Error("one project file at a time, got '" + projectPaths[0] + "' and '" +
                     projectPaths[1] + "'");
    }
    if (demoRequested && !projectPaths.empty()) {
        return Error("--demo opens the example project; it cannot be combined with '" +
                     projectPaths[0] + "'");
    }
    if (demoRequested) {
        options.projectSource = LaunchOptions::ProjectSource::kDemoProject;
    } else if (!projectPaths.empty()) {
        options.projectSource = LaunchOptions::ProjectSource::kProjectFile;
        options.projectPath = projectPaths[0];
    }
    CommandLineParse parse;
    parse.options = std::move(options);
    return parse;
}

std::string UsageText() {
    return "usage: corvala [--demo | PROJECT] [--panel NAME] [--select CLIP] [--screenshot PATH]\n"
           "\n"
           "  --demo             open an unsaved copy of the example project\n"
           "  PROJECT            open a project file (.json)\n"
           "  --panel NAME       open a panel at start, e.g. --panel captions\n"
           "  --select CLIP      select the master clip of that name at start\n"
           "  --screenshot PATH  render the main window to a PNG file and exit\n"
           "  --help             show this text\n"
           "\n"
           "Plug-ins load from the build's plug-in folder and from the folders listed in\n"
           "CORVALA_PLUGIN_PATH (separated by ':').\n"
           "Exit codes: 0 success, 1 a file or named item could not be used, 2 a wrong command "
           "line.\n";
}

} // namespace host
