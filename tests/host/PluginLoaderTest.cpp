// Loading plug-ins: the build's own, libraries that are refused with a reason
// while loading goes on, and a loaded plug-in's panel in the Window menu.
#include "PluginLoader.h"
#include "HSL/Handler.h"
#include "HSL/Ids.h"
#include "HSL/Module.h"
#include "HostTestSupport.h"
#include "PluginFolders.h"

#include <QDockWidget>
#include <QMainWindow>

#include <gmock/gmock.h>

#include <fstream>

namespace {

namespace fs = std::filesystem;
using host_test::HostWindowTest;
using testing::ElementsAre;
using testing::HasSubstr;

const zelcore::UTF16String kTestModuleID = u"Corvala.Test.PanelModule";
const zelcore::UTF16String kTestHandlerID = u"Corvala.Test.PanelHandler";

std::string TestPlugin(const std::string& folder, const std::string& name) {
    return std::string(CORVALA_TEST_PLUGIN_DIR) + "/" + folder + "/lib" + name + ".so";
}

// Builds a plug-in folder with one library of each way to fail, the loadable
// test panel plug-in, and a second folder with the same panel plug-in again.
struct BrokenPluginFolders {
    explicit BrokenPluginFolders(const host_test::TempFolder& temp)
        : first(temp.PathOf("plugins"))
        , second(temp.PathOf("more-plugins")) {
        fs::create_directories(first);
        fs::create_directories(second);
        std::ofstream(first + "/libGarbage.so") << "this is not a shared library";
        std::ofstream(first + "/notes.txt") << "not a library name at all";
        fs::copy_file(TestPlugin("other-sdk", "OtherSdkPlugin"), first + "/libOtherSdkPlugin.so");
        fs::copy_file(TestPlugin("not-a-plugin", "NotAPlugin"), first + "/libNotAPlugin.so");
        fs::copy_file(TestPlugin("panel", "TestPanelPlugin"), first + "/libTestPanelPlugin.so");
        fs::copy_file(TestPlugin("panel", "TestPanelPlugin"), second + "/libTestPanelPlugin.so");
    }
    std::string first;
    std::string second;
};

std::string ProblemOf(const host::PluginSet& plugins, const std::string& fileName) {
    for (const host::PluginFailure& failure : plugins.failures) {
        if (fs::path(failure.libraryPath).filename() == fileName) {
            return failure.problem;
        }
    }
    return "(loaded)";
}

TEST(PluginFoldersTest, TheBuildsFolderComesFirstThenTheVariablesEntries) {
    const auto folders = host::PluginFolders("/opt/corvala/bin", "/a/plugins::/b/plugins:");
    ASSERT_EQ(folders.size(), 3u);
    EXPECT_EQ(folders[1], "/a/plugins");
    EXPECT_EQ(folders[2], "/b/plugins");
    EXPECT_EQ(host::PluginFolders("/opt/corvala/bin", nullptr), std::vector{folders[0]});
    // The build's folder is found from where corvala was built.
    const fs::path executableFolder = fs::path(CORVALA_EXECUTABLE).parent_path();
    EXPECT_EQ(fs::weakly_canonical(host::PluginFolders(executableFolder.string(), nullptr)[0]),
              fs::weakly_canonical(CORVALA_PLUGIN_DIR));
}

TEST(PluginLoaderTest, TheBuildsCaptionsPlugInLoadsWithItsModuleAndHandler) {
    const host::PluginSet* plugins = host_test::BuildPlugins();
    ASSERT_NE(plugins, nullptr);
    EXPECT_TRUE(plugins->failures.empty()) << plugins->failures.front().problem;
    ASSERT_EQ(plugins->loadedLibraryPaths.size(), 1u);
    EXPECT_EQ(fs::path(plugins->loadedLibraryPaths[0]).filename(), "libHandlerCaptions.so");
    ASSERT_EQ(plugins->modules.size(), 1u);
    EXPECT_NE(HSL::Module::FindFactory(HSL::kCaptionsModuleID), nullptr);
    EXPECT_NE(HSL::Handler::FindFactory(HSL::kCaptionsHandlerID), nullptr);
}

class LoadedPluginTest : public HostWindowTest {
protected:
    void TearDown() override {
        HostWindowTest::TearDown();
        // Later tests run without the test panel's handler.
        HSL::Module::UnregisterFactory(kTestModuleID);
        HSL::Handler::UnregisterFactory(kTestHandlerID);
    }
};

TEST_F(LoadedPluginTest, RefusedLibrariesAreReportedAndTheRestStillLoad) {
    const BrokenPluginFolders folders(temp);
    const host::PluginSet plugins =
        host::LoadPlugins({temp.PathOf("missing"), folders.first, folders.second});

    EXPECT_THAT(ProblemOf(plugins, "libGarbage.so"), HasSubstr("libGarbage.so"));
    EXPECT_THAT(ProblemOf(plugins, "libNotAPlugin.so"), HasSubstr("does not export"));
    EXPECT_THAT(ProblemOf(plugins, "libOtherSdkPlugin.so"),
                HasSubstr("built for SDK version " + std::to_string(HSL::kSDKVersion + 998)));
    EXPECT_EQ(plugins.failures.size(), 3u);
    // The refused library's registration was taken back, unused.
    EXPECT_EQ(HSL::Module::FindFactory(u"Corvala.Test.OtherSdkModule"), nullptr);

    // The panel plug-in loads once, from the first folder that has it.
    EXPECT_THAT(plugins.loadedLibraryPaths, ElementsAre(folders.first + "/libTestPanelPlugin.so"));
    ASSERT_EQ(plugins.modules.size(), 1u);
    EXPECT_EQ(plugins.modules[0]->GetModulePath(),
              zelcore::ToUTF16(folders.first + "/libTestPanelPlugin.so"));
}

TEST_F(LoadedPluginTest, APlugInsPanelIsListedInTheWindowMenuAndOpensDocked) {
    const BrokenPluginFolders folders(temp);
    const host::PluginSet plugins = host::LoadPlugins({folders.second});
    ASSERT_EQ(plugins.modules.size(), 1u);
    // A project made after loading has the plug-in's handler, and so its panel.
    OpenDemo();
    QAction* entry = WindowMenuEntry("Test Panel");
    ASSERT_NE(entry, nullptr);
    EXPECT_FALSE(entry->isChecked());
    entry->trigger();

    QDockWidget* dock = DockTitled("Test Panel");
    ASSERT_NE(dock, nullptr);
    EXPECT_TRUE(dock->isVisible());
    EXPECT_NE(Window().GetMainWindow().dockWidgetArea(dock), Qt::NoDockWidgetArea);
    EXPECT_TRUE(WindowMenuEntry("Test Panel")->isChecked());
    // The host's own project panel is listed first.
    EXPECT_EQ(Window().GetWindowMenu().actions().front()->text(), "Project");
}

TEST(CorvalaPluginTest, ABrokenPlugInFolderIsReportedAndTheHostRunsWithoutIt) {
    host_test::TempFolder temp;
    const BrokenPluginFolders folders(temp);
    const std::string screenshot = temp.PathOf("shot.png");
    const auto run = host_test::RunCorvala(
        {"--demo", "--panel", "captions", "--screenshot", QString::fromStdString(screenshot)},
        {{"CORVALA_PLUGIN_PATH", QString::fromStdString(folders.first)}});
    EXPECT_EQ(run.exitCode, 0) << run.standardError.toStdString();
    const std::string errors = run.standardError.toStdString();
    EXPECT_THAT(errors, HasSubstr("plug-in " + folders.first + "/libGarbage.so was not loaded"));
    EXPECT_THAT(errors, HasSubstr("libOtherSdkPlugin.so was not loaded: built for SDK version"));
    EXPECT_THAT(errors, HasSubstr("libNotAPlugin.so was not loaded"));
    EXPECT_TRUE(fs::exists(screenshot));
}

} // namespace
