#include "AboutBox.h"
#include "Application.h"
#include "CommandLine.h"
#include "ExitCodes.h"

#include <QApplication>

#include <cstdlib>
#include <iostream>

int main(int argc, char** argv) {
    // Read before QApplication exists, so that usage errors need no display.
    const host::CommandLineParse parse =
        host::ParseCommandLine(std::vector<std::string>(argv + 1, argv + argc));
    if (parse.helpRequested) {
        std::cout << host::UsageText();
        return host::kExit_Success;
    }
    if (!parse.options) {
        std::cerr << "corvala: " << parse.error << "\n\n" << host::UsageText();
        return host::kExit_Usage;
    }
    // A screenshot needs no screen: render offscreen unless a platform was chosen.
    if (!parse.options->screenshotPath.empty() && !std::getenv("QT_QPA_PLATFORM")) {
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    }
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("corvala"));
    QApplication::setApplicationVersion(host::HostVersion());
    QApplication::setWindowIcon(host::ApplicationIcon());
    return host::RunApplication(*parse.options);
}
