#pragma once

#include "BE/MasterClipSettings.h"
#include "BE/SequenceSettings.h"
#include "zelcaptioning/ParagraphStyleAttributes.h"
#include "zelcaptioning/StreamFormat.h"
#include "zelcaptioning/TextSpanAttributes.h"

#include <optional>
#include <string_view>

namespace platform::core {

// The names project files give to enumeration values. Each pair of functions
// is a bijection between the values this build knows and their names; a value
// it does not know has no name.
std::optional<std::string_view> NameOf(zelcaptioning::StreamFormat format);
std::optional<zelcaptioning::StreamFormat> StreamFormatNamed(std::string_view name);

std::optional<std::string_view> NameOf(zelcaptioning::CaptionType type);
std::optional<zelcaptioning::CaptionType> CaptionTypeNamed(std::string_view name);

std::optional<std::string_view> NameOf(zelcaptioning::TextAlignmentType alignment);
std::optional<zelcaptioning::TextAlignmentType> TextAlignmentNamed(std::string_view name);

std::optional<std::string_view> NameOf(zelcaptioning::TextSpanAttributes::TextEdge edge);
std::optional<zelcaptioning::TextSpanAttributes::TextEdge> TextEdgeNamed(std::string_view name);

std::optional<std::string_view> NameOf(BE::MasterClipKind kind);
std::optional<BE::MasterClipKind> MasterClipKindNamed(std::string_view name);

std::optional<std::string_view> NameOf(BE::MediaSource::Kind kind);
std::optional<BE::MediaSource::Kind> MediaSourceKindNamed(std::string_view name);

std::optional<std::string_view> NameOf(BE::FrameAlignment alignment);
std::optional<BE::FrameAlignment> FrameAlignmentNamed(std::string_view name);

} // namespace platform::core
