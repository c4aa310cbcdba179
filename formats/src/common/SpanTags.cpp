#include "common/SpanTags.h"

namespace captionformats {

void AppendInStyleTags(std::string& out, const zelcaptioning::TextSpanAttributes& attributes,
                       std::string_view text, void (*escape)(std::string&, std::string_view)) {
    const bool bold = attributes.IsBolded();
    const bool italic = attributes.IsItalicized();
    const bool underline = attributes.IsUnderlined();
    out += bold ? "<b>" : "";
    out += italic ? "<i>" : "";
    out += underline ? "<u>" : "";
    escape(out, text);
    out += underline ? "</u>" : "";
    out += italic ? "</i>" : "";
    out += bold ? "</b>" : "";
}

} // namespace captionformats
