#include "ttml/TtmlDocument.h"

#include "common/CaptionTextBuilder.h"
#include "ttml/TtmlPlacement.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace captionformats::ttml {

using namespace zelcaptioning;
using zelmediatypes::TickTime;

namespace {

constexpr int kMaxStyleDepth = 16;

std::string_view LocalNameOf(const pugi::xml_node& node) {
    return TtmlNames::LocalName(node.name());
}

std::optional<std::int64_t> BoundedInteger(std::string_view text, std::int64_t low,
                                           std::int64_t high) {
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < low || value > high) {
        return std::nullopt;
    }
    return value;
}

bool IsXmlSpace(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// TTML's default whitespace handling: runs of spaces, tabs and line ends
// become one space, and a line neither starts nor ends with one.
void CollapseWhitespace(std::vector<std::vector<std::pair<std::string, TtmlStyle>>>& lines) {
    for (auto& line : lines) {
        bool lastWasSpace = true;
        for (auto& [text, style] : line) {
            std::string collapsed;
            for (char c : text) {
                if (IsXmlSpace(c)) {
                    if (!lastWasSpace) {
                        collapsed += ' ';
                    }
                    lastWasSpace = true;
                } else {
                    collapsed += c;
                    lastWasSpace = false;
                }
            }
            text = std::move(collapsed);
        }
        for (auto run = line.rbegin(); run != line.rend(); ++run) {
            if (!run->first.empty() && run->first.back() == ' ') {
                run->first.pop_back();
            }
            if (!run->first.empty()) {
                break;
            }
        }
    }
}

SourceLocation LocationOfOffset(const std::vector<std::size_t>& lineStarts, std::ptrdiff_t offset) {
    const auto at = static_cast<std::size_t>(std::max<std::ptrdiff_t>(offset, 0));
    const auto next = std::upper_bound(lineStarts.begin(), lineStarts.end(), at);
    const auto line = static_cast<std::uint64_t>(next - lineStarts.begin());
    return SourceLocation::AtLine(line, at - *(next - 1) + 1);
}

} // namespace

TtmlDocument::TtmlDocument(std::string_view bytes, DiagnosticLog& log)
    : log_(log) {
    lineStarts_.push_back(0);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == '\n') {
            lineStarts_.push_back(i + 1);
        }
    }
    const pugi::xml_parse_result parsed = document_.load_buffer(
        bytes.data(), bytes.size(), pugi::parse_default | pugi::parse_ws_pcdata);
    if (!parsed) {
        log_.Fail(LocationOfOffset(lineStarts_, parsed.offset),
                  std::string("not well-formed XML: ") + parsed.description());
        return;
    }
    const pugi::xml_node root = document_.document_element();
    if (LocalNameOf(root) != "tt") {
        log_.Fail(Where(root), "not a TTML document: the root element is <" +
                                   std::string(root.name()) + ">, not <tt>");
        return;
    }
    names_.emplace(root);
    ReadParameters(root);
    Context context;
    for (const pugi::xml_node& child : root.children()) {
        if (LocalNameOf(child) == "head") {
            ReadHead(child);
        }
    }
    for (const pugi::xml_node& child : root.children()) {
        if (LocalNameOf(child) == "body") {
            Visit(child, context, 1);
        }
    }
}

SourceLocation TtmlDocument::Where(const pugi::xml_node& node) const {
    // An element's offset is that of its name; point at its '<'.
    const std::ptrdiff_t offset = node.offset_debug();
    return LocationOfOffset(lineStarts_,
                            node.type() == pugi::node_element && offset > 0 ? offset - 1 : offset);
}

const char* TtmlDocument::Attribute(const pugi::xml_node& node, TtmlNames::Space space,
                                    std::string_view localName) const {
    for (const pugi::xml_attribute& attribute : node.attributes()) {
        if (TtmlNames::LocalName(attribute.name()) == localName &&
            names_->SpaceOf(attribute.name()) == space) {
            return attribute.value();
        }
    }
    return nullptr;
}

void TtmlDocument::ReadParameters(const pugi::xml_node& root) {
    using Space = TtmlNames::Space;
    bool frameRateGiven = false;
    if (const char* rate = Attribute(root, Space::kParameter, "frameRate")) {
        const auto value = BoundedInteger(rate, 1, 1000);
        frameRateGiven = value.has_value();
        if (value) {
            timing_.frameRate = *value;
        } else {
            log_.Warn(Where(root),
                      "ttp:frameRate=\"" + std::string(rate) + "\" not understood; 30 used");
        }
    }
    if (const char* multiplier = Attribute(root, Space::kParameter, "frameRateMultiplier")) {
        const std::string_view text = multiplier;
        const std::size_t separator = text.find_first_of(" :");
        const auto numerator = BoundedInteger(text.substr(0, separator), 1, 10000);
        const auto denominator = separator == std::string_view::npos
                                     ? std::nullopt
                                     : BoundedInteger(text.substr(separator + 1), 1, 10000);
        if (numerator && denominator) {
            timing_.multiplierNumerator = *numerator;
            timing_.multiplierDenominator = *denominator;
        } else {
            log_.Warn(Where(root), "ttp:frameRateMultiplier=\"" + std::string(text) +
                                       "\" not understood; ignored");
        }
    }
    timing_.tickRate = frameRateGiven ? timing_.frameRate : 1;
    if (const char* rate = Attribute(root, Space::kParameter, "tickRate")) {
        if (const auto value = BoundedInteger(rate, 1, 1'000'000'000'000)) {
            timing_.tickRate = *value;
        } else {
            log_.Warn(Where(root),
                      "ttp:tickRate=\"" + std::string(rate) + "\" not understood; ignored");
        }
    }
}

void TtmlDocument::ReadHead(const pugi::xml_node& head) {
    for (const pugi::xml_node& section : head.children()) {
        const std::string_view name = LocalNameOf(section);
        for (const pugi::xml_node& definition : section.children()) {
            const char* id = Attribute(definition, TtmlNames::Space::kXml, "id");
            if (id == nullptr) {
                continue;
            }
            if (name == "styling" && LocalNameOf(definition) == "style") {
                styles_[id] = definition;
            } else if (name == "layout" && LocalNameOf(definition) == "region") {
                TtmlStyle style = Computed(definition, {});
                for (const pugi::xml_node& nested : definition.children()) {
                    if (LocalNameOf(nested) == "style") {
                        style.MergeFrom(Computed(nested, {}));
                    }
                }
                regions_[id] = style;
            }
        }
    }
}

TtmlStyle TtmlDocument::Referenced(const pugi::xml_node& referrer, int depth) {
    TtmlStyle style;
    const char* references = nullptr;
    for (const pugi::xml_attribute& attribute : referrer.attributes()) {
        const auto space = names_->SpaceOf(attribute.name());
        if (TtmlNames::LocalName(attribute.name()) == "style" &&
            (space == TtmlNames::Space::kCore || space == TtmlNames::Space::kStyling)) {
            references = attribute.value();
        }
    }
    if (references == nullptr) {
        return style;
    }
    std::string_view list = references;
    while (!list.empty()) {
        const std::size_t start = list.find_first_not_of(" \t\r\n");
        if (start == std::string_view::npos) {
            break;
        }
        const std::size_t end = std::min(list.find_first_of(" \t\r\n", start), list.size());
        const std::string_view id = list.substr(start, end - start);
        list.remove_prefix(end);
        const auto found = styles_.find(id);
        if (found == styles_.end()) {
            log_.Warn(Where(referrer), "style \"" + std::string(id) + "\" is not defined");
        } else if (depth >= kMaxStyleDepth) {
            log_.Warn(Where(referrer), "style references nest too deep (a cycle?); \"" +
                                           std::string(id) + "\" ignored");
        } else {
            style.MergeFrom(Referenced(found->second, depth + 1));
            style.MergeFrom(
                ParseStyleAttributes(found->second, *names_, log_, Where(found->second)));
        }
    }
    return style;
}

TtmlStyle TtmlDocument::Computed(const pugi::xml_node& element, const TtmlStyle& inherited) {
    TtmlStyle style = inherited;
    style.MergeFrom(Referenced(element, 0));
    style.MergeFrom(ParseStyleAttributes(element, *names_, log_, Where(element)));
    return style;
}

std::optional<TickTime> TtmlDocument::Time(const pugi::xml_node& element, const char* attribute) {
    const char* text = Attribute(element, TtmlNames::Space::kCore, attribute);
    if (text == nullptr) {
        return std::nullopt;
    }
    const auto time = ParseTimeExpression(text, timing_);
    if (!time) {
        log_.Warn(Where(element),
                  std::string(attribute) + "=\"" + text + "\" is no time expression; ignored");
    }
    return time;
}

TtmlDocument::Context TtmlDocument::Enter(const pugi::xml_node& element, const Context& parent) {
    Context context;
    context.style = Computed(element, parent.style);
    context.begin = parent.begin + Time(element, "begin").value_or(TickTime());
    context.end = parent.end;
    if (const auto end = Time(element, "end")) {
        context.end = parent.begin + *end;
    } else if (const auto duration = Time(element, "dur")) {
        context.end = context.begin + *duration;
    }
    const char* region = Attribute(element, TtmlNames::Space::kCore, "region");
    context.region = region != nullptr ? region : parent.region;
    return context;
}

bool TtmlDocument::WithinDepth(const pugi::xml_node& element, int depth) {
    if (depth <= kMaxDepth) {
        return true;
    }
    log_.Warn(Where(element),
              "elements nested deeper than " + std::to_string(kMaxDepth) + " levels skipped");
    return false;
}

void TtmlDocument::Visit(const pugi::xml_node& container, const Context& parent, int depth) {
    if (!WithinDepth(container, depth)) {
        return;
    }
    const Context context = Enter(container, parent);
    for (const pugi::xml_node& child : container.children()) {
        if (child.type() != pugi::node_element) {
            continue;
        }
        const std::string_view name = LocalNameOf(child);
        if (name == "div") {
            Visit(child, context, depth + 1);
        } else if (name == "p") {
            ReadParagraph(child, context, depth + 1);
        } else if (name != "metadata") {
            log_.Warn(Where(child), "<" + std::string(child.name()) + "> skipped");
        }
    }
}

void TtmlDocument::CollectText(const pugi::xml_node& element, const TtmlStyle& style, Lines& lines,
                               int depth) {
    if (!WithinDepth(element, depth)) {
        return;
    }
    for (const pugi::xml_node& child : element.children()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
            lines.back().push_back({child.value(), style});
            continue;
        }
        if (child.type() != pugi::node_element) {
            continue;
        }
        const std::string_view name = LocalNameOf(child);
        if (name == "br") {
            lines.emplace_back();
        } else if (name == "span") {
            if (Attribute(child, TtmlNames::Space::kCore, "begin") ||
                Attribute(child, TtmlNames::Space::kCore, "end")) {
                log_.Warn(Where(child),
                          "span timing ignored (the span shows for its paragraph's time)");
            }
            CollectText(child, Computed(child, style), lines, depth + 1);
        } else if (name != "metadata") {
            log_.Warn(Where(child), "<" + std::string(child.name()) + "> in a paragraph skipped");
        }
    }
}

void TtmlDocument::ReadParagraph(const pugi::xml_node& paragraph, const Context& parent,
                                 int depth) {
    Context context = Enter(paragraph, parent);
    const auto region = regions_.find(context.region);
    const bool hasRegion = region != regions_.end();
    if (!context.region.empty() && !hasRegion) {
        log_.Warn(Where(paragraph), "region \"" + context.region + "\" is not defined");
    }
    if (!context.end) {
        log_.Warn(Where(paragraph), "paragraph without an end skipped");
        return;
    }
    TtmlStyle style = hasRegion ? region->second : TtmlStyle();
    style.MergeFrom(context.style);
    Lines lines(1);
    CollectText(paragraph, style, lines, depth);
    const char* space = Attribute(paragraph, TtmlNames::Space::kXml, "space");
    if (space == nullptr || std::strcmp(space, "preserve") != 0) {
        std::vector<std::vector<std::pair<std::string, TtmlStyle>>> texts;
        for (const auto& line : lines) {
            texts.emplace_back();
            for (const Run& run : line) {
                texts.back().emplace_back(run.utf8, run.style);
            }
        }
        CollapseWhitespace(texts);
        for (std::size_t l = 0; l < lines.size(); ++l) {
            for (std::size_t r = 0; r < lines[l].size(); ++r) {
                lines[l][r].utf8 = std::move(texts[l][r].first);
            }
        }
    }
    std::erase_if(lines, [](const std::vector<Run>& line) {
        return std::all_of(line.begin(), line.end(),
                           [](const Run& run) { return run.utf8.empty(); });
    });
    // Origin, extent and displayAlign apply to regions only.
    TtmlStyle placementStyle = hasRegion ? region->second : TtmlStyle();
    placementStyle.textAlign = style.textAlign;
    const TtmlPlacement placement = PlacementOfRegion(placementStyle, hasRegion, lines.size());
    if (placement.approximation) {
        log_.Warn(Where(paragraph), *placement.approximation);
    }
    CaptionTextBuilder builder;
    for (std::size_t l = 0; l < lines.size(); ++l) {
        if (l > 0) {
            builder.BreakLine();
        }
        for (const Run& run : lines[l]) {
            builder.Append(run.utf8, run.style.SpanAttributes());
        }
    }
    std::vector<CaptionTextParagraphPtr> paragraphs;
    if (!lines.empty()) {
        paragraphs = builder.TakeParagraphs(placement.style);
    }
    if (placement.firstLinePosition && !paragraphs.empty()) {
        paragraphs.front()->SetCaptionPosition(*placement.firstLinePosition);
    }
    captions_.push_back(MakeCaption(context.begin, *context.end, kCaptionType_Open, paragraphs));
}

} // namespace captionformats::ttml
