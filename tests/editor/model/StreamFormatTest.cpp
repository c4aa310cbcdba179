#include "zelcaptioning/StreamFormat.h"
#include "zelcaptioning/CaptioningColor.h"
#include "zelcaptioning/TextSpanAttributes.h"

#include <gtest/gtest.h>

using namespace zelcaptioning;

TEST(StreamFormat, GridsPerFormat) {
    int rows = 0, columns = 0;
    GetCaptionRowsAndColumns(kStreamFormat_CEA608, rows, columns, true);
    EXPECT_EQ(rows, 15);
    EXPECT_EQ(columns, 32) << "CEA-608 has no wide grid";
    EXPECT_EQ(GetCaptionColumns(kStreamFormat_CEA708, false), 32);
    EXPECT_EQ(GetCaptionColumns(kStreamFormat_CEA708, true), 42);
    EXPECT_EQ(GetCaptionColumns(kStreamFormat_Teletext, false), 40);
    EXPECT_EQ(GetCaptionRows(kStreamFormat_OpenCaptions), 0);
    EXPECT_EQ(GetCaptionRows(kStreamFormat_None), 15);
    EXPECT_EQ(GetCaptionColumns(kStreamFormat_None, false), 32);
    EXPECT_EQ(static_cast<std::uint32_t>(kStreamFormat_OpenCaptions), 0x4F50454Eu);
}

TEST(StreamFormat, KindsAndCaptionTypes) {
    EXPECT_TRUE(IsOpenCaptions(kStreamFormat_OpenCaptions));
    EXPECT_FALSE(IsOpenCaptions(kStreamFormat_CEA608));
    EXPECT_TRUE(IsTeletext(kStreamFormat_Teletext));
    EXPECT_FALSE(IsTeletext(kStreamFormat_CEA708));
    for (CaptionType t : {kCaptionType_RollUp2, kCaptionType_RollUp3, kCaptionType_RollUp4}) {
        EXPECT_TRUE(IsRollUp(t)) << t;
    }
    for (CaptionType t : {kCaptionType_None, kCaptionType_PopOn, kCaptionType_PaintOn,
                          kCaptionType_Subtitle, kCaptionType_Open}) {
        EXPECT_FALSE(IsRollUp(t)) << t;
    }

    std::set<CaptionType> types;
    EXPECT_TRUE(GetSupportedCaptionTypes(kStreamFormat_CEA608, types));
    EXPECT_EQ(types,
              (std::set<CaptionType>{kCaptionType_PopOn, kCaptionType_RollUp2, kCaptionType_RollUp3,
                                     kCaptionType_RollUp4, kCaptionType_PaintOn}));
    EXPECT_TRUE(GetSupportedCaptionTypes(kStreamFormat_OpenCaptions, types));
    EXPECT_EQ(types, std::set<CaptionType>{kCaptionType_Open});
    EXPECT_FALSE(GetSupportedCaptionTypes(kStreamFormat_None, types));
    EXPECT_TRUE(types.empty());
    EXPECT_EQ(zelcore::ToUTF8(GetCaptionTypeDescription(kCaptionType_RollUp3)), "Roll-Up, 3 Lines");
    EXPECT_EQ(zelcore::ToUTF8(GetFullStreamFormatLabel(kStreamFormat_CEA608)),
              "CEA-608 Closed Captions");
}

TEST(StreamFormat, LegalColoursPerFormatAndUse) {
    std::map<CaptioningColor, zelcore::UTF16String> colors;
    ASSERT_TRUE(CaptioningColor::EnumerateLegalColors(kStreamFormat_CEA608,
                                                      CaptioningColor::kColorType_Text, colors));
    EXPECT_EQ(colors.size(), 7u);
    EXPECT_EQ(zelcore::ToUTF8(colors.at(kCaptioningColor_White)), "White");
    EXPECT_EQ(colors.count(kCaptioningColor_Black), 0u) << "black text is not in the basic set";

    ASSERT_TRUE(CaptioningColor::EnumerateLegalColors(
        kStreamFormat_CEA608, CaptioningColor::kColorType_Background, colors));
    EXPECT_EQ(colors.size(), 8u);
    EXPECT_EQ(zelcore::ToUTF8(colors.at(kCaptioningColor_Black)), "Black");

    std::map<float, zelcore::UTF16String> opacities;
    ASSERT_TRUE(CaptioningColor::EnumerateLegalOpacities(
        kStreamFormat_CEA608, CaptioningColor::kColorType_Background, opacities));
    EXPECT_EQ(opacities.size(), 3u);
    EXPECT_EQ(zelcore::ToUTF8(opacities.at(0.5f)), "Semi-transparent");

    ASSERT_TRUE(CaptioningColor::EnumerateLegalColors(kStreamFormat_CEA708,
                                                      CaptioningColor::kColorType_Edge, colors));
    EXPECT_EQ(colors.size(), 64u);

    colors.emplace(kCaptioningColor_White, u"stale");
    EXPECT_FALSE(CaptioningColor::EnumerateLegalColors(kStreamFormat_OpenCaptions,
                                                       CaptioningColor::kColorType_Text, colors));
    EXPECT_TRUE(colors.empty());
}

TEST(StreamFormat, ColourAndFontHelpers) {
    CaptioningColor color;
    color.SetRGBA(0.25f, 0.5f, 0.75f, 1.0f);
    EXPECT_FALSE(color.IsTransparent());
    color.SetAlpha(kAlphaValue_Transparent);
    EXPECT_TRUE(color.IsTransparent());
    EXPECT_TRUE(color != CaptioningColor(0.25f, 0.5f, 0.75f, 1.0f)) << "alpha counts";

    EXPECT_TRUE(TextSpanAttributes::IsGenericFontName(u"Sans-Serif"));
    EXPECT_TRUE(TextSpanAttributes::IsGenericFontName(u"monospace"));
    EXPECT_FALSE(TextSpanAttributes::IsGenericFontName(u"DejaVu Sans"));
    EXPECT_FALSE(TextSpanAttributes::IsGenericFontName(u""));
}
