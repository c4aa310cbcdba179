#include "zelcore/UTF16String.h"

#include <gtest/gtest.h>

#include <sstream>

using zelcore::ToUTF16;
using zelcore::ToUTF8;
using zelcore::UTF16String;

TEST(UTF16String, ConvertsEveryPlaneBothWays) {
    const std::string text = "A\u00e9\u266a\U0001F600z"; // 1, 2, 3 and 4 UTF-8 bytes
    const UTF16String wide = ToUTF16(text);
    EXPECT_EQ(wide, UTF16String(u"A\u00e9\u266a\U0001F600z"));
    EXPECT_EQ(wide.size(), 6u) << "the emoji is a surrogate pair of two code units";
    EXPECT_EQ(ToUTF8(wide), text);
}

TEST(UTF16String, MalformedInputBecomesReplacementCharacters) {
    EXPECT_EQ(ToUTF16("a\xC3"), UTF16String(u"a\uFFFD")) << "truncated sequence";
    EXPECT_EQ(ToUTF16("\xC0\xAF"), UTF16String(u"\uFFFD")) << "overlong slash";
    EXPECT_EQ(ToUTF16("\xED\xA0\x80"), UTF16String(u"\uFFFD")) << "encoded surrogate";
    EXPECT_EQ(ToUTF16("\xFF"), UTF16String(u"\uFFFD"));
    const char16_t lone[] = {u'x', 0xD800, u'y'};
    EXPECT_EQ(ToUTF8(std::u16string_view(lone, 3)), "x\xEF\xBF\xBDy");
}

TEST(UTF16String, LongTextsConvertWhole) {
    // Texts far past any short-string or small-block size, so that the result
    // is cut to exactly the code units each kind of text gives.
    std::string mixed;
    UTF16String mixedWide;
    std::string stray;
    for (int i = 0; i < 500; ++i) {
        mixed += "ab\u00e9\U0001F600"; // 7 bytes, 5 code units
        mixedWide += u"ab\u00e9\U0001F600";
        stray += '\x80';
    }
    EXPECT_EQ(ToUTF16(mixed), mixedWide);
    EXPECT_EQ(ToUTF16(std::string(2000, 'q')), UTF16String(2000, u'q'));
    EXPECT_EQ(ToUTF16(stray), UTF16String(500, u'\uFFFD'))
        << "every stray continuation byte is one replacement";
    EXPECT_EQ(ToUTF16(std::string(300, '\xF0') + "x").size(), 301u)
        << "a lead byte with no continuation is one replacement";
    EXPECT_TRUE(ToUTF16("").empty());
}

TEST(UTF16String, PrintsAsQuotedUTF8) {
    std::ostringstream os;
    os << UTF16String(u"caf\u00e9");
    EXPECT_EQ(os.str(), "\"caf\xC3\xA9\"");
}
