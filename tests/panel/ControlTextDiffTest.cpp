// A text control's edits as engine changes: line breaks count once, and only
// the changed range is handed on.
#include "ControlTextDiff.h"

#include <gtest/gtest.h>

namespace {

using HandlerCaptions::ControlTextChange;
using HandlerCaptions::DiffControlText;

std::string Described(const std::optional<ControlTextChange>& change) {
    if (!change) {
        return "none";
    }
    return std::to_string(change->position) + " -'" + zelcore::ToUTF8(change->removed) + "' +'" +
           zelcore::ToUTF8(change->inserted) + "'";
}

TEST(ControlTextDiff, OnlyTheChangedRangeIsHandedOnWithBreaksCountedOnce) {
    const struct {
        const char16_t* before;
        const char16_t* after;
        const char* change;
    } cases[] = {
        {u"abc", u"abc", "none"},
        {u"abc", u"abXc", "2 -'' +'X'"},
        {u"ab\r\ncd", u"ab\r\ncXd", "4 -'' +'X'"},     // after a break: one position for it
        {u"ab\r\ncd", u"abcd", "2 -'\n' +''"},         // joining two lines
        {u"abcd", u"ab\r\ncd", "2 -'' +'\n'"},         // breaking a line
        {u"ab\r\ncd", u"ab\r\n\r\ncd", "3 -'' +'\n'"}, // an empty line, never half a pair
        {u"hello world", u"help", "3 -'lo world' +'p'"},
        {u"aaa", u"aaaa", "3 -'' +'a'"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Described(DiffControlText(c.before, c.after)), c.change)
            << zelcore::ToUTF8(std::u16string_view(c.before)) << " -> "
            << zelcore::ToUTF8(std::u16string_view(c.after));
    }
}

TEST(ControlTextDiff, RangesMapBetweenEngineAndControl) {
    const std::u16string_view text = u"ab\r\ncd\r\nef";
    std::int64_t start = 3; // "c"
    std::int64_t end = 5;
    HandlerCaptions::ToControlRange(text, start, end);
    EXPECT_EQ(start, 4);
    EXPECT_EQ(end, 6);
    start = 0;
    end = -1;
    HandlerCaptions::ToControlRange(text, start, end);
    EXPECT_EQ(start, 0);
    EXPECT_EQ(end, -1) << "the end of the text stays the end";
    EXPECT_EQ(HandlerCaptions::EnginePositionOf(text, 4), 3);
    EXPECT_EQ(HandlerCaptions::EnginePositionOf(text, 10), 8);
    EXPECT_EQ(HandlerCaptions::EnginePositionOf(text, 99), 8);
    EXPECT_EQ(zelcore::ToUTF8(HandlerCaptions::ToEngineBreaks(u"a\r\nb\rc\nd")), "a\nb\nc\nd");
}

} // namespace
