#include "FontStyleNames.h"

#include <gtest/gtest.h>

namespace {

using namespace HandlerCaptions;

TEST(FontStyleNames, ALeadingWeightWordIsRemovedOnce) {
    const struct {
        const char16_t* name;
        bool stripped;
        const char16_t* rest;
    } cases[] = {
        {u"Ultra Light Italic", true, u"Italic"}, // not "Light" first
        {u"Light", true, u""},
        {u"Medium Italic", true, u"Italic"},
        {u"Demi Bold", true, u""},
        {u"Heavy Heavy", true, u"Heavy"},
        {u"Bold Italic", false, u"Bold Italic"},
        {u"Semilight", false, u"Semilight"},
    };
    for (const auto& c : cases) {
        zelcore::UTF16String name = c.name;
        EXPECT_EQ(StripLeadingWeightWord(name), c.stripped)
            << zelcore::ToUTF8(std::u16string_view(c.name));
        EXPECT_EQ(name, c.rest) << zelcore::ToUTF8(std::u16string_view(c.name));
    }
}

TEST(FontStyleNames, BoldAndItalicComeFromTheName) {
    const struct {
        const char16_t* name;
        bool bold;
        bool italic;
    } cases[] = {
        {u"Regular", false, false},
        {u"Italic", false, true},
        {u"Bold", true, false},
        {u"Bold Italic", true, true},
        {u"Book", false, false},
        {u"Bold Oblique", true, false},
        {u"Semibold Italic", false, true},
        {u"ExtraBold", true, false},
    };
    for (const auto& c : cases) {
        const StyleFlags flags = StyleFlagsOf(c.name);
        EXPECT_EQ(flags.bold, c.bold) << zelcore::ToUTF8(std::u16string_view(c.name));
        EXPECT_EQ(flags.italic, c.italic) << zelcore::ToUTF8(std::u16string_view(c.name));
    }
    EXPECT_EQ(StyleNameOf(true, true), u"Bold Italic");
    EXPECT_EQ(StyleNameOf(false, false), u"Regular");
}

} // namespace
