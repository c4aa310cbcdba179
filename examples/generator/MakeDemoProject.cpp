// Writes the demo project, examples/demo-project.json: a 1920x1080 29.97 fps
// test-source clip with a CEA-608 stream (pop-on and roll-up captions on the
// 32x15 grid) and an open-caption stream (fonts, sizes, colours, edges, anchors
// and free positions), a second clip without captions, and one sequence.
// Usage: make_demo_project <output path>

#include "BE/IProject.h"
#include "BE/ProjectFile.h"
#include "MZ/Captioning.h"
#include "zelcaptioning/Caption.h"

#include <cstdio>
#include <string>
#include <vector>

namespace {

using namespace zelcaptioning;
using zelmediatypes::TickTime;

TickTime Frames(std::int64_t frames) {
    return zelmediatypes::kFrameRate_2997.FrameDuration() * frames;
}

struct Line {
    const char* text;
    bool italic;
    CaptioningColor color;
};

constexpr CaptioningColor kYellow{1.0f, 1.0f, 0.0f, 1.0f};
constexpr CaptioningColor kCyan{0.0f, 1.0f, 1.0f, 1.0f};
constexpr CaptioningColor kGreen{0.0f, 1.0f, 0.0f, 1.0f};

// One line of closed captions: white unless coloured, on an opaque black box,
// placed at a grid row and column.
CaptionTextParagraphPtr GridLine(const Line& line, int row, int column) {
    TextSpanAttributes attributes;
    attributes.textColor = line.color;
    attributes.backgroundColor = kCaptioningColor_Black;
    attributes.SetItalicized(line.italic);
    CaptionTextParagraphPtr paragraph(new CaptionTextParagraph);
    paragraph->AppendCaptionTextSpan(
        CaptionTextSpanPtr(new CaptionTextSpan(zelcore::ToUTF16(line.text), attributes)));
    ParagraphStyleAttributes style;
    style.SetTextAlignment(kTextAlignment_Left);
    paragraph->SetParagraphStyleAttributes(style);
    paragraph->SetCaptionPosition({Rational(column, 32), Rational(row, 15)});
    return paragraph;
}

void AddClosedCaptions(const KSL::InterfaceRef<BE::ICaptioningStream>& stream) {
    const CaptioningColor white = kCaptioningColor_White;
    const std::vector<std::vector<Line>> captions = {
        {{"[GULLS CRYING]", true, white}},
        {{"MARA: The boats go out", false, white}, {"before first light.", false, white}},
        {{"Every morning, rain or not.", false, white}},
        {{"REPORTER: How long have you", false, kYellow}, {"worked this harbour?", false, kYellow}},
        {{"MARA: Thirty-one years.", false, white}},
        {{"My father had the berth", false, white}, {"before me.", false, white}},
        {{"[ENGINE STARTS]", true, white}},
        {{"And his father before him.", false, white}},
        {{"REPORTER: What has changed?", false, kYellow}},
        {{"MARA: The fish are further", false, white}, {"out now.", false, white}},
        {{"We used to find them", false, white}, {"right past the breakwater.", false, white}},
        {{"Now it's an hour, sometimes", false, white},
         {"two, before we", false, white},
         {"drop a single line.", false, white}},
        {{"[WAVES AGAINST THE HULL]", true, white}},
        {{"REPORTER: And the quotas?", false, kYellow}},
        {{"MARA: Ha. Don't get me", false, white}, {"started on the quotas.", false, white}},
        {{"\u266A Heave away, my", true, kCyan}, {"bully boys \u266A", true, kCyan}},
        {{"That's Tomas. He sings", false, white}, {"when the nets come in.", false, white}},
        {{"Badly.", false, white}},
        {{"TOMAS: I heard that!", false, kGreen}},
        {{"MARA: You were meant to.", false, white}},
        {{"[LAUGHTER]", true, white}},
        {{"The young ones don't stay.", false, white}},
        {{"They go to the city,", false, white}},
        {{"and who can blame them?", false, white}},
        {{"REPORTER: Will you stay?", false, kYellow}},
        {{"MARA: Where would I go?", false, white}},
        {{"The sea knows me.", false, white}},
        {{"I'm not sure the city would.", false, white}},
        {{"[BELL RINGS IN THE DISTANCE]", true, white}},
        {{"That's the tide turning.", false, white}, {"Come on, Tomas!", false, white}},
    };
    MZ::Captioning captioning(stream);
    for (std::size_t i = 0; i < captions.size(); ++i) {
        CaptionPtr caption(new Caption);
        const std::int64_t beginFrame = 30 + static_cast<std::int64_t>(i) * 105;
        caption->SetBeginTime(Frames(beginFrame));
        caption->SetEndTime(Frames(beginFrame + 90));
        // The first two thirds pop on; the rest roll up in two- and three-row windows.
        const bool rollUp = i >= 20;
        caption->SetCaptionType(!rollUp
                                    ? kCaptionType_PopOn
                                    : (i % 2 == 0 ? kCaptionType_RollUp2 : kCaptionType_RollUp3));
        const std::vector<Line>& lines = captions[i];
        // Pop-on captions sit at the bottom, or at the top when a speaker is
        // off screen; roll-up captions grow upwards from row 14.
        const int lastRow = !rollUp && i % 7 == 3 ? 1 + static_cast<int>(lines.size()) : 14;
        for (std::size_t l = 0; l < lines.size(); ++l) {
            const int row = lastRow - static_cast<int>(lines.size() - 1 - l);
            const int column = rollUp ? 2 : 4 + static_cast<int>(i % 3) * 2;
            caption->AppendCaptionTextParagraph(GridLine(lines[l], row, column));
        }
        captioning.AddCaption(caption);
    }
}

struct OpenLine {
    const char* text;
    const char* font;
    float size;
    CaptioningColor color;
    TextSpanAttributes::TextEdge edge;
    float edgeWidth;
    AnchorID anchor;
    TextAlignmentType alignment;
};

void AddOpenCaptions(const KSL::InterfaceRef<BE::ICaptioningStream>& stream) {
    const CaptioningColor white = kCaptioningColor_White;
    const CaptioningColor amber{1.0f, 0.75f, 0.2f, 1.0f};
    const CaptioningColor sky{0.55f, 0.8f, 1.0f, 1.0f};
    using Edge = TextSpanAttributes;
    const OpenLine lines[] = {
        {"Port Aldane, 5:40 a.m.", "DejaVu Serif", 48.0f, white, Edge::kTextEdge_DropShadow, 2.0f,
         0, kTextAlignment_Left},
        {"The boats go out before first light.", "DejaVu Sans", 44.0f, white,
         Edge::kTextEdge_Uniform, 3.0f, 7, kTextAlignment_Center},
        {"Every morning, rain or not.", "DejaVu Sans", 44.0f, white, Edge::kTextEdge_Uniform, 3.0f,
         7, kTextAlignment_Center},
        {"Mara Ellison", "DejaVu Sans", 56.0f, amber, Edge::kTextEdge_Raised, 1.5f, 6,
         kTextAlignment_Left},
        {"Harbour pilot, 31 years", "DejaVu Serif", 36.0f, white, Edge::kTextEdge_None, 0.0f, 6,
         kTextAlignment_Left},
        {"My father had the berth before me.", "DejaVu Sans", 44.0f, white, Edge::kTextEdge_Uniform,
         3.0f, 7, kTextAlignment_Center},
        {"The fish are further out now.", "DejaVu Sans", 44.0f, white, Edge::kTextEdge_Uniform,
         3.0f, 7, kTextAlignment_Center},
        {"An hour, sometimes two.", "DejaVu Sans", 44.0f, sky, Edge::kTextEdge_Uniform, 3.0f, 7,
         kTextAlignment_Center},
        {"Catch per trip, 1990-2024", "DejaVu Sans Mono", 40.0f, white, Edge::kTextEdge_Depressed,
         1.0f, 2, kTextAlignment_Right},
        {"Don't get me started on the quotas.", "DejaVu Sans", 44.0f, white,
         Edge::kTextEdge_Uniform, 3.0f, 7, kTextAlignment_Center},
        {"\u266A Heave away, my bully boys \u266A", "DejaVu Serif", 44.0f, sky,
         Edge::kTextEdge_DropShadow, 2.0f, 9, kTextAlignment_Left},
        {"Tomas Riel, deckhand", "DejaVu Sans", 52.0f, amber, Edge::kTextEdge_Raised, 1.5f, 8,
         kTextAlignment_Right},
        {"I heard that!", "DejaVu Sans", 60.0f, white, Edge::kTextEdge_Uniform, 4.0f, 9,
         kTextAlignment_Center},
        {"The young ones don't stay.", "DejaVu Sans", 44.0f, white, Edge::kTextEdge_Uniform, 3.0f,
         7, kTextAlignment_Center},
        {"Who can blame them?", "DejaVu Sans", 44.0f, white, Edge::kTextEdge_Uniform, 3.0f, 7,
         kTextAlignment_Center},
        {"Where would I go?", "DejaVu Serif", 64.0f, white, Edge::kTextEdge_DropShadow, 3.0f, 4,
         kTextAlignment_Center},
        {"The sea knows me.", "DejaVu Sans", 44.0f, white, Edge::kTextEdge_Uniform, 3.0f, 7,
         kTextAlignment_Center},
        {"Low tide 11:52", "DejaVu Sans Mono", 32.0f, sky, Edge::kTextEdge_None, 0.0f, 1,
         kTextAlignment_Center},
        {"That's the tide turning.", "DejaVu Sans", 44.0f, white, Edge::kTextEdge_Uniform, 3.0f, 7,
         kTextAlignment_Center},
        {"Filmed in Port Aldane", "DejaVu Serif", 40.0f, white, Edge::kTextEdge_DropShadow, 2.0f, 5,
         kTextAlignment_Right},
    };
    MZ::Captioning captioning(stream);
    std::int64_t beginFrame = 15;
    int freeLine = 0;
    for (const OpenLine& line : lines) {
        TextSpanAttributes attributes;
        attributes.SetFontName(zelcore::ToUTF16(line.font));
        attributes.SetFontSize(line.size);
        attributes.textColor = line.color;
        attributes.SetTextEdge(line.edge);
        attributes.edgeWidth = line.edgeWidth;
        attributes.edgeColor = line.edge == Edge::kTextEdge_None
                                   ? kCaptioningColor_Transparent
                                   : CaptioningColor(0.0f, 0.0f, 0.0f, 0.85f);
        attributes.SetBolded(line.size >= 52.0f);
        CaptionTextParagraphPtr paragraph(new CaptionTextParagraph);
        paragraph->AppendCaptionTextSpan(
            CaptionTextSpanPtr(new CaptionTextSpan(zelcore::ToUTF16(line.text), attributes)));
        ParagraphStyleAttributes style;
        style.SetAnchorID(line.anchor);
        style.SetTextAlignment(line.alignment);
        paragraph->SetParagraphStyleAttributes(style);
        if (line.anchor == kAnchorID_Free) {
            // Free lines stand where the editor put them, in fractions of the frame.
            paragraph->SetCaptionPosition(
                {Rational(freeLine == 0 ? 1 : 3, 10), Rational(freeLine == 0 ? 3 : 11, 20)});
            ++freeLine;
        }
        CaptionPtr caption(new Caption);
        caption->SetCaptionType(kCaptionType_Open);
        caption->SetBeginTime(Frames(beginFrame));
        caption->SetEndTime(Frames(beginFrame + 150));
        caption->AppendCaptionTextParagraph(paragraph);
        // Every frame of the block has its layout computed at 80% of the frame,
        // as the panel measures it.
        caption->UpdateLinePositions(1536, 864);
        captioning.AddCaption(caption);
        beginFrame += 170;
    }
}

BE::MasterClipSettings TestSourceClip(const char* name, std::int64_t seconds) {
    BE::MasterClipSettings settings;
    settings.name = zelcore::ToUTF16(name);
    settings.media.kind = BE::MediaSource::Kind::kGeneratedTestSource;
    settings.frameRect = zelcore::geom::RectT<int>::FromSize(0, 0, 1920, 1080);
    settings.frameRate = zelmediatypes::kFrameRate_2997;
    settings.duration = TickTime::FromSeconds(seconds);
    return settings;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <output path>\n", argv[0]);
        return 2;
    }
    const auto project = BE::CreateProject();
    const BE::UndoMode once = BE::UndoMode::kWithoutUndoStep;
    const auto bin = project->AddBin(zelcore::ToUTF16("Harbour Story"), once);
    const auto interview =
        project->AddMasterClip(bin, TestSourceClip("Interview - Mara", 120), once);
    AddClosedCaptions(project->AddCaptioningStream(interview, kStreamFormat_CEA608, once));
    AddOpenCaptions(project->AddCaptioningStream(interview, kStreamFormat_OpenCaptions, once));
    project->AddMasterClip(bin, TestSourceClip("B-Roll - Harbour at Dawn", 45), once);
    BE::SequenceSettings sequence;
    sequence.name = zelcore::ToUTF16("Harbour Story - Edit 1");
    sequence.frameRect = zelcore::geom::RectT<int>::FromSize(0, 0, 1920, 1080);
    sequence.frameRate = zelmediatypes::kFrameRate_2997;
    sequence.videoTimeDisplay = zelmediatypes::kTimeDisplay_2997DropTimecode;
    sequence.audioTimeDisplay = zelmediatypes::kTimeDisplay_AudioSamples48kHz;
    project->AddSequence(bin, sequence, once);
    if (const auto error = BE::WriteProjectFile(project, argv[1])) {
        std::fprintf(stderr, "%s\n", error->ToString().c_str());
        return 1;
    }
    return 0;
}
