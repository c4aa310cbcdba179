#include "CommandLine.h"

#include <string_view>

namespace host {
namespace {

CommandLineParse Error(std::string message) {
    CommandLineParse parse;
    parse.error = std::move(message);
    return parse;
}

zelcaptioning::StreamFormat StreamFormatNamed(std::string_view name) {
    if (name == "608") {
        return zelcaptioning::kStreamFormat_CEA608;
    }
    if (name == "708") {
        return zelcaptioning::kStreamFormat_CEA708;
    }
    if (name == "teletext") {
        return zelcaptioning::kStreamFormat_Teletext;
    }
    if (name == "open") {
        return zelcaptioning::kStreamFormat_OpenCaptions;
    }
    return zelcaptioning::kStreamFormat_None;
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
        } else if (argument == "--stream") {
            std::string name;
            if (!takeValue(name) || (options.streamFormat = StreamFormatNamed(name)) ==
                                        zelcaptioning::kStreamFormat_None) {
                return Error("--stream needs a caption stream format: 608, 708, teletext or open");
            }
        } else if (argument == "--recover" || argument == "--discard-recovery") {
            const RecoveryRequest request =
                argument == "--recover" ? RecoveryRequest::kRecover : RecoveryRequest::kDiscard;
            if (options.recovery != RecoveryRequest::kAsk && options.recovery != request) {
                return Error("--recover and --discard-recovery cannot be combined");
            }
            options.recovery = request;
        } else if (argument == "--save-as") {
            if (!takeValue(options.saveAsPath)) {
                return Error("--save-as needs the path of the project file to write");
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
    if (options.streamFormat != zelcaptioning::kStreamFormat_None && options.clipName.empty()) {
        return Error("--stream opens a stream of the clip named by --select");
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
    return "usage: corvala [--demo | PROJECT] [--recover | --discard-recovery] [--panel NAME]\n"
           "               [--select CLIP [--stream FORMAT]] [--save-as PATH] [--screenshot PATH]\n"
           "\n"
           "  --demo             open an unsaved copy of the example project\n"
           "  PROJECT            open a project file (.json)\n"
           "  --recover          recover the project's unsaved changes from its edit journal\n"
           "                     without asking\n"
           "  --discard-recovery set the unsaved changes aside (renamed with the date)\n"
           "                     without asking\n"
           "  --panel NAME       open a panel at start, e.g. --panel captions\n"
           "  --select CLIP      select the master clip of that name at start\n"
           "  --stream FORMAT    open that clip's caption stream: 608, 708, teletext or open\n"
           "  --save-as PATH     save the project to PATH once it is open\n"
           "  --screenshot PATH  render the main window to a PNG file and exit (asks nothing:\n"
           "                     unsaved changes found stay as they are)\n"
           "  --help             show this text\n"
           "\n"
           "Plug-ins load from the build's plug-in folder and from the folders listed in\n"
           "CORVALA_PLUGIN_PATH (separated by ':').\n"
           "Exit codes: 0 success, 1 a file or named item could not be used, 2 a wrong command "
           "line.\n";
}

} // namespace host
