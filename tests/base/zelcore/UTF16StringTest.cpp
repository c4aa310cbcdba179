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

TEST(UTF16String, PrintsAsQuotedUTF8) {
    std::ostringstream os;
    os << UTF16String(u"caf\u00e9");
    EXPECT_EQ(os.str(), "\"caf\xC3\xA9\"");
}
