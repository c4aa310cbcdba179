#pragma once

#include <map>
#include <string>
#include <string_view>

namespace pugi {
class xml_node;
}

namespace captionformats::ttml {

// What a TTML attribute or element name means, by its namespace. Prefixes are
// resolved from the xmlns declarations of the root element; TTML's 2006 and
// 2010 namespaces are both taken, and the usual prefixes (tt, tts, ttp, ttm)
// stand for their namespaces when a file forgets to declare them.
class TtmlNames {
public:
    enum class Space { kCore, kStyling, kParameter, kMetadata, kXml, kOther };

    explicit TtmlNames(const pugi::xml_node& root);

    Space SpaceOf(std::string_view qualifiedName) const;
    static std::string_view LocalName(std::string_view qualifiedName);

private:
    std::map<std::string, Space, std::less<>> prefixes_;
};

} // namespace captionformats::ttml
