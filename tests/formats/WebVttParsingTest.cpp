// The W3C web-platform-tests WebVTT file-parsing suite, run against the cue
// view of our WebVTT parser: every case's expected.json lists the cue count and
// the cue attributes the browser test checks.
#include "captionformats/WebVttDocument.h"

#include "FormatSamples.h"

#include <gtest/gtest.h>

#include <boost/property_tree/ptree.hpp>

#include <cstdlib>
#include <set>

namespace {

using namespace captionformats;
using boost::property_tree::ptree;

double Number(const ptree& value) {
    return std::strtod(value.data().c_str(), nullptr);
}

const char* AlignName(VttCue::Align align) {
    switch (align) {
    case VttCue::Align::kStart:
        return "start";
    case VttCue::Align::kCenter:
        return "center";
    case VttCue::Align::kEnd:
        return "end";
    case VttCue::Align::kLeft:
        return "left";
    case VttCue::Align::kRight:
        return "right";
    }
    return "?";
}

const char* LineAlignName(VttCue::LineAlign align) {
    switch (align) {
    case VttCue::LineAlign::kStart:
        return "start";
    case VttCue::LineAlign::kCenter:
        return "center";
    case VttCue::LineAlign::kEnd:
        return "end";
    }
    return "?";
}

const char* PositionAlignName(VttCue::PositionAlign align) {
    switch (align) {
    case VttCue::PositionAlign::kAuto:
        return "auto";
    case VttCue::PositionAlign::kLineLeft:
        return "line-left";
    case VttCue::PositionAlign::kCenter:
        return "center";
    case VttCue::PositionAlign::kLineRight:
        return "line-right";
    }
    return "?";
}

const char* VerticalName(VttCue::Vertical vertical) {
    switch (vertical) {
    case VttCue::Vertical::kHorizontal:
        return "";
    case VttCue::Vertical::kRightToLeft:
        return "rl";
    case VttCue::Vertical::kLeftToRight:
        return "lr";
    }
    return "?";
}

void ExpectAutoOrNumber(const ptree& expected, const std::optional<VttPercentage>& actual) {
    if (expected.data() == "auto") {
        EXPECT_FALSE(actual.has_value());
    } else {
        ASSERT_TRUE(actual.has_value());
        EXPECT_DOUBLE_EQ(actual->value, Number(expected));
    }
}

void ExpectRegion(const ptree& expected, const VttDocument& document, const VttCue& cue) {
    if (expected.data() == "null") {
        EXPECT_FALSE(cue.region.has_value());
        return;
    }
    ASSERT_TRUE(cue.region.has_value());
    if (const auto same = expected.get_optional<std::size_t>("same_as_cue")) {
        EXPECT_EQ(cue.region, document.cues.at(*same).region);
    }
    const VttRegion& region = document.regions.at(*cue.region);
    for (const auto& [key, value] : expected) {
        if (key == "lines") {
            EXPECT_DOUBLE_EQ(region.lines, Number(value));
        } else if (key == "scroll") {
            EXPECT_EQ(region.scrollUp ? "up" : "", value.data());
        } else {
            const std::pair<const char*, double> numbers[] = {
                {"width", region.width},
                {"regionAnchorX", region.regionAnchorX},
                {"regionAnchorY", region.regionAnchorY},
                {"viewportAnchorX", region.viewportAnchorX},
                {"viewportAnchorY", region.viewportAnchorY},
            };
            for (const auto& [name, actual] : numbers) {
                if (key == name) {
                    EXPECT_DOUBLE_EQ(actual, Number(value)) << key;
                }
            }
        }
    }
}

void ExpectCue(const ptree& expected, const VttDocument& document, const VttCue& cue) {
    for (const auto& [key, value] : expected) {
        SCOPED_TRACE(key);
        if (key == "id") {
            EXPECT_EQ(cue.id, value.data());
        } else if (key == "text") {
            EXPECT_EQ(cue.text, value.data());
        } else if (key == "startTime") {
            EXPECT_DOUBLE_EQ(static_cast<double>(cue.startMilliseconds) / 1000.0, Number(value));
        } else if (key == "endTime") {
            EXPECT_DOUBLE_EQ(static_cast<double>(cue.endMilliseconds) / 1000.0, Number(value));
        } else if (key == "align") {
            EXPECT_EQ(AlignName(cue.align), value.data());
        } else if (key == "vertical") {
            EXPECT_EQ(VerticalName(cue.vertical), value.data());
        } else if (key == "size") {
            EXPECT_DOUBLE_EQ(cue.size, Number(value));
        } else if (key == "position") {
            ExpectAutoOrNumber(value, cue.position);
        } else if (key == "positionAlign") {
            EXPECT_EQ(PositionAlignName(cue.positionAlign), value.data());
        } else if (key == "line") {
            ExpectAutoOrNumber(value, cue.line);
        } else if (key == "snapToLines") {
            EXPECT_EQ(cue.snapToLines ? "true" : "false", value.data());
        } else if (key == "lineAlign") {
            EXPECT_EQ(LineAlignName(cue.lineAlign), value.data());
        } else if (key == "region") {
            ExpectRegion(value, document, cue);
        } else if (key == "constraints") {
            for (const auto& [unused, constraint] : value) {
                const std::string other = constraint.get<std::string>("not_equal_to.same_as");
                const std::size_t otherIndex = std::stoul(other.substr(other.find('[') + 1));
                EXPECT_NE(cue.region, document.cues.at(otherIndex).region) << other;
            }
        } else {
            ASSERT_EQ(key, "index") << "an expectation the test does not check";
        }
    }
}

std::filesystem::path VttFileOf(const std::filesystem::path& folder) {
    return folder / (folder.filename().string() + ".vtt");
}

TEST(WebVttParsing, PassesTheWebPlatformFileParsingSuite) {
    SKIP_WITHOUT_SAMPLES();
    // Cases without an expected.json load, except those with a bad signature.
    const std::set<std::string> rejectedWithoutExpectations{"signature-lowercase",
                                                            "signature-partial"};
    std::size_t cases = 0;
    for (const auto& folder : test::CaseFolders(test::SamplesDir() / "webvtt/wpt-file-parsing")) {
        const std::string name = folder.filename().string();
        SCOPED_TRACE(name);
        ++cases;
        const std::filesystem::path file = VttFileOf(folder);
        const VttParseResult result = ParseWebVttDocument(test::ReadBytes(file), {file.string()});
        if (!std::filesystem::exists(folder / "expected.json")) {
            EXPECT_EQ(result.errors.empty(), !rejectedWithoutExpectations.contains(name));
            continue;
        }
        const ptree expected = test::ReadExpected(folder);
        if (expected.get<std::string>("expect_load") == "false") {
            ASSERT_EQ(result.errors.size(), 1u);
            EXPECT_EQ(result.errors[0].location.line, 1u);
            EXPECT_TRUE(result.document.cues.empty());
            continue;
        }
        ASSERT_TRUE(result.errors.empty()) << result.errors.front();
        const VttDocument& document = result.document;
        ASSERT_EQ(document.cues.size(), expected.get<std::size_t>("cue_count"));
        for (const auto& [unused, cue] : expected.get_child("cues")) {
            SCOPED_TRACE("cue " + cue.get<std::string>("index"));
            ExpectCue(cue, document, document.cues.at(cue.get<std::size_t>("index")));
        }
        if (const auto ids = expected.get_child_optional("derived_region_ids")) {
            std::size_t index = 0;
            for (const auto& [unused, id] : *ids) {
                const VttCue& cue = document.cues.at(index++);
                EXPECT_EQ(cue.region ? document.regions.at(*cue.region).id : "null", id.data());
            }
        }
    }
    EXPECT_EQ(cases, 46u);
}

} // namespace
