#include "EnumNames.h"

#include <utility>

namespace platform::core {
namespace {

using zelcaptioning::TextSpanAttributes;

template <typename Enum> using NameTable = std::pair<Enum, std::string_view>;

constexpr NameTable<zelcaptioning::StreamFormat> kStreamFormats[] = {
    {zelcaptioning::kStreamFormat_CEA608, "CEA-608"},
    {zelcaptioning::kStreamFormat_CEA708, "CEA-708"},
    {zelcaptioning::kStreamFormat_Teletext, "Teletext"},
    {zelcaptioning::kStreamFormat_OpenCaptions, "OpenCaptions"},
};

constexpr NameTable<zelcaptioning::CaptionType> kCaptionTypes[] = {
    {zelcaptioning::kCaptionType_None, "none"},
    {zelcaptioning::kCaptionType_PopOn, "popOn"},
    {zelcaptioning::kCaptionType_RollUp2, "rollUp2"},
    {zelcaptioning::kCaptionType_RollUp3, "rollUp3"},
    {zelcaptioning::kCaptionType_RollUp4, "rollUp4"},
    {zelcaptioning::kCaptionType_PaintOn, "paintOn"},
    {zelcaptioning::kCaptionType_Subtitle, "subtitle"},
    {zelcaptioning::kCaptionType_Open, "open"},
};

constexpr NameTable<zelcaptioning::TextAlignmentType> kAlignments[] = {
    {zelcaptioning::kTextAlignment_Left, "left"},
    {zelcaptioning::kTextAlignment_Center, "center"},
    {zelcaptioning::kTextAlignment_Right, "right"},
};

constexpr NameTable<TextSpanAttributes::TextEdge> kTextEdges[] = {
    {TextSpanAttributes::kTextEdge_None, "none"},
    {TextSpanAttributes::kTextEdge_Raised, "raised"},
    {TextSpanAttributes::kTextEdge_Depressed, "depressed"},
    {TextSpanAttributes::kTextEdge_Uniform, "uniform"},
    {TextSpanAttributes::kTextEdge_DropShadow, "dropShadow"},
};

constexpr NameTable<BE::MasterClipKind> kClipKinds[] = {
    {BE::MasterClipKind::kSingle, "single"},
    {BE::MasterClipKind::kMerged, "merged"},
};

constexpr NameTable<BE::MediaSource::Kind> kMediaKinds[] = {
    {BE::MediaSource::Kind::kFile, "file"},
    {BE::MediaSource::Kind::kGeneratedTestSource, "testSource"},
};

constexpr NameTable<BE::FrameAlignment> kFrameAlignments[] = {
    {BE::FrameAlignment::kFree, "free"},
    {BE::FrameAlignment::kAlignedToFrames, "frames"},
};

template <typename Enum, std::size_t N>
std::optional<std::string_view> Find(const NameTable<Enum> (&table)[N], Enum value) {
    for (const auto& [entryValue, name] : table) {
        if (entryValue == value) {
            return name;
        }
    }
    return std::nullopt;
}

template <typename Enum, std::size_t N>
std::optional<Enum> Find(const NameTable<Enum> (&table)[N], std::string_view name) {
    for (const auto& [value, entryName] : table) {
        if (entryName == name) {
            return value;
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string_view> NameOf(zelcaptioning::StreamFormat format) {
    return Find(kStreamFormats, format);
}
std::optional<zelcaptioning::StreamFormat> StreamFormatNamed(std::string_view name) {
    return Find(kStreamFormats, name);
}

std::optional<std::string_view> NameOf(zelcaptioning::CaptionType type) {
    return Find(kCaptionTypes, type);
}
std::optional<zelcaptioning::CaptionType> CaptionTypeNamed(std::string_view name) {
    return Find(kCaptionTypes, name);
}

std::optional<std::string_view> NameOf(zelcaptioning::TextAlignmentType alignment) {
    return Find(kAlignments, alignment);
}
std::optional<zelcaptioning::TextAlignmentType> TextAlignmentNamed(std::string_view name) {
    return Find(kAlignments, name);
}

std::optional<std::string_view> NameOf(TextSpanAttributes::TextEdge edge) {
    return Find(kTextEdges, edge);
}
std::optional<TextSpanAttributes::TextEdge> TextEdgeNamed(std::string_view name) {
    return Find(kTextEdges, name);
}

std::optional<std::string_view> NameOf(BE::MasterClipKind kind) {
    return Find(kClipKinds, kind);
}
std::optional<BE::MasterClipKind> MasterClipKindNamed(std::string_view name) {
    return Find(kClipKinds, name);
}

std::optional<std::string_view> NameOf(BE::MediaSource::Kind kind) {
    return Find(kMediaKinds, kind);
}
std::optional<BE::MediaSource::Kind> MediaSourceKindNamed(std::string_view name) {
    return Find(kMediaKinds, name);
}

std::optional<std::string_view> NameOf(BE::FrameAlignment alignment) {
    return Find(kFrameAlignments, alignment);
}
std::optional<BE::FrameAlignment> FrameAlignmentNamed(std::string_view name) {
    return Find(kFrameAlignments, name);
}

} // namespace platform::core
