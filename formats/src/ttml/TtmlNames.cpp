#include "ttml/TtmlNames.h"

#include <pugixml.hpp>

namespace captionformats::ttml {

namespace {

TtmlNames::Space SpaceOfUri(std::string_view uri) {
    const bool ttml = uri.starts_with("http://www.w3.org/ns/ttml") ||
                      uri.starts_with("http://www.w3.org/2006/10/ttaf1") ||
                      uri.starts_with("http://www.w3.org/2006/04/ttaf1");
    if (!ttml) {
        return TtmlNames::Space::kOther;
    }
    if (uri.ends_with("#styling")) {
        return TtmlNames::Space::kStyling;
    }
    if (uri.ends_with("#parameter")) {
        return TtmlNames::Space::kParameter;
    }
    if (uri.ends_with("#metadata")) {
        return TtmlNames::Space::kMetadata;
    }
    return uri.find('#') == std::string_view::npos ? TtmlNames::Space::kCore
                                                   : TtmlNames::Space::kOther;
}

} // namespace

TtmlNames::TtmlNames(const pugi::xml_node& root) {
    prefixes_ = {{"tt", Space::kCore},
                 {"tts", Space::kStyling},
                 {"ttp", Space::kParameter},
                 {"ttm", Space::kMetadata},
                 {"xml", Space::kXml}};
    for (const pugi::xml_attribute& attribute : root.attributes()) {
        const std::string_view name = attribute.name();
        if (name.starts_with("xmlns:")) {
            prefixes_[std::string(name.substr(6))] = SpaceOfUri(attribute.value());
        }
    }
}

TtmlNames::Space TtmlNames::SpaceOf(std::string_view qualifiedName) const {
    const std::size_t colon = qualifiedName.find(':');
    if (colon == std::string_view::npos) {
        return Space::kCore; // unprefixed attributes belong to no namespace: TTML's own
    }
    const auto found = prefixes_.find(qualifiedName.substr(0, colon));
    return found == prefixes_.end() ? Space::kOther : found->second;
}

std::string_view TtmlNames::LocalName(std::string_view qualifiedName) {
    const std::size_t colon = qualifiedName.find(':');
    return colon == std::string_view::npos ? qualifiedName : qualifiedName.substr(colon + 1);
}

} // namespace captionformats::ttml
