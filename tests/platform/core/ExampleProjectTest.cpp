#include "BE/IProject.h"
#include "BE/ProjectFile.h"
#include "zelcaptioning/Caption.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>

namespace {

const std::string kDemoPath = std::string(CORVALA_EXAMPLES_DIR) + "/demo-project.json";

std::string FileContent(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

class ExampleProjectTest : public testing::Test {
protected:
    BE::OpenProjectResult opened = BE::ReadProjectFile(kDemoPath);

    KSL::InterfaceRef<BE::IMasterClip> Clip(std::size_t index) const {
        return opened.project->GetBin(0)->GetMasterClip(index);
    }
};

TEST_F(ExampleProjectTest, OpensAndSavesBackToTheSameBytes) {
    ASSERT_TRUE(opened.project) << opened.error->ToString();
    const BE::SerializedProject saved = BE::SerializeProject(opened.project);
    ASSERT_FALSE(saved.error);
    EXPECT_EQ(saved.bytes, FileContent(kDemoPath));
}

TEST_F(ExampleProjectTest, HoldsTheDemoClipsStreamsAndSequence) {
    ASSERT_TRUE(opened.project) << opened.error->ToString();
    ASSERT_EQ(opened.project->GetBinCount(), 1u);
    const auto bin = opened.project->GetBin(0);
    ASSERT_EQ(bin->GetMasterClipCount(), 2u);
    EXPECT_EQ(bin->GetSequenceCount(), 1u);
    const BE::MasterClipSettings settings = Clip(0)->GetSettings();
    EXPECT_EQ(settings.frameRect.Width(), 1920);
    EXPECT_EQ(settings.frameRect.Height(), 1080);
    EXPECT_EQ(settings.frameRate, zelmediatypes::kFrameRate_2997);
    EXPECT_EQ(settings.media.kind, BE::MediaSource::Kind::kGeneratedTestSource);
    EXPECT_EQ(Clip(1)->GetCaptioningStreamCount(), 0u);

    const auto closed = Clip(0)->FindCaptioningStream(zelcaptioning::kStreamFormat_CEA608);
    const auto open = Clip(0)->FindCaptioningStream(zelcaptioning::kStreamFormat_OpenCaptions);
    ASSERT_TRUE(closed && open);
    EXPECT_EQ(closed->GetCaptionCount(), 30u);
    EXPECT_EQ(open->GetCaptionCount(), 20u);
}

TEST_F(ExampleProjectTest, ClosedCaptionsUseTypesRowsItalicsAndColoursOnTheGrid) {
    ASSERT_TRUE(opened.project) << opened.error->ToString();
    const auto stream = Clip(0)->FindCaptioningStream(zelcaptioning::kStreamFormat_CEA608);
    std::set<zelcaptioning::CaptionType> types;
    std::set<std::int64_t> rows;
    bool italic = false;
    bool coloured = false;
    for (std::size_t i = 0; i < stream->GetCaptionCount(); ++i) {
        const auto caption = stream->GetCaption(i);
        types.insert(caption->GetCaptionType());
        for (std::uint64_t p = 0; p < caption->GetNumParagraphs(); ++p) {
            const auto paragraph = caption->GetCaptionTextParagraph(p);
            const zelcaptioning::Position position = paragraph->GetCaptionPosition();
            EXPECT_EQ((position.GetX() * 32).denominator(), 1) << "column off the grid";
            EXPECT_EQ((position.GetY() * 15).denominator(), 1) << "row off the grid";
            rows.insert((position.GetY() * 15).numerator());
            const auto& attributes = paragraph->GetCaptionTextSpan(0)->StyleAttributes();
            italic = italic || attributes.IsItalicized();
            coloured = coloured || attributes.textColor != zelcaptioning::kCaptioningColor_White;
        }
    }
    EXPECT_TRUE(types.count(zelcaptioning::kCaptionType_PopOn));
    EXPECT_TRUE(types.count(zelcaptioning::kCaptionType_RollUp2));
    EXPECT_GE(rows.size(), 3u);
    EXPECT_TRUE(italic);
    EXPECT_TRUE(coloured);
}

TEST_F(ExampleProjectTest, OpenCaptionsUseFontsSizesEdgesAnchorsAndFreePositions) {
    ASSERT_TRUE(opened.project) << opened.error->ToString();
    const auto stream = Clip(0)->FindCaptioningStream(zelcaptioning::kStreamFormat_OpenCaptions);
    std::set<std::string> fonts;
    std::set<float> sizes;
    std::set<zelcaptioning::AnchorID> anchors;
    std::set<zelcaptioning::TextSpanAttributes::TextEdge> edges;
    for (std::size_t i = 0; i < stream->GetCaptionCount(); ++i) {
        const auto paragraph = stream->GetCaption(i)->GetCaptionTextParagraph(0);
        const auto& attributes = paragraph->GetCaptionTextSpan(0)->StyleAttributes();
        fonts.insert(zelcore::ToUTF8(attributes.GetFontName()));
        sizes.insert(attributes.GetFontSize());
        edges.insert(attributes.GetTextEdge());
        anchors.insert(paragraph->GetParagraphStyleAttributes().GetAnchorID());
        EXPECT_NE(paragraph->GetCaptionPosition(), zelcaptioning::kPosition_Uninitialized);
    }
    EXPECT_TRUE(fonts.count("DejaVu Sans") && fonts.count("DejaVu Serif"));
    EXPECT_GE(sizes.size(), 4u);
    EXPECT_GE(edges.size(), 4u);
    EXPECT_TRUE(anchors.count(zelcaptioning::kAnchorID_Free));
    EXPECT_GE(anchors.size(), 5u);
}

} // namespace
