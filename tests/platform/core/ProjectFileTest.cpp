#include "BE/ProjectFile.h"

#include "BE/IProject.h"
#include "KSL/StationUtils.h"
#include "MZ/Captioning.h"
#include "MZ/Stations.h"
#include "ModelTestSupport.h"
#include "PlatformTestSupport.h"
#include "zelcaptioning/Caption.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <limits>
#include <sstream>

namespace {

using platform_test::MakeCaption;
using platform_test::Seconds;
using zelcaptioning::CaptionPtr;
using zelcaptioning::Rational;

std::string Serialized(const KSL::InterfaceRef<BE::IProject>& project) {
    const BE::SerializedProject serialized = BE::SerializeProject(project);
    EXPECT_FALSE(serialized.error) << serialized.error->ToString();
    return serialized.bytes;
}

KSL::InterfaceRef<BE::IProject> Parsed(const std::string& bytes) {
    BE::OpenProjectResult opened = BE::ParseProject(bytes);
    EXPECT_FALSE(opened.error) << opened.error->ToString();
    return opened.project;
}

std::string ErrorOf(const std::string& bytes) {
    const BE::OpenProjectResult opened = BE::ParseProject(bytes);
    EXPECT_FALSE(opened.project);
    return opened.error ? opened.error->ToString() : "no error";
}

std::string FileContent(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

// The caption's first span's attributes; the span itself is the stream's own.
zelcaptioning::CaptionTextSpanPtr FirstSpan(const CaptionPtr& caption) {
    return caption->GetCaptionTextParagraph(0)->GetCaptionTextSpan(0);
}

// A project using every attribute a file holds, most of them away from their defaults.
KSL::InterfaceRef<BE::IProject> RichProject() {
    platform_test::ClipFixture fixture = platform_test::MakeClipFixture();
    BE::IProject& project = *fixture.project;
    BE::MasterClipSettings relinked = platform_test::TestClipSettings("Relinked \"clip\" ✓");
    relinked.kind = BE::MasterClipKind::kMerged;
    relinked.media = {BE::MediaSource::Kind::kFile, "/media/take 2.mov"};
    relinked.frameRect = {-4, 2, 716, 482};
    relinked.frameRate = zelmediatypes::kFrameRate_5994;
    relinked.pixelAspectRatio = zelmediatypes::PixelAspectRatio(10, 11);
    relinked.duration = zelmediatypes::TickTime(std::numeric_limits<std::int64_t>::max());
    relinked.videoTimeDisplay = zelmediatypes::kTimeDisplay_Frames;
    project.SetMasterClipSettings(fixture.clip, relinked, BE::UndoMode::kWithoutUndoStep);

    auto closed = project.AddCaptioningStream(fixture.clip, zelcaptioning::kStreamFormat_CEA608,
                                              BE::UndoMode::kWithoutUndoStep);
    auto open = project.AddCaptioningStream(fixture.clip, zelcaptioning::kStreamFormat_OpenCaptions,
                                            BE::UndoMode::kWithoutUndoStep);
    MZ::Captioning closedCaptions(closed);
    // 2^53 + 1 ticks: a double would round it.
    CaptionPtr exact = MakeCaption(platform_test::Ticks(9007199254740993), Seconds(99999), "exact");
    exact->SetCaptionType(zelcaptioning::kCaptionType_RollUp3);
    closedCaptions.AddCaption(exact);
    closedCaptions.AddCaption(MakeCaption(Seconds(-2), Seconds(-1), "negative\nsecond line"));

    CaptionPtr styled = MakeCaption(Seconds(1), Seconds(3), "styled\nfree line");
    styled->SetCaptionType(zelcaptioning::kCaptionType_Open);
    auto paragraph = styled->GetCaptionTextParagraph(0);
    zelcaptioning::TextSpanAttributes attributes;
    attributes.SetFontName(zelcore::ToUTF16("DejaVu Serif"));
    attributes.SetFontSize(0.1f);
    attributes.SetBolded(true);
    attributes.SetItalicized(true);
    attributes.SetUnderlined(true);
    attributes.SetTextEdge(zelcaptioning::TextSpanAttributes::kTextEdge_DropShadow);
    attributes.edgeWidth = 1.0f / 3.0f;
    attributes.textColor = {0.25f, 0.5f, 0.75f, 0.8f};
    attributes.backgroundColor = {0.0f, 0.0f, 0.0f, 0.5f};
    attributes.edgeColor = {1.0f, 0.0f, 1e-7f, 1.0f};
    paragraph->AppendCaptionTextSpan(zelcaptioning::CaptionTextSpanPtr(
        new zelcaptioning::CaptionTextSpan(zelcore::ToUTF16(" ∑ second span"), attributes)));
    zelcaptioning::ParagraphStyleAttributes style;
    style.SetTextAlignment(zelcaptioning::kTextAlignment_Right);
    style.SetAnchorID(zelcaptioning::kAnchorID_TopLeft);
    paragraph->SetParagraphStyleAttributes(style);
    paragraph->SetCaptionPosition({Rational(1, 3), Rational(-7, 1000000000000LL)});
    paragraph->SetMeasuredLineSize(0, 31);
    style.SetAnchorID(zelcaptioning::kAnchorID_Free);
    styled->GetCaptionTextParagraph(1)->SetParagraphStyleAttributes(style);
    MZ::Captioning(open).AddCaption(styled);

    BE::SequenceSettings sequence;
    sequence.name = zelcore::ToUTF16("Edit 1");
    sequence.frameRect = {0, 0, 1280, 720};
    sequence.frameRate = zelmediatypes::kFrameRate_25;
    sequence.videoTimeDisplay = zelmediatypes::kTimeDisplay_Unknown;
    // A display number a later build may define is kept as it is.
    sequence.audioTimeDisplay = static_cast<zelmediatypes::TimeDisplay>(4242);
    sequence.frameAlignment = BE::FrameAlignment::kFree;
    project.AddSequence(fixture.bin, sequence, BE::UndoMode::kWithoutUndoStep);
    auto empty = project.AddBin(zelcore::ToUTF16(""), BE::UndoMode::kWithoutUndoStep);
    project.AddSequence(empty, BE::SequenceSettings{}, BE::UndoMode::kWithoutUndoStep);
    return fixture.project;
}

void ExpectSameCaption(const zelcaptioning::Caption& a, const zelcaptioning::Caption& b) {
    EXPECT_EQ(a.GetBeginTime(), b.GetBeginTime());
    EXPECT_EQ(a.GetEndTime(), b.GetEndTime());
    EXPECT_EQ(a.GetCaptionType(), b.GetCaptionType());
    ASSERT_EQ(a.GetNumParagraphs(), b.GetNumParagraphs());
    for (std::uint64_t p = 0; p < a.GetNumParagraphs(); ++p) {
        const auto pa = a.GetCaptionTextParagraph(p);
        const auto pb = b.GetCaptionTextParagraph(p);
        EXPECT_EQ(pa->GetParagraphStyleAttributes(), pb->GetParagraphStyleAttributes());
        EXPECT_EQ(pa->GetCaptionPosition(), pb->GetCaptionPosition());
        EXPECT_EQ(pa->HasMeasuredLineSize(), pb->HasMeasuredLineSize());
        EXPECT_EQ(pa->GetParagraphLineWidth(), pb->GetParagraphLineWidth());
        EXPECT_EQ(pa->GetParagraphLineHeight(), pb->GetParagraphLineHeight());
        ASSERT_EQ(pa->GetNumSpans(), pb->GetNumSpans());
        for (std::uint64_t s = 0; s < pa->GetNumSpans(); ++s) {
            EXPECT_EQ(pa->GetCaptionTextSpan(s)->GetCaptionText(),
                      pb->GetCaptionTextSpan(s)->GetCaptionText());
            EXPECT_EQ(pa->GetCaptionTextSpan(s)->StyleAttributes(),
                      pb->GetCaptionTextSpan(s)->StyleAttributes());
        }
    }
}

void ExpectSameProject(BE::IProject& a, BE::IProject& b) {
    ASSERT_EQ(a.GetBinCount(), b.GetBinCount());
    for (std::size_t i = 0; i < a.GetBinCount(); ++i) {
        const auto binA = a.GetBin(i);
        const auto binB = b.GetBin(i);
        EXPECT_EQ(binA->GetName(), binB->GetName());
        ASSERT_EQ(binA->GetSequenceCount(), binB->GetSequenceCount());
        for (std::size_t s = 0; s < binA->GetSequenceCount(); ++s) {
            EXPECT_TRUE(binA->GetSequence(s)->GetSettings() == binB->GetSequence(s)->GetSettings());
        }
        ASSERT_EQ(binA->GetMasterClipCount(), binB->GetMasterClipCount());
        for (std::size_t c = 0; c < binA->GetMasterClipCount(); ++c) {
            const auto clipA = binA->GetMasterClip(c);
            const auto clipB = binB->GetMasterClip(c);
            EXPECT_TRUE(clipA->GetSettings() == clipB->GetSettings());
            ASSERT_EQ(clipA->GetCaptioningStreamCount(), clipB->GetCaptioningStreamCount());
            for (std::size_t s = 0; s < clipA->GetCaptioningStreamCount(); ++s) {
                const auto streamA = clipA->GetCaptioningStream(s);
                const auto streamB = clipB->GetCaptioningStream(s);
                EXPECT_EQ(streamA->GetStreamFormat(), streamB->GetStreamFormat());
                ASSERT_EQ(streamA->GetCaptionCount(), streamB->GetCaptionCount());
                for (std::size_t k = 0; k < streamA->GetCaptionCount(); ++k) {
                    ExpectSameCaption(*streamA->GetCaption(k), *streamB->GetCaption(k));
                }
            }
        }
    }
}

TEST(ProjectFileTest, OpenGivesBackEveryAttributeAndSavingAgainTheSameBytes) {
    const KSL::InterfaceRef<BE::IProject> original = RichProject();
    const std::string saved = Serialized(original);
    const KSL::InterfaceRef<BE::IProject> opened = Parsed(saved);
    ASSERT_TRUE(opened);
    ExpectSameProject(*original, *opened);
    EXPECT_EQ(Serialized(opened), saved);
    // Floats are written in their shortest form, 64-bit values in strings.
    EXPECT_NE(saved.find("\"fontSize\":0.1,"), std::string::npos);
    EXPECT_NE(saved.find("\"begin\":\"9007199254740993\""), std::string::npos);
}

TEST(ProjectFileTest, OpenedProjectHasACleanEmptyHistoryAndAnnouncedNothing) {
    const std::string saved = Serialized(RichProject());
    platform_test::RecordingListener activation;
    KSL::StationUtils::AddListener(MZ::kStation_MasterClipActivation, &activation);
    KSL::StationUtils::AddListener(MZ::kStation_Info, &activation);
    const KSL::InterfaceRef<BE::IProject> opened = Parsed(saved);
    EXPECT_TRUE(activation.received.empty());
    EXPECT_EQ(opened->GetUndoHistory().GetStepCount(), 0u);
    EXPECT_TRUE(opened->GetUndoHistory().IsClean());
    // The opened model is a working one: its streams take edits and undo them.
    const auto stream = opened->GetBin(0)->GetMasterClip(0)->GetCaptioningStream(0);
    MZ::Captioning(stream).RemoveCaption(stream->GetCaption(0), true);
    opened->GetUndoHistory().Undo();
    EXPECT_EQ(Serialized(opened), saved);
}

TEST(ProjectFileTest, SaveWritesTheFileAndMarksTheHistoryClean) {
    QTemporaryDir dir;
    const std::string path = dir.filePath("project.json").toStdString();
    const KSL::InterfaceRef<BE::IProject> project = RichProject();
    project->AddBin(zelcore::ToUTF16("Unsaved"), BE::UndoMode::kAsUndoStep);
    ASSERT_FALSE(project->GetUndoHistory().IsClean());
    const auto error = BE::WriteProjectFile(project, path);
    ASSERT_FALSE(error) << error->ToString();
    EXPECT_TRUE(project->GetUndoHistory().IsClean());
    EXPECT_EQ(FileContent(path), Serialized(project));
    const BE::OpenProjectResult reopened = BE::ReadProjectFile(path);
    ASSERT_TRUE(reopened.project);
    EXPECT_EQ(reopened.project->GetBinCount(), project->GetBinCount());
}

TEST(ProjectFileTest, AFailedSaveLeavesTheOldFileIntactAndTheHistoryUnclean) {
    QTemporaryDir dir;
    const std::string path = dir.filePath("project.json").toStdString();
    const KSL::InterfaceRef<BE::IProject> project = RichProject();
    ASSERT_FALSE(BE::WriteProjectFile(project, path));
    const std::string before = FileContent(path);

    const auto stream = project->GetBin(0)->GetMasterClip(0)->GetCaptioningStream(1);
    CaptionPtr broken(new zelcaptioning::Caption(*stream->GetCaption(0)));
    auto attributes = FirstSpan(broken)->GetTextSpanStyleAttributes();
    attributes.SetFontSize(std::nanf(""));
    FirstSpan(broken)->SetTextSpanStyleAttributes(attributes);
    MZ::Captioning(stream).ReplaceCaption(stream->GetCaption(0), broken, true,
                                          zelcore::ToUTF16(""));
    const auto error = BE::WriteProjectFile(project, path);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->ToString(),
              "bins[0].clips[0].streams[1].captions[0].paragraphs[0].spans[0].fontSize: "
              "a project file holds only finite numbers");
    EXPECT_EQ(FileContent(path), before);
    EXPECT_FALSE(project->GetUndoHistory().IsClean());

    project->GetUndoHistory().Undo();
    const std::string unwritable = dir.filePath("missing/folder/project.json").toStdString();
    const auto folderError = BE::WriteProjectFile(project, unwritable);
    ASSERT_TRUE(folderError);
    EXPECT_EQ(folderError->location, unwritable);
    EXPECT_FALSE(BE::ReadProjectFile(unwritable).project);
}

// A small valid file: one clip with a CEA-608 stream of two captions, the second
// with three spans, and one sequence.
std::string SmallFile() {
    platform_test::ClipFixture fixture = platform_test::MakeClipFixture();
    auto stream = fixture.project->AddCaptioningStream(
        fixture.clip, zelcaptioning::kStreamFormat_CEA608, BE::UndoMode::kWithoutUndoStep);
    MZ::Captioning captions(stream);
    captions.AddCaption(MakeCaption(Seconds(1), Seconds(2), "first"));
    CaptionPtr second = MakeCaption(Seconds(3), Seconds(4), "a");
    for (const char* text : {"b", "c"}) {
        second->GetCaptionTextParagraph(0)->AppendCaptionTextSpan(zelcaptioning::CaptionTextSpanPtr(
            new zelcaptioning::CaptionTextSpan(zelcore::ToUTF16(text), {})));
    }
    captions.AddCaption(second);
    fixture.project->AddSequence(fixture.bin, BE::SequenceSettings{},
                                 BE::UndoMode::kWithoutUndoStep);
    return Serialized(fixture.project);
}

// The text with the occurrence'th (from 0) appearance of `from` replaced.
std::string Replaced(std::string text, const std::string& from, const std::string& to,
                     int occurrence = 0) {
    std::size_t at = text.find(from);
    for (int i = 0; i < occurrence && at != std::string::npos; ++i) {
        at = text.find(from, at + 1);
    }
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

TEST(ProjectFileTest, EachCaptionTakesOneLineWithoutItsDefaultMembers) {
    const std::string file = SmallFile();
    EXPECT_NE(file.find("\n                                {\"begin\":\"254016000000\","
                        "\"end\":\"508032000000\",\"paragraphs\":[{\"spans\":[{\"text\":"
                        "\"first\"}]}],\"type\":\"popOn\"},\n"),
              std::string::npos)
        << file;
    EXPECT_NE(file.find("\n    \"version\": 3\n"), std::string::npos);
}

// Version 1 wrote every member, null for a line never placed or measured.
TEST(ProjectFileTest, VersionOneFilesOpenAndSaveAsTheCurrentVersion) {
    const std::string versionOne = R"({"format": "corvala-project", "version": 1, "bins": [{
        "name": "Bin", "sequences": [], "clips": [{
            "name": "Clip", "kind": "single", "media": {"kind": "testSource", "path": ""},
            "frameRect": {"left": 0, "top": 0, "right": 1920, "bottom": 1080},
            "frameRate": "30000/1001", "pixelAspectRatio": "1/1", "duration": "0",
            "streams": [{"format": "CEA-608", "captions": [{
                "begin": "5", "end": "9", "type": "rollUp2", "paragraphs": [{
                    "alignment": "center", "anchor": 7, "position": null, "measuredSize": null,
                    "spans": [{"text": "plain", "fontName": "", "fontSize": 0, "bold": false,
                               "italic": true, "underline": false, "textEdge": "none",
                               "edgeWidth": 0, "textColor": [1, 1, 0, 1],
                               "backgroundColor": [0, 0, 0, 0], "edgeColor": [0, 0, 0, 0]}]}]}]}]}]}]})";
    const KSL::InterfaceRef<BE::IProject> opened = Parsed(versionOne);
    ASSERT_TRUE(opened);
    const CaptionPtr caption =
        opened->GetBin(0)->GetMasterClip(0)->GetCaptioningStream(0)->GetCaption(0);
    CaptionPtr expected = MakeCaption(platform_test::Ticks(5), platform_test::Ticks(9), "plain");
    expected->SetCaptionType(zelcaptioning::kCaptionType_RollUp2);
    zelcaptioning::TextSpanAttributes attributes;
    attributes.SetItalicized(true);
    attributes.textColor = {1.0f, 1.0f, 0.0f, 1.0f};
    FirstSpan(expected)->SetTextSpanStyleAttributes(attributes);
    ExpectSameCaption(*caption, *expected);
    const std::string saved = Serialized(opened);
    EXPECT_NE(saved.find("\"version\": 3"), std::string::npos);
    EXPECT_NE(saved.find("{\"italic\":true,\"text\":\"plain\",\"textColor\":[1,1,0,1]}"),
              std::string::npos)
        << saved;
}

TEST(ProjectFileTest, SyntaxErrorsNameLineAndColumn) {
    EXPECT_EQ(ErrorOf(""), "line 1, column 1: illegal value");
    EXPECT_EQ(ErrorOf("{\n    \"format\": \"corvala-project\",\n    \"version\": 1,,\n}"),
              "line 3, column 19: unterminated object");
    const std::string file = SmallFile();
    const std::string truncated = file.substr(0, file.find("\"spans\""));
    const std::size_t lines =
        static_cast<std::size_t>(std::count(truncated.begin(), truncated.end(), '\n'));
    const std::size_t column = truncated.size() - truncated.rfind('\n');
    EXPECT_EQ(ErrorOf(truncated), "line " + std::to_string(lines + 1) + ", column " +
                                      std::to_string(column) + ": unterminated object");
}

// A text may hold a UTF-16 unit that is half a pair only: the file writes it
// as an escape, and opening reads it as U+FFFD, a state that then saves alike.
TEST(ProjectFileTest, UnpairedSurrogatesOpenAsReplacementsAndHugeWholeNumbersFailInPlace) {
    const std::string file = Replaced(SmallFile(), "\"text\":\"first\"", "\"text\":\"a\\ud800b\"");
    const KSL::InterfaceRef<BE::IProject> opened = Parsed(file);
    ASSERT_TRUE(opened);
    const std::string saved = Serialized(opened);
    EXPECT_NE(saved.find("\"text\":\"a\xEF\xBF\xBD"
                         "b\""),
              std::string::npos);
    EXPECT_EQ(Serialized(Parsed(saved)), saved);
    // The whole number is wrong: the place is just past it, on the version's line.
    const std::size_t versionLine =
        1 + static_cast<std::size_t>(
                std::count(file.begin(), file.begin() + file.find("\"version\""), '\n'));
    EXPECT_EQ(ErrorOf(Replaced(file, "\"version\": 3", "\"version\": 99999999999999999999")),
              "line " + std::to_string(versionLine) + ", column 36: whole number beyond 64 bits");
}

TEST(ProjectFileTest, WrongValuesNameTheirMemberPath) {
    const std::string file = SmallFile();
    const std::string caption1 = "bins[0].clips[0].streams[0].captions[1]";
    const std::string span2 = caption1 + ".paragraphs[0].spans[2]";
    // Members holding their defaults are left out: the broken ones are put in.
    const auto inSpan2 = [&file](const std::string& member) {
        return Replaced(file, "{\"text\":\"c\"}", "{" + member + ",\"text\":\"c\"}");
    };
    const auto inParagraph = [&file](const std::string& member) {
        return Replaced(file, "{\"spans\":[{\"text\":\"a\"}",
                        "{" + member + ",\"spans\":[{\"text\":\"a\"}");
    };
    const struct {
        std::string broken;
        std::string error;
    } cases[] = {
        {"[]", "top level: expected an object"},
        {Replaced(file, "corvala-project", "other"), "format: expected \"corvala-project\""},
        {Replaced(file, "\"version\": 3", "\"version\": 4"),
         "version: version 4 is newer than this build reads (3)"},
        {Replaced(file, "\"bins\"", "\"bons\""), "bins: missing"},
        {inSpan2("\"fontSize\":\"big\""), span2 + ".fontSize: expected a number"},
        {inSpan2("\"fontSize\":1e39"),
         span2 + ".fontSize: number beyond the range of a 32-bit float"},
        {inSpan2("\"textEdge\":\"glow\""), span2 + ".textEdge: unknown name \"glow\""},
        {inSpan2("\"bold\":0"), span2 + ".bold: expected true or false"},
        {inParagraph("\"anchor\":12"),
         caption1 + ".paragraphs[0].anchor: expected a whole number from 0 to 9"},
        {inParagraph("\"measuredSize\":{\"width\":5,\"height\":0}"),
         caption1 + ".paragraphs[0].measuredSize.height: expected a whole number from 1 to "
                    "9007199254740992"},
        {inParagraph("\"position\":{\"x\":\"1/0\",\"y\":\"1/2\"}"),
         caption1 + ".paragraphs[0].position.x: expected \"numerator/denominator\" with a positive "
                    "denominator, within 64 bits"},
        {Replaced(file, "\"begin\":\"", "\"begin\":\"x", 1),
         caption1 + ".begin: expected a whole number in a string, within 64 bits"},
        {Replaced(file, "\"begin\":\"", "\"begin\":\"-", 1),
         caption1 + ".begin: begins before the caption before it"},
        {Replaced(file, "\"type\":\"popOn\"", "\"type\":\"scroll\"", 1),
         caption1 + ".type: unknown name \"scroll\""},
        {Replaced(file, "\"format\": \"CEA-608\"", "\"format\": \"SRT\""),
         "bins[0].clips[0].streams[0].format: unknown name \"SRT\""},
        {Replaced(file, "\"frameRate\": \"30000/1001\"", "\"frameRate\": \"1000000007/1\""),
         "bins[0].clips[0].frameRate: not a frame rate: it must be positive and a frame must last "
         "whole ticks"},
        {Replaced(file, "\"path\": \"\"", "\"path\": \"/a.mov\""),
         "bins[0].clips[0].media.path: a generated test source has no file path"},
        {Replaced(file, "\"videoTimeDisplay\": 103", "\"videoTimeDisplay\": 1.5"),
         "bins[0].sequences[0].videoTimeDisplay: expected a whole number from -2147483648 to "
         "2147483647"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ErrorOf(c.broken), c.error);
    }
}

TEST(ProjectFileTest, ColoursAndStreamsAreCheckedAsAWhole) {
    const std::string file = SmallFile();
    const std::string threeComponents =
        Replaced(file, "{\"text\":\"first\"}", "{\"textColor\":[1,1,1],\"text\":\"first\"}");
    EXPECT_EQ(ErrorOf(threeComponents), "bins[0].clips[0].streams[0].captions[0].paragraphs[0]"
                                        ".spans[0].textColor: expected [red, green, blue, alpha]");

    const std::size_t streamsAt = file.find("\"streams\": [");
    const std::size_t streamStart = file.find('{', streamsAt);
    const std::size_t streamsEnd = file.find("\n                    ]", streamStart);
    const std::string stream = file.substr(streamStart, streamsEnd - streamStart);
    const std::string twice = file.substr(0, streamsEnd) + ",\n" + stream + file.substr(streamsEnd);
    EXPECT_EQ(ErrorOf(twice),
              "bins[0].clips[0].streams[1].format: the clip has a stream of this format already");
}

} // namespace
