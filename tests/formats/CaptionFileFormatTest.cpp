#include "captionformats/CaptionFileFormat.h"

#include "FormatSamples.h"

#include <gtest/gtest.h>

#include <map>

namespace {

using namespace captionformats;

// Every shared sample is recognised by its content, whatever its name.
TEST(DetectFormat, RecognisesEverySampleByItsContent) {
    SKIP_WITHOUT_SAMPLES();
    const std::map<std::string, CaptionFileFormat> folders{
        {"srt", CaptionFileFormat::kSrt},
        {"webvtt/other", CaptionFileFormat::kWebVtt},
        {"scc", CaptionFileFormat::kScc},
        {"ttml", CaptionFileFormat::kTtml},
        {"ebu-stl", CaptionFileFormat::kEbuStl}};
    std::size_t files = 0;
    for (const auto& [folder, format] : folders) {
        for (const auto& caseFolder : test::CaseFolders(test::SamplesDir() / folder)) {
            for (const auto& entry : std::filesystem::directory_iterator(caseFolder)) {
                const std::string extension = entry.path().extension().string();
                if (extension == ".json" || extension == ".608" ||
                    entry.path().filename() == "expected.srt" ||
                    entry.path().filename().string().ends_with(".expected.srt")) {
                    continue;
                }
                ++files;
                EXPECT_EQ(DetectFormat(test::ReadBytes(entry.path()), "renamed.txt"), format)
                    << entry.path();
            }
        }
    }
    EXPECT_GE(files, 30u);
}

TEST(DetectFormat, FallsBackOnTheExtensionOnlyWhenTheContentSaysNothing) {
    EXPECT_EQ(DetectFormat("1\n00:00:01,000 --> 00:00:02,000\nHi\n", "wrong.vtt"),
              CaptionFileFormat::kSrt);
    EXPECT_EQ(DetectFormat("<?xml version=\"1.0\"?>\n<!-- x -->\n<tt:tt xmlns:tt=\"x\"/>", "a.srt"),
              CaptionFileFormat::kTtml);
    EXPECT_EQ(DetectFormat("01:00:00;00\t9420 9420", "a.txt"), CaptionFileFormat::kScc);
    EXPECT_EQ(DetectFormat("", "empty.VTT"), CaptionFileFormat::kWebVtt);
    EXPECT_EQ(DetectFormat("<html/>", "page.DFXP"), CaptionFileFormat::kTtml);
    EXPECT_EQ(DetectFormat("nothing here", "notes.txt"), std::nullopt);
}

TEST(CaptionFileFormat, EveryFormatHasAReaderAndAWriterThatAgree) {
    for (CaptionFileFormat format : kAllCaptionFileFormats) {
        SCOPED_TRACE(std::string(FormatName(format)));
        EXPECT_EQ(FormatOfFileName("x." + std::string(FormatExtension(format))), format);
        const WriteResult written = MakeWriter(format)->Write({}, {});
        ASSERT_TRUE(written.Succeeded());
        EXPECT_EQ(DetectFormat(written.bytes, ""),
                  format == CaptionFileFormat::kSrt ? std::nullopt : std::optional(format))
            << "an empty SubRip file shows nothing";
        EXPECT_TRUE(MakeReader(format)->Read(written.bytes, {}).Succeeded());
    }
}

} // namespace
