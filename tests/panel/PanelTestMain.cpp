// One application for every test, offscreen, with the media service running
// and the captions module made from the plug-in code linked into the tests
// (its factories registered as the library's load registers them).
#include "HSL/Ids.h"
#include "HSL/Module.h"
#include "HostTestSupport.h"
#include "ML/FrameService.h"
#include "PluginLoader.h"

#include <QApplication>

#include <gtest/gtest.h>

#include <cstdlib>

int main(int argc, char** argv) {
    if (!std::getenv("QT_QPA_PLATFORM")) {
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    }
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    testing::InitGoogleTest(&argc, argv);
    ML::FrameService::Start();
    int result = 0;
    {
        host::PluginSet plugins;
        plugins.modules.emplace_back(
            HSL::Module::FindFactory(HSL::kCaptionsModuleID)(u"libHandlerCaptions (linked)"));
        host_test::BuildPlugins() = &plugins;
        result = RUN_ALL_TESTS();
        host_test::BuildPlugins() = nullptr;
    }
    ML::FrameService::Shutdown();
    return result;
}
