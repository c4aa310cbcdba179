#include "CommandLine.h"
#include "ExitCodes.h"
#include "HostTestSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

namespace {

using host::LaunchOptions;
using host::ParseCommandLine;
using testing::HasSubstr;

TEST(CommandLineTest, ReadsTheProjectSourceAndStartOptions) {
    const auto none = ParseCommandLine({});
    ASSERT_TRUE(none.options);
    EXPECT_EQ(none.options->projectSource, LaunchOptions::ProjectSource::kNewProject);

    const auto demo = ParseCommandLine({"--demo", "--screenshot", "out.png", "--panel", "captions",
                                        "--select", "Clip A", "--stream", "open"});
    ASSERT_TRUE(demo.options) << demo.error;
    EXPECT_EQ(demo.options->projectSource, LaunchOptions::ProjectSource::kDemoProject);
    EXPECT_EQ(demo.options->screenshotPath, "out.png");
    EXPECT_EQ(demo.options->panelName, "captions");
    EXPECT_EQ(demo.options->clipName, "Clip A");
    EXPECT_EQ(demo.options->streamFormat, zelcaptioning::kStreamFormat_OpenCaptions);
    EXPECT_EQ(none.options->streamFormat, zelcaptioning::kStreamFormat_None);

    const auto file = ParseCommandLine({"--screenshot", "s.png", "my project.json"});
    ASSERT_TRUE(file.options) << file.error;
    EXPECT_EQ(file.options->projectSource, LaunchOptions::ProjectSource::kProjectFile);
    EXPECT_EQ(file.options->projectPath, "my project.json");

    const auto help = ParseCommandLine({"--demo", "--help"});
    EXPECT_TRUE(help.helpRequested);
    EXPECT_FALSE(help.options);
}

TEST(CommandLineTest, ReadsHowToTreatUnsavedChangesFound) {
    EXPECT_EQ(ParseCommandLine({"p.json"}).options->recovery, host::RecoveryRequest::kAsk);
    EXPECT_EQ(ParseCommandLine({"p.json", "--recover"}).options->recovery,
              host::RecoveryRequest::kRecover);
    const auto discard = ParseCommandLine({"--discard-recovery", "p.json", "--save-as", "q.json"});
    ASSERT_TRUE(discard.options) << discard.error;
    EXPECT_EQ(discard.options->recovery, host::RecoveryRequest::kDiscard);
    EXPECT_EQ(discard.options->saveAsPath, "q.json");
    EXPECT_EQ(ParseCommandLine({"--recover", "--discard-recovery"}).error,
              "--recover and --discard-recovery cannot be combined");
    EXPECT_EQ(ParseCommandLine({"--save-as"}).error,
              "--save-as needs the path of the project file to write");
}

TEST(CommandLineTest, RefusesWrongLinesNamingTheArgument) {
    struct Case {
        std::vector<std::string> arguments;
        std::string errorPart;
    };
    const std::vector<Case> cases{
        {{"--frobnicate"}, "unknown option '--frobnicate'"},
        {{"-x"}, "unknown option '-x'"},
        {{"--screenshot"}, "--screenshot needs"},
        {{"--screenshot", ""}, "--screenshot needs"},
        {{"--panel"}, "--panel needs"},
        {{"--demo", "--select"}, "--select needs"},
        {{"--demo", "--select", "A", "--stream", "609"}, "--stream needs a caption stream format"},
        {{"--demo", "--stream", "608"}, "the clip named by --select"},
        {{"a.json", "b.json"}, "'a.json' and 'b.json'"},
        {{"--demo", "a.json"}, "cannot be combined with 'a.json'"},
    };
    for (const Case& c : cases) {
        const auto parse = ParseCommandLine(c.arguments);
        EXPECT_FALSE(parse.options) << c.errorPart;
        EXPECT_FALSE(parse.helpRequested);
        EXPECT_THAT(parse.error, HasSubstr(c.errorPart));
    }
}

TEST(CorvalaExitCodeTest, UsageErrorsExitWithTwoAndPrintTheUsage) {
    const auto unknown = host_test::RunCorvala({"--frobnicate"});
    EXPECT_EQ(unknown.exitCode, host::kExit_Usage);
    EXPECT_THAT(unknown.standardError.toStdString(), HasSubstr("unknown option '--frobnicate'"));
    EXPECT_THAT(unknown.standardError.toStdString(), HasSubstr("usage: corvala"));

    const auto help = host_test::RunCorvala({"--help"});
    EXPECT_EQ(help.exitCode, host::kExit_Success);
    EXPECT_THAT(help.standardOutput.toStdString(), HasSubstr("usage: corvala"));
}

TEST(CorvalaExitCodeTest, UnusableFilesAndNamesExitWithOneSayingWhy) {
    host_test::TempFolder temp;
    const std::string screenshot = temp.PathOf("shot.png");

    const auto missing =
        host_test::RunCorvala({QString::fromStdString(temp.PathOf("missing.json")), "--screenshot",
                               QString::fromStdString(screenshot)});
    EXPECT_EQ(missing.exitCode, host::kExit_Failure);
    EXPECT_THAT(missing.standardError.toStdString(),
                HasSubstr("cannot open the project " + temp.PathOf("missing.json")));

    const std::string broken = temp.PathOf("broken.json");
    std::ofstream(broken)
        << "{\n  \"format\": \"corvala-project\",\n  \"version\": 1,\n  \"bins\": [\n";
    const auto damaged = host_test::RunCorvala(
        {QString::fromStdString(broken), "--screenshot", QString::fromStdString(screenshot)});
    EXPECT_EQ(damaged.exitCode, host::kExit_Failure);
    EXPECT_THAT(damaged.standardError.toStdString(), HasSubstr("line 5"));

    const auto noClip = host_test::RunCorvala(
        {"--demo", "--select", "No Such Clip", "--screenshot", QString::fromStdString(screenshot)});
    EXPECT_EQ(noClip.exitCode, host::kExit_Failure);
    EXPECT_THAT(noClip.standardError.toStdString(),
                HasSubstr("no master clip named 'No Such Clip'"));

    const auto noStream =
        host_test::RunCorvala({"--demo", "--select", host_test::kPlainClip, "--stream", "608",
                               "--screenshot", QString::fromStdString(screenshot)});
    EXPECT_EQ(noStream.exitCode, host::kExit_Failure);
    EXPECT_THAT(noStream.standardError.toStdString(), HasSubstr("has no CEA-608"));

    const auto noPanel = host_test::RunCorvala(
        {"--demo", "--panel", "nopanel", "--screenshot", QString::fromStdString(screenshot)});
    EXPECT_EQ(noPanel.exitCode, host::kExit_Failure);
    EXPECT_THAT(noPanel.standardError.toStdString(), HasSubstr("no panel named 'nopanel'"));

    const auto unwritable = host_test::RunCorvala(
        {"--demo", "--screenshot", QString::fromStdString(temp.PathOf("no/such/folder/s.png"))});
    EXPECT_EQ(unwritable.exitCode, host::kExit_Failure);
    EXPECT_THAT(unwritable.standardError.toStdString(), HasSubstr("could not be written"));
    EXPECT_FALSE(std::filesystem::exists(screenshot));
}

} // namespace
