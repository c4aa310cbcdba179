#include "MZ/Captioning.h"

#include "BE/IProject.h"
#include "KSL/Exception.h"
#include "ModelTestSupport.h"
#include "zelcaptioning/StreamFormat.h"
#include "zelcore/Localization.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>

namespace {

using platform_test::CaptionChangeRecorder;
using platform_test::MakeCaption;
using platform_test::Seconds;
using platform_test::TextOf;
using testing::ElementsAre;
using CaptionPtr = boost::intrusive_ptr<zelcaptioning::Caption>;

class CaptioningTest : public testing::Test {
protected:
    platform_test::ClipFixture fixture = platform_test::MakeClipFixture();
    KSL::InterfaceRef<BE::ICaptioningStream> stream = fixture.project->AddCaptioningStream(
        fixture.clip, zelcaptioning::kStreamFormat_CEA608, BE::UndoMode::kWithoutUndoStep);
    MZ::Captioning captioning{stream};

    CaptionPtr Add(double begin, double end, const std::string& text) {
        CaptionPtr caption = MakeCaption(Seconds(begin), Seconds(end), text);
        captioning.AddCaption(caption);
        return caption;
    }

    std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        for (std::size_t i = 0; i < stream->GetCaptionCount(); ++i) {
            texts.push_back(TextOf(*stream->GetCaption(i)));
        }
        return texts;
    }

    BE::IUndoHistory& History() { return fixture.project->GetUndoHistory(); }
};

TEST_F(CaptioningTest, AddKeepsBeginOrderAndEqualBeginsInArrivalOrder) {
    Add(5, 6, "c");
    Add(1, 2, "a");
    Add(5, 7, "d");
    Add(3, 4, "b");
    EXPECT_THAT(Texts(), ElementsAre("a", "b", "c", "d"));
    EXPECT_EQ(captioning.GetNumberOfCaptionBlocks(), 4u);
    std::vector<MZ::Captioning::CaptionBlockTimes> times;
    captioning.GetCaptionBlockTimes(times);
    ASSERT_EQ(times.size(), 4u);
    EXPECT_EQ(times[2], (MZ::Captioning::CaptionBlockTimes{Seconds(5), Seconds(6)}));
}

TEST_F(CaptioningTest, AddKeepsTheObjectAndRefusesItTwice) {
    CaptionPtr caption = Add(1, 2, "a");
    EXPECT_EQ(stream->GetCaption(0), caption);
    EXPECT_THROW(captioning.AddCaption(caption), KSL::Exception);
    EXPECT_THROW(captioning.AddCaption(nullptr), KSL::Exception);
    EXPECT_EQ(captioning.GetNumberOfCaptionBlocks(), 1u);
}

TEST_F(CaptioningTest, BlockLookupPrefersAnExactBeginThenARunningCaption) {
    CaptionPtr a = Add(1, 3, "a");
    CaptionPtr b = Add(3, 4, "b");
    CaptionPtr c = Add(6, 6, "zero length");
    EXPECT_EQ(captioning.GetCaptionBlock(Seconds(0.5)), nullptr);
    EXPECT_EQ(captioning.GetCaptionBlock(Seconds(1)), a);
    EXPECT_EQ(captioning.GetCaptionBlock(Seconds(2.999)), a);
    EXPECT_EQ(captioning.GetCaptionBlock(Seconds(3)), b); // a's end is excluded
    EXPECT_EQ(captioning.GetCaptionBlock(Seconds(4)), nullptr);
    EXPECT_EQ(captioning.GetCaptionBlock(Seconds(6)), c);
}

// Lookups by time answered by a linear scan of the stream's order.
CaptionPtr ScannedBlockAt(const BE::ICaptioningStream& stream, zelmediatypes::TickTime time) {
    std::size_t before = 0;
    while (before < stream.GetCaptionCount() && stream.GetCaption(before)->GetBeginTime() < time) {
        ++before;
    }
    if (before < stream.GetCaptionCount() && stream.GetCaption(before)->GetBeginTime() == time) {
        return stream.GetCaption(before);
    }
    if (before > 0 && time < stream.GetCaption(before - 1)->GetEndTime()) {
        return stream.GetCaption(before - 1);
    }
    return nullptr;
}

// Enough lookups between edits that the stream builds its time table, and
// edits of every kind that make it stale: its answers must match a scan.
TEST_F(CaptioningTest, BlockLookupAgreesWithAScanThroughAddsRetimesAndRemoves) {
    std::mt19937 random(11);
    const auto seconds = [&random](int from, int to) {
        return Seconds(std::uniform_int_distribution<int>(from, to)(random) / 4.0);
    };
    const auto expectAgreement = [&](int step) {
        for (int probe = 0; probe < 200; ++probe) {
            const zelmediatypes::TickTime time = seconds(-8, 408);
            ASSERT_EQ(captioning.GetCaptionBlock(time), ScannedBlockAt(*stream, time))
                << "step " << step << ", time " << time.GetTicks();
        }
    };
    const auto addRandom = [&] {
        const zelmediatypes::TickTime begin = seconds(0, 400);
        captioning.AddCaption(MakeCaption(begin, begin + seconds(0, 12), "caption"));
    };
    for (int i = 0; i < 300; ++i) {
        addRandom();
    }
    for (int step = 0; step < 60; ++step) {
        expectAgreement(step);
        const auto count = static_cast<int>(stream->GetCaptionCount());
        const CaptionPtr picked =
            stream->GetCaption(std::uniform_int_distribution<int>(0, count - 1)(random));
        switch (step % 4) {
        case 0:
            captioning.UpdateCaption(picked, seconds(0, 400), seconds(0, 12), false,
                                     zelmediatypes::kTimeDisplay_Unknown);
            break;
        case 1:
            captioning.RemoveCaption(picked, step % 8 == 1);
            break;
        case 2:
            addRandom();
            break;
        default:
            History().Undo();
        }
    }
}

TEST_F(CaptioningTest, BlockLookupHandlesTimesAtBothEndsOfTheTickRange) {
    constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
    const std::int64_t begins[] = {kMin, kMin + 1, -5, 0, 0, 7, kMax - 10, kMax};
    for (const std::int64_t begin : begins) {
        const std::int64_t end = begin > kMax - 3 ? begin : begin + 3;
        captioning.AddCaption(MakeCaption(platform_test::Ticks(begin), platform_test::Ticks(end),
                                          std::to_string(begin)));
    }
    for (int round = 0; round < 100; ++round) { // past the point where the table is built
        for (const std::int64_t begin : begins) {
            for (const std::int64_t time :
                 {begin, begin == kMin ? begin : begin - 1, begin == kMax ? begin : begin + 1}) {
                ASSERT_EQ(captioning.GetCaptionBlock(platform_test::Ticks(time)),
                          ScannedBlockAt(*stream, platform_test::Ticks(time)))
                    << time;
            }
        }
    }
}

TEST_F(CaptioningTest, TimeRangeReturnsCaptionsTouchingTheClosedRange) {
    Add(0, 1, "before");
    Add(1, 2, "ends at from");
    Add(2.5, 3, "inside");
    Add(4, 5, "begins at to");
    Add(5, 6, "after");
    std::vector<CaptionPtr> found;
    captioning.GetCaptionsInTimeRange(Seconds(2), Seconds(4), found);
    std::vector<std::string> texts;
    for (const auto& caption : found) {
        texts.push_back(TextOf(*caption));
    }
    EXPECT_THAT(texts, ElementsAre("ends at from", "inside", "begins at to"));
}

TEST_F(CaptioningTest, PlainTextJoinsSpansAndParagraphs) {
    CaptionPtr caption = Add(0, 1, "first line\nsecond line");
    EXPECT_EQ(zelcore::ToUTF8(MZ::Captioning::ConvertCaptionBlockToText(caption)),
              "first line\nsecond line");
    EXPECT_TRUE(MZ::Captioning::ConvertCaptionBlockToText(nullptr).empty());
}

TEST_F(CaptioningTest, ReplaceKeepsIdentityAndTakesADeepCopy) {
    CaptionPtr target = Add(1, 2, "old");
    CaptionPtr value = MakeCaption(Seconds(1), Seconds(2), "new");
    captioning.ReplaceCaption(target, value, true, zelcore::ToUTF16(""));
    EXPECT_EQ(stream->GetCaption(0), target);
    EXPECT_EQ(TextOf(*target), "new");
    value->GetCaptionTextParagraph(0)->GetCaptionTextSpan(0)->SetCaptionText(
        zelcore::ToUTF16("changed later"));
    EXPECT_EQ(TextOf(*target), "new");
}

TEST_F(CaptioningTest, ReplaceWithNewTimesMovesTheCaptionAndUndoRestoresItsPlace) {
    Add(1, 2, "a");
    CaptionPtr b = Add(3, 4, "b");
    Add(3, 5, "b2");
    Add(6, 7, "c");
    captioning.ReplaceCaption(b, MakeCaption(Seconds(8), Seconds(9), "b"), true,
                              zelcore::ToUTF16(""));
    EXPECT_THAT(Texts(), ElementsAre("a", "b2", "c", "b"));
    EXPECT_EQ(captioning.GetCaptionBlock(Seconds(8)), b);
    History().Undo();
    EXPECT_THAT(Texts(), ElementsAre("a", "b", "b2", "c"));
    EXPECT_EQ(b->GetBeginTime(), Seconds(3));
    History().Redo();
    EXPECT_THAT(Texts(), ElementsAre("a", "b2", "c", "b"));
}

TEST_F(CaptioningTest, ReplaceUndoStepCarriesTheLocalisedActionName) {
    CaptionPtr target = Add(1, 2, "a");
    const std::size_t stepsBefore = History().GetStepCount();
    captioning.ReplaceCaption(target, MakeCaption(Seconds(1), Seconds(2), "b"), false,
                              zelcore::ToUTF16(""));
    EXPECT_EQ(History().GetStepCount(), stepsBefore);
    captioning.ReplaceCaption(
        target, MakeCaption(Seconds(1), Seconds(2), "c"), true,
        zelcore::ToUTF16("$$$/Corvala/Handlers/Captions/BoldText=Bold Caption Text"));
    EXPECT_EQ(History().GetStepCount(), stepsBefore + 1);
    EXPECT_EQ(History().GetUndoStepName(), zelcore::ToUTF16("Bold Caption Text"));
    History().Undo();
    // The step restores what the stream held when it was made, live update included.
    EXPECT_EQ(TextOf(*target), "b");
}

TEST_F(CaptioningTest, ReplaceOfACaptionOutsideTheStreamThrowsAndChangesNothing) {
    Add(1, 2, "a");
    CaptionPtr stranger = MakeCaption(Seconds(1), Seconds(2), "stranger");
    const std::size_t stepsBefore = History().GetStepCount();
    EXPECT_THROW(captioning.ReplaceCaption(stranger, stranger, true, zelcore::ToUTF16("")),
                 KSL::Exception);
    EXPECT_THAT(Texts(), ElementsAre("a"));
    EXPECT_EQ(History().GetStepCount(), stepsBefore);
}

TEST_F(CaptioningTest, ChangeMessagesCarryKindCaptionAndOldBegin) {
    CaptionChangeRecorder recorder(stream);
    CaptionPtr a = Add(1, 2, "a");
    captioning.ReplaceCaption(a, MakeCaption(Seconds(5), Seconds(6), "a2"), false,
                              zelcore::ToUTF16(""));
    captioning.UpdateCaption(a, Seconds(7), Seconds(1), false, zelmediatypes::kTimeDisplay_Unknown);
    captioning.RemoveCaption(a, false);
    const auto t = [](double s) {
        return std::to_string(Seconds(s).GetTicks());
    };
    EXPECT_THAT(recorder.lines, ElementsAre("added a @" + t(1), "changed a2 @" + t(1),
                                            "changed a2 @" + t(5), "removed a2 @" + t(7)));
}

TEST_F(CaptioningTest, UndoAndRedoAnnounceInTheEditsOwnTerms) {
    CaptionPtr a = Add(1, 2, "a");
    captioning.UpdateCaption(a, Seconds(3), Seconds(1), false, zelmediatypes::kTimeDisplay_Unknown);
    CaptionChangeRecorder recorder(stream);
    History().Undo();
    History().Undo();
    History().Redo();
    History().Redo();
    const auto t = [](double s) {
        return std::to_string(Seconds(s).GetTicks());
    };
    EXPECT_THAT(recorder.lines, ElementsAre("changed a @" + t(3), "removed a @" + t(1),
                                            "added a @" + t(1), "changed a @" + t(1)));
}

TEST_F(CaptioningTest, RippleRemoveClosesTheGapAndUndoRestoresEveryTime) {
    Add(0, 1, "a");
    CaptionPtr b = Add(2, 4, "b");
    Add(3, 5, "overlaps b");
    Add(4, 5, "c");
    Add(7, 8, "d");
    CaptionChangeRecorder recorder(stream);
    captioning.RemoveCaption(b, true);
    // c and d move 2 s earlier; the overlapping caption began before b's end and stays.
    EXPECT_THAT(Texts(), ElementsAre("a", "c", "overlaps b", "d"));
    EXPECT_EQ(captioning.GetCaptionBlock(Seconds(2)), stream->GetCaption(1));
    EXPECT_EQ(stream->GetCaption(3)->GetBeginTime(), Seconds(5));
    const auto t = [](double s) {
        return std::to_string(Seconds(s).GetTicks());
    };
    EXPECT_THAT(recorder.lines, ElementsAre("removed b @" + t(2), "moved c " + t(4) + "->" + t(2),
                                            "moved d " + t(7) + "->" + t(5)));
    History().Undo();
    EXPECT_THAT(Texts(), ElementsAre("a", "b", "overlaps b", "c", "d"));
    EXPECT_EQ(stream->GetCaption(3)->GetBeginTime(), Seconds(4));
    EXPECT_EQ(stream->GetCaption(4)->GetEndTime(), Seconds(8));
}

TEST_F(CaptioningTest, UpdateAlignsToTheFramesOfTheTimeDisplayWhenAsked) {
    CaptionPtr a = Add(1, 2, "a");
    const auto display = zelmediatypes::kTimeDisplay_25Timecode;
    const zelmediatypes::TickTime frame = Seconds(0.04);
    captioning.UpdateCaption(a, Seconds(1.05), Seconds(1.03), true, display);
    EXPECT_EQ(a->GetBeginTime(), Seconds(1.04));
    EXPECT_EQ(a->GetEndTime() - a->GetBeginTime(), frame * 25);
    captioning.UpdateCaption(a, Seconds(1.05), Seconds(1.03), false, display);
    EXPECT_EQ(a->GetBeginTime(), Seconds(1.05));
    EXPECT_EQ(History().GetUndoStepName(), zelcore::ToUTF16("Change Caption Times"));
}

TEST_F(CaptioningTest, AccessorRefusesAnEmptyOrDetachedStream) {
    EXPECT_THROW(MZ::Captioning{KSL::InterfaceRef<BE::ICaptioningStream>()}, KSL::Exception);
    fixture.project->RemoveCaptioningStream(stream, BE::UndoMode::kWithoutUndoStep);
    EXPECT_THROW(MZ::Captioning{stream}, KSL::Exception);
}

} // namespace
