// corvala-captions run as a process: its exit codes, files and reports.
#include "captionformats/CaptionFileFormat.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/wait.h>

namespace {

using ::testing::HasSubstr;

struct ProcessRun {
    int exitCode = -1;
    std::string output; // standard output and standard error
};

ProcessRun RunCaptions(const std::string& arguments) {
    const std::string command =
        std::string(CORVALA_CAPTIONS_EXECUTABLE) + " " + arguments + " 2>&1";
    ProcessRun run;
    FILE* pipe = popen(command.c_str(), "r");
    std::array<char, 4096> buffer;
    while (std::size_t read = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
        run.output.append(buffer.data(), read);
    }
    const int status = pclose(pipe);
    run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
}

class CommandLine : public ::testing::Test {
protected:
    void SetUp() override {
        folder_ = std::filesystem::temp_directory_path() /
                  ("corvala-captions-test-" +
                   std::to_string(::testing::UnitTest::GetInstance()->random_seed()) + "-" +
                   ::testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::create_directories(folder_);
        Write("in.srt", "1\n00:00:01,000 --> 00:00:03,000\n<i>Hello</i> there\n\n"
                        "2\n00:00:04,000 --> 00:00:06,500\nSecond line\nand third\n");
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }
    void Write(const std::string& name, const std::string& text) const {
        std::ofstream(Path(name)) << text;
    }
    std::string Read(const std::string& name) const {
        std::ifstream file(Path(name));
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }

    std::filesystem::path folder_;
};

TEST_F(CommandLine, ConvertsByTheOutputNameOrByTo) {
    const ProcessRun vtt = RunCaptions("convert " + Path("in.srt") + " " + Path("out.vtt"));
    EXPECT_EQ(vtt.exitCode, 0) << vtt.output;
    EXPECT_THAT(Read("out.vtt"), HasSubstr("00:00:01.000 --> 00:00:03.000\n<i>Hello</i> there\n"));
    const ProcessRun scc = RunCaptions("convert " + Path("out.vtt") + " " + Path("out.txt") +
                                       " --to scc --drop-frame");
    EXPECT_EQ(scc.exitCode, 0) << scc.output;
    EXPECT_THAT(Read("out.txt"), HasSubstr("Scenarist_SCC V1.0"));
    EXPECT_THAT(Read("out.txt"), HasSubstr(";"));
    EXPECT_THAT(scc.output, HasSubstr("warning: "));
    const ProcessRun stl = RunCaptions("convert " + Path("in.srt") + " " + Path("out.stl") +
                                       " --frame-rate 30 --json");
    EXPECT_EQ(stl.exitCode, 0) << stl.output;
    EXPECT_EQ(Read("out.stl").substr(3, 8), "STL30.01");
    EXPECT_THAT(stl.output, HasSubstr("\"written\":true,\"captions\":2"));
}

// SubRip to WebVTT goes cue by cue when the cues are in time order, else
// through the caption model, which sorts them; both report the same way, with
// the input's warnings and the output's losses, and the same JSON.
TEST_F(CommandLine, ConvertsSubRipToWebVttInOrderOrNot) {
    const std::string cues[] = {
        "1\n00:00:04,000 --> 00:00:05,000\n<font color=\"#123456\">odd</font> <blink>x\n\n",
        "2\n00:00:01,000 --> 00:00:02,000\n{\\an8}top\n\n"};
    Write("ordered.srt", cues[1] + cues[0]);
    Write("unordered.srt", cues[0] + cues[1]);
    for (const char* name : {"ordered", "unordered"}) {
        SCOPED_TRACE(name);
        const ProcessRun run = RunCaptions("convert " + Path(std::string(name) + ".srt") + " " +
                                           Path(std::string(name) + ".vtt"));
        EXPECT_EQ(run.exitCode, 0) << run.output;
        EXPECT_EQ(Read(std::string(name) + ".vtt"),
                  "WEBVTT\n\n00:00:01.000 --> 00:00:02.000 line:0\ntop\n\n"
                  "00:00:04.000 --> 00:00:05.000\nodd x\n\n");
        EXPECT_THAT(run.output, HasSubstr("unsupported tag <blink> dropped"));
        EXPECT_THAT(run.output, HasSubstr("text colour other than a WebVTT colour class dropped "
                                          "in 1 caption"));
        EXPECT_THAT(run.output, HasSubstr("(SubRip, 2 captions)"));
    }
}

// An output file already there is written over: whatever it held before,
// longer or shorter, it ends up holding exactly the new conversion.
TEST_F(CommandLine, ConvertingOverAnOutputLeavesOnlyTheNewOne) {
    const std::string convert = "convert " + Path("in.srt") + " ";
    ASSERT_EQ(RunCaptions(convert + Path("fresh.vtt")).exitCode, 0);
    const std::string expected = Read("fresh.vtt");
    Write("longer.vtt", expected + std::string(100'000, 'x') + "\n");
    Write("shorter.vtt", "WEBVTT\n");
    for (const char* name : {"longer.vtt", "shorter.vtt"}) {
        SCOPED_TRACE(name);
        const ProcessRun run = RunCaptions(convert + Path(name));
        EXPECT_EQ(run.exitCode, 0) << run.output;
        EXPECT_EQ(Read(name), expected);
    }
    std::filesystem::create_directory(Path("folder.vtt"));
    const ProcessRun folder = RunCaptions(convert + Path("folder.vtt"));
    EXPECT_EQ(folder.exitCode, 1);
    EXPECT_THAT(folder.output, HasSubstr("folder.vtt: cannot be written"));
}

// A long conversion reaches its file in pieces as it goes. What reaches it
// must be exactly the conversion, also when the direct path has already handed
// pieces on before a cue out of time order sends it to the caption model.
TEST_F(CommandLine, LongConversionsWriteExactlyWhatTheLibraryWrites) {
    std::string inOrder;
    for (int cue = 0; cue < 3000; ++cue) {
        const int second = cue * 2;
        char timing[64];
        std::snprintf(timing, sizeof timing, "%02d:%02d:%02d,250 --> %02d:%02d:%02d,900\n",
                      second / 3600, second / 60 % 60, second % 60, second / 3600, second / 60 % 60,
                      second % 60);
        inOrder += std::to_string(cue + 1) + "\n" + timing + "Line <i>" + std::to_string(cue) +
                   "</i> & more\n\n";
    }
    const std::string backwards = inOrder + "3001\n00:00:00,100 --> 00:00:00,200\nEarly\n";
    for (const auto& [name, file] : {std::pair{"in-order", inOrder}, {"backwards", backwards}}) {
        SCOPED_TRACE(name);
        Write(std::string(name) + ".srt", file);
        const captionformats::ReadResult read =
            captionformats::MakeReader(captionformats::CaptionFileFormat::kSrt)->Read(file, {});
        const std::string expected =
            captionformats::MakeWriter(captionformats::CaptionFileFormat::kWebVtt)
                ->Write(read.captions, {})
                .bytes;
        ASSERT_GT(expected.size(), 150'000u); // several pieces
        // Over an older, longer file: nothing of it may remain.
        Write(std::string(name) + ".vtt", std::string(expected.size() + 1000, 'x'));
        const ProcessRun run = RunCaptions("convert " + Path(std::string(name) + ".srt") + " " +
                                           Path(std::string(name) + ".vtt"));
        EXPECT_EQ(run.exitCode, 0) << run.output;
        EXPECT_EQ(Read(std::string(name) + ".vtt"), expected);
    }
    // Nothing is left beside the outputs.
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_),
                            std::filesystem::directory_iterator()),
              5);
}

TEST_F(CommandLine, ExitsWithTwoOnUsageErrors) {
    EXPECT_EQ(RunCaptions("").exitCode, 2);
    EXPECT_EQ(RunCaptions("frobnicate x").exitCode, 2);
    EXPECT_EQ(RunCaptions("convert " + Path("in.srt")).exitCode, 2);
    const ProcessRun unknownName = RunCaptions("convert " + Path("in.srt") + " " + Path("out.xyz"));
    EXPECT_EQ(unknownName.exitCode, 2);
    EXPECT_THAT(unknownName.output, HasSubstr("name it with --to"));
    EXPECT_EQ(RunCaptions("convert " + Path("in.srt") + " x --to doc").exitCode, 2);
    const ProcessRun rate =
        RunCaptions("convert " + Path("in.srt") + " " + Path("out.scc") + " --frame-rate 25");
    EXPECT_EQ(rate.exitCode, 2);
    EXPECT_THAT(rate.output, HasSubstr("SCC runs at 29.97 frames per second"));
    EXPECT_EQ(RunCaptions("--help").exitCode, 0);
}

TEST_F(CommandLine, ExitsWithOneOnFileProblemsNamingWhere) {
    const ProcessRun missing = RunCaptions("info " + Path("missing.srt"));
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_THAT(missing.output, HasSubstr("missing.srt: cannot be opened"));
    Write("bad.scc", "Scenarist_SCC V1.0\n\n00:00:01:00\t9420 zz20 942f\n");
    Write("notes.txt", "just words\n");
    EXPECT_THAT(RunCaptions("info " + Path("notes.txt")).output,
                HasSubstr("not a caption file of a format we read"));
    const ProcessRun notVtt = RunCaptions("convert " + Path("notes.txt") + " " + Path("x.srt"));
    EXPECT_EQ(notVtt.exitCode, 1);
    const ProcessRun scc = RunCaptions("info " + Path("bad.scc"));
    EXPECT_EQ(scc.exitCode, 0) << "a skipped word is a warning, not an error";
    EXPECT_THAT(scc.output, HasSubstr("bad.scc:3:18: word \"zz20\" skipped: not four hex digits"));
}

TEST_F(CommandLine, ChecksAndDescribesFiles) {
    const ProcessRun clean = RunCaptions("check " + Path("in.srt"));
    EXPECT_EQ(clean.exitCode, 0) << clean.output;
    EXPECT_THAT(clean.output, HasSubstr("no problems found"));
    Write("busy.srt",
          "1\n00:00:01,000 --> 00:00:03,000\nA\n\n2\n00:00:02,000 --> 00:00:02,200\nB\n");
    const ProcessRun busy = RunCaptions("check " + Path("busy.srt") + " --min-duration 0.5 --json");
    EXPECT_EQ(busy.exitCode, 1);
    EXPECT_THAT(busy.output,
                HasSubstr("{\"kind\":\"short\",\"caption\":2,\"begin\":\"00:00:02.000\""));
    EXPECT_THAT(busy.output, HasSubstr("{\"kind\":\"overlap\",\"caption\":2"));
    const ProcessRun info = RunCaptions("info " + Path("in.srt") + " --json");
    EXPECT_EQ(info.exitCode, 0);
    EXPECT_THAT(info.output, HasSubstr("\"format\":\"SubRip\",\"streamFormat\":"));
    EXPECT_THAT(
        info.output,
        HasSubstr("\"captions\":2,\"firstBegin\":\"00:00:01.000\",\"lastEnd\":\"00:00:06.500\""));
}

} // namespace
