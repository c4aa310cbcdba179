// One application for every test, on the offscreen platform unless one was
// chosen, with the media service running and the build's plug-ins loaded once,
// as corvala itself starts.
#include "HostTestSupport.h"
#include "ML/FrameService.h"
#include "PluginLoader.h"

#include <QApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>

int main(int argc, char** argv) {
    if (!std::getenv("QT_QPA_PLATFORM")) {
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    }
    QApplication application(argc, argv);
    // A test that quits the host window must not end the tests' application.
    QApplication::setQuitOnLastWindowClosed(false);
    testing::InitGoogleTest(&argc, argv);
    const QTemporaryDir settingsFolder;
    host_test::UseSettingsFolder(settingsFolder.path().toStdString());
    // The untitled project's journal, under the data folder, is never the user's.
    const QTemporaryDir dataFolder;
    qputenv("XDG_DATA_HOME", dataFolder.path().toLocal8Bit());
    ML::FrameService::Start();
    int result = 0;
    {
        host::PluginSet plugins = host::LoadPlugins({CORVALA_PLUGIN_DIR});
        for (const host::PluginFailure& failure : plugins.failures) {
            std::cerr << "the build's plug-in " << failure.libraryPath
                      << " was not loaded: " << failure.problem << '\n';
        }
        host_test::BuildPlugins() = &plugins;
        result = RUN_ALL_TESTS();
        host_test::BuildPlugins() = nullptr;
    }
    ML::FrameService::Shutdown();
    return result;
}
