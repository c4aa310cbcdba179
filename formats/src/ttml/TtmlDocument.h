#pragma once

#include "common/DiagnosticLog.h"
#include "ttml/TtmlNames.h"
#include "ttml/TtmlStyle.h"
#include "ttml/TtmlTime.h"

#include "zelcaptioning/Caption.h"

#include <pugixml.hpp>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace captionformats::ttml {

// One TTML document read into captions: its timing parameters, styles and
// regions from <head>, then every timed <p> of <body> in document order.
class TtmlDocument {
public:
    TtmlDocument(std::string_view bytes, DiagnosticLog& log);

    std::vector<zelcaptioning::CaptionPtr> Captions() { return std::move(captions_); }

private:
    struct Run {
        std::string utf8;
        TtmlStyle style;
    };
    using Lines = std::vector<std::vector<Run>>;

    struct Context {
        TtmlStyle style;
        zelmediatypes::TickTime begin;
        std::optional<zelmediatypes::TickTime> end;
        std::string region;
    };

    SourceLocation Where(const pugi::xml_node& node) const;
    const char* Attribute(const pugi::xml_node& node, TtmlNames::Space space,
                          std::string_view localName) const;
    void ReadParameters(const pugi::xml_node& root);
    void ReadHead(const pugi::xml_node& head);
    TtmlStyle Referenced(const pugi::xml_node& referrer, int depth);
    TtmlStyle Computed(const pugi::xml_node& element, const TtmlStyle& inherited);
    std::optional<zelmediatypes::TickTime> Time(const pugi::xml_node& element,
                                                const char* attribute);
    Context Enter(const pugi::xml_node& element, const Context& parent);
    // Elements nest at most kMaxDepth deep (deeper ones are skipped with a
    // warning), so a hostile file cannot exhaust the stack.
    static constexpr int kMaxDepth = 64;
    bool WithinDepth(const pugi::xml_node& element, int depth);
    void Visit(const pugi::xml_node& container, const Context& parent, int depth);
    void ReadParagraph(const pugi::xml_node& paragraph, const Context& parent, int depth);
    void CollectText(const pugi::xml_node& element, const TtmlStyle& style, Lines& lines,
                     int depth);

    DiagnosticLog& log_;
    std::vector<std::size_t> lineStarts_;
    pugi::xml_document document_;
    std::optional<TtmlNames> names_;
    TimingParameters timing_;
    std::map<std::string, pugi::xml_node, std::less<>> styles_;
    std::map<std::string, TtmlStyle, std::less<>> regions_;
    std::vector<zelcaptioning::CaptionPtr> captions_;
};

} // namespace captionformats::ttml
