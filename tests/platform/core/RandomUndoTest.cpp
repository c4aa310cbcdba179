#include "BE/IProject.h"
#include "BE/ProjectFile.h"
#include "MZ/Captioning.h"
#include "ModelTestSupport.h"
#include "zelcaptioning/Caption.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>
#include <vector>

namespace {

using platform_test::MakeCaption;
using zelcaptioning::CaptionPtr;

constexpr zelcaptioning::StreamFormat kFormats[] = {
    zelcaptioning::kStreamFormat_CEA608, zelcaptioning::kStreamFormat_CEA708,
    zelcaptioning::kStreamFormat_Teletext, zelcaptioning::kStreamFormat_OpenCaptions};

// Applies random mutations of every kind to a project, each as one undo step.
class RandomEditor {
public:
    RandomEditor(KSL::InterfaceRef<BE::IProject> project, unsigned seed)
        : project_(std::move(project))
        , random_(seed) {}

    // Makes one mutation and returns its name. Caption edits, the common
    // case, are picked most often.
    std::string MutateOnce() {
        for (;;) {
            const std::size_t kind = Pick(20);
            if (kind < 5) {
                return AddCaption();
            }
            if (kind >= 15) {
                return MutateStructure(kind);
            }
            if (const StreamCaption c = AnyCaption()) {
                return kind < 8    ? ReplaceCaption(c)
                       : kind < 10 ? EditLiveThenCommit(c)
                       : kind < 12 ? RemoveCaption(c)
                                   : RetimeCaption(c);
            }
        }
    }

private:
    struct StreamCaption {
        KSL::InterfaceRef<BE::ICaptioningStream> stream;
        CaptionPtr caption;
        explicit operator bool() const { return bool(caption); }
    };

    std::string MutateStructure(std::size_t kind) {
        switch (kind) {
        case 15:
            if (const auto stream = AnyStream()) {
                return Pick(3) == 0 ? RemoveStream(stream) : ChangeStreamFormat(stream);
            }
            return AddCaption();
        case 16:
            return Pick(2) == 0 ? AddClip() : ChangeClipSettings();
        case 17:
            return Clips().size() > 1 ? RemoveClip() : AddClip();
        case 18:
            if (const auto sequence = AnySequence(); sequence && Pick(2) == 0) {
                return ChangeSequenceSettings(sequence);
            }
            return AddSequence();
        default:
            return AddBin();
        }
    }

    std::size_t Pick(std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
    }
    // Few distinct times, so that equal begin times are common.
    zelmediatypes::TickTime RandomTime() {
        return platform_test::Seconds(static_cast<double>(Pick(6)) / 2.0);
    }

    std::vector<KSL::InterfaceRef<BE::IMasterClip>> Clips() const {
        std::vector<KSL::InterfaceRef<BE::IMasterClip>> clips;
        for (std::size_t b = 0; b < project_->GetBinCount(); ++b) {
            for (std::size_t c = 0; c < project_->GetBin(b)->GetMasterClipCount(); ++c) {
                clips.push_back(project_->GetBin(b)->GetMasterClip(c));
            }
        }
        return clips;
    }
    std::vector<KSL::InterfaceRef<BE::ICaptioningStream>> Streams() const {
        std::vector<KSL::InterfaceRef<BE::ICaptioningStream>> streams;
        for (const auto& clip : Clips()) {
            for (std::size_t s = 0; s < clip->GetCaptioningStreamCount(); ++s) {
                streams.push_back(clip->GetCaptioningStream(s));
            }
        }
        return streams;
    }
    KSL::InterfaceRef<BE::ICaptioningStream> AnyStream() {
        const auto streams = Streams();
        return streams.empty() ? nullptr : streams[Pick(streams.size())];
    }
    StreamCaption AnyCaption() {
        const auto stream = AnyStream();
        if (!stream || stream->GetCaptionCount() == 0) {
            return {};
        }
        return {stream, stream->GetCaption(Pick(stream->GetCaptionCount()))};
    }
    KSL::InterfaceRef<BE::ISequence> AnySequence() {
        const auto bin = project_->GetBin(Pick(project_->GetBinCount()));
        return bin->GetSequenceCount() == 0 ? nullptr
                                            : bin->GetSequence(Pick(bin->GetSequenceCount()));
    }

    // A changed copy: new text, style, position or times.
    CaptionPtr Varied(const zelcaptioning::Caption& caption) {
        CaptionPtr copy(new zelcaptioning::Caption(caption));
        switch (Pick(4)) {
        case 0: {
            const auto begin = RandomTime();
            copy->SetBeginTime(begin);
            copy->SetEndTime(begin + RandomTime());
            break;
        }
        case 1:
            copy->AppendCaptionTextParagraph(MakeCaption({}, {}, "line " + std::to_string(Pick(99)))
                                                 ->GetCaptionTextParagraph(0));
            break;
        case 2:
            if (copy->GetNumParagraphs() > 0) {
                auto span = copy->GetCaptionTextParagraph(0)->GetCaptionTextSpan(0);
                auto attributes = span->GetTextSpanStyleAttributes();
                attributes.SetItalicized(!attributes.IsItalicized());
                attributes.textColor.red = static_cast<float>(Pick(100)) / 100.0f;
                span->SetTextSpanStyleAttributes(attributes);
            }
            break;
        default:
            if (copy->GetNumParagraphs() > 0) {
                copy->GetCaptionTextParagraph(0)->SetCaptionPosition(
                    {zelcaptioning::Rational(static_cast<std::int64_t>(Pick(32)), 32),
                     zelcaptioning::Rational(static_cast<std::int64_t>(Pick(15)), 15)});
            }
        }
        return copy;
    }

    std::string AddCaption() {
        auto stream = AnyStream();
        if (!stream) {
            const auto clips = Clips();
            stream = project_->AddCaptioningStream(clips[Pick(clips.size())],
                                                   zelcaptioning::kStreamFormat_CEA608,
                                                   BE::UndoMode::kAsUndoStep);
            return "add stream";
        }
        const auto begin = RandomTime();
        MZ::Captioning(stream).AddCaption(
            MakeCaption(begin, begin + RandomTime(), "caption " + std::to_string(Pick(1000))));
        return "add caption";
    }
    std::string ReplaceCaption(const StreamCaption& target) {
        MZ::Captioning(target.stream)
            .ReplaceCaption(target.caption, Varied(*target.caption), true, zelcore::ToUTF16(""));
        return "replace caption";
    }
    // The panel's text-edit session: live updates, then the saved copy without
    // a step and the result as one step.
    std::string EditLiveThenCommit(const StreamCaption& target) {
        MZ::Captioning captioning(target.stream);
        const CaptionPtr saved(new zelcaptioning::Caption(*target.caption));
        CaptionPtr working = Varied(*target.caption);
        captioning.ReplaceCaption(target.caption, working, false, zelcore::ToUTF16(""));
        working = Varied(*working);
        captioning.ReplaceCaption(target.caption, working, false, zelcore::ToUTF16(""));
        captioning.ReplaceCaption(target.caption, saved, false, zelcore::ToUTF16(""));
        captioning.ReplaceCaption(target.caption, working, true, zelcore::ToUTF16(""));
        return "live edit then commit";
    }
    std::string RemoveCaption(const StreamCaption& target) {
        const bool ripple = Pick(2) == 0;
        MZ::Captioning(target.stream).RemoveCaption(target.caption, ripple);
        return ripple ? "ripple remove caption" : "remove caption";
    }
    std::string RetimeCaption(const StreamCaption& target) {
        MZ::Captioning(target.stream)
            .UpdateCaption(target.caption, RandomTime(), RandomTime(), Pick(2) == 0,
                           zelmediatypes::kTimeDisplay_25Timecode);
        return "retime caption";
    }
    std::string RemoveStream(const KSL::InterfaceRef<BE::ICaptioningStream>& stream) {
        project_->RemoveCaptioningStream(stream, BE::UndoMode::kAsUndoStep);
        return "remove stream";
    }
    std::string ChangeStreamFormat(const KSL::InterfaceRef<BE::ICaptioningStream>& stream) {
        const auto clip = stream->GetMasterClip();
        for (const auto format : kFormats) {
            if (!clip->FindCaptioningStream(format)) {
                const bool change = Pick(2) == 0;
                if (change) {
                    project_->ChangeCaptioningStreamFormat(stream, format,
                                                           BE::UndoMode::kAsUndoStep);
                } else {
                    project_->AddCaptioningStream(clip, format, BE::UndoMode::kAsUndoStep);
                }
                return change ? "change stream format" : "add stream";
            }
        }
        return RemoveStream(stream);
    }
    std::string AddClip() {
        project_->AddMasterClip(project_->GetBin(Pick(project_->GetBinCount())),
                                platform_test::TestClipSettings("added"),
                                BE::UndoMode::kAsUndoStep);
        return "add clip";
    }
    std::string RemoveClip() {
        const auto clips = Clips();
        project_->RemoveMasterClip(clips[Pick(clips.size())], BE::UndoMode::kAsUndoStep);
        return "remove clip";
    }
    std::string ChangeClipSettings() {
        const auto clips = Clips();
        const auto clip = clips[Pick(clips.size())];
        BE::MasterClipSettings settings = clip->GetSettings();
        settings.name = zelcore::ToUTF16("renamed " + std::to_string(Pick(100)));
        settings.duration = RandomTime();
        project_->SetMasterClipSettings(clip, settings, BE::UndoMode::kAsUndoStep);
        return "change clip settings";
    }
    std::string AddSequence() {
        project_->AddSequence(project_->GetBin(Pick(project_->GetBinCount())),
                              BE::SequenceSettings{}, BE::UndoMode::kAsUndoStep);
        return "add sequence";
    }
    std::string ChangeSequenceSettings(const KSL::InterfaceRef<BE::ISequence>& sequence) {
        BE::SequenceSettings settings = sequence->GetSettings();
        settings.videoTimeDisplay = Pick(2) == 0 ? zelmediatypes::kTimeDisplay_25Timecode
                                                 : zelmediatypes::kTimeDisplay_Frames;
        settings.frameAlignment =
            Pick(2) == 0 ? BE::FrameAlignment::kFree : BE::FrameAlignment::kAlignedToFrames;
        project_->SetSequenceSettings(sequence, settings, BE::UndoMode::kAsUndoStep);
        return "change sequence settings";
    }
    std::string AddBin() {
        project_->AddBin(zelcore::ToUTF16("bin " + std::to_string(Pick(100))),
                         BE::UndoMode::kAsUndoStep);
        return "add bin";
    }

    KSL::InterfaceRef<BE::IProject> project_;
    std::mt19937 random_;
};

std::string Saved(const KSL::InterfaceRef<BE::IProject>& project) {
    const BE::SerializedProject serialized = BE::SerializeProject(project);
    EXPECT_FALSE(serialized.error) << serialized.error->ToString();
    return serialized.bytes;
}

class RandomUndoTest : public testing::TestWithParam<unsigned> {};

// Every state is compared as its project file, which holds everything the
// model holds, so "restores exactly" means byte for byte.
TEST_P(RandomUndoTest, UndoingEveryStepWalksBackThroughEveryStateAndRedoForward) {
    platform_test::ClipFixture fixture = platform_test::MakeClipFixture();
    BE::IUndoHistory& history = fixture.project->GetUndoHistory();
    RandomEditor editor(fixture.project, GetParam());
    constexpr int kSteps = 80;
    std::vector<std::string> states{Saved(fixture.project)};
    std::vector<std::string> steps;
    for (int i = 0; i < kSteps; ++i) {
        steps.push_back(editor.MutateOnce());
        ASSERT_EQ(history.GetStepCount(), steps.size()) << steps.back() << " was not one step";
        states.push_back(Saved(fixture.project));
    }
    for (int i = kSteps; i > 0; --i) {
        history.Undo();
        ASSERT_EQ(Saved(fixture.project), states[i - 1])
            << "undoing step " << i << ", " << steps[i - 1];
    }
    EXPECT_FALSE(history.CanUndo());
    for (int i = 1; i <= kSteps; ++i) {
        history.Redo();
        ASSERT_EQ(Saved(fixture.project), states[i])
            << "redoing step " << i << ", " << steps[i - 1];
    }
    EXPECT_FALSE(history.CanRedo());
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomUndoTest, testing::Values(1u, 2u, 3u, 4u, 5u));

} // namespace
