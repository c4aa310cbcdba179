// The shared SCC samples through our CEA-608 decoder, against the expectations
// of the tools the samples come from.
#include "captionformats/SccReader.h"
#include "captionformats/SrtReader.h"

#include "FormatSamples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <boost/property_tree/json_parser.hpp>
#include <boost/property_tree/ptree.hpp>

#include <algorithm>
#include <cstring>
#include <sstream>
#include <tuple>

namespace {

using namespace captionformats;
using namespace zelcaptioning;
using boost::property_tree::ptree;

constexpr double kFrameSeconds = 1001.0 / 30000.0;

ReadResult ReadSample(const std::filesystem::path& file) {
    return SccReader().Read(test::ReadBytes(file), {file.string()});
}

// Frames since midnight of an "HH:MM:SS:FF" (non-drop) or "HH:MM:SS;FF" label.
std::int64_t FrameOfLabel(const std::string& label) {
    int hours = 0, minutes = 0, seconds = 0, frames = 0;
    std::sscanf(label.c_str(), "%d:%d:%d%*c%d", &hours, &minutes, &seconds, &frames);
    const std::int64_t totalMinutes = hours * 60 + minutes;
    std::int64_t frame = (totalMinutes * 60 + seconds) * 30 + frames;
    if (label[8] == ';') {
        frame -= 2 * (totalMinutes - totalMinutes / 10);
    }
    return frame;
}

std::int64_t FrameOf(zelmediatypes::TickTime time) {
    const double seconds =
        static_cast<double>(time.GetTicks()) / static_cast<double>(zelmediatypes::kTicksPerSecond);
    return std::llround(seconds / kFrameSeconds);
}

// The ttconv cases give each caption's begin, end (null: still shown when the
// file ends), text lines and the top-left cell of its region.
TEST(SccReader, DecodesTheTtconvSamplesToTheirCaptions) {
    SKIP_WITHOUT_SAMPLES();
    std::size_t cases = 0;
    for (const auto& folder : test::CaseFolders(test::SamplesDir() / "scc")) {
        if (!folder.filename().string().starts_with("ttconv-") ||
            !std::filesystem::exists(folder / "expected.json")) {
            continue;
        }
        SCOPED_TRACE(folder.filename().string());
        ++cases;
        const ptree expected = test::ReadExpected(folder);
        const ReadResult result = ReadSample(folder / expected.get<std::string>("file"));
        ASSERT_TRUE(result.Succeeded());
        EXPECT_EQ(result.streamFormat, kStreamFormat_CEA608);
        ASSERT_EQ(result.captions.size(), expected.get<std::size_t>("caption_count"));
        std::vector<std::pair<int, int>> regionCells;
        for (const auto& [unused, region] : expected.get_child("regions_cells")) {
            const auto& origin = region.get_child("origin_cells");
            regionCells.emplace_back(origin.begin()->second.get_value<int>(),
                                     std::next(origin.begin())->second.get_value<int>());
        }
        std::size_t index = 0;
        for (const auto& [unused, item] : expected.get_child("captions")) {
            SCOPED_TRACE("caption " + std::to_string(index));
            const Caption& caption = *result.captions[index];
            EXPECT_EQ(FrameOf(caption.GetBeginTime()),
                      FrameOfLabel(item.get<std::string>("begin")));
            if (item.get<std::string>("end") != "null") {
                EXPECT_EQ(FrameOf(caption.GetEndTime()),
                          FrameOfLabel(item.get<std::string>("end")));
            }
            std::vector<std::string> lines;
            for (const auto& [unusedKey, line] : item.get_child("text_lines")) {
                lines.push_back(line.data());
            }
            EXPECT_EQ(test::LinesOf(caption), lines);
            if (regionCells.size() == result.captions.size()) {
                Rational left(1);
                for (std::uint64_t p = 0; p < caption.GetNumParagraphs(); ++p) {
                    left = std::min(
                        left, caption.GetCaptionTextParagraph(p)->GetCaptionPosition().GetX());
                }
                const Position top = caption.GetCaptionTextParagraph(0)->GetCaptionPosition();
                EXPECT_EQ(left, Rational(regionCells[index].first - 4, 32));
                EXPECT_EQ(top.GetY(), Rational(regionCells[index].second - 2, 15));
            }
            ++index;
        }
    }
    EXPECT_EQ(cases, 4u);
}

TEST(SccReader, GivesTheTtconvSamplesTheirCaptionTypes) {
    SKIP_WITHOUT_SAMPLES();
    const std::pair<const char*, CaptionType> samples[] = {
        {"ttconv-pop-on/ttconv-pop-on.scc", kCaptionType_PopOn},
        {"ttconv-roll-up-2-rows/ttconv-roll-up-2-rows.scc", kCaptionType_RollUp2},
        {"ttconv-paint-on/ttconv-paint-on.scc", kCaptionType_PaintOn},
    };
    for (const auto& [file, type] : samples) {
        const ReadResult result = ReadSample(test::SamplesDir() / "scc" / file);
        ASSERT_FALSE(result.captions.empty()) << file;
        for (const CaptionPtr& caption : result.captions) {
            EXPECT_EQ(caption->GetCaptionType(), type) << file;
        }
    }
    const ReadResult mixed = ReadSample(
        test::SamplesDir() / "scc/ttconv-roll-up-mixed-depths/ttconv-roll-up-mixed-depths.scc");
    std::set<CaptionType> types;
    for (const CaptionPtr& caption : mixed.captions) {
        types.insert(caption->GetCaptionType());
    }
    EXPECT_THAT(types, ::testing::ElementsAre(kCaptionType_RollUp2, kCaptionType_RollUp3,
                                              kCaptionType_RollUp4));
}

TEST(SccReader, ReportsTheSkippedSecondChannel) {
    SKIP_WITHOUT_SAMPLES();
    const ReadResult result = ReadSample(
        test::SamplesDir() / "scc/ttconv-channel-2-ignored/ttconv-channel-2-ignored.scc");
    ASSERT_EQ(result.captions.size(), 1u);
    std::vector<std::string> messages;
    for (const Diagnostic& warning : result.warnings) {
        messages.push_back(ToString(warning));
    }
    EXPECT_THAT(messages, ::testing::Contains(::testing::EndsWith(
                              "ttconv-channel-2-ignored.scc:1:13: data channel 2 (CC2) skipped")));
}

// pycaption's frozen timings: a pop-on caption starts on its EOC word, at
// 29.97 fps exactly. pycaption ends a caption at the next caption's EOC; our
// display model ends it at the EDM that clears the screen, up to two frames
// before.
TEST(SccReader, MatchesPycaptionsPopOnTimings) {
    SKIP_WITHOUT_SAMPLES();
    const auto folder = test::SamplesDir() / "scc/pycaption-pop-on";
    const ptree expected = test::ReadExpected(folder);
    const ReadResult result = ReadSample(folder / "pycaption-pop-on.scc");
    ASSERT_EQ(result.captions.size(), expected.get<std::size_t>("caption_count"));
    constexpr double kTicksPerMicrosecond = 254016.0;
    constexpr double kFrameMicroseconds = 1e6 * kFrameSeconds;
    std::size_t index = 0;
    for (const auto& [unused, timing] : expected.get_child("timings_microseconds")) {
        const double begin = std::strtod(timing.begin()->second.data().c_str(), nullptr);
        const double end = std::strtod(std::next(timing.begin())->second.data().c_str(), nullptr);
        const Caption& caption = *result.captions[index++];
        EXPECT_NEAR(static_cast<double>(caption.GetBeginTime().GetTicks()) / kTicksPerMicrosecond,
                    begin, 1.0);
        const double ourEnd =
            static_cast<double>(caption.GetEndTime().GetTicks()) / kTicksPerMicrosecond;
        EXPECT_LE(ourEnd, end + 1.0);
        EXPECT_GE(ourEnd, end - 2 * kFrameMicroseconds - 1.0);
    }
}

// Every special and extended character of pycaption's table, each decoded in
// a pop-on caption of its own (an extended character after a fallback letter
// it replaces).
TEST(SccReader, DecodesEverySpecialAndExtendedCharacterOfPycaptionsTable) {
    SKIP_WITHOUT_SAMPLES();
    const auto folder = test::SamplesDir() / "scc/pycaption-special-and-extended-chars";
    const std::string words = test::ReadBytes(folder / "pycaption-special-and-extended-chars.scc");
    const std::string translation =
        test::ReadExpected(folder).get<std::string>("expected_word_translation");
    std::istringstream wordLines(words);
    std::istringstream translationLines(translation);
    std::string wordLine;
    std::string translationLine;
    std::size_t checked = 0;
    while (std::getline(wordLines, wordLine) && std::getline(translationLines, translationLine)) {
        if (wordLine.size() < 12 || !std::isdigit(static_cast<unsigned char>(wordLine[0]))) {
            continue;
        }
        std::istringstream wordStream(wordLine.substr(12));
        std::string word;
        std::size_t bracket = translationLine.find('[');
        while (wordStream >> word && bracket != std::string::npos) {
            const std::size_t close = translationLine.find("] ", bracket + 1) != std::string::npos
                                          ? translationLine.find("] ", bracket + 1)
                                          : translationLine.rfind(']');
            const std::string expected = translationLine.substr(bracket + 1, close - bracket - 1);
            bracket = translationLine.find('[', close);
            const bool extended =
                (word[1] == '2' || word[1] == '3' || word[1] == 'a' || word[1] == 'b');
            const std::string file = "Scenarist_SCC V1.0\n\n00:00:00:00\t9420 9420 94d0 94d0 " +
                                     std::string(extended ? "5880 " : "") + word + " 942f 942f\n";
            const ReadResult result = SccReader().Read(file, {"char.scc"});
            ASSERT_EQ(result.captions.size(), 1u) << word;
            std::string text = test::LinesOf(*result.captions[0]).at(0);
            EXPECT_EQ(text, expected == " " || expected.empty() ? text : expected) << word;
            if (!(expected == " " || expected.empty())) {
                ++checked;
            }
        }
    }
    EXPECT_GE(checked, 60u);
}

// ccextractor's SRT of the same file: equal text line by line. It times a
// caption from its line's time code (+1 ms), we from the EOC word later on the
// line; both end it at the EDM, it 1 ms early and without the 1.001 factor of
// 29.97 fps, so within a frame for this short file.
TEST(SccReader, AgreesWithCcextractorOnTheSpecialCharactersSample) {
    SKIP_WITHOUT_SAMPLES();
    const auto folder = test::SamplesDir() / "scc/ccextractor-special-chars";
    const ReadResult result = ReadSample(folder / "special_chars.scc");
    const ReadResult expected =
        SrtReader().Read(test::ReadBytes(folder / "special_chars.expected.srt"), {});
    ASSERT_EQ(result.captions.size(), expected.captions.size());
    const auto oneSecond = zelmediatypes::TickTime::FromSeconds(1);
    const auto twoMilliseconds = zelmediatypes::TickTime(zelmediatypes::kTicksPerSecond / 500);
    const auto oneFrame = zelmediatypes::TickTime(zelmediatypes::kTicksPerSecond * 1001 / 30000);
    for (std::size_t i = 0; i < result.captions.size(); ++i) {
        std::vector<std::string> lines = test::LinesOf(*result.captions[i]);
        for (std::string& line : lines) {
            line.erase(line.find_last_not_of(' ') + 1);
        }
        EXPECT_EQ(lines, test::LinesOf(*expected.captions[i])) << "caption " << i;
        const auto lateBy =
            result.captions[i]->GetBeginTime() - expected.captions[i]->GetBeginTime();
        EXPECT_TRUE(lateBy > -twoMilliseconds && lateBy < oneSecond) << "caption " << i;
        const auto endGap = result.captions[i]->GetEndTime() - expected.captions[i]->GetEndTime();
        EXPECT_TRUE(endGap > -oneFrame && endGap < oneFrame) << "caption " << i;
    }
}

// caption-inspector's decode log of a whole programme: each pop-on load it
// logs (the quoted text chunks of one line) is one of our captions, in order,
// each chunk on one of its lines.
TEST(SccReader, AgreesWithCaptionInspectorOnAWholeProgramme) {
    SKIP_WITHOUT_SAMPLES();
    const auto folder = test::SamplesDir() / "scc/caption-inspector-plan9";
    const ReadResult result = ReadSample(folder / "Plan9fromOuterSpace.scc");
    ASSERT_TRUE(result.Succeeded());
    EXPECT_TRUE(result.warnings.empty());
    std::istringstream log(test::ReadBytes(folder / "Plan9fromOuterSpace-C1.608"));
    std::string line;
    std::size_t index = 0;
    while (std::getline(log, line)) {
        if (line.find('"') == std::string::npos) {
            continue;
        }
        ASSERT_LT(index, result.captions.size());
        const std::vector<std::string> lines = test::LinesOf(*result.captions[index]);
        for (std::size_t open = line.find('"'); open != std::string::npos;) {
            const std::size_t close = line.find("\" ", open + 1) != std::string::npos
                                          ? line.find("\" ", open + 1)
                                          : line.rfind('"');
            const std::string chunk = line.substr(open + 1, close - open - 1);
            EXPECT_TRUE(std::any_of(
                lines.begin(), lines.end(),
                [&](const std::string& text) { return text.find(chunk) != std::string::npos; }))
                << "caption " << index << " lacks \"" << chunk << "\"";
            open = line.find('"', close + 1);
        }
        ++index;
    }
    EXPECT_EQ(index, result.captions.size());
}

// A screen as rows of (row from 0, column, text), the shape of GStreamer's
// cea608tojson events; its glyphs for 27h, 12h 2Dh, 13h 3Ch-3Fh and the
// registered and copyright signs differ from ours, so both sides map them.
using Screen = std::vector<std::tuple<int, int, std::string>>;

std::string CommonGlyphs(std::string text) {
    const std::pair<const char*, const char*> glyphs[] = {
        {"\u2019", "'"},      {"\u00a6", "|"},      {"\u2022", "x"},
        {"\u00ae", "\u24c7"}, {"\u00a9", "\u24b8"}, {"\u250c", "x"},
        {"\u2510", "x"},      {"\u2514", "x"},      {"\u2518", "x"}};
    for (const auto& [from, to] : glyphs) {
        for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at)) {
            text.replace(at, std::strlen(from), to);
            at += std::strlen(to);
        }
    }
    return text;
}

// Every screen of the concatenated JSON objects, in order.
std::vector<Screen> GstreamerScreens(const std::string& json) {
    std::vector<Screen> screens;
    int depth = 0;
    bool inString = false;
    std::size_t start = 0;
    for (std::size_t i = 0; i < json.size(); ++i) {
        const char c = json[i];
        if (inString) {
            i += c == '\\' ? 1 : 0;
            inString = c != '"';
        } else if (c == '"') {
            inString = true;
        } else if (c == '{' && depth++ == 0) {
            start = i;
        } else if (c == '}' && --depth == 0) {
            std::istringstream object(json.substr(start, i + 1 - start));
            boost::property_tree::ptree event;
            boost::property_tree::read_json(object, event);
            Screen screen;
            for (const auto& [unused, line] : event.get_child("lines")) {
                std::string text;
                for (const auto& [unusedKey, chunk] : line.get_child("chunks")) {
                    text += chunk.get<std::string>("text");
                }
                screen.emplace_back(line.get<int>("row"), line.get<int>("column"),
                                    CommonGlyphs(text));
            }
            std::sort(screen.begin(), screen.end());
            screens.push_back(screen);
        }
    }
    return screens;
}

// GStreamer's decode of a broadcast test stream: every pop-on caption we
// decode is one of its screens, in order, but for two we know to differ: a
// row that runs past column 32 (we keep its text whole; it overwrites the last
// column) and the transparent space (we show a space; it shows nothing).
TEST(SccReader, AgreesWithGstreamerOnTheAllFeaturesStreamsPopOnCaptions) {
    SKIP_WITHOUT_SAMPLES();
    const auto folder = test::SamplesDir() / "scc/gst-608-all-features";
    const ReadResult result = ReadSample(folder / "608-all-features.scc");
    const std::vector<Screen> screens =
        GstreamerScreens(test::ReadBytes(folder / "608-all-features-unbuffered.json"));
    ASSERT_GT(screens.size(), 600u);
    std::size_t next = 0;
    std::vector<std::size_t> unmatched;
    std::size_t popOn = 0;
    for (std::size_t i = 0; i < result.captions.size(); ++i) {
        const Caption& caption = *result.captions[i];
        if (caption.GetCaptionType() != kCaptionType_PopOn) {
            continue;
        }
        ++popOn;
        Screen ours;
        for (std::uint64_t p = 0; p < caption.GetNumParagraphs(); ++p) {
            const auto line = caption.GetCaptionTextParagraph(p);
            const Position position = line->GetCaptionPosition();
            ours.emplace_back(static_cast<int>(ValueWithScale(position.GetY(), 15, true)),
                              static_cast<int>(ValueWithScale(position.GetX(), 32, true)),
                              CommonGlyphs(zelcore::ToUTF8(line->GetText())));
        }
        const auto match =
            std::find(screens.begin() + static_cast<std::ptrdiff_t>(next), screens.end(), ours);
        if (match == screens.end()) {
            unmatched.push_back(i);
        } else {
            next = static_cast<std::size_t>(match - screens.begin());
        }
    }
    EXPECT_EQ(popOn, 64u);
    EXPECT_THAT(unmatched, ::testing::ElementsAre(0u, 4u));
}

// Samples without expectations load, with captions and without errors.
TEST(SccReader, LoadsTheOtherSamples) {
    SKIP_WITHOUT_SAMPLES();
    for (const char* file : {"gst-608-all-features/608-all-features.scc",
                             "gst-drop-frame-timecodes/timecodes-cut-down-sample.scc",
                             "ttconv-mid-row-edm/ttconv-mid-row-edm.scc",
                             "ttconv-roll-up-mixed-depths/ttconv-roll-up-mixed-depths.scc"}) {
        const ReadResult result = ReadSample(test::SamplesDir() / "scc" / file);
        EXPECT_TRUE(result.Succeeded()) << file;
        EXPECT_FALSE(result.captions.empty()) << file;
    }
}

} // namespace
